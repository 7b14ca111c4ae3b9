#include "assembly/ProrrateoTotales.h"

#include "assembly/CorridaArmado.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"

#include <QMap>
#include <cmath>

namespace korven {

namespace {

using Icono = Dialogos::Icono;

const QString kSeccionComExt = QStringLiteral("- seccion [korven.frmarmaritem.ProrratearComExt]");
const QString kSeccionKilos = QStringLiteral(" - seccion [FrmArmaritem.Prorratear_ItemsEX] linea ");

// Dividing by a total of zero fails on every store alike, before the store is asked.
constexpr int kDivisionPorCero = 11;
const QString kTextoDivisionPorCero = QStringLiteral("División por cero");
// A kilo was needed from a line and no line had one to give.
constexpr int kSinRegistro = 3021;

double Num(const Recordset& rs, const char* campo) {
    return EsNumero(rs.Fields(QString::fromLatin1(campo)));
}

double R2(double v) {
    return RedondearDecimal(v, 2);
}

// A number as a message shows it: up to 15 significant digits, the system separator.
QString TextoDoble(double v) {
    return QString::number(v, 'g', 15).replace(QLatin1Char('.'), SeparadorDecimal());
}

// A price as value / quantity; NULL where the quantity is zero, as the store leaves it.
QVariant Precio(double valor, double cantidad, int decimales) {
    if (cantidad == 0)
        return QVariant(QMetaType(QMetaType::Double));
    const double p = valor / cantidad;
    return decimales < 0 ? p : RedondearDecimal(p, decimales);
}

} // namespace

bool ProrrateoTotales::ProrratearFob() {
    Conexion& c = r_.c;
    const QString x = r_.X();
    const double F = r_.car.fobdivisas;
    const double V = r_.car.valoraprorratear;
    const QString fob2 = r_.Redondeo(QStringLiteral("fob"), QStringLiteral("00.00"));

    if (V != 0) {
        // One value over every group, in proportion to its FOB.
        if (F == 0)
            throw KorvenError(kDivisionPorCero, kTextoDivisionPorCero);
        const QString valor =
            QStringLiteral("fob + ((%1 * %2) / %3)").arg(fob2, r_.Numero(V), r_.Numero(F));
        // Groups sharing a line number all take the value of the one with the largest FOB:
        // read those first, the set statement below gives each group its own.
        Recordset rs =
            c.Abrir(QStringLiteral("select idsub, fob, %1 as valor from groupsubitems where "
                                   "interno = ? and idsub in (select idsub from groupsubitems "
                                   "where interno = ? group by idsub having count(distinct fob) "
                                   "> 1) order by idsub, fob")
                        .arg(valor),
                    {r_.interno, r_.interno});
        QMap<double, double> porIdSub;
        for (; !rs.Eof(); rs.MoveNext())
            porIdSub.insert(Num(rs, "idsub"), R2(Num(rs, "valor")));
        const QString w = r_.Redondeo(valor, QStringLiteral("00.00"));
        c.Ejecutar(QStringLiteral("update groupsubitems set fob = %1, preciounitario = %2 where "
                                  "interno = %3")
                       .arg(w,
                            r_.Redondeo(QStringLiteral("(%1) / nullif(cantidad, 0)").arg(w),
                                        QStringLiteral("00.0000")),
                            x));
        const QString porLinea =
            QStringLiteral("update groupsubitems set fob = ?, preciounitario = ") +
            r_.Redondeo(QStringLiteral("? / nullif(cantidad, 0)"), QStringLiteral("00.0000")) +
            QStringLiteral(" where interno = ? and idsub = ?");
        for (auto it = porIdSub.cbegin(); it != porIdSub.cend(); ++it)
            c.Ejecutar(porLinea, {it.value(), it.value(), r_.interno, it.key()});
        // Every FOB is now written rounded to cents.

        // What rounding left over goes to the last group that can take it.
        Recordset tot =
            c.Abrir(QStringLiteral("select sum(fob) as total from groupsubitems where interno = ?"),
                    {r_.interno});
        const double total = R2(Num(tot, "total"));
        if (total != R2(F + V)) {
            const double d = RedondearDecimal(R2(F + V) - total, 3);
            Recordset ult = c.Abrir(QStringLiteral("select orden, fob, cantidad from "
                                                   "groupsubitems where interno = ? and fob > ? "
                                                   "order by orden desc limit 1"),
                                    {r_.interno, std::fabs(d)});
            if (!ult.Eof()) {
                const double nuevo = R2(R2(Num(ult, "fob")) + d);
                c.Ejecutar(QStringLiteral("update groupsubitems set fob = ?, preciounitario = ? "
                                          "where interno = ? and orden = ?"),
                           {nuevo, Precio(nuevo, Num(ult, "cantidad"), 4), r_.interno,
                            ult.Fields(QStringLiteral("orden"))});
            }
        }
        r_.TotalFobOperacion = R2(F + V);
        return true;
    }

    // Every proration code must be used by some line.
    Recordset sin = c.Abrir(
        QStringLiteral("select codigo, descripcion from prorrateo where interno = ? and codigo "
                       "not in (select codprorrateo from groupsubitems where interno = ? and "
                       "codprorrateo is not null) order by codigo"),
        {r_.interno, r_.interno});
    if (!sin.Eof()) {
        const QString raya = QString(64, QLatin1Char('-')) + QLatin1Char('\n');
        QString texto = raya +
                        QStringLiteral("Se encontraron CODIGOS DE PRORRATEOS sin utilizar\n"
                                       "No se puede continuar con el armado.\n") +
                        raya;
        for (; !sin.Eof(); sin.MoveNext())
            texto +=
                EsNull(sin.Fields(QStringLiteral("codigo"))).trimmed() + QStringLiteral(" - ") +
                EsNull(sin.Fields(QStringLiteral("descripcion"))).trimmed() + QLatin1Char('\n');
        r_.ctx.dialogos().Mensaje(texto, QStringLiteral("KORVEN"), Icono::Exclamacion);
        r_.ctx.ArmadoResultado = QStringLiteral("NO");
        r_.terminada = true;
        return false;
    }

    // Each code's value over the groups of its lines, in proportion to their FOB. The set
    // statement reads every group's FOB as it was, so no group takes the value twice.
    Recordset codigos = c.Abrir(
        QStringLiteral("select codigo, valor from prorrateo where interno = ? order by codigo"),
        {r_.interno});
    Recordset sumas = c.Abrir(QStringLiteral("select codprorrateo, sum(fob) as valor from "
                                             "groupsubitems where interno = ? group by "
                                             "codprorrateo"),
                              {r_.interno});
    QHash<QString, QVariant> fobPorCodigo;
    for (; !sumas.Eof(); sumas.MoveNext())
        fobPorCodigo.insert(EsNull(sumas.Fields(0)), sumas.Fields(1));
    double s = 0, ultimo = 0;
    for (; !codigos.Eof(); codigos.MoveNext()) {
        const QString codigo = EsNull(codigos.Fields(QStringLiteral("codigo")));
        const double v = Num(codigos, "valor");
        s += v;
        ultimo = v;
        const QVariant suma = fobPorCodigo.value(codigo);
        if (suma.isNull())
            continue;
        const double f = EsNumero(suma);
        if (f == 0)
            throw KorvenError(kDivisionPorCero, kTextoDivisionPorCero);
        const QString valor =
            QStringLiteral("fob + ((%1 * %2) / %3)").arg(fob2, r_.Numero(v), r_.Numero(f));
        c.Ejecutar(
            QStringLiteral("update groupsubitems set fob = %1, preciounitario = %2 where "
                           "interno = ? and codprorrateo = ?")
                .arg(valor, r_.Redondeo(QStringLiteral("(%1) / nullif(cantidad, 0)").arg(valor),
                                        QStringLiteral("00.0000"))),
            {r_.interno, codigo});
    }
    if (codigos.RecordCount() == 0) {
        r_.TotalFobOperacion = R2(F);
        return true;
    }

    // The remainder of the rounding goes to the coded group of the largest FOB.
    Recordset tot = c.Abrir(
        QStringLiteral("select sum(%1) as total from groupsubitems where interno = ?").arg(fob2),
        {r_.interno});
    if (s == 0 && ultimo > 0)
        s = ultimo;
    const double total = Num(tot, "total");
    double d = 0;
    if (R2(total) != R2(F + s))
        d = R2(total - (F + s));
    if (d != 0) {
        Recordset mayor = c.Abrir(
            QStringLiteral("select orden, fob, cantidad from groupsubitems where interno = ? and "
                           "codprorrateo in (select codigo from prorrateo where "
                           "groupsubitems.interno = prorrateo.interno) order by fob desc, orden "
                           "desc limit 1"),
            {r_.interno});
        if (!mayor.Eof()) {
            const double nuevo = Num(mayor, "fob") - d;
            c.Ejecutar(QStringLiteral("update groupsubitems set fob = ?, preciounitario = ? where "
                                      "interno = ? and orden = ?"),
                       {nuevo, Precio(nuevo, Num(mayor, "cantidad"), -1), r_.interno,
                        mayor.Fields(QStringLiteral("orden"))});
        }
    }
    r_.TotalFobOperacion = R2(F + s);
    return true;
}

void ProrrateoTotales::DatosComunes() {
    const CaratulaArmado& car = r_.car;
    // One pass over the groups: a column takes the header's value everywhere when forced, or
    // where it is empty, and keeps its own elsewhere.
    auto poner = [](const char* columna, const QString& valor, bool siempre) {
        const QString col = QLatin1String(columna);
        if (siempre)
            return col + QStringLiteral(" = ") + SqlTexto(valor);
        return QStringLiteral("%1 = case when (%1 = '' or %1 is null) then %2 else %1 end")
            .arg(col, SqlTexto(valor));
    };
    QStringList set;
    if (!car.dcestmerc.trimmed().isEmpty())
        set << poner("EstadoMerc", car.dcestmerc, car.dcforzarestmerc);
    if (!car.dcpaisorigen.trimmed().isEmpty())
        set << poner("IdPais", car.dcpaisorigen, car.dcforzarpaisorigen);
    // The header's ONCCA data fill the empty ones, even when the header has none; the
    // proration codes have done their work.
    set << poner("ONCCACategoria", car.onccacategoria, false)
        << poner("ONCCACortes", car.onccacortes, false) << QStringLiteral("codprorrateo = ''");
    r_.c.Ejecutar(QStringLiteral("update groupsubitems set ") + set.join(QStringLiteral(", ")) +
                      QStringLiteral(" where interno = ?"),
                  {r_.interno});
}

void ProrrateoTotales::KilosBrutos() {
    Conexion& c = r_.c;
    Recordset rs = c.Abrir(
        QStringLiteral("select sum(case when kgbruto > 0 then 1 else 0 end) as p, sum(case when "
                       "kgbruto = 0 then 1 else 0 end) as z, sum(kgbruto) as total from "
                       "groupsubitems where interno = ?"),
        {r_.interno});
    const double p = Num(rs, "p"), z = Num(rs, "z");
    if (p > 0 && z == 0) {
        c.Ejecutar(QStringLiteral("update caratula set BULPES = ? where interno = ?"),
                   {Num(rs, "total"), r_.interno});
    } else if (p == 0 && z > 0) {
        c.Ejecutar(QStringLiteral("update caratula set BULPES = 0 where interno = ?"),
                   {r_.interno});
    } else {
        r_.ctx.dialogos().Mensaje(
            QStringLiteral("Hay Subitem's que no tiene ingresado el KG Bruto.\n\nPor favor "
                           "verifique los mismos en la opcion CARGA DE SUBITEMS"),
            QStringLiteral("KG BRUTOS (BULTOS)"), Icono::Informacion);
    }
}

void ProrrateoTotales::ProrratearComExt(double& comExt, double& fobTotal) {
    try {
        Conexion& c = r_.c;
        if (fobTotal == 0)
            throw KorvenError(kDivisionPorCero, kTextoDivisionPorCero);
        c.Ejecutar(QStringLiteral("update item set itcomext = %1 where id <> 0 and interno = ?")
                       .arg(r_.Redondeo(QStringLiteral("(%1 * fobtotal) / %2")
                                            .arg(r_.Numero(comExt), r_.Numero(fobTotal)),
                                        QStringLiteral("00.00"))),
                   {r_.interno});
        const QString suma = QStringLiteral(
            "select sum(itcomext) as totalcomext from item where id <> 0 and interno = ?");
        Recordset tot = c.Abrir(suma, {r_.interno});
        const double d = R2(comExt - R2(Num(tot, "totalcomext")));
        if (d != 0) {
            // A shortfall goes to the smallest item, an excess comes from the largest.
            Recordset it =
                d < 0 ? c.Abrir(QStringLiteral("select id, itcomext from item where id <> 0 and "
                                               "interno = ? and itcomext > ? order by itcomext "
                                               "desc, id limit 1"),
                                {r_.interno, d})
                      : c.Abrir(QStringLiteral("select id, itcomext from item where id <> 0 and "
                                               "interno = ? order by itcomext asc, id limit 1"),
                                {r_.interno});
            if (!it.Eof())
                c.Ejecutar(
                    QStringLiteral("update item set itcomext = ? where interno = ? and id = ?"),
                    {Num(it, "itcomext") + d, r_.interno, it.Fields(QStringLiteral("id"))});
        }
        Recordset fin = c.Abrir(suma, {r_.interno});
        c.Ejecutar(QStringLiteral("update item set itcomext = ? where id = 0 and interno = ?"),
                   {R2(Num(fin, "totalcomext")), r_.interno});
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(), kSeccionComExt);
    }
}

void ProrrateoTotales::Prorratear_ItemCeroEx(double& kilos, Kilos quien) {
    ProgresoArmado& pb = r_.progreso;
    Dialogos& dlg = r_.ctx.dialogos();
    try {
        Conexion& c = r_.c;
        const QVariantList xp{r_.interno};
        pb.Barra(0, 100);
        pb.Barra(10, 100);
        Recordset rt = c.Abrir(
            QStringLiteral("select sum(fob) as total from groupsubitems where interno = ?"), xp);
        const double t = Num(rt, "total");
        pb.Barra(20, 100);
        Recordset rk = c.Abrir(
            QStringLiteral("select sum(kgneto) as total from groupsubitems where interno = ?"), xp);
        const double k = Num(rk, "total");
        if (kilos < k) {
            dlg.Mensaje(QStringLiteral("El kilo a prorratear (%1) debe ser mayor a %2")
                            .arg(TextoDoble(kilos), TextoDoble(k)));
            return;
        }

        // The lines without kilos are marked; only they take a share.
        const double resto = R2(kilos - k);
        c.Ejecutar(QStringLiteral("update groupsubitems set flgkg = case when kgneto <= 0 or "
                                  "flgkg = '*' then '*' else '' end where interno = ?"),
                   xp);
        Recordset sf = c.Abrir(QStringLiteral("select sum(fob) as fobtotal, count(fob) as "
                                              "cantidad from groupsubitems where interno = ? and "
                                              "kgneto <= 0"),
                               xp);
        if (Num(sf, "cantidad") == 0) {
            dlg.Mensaje(quien == Kilos::Armado
                            ? QStringLiteral("No hay registros para prorratear!\nya que todos los "
                                             "articulos tienen cargado kilo neto.\nSi desea "
                                             "prorratear debe poner los kilos en 0 (cero)\nEn "
                                             "Carga de Subitems")
                            : QStringLiteral("No hay registros para prorratear!\nSi necesita "
                                             "cambiar el kilo total\ndebe rearmar los item's, "
                                             "modifícando\nalgún valor de carátula."),
                        QStringLiteral("PRORRATEO DE KILOS NETO.."), Icono::Exclamacion);
            return;
        }
        double f = Num(sf, "fobtotal");
        if (f == 0)
            f = t;
        if (f == 0)
            throw KorvenError(kDivisionPorCero, kTextoDivisionPorCero);

        pb.Barra(30, 100);
        c.Ejecutar(QStringLiteral("update groupsubitems set kgneto = %1 where interno = ? and "
                                  "kgneto <= 0 and flgkg = '*'")
                       .arg(r_.Redondeo(
                           QStringLiteral("((fob * %1) / %2)").arg(r_.Numero(resto), r_.Numero(f)),
                           QStringLiteral("00.00"))),
                   xp);
        pb.Barra(40, 100);

        const QString guardar =
            QStringLiteral("update groupsubitems set kgneto = ? where interno = ? and orden = ?");
        Recordset rn = c.Abrir(QStringLiteral("select count(1) as cantidad from groupsubitems "
                                              "where kgneto <= 0 and interno = ?"),
                               xp);
        const double n = Num(rn, "cantidad");
        pb.Barra(50, 100);
        if (n > 0) {
            // Each share that rounded to nothing gets 0.01, taken from the heaviest lines.
            const double falta = R2(n * 0.01);
            Recordset uno = c.Abrir(
                QStringLiteral("select orden, kgneto from groupsubitems where flgkg = '*' and "
                               "interno = ? and kgneto > ? order by kgneto desc, orden limit 1"),
                {r_.interno, falta});
            if (!uno.Eof()) {
                c.Ejecutar(guardar, {R2(Num(uno, "kgneto") - falta), r_.interno,
                                     uno.Fields(QStringLiteral("orden"))});
            } else {
                double m = falta;
                while (m != 0) {
                    Recordset g = c.Abrir(
                        QStringLiteral("select orden, kgneto from groupsubitems where interno = "
                                       "? and kgneto > 0.01 order by kgneto desc, orden limit 1"),
                        xp);
                    if (g.Eof()) {
                        dlg.Mensaje(QStringLiteral("%1 - No quedan subitems con kilos mayor a "
                                                   "%2 para ceder %3")
                                            .arg(kSinRegistro)
                                            .arg(TextoDoble(0.01), TextoDoble(m)) +
                                        kSeccionKilos,
                                    QStringLiteral("KORVEN"), Icono::Critico);
                        return;
                    }
                    const double kg = Num(g, "kgneto");
                    double queda;
                    if (kg > m) {
                        queda = R2(kg - m);
                        m = 0;
                    } else {
                        m = R2(m - (kg - 0.01));
                        queda = 0.01;
                    }
                    c.Ejecutar(guardar, {queda, r_.interno, g.Fields(QStringLiteral("orden"))});
                }
            }
            c.Ejecutar(QStringLiteral("update groupsubitems set kgneto = 0.01 where interno = ? "
                                      "and kgneto <= 0"),
                       xp);
        }

        // What the rounding left over goes to the heaviest prorated line.
        pb.Barra(70, 100);
        Recordset ru = c.Abrir(
            QStringLiteral("select sum(kgneto) as total from groupsubitems where interno = ?"), xp);
        const double u = R2(Num(ru, "total"));
        if (u != kilos) {
            const double e = R2(kilos - u);
            Recordset g =
                quien == Kilos::Armado
                    ? c.Abrir(QStringLiteral("select orden, kgneto from groupsubitems where flgkg "
                                             "= '*' and interno = ? and kgneto > ? order by "
                                             "kgneto desc, orden limit 2"),
                              {r_.interno, std::fabs(e)})
                    : c.Abrir(QStringLiteral("select orden, kgneto from groupsubitems where "
                                             "interno = ? and kgneto > 0.01 order by kgneto "
                                             "desc, orden limit 1"),
                              xp);
            // On the screen a rest that no line can take is left where it is.
            if (!g.Eof()) {
                c.Ejecutar(guardar, {R2(Num(g, "kgneto") + e), r_.interno,
                                     g.Fields(QStringLiteral("orden"))});
            } else if (quien == Kilos::Armado) {
                dlg.Mensaje(QStringLiteral("Error al redondear prorrateo, no se encontro subitems "
                                           "con kilos mayor a %1\nNo se puede continuar..")
                                .arg(TextoDoble(std::fabs(e))),
                            QStringLiteral("KORVEN"), Icono::Exclamacion);
                return;
            }
        }

        // Units measured in kilos take the kilos (rows that already hold them are left alone).
        c.Ejecutar(QStringLiteral("update groupsubitems set valorrelacionestadistica = case when "
                                  "estadistica = '01' then kgneto else valorrelacionestadistica "
                                  "end, valorderesp = case when deresp = '01' then kgneto else "
                                  "valorderesp end where interno = ? and ((estadistica = '01' and "
                                  "(valorrelacionestadistica is null or valorrelacionestadistica "
                                  "<> kgneto)) or (deresp = '01' and (valorderesp is null or "
                                  "valorderesp <> kgneto)))"),
                   xp);
        pb.Barra(80, 100);

        // The kilos of each item, and of the statistic and specific-duty units measured in
        // kilos: one statement for the items whose groups share both units.
        const QVariantList xx{r_.interno, r_.interno};
        const QString suma = r_.Redondeo(QStringLiteral("sum(kgneto)"), QStringLiteral("00.00"));
        const QString enKilos = QStringLiteral("sum(case when %1 = '01' then kgneto end)");
        c.Ejecutar(
            QStringLiteral("update item set totalkneto = g.totalkg, valorrelacionestadistica = "
                           "coalesce(g.kgest, valorrelacionestadistica), valorderesp = "
                           "coalesce(g.kgder, valorderesp) from (select id, %1 as totalkg, %2 as "
                           "kgest, %3 as kgder from groupsubitems where interno = ? group by id) g "
                           "where item.interno = ? and item.id = g.id")
                .arg(suma,
                     r_.Redondeo(enKilos.arg(QStringLiteral("estadistica")),
                                 QStringLiteral("00.00")),
                     r_.Redondeo(enKilos.arg(QStringLiteral("deresp")), QStringLiteral("00.00"))),
            xx);
        // An item whose groups differ in those units takes, in each column, the last of its
        // groups in the order of the units.
        Recordset items = c.Abrir(
            QStringLiteral("select id, estadistica, deresp, %1 as totalkg from groupsubitems "
                           "where interno = ? and id in (select id from groupsubitems where "
                           "interno = ? group by id having count(distinct coalesce(estadistica, "
                           "'') || '|' || coalesce(deresp, '')) > 1) group by id, estadistica, "
                           "deresp order by id, coalesce(estadistica, ''), coalesce(deresp, '')")
                .arg(suma),
            xx);
        for (; !items.Eof(); items.MoveNext()) {
            const QVariant kg = Num(items, "totalkg");
            QString sql = QStringLiteral("update item set totalkneto = ?");
            QVariantList p{kg};
            if (EsNull(items.Fields(QStringLiteral("estadistica"))) == QLatin1String("01")) {
                sql += QStringLiteral(", valorrelacionestadistica = ?");
                p << kg;
            }
            if (EsNull(items.Fields(QStringLiteral("deresp"))) == QLatin1String("01")) {
                sql += QStringLiteral(", valorderesp = ?");
                p << kg;
            }
            p << r_.interno << items.Fields(QStringLiteral("id"));
            c.Ejecutar(sql + QStringLiteral(" where interno = ? and id = ?"), p);
        }
        c.Ejecutar(QStringLiteral("update item set totalkneto = ? where interno = ? and id = 0"),
                   {kilos, r_.interno});
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(), kSeccionKilos);
    }
}

} // namespace korven
