#include "foundation/Integridad.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"

#include <QDateTime>

namespace korven {

QDate FechaDeCampo(const QVariant& valor) {
    if (!valor.isValid() || valor.isNull())
        return {};
    switch (valor.metaType().id()) {
    case QMetaType::QDate:
        return valor.toDate();
    case QMetaType::QDateTime:
        return valor.toDateTime().date();
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString t = valor.toString().trimmed();
        QDate d = QDate::fromString(t.left(10), Qt::ISODate);
        if (!d.isValid())
            d = QDate::fromString(t, QStringLiteral("dd/MM/yyyy"));
        return d;
    }
    default:
        return {};
    }
}

bool Integridad(AppContext& ctx) {
    int linea = 10;
    try {
        Conexion& cn = ctx.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
        cn.setSql(QStringLiteral("select max(fecha) as vfecha from control_fecha"));
        Recordset rs;
        ctx.config().FechaNomenclador.clear();
        if (cn.CrearRs(rs)) {
            linea = 20;
            const QDate fecha = FechaDeCampo(rs.Fields(QStringLiteral("vfecha")));
            if (fecha.isValid())
                ctx.config().FechaNomenclador = FormatoFecha(fecha, QStringLiteral("Long Date"));
        }
        return true;
    } catch (const KorvenError& e) {
        ctx.dialogos().Mensaje(e.descripcion() + QStringLiteral("\n\nSeccion Integridad (") +
                                   QString::number(linea) + QStringLiteral(")::") + e.origen(),
                               QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
}

} // namespace korven
