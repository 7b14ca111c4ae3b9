#include "goods/BusquedaArticulos.h"

#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

QStringList BusquedaArticulos::Campos() {
    return {QStringLiteral("idarticulo"), QStringLiteral("descripcion"), QStringLiteral("ncm")};
}

QString BusquedaArticulos::Sql(Forma forma, const QString& catalogo, const QString& campo,
                               const QString& texto) {
    // The field is one of the fixed list; the texts enter quoted.
    const QString c = Campos().contains(campo) ? campo : Campos().first();
    const QString donde =
        QStringLiteral(" from catarticulos where idcatalogo = ") + SqlTexto(catalogo);
    // Without regard to case on every engine.
    const QString filtro = QStringLiteral(" and upper(") + c + QStringLiteral(") like upper(") +
                           SqlTexto(QLatin1Char('%') + texto + QLatin1Char('%')) + QLatin1Char(')');
    if (forma == Forma::ConTotal)
        return QStringLiteral("select idarticulo,descripcion,ncm,Cantidad*Preciounitario as "
                              "total") +
               donde + filtro;
    if (texto.isEmpty())
        return QStringLiteral("select *") + donde;
    return QStringLiteral("select idarticulo,ncm,descripcion,cantidad,preciounitario") + donde +
           filtro;
}

QList<QStringList> BusquedaArticulos::Buscar(Forma forma, const QString& catalogo,
                                             const QString& campo, const QString& texto) {
    Recordset rs = ctx_.stores()
                       .getDataConnectionByEntity(QStringLiteral("CATALOGOS"))
                       .Abrir(Sql(forma, catalogo, campo, texto));
    const QString m = QStringLiteral("00.00");
    QList<QStringList> filas;
    for (; !rs.Eof(); rs.MoveNext()) {
        auto t = [&rs](const char* f) { return EsNull(rs.Fields(QString::fromLatin1(f))); };
        auto n = [&rs, &m](const char* f) {
            return Formato(EsNumero(rs.Fields(QString::fromLatin1(f))), m);
        };
        if (forma == Forma::ConTotal)
            filas.append({t("idarticulo"), t("descripcion"), t("ncm"), n("total")});
        else
            filas.append(
                {t("idarticulo"), t("ncm"), t("descripcion"), n("cantidad"), n("preciounitario")});
    }
    return filas;
}

} // namespace korven
