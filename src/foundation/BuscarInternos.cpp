#include "foundation/BuscarInternos.h"

#include "foundation/Integridad.h"
#include "platform/Configuracion.h"
#include "platform/Formato.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
}

// Upper case of the letters a-z only, as upper() does on both engines.
QString BuscarInternos::MayusculasSql(const QString& texto) {
    QString r = texto;
    for (QChar& c : r)
        if (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            c = QChar(c.unicode() - ('a' - 'A'));
    return r;
}

// The first text after every text that begins with prefijo, in the byte order of both engines
// (UTF-8, compared byte by byte): the prefix with its last character moved one on. Empty when
// there is none.
QString BuscarInternos::FinDePrefijo(const QString& prefijo) {
    QList<uint> cs = prefijo.toUcs4();
    while (!cs.isEmpty()) {
        uint u = cs.last() + 1;
        if (u >= 0xD800 && u <= 0xDFFF)
            u = 0xE000;
        if (u <= 0x10FFFF) {
            cs.last() = u;
            return QString::fromUcs4(reinterpret_cast<const char32_t*>(cs.constData()), cs.size());
        }
        cs.removeLast();
    }
    return {};
}

QString BuscarInternos::Sql(const FiltroInternos& filtro, QVariantList* parametros) {
    QVariantList p;
    QString where;
    auto termino = [&where](const QString& t) {
        where += where.isEmpty() ? QStringLiteral(" where ") : QStringLiteral("and ");
        where += t;
    };
    if (!filtro.cliente.isEmpty()) {
        termino(QStringLiteral(" cuitcliente = ? "));
        p << filtro.cliente;
    }
    if (!filtro.despachante.isEmpty()) {
        termino(QStringLiteral(" cuitdespaduana = ? "));
        p << filtro.despachante;
    }
    if (filtro.filtroFecha)
        termino(QStringLiteral(" ( FechaAlta between ") +
                stores_.getDateFormatbyEntity(kInternos, filtro.desde) + QStringLiteral(" and ") +
                stores_.getDateFormatbyEntity(kInternos, filtro.hasta) + QStringLiteral(" ) "));
    if (!filtro.interno.trimmed().isEmpty()) {
        // The beginning of the number, without regard to case, as a range over the index of
        // upper(interno): every number from the prefix up to the one after it.
        const QString desde = MayusculasSql(filtro.interno);
        const QString hasta = FinDePrefijo(desde);
        termino(QStringLiteral(" upper(interno) >= ? "));
        p << desde;
        if (!hasta.isEmpty()) {
            termino(QStringLiteral(" upper(interno) < ? "));
            p << hasta;
        }
    }
    // The kind of the sub-regime and the name of the customs office come in the same read.
    QString sql =
        QStringLiteral("select c.*, (select s.cstaimpexp from sta s where s.id = c.idsubreg "
                       "limit 1) as korven_tipo, (select a.descripcion from aduana a where a.id = "
                       "c.idaduana limit 1) as korven_aduana from caratula c ") +
        where;
    // Numbers are unique without regard to case and are listed so: the index of upper(interno)
    // then gives both the range of a prefix and the order, and the first page is read without
    // sorting every Operation the prefix matches.
    sql += config_.LISTADO != 0 ? QStringLiteral(" order by fechaalta desc,interno")
                                : QStringLiteral(" order by upper(interno)");
    if (!config_.OperacionesMostrarTODO)
        sql += QStringLiteral(" LIMIT 50");
    if (parametros)
        *parametros = p;
    return sql;
}

QList<FilaInterno> BuscarInternos::Buscar(const FiltroInternos& filtro) {
    QVariantList p;
    const QString sql = Sql(filtro, &p);
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(sql, p);
    return Filas(rs);
}

std::optional<FilaInterno> BuscarInternos::Fila(const QString& interno) {
    QVariantList p;
    QString sql = Sql(FiltroInternos{}, &p);
    sql.replace(QStringLiteral("from caratula c "),
                QStringLiteral("from caratula c where interno = ? "));
    const QList<FilaInterno> filas =
        Filas(stores_.getDataConnectionByEntity(kInternos).Abrir(sql, {interno}));
    if (filas.isEmpty())
        return std::nullopt;
    return filas.first();
}

QList<FilaInterno> BuscarInternos::Filas(Recordset rs) {
    QList<FilaInterno> filas;
    for (; !rs.Eof(); rs.MoveNext()) {
        FilaInterno f;
        f.interno = EsNull(rs.Fields(QStringLiteral("interno")));
        f.subRegimen = EsNull(rs.Fields(QStringLiteral("idsubreg")));
        f.impExp = TextoImpExp(EsNull(rs.Fields(QStringLiteral("korven_tipo"))));
        f.despachante = EsNull(rs.Fields(QStringLiteral("factura3")));
        f.cliente = EsNull(rs.Fields(QStringLiteral("factura7")));
        f.vendedor = EsNull(rs.Fields(QStringLiteral("factura2")));
        const QString aduana = EsNull(rs.Fields(QStringLiteral("idaduana")));
        auto importe = [&rs](const char* valor, const char* divisa) {
            return Formato(EsNumero(rs.Fields(QString::fromLatin1(valor))),
                           QStringLiteral("00.00")) +
                   QStringLiteral(" (") + EsNull(rs.Fields(QString::fromLatin1(divisa))) +
                   QLatin1Char(')');
        };
        f.detalle = QStringLiteral("Aduana: (") + aduana + QStringLiteral(") ") +
                    EsNull(rs.Fields(QStringLiteral("korven_aduana"))) +
                    QStringLiteral(" - Cond Venta: ") +
                    EsNull(rs.Fields(QStringLiteral("idcondiciondeventa"))) + QLatin1Char('\n') +
                    QStringLiteral("FOB : ") + importe("fobdivisas", "fobcoddivisas") +
                    QStringLiteral(" - Flete : ") + importe("fletedivisas", "fletecoddivisas") +
                    QStringLiteral(" - Seguro : ") + importe("segurodivisas", "segurocoddivisas") +
                    QLatin1Char('\n') + QStringLiteral("Creado : ") +
                    FormatoFecha(FechaDeCampo(rs.Fields(QStringLiteral("fechaalta"))),
                                 QStringLiteral("Long Date"));
        filas.append(f);
    }
    return filas;
}

QString BuscarInternos::getTypeOPfromSubReg(const QString& idsubreg) {
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select CSTAIMPEXP from STA where id = ?"), {idsubreg});
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("cstaimpexp"))) : QString();
}

QString BuscarInternos::getAduanaDescripcion(const QString& idaduana) {
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select descripcion from ADUANA where id = ?"), {idaduana});
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("descripcion"))) : QString();
}

QString BuscarInternos::TextoImpExp(const QString& cstaimpexp) {
    if (cstaimpexp == QStringLiteral("I"))
        return QStringLiteral("Importacion");
    if (cstaimpexp == QStringLiteral("E"))
        return QStringLiteral("Exportacion");
    return QStringLiteral("Otros");
}

} // namespace korven
