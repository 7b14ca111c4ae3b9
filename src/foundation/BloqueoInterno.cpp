#include "foundation/BloqueoInterno.h"

#include "foundation/Integridad.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDateTime>

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
const QString kLongDate = QStringLiteral("Long Date");
} // namespace

BloqueoInterno::BloqueoInterno(StoreDirectory& stores, Dialogos& dialogos, QString maquina)
    : stores_(stores), dialogos_(dialogos), maquina_(std::move(maquina)) {}

std::optional<BloqueoInterno::Cerrojo> BloqueoInterno::Leer(const QString& interno) {
    Recordset rs = stores_.getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select interno,maquina,fecha from interno where interno = ") +
        SqlTexto(interno));
    if (!IsRecord(rs))
        return std::nullopt;
    return Cerrojo{EsNull(rs.Fields(QStringLiteral("maquina"))),
                   FechaDeCampo(rs.Fields(QStringLiteral("fecha")))};
}

void BloqueoInterno::AvisarAbiertoEnOtraPc(const Cerrojo& c) {
    dialogos_.Mensaje(QStringLiteral("Este interno esta abierto por la PC: ") + c.maquina +
                          QStringLiteral("\n\nAccedido el ") + FormatoFecha(c.fecha, kLongDate),
                      QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
}

bool BloqueoInterno::Tomar(const QString& interno) {
    bool reemplazar = false;
    if (const std::optional<Cerrojo> c = Leer(interno)) {
        if (c->maquina.trimmed() != maquina_.trimmed()) {
            AvisarAbiertoEnOtraPc(*c);
            return false;
        }
        dialogos_.Mensaje(
            QStringLiteral("El estado de INTERNO indica que el mismo esta abierto.\n\nSe "
                           "procedera a cambiar el estado.\n\nUltimo Acceso: ") +
                FormatoFecha(c->fecha, kLongDate),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        reemplazar = true;
    }
    if (antesDeInsertar_)
        antesDeInsertar_();
    try {
        EnTransaccion(stores_, {kInternos}, [&](Transaccion&) {
            if (reemplazar)
                stores_.getDataConnectionByEntity(kInternos).Ejecutar(
                    QStringLiteral("delete from interno where interno = ") + SqlTexto(interno));
            Insertar(interno);
        });
    } catch (const KorvenError& e) {
        // The key refused the row: another workstation took the lock since it was read.
        if (e.conflicto())
            throw;
        if (const std::optional<Cerrojo> c = Leer(interno)) {
            AvisarAbiertoEnOtraPc(*c);
            return false;
        }
        throw;
    }
    return true;
}

// The lock keeps the moment it was taken, date and time.
void BloqueoInterno::Insertar(const QString& interno) {
    stores_.getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("insert into interno (interno,maquina,usuario,fecha) values (?,?,'',") +
            QLatin1Char('\'') +
            QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) +
            QStringLiteral("')"),
        {interno, maquina_});
}

std::optional<KorvenError> BloqueoInterno::TomarEnTransaccion(const QString& interno) {
    Conexion& cx = stores_.getDataConnectionByEntity(kInternos);
    // A lock of this workstation is a leftover of a crash: it gives way.
    cx.Ejecutar(QStringLiteral("delete from interno where interno = ? and trim(maquina) = ?"),
                {interno, maquina_.trimmed()});
    try {
        Insertar(interno);
    } catch (const KorvenError& e) {
        if (e.conflicto()) // not a lock: the action is done again
            throw;
        return e;
    }
    return std::nullopt;
}

void BloqueoInterno::Liberar(const QString& interno) {
    stores_.getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("delete from interno where interno = ") + SqlTexto(interno));
}

} // namespace korven
