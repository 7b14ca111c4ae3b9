#include "liquidation/ClassLiquidacion.h"

#include "liquidation/ReglasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QLocale>
#include <cmath>
#include <limits>

namespace korven {

namespace {

const QString kVacio = QStringLiteral("Vacio");
const QString kAutomotriz = QStringLiteral("314/R.AUTOMOTRIZ");

constexpr int kErrorDesbordamiento = 6;
constexpr int kErrorDivisionPorCero = 11;
constexpr int kErrorTipos = 13;

// A result that left the range of a double is an overflow, as the arithmetic of the system
// reports it.
double Finito(double v) {
    if (!std::isfinite(v))
        throw KorvenError(kErrorDesbordamiento, QStringLiteral("Desbordamiento"),
                          QStringLiteral("ClassLiquidacion"));
    return v;
}

double Dividir(double a, double b) {
    if (b == 0)
        throw KorvenError(kErrorDivisionPorCero, QStringLiteral("División por cero"),
                          QStringLiteral("ClassLiquidacion"));
    return Finito(a / b);
}

// The one rounding of the calculation, with the overflow of base x rate reported.
double Porcentual(double base, double tasa) {
    Finito(base * tasa / 100.0);
    return ImportePorcentual(base, tasa);
}

// A value formatted with "00.00" and read back.
double DosDecimales(double v) {
    return RedondearDecimal(Finito(v), 2);
}

QString Descripcion(const std::exception& e) {
    if (const auto* k = dynamic_cast<const KorvenError*>(&e))
        return k->descripcion();
    return QString::fromLocal8Bit(e.what());
}

int NumeroError(const std::exception& e) {
    if (const auto* k = dynamic_cast<const KorvenError*>(&e))
        return k->numero();
    return 0;
}

} // namespace

ClassLiquidacion::ClassLiquidacion(AppContext& ctx) : ctx_(ctx) {
    ObtenerDecimal();
}

void ClassLiquidacion::setCaratulaSeguroProcent(double v) {
    CaratulaSeguroProcent_ = v;
    if (CaratulaSeguroValor_ == 0)
        CaratulaSeguroValor_ =
            Porcentual(CaratulaFleteTotal_ + CaratulaFobTotal_, CaratulaSeguroProcent_);
}

void ClassLiquidacion::setNcmDerechoAdicional(const QString& v) {
    NcmDerechoAdicional_ = Numero(v);
}

void ClassLiquidacion::setncmExencionReduccionIVA(double v) {
    // Whole numbers round half to even; values beyond the range keep counting as "normal".
    const double r = std::nearbyint(v);
    if (!(r >= std::numeric_limits<short>::min() && r <= std::numeric_limits<short>::max()))
        ncmExencionReduccionIVA_ = std::numeric_limits<short>::max();
    else
        ncmExencionReduccionIVA_ = static_cast<short>(r);
}

// ---- Bases ----

void ClassLiquidacion::CalcularBaseImponible() {
    try {
        double b = FOBTotalITEM_ * CaratulaDivisasFOB_;
        // Exports have a base without freight and insurance.
        if (CaratulaSubRegimen_.left(1) != QLatin1String("E")) {
            b += FLETETotalITEM_ * CaratulaDivisasFlete_;
            b += SEGUROTotalITEM_ * CaratulaDivisasSeguro_;
        }
        b += AJUSTEINCLUIRtotalITEM_ * CaratulaDivisasFOB_;
        b -= AJUSTEDEDUCIRtotalITEM_ * CaratulaDivisasFOB_;
        // Inputs and commissions are in the currency of the item, without a rate of exchange.
        if (SubregimenConInsumos(CaratulaSubRegimen_)) {
            b -= ItmImportacionTemporal_;
            b += ItmComsionesExt_;
        }
        BaseImponible_ = Finito(b);
    } catch (const std::exception& e) {
        BaseImponible_ = 0;
        ctx_.dialogos().Mensaje(Descripcion(e) + QStringLiteral("[clCalcular.BaseImponible] "));
    }
}

double ClassLiquidacion::ObtenerBaseImponible() {
    CalcularBaseImponible();
    if (ItemCoeficienteExportacion_ > 0)
        BaseImponible_ = Finito(BaseImponible_ * ItemCoeficienteExportacion_);
    return BaseImponible_;
}

double ClassLiquidacion::ObtenerBaseIVA() {
    CalcularBaseIVA();
    return BaseIVA_;
}

void ClassLiquidacion::CalcularDerechos(double tasa) {
    try {
        ValorDerechos_ = 0;
        ValorDIEM_ = 0;
        ValorEspecifico_ = 0;
        ValorDIEMCHINA_ = 0;
        ValorDerechos_ = Porcentual(BaseImponible_, tasa);
        Aux_PORCENTAJE_ = tasa;
        const double especifico =
            Finito(ncmCantidadDerechoEspecifico_ * ItemCantidadDerechoEspecifico_);
        if (!(ValorDerechos_ < especifico))
            return;
        const bool pais310 = ItemPais_ == QLatin1String("310");
        if (!pais310 && !PaisConTopeArancel(ItemPais_)) {
            ValorDerechos_ = 0;
            ValorEspecifico_ = especifico;
            return;
        }
        // Partner countries pay neither duty.
        if (MarcaPais(ItemPais_) != QLatin1String("E")) {
            ValorDerechos_ = 0;
            ValorEspecifico_ = 0;
            NcmDerechodeImportacionExtrazona_ = 0;
            return;
        }
        double maximo = 0;
        if (NcmIndicadorMaximoArancel_ == 1)
            maximo = 30;
        else if (NcmIndicadorMaximoArancel_ == 2)
            maximo = 35;
        const double tope = Finito(maximo * BaseImponible_ / 100);
        if (!pais310) {
            ValorDerechos_ = 0;
            Aux_PORCENTAJE_ = maximo;
            ValorDIEM_ = tope > especifico ? DosDecimales(especifico) : DosDecimales(tope);
            return;
        }
        ValorDerechos_ = 0;
        ValorDIEM_ = 0;
        Aux_PORCENTAJE_ = maximo;
        if (especifico < tope) {
            // The specific duty of this country is the cap itself.
            ValorEspecifico_ = DosDecimales(tope);
        } else {
            ValorDIEM_ = tope;
            if (tope > 0) {
                ValorDerechos_ = 0;
                ValorDIEMCHINA_ = 0;
            }
        }
    } catch (const std::exception& e) {
        ctx_.dialogos().Mensaje(
            QString::number(NumeroError(e)) + QStringLiteral(" - ") + Descripcion(e) +
                QStringLiteral("\n\nSección [KORVEN.ClassLiquidacion.CalcularDerechos]"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        ValorDIEM_ = 0;
        ValorDerechos_ = 0;
        ValorEspecifico_ = 0;
    }
}

double ClassLiquidacion::TasaEstadistica() const {
    if (BaseImponible_ <= 79999)
        return Porcentual(BaseImponible_, NcmTasaEstadistica_);
    if (BaseImponible_ >= 80000 && BaseImponible_ <= 99999)
        return 400;
    if (BaseImponible_ >= 100000)
        return 500;
    return 0;
}

void ClassLiquidacion::AplicarAECReducido() {
    NcmDerechodeImportacionExtrazona_ = 0;
    NcmTasaEstadistica_ = 0;
    PorcentajeAEC_ = DosDecimales(ncmValor_AEC_ * 75 / 100);
    BaseIVA_ += Porcentual(BaseImponible_, NcmDerechodeImportacionExtrazona_);
    BaseAEC_ += Porcentual(BaseImponible_, PorcentajeAEC_);
}

void ClassLiquidacion::CalcularBaseIVA() {
    try {
        BaseIVA_ = BaseImponible_;
        BaseAEC_ = 0;
        if (ItemMineria_) {
            NcmDerechodeImportacionExtrazona_ = 0;
            NcmTasaEstadistica_ = 0;
        }
        CalcularDerechos(NcmDerechodeImportacionExtrazona_);

        const QString app = QStringLiteral("KORVEN");
        const QString seccion = QStringLiteral("AEC");
        const QString interno = ctx_.InternoActual;
        CalculoAEC_ = ctx_.settings().GetSetting(app, seccion, interno, QString());
        if (CalculoAEC_.isEmpty() && ncm_AEC_ == QLatin1String("*")) {
            ctx_.AbrirModal(QStringLiteral("FrmABMClientes"),
                            {{QStringLiteral("interno"), interno}});
            CalculoAEC_ = ctx_.settings().GetSetting(app, seccion, interno, QStringLiteral("N"));
        }

        BaseAEC_ = 0;
        PorcentajeAEC_ = 0;
        const QString marca = MarcaPais(ItemPais_);
        if (CalculoAEC_ == QLatin1String("R")) {
            if (marca != QLatin1String("M") && ncm_AEC_ == QLatin1String("*")) {
                if (marca == QLatin1String("E") || marca.isEmpty()) {
                    if (!NcmDerechodeImportacionExtrazonaForce_)
                        NcmDerechodeImportacionExtrazona_ = ncmValor_AEC_;
                    BaseIVA_ += Porcentual(BaseImponible_, NcmDerechodeImportacionExtrazona_);
                } else if (marca == QLatin1String("B")) {
                    AplicarAECReducido();
                }
            } else if (!ItemLISTA_MERCOSUR_) {
                if (ValorDIEM_ == 0)
                    BaseIVA_ += Porcentual(BaseImponible_, NcmDerechodeImportacionExtrazona_);
                else if (ValorDIEMCHINA_ == 0)
                    BaseIVA_ += ValorDIEM_;
            }
        } else if (CalculoAEC_ == QLatin1String("P")) {
            // Production: the duty does not enter the base.
        } else if (ItemLista_ == kAutomotriz) {
            AplicarAECReducido();
        } else if (!ItemLISTA_MERCOSUR_) {
            if (ValorDIEM_ == 0 && ValorDIEMCHINA_ == 0)
                BaseIVA_ += Porcentual(BaseImponible_, NcmDerechodeImportacionExtrazona_);
            else if (ValorDIEM_ == 0)
                BaseIVA_ += ValorDIEMCHINA_;
            else if (ValorDIEMCHINA_ == 0)
                BaseIVA_ += ValorDIEM_;
        }

        if (PorcentajeAEC_ > 0 && NcmTasaEstadistica_ > 0)
            BaseAEC_ += TasaEstadistica();
        if (!ItemLISTA_MERCOSUR_) {
            if (NcmTasaEstadistica_ > 0)
                BaseIVA_ += TasaEstadistica();
            if (ncmMineriaTasaLey_ > 0 && ItemMineria_)
                BaseIVA_ += Porcentual(BaseImponible_, ncmMineriaTasaLey_);
        }
        if (CaratulaSubRegimen_ == QLatin1String("IC81") ||
            ctx_.FlagDto1439 == QLatin1String("S") || ctx_.FlagDto1439A1 == QLatin1String("S"))
            BaseIVA_ += Porcentual(BaseImponible_, NcmDerechoAdicional_);
        Finito(BaseIVA_);
        Finito(BaseAEC_);
    } catch (const std::exception& e) {
        BaseIVA_ = 0;
        ctx_.dialogos().Mensaje(Descripcion(e));
    }
}

// ---- Concepts ----

double ClassLiquidacion::TasaIVA() const {
    if (ncmExencionReduccionIVA_ == 0)
        return 0;
    if (ncmExencionReduccionIVA_ == 1)
        return ctx_.config().IVARNI;
    return ctx_.config().IVARIN;
}

double ClassLiquidacion::ObtenerValorConcepto(const QString& Codigo, QString& Porcentaje,
                                              double /*noLeido*/, double& Base,
                                              const QString& PorcentajeB, double Valor,
                                              bool SinCoeficiente) {
    if (BaseImponible_ <= 79999)
        TramoEstadistica_ = 1;
    else if (BaseImponible_ >= 80000 && BaseImponible_ <= 99999)
        TramoEstadistica_ = 2;
    else if (BaseImponible_ >= 100000)
        TramoEstadistica_ = 3;
    LqPorc_ = 0;

    const bool manual = Valor != 0;
    const bool vacio = Porcentaje == kVacio;
    double importe = 0;
    // Base, rate and amount 0.
    auto cero = [&] {
        Base = 0;
        LqPorc_ = 0;
        importe = 0;
    };
    // The amount of the given rate over b, which becomes the base.
    auto sobre = [&](double b) {
        const double r = Numero(Porcentaje);
        Base = b;
        LqPorc_ = r;
        importe = Porcentual(b, r);
    };
    // VAT additional: the rate follows the position's exemption; no number is no rate.
    auto tasaAdicional = [&] {
        if (ncmExencionReduccionIVA_ == 0)
            Porcentaje = QStringLiteral("0");
        else if (ncmExencionReduccionIVA_ == 1)
            Porcentaje = PorcentajeB;
        if (!EsNumeroTexto(Porcentaje))
            Porcentaje = QStringLiteral("0");
    };
    auto exencionTotal = [&] {
        if (Numero(Porcentaje) == 200)
            Porcentaje = QStringLiteral("0");
    };
    const bool automotriz = ItemLista_ == kAutomotriz;

    if (Codigo == QLatin1String("010")) {
        if (manual) {
            sobre(Base);
        } else if (automotriz || ItemLISTA_MERCOSUR_) {
            cero();
        } else {
            if (vacio)
                Porcentaje = Texto(NcmDerechodeImportacionExtrazona_);
            const double r = Numero(Porcentaje);
            CalcularDerechos(r);
            importe = ValorDerechos_;
            Base = BaseImponible_;
            LqPorc_ = r;
        }
        if (ItemMineria_)
            cero();
    } else if (Codigo == QLatin1String("866")) {
        if (ItemLISTA_MERCOSUR_)
            Porcentaje = QStringLiteral("0");
        if (Porcentaje == kVacio)
            Porcentaje = Texto(PorcentajeAEC_);
        sobre(BaseImponible_);
    } else if (Codigo == QLatin1String("852") || Codigo == QLatin1String("415")) {
        const double r = vacio ? TasaIVA() : Numero(Porcentaje);
        Porcentaje = Texto(r);
        if (!manual)
            Base = Codigo == QLatin1String("852") ? BaseAEC_ : BaseIVA_;
        sobre(Base);
    } else if (Codigo == QLatin1String("854")) {
        tasaAdicional();
        sobre(BaseAEC_);
    } else if (Codigo == QLatin1String("856")) {
        if (vacio)
            Porcentaje = QStringLiteral("3");
        exencionTotal();
        sobre(BaseAEC_);
    } else if (Codigo == QLatin1String("059")) {
        if (!ItemLISTA_MERCOSUR_ && ValorDIEM_ > 0) {
            importe = ValorDIEM_;
            LqPorc_ = Aux_PORCENTAJE_;
            Base = BaseImponible_;
        } else {
            cero();
        }
    } else if (Codigo == QLatin1String("015")) {
        if (ValorEspecifico_ > 0) {
            importe = ValorEspecifico_;
            Base = ValorEspecifico_;
        }
    } else if (Codigo == QLatin1String("016")) {
        if (!manual)
            Base = BaseImponible_;
        if (vacio)
            Porcentaje = Texto(NcmDerechoAdicional_);
        sobre(Base);
    } else if (Codigo == QLatin1String("020")) {
        importe = Concepto020(Porcentaje, Base, SinCoeficiente);
    } else if (Codigo == QLatin1String("032")) {
        if (!ItemMineria_) {
            cero();
        } else {
            if (vacio)
                Porcentaje = Texto(ncmMineriaTasaLey_);
            sobre(BaseImponible_);
        }
    } else if (Codigo == QLatin1String("065")) {
        if (manual) {
            sobre(Base);
        } else if (ItemPais_ == QLatin1String("310")) {
            importe = ValorDIEMCHINA_;
            Base = 0;
            LqPorc_ = 0;
        } else {
            cero();
        }
    } else if (Codigo == QLatin1String("601") || Codigo == QLatin1String("611")) {
        importe = Concepto601611(Codigo, Base);
    } else if (Codigo == QLatin1String("500") || Codigo == QLatin1String("501")) {
        Porcentaje = QStringLiteral("0");
        cero();
    } else if (Codigo == QLatin1String("011")) {
        if (manual) {
            sobre(Base);
        } else if (automotriz || ItemLISTA_MERCOSUR_) {
            cero();
        } else if (TramoEstadistica_ == 1) {
            if (vacio)
                Porcentaje = Texto(NcmTasaEstadistica_);
            sobre(BaseImponible_);
        } else {
            cero();
        }
        if (ItemMineria_)
            cero();
    } else if (Codigo == QLatin1String("061") || Codigo == QLatin1String("062")) {
        const bool segundo = Codigo == QLatin1String("061");
        if (NcmTasaEstadistica_ == 0 || ItemLISTA_MERCOSUR_) {
            cero();
        } else if (TramoEstadistica_ == (segundo ? 2 : 3)) {
            importe = segundo ? 400 : 500;
            Base = 0;
            LqPorc_ = 0;
        } else if (Base > 0 && EsNumeroTexto(Porcentaje) && Numero(Porcentaje) > 0) {
            sobre(Base);
        }
    } else if (Codigo == QLatin1String("041")) {
        if (vacio)
            Porcentaje = QStringLiteral("1");
        sobre(BaseImponible_);
    } else if (Codigo == QLatin1String("422")) {
        tasaAdicional();
        if (!manual)
            Base = BaseIVA_;
        sobre(Base);
    } else if (Codigo == QLatin1String("424")) {
        if (vacio)
            Porcentaje = QStringLiteral("3");
        if (!manual && CaratulaSubRegimen_ == QLatin1String("IT04"))
            Porcentaje = QStringLiteral("11");
        exencionTotal();
        if (!manual)
            Base = BaseIVA_;
        sobre(Base);
    } else if (Codigo == QLatin1String("900")) {
        if (manual) {
            sobre(Base);
        } else {
            if (vacio)
                Porcentaje = QStringLiteral("0");
            sobre(BaseIVA_);
        }
    } else if (Codigo == QLatin1String("417")) {
        if (manual) {
            sobre(Base);
        } else if (DecretoInterno_.isEmpty()) {
            importe = 0;
            LqPorc_ = 0;
        } else {
            TasaEfectiva_ = Dividir(TasaNominal_ * 100, 100 - TasaNominal_);
            if (DecretoInterno_ == QLatin1String("SINDEC"))
                importe = Finito(BaseIVA_ * 1.3 * TasaEfectiva_ / 100);
            else if (DecretoInterno_ == QLatin1String("DEC290_00"))
                importe = Finito(BaseIVA_ * TasaEfectiva_ / 100);
            else
                importe = 0;
            Porcentaje = Texto(TasaNominal_);
            Base = BaseIVA_;
            LqPorc_ = TasaNominal_;
        }
    } else if (Codigo == QLatin1String("FCV")) {
        if (vacio)
            Porcentaje = QStringLiteral("0");
        sobre(BaseImponible_);
    } else {
        if (manual) {
            sobre(Base);
        } else {
            if (vacio)
                Porcentaje = QStringLiteral("0");
            sobre(BaseImponible_);
        }
    }
    return importe;
}

double ClassLiquidacion::Concepto020(QString& Porcentaje, double& Base, bool SinCoeficiente) {
    CoeficienteExcedido_ = false;
    if (Porcentaje == kVacio)
        Porcentaje = Texto(NcmDerechodeExpo_);
    const double r = Numero(Porcentaje);
    if (ItemCalcularCoeficienteExportacion_)
        ItemCoeficienteExportacion_ = RedondearDecimal(Dividir(1, Finito(1 + r / 100)), 5);
    if (!(ItemCoeficienteExportacion_ > 0)) {
        Base = BaseImponible_;
        return Porcentual(BaseImponible_, r);
    }
    const double b =
        SinCoeficiente ? BaseImponible_ : Finito(ItemCoeficienteExportacion_ * BaseImponible_);
    const double importe = Porcentual(b, r);
    Base = b;
    // The concepts that follow see the reduced base.
    BaseImponible_ = b;
    if (ItmComsionesExt_ + ItmImportacionTmpCons_ > importe)
        CoeficienteExcedido_ = true;
    LqPorc_ = r;
    return importe;
}

double ClassLiquidacion::Concepto601611(const QString& Codigo, double& Base) {
    ctx_.LiquidacionPendiente = true;
    const double f = FOBTotalITEM_;
    const double i = AJUSTEINCLUIRtotalITEM_;
    const double d = AJUSTEDEDUCIRtotalITEM_;
    const double t = ItmImportacionTemporal_;
    const double c = ItmImportacionTmpCons_;
    const double x = ItmComsionesExt_;
    if (Codigo == QLatin1String("601")) {
        if (!(ItemCoeficienteExportacion_ == 0 || CoeficienteExcedido_)) {
            Base = 0;
            LqPorc_ = 0;
            return 0;
        }
        // The deduction is compared with its sign but enters the base added.
        Base = f + i - d - t < f + i - d - c - x - t ? f + i + d : f + i + d - c - x - t;
    } else {
        if (!(ItemCoeficienteExportacion_ > 0 && !CoeficienteExcedido_)) {
            Base = 0;
            LqPorc_ = 0;
            return 0;
        }
        const double conCoeficiente = Finito((f + i - d - t) * ItemCoeficienteExportacion_);
        const double sinInsumos = f + i - d - c - x - t;
        Base = conCoeficiente < sinInsumos ? conCoeficiente : sinInsumos;
    }
    Finito(Base);
    const QString marca = MarcaPais(ItemPais_);
    LqPorc_ = marca == QLatin1String("B") || marca == QLatin1String("M") ? ncmReintFijoIntraZona_
                                                                         : ncmReintegroFijo_;
    return Porcentual(Base, LqPorc_);
}

double ClassLiquidacion::CalcularDiemCHINA(double base) {
    if (!(ItemPais_ == QLatin1String("310") && ncmCalculaDIEMCHINA_))
        return 0;
    try {
        const double x =
            Dividir(Finito(ncmDIEMCHINAValor_ * ItemCantidadDerechoEspecifico_ * 100), base);
        const double y = x - ncmDIEMIndMaxArancelValor_;
        const double z = y - Porcentual(y, ncmDIEMPREFPorcValor_);
        const double w = z + ncmDIEMIndMaxArancelValor_;
        return DosDecimales(w * base / 100);
    } catch (const std::exception& e) {
        ctx_.dialogos().Mensaje(
            Descripcion(e) + QStringLiteral("\n\n") + QString::number(NumeroError(e)) +
                QStringLiteral(" - seccion [KORVEN.ClassLiquidacion.CalcularDIEMCHINA]"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return 0;
    }
}

void ClassLiquidacion::GetMarcaImpuestosInternos(const QString& ncm) {
    TasaNominal_ = 0;
    TasaEfectiva_ = 0;
    DecretoInterno_.clear();
    try {
        Recordset rs =
            ctx_.stores()
                .getDataConnectionByEntity(QStringLiteral("USUARIO"))
                .Abrir(QStringLiteral(
                           "select decreto, tasa_nominal from impuestos_internos where ncm = ") +
                       SqlTexto(ncm));
        if (!rs.Eof()) {
            DecretoInterno_ = EsNull(rs.Fields(QStringLiteral("decreto"))).trimmed();
            TasaNominal_ = EsNumero(rs.Fields(QStringLiteral("tasa_nominal")));
        }
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(),
                          QStringLiteral("ClassLiquidacion.GetMarcaImpuestosInternos::") +
                              e.descripcion(),
                          e.origen());
    }
}

// ---- Decimal separator ----

void ClassLiquidacion::ObtenerDecimal() {
    SeparadorDecimal_ = korven::SeparadorDecimal();
    if (SeparadorDecimal_.isEmpty())
        ctx_.dialogos().Mensaje(QStringLiteral("No se puedo obtener la información"));
}

QString ClassLiquidacion::Obtener_Sep_Decim() {
    ObtenerDecimal();
    return SeparadorDecimal_;
}

QString ClassLiquidacion::ReemplazarSeparadorDecimal(QString& texto) {
    ObtenerDecimal();
    texto.replace(QLatin1Char('.'), SeparadorDecimal_);
    texto.replace(QLatin1Char(','), SeparadorDecimal_);
    return texto;
}

// A rate typed with "," or "." as decimal point.
double ClassLiquidacion::Numero(const QString& texto) {
    QString t = texto.trimmed();
    ReemplazarSeparadorDecimal(t);
    QLocale l;
    l.setNumberOptions(QLocale::RejectGroupSeparator);
    bool ok = false;
    const double v = l.toDouble(t, &ok);
    if (!ok || !std::isfinite(v))
        throw KorvenError(kErrorTipos, QStringLiteral("No coinciden los tipos"),
                          QStringLiteral("ClassLiquidacion"));
    return v;
}

bool ClassLiquidacion::EsNumeroTexto(const QString& texto) {
    try {
        Numero(texto);
        return true;
    } catch (const KorvenError&) {
        return false;
    }
}

// A rate as the text callers read back: the system separator, up to 15 significant digits.
QString ClassLiquidacion::Texto(double valor) {
    return QString::number(valor, 'g', 15).replace(QLatin1Char('.'), korven::SeparadorDecimal());
}

} // namespace korven
