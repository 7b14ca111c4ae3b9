#include "foundation/ClListadoEx.h"

#include "foundation/ListasMaestras.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"

namespace korven {

void ClListadoEx::setTipo(int tipo) {
    tipo_ = tipo;
    if (tipo == ListasDePaises) {
        ancho1_ = 2000;
        ancho2_ = 2000;
    }
}

QStringList ClListadoEx::Mostrar(const QString& pais1, const QString& pais2) {
    if (tipo_ != ListasDePaises)
        return {};
    if (pais1.isEmpty() && pais2.isEmpty()) {
        ctx_.dialogos().Mensaje(QStringLiteral("No hay Países ingresados."),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
        return {};
    }
    try {
        const QList<QStringList> filas =
            ListasMaestras(ctx_.stores()).ListasDePaises({pais1, pais2});
        if (filas.isEmpty()) {
            ctx_.dialogos().Mensaje(
                QStringLiteral("No hay LISTA para mostrar con los Países ingresados"),
                QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
            return {};
        }
        QVariantList lista;
        for (const QStringList& f : filas)
            lista << f;
        QVariantMap args;
        args.insert(QStringLiteral("titulo"), QStringLiteral("LISTAS"));
        args.insert(QStringLiteral("filas"), lista);
        args.insert(QStringLiteral("anchos"), QVariantList{ancho1_, ancho2_});
        const QVariantMap par = ctx_.AbrirModal(QStringLiteral("FrmListadoeX"), args).toMap();
        if (par.isEmpty())
            return {};
        return {par.value(QStringLiteral("codigo")).toString(),
                par.value(QStringLiteral("descripcion")).toString()};
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) +
                                    QStringLiteral(" - Sección ListadoEx\n\n") + e.descripcion(),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    return {};
}

} // namespace korven
