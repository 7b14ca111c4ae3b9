#pragma once

// Fills a calculator from a compact text, "Propiedad=valor;Propiedad=valor", so that each row of
// a data-driven test states the whole item it calculates. Numbers are written with ".".

#include "liquidation/ClassLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/SettingsStore.h"
#include "support/TestStores.h"

#include <QStringList>
#include <QTest>
#include <functional>

namespace korven::test {

// The operation every calculator test works on.
inline const QString kInterno = QStringLiteral("100");

inline void AplicarAjustes(ClassLiquidacion& l, AppContext& ctx, const QString& ajustes) {
    for (const QString& par : ajustes.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int i = par.indexOf(QLatin1Char('='));
        QVERIFY2(i > 0, qPrintable(par));
        const QString k = par.left(i).trimmed();
        const QString v = par.mid(i + 1);
        bool ok = true;
        const double n = v.toDouble(&ok);
        const bool b = v == QLatin1String("1");
        auto numero = [&](auto&& fijar) {
            QVERIFY2(ok, qPrintable(par));
            fijar(n);
        };
        if (k == "SubReg")
            l.setCaratulaSubRegimen(v);
        else if (k == "CaratulaFobTotal")
            numero([&](double x) { l.setCaratulaFobTotal(x); });
        else if (k == "CaratulaFleteTotal")
            numero([&](double x) { l.setCaratulaFleteTotal(x); });
        else if (k == "CaratulaSeguroValor")
            numero([&](double x) { l.setCaratulaSeguroValor(x); });
        else if (k == "CaratulaSeguroProcent")
            numero([&](double x) { l.setCaratulaSeguroProcent(x); });
        else if (k == "DivFOB")
            numero([&](double x) { l.setCaratulaDivisasFOB(x); });
        else if (k == "DivFlete")
            numero([&](double x) { l.setCaratulaDivisasFlete(x); });
        else if (k == "DivSeguro")
            numero([&](double x) { l.setCaratulaDivisasSeguro(x); });
        else if (k == "Derecho")
            numero([&](double x) { l.setNcmDerechodeImportacionExtrazona(x); });
        else if (k == "Force")
            l.setNcmDerechodeImportacionExtrazonaForce(b);
        else if (k == "Estadistica")
            numero([&](double x) { l.setNcmTasaEstadistica(x); });
        else if (k == "Adicional")
            l.setNcmDerechoAdicional(v);
        else if (k == "Expo")
            numero([&](double x) { l.setNcmDerechodeExpo(x); });
        else if (k == "CantEsp")
            numero([&](double x) { l.setncmCantidadDerechoEspecifico(x); });
        else if (k == "Indicador")
            numero([&](double x) { l.setNcmIndicadorMaximoArancel(x); });
        else if (k == "Reintegro")
            numero([&](double x) { l.setncmReintegroFijo(x); });
        else if (k == "ReintegroIntra")
            numero([&](double x) { l.setncmReintFijoIntraZona(x); });
        else if (k == "Exencion")
            numero([&](double x) { l.setncmExencionReduccionIVA(x); });
        else if (k == "ncm_AEC")
            l.setncm_AEC(v);
        else if (k == "ValorAEC")
            numero([&](double x) { l.setncmValor_AEC(x); });
        else if (k == "TasaLey")
            numero([&](double x) { l.setncmMineriaTasaLey(x); });
        else if (k == "FOB")
            numero([&](double x) { l.setFOBTotalITEM(x); });
        else if (k == "Flete")
            numero([&](double x) { l.setFLETETotalITEM(x); });
        else if (k == "Seguro")
            numero([&](double x) { l.setSEGUROTotalITEM(x); });
        else if (k == "AjInc")
            numero([&](double x) { l.setAJUSTEINCLUIRtotalITEM(x); });
        else if (k == "AjDed")
            numero([&](double x) { l.setAJUSTEDEDUCIRtotalITEM(x); });
        else if (k == "ValorEsp")
            numero([&](double x) { l.setItemCantidadDerechoEspecifico(x); });
        else if (k == "Pais")
            l.setItemIdPais(v);
        else if (k == "Coef")
            numero([&](double x) { l.setItemCoeficienteExportacion(x); });
        else if (k == "CalcCoef")
            l.setItemCalcularCoeficienteExportacion(b);
        else if (k == "Lista")
            l.setItemLista(v);
        else if (k == "Mercosur")
            l.setItemLISTA_MERCOSUR(b);
        else if (k == "Mineria")
            l.setItemMineria(b);
        else if (k == "Temporal")
            numero([&](double x) { l.setItmImportacionTemporal(x); });
        else if (k == "TmpCons")
            numero([&](double x) { l.setItmImportacionTmpCons(x); });
        else if (k == "ComExt")
            numero([&](double x) { l.setItmComsionesExt(x); });
        else if (k == "IVARIN")
            numero([&](double x) { ctx.config().IVARIN = x; });
        else if (k == "IVARNI")
            numero([&](double x) { ctx.config().IVARNI = x; });
        else if (k == "FlagDto1439")
            ctx.FlagDto1439 = v;
        else if (k == "FlagDto1439A1")
            ctx.FlagDto1439A1 = v;
        else if (k == "AEC")
            ctx.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), kInterno,
                                       v);
        else
            QFAIL(qPrintable(QStringLiteral("Ajuste desconocido: ") + k));
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
    QString AEC() {
        return t.settings().GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), kInterno,
                                       QStringLiteral("<nada>"));
    }
    TestStores t;
    ClassLiquidacion liq;
};

// The text of a number written with "." as the system writes it.
inline QString ConSeparador(QString texto, const QString& separador) {
    return texto.replace(QLatin1Char('.'), separador);
}

} // namespace korven::test
