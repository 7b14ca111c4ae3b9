#include "foundation/EliminarInterno.h"

#include "foundation/BloqueoInterno.h"
#include "foundation/OpcionesInterno.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/QueryDesk.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QMetaObject>
#include <optional>

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kSystablas = QStringLiteral("SYSTABLAS");

} // namespace

EliminarInterno::EliminarInterno(AppContext& ctx, QString maquina)
    : ctx_(ctx), maquina_(maquina.isEmpty() ? MaquinaLocal() : std::move(maquina)) {}

const QList<EliminarInterno::Paso>& EliminarInterno::Pasos() {
    static const QList<Paso> pasos = {
        {QStringLiteral("subitems"), kInternos},    {QStringLiteral("groupsubitems"), kInternos},
        {QStringLiteral("item"), kInternos},        {QStringLiteral("liqcero"), kInternos},
        {QStringLiteral("itemventaja"), kInternos}, {QStringLiteral("itemref"), kInternos},
        {QStringLiteral("itempresu"), kInternos},   {QStringLiteral("itemliq"), kInternos},
        {QStringLiteral("iteminfo"), kInternos},    {QStringLiteral("interno"), kInternos},
        {QStringLiteral("caratula"), kInternos},    {QStringLiteral("facturas"), kInternos},
        {QStringLiteral("prorrateo"), kInternos},   {QStringLiteral("descargas"), kInternos},
        {QStringLiteral("hval"), kSystablas},       {QStringLiteral("hvalexp"), kSystablas},
    };
    return pasos;
}

// Lines taken from the supplies ("OK" in cancelaciones) give their supplies back through the
// supplies component before the lines go.
void EliminarInterno::DesvincularInsumos(const QString& interno, const Recordset& lineas) {
    Recordset rs = lineas;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
        if (EsNull(rs.Fields(QStringLiteral("cancelaciones"))) != QStringLiteral("OK"))
            continue;
        std::unique_ptr<QObject> vinculo =
            ctx_.componentes().Crear(QStringLiteral("SupplyLink.Main"), ctx_);
        vinculo->setProperty("Interno", interno);
        vinculo->setProperty("CATNRO", EsNull(rs.Fields(QStringLiteral("idcatalogo"))));
        vinculo->setProperty("PRDNRO", EsNull(rs.Fields(QStringLiteral("idarticulo"))));
        vinculo->setProperty("SUBITEM", rs.Fields(QStringLiteral("id")));
        // The supplies store is the store directory's INSUMOS, wherever it is configured.
        QueryDesk& insumos = ctx_.queryDesk(1);
        if (!insumos.EstadoConexion()) {
            insumos.setCadenaConexion(QStringLiteral("INSUMOS"));
            insumos.Conectar();
        }
        vinculo->setProperty("VincularDatos", QVariant::fromValue<QObject*>(&insumos));
        bool eliminado = false;
        QMetaObject::invokeMethod(vinculo.get(), "EliminarInsumo", Q_RETURN_ARG(bool, eliminado));
        if (!eliminado)
            throw KorvenError(KorvenError::ErrorStore,
                              QStringLiteral("Error en eliminar la relacion con insumos"),
                              QStringLiteral("SupplyLink.Main"));
    }
}

bool EliminarInterno::Ejecutar(const QString& interno, const std::function<void(int)>& avance) {
    if (!ctx_.dialogos().Pregunta(QStringLiteral("Confirma eliminar el interno ") + interno,
                                  QStringLiteral("KORVEN"), Dialogos::Icono::Pregunta))
        return false;
    try {
        StoreDirectory& stores = ctx_.stores();
        const Recordset lineas = stores.getDataConnectionByEntity(kInternos).Abrir(
            QStringLiteral("select cancelaciones,idcatalogo,idarticulo,id from subitems where "
                           "interno = ? order by id"),
            {interno});
        bool conInsumos = false;
        for (int i = 0; i < lineas.RecordCount(); ++i)
            conInsumos |= EsNull(lineas.Fila(i).at(0)) == QStringLiteral("OK");
        BloqueoInterno bloqueo(stores, ctx_.dialogos(), maquina_);
        std::optional<KorvenError> tomado;
        {
            // The supplies store joins the transaction only when there are links to remove.
            QStringList entidades{kInternos, kSystablas};
            if (conInsumos)
                entidades << QStringLiteral("INSUMOS");
            EnTransaccion(stores, entidades, [&](Transaccion& tx) {
                // The deletion holds the Operation as an opening does, for as long as it runs:
                // an Operation open on another workstation is refused, and none can open it
                // meanwhile.
                tomado = bloqueo.TomarEnTransaccion(interno);
                if (tomado) {
                    tx.Deshacer();
                    return;
                }
                DesvincularInsumos(interno, lineas);
                int hechos = 0;
                for (const Paso& p : Pasos()) {
                    stores.getDataConnectionByEntity(p.entidad).Ejecutar(
                        QStringLiteral("delete from ") + p.tabla +
                            QStringLiteral(" where interno = ?"),
                        {interno});
                    if (avance)
                        avance(++hechos);
                }
            });
        }
        if (tomado) {
            if (const std::optional<BloqueoInterno::Cerrojo> c = bloqueo.Leer(interno)) {
                bloqueo.AvisarAbiertoEnOtraPc(*c);
                return false;
            }
            throw *tomado;
        }
        OpcionesInterno(ctx_.settings()).Borrar(interno);
        return true;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("[INTERNO.EliminarInterno] ") +
                                    QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion(),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    return false;
}

} // namespace korven
