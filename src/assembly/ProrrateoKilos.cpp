#include "assembly/ProrrateoKilos.h"

#include "assembly/CorridaArmado.h"
#include "assembly/ProrrateoTotales.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"

#include <QStringList>
#include <cmath>
#include <utility>
#include <vector>

namespace korven {

namespace {

using Icono = Dialogos::Icono;

const QString kSeccionItem = QStringLiteral(" Seccion [Prorratear ItemEx]");
const QString kSeccionCeros = QStringLiteral("Seccion [Prorrateo.Verificacion.Ceros]");
const QString kEst = QStringLiteral("valorrelacionestadistica");
const QString kDer = QStringLiteral("valorderesp");

double Num(const Recordset& rs, const char* campo) {
    return EsNumero(rs.Fields(QString::fromLatin1(campo)));
}

double R2(double v) {
    return RedondearDecimal(v, 2);
}

// A number as a message shows it, in the system separator.
QString Texto(double v) {
    return ReemplazarSeparadorDecimal(QString::number(v, 'g', 15));
}

// What an item measures in kilos: 1 the statistic unit, 2 the specific duty's, 3 both.
QStringList Columnas(int clase) {
    if (clase == 1)
        return {kEst};
    if (clase == 2)
        return {kDer};
    return {kEst, kDer};
}

QString Unidades(int clase) {
    if (clase == 1)
        return QStringLiteral("estadistica = '01'");
    if (clase == 2)
        return QStringLiteral("deresp = '01'");
    return QStringLiteral("estadistica = '01' and deresp = '01'");
}

// The lines of the class whose quantities in kilos are empty.
QString Vacias(int clase) {
    QString w = Unidades(clase);
    for (const QString& col : Columnas(clase))
        w += QStringLiteral(" and ") + col + QStringLiteral(" = 0");
    return w;
}

// "col = expr, col = expr" over the columns of the class; "@" in expr stands for the column.
QString Asignar(int clase, const QString& expr) {
    QStringList s;
    for (const QString& col : Columnas(clase))
        s << col + QStringLiteral(" = ") + QString(expr).replace(QLatin1Char('@'), col);
    return s.join(QStringLiteral(", "));
}

} // namespace

void ProrrateoKilos::Prorratear_ItemCeroEx(double& kilos) {
    ProrrateoTotales(r_).Prorratear_ItemCeroEx(kilos, ProrrateoTotales::Kilos::Pantalla);
}

void ProrrateoKilos::Prorratear_ItemEx(long long item, double kilos) {
    Dialogos& dlg = r_.ctx.dialogos();
    try {
        Conexion& c = r_.c;
        const QVariantList ix{item, r_.interno};
        // The class of the item's lines, and the kilos already loaded in them.
        Recordset rs = c.Abrir(
            QStringLiteral("select sum(fob) as total, sum(valorrelacionestadistica) as ue, "
                           "sum(valorderesp) as ude, estadistica, deresp from groupsubitems where "
                           "(estadistica = '01' or deresp = '01') and id = ? and interno = ? "
                           "group by estadistica, deresp order by estadistica, deresp"),
            ix);
        int clase = 0;
        double cargado = 0;
        for (; !rs.Eof(); rs.MoveNext()) {
            const bool est =
                EsNull(rs.Fields(QStringLiteral("estadistica"))) == QLatin1String("01");
            const bool der = EsNull(rs.Fields(QStringLiteral("deresp"))) == QLatin1String("01");
            clase = est && der ? 3 : (est ? 1 : 2);
            cargado += Num(rs, clase == 2 ? "ude" : "ue");
        }
        // As the store adds them: 0.1 + 0.2 is 0.3.
        cargado = RedondearDecimal(cargado, 6);
        if (kilos <= cargado) {
            dlg.Mensaje(QStringLiteral("Item: %1\n\nEl valor ingresado a Prorratear (%2) es menor "
                                       "o igual\nal total de Kg ingresados en Subitem's (%3)")
                            .arg(item)
                            .arg(Texto(kilos), Texto(cargado)));
            return;
        }

        auto fobVacias = [&]() -> double {
            if (clase == 0)
                return 0;
            Recordset f = c.Abrir(QStringLiteral("select sum(fob) as total from groupsubitems "
                                                 "where %1 and id = ? and interno = ?")
                                      .arg(Vacias(clase)),
                                  ix);
            return Num(f, "total");
        };
        double t = fobVacias();
        if (t == 0) {
            // Every line is loaded: the new total replaces what they hold.
            if (clase != 0) {
                c.Ejecutar(QStringLiteral("update groupsubitems set %1 where %2 and id = ? and "
                                          "interno = ?")
                               .arg(Asignar(clase, QStringLiteral("0")), Unidades(clase)),
                           ix);
                cargado = 0;
                t = fobVacias();
            }
            if (t == 0) {
                dlg.Mensaje(
                    QStringLiteral("En los subitem's no se encontro campos para prorratear"),
                    QStringLiteral("KORVEN"), Icono::Exclamacion);
                return;
            }
        }

        c.Ejecutar(QStringLiteral("update item set totalkneto = ? where id = ? and interno = ?"),
                   {kilos, item, r_.interno});
        const QString r = r_.Numero(R2(kilos - cargado));
        const QString tt = r_.Numero(t);
        const QString mascara = QStringLiteral("00.00");
        c.Ejecutar(QStringLiteral("update item set %1 where id = ? and interno = ?")
                       .arg(Asignar(
                           clase, r_.Redondeo(QStringLiteral("(((fobtotal) * %1) / %2)").arg(r, tt),
                                              mascara))),
                   ix);
        const QString parte =
            r_.Redondeo(QStringLiteral("((fob * %1) / %2)").arg(r, tt), QStringLiteral("00.00"));
        c.Ejecutar(QStringLiteral("update groupsubitems set %1, kgneto = %2 where %3 and id = ? "
                                  "and interno = ?")
                       .arg(Asignar(clase, parte), parte, Vacias(clase)),
                   ix);

        // What the rounding left goes to the item's heaviest line.
        const QString col = clase == 2 ? kDer : kEst;
        Recordset ra = c.Abrir(
            QStringLiteral("select sum(%1) as totala from groupsubitems where interno = ? and id = "
                           "?")
                .arg(col),
            {r_.interno, item});
        const double d = R2(kilos - Num(ra, "totala"));
        if (d != 0) {
            Recordset g = c.Abrir(QStringLiteral("select orden from groupsubitems where interno = "
                                                 "? and id = ? and %1 > ? order by %1 desc, orden "
                                                 "limit 1")
                                      .arg(col),
                                  {r_.interno, item, std::fabs(d)});
            if (!g.Eof())
                c.Ejecutar(
                    QStringLiteral("update groupsubitems set %1, kgneto = kgneto + %2 "
                                   "where interno = ? and orden = ?")
                        .arg(Asignar(clase, QStringLiteral("@ + ") + r_.Numero(d)), r_.Numero(d)),
                    {r_.interno, g.Fields(QStringLiteral("orden"))});
        }
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(), kSeccionItem);
    }
}

void ProrrateoKilos::Prorratear_ItemCero(double kilos) {
    Dialogos& dlg = r_.ctx.dialogos();
    try {
        Conexion& c = r_.c;
        const QVariantList xp{r_.interno};
        Recordset rf = c.Abrir(QStringLiteral("select sum(fob) as total from groupsubitems where "
                                              "interno = ? and id <> 0"),
                               xp);
        Recordset rk = c.Abrir(QStringLiteral("select sum(fobtotal) as total, sum(totalkneto) as "
                                              "totalk from item where interno = ? and id <> 0 and "
                                              "totalkneto > 0"),
                               xp);
        const double totalk = Num(rk, "totalk");
        if (!(totalk < kilos)) {
            dlg.Mensaje(QStringLiteral("En la suma de Total Kg Neto en uno o mas items (%1) "
                                       "resulta mayor al que intenta prorratear")
                            .arg(Texto(totalk)));
            return;
        }
        const double r = kilos - totalk;
        const double t = Num(rf, "total") - Num(rk, "total");

        // Items without kilos whose FOB is nothing have no share: the rest below covers them.
        std::vector<std::pair<long long, double>> items;
        if (t != 0) {
            Recordset ri = c.Abrir(
                QStringLiteral("select id, %1 as valor from item where id <> 0 and totalkneto = "
                               "0 and interno = ? order by id")
                    .arg(r_.Redondeo(
                        QStringLiteral("((fobtotal * %1) / %2)").arg(r_.Numero(r), r_.Numero(t)),
                        QStringLiteral("00.00"))),
                xp);
            for (; !ri.Eof(); ri.MoveNext())
                items.emplace_back(EsNumero(ri.Fields(QStringLiteral("id"))), R2(Num(ri, "valor")));
        }
        for (const auto& [id, valor] : items) {
            c.Ejecutar(
                QStringLiteral("update item set totalkneto = ? where id = ? and interno = ?"),
                {valor, id, r_.interno});
            Prorratear_ItemEx(id, valor);
        }

        Recordset rt = c.Abrir(QStringLiteral("select sum(totalkneto) as totalk from item where "
                                              "id > 0 and interno = ?"),
                               xp);
        const double d = R2(kilos - Num(rt, "totalk"));
        if (d != 0) {
            Recordset g = c.Abrir(QStringLiteral("select id, totalkneto from item where "
                                                 "totalkneto > ? and id > 0 and interno = ? "
                                                 "order by id limit 1"),
                                  {d, r_.interno});
            if (!g.Eof()) {
                const QVariant id = g.Fields(QStringLiteral("id"));
                const QVariantList p{d, id, r_.interno};
                c.Ejecutar(QStringLiteral("update item set cantidad = cantidad + ? where idunidad "
                                          "= '01' and id = ? and interno = ?"),
                           p);
                c.Ejecutar(QStringLiteral("update item set valorrelacionestadistica = "
                                          "valorrelacionestadistica + ? where estadistica = '01' "
                                          "and id = ? and interno = ?"),
                           p);
                c.Ejecutar(QStringLiteral("update item set valorderesp = valorderesp + ? where "
                                          "deresp = '01' and id = ? and interno = ?"),
                           p);
                Prorratear_ItemEx(static_cast<long long>(EsNumero(id)),
                                  R2(Num(g, "totalkneto") + d));
            }
        }
        c.Ejecutar(QStringLiteral("update item set totalkneto = ? where id = 0 and interno = ?"),
                   {kilos, r_.interno});
        Prorratear_ItemVacios();
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(), kSeccionItem);
    }
}

void ProrrateoKilos::Prorratear_ItemVacios() {
    try {
        Conexion& c = r_.c;
        Recordset rs = c.Abrir(
            QStringLiteral("select id, count(*) as cant from groupsubitems where kgneto = 0 and "
                           "(estadistica = '01' or deresp = '01' or idunidad = '01') and interno "
                           "= ? group by id order by id"),
            {r_.interno});
        for (; !rs.Eof(); rs.MoveNext()) {
            const QVariant id = rs.Fields(QStringLiteral("id"));
            const double p = R2(Num(rs, "cant") / 100);
            const QVariantList xi{r_.interno, id};
            Recordset g = c.Abrir(QStringLiteral("select orden from groupsubitems where interno "
                                                 "= ? and id = ? and kgneto > ? order by kgneto "
                                                 "desc, orden limit 1"),
                                  {r_.interno, id, p});
            if (g.Eof())
                continue;
            c.Ejecutar(QStringLiteral("update groupsubitems set valorrelacionestadistica = 0.01 "
                                      "where estadistica = '01' and valorrelacionestadistica = 0 "
                                      "and interno = ? and id = ?"),
                       xi);
            c.Ejecutar(QStringLiteral("update groupsubitems set valorderesp = 0.01 where deresp = "
                                      "'01' and valorderesp = 0 and interno = ? and id = ?"),
                       xi);
            c.Ejecutar(QStringLiteral("update groupsubitems set kgneto = 0.01 where kgneto = 0 "
                                      "and interno = ? and id = ?"),
                       xi);
            // The heaviest line gives what the empty ones took.
            const QString menos = QStringLiteral(" - ") + r_.Numero(p);
            auto resta = [&](const QString& col) {
                return r_.Redondeo(col + menos, QStringLiteral("00.00"));
            };
            c.Ejecutar(
                QStringLiteral("update groupsubitems set kgneto = %1, %2 = case when "
                               "estadistica = '01' then %3 else %2 end, %4 = case when "
                               "deresp = '01' then %5 else %4 end where interno = ? and "
                               "orden = ?")
                    .arg(resta(QStringLiteral("kgneto")), kEst, resta(kEst), kDer, resta(kDer)),
                {r_.interno, g.Fields(QStringLiteral("orden"))});
        }
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(), kSeccionCeros);
    }
}

} // namespace korven
