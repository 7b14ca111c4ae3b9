#include "foundation/ListasMaestras.h"

#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kPersonal = QStringLiteral("PERSONAL");
const QString kSystablas = QStringLiteral("SYSTABLAS");

QList<QStringList> Filas(Recordset rs, const QStringList& campos) {
    QList<QStringList> r;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList fila;
        for (const QString& c : campos)
            fila << EsNull(rs.Fields(c));
        r << fila;
    }
    return r;
}
} // namespace

QList<QStringList> ListasMaestras::Vendedores(bool ordenPorNombre) {
    const QString sql = ordenPorNombre ? QStringLiteral("select * from vendedor order by nombre")
                                       : QStringLiteral("select * from vendedor order by codigo");
    return Filas(stores_.getDataConnectionByEntity(kPersonal).Abrir(sql),
                 {QStringLiteral("codigo"), QStringLiteral("nombre"), QStringLiteral("domicilio")});
}

bool ListasMaestras::ExisteVendedor(const QString& codigo) {
    Recordset rs = stores_.getDataConnectionByEntity(kPersonal).Abrir(
        QStringLiteral("select count(1) as cont from vendedor where codigo = ") + SqlTexto(codigo));
    return IsRecord(rs) && EsNumero(rs.Fields(QStringLiteral("cont"))) > 0;
}

int ListasMaestras::InsertarVendedor(const QString& codigo, const QString& nombre,
                                     const QString& domicilio) {
    return stores_.getDataConnectionByEntity(kPersonal).Ejecutar(
        QStringLiteral("insert into vendedor (codigo,nombre,domicilio) values (") +
        SqlTexto(codigo) + QLatin1Char(',') + SqlTexto(nombre) + QLatin1Char(',') +
        SqlTexto(domicilio) + QLatin1Char(')'));
}

int ListasMaestras::ActualizarVendedor(const QString& codigo, const QString& nombre,
                                       const QString& domicilio) {
    return stores_.getDataConnectionByEntity(kPersonal).Ejecutar(
        QStringLiteral("update vendedor set nombre = ") + SqlTexto(nombre) +
        QStringLiteral(", domicilio = ") + SqlTexto(domicilio) +
        QStringLiteral(" where codigo = ") + SqlTexto(codigo));
}

int ListasMaestras::EliminarVendedor(const QString& codigo) {
    return stores_.getDataConnectionByEntity(kPersonal).Ejecutar(
        QStringLiteral("delete from vendedor where codigo = ") + SqlTexto(codigo));
}

QList<QStringList> ListasMaestras::Despachantes() {
    return Filas(stores_.getDataConnectionByEntity(kPersonal).Abrir(
                     QStringLiteral("select cuit,nombre from despadu order by nombre")),
                 {QStringLiteral("cuit"), QStringLiteral("nombre")});
}

QList<QStringList> ListasMaestras::ListasDePaises(const QStringList& paises) {
    QStringList codigos;
    for (const QString& p : paises)
        if (!p.isEmpty())
            codigos << SqlTexto(p);
    if (codigos.isEmpty())
        return {};
    return Filas(
        stores_.getDataConnectionByEntity(kSystablas)
            .Abrir(QStringLiteral("select distinct id,descripcion from lista where id in (") +
                   codigos.join(QLatin1Char(',')) + QStringLiteral(") order by id,descripcion")),
        {QStringLiteral("id"), QStringLiteral("descripcion")});
}

QString ListasMaestras::LeerComentario(const QString& interno) {
    Recordset rs =
        stores_.getDataConnectionByEntity(kSystablas)
            .Abrir(QStringLiteral("select * from coment where interno = ") + SqlTexto(interno));
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("coment"))) : QString();
}

void ListasMaestras::GrabarComentario(const QString& interno, const QString& texto) {
    Conexion& cx = stores_.getDataConnectionByEntity(kSystablas);
    const double cuantos =
        EsNumero(cx.Escalar(QStringLiteral("select count(*) as cont from coment where interno = ") +
                            SqlTexto(interno)));
    if (cuantos == 0)
        cx.Ejecutar(QStringLiteral("insert into coment(interno,coment) values (") +
                    SqlTexto(interno) + QLatin1Char(',') + SqlTexto(texto) + QLatin1Char(')'));
    else
        cx.Ejecutar(QStringLiteral("update coment set coment = ") + SqlTexto(texto) +
                    QStringLiteral(" where interno = ") + SqlTexto(interno));
}

} // namespace korven
