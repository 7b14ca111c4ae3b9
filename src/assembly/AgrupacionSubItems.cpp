#include "assembly/AgrupacionSubItems.h"

#include "assembly/CorridaArmado.h"
#include "goods/ValidadorNCM.h"
#include "liquidation/ReglasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"

#include <QHash>
#include <QMetaObject>
#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace korven {

namespace {

const QString kAgrupado = QStringLiteral("agrupado!");

// A text of the store; NULL reads as the empty text, which compares and binds as ''.
QString Texto(const QVariant& v) {
    const QString t = EsNull(v);
    return t.isNull() ? QStringLiteral("") : t;
}
QString Texto(const Recordset& rs, const QString& campo) {
    return Texto(rs.Fields(campo));
}

// The texts of the columns from the given place on, joined into one key; false when one is null
// (a null equals nothing). Columns are read by place: these loops read every row of the
// Operation.
bool ClaveDeFila(const Recordset& rs, int desde, int cuantas, QString* clave) {
    QStringList k;
    for (int i = desde; i < desde + cuantas; ++i) {
        const QVariant v = rs.Fields(i);
        if (v.isNull())
            return false;
        k << Texto(v);
    }
    *clave = k.join(QChar(0x1f));
    return true;
}

// The grouping key of the goods lines, in the order the groups are numbered in.
const QStringList& ClaveGrupo() {
    static const QStringList k{"interno",        "ncm",           "preciounitario", "idpais",
                               "idpaisproc",     "sufijos",       "idunidad",       "estadomerc",
                               "biendeuso",      "estadistica",   "deresp",         "codprorrateo",
                               "itfiller",       "cancelaciones", "codigoean",      "tipoitem",
                               "onccacategoria", "onccacortes"};
    return k;
}

// The columns a group and a goods line must share for the line to be the group's own: the
// group of one line has the line's quantity.
const QStringList& ClaveEnlace() {
    static const QStringList k{
        "interno",        "ncm",       "idpais",       "idpaisproc",   "cantidad",
        "preciounitario", "sufijos",   "idunidad",     "estadomerc",   "biendeuso",
        "tipoitem",       "codigoean", "codprorrateo", "cancelaciones"};
    return k;
}

// Text columns that pick the lines of a group when its link is looked for one group at a time,
// and those that pick the groups that take the link (the price comes apart).
const QStringList& FiltroLineas() {
    static const QStringList k{"ncm",        "idpais",    "idpaisproc", "sufijos",  "idunidad",
                               "estadomerc", "codigoean", "tipoitem",   "biendeuso"};
    return k;
}
const QStringList& FiltroGrupos() {
    static const QStringList k{"ncm",        "idpais",    "idpaisproc",    "sufijos",   "idunidad",
                               "estadomerc", "biendeuso", "cancelaciones", "codigoean", "tipoitem"};
    return k;
}

// The key of twin groups that differ only by a small difference of unit price.
const QStringList& FiltroDuplicados() {
    static const QStringList k{"ncm",       "idpais",     "idpaisproc",     "sufijos",
                               "idunidad",  "estadomerc", "biendeuso",      "estadistica",
                               "deresp",    "lapi",       "itfiller",       "cancelaciones",
                               "codigoean", "tipoitem",   "onccacategoria", "onccacortes"};
    return k;
}

// The unit price as the link of a group compares it: written with four decimals.
double PrecioDeEnlace(double precio) {
    return Formato(precio, QStringLiteral("00.0000"), QStringLiteral(".")).toDouble();
}

QString ClaveNumero(double v) {
    return QString::number(v == 0 ? 0.0 : v, 'g', 17);
}

const QChar kSep(0x1f);

} // namespace

void AgrupacionSubItems::Limpiar() {
    const QVariantList x{r_.interno};
    for (const char* t : {"groupsubitems", "idrel", "sysflag"}) {
        const QString tabla = QString::fromLatin1(t);
        r_.c.Ejecutar(QStringLiteral("delete from %1 where interno = ?").arg(tabla), x);
        r_.OlvidarOrden(tabla);
    }
}

void AgrupacionSubItems::Normalizar() {
    // Each repair is a column, the value it takes and the condition for it. They touch
    // different columns, so one pass over the lines does them all, and writes each line once.
    QList<std::array<QString, 3>> arreglos{
        // An untyped line is a normal line.
        {"tipoitem", "'N'", "tipoitem = '' or tipoitem is null"},
        {"valorderesp", "0", "valorderesp is null"},
        // A suffix text always ends in a hyphen; the mark of no suffixes is the empty text.
        {"sufijos",
         "case when sufijos = 'SIN SUFIJOS' or sufijos is null then '' else sufijos "
         "|| '-' end",
         "sufijos = 'SIN SUFIJOS' or sufijos is null or (sufijos <> '' and right(sufijos,1) <> "
         "'-')"}};
    for (const char* col :
         {"idarticulo", "idpais", "idpaisproc", "estadomerc", "biendeuso", "codprorrateo", "lapi",
          "itfiller", "deresp", "cancelaciones", "codigoean", "onccacategoria", "onccacortes"})
        arreglos.append({col, "''", QString::fromLatin1(col) + " is null"});
    for (const char* col : {"insumostemp", "insumosacons"})
        arreglos.append({col, "0", QStringLiteral("isnumeric(%1)=0 or %1 is null").arg(col)});

    QStringList sets, condiciones;
    for (const auto& [col, valor, cond] : arreglos) {
        sets << QStringLiteral("%1 = case when %3 then %2 else %1 end").arg(col, valor, cond);
        condiciones << QLatin1Char('(') + cond + QLatin1Char(')');
    }
    r_.c.Ejecutar(QStringLiteral("update subitems set ") + sets.join(QLatin1Char(',')) +
                      QStringLiteral(" where interno = ? and (") +
                      condiciones.join(QStringLiteral(" or ")) + QLatin1Char(')'),
                  {r_.interno});
}

bool AgrupacionSubItems::Validar() {
    Recordset rs = r_.c.Abrir(QStringLiteral("select ncm,cantidad,preciounitario,fob,sufijos "
                                             "from subitems where interno = ? order by id"),
                              {r_.interno});
    std::unique_ptr<QObject> validador =
        r_.ctx.componentes().Crear(QStringLiteral("ValidadorNCM"), r_.ctx);
    // The answer depends on the position and the suffixes only: each pair is asked once.
    QHash<QString, int> respuestas;
    auto validar = [&](const QString& ncm, const QString& sufijos) {
        const QString clave = ncm + kSep + sufijos;
        const auto it = respuestas.constFind(clave);
        if (it != respuestas.cend())
            return *it;
        int resultado = -1;
        if (!QMetaObject::invokeMethod(validador.get(), "ValidarSubItem", Qt::DirectConnection,
                                       Q_RETURN_ARG(int, resultado), Q_ARG(QString, ncm),
                                       Q_ARG(QString, sufijos)))
            throw KorvenError(438, QStringLiteral("El objeto no acepta esta propiedad o método"),
                              QStringLiteral("ValidadorNCM"));
        respuestas.insert(clave, resultado);
        return resultado;
    };

    const int n = rs.RecordCount();
    QString reporte;
    for (int pos = 1; !rs.Eof(); rs.MoveNext(), ++pos) {
        r_.progreso.BarraSufijos(pos, n);
        const QString ncm = Texto(rs, QStringLiteral("ncm"));
        const QString sufijos = Texto(rs, QStringLiteral("sufijos"));
        const int resultado = validar(ncm, sufijos);
        if (resultado == ValidadorNCM::Valido)
            continue;
        if (reporte.isEmpty())
            reporte =
                QStringLiteral("Se han encontrado subitem's inválidos\n") +
                QString(37, QLatin1Char('-')) + QStringLiteral("\n\n") +
                Rellenar(QStringLiteral("Posición"), 15) +
                Rellenar(QStringLiteral("Cantidad"), 11) +
                Rellenar(QStringLiteral("Unitario"), 11) + Rellenar(QStringLiteral("FOB"), 11) +
                QLatin1Char('\n') + QString(15, QLatin1Char('-')) + QLatin1Char(' ') +
                QString(10, QLatin1Char('-')) + QLatin1Char(' ') + QString(10, QLatin1Char('-')) +
                QLatin1Char(' ') + QString(10, QLatin1Char('-')) + QStringLiteral(" \n");
        reporte += Rellenar(ncm, 15);
        for (const char* campo : {"cantidad", "preciounitario", "fob"})
            reporte += Rellenar(
                Formato(EsNumero(rs.Fields(QString::fromLatin1(campo))), QStringLiteral("00.00")),
                11);
        reporte += QStringLiteral(" - ") + sufijos + QLatin1Char('\n');
        if (resultado == ValidadorNCM::PosicionInvalida)
            reporte += QStringLiteral("Error: POSICIÓN INVALIDA");
        else if (resultado == ValidadorNCM::SufijosInvalidos)
            reporte += QStringLiteral("Error: SUFIJO INVÁLIDOS");
        else
            reporte += QStringLiteral("Error: DESCONOCIDO");
        reporte += QStringLiteral("\n\n");
    }
    if (reporte.isEmpty())
        return true;
    r_.MostrarDatos(reporte);
    r_.ctx.ArmadoResultado = QStringLiteral("No");
    r_.terminada = true;
    return false;
}

void AgrupacionSubItems::Agrupar() {
    const QVariantList x{r_.interno};
    Conexion& c = r_.c;

    // One group for each merchandise at one unit price; the groups are numbered in the order
    // of their key. The article is not in the key, and LAPI is not carried.
    {
        QStringList orden;
        for (const QString& k : ClaveGrupo())
            orden << k + QStringLiteral(" nulls first");
        c.Ejecutar(
            QStringLiteral(
                "INSERT INTO groupsubitems(interno,ncm,preciounitario,idpais,idpaisproc,sufijos,"
                "idunidad,estadomerc,biendeuso,cantidad,estadistica,valorrelacionestadistica,"
                "deresp,valorderesp,codprorrateo,kgneto,kgbruto,fob,itfiller,insumostemp,"
                "insumosacons,cancelaciones,codigoean,tipoitem,onccacategoria,onccacortes,orden)"
                "\nselect interno,ncm,preciounitario,idpais,idpaisproc,sufijos,idunidad,"
                "estadomerc,biendeuso,sum(cantidad) as sumcantidad,estadistica,"
                "sum(valorrelacionestadistica) as valorestadistica,deresp,sum(valorderesp) as "
                "sumvalorderesp,codprorrateo,sum(kgneto),sum(kgbruto),sum(fob),itfiller,"
                "sum(insumostemp),sum(insumosacons),cancelaciones,codigoean,tipoitem,"
                "onccacategoria,onccacortes,row_number() over (order by %1) + (select "
                "coalesce(max(orden),0) from groupsubitems where interno = ?)"
                "\nfrom  (select * from subitems where interno = ?) as a"
                "\nwhere interno = ? group by %2")
                .arg(orden.join(QLatin1Char(',')), ClaveGrupo().join(QLatin1Char(','))),
            {r_.interno, r_.interno, r_.interno});
        r_.OlvidarOrden(QStringLiteral("groupsubitems"));
    }

    // Derived quantities: the statistical and specific-duty quantities follow the declared
    // quantity when they are measured in its unit; unit 01 is the kilogram.
    for (const char* s :
         {"update groupsubitems set valorrelacionestadistica = cantidad where idunidad = "
          "estadistica and valorrelacionestadistica = 0 and interno = ?",
          "update groupsubitems set valorderesp = cantidad where idunidad = deresp and "
          "valorderesp = 0 and interno = ?",
          "update groupsubitems set valorrelacionestadistica = valorderesp where deresp = "
          "estadistica and valorrelacionestadistica = 0 and interno = ?",
          "update groupsubitems set valorrelacionestadistica = kgneto where (estadistica = '01' "
          "and valorrelacionestadistica=0) and kgneto > 0 and interno = ?"})
        c.Ejecutar(QString::fromLatin1(s), x);

    // Defaults for empty columns. The one for idpaisproc tests idpais, which the statement
    // before has already filled: an empty idpaisproc stays null.
    const QList<QPair<const char*, const char*>> defectos{{"idarticulo", "idarticulo"},
                                                          {"kgbruto", "kgbruto"},
                                                          {"idpais", "idpais"},
                                                          {"idpaisproc", "idpais"},
                                                          {"sufijos", "sufijos"},
                                                          {"idunidad", "idunidad"},
                                                          {"estadomerc", "estadomerc"},
                                                          {"biendeuso", "biendeuso"},
                                                          {"idarticulo", "idarticulo"},
                                                          {"lapi", "lapi"},
                                                          {"cancelaciones", "cancelaciones"}};
    for (const auto& [col, prueba] : defectos) {
        const QString valor =
            qstrcmp(col, "kgbruto") == 0 ? QStringLiteral("0") : QStringLiteral("''");
        c.Ejecutar(QStringLiteral("update groupsubitems set %1 = %2 where %3 is null and "
                                  "interno = ?")
                       .arg(QString::fromLatin1(col), valor, QString::fromLatin1(prueba)),
                   x);
    }

    // The group of one line takes that line as its own, with its article. When several lines
    // would fit, the first loaded one is taken.
    {
        QStringList igual;
        for (const QString& k : ClaveEnlace())
            if (k != QLatin1String("interno"))
                igual << QStringLiteral("groupsubitems.%1 = k.%1").arg(k);
        // The lines are all of the Operation. SQLite would walk the Operation's groups once per
        // line by the index on interno; written as an expression, the filter lets it index the
        // groups by the joined columns instead.
        const QString operacion = r_.c.motor() == Motor::SQLite
                                      ? QStringLiteral("(groupsubitems.interno || '') = ?")
                                      : QStringLiteral("groupsubitems.interno = ?");
        const QString articulo =
            r_.FlgIdArtTOOtros ? QStringLiteral("s.otros") : QStringLiteral("s.idarticulo");
        c.Ejecutar(QStringLiteral("UPDATE groupsubitems SET idsub = s.id, idcatalogo = "
                                  "s.idcatalogo, idarticulo = %1 FROM (select min(id) as id, %2 "
                                  "from subitems where interno = ? group by %2) as k INNER JOIN "
                                  "subitems as s ON (s.interno = k.interno AND s.id = k.id) "
                                  "WHERE %3 AND %4")
                       .arg(articulo, ClaveEnlace().join(QLatin1Char(',')),
                            igual.join(QStringLiteral(" AND ")), operacion),
                   {r_.interno, r_.interno});
    }

    // The other groups are linked one by one: the first line of the merchandise is the root,
    // the others go to idrel and, for cancellations, to the inputs component.
    Recordset grupos =
        c.Abrir(QStringLiteral("select * from groupsubitems where interno = ? and (idsub is "
                               "null) order by orden"),
                x);
    if (grupos.Eof())
        return;

    struct Linea {
        long long id;
        QString articulo, catalogo, cancelaciones;
    };
    QHash<QString, QList<Linea>> lineas; // the filter's values -> the lines, by id
    {
        Recordset rs = c.Abrir(
            QStringLiteral("select id,%1 as fidarticulo,idcatalogo,cancelaciones,certorig,%2 "
                           "from subitems where interno = ? order by id asc")
                .arg(r_.FlgIdArtTOOtros ? QStringLiteral("otros") : QStringLiteral("idarticulo"),
                     FiltroLineas().join(QLatin1Char(',')) + QStringLiteral(",preciounitario")),
            x);
        const int n = static_cast<int>(FiltroLineas().size());
        for (; !rs.Eof(); rs.MoveNext()) {
            // A line with a null among the filtered columns is nobody's.
            QString clave;
            const QVariant precio = rs.Fields(5 + n);
            if (!ClaveDeFila(rs, 5, n, &clave) || precio.isNull())
                continue;
            lineas[clave + kSep + ClaveNumero(EsNumero(precio))].append(
                {static_cast<long long>(EsNumero(rs.Fields(0))), Texto(rs.Fields(1)),
                 Texto(rs.Fields(2)), Texto(rs.Fields(3))});
        }
    }

    // The groups each link reaches, by the values it filters on, so that the update finds
    // them by their number rather than by reading every group of the Operation.
    QHash<QString, QVariantList> alcance;
    {
        Recordset rs = c.Abrir(QStringLiteral("select orden,preciounitario,") +
                                   FiltroGrupos().join(QLatin1Char(',')) +
                                   QStringLiteral(" from groupsubitems where interno = ?"),
                               x);
        for (; !rs.Eof(); rs.MoveNext()) {
            QString clave;
            if (!rs.Fields(1).isNull() &&
                ClaveDeFila(rs, 2, static_cast<int>(FiltroGrupos().size()), &clave))
                alcance[clave + kSep + ClaveNumero(EsNumero(rs.Fields(1)))] << rs.Fields(0);
        }
    }

    QStringList filtro;
    for (const QString& f : FiltroGrupos())
        filtro << f + (f == QLatin1String("sufijos") ? QStringLiteral(" = ? and preciounitario = ?")
                                                     : QStringLiteral(" = ?"));
    const QString donde =
        QStringLiteral(" where interno = ? and ") + filtro.join(QStringLiteral(" and "));
    const QString conCatalogo =
        QStringLiteral("update groupsubitems set idsub = ?, idarticulo = ?, idcatalogo = ?") +
        donde;
    const QString sinCatalogo =
        QStringLiteral("update groupsubitems set idsub = ?, idarticulo = ?") + donde;
    const QString relacion =
        QStringLiteral("insert into idrel (interno,idroot,idsub,orden) values (?,?,?,?)");

    for (; !grupos.Eof(); grupos.MoveNext()) {
        const double precio =
            PrecioDeEnlace(EsNumero(grupos.Fields(QStringLiteral("preciounitario"))));
        QStringList clave;
        for (const QString& f : FiltroLineas())
            clave << Texto(grupos, f);
        clave << ClaveNumero(precio);
        const auto it = lineas.constFind(clave.join(kSep));
        if (it == lineas.cend())
            continue;
        const QList<Linea>& ls = *it;
        const long long raiz = ls.first().id;

        QString articulo = ls.first().articulo;
        QString catalogo = ls.first().catalogo;
        if (ls.size() > 1) {
            QStringList otros;
            for (const Linea& l : ls) {
                if (l.id == raiz)
                    continue;
                c.Ejecutar(relacion, {r_.interno, raiz, l.id, r_.SiguienteOrden("idrel")});
                otros << QString::number(l.id);
            }
            if (ls.first().cancelaciones.trimmed() == QLatin1String("OK"))
                r_.EnviarGrupoIdSub(raiz, otros.join(QLatin1Char('|')));
            articulo = ls.first().articulo.trimmed();
            catalogo = ls.first().catalogo.trimmed();
            for (const Linea& l : ls)
                if (l.articulo.trimmed() != articulo)
                    articulo = kAgrupado;
        }

        QVariantList p{raiz, articulo};
        if (articulo != kAgrupado)
            p << catalogo;
        p << r_.interno;
        QStringList claveGrupos;
        for (const QString& f : FiltroGrupos()) {
            p << Texto(grupos, f);
            claveGrupos << Texto(grupos, f);
            if (f == QLatin1String("sufijos"))
                p << precio;
        }
        claveGrupos << ClaveNumero(precio);
        const QVariantList ordenes = alcance.value(claveGrupos.join(kSep));
        if (ordenes.isEmpty())
            continue; // the update would reach no group
        p << ordenes;
        c.Ejecutar((articulo != kAgrupado ? conCatalogo : sinCatalogo) +
                       QStringLiteral(" and orden in (") +
                       QStringList(ordenes.size(), QStringLiteral("?")).join(QLatin1Char(',')) +
                       QLatin1Char(')'),
                   p);
    }
}

void AgrupacionSubItems::MarcarRegimen() {
    Recordset rs = r_.c.Abrir(QStringLiteral("select idsubreg, motivodestsuspensiva from "
                                             "caratula where interno = ?"),
                              {r_.interno});
    if (rs.Eof())
        return;
    AppContext& ctx = r_.ctx;
    QString* flags[] = {&ctx.FlagDto1439, &ctx.FlagDto1439A1, &ctx.FlagD1330A6, &ctx.FlagD1330A7,
                        &ctx.FlagD1330A8};
    for (QString* f : flags)
        *f = QStringLiteral("N");

    const QString subreg = Texto(rs, QStringLiteral("idsubreg"));
    static const QStringList motivos{"DTO.1439/96", "D1439/96-AI", "D1330/04-A6", "D1330/04-A7",
                                     "D1330/04-A8"};
    static const QStringList nombres{"1439/96", "1439/96A1", "D1330/04A6", "D1330/04A7",
                                     "D1330/04A8"};
    const QString motivo = Texto(rs, QStringLiteral("motivodestsuspensiva")).trimmed();
    const int i = SubregimenTemporal(subreg) ? static_cast<int>(motivos.indexOf(motivo)) : -1;

    const QString sql =
        QStringLiteral("insert into sysflag (flag,valor,item,interno,orden) values (?,?,0,?,?)");
    auto flag = [&](const QString& nombre, const QString& valor) {
        r_.c.Ejecutar(sql, {nombre, valor, r_.interno, r_.SiguienteOrden("sysflag")});
    };
    if (i >= 0) {
        *flags[i] = QStringLiteral("S");
        flag(nombres[i], QStringLiteral("S"));
    } else {
        flag(nombres[0], QStringLiteral("N"));
        flag(nombres[1], QStringLiteral("N"));
    }
    if (subreg.left(2).toUpper() != QLatin1String("IC"))
        r_.GuardarAEC_N();
}

void AgrupacionSubItems::BuscarDuplicados() {
    try {
        Conexion& c = r_.c;
        // Groups with a twin: a group of the same key but another price exists for their
        // suffixes. (The twin of the comparison may be the group itself, which it is whenever
        // the compared columns hold values.)
        Recordset grupos = c.Abrir(
            QStringLiteral(
                "select * from groupsubitems as a where a.interno = ? and a.preciounitario is "
                "not null and a.sufijos is not null and a.idunidad is not null and a.idpais is "
                "not null and a.idpaisproc is not null and a.ncm is not null and a.sufijos in "
                "(select sufijos from groupsubitems where interno = ? group by interno,ncm,"
                "idpais,idpaisproc,sufijos,idunidad,estadomerc,biendeuso,estadistica,deresp,lapi,"
                "itfiller,cancelaciones,codigoean,tipoitem having count(*)>1) order by a.orden"),
            {r_.interno, r_.interno});

        // Which groups a filter picks is known beforehand from the groups held in memory, so
        // that each statement reaches them by their number rather than by reading every group.
        struct Fila {
            long long orden;
            double precio;
        };
        QHash<QString, QList<Fila>> porClave; // the filter's texts -> the groups
        {
            Recordset rs = c.Abrir(QStringLiteral("select orden,preciounitario,") +
                                       FiltroDuplicados().join(QLatin1Char(',')) +
                                       QStringLiteral(" from groupsubitems where interno = ?"),
                                   {r_.interno});
            for (; !rs.Eof(); rs.MoveNext()) {
                QString clave;
                if (!rs.Fields(1).isNull() &&
                    ClaveDeFila(rs, 2, static_cast<int>(FiltroDuplicados().size()), &clave))
                    porClave[clave].append(
                        {static_cast<long long>(EsNumero(rs.Fields(0))), EsNumero(rs.Fields(1))});
            }
        }

        QStringList filtro;
        for (const QString& f : FiltroDuplicados())
            filtro << f + QStringLiteral(" = ?");
        const QString filtroTexto = QStringLiteral(" where interno = ? and ") +
                                    filtro.join(QStringLiteral(" and ")) +
                                    QStringLiteral(" and preciounitario between ? and ? ");
        const QString grupo = QStringLiteral(
            " group by interno,ncm,idpais,idpaisproc,sufijos,idunidad,estadomerc,biendeuso,"
            "estadistica,deresp,lapi,itfiller,cancelaciones,codigoean,tipoitem,onccacategoria,"
            "onccacortes");

        for (; !grupos.Eof(); grupos.MoveNext()) {
            const double p = EsNumero(grupos.Fields(QStringLiteral("preciounitario")));
            QVariantList params{r_.interno};
            for (const QString& f : FiltroDuplicados())
                params << Texto(grupos, f);
            params << p - 0.0003 << p + 0.0003;

            QStringList clave;
            for (const QString& f : FiltroDuplicados())
                clave << Texto(grupos, f);
            QList<Fila>& fila = porClave[clave.join(kSep)];
            QStringList marcas;
            for (const Fila& f : fila)
                if (f.precio >= p - 0.0003 && f.precio <= p + 0.0003) {
                    marcas << QStringLiteral("?");
                    params << f.orden;
                }
            if (marcas.isEmpty())
                continue; // the filter picks nothing
            const QString donde = filtroTexto + QStringLiteral("and orden in (") +
                                  marcas.join(QLatin1Char(',')) + QStringLiteral(") ");

            // Ordered by idsub, nulls first, here: ordered in the store the engine would walk
            // the Operation's groups by idsub.
            Recordset rs = c.Abrir(
                QStringLiteral("select idsub, cancelaciones from groupsubitems") + donde, params);
            std::vector<std::pair<QVariant, QString>> subs;
            for (; !rs.Eof(); rs.MoveNext())
                subs.emplace_back(rs.Fields(QStringLiteral("idsub")),
                                  Texto(rs, QStringLiteral("cancelaciones")));
            std::stable_sort(subs.begin(), subs.end(), [](const auto& a, const auto& b) {
                return !b.first.isNull() &&
                       (a.first.isNull() || EsNumero(a.first) < EsNumero(b.first));
            });
            QVariant raiz;
            if (!subs.empty()) {
                raiz = subs.front().first;
                if (subs.size() > 1) {
                    const long long idRaiz = static_cast<long long>(EsNumero(raiz));
                    const QString primeraCancelacion = subs.front().second;
                    QStringList otros;
                    for (size_t i = 1; i < subs.size(); ++i) {
                        const QVariant id = subs[i].first;
                        c.Ejecutar(QStringLiteral("insert into idrel (interno,idroot,idsub,orden) "
                                                  "values (?,?,?,?)"),
                                   {r_.interno, raiz, id, r_.SiguienteOrden("idrel")});
                        otros << QString::number(static_cast<long long>(EsNumero(id)));
                    }
                    if (primeraCancelacion.trimmed() == QLatin1String("OK"))
                        r_.EnviarGrupoIdSub(idRaiz, otros.join(QLatin1Char('|')));
                }
            }

            Recordset arts = c.Abrir(
                QStringLiteral("select distinct idarticulo,idcatalogo from groupsubitems") + donde,
                params);
            QString articulo = QStringLiteral(""), catalogo = QStringLiteral("");
            if (arts.RecordCount() == 1) {
                articulo = Texto(arts, QStringLiteral("idarticulo"));
                catalogo = Texto(arts, QStringLiteral("idcatalogo"));
            } else if (arts.RecordCount() > 1) {
                articulo = kAgrupado;
                catalogo = kAgrupado;
            }

            Recordset m = c.Abrir(
                QStringLiteral("select count(preciounitario) as reg,interno,ncm,") +
                    r_.Redondeo(QStringLiteral("(sum(fob) / nullif(sum(cantidad),0))"),
                                QStringLiteral("00.0000")) +
                    QStringLiteral(
                        " as unitario,idpais,idpaisproc,sufijos,idunidad,estadomerc,biendeuso,"
                        "sum(cantidad) as sumcantidad,estadistica,sum(valorrelacionestadistica) "
                        "as valorestadistica,deresp,sum(valorderesp) as sumvalorderesp,lapi,"
                        "sum(kgneto) as sumkgneto,sum(kgbruto) as sumkgbruto,sum(fob) as sumfob,"
                        "itfiller,sum(insumostemp) as suminsumostemp,sum(insumosacons) as "
                        "suminsumosacons,cancelaciones,codigoean,tipoitem,onccacategoria,"
                        "onccacortes from groupsubitems") +
                    donde + grupo,
                params);
            if (m.Eof())
                continue;
            if (m.Fields(QStringLiteral("unitario")).isNull())
                throw KorvenError(11, QStringLiteral("División por cero"));

            auto num = [&](const char* campo) {
                return QVariant(EsNumero(m.Fields(QString::fromLatin1(campo))));
            };
            auto txt = [&](const char* campo) {
                return QVariant(Texto(m, QString::fromLatin1(campo)));
            };
            // The merged group is written last: its number follows every number in use.
            const long long orden = r_.SiguienteOrden(QStringLiteral("groupsubitems"));
            c.Ejecutar(QStringLiteral("delete from groupsubitems") + donde, params);
            fila.removeIf(
                [&](const Fila& f) { return f.precio >= p - 0.0003 && f.precio <= p + 0.0003; });
            fila.append({orden, EsNumero(m.Fields(QStringLiteral("unitario")))});
            c.Ejecutar(
                QStringLiteral(
                    "INSERT INTO groupsubitems(idcatalogo,idarticulo,idsub,interno,ncm,"
                    "preciounitario,idpais,idpaisproc,sufijos,idunidad,estadomerc,biendeuso,"
                    "cantidad,estadistica,valorrelacionestadistica,deresp,valorderesp,lapi,kgneto,"
                    "kgbruto,fob,itfiller,insumostemp,insumosacons,cancelaciones,codigoean,"
                    "tipoitem,onccacategoria,onccacortes,orden) values "
                    "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"),
                {catalogo,
                 articulo,
                 raiz,
                 r_.interno,
                 txt("ncm"),
                 num("unitario"),
                 txt("idpais"),
                 txt("idpaisproc"),
                 txt("sufijos"),
                 txt("idunidad"),
                 txt("estadomerc"),
                 txt("biendeuso"),
                 num("sumcantidad"),
                 txt("estadistica"),
                 num("valorestadistica"),
                 txt("deresp"),
                 num("sumvalorderesp"),
                 txt("lapi"),
                 num("sumkgneto"),
                 num("sumkgbruto"),
                 num("sumfob"),
                 txt("itfiller"),
                 num("suminsumostemp"),
                 num("suminsumosacons"),
                 txt("cancelaciones"),
                 txt("codigoean"),
                 txt("tipoitem"),
                 txt("onccacategoria"),
                 txt("onccacortes"),
                 orden});
        }
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(),
                          QStringLiteral("Sección [KORVEN.frmArmarItem.lp_BuscarDuplicados]"));
    }
}

} // namespace korven
