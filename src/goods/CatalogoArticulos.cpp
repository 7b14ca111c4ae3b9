#include "goods/CatalogoArticulos.h"

#include "foundation/Integridad.h"
#include "header/ListasCodigos.h"
#include "platform/AppContext.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDate>

namespace korven {

namespace {

const QString kCatalogos = QStringLiteral("CATALOGOS");

ArticuloCatalogo DeFila(const Recordset& rs) {
    auto t = [&rs](const char* campo) { return EsNull(rs.Fields(QString::fromLatin1(campo))); };
    ArticuloCatalogo a;
    a.idCatalogo = t("idcatalogo");
    a.idArticulo = t("idarticulo");
    a.descripcion = t("descripcion");
    a.idPais = t("idpais");
    a.idPaisProc = t("idpaisproc");
    a.idUnidad = t("idunidad");
    a.estadoMerc = t("estadomerc");
    a.bienDeUso = t("biendeuso");
    a.codigoEAN = t("codigoean");
    a.otros = t("otros");
    a.onccaCategoria = t("onccacategoria");
    a.onccaCortes = t("onccacortes");
    a.ncm = t("ncm");
    a.sufijos = t("sufijos");
    a.precioUnitario = EsNumero(rs.Fields(QStringLiteral("preciounitario")));
    a.kgUnitario = EsNumero(rs.Fields(QStringLiteral("kgunitario")));
    a.usuario = t("usuario");
    a.fecha = FechaDeCampo(rs.Fields(QStringLiteral("fecha")));
    return a;
}

// The values of an article in the order of the columns below.
QVariantList Valores(const ArticuloCatalogo& a) {
    return {a.descripcion, a.idPais,    a.idPaisProc,     a.idUnidad,       a.estadoMerc,
            a.bienDeUso,   a.codigoEAN, a.otros,          a.onccaCategoria, a.onccaCortes,
            a.ncm,         a.sufijos,   a.precioUnitario, a.kgUnitario};
}

const char* const kColumnas[] = {"descripcion",    "idpais",      "idpaisproc", "idunidad",
                                 "estadomerc",     "biendeuso",   "codigoean",  "otros",
                                 "onccacategoria", "onccacortes", "ncm",        "sufijos",
                                 "preciounitario", "kgunitario"};

// Who wrote the article: the workstation.
QString Usuario() {
    const QString m = MaquinaLocal();
    return m.isEmpty() ? QStringLiteral("KORVEN") : m;
}

} // namespace

QString CatalogoArticulos::BuscarCatalogo(const QString& idCatalogo) {
    const QString id = idCatalogo.trimmed();
    if (id.isEmpty())
        return {};
    Recordset rs =
        ctx_.stores()
            .getDataConnectionByEntity(kCatalogos)
            .Abrir(QStringLiteral("select descripcion from catalogos where idcatalogo = ?"), {id});
    if (rs.Eof())
        return QStringLiteral("Advertencia: CATALOGO ") + id + QStringLiteral(" inexistente");
    return EsNull(rs.Fields(0));
}

std::optional<std::pair<QString, QString>> CatalogoArticulos::ElegirCatalogo() {
    Recordset rs = ctx_.stores()
                       .getDataConnectionByEntity(kCatalogos)
                       .Abrir(QStringLiteral(
                           "select idcatalogo,descripcion from catalogos order by idcatalogo"));
    QList<ListasCodigos::Fila> filas;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString id = EsNull(rs.Fields(0));
        const QString descripcion = EsNull(rs.Fields(1));
        filas.append({id, descripcion, id + QLatin1Char('\t') + descripcion});
    }
    const QString elegido = ListasCodigos::AbrirListado(ctx_, QStringLiteral("Catálogos"), filas);
    if (elegido.isEmpty())
        return std::nullopt;
    for (const ListasCodigos::Fila& f : filas)
        if (f.codigo == elegido)
            return std::make_pair(f.codigo, f.descripcion);
    return std::nullopt;
}

std::optional<ArticuloCatalogo> CatalogoArticulos::LeerArticulo(const QString& idCatalogo,
                                                                const QString& idArticulo) {
    Recordset rs =
        ctx_.stores()
            .getDataConnectionByEntity(kCatalogos)
            .Abrir(QStringLiteral(
                       "select * from catarticulos where idcatalogo = ? and idarticulo = ?"),
                   {idCatalogo.trimmed(), idArticulo.trimmed()});
    if (rs.Eof())
        return std::nullopt;
    return DeFila(rs);
}

bool CatalogoArticulos::GuardarArticulo(const ArticuloCatalogo& articulo,
                                        bool noModificarExistente) {
    ArticuloCatalogo a = articulo;
    a.idCatalogo = a.idCatalogo.trimmed();
    // An article typed without a code is kept under its description.
    a.idArticulo =
        a.idArticulo.trimmed().isEmpty() ? a.descripcion.trimmed() : a.idArticulo.trimmed();
    if (a.idCatalogo.isEmpty() || a.idArticulo.isEmpty())
        return false;
    StoreDirectory& stores = ctx_.stores();
    EnTransaccion(stores, {kCatalogos}, [&](Transaccion&) {
        Conexion& cn = stores.getDataConnectionByEntity(kCatalogos);
        const QVariantList clave{a.idCatalogo, a.idArticulo};
        const bool existe =
            !cn.Abrir(QStringLiteral("select idarticulo from catarticulos where idcatalogo = ? and "
                                     "idarticulo = ?"),
                      clave)
                 .Eof();
        if (existe && noModificarExistente)
            return;
        const QString fecha = stores.getDateFormatbyEntity(kCatalogos, QDate::currentDate());
        QVariantList valores = Valores(a);
        valores << Usuario();
        if (existe) {
            QString sql = QStringLiteral("update catarticulos set ");
            for (const char* c : kColumnas)
                sql += QString::fromLatin1(c) + QStringLiteral(" = ?,");
            sql += QStringLiteral("usuario = ?,fecha = ") + fecha +
                   QStringLiteral(" where idcatalogo = ? and idarticulo = ?");
            cn.Ejecutar(sql, valores + clave);
        } else {
            // A new article counts one unit: the search by field shows quantity times price.
            QString columnas = QStringLiteral("idcatalogo,idarticulo");
            QString marcas = QStringLiteral("?,?");
            for (const char* c : kColumnas) {
                columnas += QLatin1Char(',') + QString::fromLatin1(c);
                marcas += QStringLiteral(",?");
            }
            cn.Ejecutar(QStringLiteral("insert into catarticulos (") + columnas +
                            QStringLiteral(",usuario,fecha,cantidad) values (") + marcas +
                            QStringLiteral(",?,") + fecha + QStringLiteral(",1)"),
                        clave + valores);
        }
    });
    return true;
}

void CatalogoArticulos::EliminarArticulo(const QString& idCatalogo, const QString& idArticulo) {
    StoreDirectory& stores = ctx_.stores();
    EnTransaccion(stores, {kCatalogos}, [&](Transaccion&) {
        stores.getDataConnectionByEntity(kCatalogos)
            .Ejecutar(
                QStringLiteral("delete from catarticulos where idcatalogo = ? and idarticulo = ?"),
                {idCatalogo.trimmed(), idArticulo.trimmed()});
    });
}

QList<ArticuloCatalogo> CatalogoArticulos::Articulos(const QString& idCatalogo) {
    Recordset rs =
        ctx_.stores()
            .getDataConnectionByEntity(kCatalogos)
            .Abrir(QStringLiteral(
                       "select * from catarticulos where idcatalogo = ? order by idarticulo"),
                   {idCatalogo.trimmed()});
    QList<ArticuloCatalogo> r;
    for (; !rs.Eof(); rs.MoveNext())
        r.append(DeFila(rs));
    return r;
}

} // namespace korven
