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

// Copies every row of one table of the Operation in one statement, the key taking the new
// number and the columns named in cambios the SQL expressions given there. The number of rows
// copied.
int CopiarTabla(Conexion& cx, const QString& tabla, const QString& origen, const QString& destino,
                const QHash<QString, QString>& cambios = {}) {
    const QStringList nombres = cx.Columnas(tabla);
    if (nombres.isEmpty())
        cx.Abrir(QStringLiteral("select * from ") + tabla + QStringLiteral(" where 1 = 0"));
    QStringList columnas, valores;
    for (const QString& c : nombres) {
        columnas << c;
        if (c == QStringLiteral("interno"))
            valores << QStringLiteral("CAST(? AS text)");
        else
            valores << cambios.value(c, c);
    }
    return cx.Ejecutar(QStringLiteral("insert into ") + tabla + QStringLiteral(" (") +
                           columnas.join(QLatin1Char(',')) + QStringLiteral(") select ") +
                           valores.join(QLatin1Char(',')) + QStringLiteral(" from ") + tabla +
                           QStringLiteral(" where interno = ?"),
                       {destino, origen});
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
        Transaccion tx(stores, {kInternos, kSystablas});
        Conexion& internos = stores.getDataConnectionByEntity(kInternos);
        // The header goes first: its key refuses a number already in use (whatever its case),
        // and another workstation copying to the same number waits here until this one ends.
        const int cabeceras =
            CopiarTabla(internos, QStringLiteral("caratula"), origen, destino,
                        {{QStringLiteral("fechaalta"),
                          stores.getDateFormatbyEntity(kInternos, QDate::currentDate())},
                         {QStringLiteral("factura8"), QStringLiteral("'S'")}});
        if (cabeceras == 0)
            throw KorvenError(KorvenError::ErrorStore,
                              QStringLiteral("No existe el interno ") + origen,
                              QStringLiteral("OperationCopier.Main"));
        CopiarTabla(internos, QStringLiteral("facturas"), origen, destino);
        CopiarTabla(internos, QStringLiteral("subitems"), origen, destino);
        CopiarTabla(internos, QStringLiteral("prorrateo"), origen, destino);
        CopiarTabla(stores.getDataConnectionByEntity(kSystablas), QStringLiteral("coment"), origen,
                    destino);
        tx.Confirmar();
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
        } catch (const KorvenError&) {
            // The copy was undone; a header under that number is why.
            if (!Existe(destino))
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
