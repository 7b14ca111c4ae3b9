#include "liquidation/GeneracionLiquidacion.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Recordset.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/ValueRules.h"

#include <QHash>
#include <QStringList>
#include <vector>

namespace korven {

namespace {

// The codes of a list as the SQL list of an "in": each code once, in the order of the list, so
// that a list that repeats a code gives the same statement as the one that does not (the insert
// takes distinct rows anyway) and the statement prepared for the first item serves the rest.
QString ListaSql(const QString& conceptos) {
    QStringList vistos;
    for (const QString& c : conceptos.split(QLatin1Char(','), Qt::SkipEmptyParts))
        if (!vistos.contains(c))
            vistos << c;
    QStringList r;
    for (const QString& c : vistos)
        r << SqlTexto(c);
    return r.join(QLatin1Char(','));
}

QString Num(double v) {
    return SqlNumero(v, QStringLiteral("."));
}

// The items the statements of a generation apply to: one item, bound, or a group of items of
// an Operation whose rows were deleted, named by their numbers, that share the list and the
// values. Each statement touches only the rows of its items, so a group run statement by
// statement leaves the rows that item by item would.
struct Destino {
    QString interno;
    double item = 0;        // one item
    QList<long long> grupo; // or these

    QString Filtro() const {
        return grupo.isEmpty()
                   ? QStringLiteral(" interno = ? and iditem = ?")
                   : QStringLiteral(" interno = ? and iditem in (") + Ids() + QStringLiteral(")");
    }
    QVariantList Clave(QVariantList antes = {}) const {
        antes << interno;
        if (grupo.isEmpty())
            antes << item;
        return antes;
    }
    QString Ids() const {
        QStringList r;
        for (long long id : grupo)
            r << QString::number(id);
        return r.join(QLatin1Char(','));
    }
    // The rows of the codes of tax, with the item number and the Operation.
    void InsertarConceptos(Conexion& c, const QString& lista) const {
        if (grupo.isEmpty())
            c.Ejecutar(QStringLiteral("insert into itemliq (pgc,iditem,idconceptos,interno,"
                                      "conceptos,porcentaje) select distinct ctaxpog,cast(? as "
                                      "double precision),ctax,?,ltaxabr,porcentaje from tax "
                                      "where ctax in (") +
                           lista + QStringLiteral(")"),
                       {item, interno});
        else
            c.Ejecutar(QStringLiteral("insert into itemliq (pgc,iditem,idconceptos,interno,"
                                      "conceptos,porcentaje,baseimp,total) select distinct "
                                      "tax.ctaxpog,item.id,tax.ctax,?,tax.ltaxabr,0,0,0 from "
                                      "tax, item "
                                      "where item.interno = ? and item.id in (") +
                           Ids() + QStringLiteral(") and tax.ctax in (") + lista +
                           QStringLiteral(")"),
                       {interno, interno});
    }
    void InsertarVentaja(Conexion& c, const QString& ventaja) const {
        if (grupo.isEmpty())
            c.Ejecutar(QStringLiteral("insert into itemventaja (iditem,interno,idventaja) values "
                                      "(?,?,?)"),
                       {item, interno, ventaja});
        else
            c.Ejecutar(QStringLiteral("insert into itemventaja (iditem,interno,idventaja) select "
                                      "id,?,? from item where interno = ? and id in (") +
                           Ids() + QStringLiteral(")"),
                       {interno, ventaja, interno});
    }
};

// The statements of one generation, in their order.
void Generar(AppContext& ctx_, Conexion& c_, const QString& Conceptos, const Destino& d,
             double Ganancias, double Reduccion, bool EsCVDI, double TasaIVA, double IngresosBrutos,
             const QString& SubRegimen, const QString& Muestra) {
    const QString lista = ListaSql(Conceptos);
    const QString kFiltro = d.Filtro();
    const QVariantList clave = d.Clave();
    const QString sub2 = SubRegimen.left(2);
    const QString en422 = QStringLiteral(" and idconceptos in ('422','854')");
    const QString en424 = QStringLiteral(" and idconceptos in ('424','856')");

    // 1. The rows of the list, with the mark and the text of tax.
    d.InsertarConceptos(c_, lista);
    // 2. The rates of tax are copied only to be cleared (a group's new rows are inserted
    // cleared already).
    if (d.grupo.isEmpty())
        c_.Ejecutar(
            QStringLiteral("update itemliq set porcentaje = 0, baseimp = 0, total = 0 where") +
                kFiltro + QStringLiteral(" and idconceptos in (") + lista + QStringLiteral(")"),
            clave);
    // 3.
    if (TasaIVA == 10.5)
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 10.5 where idconceptos in "
                                   "('415','852') and") +
                        kFiltro,
                    clave);
    // 4. Gross income tax: 3 for a client outside the agreement.
    if (IngresosBrutos > 0) {
        const double ib = EsCVDI ? IngresosBrutos : 3;
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = ? where idconceptos = '900' "
                                   "and") +
                        kFiltro,
                    d.Clave({ib}));
    }
    // 5.
    const QString X = EsCVDI ? QStringLiteral("1") : QStringLiteral("2");
    // 6. Additional VAT.
    if (!SubRegimen.isEmpty() && sub2 != QLatin1String("TR") && sub2 != QLatin1String("IT") &&
        Reduccion > 0) {
        if (Reduccion >= 100) {
            c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 0.00001 where") + kFiltro +
                            en422,
                        clave);
        } else {
            const QString R = Num(Reduccion);
            c_.Ejecutar(
                QStringLiteral("update itemliq set porcentajeb = 5, porcentaje = 10 where") +
                    kFiltro + en422,
                clave);
            const auto reducido = [&](const QString& col) {
                return RedondeoSql(
                    ctx_.stores(), QStringLiteral("INTERNOS"),
                    QStringLiteral("(%1 * %2) - ((%3 * (%1 * %2)) / 100.0)").arg(col, X, R),
                    QStringLiteral("00.000"));
            };
            c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = ") +
                            reducido(QStringLiteral("porcentaje")) + QStringLiteral(" where") +
                            kFiltro + en422,
                        clave);
            c_.Ejecutar(QStringLiteral("update itemliq set porcentajeb = ") +
                            reducido(QStringLiteral("porcentajeb")) + QStringLiteral(" where") +
                            kFiltro + en422,
                        clave);
        }
        d.InsertarVentaja(c_, QStringLiteral("IVAADREDUCCION"));
    } else if (sub2 == QLatin1String("TR")) {
        c_.Ejecutar(QStringLiteral("update itemliq set porcentajeb = 20, porcentaje = 20 where") +
                        kFiltro + en422,
                    clave);
    } else {
        c_.Ejecutar(QStringLiteral("update itemliq set porcentajeb = 5, porcentaje = 10 where") +
                        kFiltro + en422,
                    clave);
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = porcentaje * ") + X +
                        QStringLiteral(", porcentajeb = porcentajeb * ") + X +
                        QStringLiteral(" where") + kFiltro + en422,
                    clave);
    }
    // 7. The caller's progress report is the yield to the window.
    // 8. Income tax advance. A client exempt at 100 % keeps the rate 200, the calculator's
    // marker of a full exemption: the advance is 0.
    if (!(Ganancias > 0)) {
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 3 * ") + X +
                        QStringLiteral(" where") + kFiltro + en424,
                    clave);
    } else {
        if (Ganancias == 100) {
            c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 200 where") + kFiltro +
                            en424,
                        clave);
        } else {
            const QString G = Num(Ganancias);
            c_.Ejecutar(
                QStringLiteral("update itemliq set porcentaje = ") +
                    RedondeoSql(ctx_.stores(), QStringLiteral("INTERNOS"),
                                QStringLiteral("(3 * %1) - ((%2 * 3 * %1) / 100.0)").arg(X, G),
                                QStringLiteral("00.00")) +
                    QStringLiteral(" where") + kFiltro + en424,
                clave);
        }
        d.InsertarVentaja(c_, QStringLiteral("GANANEXIMICION"));
    }
    // 9. The decrees of the header's flags.
    const auto S = [](const QString& f) { return f == QLatin1String("S"); };
    if (S(ctx_.FlagDto1439) || S(ctx_.FlagDto1439A1) || S(ctx_.FlagD1330A6) ||
        S(ctx_.FlagD1330A7) || S(ctx_.FlagD1330A8))
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 11 where idconceptos = '424' "
                                   "and") +
                        kFiltro,
                    clave);
    // 10. Temporary regimes: everything to guarantee.
    if (sub2 == QLatin1String("TR")) {
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 11 where idconceptos = '424' "
                                   "and") +
                        kFiltro,
                    clave);
        c_.Ejecutar(QStringLiteral("update itemliq set pgc = 'G' where") + kFiltro, clave);
    }
    // 11.
    if (SubRegimen == QLatin1String("IT04"))
        c_.Ejecutar(QStringLiteral("update itemliq set pgc = 'G' where") + kFiltro, clave);
    // 12. Export samples.
    if (sub2 == QLatin1String("EC") && Muestra.toUpper() == QLatin1String("M"))
        d.InsertarVentaja(c_, QStringLiteral("MUESTRAEXPO"));
}

} // namespace

GeneracionLiquidacion::GeneracionLiquidacion(AppContext& ctx, Conexion& c) : ctx_(ctx), c_(c) {}

void GeneracionLiquidacion::GenerarLiq(const QString& Conceptos, const QString& IdItem,
                                       const QString& Interno, double Ganancias, double Reduccion,
                                       bool EsCVDI, double TasaIVA, double /*Sbtrei*/,
                                       double IngresosBrutos, const QString& SubRegimen,
                                       const QString& Muestra) {
    Destino d;
    d.interno = Interno;
    d.item = IdItem.trimmed().toDouble();
    Generar(ctx_, c_, Conceptos, d, Ganancias, Reduccion, EsCVDI, TasaIVA, IngresosBrutos,
            SubRegimen, Muestra);
}

void GeneracionLiquidacion::GenerarOperacion(
    const QString& interno, const QString& subRegimen, bool importacion,
    const ClienteLiquidacion& cliente, const std::function<void(int, int, long long)>& avance) {
    SentenciasPreparadas preparadas;
    QString general, bienUso, itemCero;
    if (subRegimen == QLatin1String("LAPI") || subRegimen == QLatin1String("IC34") ||
        subRegimen == QLatin1String("EC02") || subRegimen.left(2) == QLatin1String("RE")) {
        general = bienUso = itemCero = QStringLiteral("501");
    } else if (!importacion) {
        general = bienUso = itemCero = QStringLiteral("020,501,601,611");
    } else {
        general =
            QStringLiteral("010,015,011,016,032,059,061,062,415,417,422,424,500,852,854,856,866");
        const QString s2 = subRegimen.left(2);
        if (s2 == QLatin1String("IC"))
            general += QStringLiteral(",900,065,417");
        else if (s2 == QLatin1String("IG"))
            general += QStringLiteral(",900,065");
        else if (QStringList{"ZFE1", "ZFE3", "ZFE5", "ZFET", "ZFTR"}.contains(subRegimen))
            general += QStringLiteral(",900");
        bienUso = QStringLiteral("015,010,011,415,500,061,062");
        if (subRegimen.left(4) == QLatin1String("IDA4")) {
            general = bienUso = QStringLiteral("500");
            if (ctx_.dialogos().Pregunta(QStringLiteral("Desea calcular multas?"),
                                         QStringLiteral("KORVEN"), Dialogos::Icono::Pregunta))
                ctx_.CalcMultas = true;
        }
        if (ctx_.CalcMultas) {
            general += QStringLiteral(",041");
            bienUso += QStringLiteral(",041");
        }
        itemCero = QStringLiteral("020,500");
    }

    GenerarLiq(itemCero, QStringLiteral("0"), interno, cliente.Ganancias, cliente.Reduccion,
               cliente.EsCVDI, 0, 0, cliente.IngresosBrutos, QString(), QString());

    // The items that share the codes of their list, the VAT rate and the sample mark are
    // generated together, in blocks of numbers.
    struct Grupo {
        QString lista, muestra;
        double tasaIVA;
        QList<long long> ids;
    };
    std::vector<Grupo> grupos;
    QHash<QString, size_t> porClave;
    Recordset rs =
        c_.Abrir(QStringLiteral("select id, biendeuso, estadomerc, itfiller from item where "
                                "interno = ? and id<>0 order by id"),
                 {interno});
    const int total = rs.RecordCount();
    for (int n = 1; !rs.Eof(); rs.MoveNext(), ++n) {
        const auto id = static_cast<long long>(EsNumero(rs.Fields(QStringLiteral("id"))));
        if (avance)
            avance(n, total, id);
        const QString estado = EsNull(rs.Fields(QStringLiteral("estadomerc")));
        // Only "M" under "EC" gives the sample its advantage.
        const QString muestra =
            EsNull(rs.Fields(QStringLiteral("itfiller"))).toUpper() == QLatin1String("M")
                ? QStringLiteral("M")
                : QString();
        QString lista = general;
        double tasaIVA = 0;
        if (EsNull(rs.Fields(QStringLiteral("biendeuso"))) == QLatin1String("S")) {
            if (estado == QLatin1String("1"))
                bienUso += QStringLiteral(",601");
            lista = bienUso;
            tasaIVA = 21;
        } else if (estado != QLatin1String("2") && estado != QLatin1String("4") &&
                   estado != QLatin1String("6")) {
            lista += QStringLiteral(",601,611");
        }
        const QString clave = ListaSql(lista) + QLatin1Char('|') + muestra + QLatin1Char('|') +
                              QString::number(tasaIVA);
        auto it = porClave.find(clave);
        if (it == porClave.end()) {
            it = porClave.insert(clave, grupos.size());
            grupos.push_back({lista, muestra, tasaIVA, {}});
        }
        grupos[it.value()].ids << id;
    }
    for (const Grupo& g : grupos)
        for (qsizetype desde = 0; desde < g.ids.size(); desde += 500) {
            Destino d;
            d.interno = interno;
            d.grupo = g.ids.mid(desde, 500);
            Generar(ctx_, c_, g.lista, d, cliente.Ganancias, cliente.Reduccion, cliente.EsCVDI,
                    g.tasaIVA, cliente.IngresosBrutos, subRegimen, g.muestra);
        }

    c_.Ejecutar(QStringLiteral("update itemliq set valor = 0 where interno = ?"), {interno});
    const auto S = [](const QString& f) { return f == QLatin1String("S"); };
    if (S(ctx_.FlagDto1439) || S(ctx_.FlagDto1439A1) || S(ctx_.FlagD1330A6) ||
        S(ctx_.FlagD1330A7) || S(ctx_.FlagD1330A8))
        c_.Ejecutar(QStringLiteral("update itemliq set pgc = 'G' where idconceptos not in "
                                   "('900','500') and interno = ?"),
                    {interno});
}

} // namespace korven
