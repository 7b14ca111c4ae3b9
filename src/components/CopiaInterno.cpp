#include "components/CopiaInterno.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDate>
#include <QHash>

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kSystablas = QStringLiteral("SYSTABLAS");

// One table of the copy: the statement that copies its rows, the key taking the new number
// and the columns named in cambios the SQL expressions given there. The columns are read before
// the transaction begins: on SQLite a read inside it would keep the write that tests the number
// from waiting for another workstation's copy to end.
struct TablaCopia {
    Conexion* cx;
    QString sql;
};

TablaCopia PrepararTabla(Conexion& cx, const QString& tabla,
                         const QHash<QString, QString>& cambios = {}) {
    const QStringList columnas = cx.Columnas(tabla);
    if (columnas.isEmpty()) // the store tells why
        cx.Abrir(QStringLiteral("select * from ") + tabla + QStringLiteral(" where 1 = 0"));
    QStringList valores;
    for (const QString& c : columnas)
        valores << (c == QStringLiteral("interno") ? QStringLiteral("CAST(? AS text)")
                                                   : cambios.value(c, c));
    return {&cx, QStringLiteral("insert into ") + tabla + QStringLiteral(" (") +
                     columnas.join(QLatin1Char(',')) + QStringLiteral(") select ") +
                     valores.join(QLatin1Char(',')) + QStringLiteral(" from ") + tabla +
                     QStringLiteral(" where interno = ?")};
}

} // namespace

bool CopiaInterno::Existe(const QString& interno) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select interno from caratula where upper(interno) = upper(?)"), {interno});
    return IsRecord(rs);
}

void CopiaInterno::Copiar(const QString& origen, const QString& destino) {
    StoreDirectory& stores = ctx_.stores();
    {
        Conexion& internos = stores.getDataConnectionByEntity(kInternos);
        Conexion& systablas = stores.getDataConnectionByEntity(kSystablas);
        const TablaCopia tablas[] = {
            PrepararTabla(internos, QStringLiteral("caratula"),
                          {{QStringLiteral("fechaalta"),
                            stores.getDateFormatbyEntity(kInternos, QDate::currentDate())},
                           {QStringLiteral("factura8"), QStringLiteral("'S'")}}),
            PrepararTabla(internos, QStringLiteral("facturas")),
            PrepararTabla(internos, QStringLiteral("subitems")),
            PrepararTabla(internos, QStringLiteral("prorrateo")),
            PrepararTabla(systablas, QStringLiteral("coment"))};
        EnTransaccion(stores, {kInternos, kSystablas}, [&](Transaccion&) {
            // The header goes first: its key refuses a number already in use (whatever its
            // case), and another workstation copying to the same number waits here until this
            // one ends.
            for (const TablaCopia& t : tablas) {
                const int filas = t.cx->Ejecutar(t.sql, {destino, origen});
                if (&t == &tablas[0] && filas == 0)
                    throw KorvenError(KorvenError::ErrorStore,
                                      QStringLiteral("No existe el interno ") + origen,
                                      QStringLiteral("OperationCopier.Main"));
            }
        });
    }
    // The options of the Operation, but not the mark of a run in progress.
    SettingsStore& s = ctx_.settings();
    const QString app = QStringLiteral("KORVEN");
    for (const QString& clave : s.Claves(app, origen)) {
        if (clave.compare(QStringLiteral("PROCESOS"), Qt::CaseInsensitive) == 0)
            continue;
        s.SaveSetting(app, destino, clave, s.GetSetting(app, origen, clave));
    }
}

QString CopiaInterno::Mostrar(const QString& origen) {
    try {
        const std::optional<QString> respuesta =
            ctx_.dialogos().PedirTexto(QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"),
                                       QStringLiteral("Copiar interno ") + origen, 15, QString());
        if (!respuesta || respuesta->trimmed().isEmpty())
            return {};
        const QString destino = *respuesta;
        try {
            Copiar(origen, destino);
        } catch (const KorvenError& e) {
            // The copy was undone; a header under that number is why.
            if (e.conflicto() || !Existe(destino))
                throw;
            ctx_.dialogos().Mensaje(QStringLiteral("El Código de interno ya existe."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return {};
        }
        return destino;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" - seccion [OperationCopier.Main.Mostrar]::"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    return {};
}

} // namespace korven
