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

QString BuscarInternos::Sql(const FiltroInternos& filtro) {
    QString where;
    auto termino = [&where](const QString& t) {
        where += where.isEmpty() ? QStringLiteral(" where ") : QStringLiteral("and ");
        where += t;
    };
    if (!filtro.cliente.isEmpty())
        termino(QStringLiteral(" cuitcliente = ") + SqlTexto(filtro.cliente) + QLatin1Char(' '));
    if (!filtro.despachante.isEmpty())
        termino(QStringLiteral(" cuitdespaduana = ") + SqlTexto(filtro.despachante) +
                QLatin1Char(' '));
    if (filtro.filtroFecha)
        termino(QStringLiteral(" ( FechaAlta between ") +
                stores_.getDateFormatbyEntity(kInternos, filtro.desde) + QStringLiteral(" and ") +
                stores_.getDateFormatbyEntity(kInternos, filtro.hasta) + QStringLiteral(" ) "));
    if (!filtro.interno.trimmed().isEmpty())
        termino(QStringLiteral(" interno like ") + SqlTexto(filtro.interno + QLatin1Char('%')) +
                QLatin1Char(' '));
    QString sql = QStringLiteral("select * from caratula ") + where;
    sql += config_.LISTADO != 0 ? QStringLiteral(" order by fechaalta desc,interno")
                                : QStringLiteral(" order by interno");
    if (!config_.OperacionesMostrarTODO)
        sql += QStringLiteral(" LIMIT 50");
    return sql;
}

QList<FilaInterno> BuscarInternos::Buscar(const FiltroInternos& filtro) {
    tipos_.clear();
    aduanas_.clear();
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(Sql(filtro));
    QList<FilaInterno> filas;
    for (; !rs.Eof(); rs.MoveNext()) {
        FilaInterno f;
        f.interno = EsNull(rs.Fields(QStringLiteral("interno")));
        f.subRegimen = EsNull(rs.Fields(QStringLiteral("idsubreg")));
        f.impExp = TextoImpExp(getTypeOPfromSubReg(f.subRegimen));
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
                    getAduanaDescripcion(aduana) + QStringLiteral(" - Cond Venta: ") +
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
    const auto i = tipos_.constFind(idsubreg);
    if (i != tipos_.cend())
        return *i;
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select CSTAIMPEXP from STA where id = ") + SqlTexto(idsubreg));
    const QString r = IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("cstaimpexp"))) : QString();
    tipos_.insert(idsubreg, r);
    return r;
}

QString BuscarInternos::getAduanaDescripcion(const QString& idaduana) {
    const auto i = aduanas_.constFind(idaduana);
    if (i != aduanas_.cend())
        return *i;
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select descripcion from ADUANA where id = ") + SqlTexto(idaduana));
    const QString r = IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("descripcion"))) : QString();
    aduanas_.insert(idaduana, r);
    return r;
}

QString BuscarInternos::TextoImpExp(const QString& cstaimpexp) {
    if (cstaimpexp == QStringLiteral("I"))
        return QStringLiteral("Importacion");
    if (cstaimpexp == QStringLiteral("E"))
        return QStringLiteral("Exportacion");
    return QStringLiteral("Otros");
}

} // namespace korven
