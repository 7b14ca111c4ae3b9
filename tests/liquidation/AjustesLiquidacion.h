#pragma once

// Fills a calculator from a compact text, "Propiedad=valor;Propiedad=valor", so that each row of
// a data-driven test states the whole item it calculates. Numbers are written with ".".

#include "liquidation/ClassLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"
#include "support/LiqTablas.h"
#include "support/TestStores.h"

#include <QHash>

namespace korven::test {

// The operation every calculator test works on.
inline const QString kInterno = QStringLiteral("100");

using L = ClassLiquidacion;

inline void AplicarAjustes(ClassLiquidacion& l, AppContext& ctx, const QString& ajustes) {
    static const QHash<QString, void (L::*)(double)> numeros = {
        {"CaratulaFobTotal", &L::setCaratulaFobTotal},
        {"DivFOB", &L::setCaratulaDivisasFOB},
        {"CaratulaFleteTotal", &L::setCaratulaFleteTotal},
        {"DivFlete", &L::setCaratulaDivisasFlete},
        {"CaratulaSeguroValor", &L::setCaratulaSeguroValor},
        {"Expo", &L::setNcmDerechodeExpo},
        {"CaratulaSeguroProcent", &L::setCaratulaSeguroProcent},
        {"FOB", &L::setFOBTotalITEM},
        {"DivSeguro", &L::setCaratulaDivisasSeguro},
        {"Flete", &L::setFLETETotalITEM},
        {"Derecho", &L::setNcmDerechodeImportacionExtrazona},
        {"Seguro", &L::setSEGUROTotalITEM},
        {"Estadistica", &L::setNcmTasaEstadistica},
        {"AjInc", &L::setAJUSTEINCLUIRtotalITEM},
        {"CantEsp", &L::setncmCantidadDerechoEspecifico},
        {"AjDed", &L::setAJUSTEDEDUCIRtotalITEM},
        {"Indicador", &L::setNcmIndicadorMaximoArancel},
        {"Reintegro", &L::setncmReintegroFijo},
        {"ReintegroIntra", &L::setncmReintFijoIntraZona},
        {"ValorAEC", &L::setncmValor_AEC},
        {"Exencion", &L::setncmExencionReduccionIVA},
        {"TasaLey", &L::setncmMineriaTasaLey},
        {"ValorEsp", &L::setItemCantidadDerechoEspecifico},
        {"ComExt", &L::setItmComsionesExt},
        {"Coef", &L::setItemCoeficienteExportacion},
        {"TmpCons", &L::setItmImportacionTmpCons},
        {"Temporal", &L::setItmImportacionTemporal}};
    static const QHash<QString, void (L::*)(const QString&)> textos = {
        {"SubReg", &L::setCaratulaSubRegimen},
        {"Adicional", &L::setNcmDerechoAdicional},
        {"ncm_AEC", &L::setncm_AEC},
        {"Pais", &L::setItemIdPais},
        {"Lista", &L::setItemLista}};
    static const QHash<QString, void (L::*)(bool)> marcas = {
        {"Force", &L::setNcmDerechodeImportacionExtrazonaForce},
        {"Mineria", &L::setItemMineria},
        {"CalcCoef", &L::setItemCalcularCoeficienteExportacion},
        {"Mercosur", &L::setItemLISTA_MERCOSUR}};
    for (const QString& par : ajustes.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int i = par.indexOf(QLatin1Char('='));
        const QString k = par.left(i).trimmed();
        const QString v = par.mid(i + 1);
        if (numeros.contains(k))
            (l.*numeros.value(k))(N(v));
        else if (textos.contains(k))
            (l.*textos.value(k))(v);
        else if (marcas.contains(k))
            (l.*marcas.value(k))(v == QLatin1String("1"));
        else if (k == "IVARIN" || k == "IVARNI")
            (k == "IVARIN" ? ctx.config().IVARIN : ctx.config().IVARNI) = N(v);
        else if (k == "FlagDto1439" || k == "FlagDto1439A1")
            (k == "FlagDto1439" ? ctx.FlagDto1439 : ctx.FlagDto1439A1) = v;
        else if (k == "AEC")
            ctx.settings().SaveSetting("KORVEN", "AEC", kInterno, v);
        else
            qFatal("Ajuste desconocido: %s", qPrintable(k));
    }
}

// An import item of FOB 1000 at a rate of exchange of 1 from a country with the tariff cap:
// BaseImponible 1000; with no duty nor fee, BaseIVA 1000 too.
inline const QString kItem = QStringLiteral("SubReg=IC04;DivFOB=1;FOB=1000;Pais=101;");

// A calculator on private stores, working on the operation kInterno, filled from the text.
struct Calculadora {
    explicit Calculadora(const QString& ajustes = {}) : t(Motor::SQLite), liq(t.ctx()) {
        t.ctx().InternoActual = kInterno;
        AplicarAjustes(liq, t.ctx(), ajustes);
    }
    // Concept codigo with the percentage p and base b; both come back as the calculator left them.
    double Concepto(const QString& codigo, QString& p, double& b, const QString& pB = {},
                    double valor = 0, bool sinCoef = false) {
        return liq.ObtenerValorConcepto(codigo, p, 0, b, pB, valor, sinCoef);
    }
    TestStores t;
    ClassLiquidacion liq;
};

// The text of a number written with "." as the system writes it.
inline QString ConSeparador(QString texto, const QString& separador) {
    return texto.replace(QLatin1Char('.'), separador);
}

} // namespace korven::test
