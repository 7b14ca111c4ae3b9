#include "foundation/NuevoInterno.h"

#include "foundation/OpcionesInterno.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDate>

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
}

bool NuevoInterno::Existe(const QString& interno) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select interno from caratula where upper(interno) = upper(?)"), {interno});
    return IsRecord(rs);
}

QString NuevoInterno::Ejecutar() {
    try {
        // The input box of the mail bridge.
        const std::optional<QString> respuesta = ctx_.dialogos().PedirTexto(
            QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"),
            QStringLiteral("Crear nuevo interno"), LargoMaximo, QString());
        if (!respuesta || respuesta->trimmed().isEmpty())
            return {};
        const QString interno = *respuesta;
        // The insert is the test: the key of the header refuses a number in use (whatever its
        // case), also when another workstation creates the same number at this moment.
        StoreDirectory& stores = ctx_.stores();
        int filas = 0;
        try {
            EnTransaccion(stores, {kInternos}, [&](Transaccion&) {
                filas = stores.getDataConnectionByEntity(kInternos).Ejecutar(
                    QStringLiteral(
                        "insert into caratula (interno, fechaalta, ONCCAHabilitado) values (?,") +
                        stores.getDateFormatbyEntity(kInternos, QDate::currentDate()) +
                        QStringLiteral(",'N')"),
                    {interno});
            });
        } catch (const KorvenError& e) {
            if (e.conflicto() || !Existe(interno))
                throw;
            ctx_.dialogos().Mensaje(QStringLiteral("El Código de interno ya existe."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return {};
        }
        if (filas > 0)
            OpcionesInterno(ctx_.settings()).GuardarNuevo(interno);
        return interno;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                QStringLiteral(" - seccion [korven.frminternonew.nuevointerno]::"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    return {};
}

} // namespace korven
