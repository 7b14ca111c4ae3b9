#include "header/PickLists.h"

#include "header/ListasCodigos.h"
#include "platform/AppContext.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
const QString kSystablas = QStringLiteral("SYSTABLAS");
} // namespace

PickLists::PickLists(AppContext& ctx, QObject* parent) : QObject(parent), ctx_(ctx) {}

QString PickLists::Descripcion(const QString& entidad, const QString& tabla,
                               const QString& codigo) {
    if (codigo.isEmpty())
        return {};
    Recordset rs = ctx_.stores().getDataConnectionByEntity(entidad).Abrir(
        QStringLiteral("select descripcion from ") + tabla + QStringLiteral(" where id = ?"),
        {codigo});
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("descripcion"))) : QString();
}

QString PickLists::getAduanaDescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("ADUANA"), codigo);
}

QString PickLists::getPaisDescripcion(const QString& codigo) {
    return Descripcion(kSystablas, QStringLiteral("PAIS"), codigo);
}

QString PickLists::getEstadoMercaderiaDescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("ESTADOMERCADERIA"), codigo);
}

QString PickLists::getUnidadesDescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("UNIDADES"), codigo);
}

QString PickLists::getVIADescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("via"), codigo);
}

QString PickLists::getTipoEmbarqueDescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("TIPOEMB"), codigo);
}

QString PickLists::getCodigoEmbarqueDescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("CODEMB"), codigo);
}

QString PickLists::getCondicionVentaDescripcion(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("CONDICIONDEVENTA"), codigo);
}

QString PickLists::getSubRegimen(const QString& codigo) {
    return Descripcion(kInternos, QStringLiteral("sta"), codigo);
}

QString PickLists::getListado(const QString& lista) {
    return ListasCodigos(ctx_).MostrarLista(lista, QStringLiteral("Buscar ") + lista.toUpper());
}

QString PickLists::getMotivosListado() {
    return getListado(QStringLiteral("MOTIVOS"));
}

QString PickLists::TablaONCCA(const QString& lista) {
    const QString l = lista.toLower();
    if (l == QStringLiteral("acuerdo"))
        return QStringLiteral("oncca_acuerdo");
    if (l == QStringLiteral("categoria"))
        return QStringLiteral("oncca_categoria");
    if (l == QStringLiteral("cortes"))
        return QStringLiteral("oncca_cortes");
    if (l == QStringLiteral("elaborador"))
        return QStringLiteral("oncca_elaborador");
    if (l == QStringLiteral("especie"))
        return QStringLiteral("oncca_ganado");
    if (l == QStringLiteral("faneador"))
        return QStringLiteral("oncca_faneador");
    if (l == QStringLiteral("mecoorgbio"))
        return QStringLiteral("oncca_mecoorgbio");
    if (l == QStringLiteral("res3106"))
        return QStringLiteral("oncca_res3106");
    if (l == QStringLiteral("sispro"))
        return QStringLiteral("oncca_sispro");
    return {};
}

QString PickLists::TituloONCCA(const QString& lista) {
    const QString l = lista.toLower();
    if (l == QStringLiteral("cortes"))
        return QStringLiteral("ONCCA - Corte");
    if (l == QStringLiteral("mecoorgbio"))
        return QStringLiteral("ONCCA - Ecologico-Organico o Biologico");
    if (l == QStringLiteral("res3106"))
        return QStringLiteral("ONCCA - RES31/06MEYP");
    if (l == QStringLiteral("sispro"))
        return QStringLiteral("ONCCA - Sistema de producción");
    return QStringLiteral("ONCCA - ") + lista;
}

// A category, or a position that the cut's position begins; the filter is bound twice.
QString PickLists::FiltroCortes(const QString& filtro, QVariantList& valores) {
    if (filtro.isEmpty())
        return {};
    valores << filtro << filtro;
    return QStringLiteral(" (categoria = ? or (ncm <> '' and ? like (ncm || '%')))");
}

QString PickLists::DescripcionONCCA(const QString& lista, const QString& codigo,
                                    const QString& filtro) {
    if (codigo.isEmpty())
        return {};
    QString sql = QStringLiteral("select descripcion from ") + TablaONCCA(lista) +
                  QStringLiteral(" where id = ?");
    QVariantList valores{codigo};
    const QString cortes =
        lista.toLower() == QStringLiteral("cortes") ? FiltroCortes(filtro, valores) : QString();
    if (!cortes.isEmpty())
        sql += QStringLiteral(" and") + cortes;
    sql += QStringLiteral(" order by descripcion");
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kSystablas).Abrir(sql, valores);
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("descripcion"))) : QString();
}

QString PickLists::ListadoONCCA(const QString& lista, const QString& filtro) {
    const bool esCortes = lista.toLower() == QStringLiteral("cortes");
    QString sql = QStringLiteral("select id,descripcion from ") + TablaONCCA(lista);
    QVariantList valores;
    const QString cortes = esCortes ? FiltroCortes(filtro, valores) : QString();
    if (!cortes.isEmpty())
        sql += QStringLiteral(" where") + cortes;
    sql += esCortes ? QStringLiteral(" order by categoria,id") : QStringLiteral(" order by id");
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kSystablas).Abrir(sql, valores);
    QList<ListasCodigos::Fila> filas;
    for (; !rs.Eof(); rs.MoveNext()) {
        ListasCodigos::Fila f;
        f.codigo = EsNull(rs.Fields(QStringLiteral("id")));
        f.descripcion = EsNull(rs.Fields(QStringLiteral("descripcion")));
        f.texto = f.codigo + QLatin1Char('\t') + f.descripcion;
        filas.append(f);
    }
    return ListasCodigos::AbrirListado(ctx_, TituloONCCA(lista), filas);
}

QString PickLists::getONCCAAcuerdo(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Acuerdo"), c);
}
QString PickLists::getONCCAAcuerdoListado() {
    return ListadoONCCA(QStringLiteral("Acuerdo"));
}
QString PickLists::getONCCACategoria(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Categoria"), c);
}
QString PickLists::getONCCACategoriaListado() {
    return ListadoONCCA(QStringLiteral("Categoria"));
}
QString PickLists::getONCCACortes(const QString& c, const QString& filtro) {
    return DescripcionONCCA(QStringLiteral("Cortes"), c, filtro);
}
QString PickLists::getONCCACortesListado(const QString& filtro) {
    return ListadoONCCA(QStringLiteral("Cortes"), filtro);
}
QString PickLists::getONCCAElaborador(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Elaborador"), c);
}
QString PickLists::getONCCAElaboradorListado() {
    return ListadoONCCA(QStringLiteral("Elaborador"));
}
QString PickLists::getONCCAEspecie(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Especie"), c);
}
QString PickLists::getONCCAEspecieListado() {
    return ListadoONCCA(QStringLiteral("Especie"));
}
QString PickLists::getONCCAFaneador(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Faneador"), c);
}
QString PickLists::getONCCAFaneadorListado() {
    return ListadoONCCA(QStringLiteral("Faneador"));
}
QString PickLists::getONCCAMecoorgbio(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Mecoorgbio"), c);
}
QString PickLists::getONCCAMecoorgbioListado() {
    return ListadoONCCA(QStringLiteral("Mecoorgbio"));
}
QString PickLists::getONCCAres3106(const QString& c) {
    return DescripcionONCCA(QStringLiteral("Res3106"), c);
}
QString PickLists::getONCCAres3106Listado() {
    return ListadoONCCA(QStringLiteral("Res3106"));
}
QString PickLists::getONCCASisPro(const QString& c) {
    return DescripcionONCCA(QStringLiteral("SisPro"), c);
}
QString PickLists::getONCCASisProListado() {
    return ListadoONCCA(QStringLiteral("SisPro"));
}

} // namespace korven
