#pragma once

#include <QString>

namespace korven {

class AppContext;

// The calculator of duties and taxes. A caller fills it with the values of the header, of the
// nomenclator position and of one item, asks for the two bases (ObtenerBaseImponible, then
// ObtenerBaseIVA) and then for each concept of the item in ascending order of code. Every value
// set stays until it is set again: a new item does not clear the object.
//
// Amounts and rates are doubles; rates are percentages. Every rounded amount goes through
// ImportePorcentual. Arithmetic that leaves the range of a double is a failure ("Desbordamiento")
// and a division by zero another ("División por cero"): the calculation routines trap theirs and
// go on with 0; ObtenerValorConcepto lets them reach the caller.
class ClassLiquidacion {
public:
    explicit ClassLiquidacion(AppContext& ctx);

    // Header of the operation.
    void setCaratulaSubRegimen(const QString& v) { CaratulaSubRegimen_ = v; }
    double CaratulaFobTotal() const { return CaratulaFobTotal_; }
    void setCaratulaFobTotal(double v) { CaratulaFobTotal_ = v; }
    double CaratulaFobTotalSinG() const { return CaratulaFobTotalSinG_; }
    void setCaratulaFobTotalSinG(double v) { CaratulaFobTotalSinG_ = v; }
    double CaratulaFleteTotal() const { return CaratulaFleteTotal_; }
    void setCaratulaFleteTotal(double v) { CaratulaFleteTotal_ = v; }
    double CaratulaSeguroValor() const { return CaratulaSeguroValor_; }
    void setCaratulaSeguroValor(double v) { CaratulaSeguroValor_ = v; }
    double CaratulaSeguroProcent() const { return CaratulaSeguroProcent_; }
    // With no insurance value, the insurance becomes the percentage of FOB plus freight: set the
    // FOB, the freight and the insurance value first.
    void setCaratulaSeguroProcent(double v);
    double CaratulaAjusteIncluir() const { return CaratulaAjusteIncluir_; }
    void setCaratulaAjusteIncluir(double v) { CaratulaAjusteIncluir_ = v; }
    double CaratulaAjusteDeducir() const { return CaratulaAjusteDeducir_; }
    void setCaratulaAjusteDeducir(double v) { CaratulaAjusteDeducir_ = v; }
    double CaratulaDivisasFOB() const { return CaratulaDivisasFOB_; }
    void setCaratulaDivisasFOB(double v) { CaratulaDivisasFOB_ = v; }
    double CaratulaDivisasFlete() const { return CaratulaDivisasFlete_; }
    void setCaratulaDivisasFlete(double v) { CaratulaDivisasFlete_ = v; }
    double CaratulaDivisasSeguro() const { return CaratulaDivisasSeguro_; }
    void setCaratulaDivisasSeguro(double v) { CaratulaDivisasSeguro_ = v; }
    double CaratulaFactordeConvergencia() const { return CaratulaFactordeConvergencia_; }
    void setCaratulaFactordeConvergencia(double v) { CaratulaFactordeConvergencia_ = v; }

    // Nomenclator position of the item.
    double NcmDerechodeImportacionExtrazona() const { return NcmDerechodeImportacionExtrazona_; }
    void setNcmDerechodeImportacionExtrazona(double v) { NcmDerechodeImportacionExtrazona_ = v; }
    // While set, the common external tariff does not replace the import duty rate. Nothing
    // clears it.
    void setNcmDerechodeImportacionExtrazonaForce(bool v) {
        NcmDerechodeImportacionExtrazonaForce_ = v;
    }
    double NcmTasaEstadistica() const { return NcmTasaEstadistica_; }
    void setNcmTasaEstadistica(double v) { NcmTasaEstadistica_ = v; }
    // Text read as a number (with "," or "."); a text that is no number is a failure.
    void setNcmDerechoAdicional(const QString& v);
    double NcmDerechodeExpo() const { return NcmDerechodeExpo_; }
    void setNcmDerechodeExpo(double v) { NcmDerechodeExpo_ = v; }
    double ncmCantidadDerechoEspecifico() const { return ncmCantidadDerechoEspecifico_; }
    void setncmCantidadDerechoEspecifico(double v) { ncmCantidadDerechoEspecifico_ = v; }
    QString NcmUnidadDerechoEspecifico() const { return NcmUnidadDerechoEspecifico_; }
    void setNcmUnidadDerechoEspecifico(const QString& v) { NcmUnidadDerechoEspecifico_ = v; }
    double NcmIndicadorMaximoArancel() const { return NcmIndicadorMaximoArancel_; }
    void setNcmIndicadorMaximoArancel(double v) { NcmIndicadorMaximoArancel_ = v; }
    void setncmReintegroFijo(double v) { ncmReintegroFijo_ = v; }
    void setncmReintFijoIntraZona(double v) { ncmReintFijoIntraZona_ = v; }
    // 0 exempt, 1 reduced, anything else normal. Kept as a 16-bit whole number.
    void setncmExencionReduccionIVA(double v);
    QString ncm_AEC() const { return ncm_AEC_; }
    void setncm_AEC(const QString& v) { ncm_AEC_ = v; }
    void setncmValor_AEC(double v) { ncmValor_AEC_ = v; }
    double ncmMineriaTasaLey() const { return ncmMineriaTasaLey_; }
    void setncmMineriaTasaLey(double v) { ncmMineriaTasaLey_ = v; }
    void setncmDIEMCHINAValor(double v) { ncmDIEMCHINAValor_ = v; }
    void setncmDIEMPREFPorcValor(double v) { ncmDIEMPREFPorcValor_ = v; }
    void setncmDIEMIndMaxArancelValor(double v) { ncmDIEMIndMaxArancelValor_ = v; }
    void setncmCalculaDIEMCHINA(bool v) { ncmCalculaDIEMCHINA_ = v; }

    // The item.
    double FOBTotalITEM() const { return FOBTotalITEM_; }
    void setFOBTotalITEM(double v) { FOBTotalITEM_ = v; }
    double FLETETotalITEM() const { return FLETETotalITEM_; }
    void setFLETETotalITEM(double v) { FLETETotalITEM_ = v; }
    double SEGUROTotalITEM() const { return SEGUROTotalITEM_; }
    void setSEGUROTotalITEM(double v) { SEGUROTotalITEM_ = v; }
    double AJUSTEINCLUIRtotalITEM() const { return AJUSTEINCLUIRtotalITEM_; }
    void setAJUSTEINCLUIRtotalITEM(double v) { AJUSTEINCLUIRtotalITEM_ = v; }
    double AJUSTEDEDUCIRtotalITEM() const { return AJUSTEDEDUCIRtotalITEM_; }
    void setAJUSTEDEDUCIRtotalITEM(double v) { AJUSTEDEDUCIRtotalITEM_ = v; }
    // The quantity is accepted and never used: reading it always gives 0.
    double ItemCantidad() const { return 0; }
    void setItemCantidad(double v) { ItemCantidad_ = v; }
    double ItemCantidadDerechoEspecifico() const { return ItemCantidadDerechoEspecifico_; }
    void setItemCantidadDerechoEspecifico(double v) { ItemCantidadDerechoEspecifico_ = v; }
    // ItemPais and ItemIdPais are two names of one field.
    QString ItemPais() const { return ItemPais_; }
    void setItemPais(const QString& v) { ItemPais_ = v; }
    QString ItemIdPais() const { return ItemPais_; }
    void setItemIdPais(const QString& v) { ItemPais_ = v; }
    void setItemEstadoMercaderia(const QString& v) { ItemEstadoMercaderia_ = v.left(1); }
    // Accepted and ignored.
    void setItemxItmCOFEXP(double) {}
    double ItemCoeficienteExportacion() const { return ItemCoeficienteExportacion_; }
    void setItemCoeficienteExportacion(double v) { ItemCoeficienteExportacion_ = v; }
    void setItemCalcularCoeficienteExportacion(bool v) { ItemCalcularCoeficienteExportacion_ = v; }
    QString ItemLista() const { return ItemLista_; }
    void setItemLista(const QString& v) { ItemLista_ = v; }
    bool ItemLISTA_MERCOSUR() const { return ItemLISTA_MERCOSUR_; }
    void setItemLISTA_MERCOSUR(bool v) { ItemLISTA_MERCOSUR_ = v; }
    bool ItemMineria() const { return ItemMineria_; }
    void setItemMineria(bool v) { ItemMineria_ = v; }
    void setItmImportacionTemporal(double v) { ItmImportacionTemporal_ = v; }
    void setItmImportacionTmpCons(double v) { ItmImportacionTmpCons_ = v; }
    void setItmComsionesExt(double v) { ItmComsionesExt_ = v; }
    // The answer on the common external tariff: "", "R", "P" or "N".
    QString CalculoAEC() const { return CalculoAEC_; }
    void setCalculoAEC(const QString& v) { CalculoAEC_ = v; }
    void ResetAEC() { CalculoAEC_.clear(); }

    // Values the calculator computes and keeps.
    double BaseImponible() const { return BaseImponible_; }
    double BaseIVA() const { return BaseIVA_; }
    double BaseAEC() const { return BaseAEC_; }
    double PorcentajeAEC() const { return PorcentajeAEC_; }
    double ValorDerechos() const { return ValorDerechos_; }
    double ValorDIEM() const { return ValorDIEM_; }
    double ValorEspecifico() const { return ValorEspecifico_; }
    double ValorDIEMCHINA() const { return ValorDIEMCHINA_; }
    double Aux_PORCENTAJE() const { return Aux_PORCENTAJE_; }
    short TramoEstadistica() const { return TramoEstadistica_; }
    bool CoeficienteExcedido() const { return CoeficienteExcedido_; }
    QString DecretoInterno() const { return DecretoInterno_; }
    double TasaNominal() const { return TasaNominal_; }
    double TasaEfectiva() const { return TasaEfectiva_; }
    QString SeparadorDecimal() const { return SeparadorDecimal_; }

    // Customs value of the item, reduced by the export coefficient when there is one.
    double ObtenerBaseImponible();
    // Base of the taxes on the sale: the customs value plus the duties.
    double ObtenerBaseIVA();
    double ObtenerFobItemUS() const { return CaratulaDivisasFOB_ * FOBTotalITEM_; }
    double ObtenerFLETEItemUs() const { return CaratulaDivisasFlete_ * FLETETotalITEM_; }
    double ObtenerSEGUROItemUs() const { return CaratulaDivisasSeguro_ * SEGUROTotalITEM_; }
    double ObtenerAjusteIncUs() const { return CaratulaDivisasFOB_ * AJUSTEINCLUIRtotalITEM_; }
    double ObtenerAjusteDedUs() const { return CaratulaDivisasFOB_ * AJUSTEDEDUCIRtotalITEM_; }

    // The amount of one concept. Porcentaje is the rate as text, or "Vacio" for the concept's
    // own; on return it holds the rate used where the concept says so. Valor 0 is the
    // automatic path, which ignores the entering Base; any other Valor is a manual row whose
    // Base is taken as given. On return Base holds the base used; the rate is in ObtenerLqPorc.
    double ObtenerValorConcepto(const QString& Codigo, QString& Porcentaje, double noLeido,
                                double& Base, const QString& PorcentajeB, double Valor,
                                bool SinCoeficiente = false);
    double ObtenerLqPorc() const { return LqPorc_; }

    // The special duty of the country "310" over the base.
    double CalcularDiemCHINA(double base);

    // Reads the internal tax of the position from impuestos_internos (store USUARIO).
    void GetMarcaImpuestosInternos(const QString& ncm);

    QString Obtener_Sep_Decim();
    void ObtenerDecimal();
    // Every "." and then every "," of the text become the system separator; the argument gets
    // the result too.
    QString ReemplazarSeparadorDecimal(QString& texto);

private:
    void CalcularBaseImponible();
    void CalcularDerechos(double tasa);
    void CalcularBaseIVA();
    // The statistics fee over the base, by tier; nothing in the gaps between tiers.
    double TasaEstadistica() const;
    // The reduced duty of the automotive regime: no duty nor fee on the position, three
    // quarters of the common external tariff on the base of its concepts.
    void AplicarAECReducido();
    double Concepto020(QString& Porcentaje, double& Base, bool SinCoeficiente);
    double Concepto601611(const QString& Codigo, double& Base);
    // The rate of VAT concepts given "Vacio", by the position's exemption.
    double TasaIVA() const;
    double Numero(const QString& texto);
    bool EsNumeroTexto(const QString& texto);
    QString Texto(double valor);

    AppContext& ctx_;

    QString CaratulaSubRegimen_;
    double CaratulaFobTotal_ = 0;
    double CaratulaFobTotalSinG_ = 0;
    double CaratulaFleteTotal_ = 0;
    double CaratulaSeguroValor_ = 0;
    double CaratulaSeguroProcent_ = 0;
    double CaratulaAjusteIncluir_ = 0;
    double CaratulaAjusteDeducir_ = 0;
    double CaratulaDivisasFOB_ = 0;
    double CaratulaDivisasFlete_ = 0;
    double CaratulaDivisasSeguro_ = 0;
    double CaratulaFactordeConvergencia_ = 0;

    double NcmDerechodeImportacionExtrazona_ = 0;
    bool NcmDerechodeImportacionExtrazonaForce_ = false;
    double NcmTasaEstadistica_ = 0;
    double NcmDerechoAdicional_ = 0;
    double NcmDerechodeExpo_ = 0;
    double ncmCantidadDerechoEspecifico_ = 0;
    QString NcmUnidadDerechoEspecifico_;
    double NcmIndicadorMaximoArancel_ = 0;
    double ncmReintegroFijo_ = 0;
    double ncmReintFijoIntraZona_ = 0;
    short ncmExencionReduccionIVA_ = 0;
    QString ncm_AEC_;
    double ncmValor_AEC_ = 0;
    double ncmMineriaTasaLey_ = 0;
    double ncmDIEMCHINAValor_ = 0;
    double ncmDIEMPREFPorcValor_ = 0;
    double ncmDIEMIndMaxArancelValor_ = 0;
    bool ncmCalculaDIEMCHINA_ = false;

    double FOBTotalITEM_ = 0;
    double FLETETotalITEM_ = 0;
    double SEGUROTotalITEM_ = 0;
    double AJUSTEINCLUIRtotalITEM_ = 0;
    double AJUSTEDEDUCIRtotalITEM_ = 0;
    double ItemCantidad_ = 0;
    double ItemCantidadDerechoEspecifico_ = 0;
    QString ItemPais_;
    QString ItemEstadoMercaderia_;
    double ItemCoeficienteExportacion_ = 0;
    bool ItemCalcularCoeficienteExportacion_ = false;
    QString ItemLista_;
    bool ItemLISTA_MERCOSUR_ = false;
    bool ItemMineria_ = false;
    double ItmImportacionTemporal_ = 0;
    double ItmImportacionTmpCons_ = 0;
    double ItmComsionesExt_ = 0;
    QString CalculoAEC_;

    double BaseImponible_ = 0;
    double BaseIVA_ = 0;
    double BaseAEC_ = 0;
    double PorcentajeAEC_ = 0;
    double ValorDerechos_ = 0;
    double ValorDIEM_ = 0;
    double ValorEspecifico_ = 0;
    double ValorDIEMCHINA_ = 0;
    double Aux_PORCENTAJE_ = 0;
    double LqPorc_ = 0;
    short TramoEstadistica_ = 0;
    bool CoeficienteExcedido_ = false;
    QString DecretoInterno_;
    double TasaNominal_ = 0;
    double TasaEfectiva_ = 0;
    QString SeparadorDecimal_;
};

} // namespace korven
