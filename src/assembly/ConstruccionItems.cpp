#include "assembly/ConstruccionItems.h"

#include "assembly/CorridaArmado.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace korven {

namespace {

constexpr int kMaximoGruposPorItem = 300;

QString Texto(const Recordset& rs, const QString& campo) {
    return EsNull(rs.Fields(campo));
}

double Numero(const Recordset& rs, const QString& campo) {
    return EsNumero(rs.Fields(campo));
}

// The columns of an item row, in the order of the insert.
const QString kInsertItem = QStringLiteral(
    "insert into item (interno,ncm,idpais,idproc,idunidad,estadomerc,biendeuso,estadistica,"
    "valorrelacionestadistica,deresp,valorderesp,id,cantidad,totalkneto,fobtotal,totalkbruto,"
    "lapi,itfiller,insumostemp,insumosacons,cancelaciones,tipoitem,onccacategoria,onccacortes) "
    "values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");

// One item row: `claves` is a row with the key columns of groupsubitems (idpaisproc feeds
// idproc; NULL texts go in as ''), `sumas` the row with the sums of its groups.
void InsertarItem(CorridaArmado& r, long long id, const Recordset& claves, const Recordset& sumas) {
    r.c.Ejecutar(kInsertItem, {r.interno,
                               Texto(claves, QStringLiteral("ncm")),
                               Texto(claves, QStringLiteral("idpais")),
                               Texto(claves, QStringLiteral("idpaisproc")),
                               Texto(claves, QStringLiteral("idunidad")),
                               Texto(claves, QStringLiteral("estadomerc")),
                               Texto(claves, QStringLiteral("biendeuso")),
                               Texto(claves, QStringLiteral("estadistica")),
                               Numero(sumas, QStringLiteral("valrel")),
                               Texto(claves, QStringLiteral("deresp")),
                               Numero(sumas, QStringLiteral("valder")),
                               id,
                               Numero(sumas, QStringLiteral("cant")),
                               Numero(sumas, QStringLiteral("rkgneto")),
                               Numero(sumas, QStringLiteral("fobtotal")),
                               Numero(sumas, QStringLiteral("rkgbruto")),
                               Texto(claves, QStringLiteral("lapi")),
                               Texto(claves, QStringLiteral("itfiller")),
                               Numero(sumas, QStringLiteral("tinsumostemp")),
                               Numero(sumas, QStringLiteral("tinsumosacons")),
                               Texto(claves, QStringLiteral("cancelaciones")),
                               Texto(claves, QStringLiteral("tipoitem")),
                               Texto(claves, QStringLiteral("onccacategoria")),
                               Texto(claves, QStringLiteral("onccacortes"))});
}

// The sums of the groups that make an item. Each sum is rounded again to the decimals of its
// terms (amounts, kilos and quantities to two; the rest to six), so that the item holds the
// decimal sum whatever order the store adds the groups in: both engines give the same figures.
QString Sumas(const CorridaArmado& r) {
    const QString dos = QStringLiteral("00.00");
    const QString seis = QStringLiteral("00.000000");
    auto suma = [&](const QString& expr, const QString& mascara, const char* alias) {
        return r.Redondeo(QStringLiteral("sum(") + expr + QLatin1Char(')'), mascara) +
               QStringLiteral(" as ") + QString::fromLatin1(alias);
    };
    return QStringList{
        suma(r.Redondeo(QStringLiteral("valorrelacionestadistica"), dos), dos, "valrel"),
        suma(r.Redondeo(QStringLiteral("valorderesp"), dos), dos, "valder"),
        suma(QStringLiteral("cantidad"), seis, "cant"),
        suma(QStringLiteral("fob"), dos, "fobtotal"),
        suma(r.Redondeo(QStringLiteral("kgneto"), dos), dos, "rkgneto"),
        suma(QStringLiteral("kgbruto"), seis, "rkgbruto"),
        suma(QStringLiteral("insumostemp"), seis, "tinsumostemp"),
        suma(QStringLiteral("insumosacons"), seis, "tinsumosacons")}
        .join(QStringLiteral(", "));
}

// "and <column> is null " or "and <column> = ? " with the value bound.
void FiltroNulo(const Recordset& rs, const QString& columna, QString& sql, QVariantList& valores) {
    const QVariant v = rs.Fields(columna);
    if (v.isNull()) {
        sql += QStringLiteral("and ") + columna + QStringLiteral(" is null ");
    } else {
        sql += QStringLiteral("and ") + columna + QStringLiteral(" = ? ");
        valores << EsNull(v);
    }
}

// The key of a row with NULL read as '', as an item holds it.
QString ClaveVacia(const Recordset& rs, const QStringList& columnas) {
    QString k;
    for (const QString& c : columnas)
        k += EsNull(rs.Fields(c)) + QChar(0x1f);
    return k;
}

// Writes the item number of each group (by its orden) in statements of some hundred rows;
// the rows changed.
int Numerar(CorridaArmado& r, const std::vector<std::pair<long long, long long>>& enlaces) {
    constexpr size_t kPorSentencia = 500;
    int cambiadas = 0;
    for (size_t i = 0; i < enlaces.size(); i += kPorSentencia) {
        QStringList valores;
        for (size_t j = i; j < std::min(enlaces.size(), i + kPorSentencia); ++j)
            valores << QStringLiteral("(%1,%2)").arg(enlaces[j].first).arg(enlaces[j].second);
        cambiadas += r.c.Ejecutar(
            QStringLiteral("update groupsubitems set id = v.column2 from (values ") +
                valores.join(QLatin1Char(',')) +
                QStringLiteral(") v where groupsubitems.interno = ? and groupsubitems.orden = "
                               "v.column1"),
            {r.interno});
    }
    return cambiadas;
}

} // namespace

void ConstruccionItems::GenerarItems() {
    CorridaArmado& r = r_;
    r.c.Ejecutar(QStringLiteral("delete from item where interno = ") + r.X());
    r.c.Ejecutar(QStringLiteral("update groupsubitems set fob = ") +
                 r.Redondeo(QStringLiteral("fob"), QStringLiteral("00.00")) +
                 QStringLiteral(" where interno = ") + r.X());

    // At most 300 groups make one item: the groups of a larger set are split into blocks by a
    // digit appended to their filler, which is part of the item's key.
    Recordset grandes = r.c.Abrir(
        QStringLiteral("select count(*) as cuenta,interno,ncm,estadistica,idpais,idpaisproc,"
                       "idunidad,estadomerc,biendeuso,deresp,lapi,itfiller,cancelaciones,"
                       "codigoean,tipoitem from groupsubitems where interno = ") +
        r.X() +
        QStringLiteral(" group by interno,ncm,estadistica,idpais,idpaisproc,idunidad,estadomerc,"
                       "deresp,biendeuso,lapi,itfiller,cancelaciones,codigoean,tipoitem "
                       "having count(*)>") +
        QString::number(kMaximoGruposPorItem));
    for (; !grandes.Eof(); grandes.MoveNext()) {
        QString sql = QStringLiteral("select orden, itfiller from groupsubitems where interno = ? "
                                     "and ncm = ? and idunidad = ? ");
        QVariantList valores{r.interno, Texto(grandes, QStringLiteral("ncm")),
                             Texto(grandes, QStringLiteral("idunidad"))};
        for (const char* col : {"idpais", "idpaisproc", "itfiller", "estadomerc", "biendeuso",
                                "cancelaciones", "codigoean", "tipoitem"})
            FiltroNulo(grandes, QString::fromLatin1(col), sql, valores);
        Recordset filas = r.c.Abrir(sql + QStringLiteral("order by orden"), valores);
        int cuenta = 1, bloque = 1;
        for (; !filas.Eof(); filas.MoveNext()) {
            if (cuenta > kMaximoGruposPorItem) {
                cuenta = 1;
                ++bloque;
            }
            r.c.Ejecutar(QStringLiteral("update groupsubitems set itfiller = ? where interno = ? "
                                        "and orden = ?"),
                         {Texto(filas, QStringLiteral("itfiller")) + QString::number(bloque),
                          r.interno, filas.Fields(QStringLiteral("orden"))});
            ++cuenta;
        }
    }

    long long items = 0;
    if (r.OrdenItems == 1) {
        // By position: one item per key, N before G before D, then by position and filler;
        // keys of equal order come in the order of the rest of the key, NULL before ''.
        const QStringList columnas{
            QStringLiteral("tipoitem"),       QStringLiteral("ncm"),
            QStringLiteral("itfiller"),       QStringLiteral("estadistica"),
            QStringLiteral("idpais"),         QStringLiteral("idpaisproc"),
            QStringLiteral("idunidad"),       QStringLiteral("estadomerc"),
            QStringLiteral("deresp"),         QStringLiteral("biendeuso"),
            QStringLiteral("lapi"),           QStringLiteral("cancelaciones"),
            QStringLiteral("onccacategoria"), QStringLiteral("onccacortes")};
        QStringList orden;
        for (const QString& col : columnas) {
            const QString desc =
                col == QLatin1String("tipoitem") ? QStringLiteral(" desc") : QString();
            orden << QStringLiteral("coalesce(%1,'')%2, case when %1 is null then 0 else 1 end")
                         .arg(col, desc);
        }
        const QString clave = QStringLiteral("interno,") + columnas.join(QLatin1Char(','));
        Recordset rs = r.c.Abrir(QStringLiteral("select ") + clave + QStringLiteral(", ") +
                                 Sumas(r) + QStringLiteral(" from groupsubitems where interno = ") +
                                 r.X() + QStringLiteral(" group by ") + clave +
                                 QStringLiteral(" order by ") + orden.join(QStringLiteral(", ")));
        for (; !rs.Eof(); rs.MoveNext())
            InsertarItem(r, ++items, rs, rs);

        // Each group to its item: same position, unit, capital good, cancellations and type,
        // and an empty country, filler or state of the group joins any item of its position.
        // Of the items that qualify, the group takes the one built from its own key with NULL
        // read as '' (an item holds '' for NULL), the lowest number among equal ones.
        QHash<QString, long long> porClave;
        long long id = 0;
        for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
            porClave.insert(ClaveVacia(rs, columnas), ++id); // the first is the lowest
        std::vector<std::pair<long long, long long>> enlaces;
        Recordset grupos =
            r.c.Abrir(QStringLiteral("select orden, ") + columnas.join(QStringLiteral(", ")) +
                          QStringLiteral(" from groupsubitems where interno = ?"),
                      {r.interno});
        for (; !grupos.Eof(); grupos.MoveNext()) {
            bool completo = true;
            for (const char* c : {"ncm", "idunidad", "biendeuso", "cancelaciones", "tipoitem"})
                completo = completo && !grupos.Fields(QString::fromLatin1(c)).isNull();
            if (completo)
                enlaces.emplace_back(
                    static_cast<long long>(EsNumero(grupos.Fields(QStringLiteral("orden")))),
                    porClave.value(ClaveVacia(grupos, columnas)));
        }
        const int enlazados = Numerar(r, enlaces);
        if (enlazados == 0)
            r.ctx.dialogos().Mensaje(QStringLiteral("Error en Agrupar Subitems"),
                                     QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    } else {
        // In order of loading: the group with the lowest line number still without an item
        // opens the next item, and every group of its key joins it. The key is position, unit,
        // countries, filler, state, capital good, cancellations and the ONCCA columns, NULL
        // equal only to NULL. A group without position or unit never matches its own key, so
        // it could never be numbered.
        const QVariant sinClave =
            r.c.Escalar(QStringLiteral("select count(*) from groupsubitems where interno = ") +
                        r.X() + QStringLiteral(" and (ncm is null or idunidad is null)"));
        if (EsNumero(sinClave) > 0)
            throw KorvenError(5,
                              QStringLiteral("Hay grupos de subitems sin posición o sin unidad: "
                                             "no se pueden numerar por orden de carga"),
                              QStringLiteral("ArmarItem.GenerarItems"));
        const QString orden =
            QStringLiteral("case when idsub is null then 0 else 1 end, idsub, orden");
        r.c.Ejecutar(
            QStringLiteral(
                "update groupsubitems set id = n.item from (select orden, dense_rank() over "
                "(order by primero) as item from (select orden, min(pos) over (partition by ncm, "
                "idunidad, idpais, idpaisproc, itfiller, estadomerc, biendeuso, cancelaciones, "
                "onccacategoria, onccacortes) as primero from (select orden, ncm, idunidad, "
                "idpais, idpaisproc, itfiller, estadomerc, biendeuso, cancelaciones, "
                "onccacategoria, onccacortes, row_number() over (order by ") +
                orden +
                QStringLiteral(") as pos from groupsubitems where interno = ?) a) b) n where "
                               "groupsubitems.interno = ? and groupsubitems.orden = n.orden"),
            {r.interno, r.interno});

        // Each item takes its key, statistics, specific duty, LAPI and type from its first
        // group.
        Recordset primeros = r.c.Abrir(
            QStringLiteral("select id, ncm, idpais, idpaisproc, idunidad, estadomerc, biendeuso, "
                           "estadistica, deresp, lapi, itfiller, cancelaciones, tipoitem, "
                           "onccacategoria, onccacortes from groupsubitems where interno = ? "
                           "and id is not null order by id, ") +
                orden,
            {r.interno});
        Recordset sumas =
            r.c.Abrir(QStringLiteral("select id, ") + Sumas(r) +
                          QStringLiteral(" from groupsubitems where interno = ? and id is not "
                                         "null group by id order by id"),
                      {r.interno});
        for (; !sumas.Eof(); sumas.MoveNext()) {
            const auto id = static_cast<long long>(Numero(sumas, QStringLiteral("id")));
            while (!primeros.Eof() &&
                   static_cast<long long>(Numero(primeros, QStringLiteral("id"))) < id)
                primeros.MoveNext();
            InsertarItem(r, id, primeros, sumas);
            items = id;
        }
    }

    // Freight and insurance in proportion to the FOB of the Operation left by the proration;
    // what rounding leaves over or short goes to the item with the largest share.
    if (items > 0 && r.TotalFobOperacion == 0)
        throw KorvenError(11, QStringLiteral("División por cero"),
                          QStringLiteral("ArmarItem.GenerarItems"));
    struct Reparto {
        const char* columna;
        double total;
    };
    for (const Reparto& p :
         {Reparto{"itflete", r.car.fletedivisas}, Reparto{"itseguro", r.car.segurodivisas}}) {
        const QString col = QString::fromLatin1(p.columna);
        r.c.Ejecutar(QStringLiteral("update item set ") + col + QStringLiteral(" = ") +
                     r.Redondeo(QStringLiteral("(fobtotal * ") + r.Numero(p.total) +
                                    QStringLiteral(")/") + r.Numero(r.TotalFobOperacion),
                                QStringLiteral("00.00")) +
                     QStringLiteral(" where interno = ") + r.X());
        const double suma = EsNumero(r.c.Escalar(QStringLiteral("select sum(") + col +
                                                 QStringLiteral(") as total from item where "
                                                                "interno = ") +
                                                 r.X()));
        if (suma != p.total) {
            const double d = suma - p.total;
            Recordset mayor =
                r.c.Abrir(QStringLiteral("select id, ") + col +
                              QStringLiteral(" from item where interno = ? order by ") + col +
                              QStringLiteral(" desc, id limit 2"),
                          {r.interno});
            if (!mayor.Eof())
                r.c.Ejecutar(QStringLiteral("update item set ") + col +
                                 QStringLiteral(" = ? where interno = ? and id = ?"),
                             {RedondearDecimal(Numero(mayor, col) - d, 2), r.interno,
                              mayor.Fields(QStringLiteral("id"))});
        }
    }

    r.c.Ejecutar(QStringLiteral("insert into item (id,interno,totalkneto) values (0,?,0)"),
                 {r.interno});

    // The common data of the header.
    const CaratulaArmado& k = r.car;
    auto Todos = [&](const char* columna, const QString& valor) {
        if (!valor.isEmpty())
            r.c.Ejecutar(QStringLiteral("update item set ") + QString::fromLatin1(columna) +
                             QStringLiteral(" = ? where interno = ?"),
                         {valor, r.interno});
    };
    if (!k.dcpaisdestino.isEmpty())
        r.c.Ejecutar(QStringLiteral("update item set idproc = ? where interno = ? and (idproc = "
                                    "'' or idproc is null)"),
                     {k.dcpaisdestino, r.interno});
    Todos("standard", k.dcstandard);
    Todos("regalias", k.dcregalias);
    if (!k.dcestmerc.isEmpty() && k.dcforzarestmerc)
        r.c.Ejecutar(QStringLiteral("update item set estadomerc = ? where id=0 and interno = ?"),
                     {k.dcestmerc, r.interno});
    if (!k.dcpaisorigen.isEmpty() && k.dcforzarpaisorigen)
        r.c.Ejecutar(QStringLiteral("update item set idpais = ? where id=0 and interno = ?"),
                     {k.dcpaisorigen, r.interno});
    Todos("onccaacuerdo", k.onccaacuerdo);
    Todos("onccaelaborador", k.onccaelaborador);
    Todos("onccaespecie", k.onccaespecie);
    Todos("onccafaneador", k.onccafaneador);
    Todos("onccamatadero", k.onccamatadero);
    Todos("onccameccoorgbio", k.onccameccoorgbio);
    Todos("onccares3106", k.onccares3106);
    Todos("onccasispro", k.onccasispro);
    Todos("opcionesiva", k.opcionesiva);
    Todos("opcionesganancias", k.opcionesganancias);
}

void ConstruccionItems::Ventajas() {
    CorridaArmado& r = r_;
    const QString cuit = r.cliente.cuit;
    auto Aplicar = [&](const QString& subregimen, bool sinPosicionVale) {
        Recordset reglas = r.personal.Abrir(
            QStringLiteral("select ncm, idventaja from ventajasrel where cuit = ? and "
                           "idsubregimen = ?"),
            {cuit, subregimen});
        for (; !reglas.Eof(); reglas.MoveNext()) {
            const QString ncm = Texto(reglas, QStringLiteral("ncm")).trimmed();
            const QString ventaja = Texto(reglas, QStringLiteral("idventaja"));
            if (ncm.isEmpty() && !sinPosicionVale)
                continue;
            QString sql = QStringLiteral("insert into itemventaja (iditem,interno,idventaja) "
                                         "select id, interno, ? from item where interno = ? and "
                                         "id<>0");
            QVariantList valores{ventaja, r.interno};
            if (!ncm.isEmpty()) {
                sql += QStringLiteral(" and ncm like ?");
                valores << ncm + QLatin1Char('%');
            }
            r.c.Ejecutar(sql + QStringLiteral(" order by id"), valores);
        }
    };
    // The rules of the subregime, then the rules of the client's positions for any subregime.
    Aplicar(r.car.idsubreg, true);
    Aplicar(QStringLiteral(""), false); // bound as the empty text, not NULL
}

void ConstruccionItems::TarifaExternaComun() {
    CorridaArmado& r = r_;
    if (r.car.idsubreg.left(2).toUpper() != QLatin1String("IC")) {
        r.GuardarAEC_N();
        return;
    }
    Recordset posiciones =
        r.c.Abrir(QStringLiteral("select distinct ncm from item where interno = ? and id<>0 "
                                 "order by ncm"),
                  {r.interno});
    for (; !posiciones.Eof(); posiciones.MoveNext()) {
        const QString ncm = Texto(posiciones, QStringLiteral("ncm"));
        Recordset marca =
            r.ncm.Abrir(QStringLiteral("select \"028\" from ncm where \"001\" = ? and \"002\" = ?"),
                        {ncm.left(10), ncm.mid(11, 3)});
        for (; !marca.Eof(); marca.MoveNext()) {
            if (Texto(marca, QStringLiteral("028")).trimmed() == QLatin1String("*")) {
                // The spare part's destination decides the common external tariff.
                r.PreguntarAEC();
                return;
            }
        }
    }
}

void ConstruccionItems::Cerrar() {
    CorridaArmado& r = r_;
    r.c.Ejecutar(QStringLiteral("delete from iteminfo where interno = ") + r.X());
    r.c.Ejecutar(QStringLiteral("update caratula set factura8 = 'N' where interno = ") + r.X());
    if (r.car.idsubreg.left(2).toUpper() != QLatin1String("IC"))
        r.GuardarAEC_N();
}

void ConstruccionItems::ItemsGyD() {
    CorridaArmado& r = r_;
    if (!r.ctx.config().CORDANORAF)
        return;
    Recordset g = r.c.Abrir(
        QStringLiteral("select id from item where interno = ? and tipoitem = 'G' order by id"),
        {r.interno});
    if (g.Eof())
        return;
    Dialogos& d = r.ctx.dialogos();
    const QString sinRelacion = QStringLiteral("\n\nNo se establecio el ITEM RELACIONADO!");
    if (g.RecordCount() > 1) {
        d.Mensaje(QStringLiteral("ADVERTENCIA!: Hay mas de 1 item tipo G, solo puede haber uno y "
                                 "ser el primer item") +
                      sinRelacion,
                  QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
    } else if (static_cast<long long>(Numero(g, QStringLiteral("id"))) == 1) {
        r.c.Ejecutar(QStringLiteral("update item set itemasociado = '001' where interno = ? and "
                                    "tipoitem='D'"),
                     {r.interno});
        d.Mensaje(QStringLiteral("Se establecio como ITEM RELACIONADO el 001 en todos los items "
                                 "tipo D"),
                  QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
    } else {
        d.Mensaje(QStringLiteral("ADVERTENCIA!: El Item tipo G debe ser el primer item") +
                      sinRelacion,
                  QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
    }
}

} // namespace korven
