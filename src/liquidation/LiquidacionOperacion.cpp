#include "liquidation/LiquidacionOperacion.h"

#include "liquidation/ClassLiquidacion.h"
#include "liquidation/ReglasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <vector>

namespace korven {

namespace {

// One itemliq row as the concept loop reads it.
struct FilaLiq {
    QString concepto;
    QVariant porcentaje, porcentajeb, baseimp, valor, pgc, motivo, total;
};

// One entry of the row list: what the run writes back to itemliq when the liquidation is dirty.
struct Calculada {
    long long iditem;
    QString concepto;
    double base, porcentaje, total;
    QString pgc;
    QVariant motivo; // as read: a row without a motive keeps none
    bool sinCambios;
};

struct Total {
    QString concepto;
    double suma;
    QString pgc;
};

// The nomenclator columns the run reads of a position.
const QStringList kColumnasNcm{"015", "016", "017", "018", "019", "020",
                               "023", "026", "028", "053", "048", "059"};

QString Texto(const QVariant& v) {
    return EsNull(v);
}

// A rate of the store as the calculator's text (it reads "." and "," alike).
QString TextoTasa(double v) {
    return QString::number(v, 'g', 15);
}

// The header of the calculator, in the order of its properties; answers the subregime.
QString AlimentarCaratula(ClassLiquidacion& liq, Conexion& c, const QString& interno) {
    Recordset car = c.Abrir(QStringLiteral("select * from caratula where interno = ?"), {interno});
    const auto C = [&](const char* campo) {
        return IsRecord(car) ? car.Fields(QString::fromLatin1(campo)) : QVariant();
    };
    const QString sub = Texto(C("idsubreg"));
    liq.setCaratulaSubRegimen(sub);
    liq.setCaratulaFobTotal(EsNumero(C("fobdivisas")));
    liq.setCaratulaFobTotal(EsNumero(
        c.Abrir(QStringLiteral("select sum(fob) as total from groupsubitems where interno = ?"),
                {interno})
            .Fields(0)));
    liq.setCaratulaFobTotalSinG(EsNumero(C("fobdivisas")));
    liq.setCaratulaFobTotalSinG(EsNumero(
        c.Abrir(QStringLiteral("select sum(fobtotal) as total from item where interno = ? and "
                               "tipoitem <> 'G'"),
                {interno})
            .Fields(0)));
    liq.setCaratulaFleteTotal(EsNumero(C("fletedivisas")));
    liq.setCaratulaSeguroValor(EsNumero(C("segurodivisas")));
    liq.setCaratulaSeguroProcent(EsNumero(C("seguroporcentaje")));
    liq.setCaratulaAjusteIncluir(EsNumero(C("ajusteincluir")));
    liq.setCaratulaAjusteDeducir(EsNumero(C("ajustededucir")));
    liq.setCaratulaDivisasFOB(EsNumero(C("fobdivcambio")));
    liq.setCaratulaDivisasFlete(EsNumero(C("fletedivcambio")));
    liq.setCaratulaDivisasSeguro(EsNumero(C("segurodivcambio")));
    liq.setCaratulaFactordeConvergencia(EsNumero(C("factorconver")));

    return sub;
}

// The nomenclator columns above of each position ("001"), keyed "001|002": the first row of a
// position, as a lookup finds it.
QHash<QString, std::vector<QVariant>> LeerPosiciones(AppContext& ctx,
                                                     const QSet<QString>& posiciones) {
    QHash<QString, std::vector<QVariant>> ncm;
    QStringList cols;
    for (const QString& col : kColumnasNcm)
        cols << QLatin1Char('"') + col + QLatin1Char('"');
    Conexion& cn = ctx.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
    const QStringList lista(posiciones.begin(), posiciones.end());
    for (qsizetype desde = 0; desde < lista.size(); desde += 500) {
        QStringList literales;
        for (const QString& p : lista.mid(desde, 500))
            literales << SqlTexto(p);
        Recordset rs =
            cn.Abrir(QStringLiteral("select \"001\",\"002\",") + cols.join(QLatin1Char(',')) +
                     QStringLiteral(" from ncm where \"001\" in (") +
                     literales.join(QLatin1Char(',')) + QStringLiteral(")"));
        for (; !rs.Eof(); rs.MoveNext()) {
            const QString clave = Texto(rs.Fields(0)) + QLatin1Char('|') + Texto(rs.Fields(1));
            if (ncm.contains(clave))
                continue;
            std::vector<QVariant> v;
            for (int i = 0; i < kColumnasNcm.size(); ++i)
                v.push_back(rs.Fields(i + 2));
            ncm.insert(clave, v);
        }
    }
    return ncm;
}

// The special duties by position; of one position only when given.
QHash<QString, double> LeerDiem(AppContext& ctx, const QString& posicion) {
    QHash<QString, double> diem;
    Conexion& cs = ctx.stores().getDataConnectionByEntity(QStringLiteral("SYSTABLAS"));
    Recordset rs =
        posicion.isNull()
            ? cs.Abrir(QStringLiteral("select ncm, diem from diemchina"))
            : cs.Abrir(QStringLiteral("select ncm, diem from diemchina where ncm = ?"), {posicion});
    for (; !rs.Eof(); rs.MoveNext())
        if (!diem.contains(Texto(rs.Fields(0))))
            diem.insert(Texto(rs.Fields(0)), EsNumero(rs.Fields(1)));
    return diem;
}

// The item and its position, as the calculator takes them before its concepts: F reads a
// column of the item, n is the position's row (none when it is not in the nomenclator), and
// the three rows are the item's own 010, 011 and 016. Answers whether the position is LAPI.
bool AlimentarItem(ClassLiquidacion& liq, AppContext& ctx, const QString& sub,
                   const std::function<QVariant(const char*)>& F, const std::vector<QVariant>* n,
                   const FilaLiq* f010, const FilaLiq* f011, const FilaLiq* f016,
                   const QHash<QString, double>& diem) {
    const QString posicion = Texto(F("ncm"));
    const QString lista = Texto(F("lista"));
    liq.setFOBTotalITEM(EsNumero(F("fobtotal")));
    liq.setFLETETotalITEM(EsNumero(F("itflete")));
    liq.setSEGUROTotalITEM(EsNumero(F("itseguro")));
    liq.setAJUSTEINCLUIRtotalITEM(EsNumero(F("ajusteinc")));
    liq.setAJUSTEDEDUCIRtotalITEM(EsNumero(F("ajusteded")));
    liq.setItemLISTA_MERCOSUR(lista.toUpper() == QLatin1String("MERCOSUR"));
    liq.setItemxItmCOFEXP(EsNumero(F("cofexp")));
    liq.setItemCantidad(EsNumero(F("cantidad")));
    liq.setItemIdPais(Texto(F("idpais")));
    liq.setItmComsionesExt(EsNumero(F("itcomext")));
    liq.setItmImportacionTemporal(EsNumero(F("insumostemp")));
    liq.setItmImportacionTmpCons(EsNumero(F("insumosacons")));
    liq.setItemCoeficienteExportacion(EsNumero(F("cofexp")));
    liq.setItemEstadoMercaderia(Texto(F("estadomerc")));
    liq.setItemCantidadDerechoEspecifico(EsNumero(F("valorderesp")));
    liq.setItemCalcularCoeficienteExportacion(ctx.CalcularCoeficiente);
    liq.setItemLista(lista);
    liq.setItemMineria(Texto(F("mineria")) == QLatin1String("S"));
    liq.setncmMineriaTasaLey(1);

    // The position.
    const auto N = [&](const char* col) {
        return n ? n->at(static_cast<size_t>(kColumnasNcm.indexOf(QLatin1String(col))))
                 : QVariant();
    };
    if (const FilaLiq* f = f010) {
        if (EsNumerico(f->porcentaje)) {
            liq.setNcmDerechodeImportacionExtrazona(EsNumero(f->porcentaje));
            if (EsNumero(f->porcentaje) > 0)
                liq.setNcmDerechodeImportacionExtrazonaForce(true);
        } else {
            liq.setNcmDerechodeImportacionExtrazona(EsNumero(N("015")));
        }
    } else {
        liq.setNcmDerechodeImportacionExtrazona(0);
    }
    if (const FilaLiq* f = f011)
        liq.setNcmTasaEstadistica(EsNumero(f->porcentaje) > 0 ? EsNumero(f->porcentaje)
                                                              : EsNumero(N("016")));
    else
        liq.setNcmTasaEstadistica(0);
    if (sub != QLatin1String("IC81") && !SubregimenTemporal(sub)) {
        liq.setNcmDerechoAdicional(QStringLiteral("0"));
    } else {
        const FilaLiq* f = f016;
        if (f && EsNumero(f->valor) == 1) {
            liq.setNcmDerechoAdicional(TextoTasa(EsNumero(f->porcentaje)));
        } else {
            const auto S = [](const QString& v) { return v == QLatin1String("S"); };
            QString tasa = QStringLiteral("0");
            if (S(ctx.FlagDto1439) || S(ctx.FlagD1330A6))
                tasa = QStringLiteral("24");
            else if (S(ctx.FlagDto1439A1) || S(ctx.FlagD1330A7))
                tasa = QStringLiteral("48");
            else if (S(ctx.FlagD1330A8))
                tasa = QStringLiteral("72");
            liq.setNcmDerechoAdicional(tasa);
        }
    }
    liq.GetMarcaImpuestosInternos(posicion);
    if (n) {
        liq.setNcmDerechodeExpo(EsNumero(N("018")));
        liq.setncmCantidadDerechoEspecifico(EsNumero(N("017")));
        liq.setNcmUnidadDerechoEspecifico(Texto(N("020")));
        liq.setNcmIndicadorMaximoArancel(EsNumero(N("053")));
        liq.setncmReintegroFijo(EsNumero(N("019")));
        liq.setncmReintFijoIntraZona(EsNumero(N("023")));
        liq.setncmExencionReduccionIVA(EsNumero(N("048")));
        liq.setncm_AEC(Texto(N("028")));
        liq.setncmValor_AEC(EsNumero(N("026")));
    }
    const bool lapi = Texto(N("059")) == QLatin1String("*");
    liq.setncmDIEMPREFPorcValor(ctx.config().DIEMCHINA_PrefPorc);
    liq.setncmDIEMIndMaxArancelValor(ctx.config().DIEMCHINA_IndMaxArancel);
    const auto itD = diem.constFind(posicion.left(10));
    liq.setncmCalculaDIEMCHINA(itD != diem.constEnd());
    if (itD != diem.constEnd())
        liq.setncmDIEMCHINAValor(itD.value());
    liq.setCalculoAEC(ctx.CalculoAEC);
    return lapi;
}

// The body of Calcular: every failure goes to its caller, which names the section.
LiquidacionOperacion::Resultado Liquidar(AppContext& ctx, Conexion& c, const QString& interno,
                                         const std::function<void(const QString&)>& estado) {
    SentenciasPreparadas preparadas;
    ClassLiquidacion liq(ctx);
    LiquidacionOperacion::Resultado res;

    const QString sub = AlimentarCaratula(liq, c, interno);

    // What the loop needs, read once: the items, their rows, their positions, the special
    // duties and the advantages already given.
    Recordset items = c.Abrir(
        QStringLiteral("select * from item where interno = ? and id > 0 order by id"), {interno});
    QHash<long long, std::vector<FilaLiq>> filas;
    {
        Recordset rs = c.Abrir(QStringLiteral("select idconceptos, porcentaje, porcentajeb, "
                                              "baseimp, valor, pgc, motivo, iditem, total from "
                                              "itemliq "
                                              "where iditem > 0 and interno = ? order by iditem, "
                                              "idconceptos"),
                               {interno});
        for (; !rs.Eof(); rs.MoveNext())
            filas[static_cast<long long>(EsNumero(rs.Fields(7)))].push_back(
                {Texto(rs.Fields(0)), rs.Fields(1), rs.Fields(2), rs.Fields(3), rs.Fields(4),
                 rs.Fields(5), rs.Fields(6), rs.Fields(8)});
    }
    QSet<QString> posiciones;
    for (items.MoveFirst(); !items.Eof(); items.MoveNext())
        posiciones.insert(Texto(items.Fields(QStringLiteral("ncm"))).left(10));
    items.MoveFirst();
    const QHash<QString, std::vector<QVariant>> ncm = LeerPosiciones(ctx, posiciones);
    const QHash<QString, double> diem = LeerDiem(ctx, {});
    QSet<long long> conVehiculoPartes;
    {
        Recordset rs = c.Abrir(QStringLiteral("select iditem from itemventaja where interno = ? "
                                              "and idventaja = 'VEHICULOPARTES'"),
                               {interno});
        for (; !rs.Eof(); rs.MoveNext())
            conVehiculoPartes.insert(static_cast<long long>(EsNumero(rs.Fields(0))));
    }

    const QString sub2 = sub.left(2);
    bool lapiFueraDeRegimen = false;
    int respuestaLapi = -1; // the automotive question, asked once per run
    double sumaBaseIVA = 0, sumaBaseImp = 0, sumaAjDed = 0, sumaAjInc = 0;
    double base = 0; // a rate without value takes the base the previous call left
    std::vector<Calculada> calculadas;
    std::vector<Total> totales;
    QHash<QString, size_t> indiceTotal;

    for (; !items.Eof(); items.MoveNext()) {
        const auto F = [&](const char* campo) { return items.Fields(QString::fromLatin1(campo)); };
        const auto id = static_cast<long long>(EsNumero(F("id")));
        const QString posicion = Texto(F("ncm"));
        const QString lista = Texto(F("lista"));
        const std::vector<FilaLiq>& suyas = filas[id];
        const auto fila = [&](const char* concepto) -> const FilaLiq* {
            for (const FilaLiq& f : suyas)
                if (f.concepto == QLatin1String(concepto))
                    return &f;
            return nullptr;
        };

        const FilaLiq* f010 = fila("010");
        const FilaLiq* f011 = fila("011");
        const FilaLiq* f016 = fila("016");
        const auto itN =
            ncm.constFind(posicion.left(10) + QLatin1Char('|') + posicion.right(4).left(3));
        const std::vector<QVariant>* n = itN == ncm.constEnd() ? nullptr : &itN.value();
        const bool lapi = AlimentarItem(liq, ctx, sub, F, n, f010, f011, f016, diem);
        const double ajInc = liq.AJUSTEINCLUIRtotalITEM();
        const double ajDed = liq.AJUSTEDEDUCIRtotalITEM();

        // The automotive regime.
        if ((liq.CalculoAEC() == QLatin1String("R") ||
             lista == QLatin1String("314/R.AUTOMOTRIZ")) &&
            sub.left(1) != QLatin1String("E") &&
            (sub2 != QLatin1String("IC") || sub.left(3) == QLatin1String("ICR"))) {
            const QString aec = liq.ncm_AEC().trimmed();
            const QString marca = MarcaPais(liq.ItemIdPais());
            const auto vehiculoPartes = [&] {
                if (conVehiculoPartes.contains(id))
                    return;
                c.Ejecutar(QStringLiteral("insert into itemventaja (iditem,idventaja,interno) "
                                          "values (?,'VEHICULOPARTES',?)"),
                           {static_cast<double>(id), interno});
                conVehiculoPartes.insert(id);
            };
            if (aec == QLatin1String("*") && marca != QLatin1String("M")) {
                if (lapi)
                    vehiculoPartes();
            } else if (aec.isEmpty()) {
                if (lapi && sub != QLatin1String("ICR1"))
                    lapiFueraDeRegimen = true;
                if (marca == QLatin1String("B")) {
                    if (c.Ejecutar(QStringLiteral("UPDATE item set lista = 'MERCOSUR' where id = "
                                                  "? and interno = ? and (itmodif<>'S' or "
                                                  "itmodif is null)"),
                                   {static_cast<double>(id), interno}) > 0)
                        liq.setItemLISTA_MERCOSUR(true);
                } else if (sub == QLatin1String("ICR1") && lapi) {
                    if (respuestaLapi < 0)
                        respuestaLapi =
                            ctx.dialogos().Pregunta(
                                QStringLiteral("ADVERTENCIA: Hay Posiciones arancelarias con "
                                               "LAPI pero no pertenecen\nal régimen automotriz, "
                                               "desea agregarle igual la ventaja "
                                               "VEHICULOPARTES?"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Pregunta)
                                ? 1
                                : 0;
                    if (respuestaLapi == 1)
                        vehiculoPartes();
                }
            }
        }

        sumaAjDed += ajDed;
        sumaAjInc += ajInc;
        sumaBaseImp += liq.ObtenerBaseImponible();
        sumaBaseIVA += liq.ObtenerBaseIVA();

        // The concept loop.
        for (const FilaLiq& f : suyas) {
            const QString& cod = f.concepto;
            const bool sin = f.porcentaje.isNull() || EsNumero(f.porcentaje) == 0;
            const bool merco = liq.ItemLISTA_MERCOSUR();
            QString porcentaje;
            QString porcentajeB;
            double valor = 0;
            bool sinCoeficiente = false;
            if (sin || (merco && cod != QLatin1String("424") && cod != QLatin1String("422"))) {
                valor = EsNumero(f.valor);
                if (QStringList{"424", "422", "900", "854", "856"}.contains(cod)) {
                    porcentaje = f.porcentaje.isNull() ? QStringLiteral("Vacio")
                                                       : TextoTasa(EsNumero(f.porcentaje));
                } else {
                    base = EsNumero(f.baseimp);
                    if (EsNumero(f.porcentaje) > 0 && base > 0) {
                        porcentaje = TextoTasa(EsNumero(f.porcentaje));
                        porcentajeB = QStringLiteral("0");
                    } else {
                        porcentaje = QStringLiteral("Vacio");
                    }
                }
            } else {
                base = EsNumero(f.baseimp);
                valor = EsNumero(f.valor);
                porcentajeB = TextoTasa(EsNumero(f.porcentajeb));
                sinCoeficiente = true;
                porcentaje = TextoTasa(EsNumero(f.porcentaje));
            }
            const double importe = liq.ObtenerValorConcepto(cod, porcentaje, 0, base, porcentajeB,
                                                            valor, sinCoeficiente);
            const double tasa = liq.ObtenerLqPorc();
            if (cod == QLatin1String("020") && ctx.CalcularCoeficiente && id != 0)
                c.Ejecutar(QStringLiteral("update item set cofexp = ? where interno = ? and id = "
                                          "?"),
                           {liq.ItemCoeficienteExportacion(), interno, static_cast<double>(id)});
            const QString pgc = f.pgc.isNull() ? QStringLiteral("P") : Texto(f.pgc).trimmed();
            const double total = RedondearDecimal(importe, 2);
            const double b = RedondearDecimal(base, 2), p = RedondearDecimal(tasa, 2);
            const auto igual = [](const QVariant& v, double x) {
                return !v.isNull() && EsNumero(v) == x;
            };
            calculadas.push_back({id, cod, b, p, total, pgc, f.motivo,
                                  igual(f.baseimp, b) && igual(f.porcentaje, p) &&
                                      igual(f.total, total) && !f.pgc.isNull() &&
                                      Texto(f.pgc) == pgc});
            const auto it = indiceTotal.constFind(cod);
            if (it == indiceTotal.constEnd()) {
                indiceTotal.insert(cod, totales.size());
                totales.push_back({cod, total, pgc});
            } else {
                totales[it.value()].suma += total;
            }
        }
    }

    // The totals.
    if (lapiFueraDeRegimen) {
        c.Ejecutar(QStringLiteral("delete from itemventaja where interno = ? and idventaja = "
                                  "'VEHICULOPARTES'"),
                   {interno});
        ctx.dialogos().Mensaje(QStringLiteral("ADVERTENCIA: Hay posiciones con LAPI\npero que no "
                                              "estan en el Regimen Automotriz.\n\nVerifique el "
                                              "subregimen del despacho."),
                               QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
    }
    c.Ejecutar(QStringLiteral("delete from liqcero where interno = ?"), {interno});
    QHash<QString, QString> descripciones;
    {
        Recordset rs = c.Abrir(QStringLiteral("select ctax, ltaxabr as descripcion from tax"));
        for (; !rs.Eof(); rs.MoveNext())
            if (!descripciones.contains(Texto(rs.Fields(0))))
                descripciones.insert(Texto(rs.Fields(0)), Texto(rs.Fields(1)));
    }
    const QString dosDecimales = QStringLiteral("00.00");
    const auto insertar = [&](const QString& cod, const QString& texto, double valor,
                              const QString& pgc) {
        c.Ejecutar(QStringLiteral("insert into liqcero (idconcepto,concepto,valor,interno,pgc) "
                                  "values (?,?,?,?,?)"),
                   {cod, texto, RedondearDecimal(valor, 2), interno, pgc});
    };
    const auto sumar = [&](const QString& pgc, double valor) {
        if (pgc == QLatin1String("G"))
            res.garantizar += valor;
        else if (pgc == QLatin1String("C"))
            res.cobrar += valor;
        else
            res.pagar += valor;
    };
    for (const Total& t : totales) {
        const bool arancel =
            t.concepto == QLatin1String("500") || t.concepto == QLatin1String("501");
        const QString arancelTexto = t.concepto == QLatin1String("501")
                                         ? QStringLiteral("ARANCEL SIM EXPO")
                                         : QStringLiteral("ARANCEL SIM IMPO");
        const auto itT = descripciones.constFind(t.concepto);
        if (arancel) {
            res.grilla.push_back({t.concepto,
                                  itT != descripciones.constEnd() ? itT.value() : arancelTexto,
                                  Formato(10.0, dosDecimales)});
            insertar(t.concepto, arancelTexto, 10, QStringLiteral("P"));
            res.pagar += 10;
        } else if (itT != descripciones.constEnd()) {
            if (t.suma > 0) {
                res.grilla.push_back({t.concepto, itT.value(), Formato(t.suma, dosDecimales)});
                insertar(t.concepto, itT.value(), t.suma,
                         t.pgc.isEmpty() ? QStringLiteral("P") : t.pgc);
                sumar(t.pgc, t.suma);
            }
        } else if (t.concepto == QLatin1String("FCV")) {
            res.grilla.push_back(
                {t.concepto, QStringLiteral("Factor de Convergencia"),
                 QLatin1Char('(') + Formato(t.suma, dosDecimales) + QLatin1Char(')')});
            c.Ejecutar(QStringLiteral("insert into liqcero (idconcepto,concepto,valor,interno) "
                                      "values (?,?,?,?)"),
                       {t.concepto, QStringLiteral(""), RedondearDecimal(t.suma, 2), interno});
        } else if (t.suma > 0) {
            if (t.pgc == QLatin1String("G") || t.pgc == QLatin1String("C")) {
                // The text of a concept that tax does not have: the run fails here.
                Recordset vacio =
                    c.Abrir(QStringLiteral("select ltaxabr as descripcion from tax where ctax = ?"),
                            {t.concepto});
                vacio.Fields(QStringLiteral("descripcion"));
            }
            res.grilla.push_back({t.concepto, QString(), Formato(t.suma, dosDecimales)});
            insertar(t.concepto, QStringLiteral(""), t.suma, QStringLiteral("P"));
            sumar(QStringLiteral("P"), t.suma);
        }
    }
    const auto interna = [&](const char* cod, double suma) {
        c.Ejecutar(QStringLiteral("insert into liqcero (idconcepto,valor,interno) values "
                                  "(?,?,?)"),
                   {QString::fromLatin1(cod), RedondearDecimal(suma, 2), interno});
    };
    interna("###baseiva", sumaBaseIVA);
    interna("###baseimp", sumaBaseImp);
    interna("###ajded", sumaAjDed);
    interna("###ajinc", sumaAjInc);

    if (ctx.LiquidacionPendiente) {
        long long anterior = -1;
        for (const Calculada& k : calculadas) {
            if (estado && k.iditem != anterior)
                estado(QStringLiteral("Liquidando ITEM %1 ...").arg(k.iditem));
            anterior = k.iditem;
            if (k.sinCambios)
                continue; // the row holds these values already
            c.Ejecutar(QStringLiteral("update itemliq set baseimp = ?,porcentaje = ?,total = "
                                      "?,pgc = ?,motivo = ? where interno = ? and iditem = ? "
                                      "and idconceptos = ?"),
                       {k.base, k.porcentaje, k.total, k.pgc, k.motivo, interno,
                        static_cast<double>(k.iditem), k.concepto});
        }
        ctx.LiquidacionPendiente = false;
        if (estado)
            estado(QStringLiteral("LISTO"));
    }
    return res;
}

} // namespace

LiquidacionOperacion::ValoresItem LiquidacionOperacion::Item(const QString& interno, long long id) {
    ClassLiquidacion liq(ctx_);
    const QString sub = AlimentarCaratula(liq, c_, interno);
    Recordset item = c_.Abrir(QStringLiteral("select * from item where interno = ? and id = ?"),
                              {interno, static_cast<double>(id)});
    ValoresItem v;
    if (!IsRecord(item))
        return v;
    std::vector<FilaLiq> suyas;
    for (Recordset rs = c_.Abrir(QStringLiteral("select idconceptos, porcentaje, porcentajeb, "
                                                "baseimp, valor, pgc, motivo, total from itemliq "
                                                "where interno = ? and iditem = ? and "
                                                "idconceptos in ('010','011','016')"),
                                 {interno, static_cast<double>(id)});
         !rs.Eof(); rs.MoveNext())
        suyas.push_back({Texto(rs.Fields(0)), rs.Fields(1), rs.Fields(2), rs.Fields(3),
                         rs.Fields(4), rs.Fields(5), rs.Fields(6), rs.Fields(7)});
    const auto fila = [&](const char* concepto) -> const FilaLiq* {
        for (const FilaLiq& f : suyas)
            if (f.concepto == QLatin1String(concepto))
                return &f;
        return nullptr;
    };
    const QString posicion = Texto(item.Fields(QStringLiteral("ncm")));
    const auto ncm = LeerPosiciones(ctx_, {posicion.left(10)});
    const auto itN =
        ncm.constFind(posicion.left(10) + QLatin1Char('|') + posicion.right(4).left(3));
    const std::vector<QVariant>* n = itN == ncm.constEnd() ? nullptr : &itN.value();
    v.enNomenclador = n != nullptr;
    const auto F = [&](const char* campo) { return item.Fields(QString::fromLatin1(campo)); };
    v.lapi = AlimentarItem(liq, ctx_, sub, F, n, fila("010"), fila("011"), fila("016"),
                           LeerDiem(ctx_, posicion.left(10)));
    v.baseImp = liq.ObtenerBaseImponible();
    v.baseIVA = liq.ObtenerBaseIVA();
    v.fobUs = liq.ObtenerFobItemUS();
    v.fleteUs = liq.ObtenerFLETEItemUs();
    v.seguroUs = liq.ObtenerSEGUROItemUs();
    v.ajusteIncUs = liq.ObtenerAjusteIncUs();
    v.ajusteDedUs = liq.ObtenerAjusteDedUs();
    return v;
}

LiquidacionOperacion::LiquidacionOperacion(AppContext& ctx, Conexion& c) : ctx_(ctx), c_(c) {}

LiquidacionOperacion::Resultado
LiquidacionOperacion::Calcular(const QString& interno,
                               const std::function<void(const QString&)>& estado) {
    try {
        return Liquidar(ctx_, c_, interno, estado);
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(),
                          QStringLiteral("KORVEN.frmverItem.VerDetalleITEM"));
    }
}

} // namespace korven
