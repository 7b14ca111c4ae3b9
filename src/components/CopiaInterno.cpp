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

// Copies every row of one table of the Operation, with the columns named in cambios taking the
// values given there (the key always takes the new number).
void CopiarTabla(Conexion& cx, const QString& tabla, const QString& origen, const QString& destino,
                 QHash<QString, QVariant> cambios = {}) {
    cambios.insert(QStringLiteral("interno"), destino);
    Recordset rs = cx.Abrir(
        QStringLiteral("select * from ") + tabla + QStringLiteral(" where interno = ?"), {origen});
    const QStringList campos = rs.Campos();
    QStringList marcas;
    for (int i = 0; i < campos.size(); ++i)
        marcas << QStringLiteral("?");
    const QString sql = QStringLiteral("insert into ") + tabla + QStringLiteral(" (") +
                        campos.join(QLatin1Char(',')) + QStringLiteral(") values (") +
                        marcas.join(QLatin1Char(',')) + QLatin1Char(')');
    for (; !rs.Eof(); rs.MoveNext()) {
        QVariantList valores;
        for (const QString& c : campos) {
            const auto cambio = cambios.constFind(c.toLower());
            valores << (cambio != cambios.cend() ? *cambio : rs.Fields(c));
        }
        cx.Ejecutar(sql, valores);
    }
}

} // namespace

bool CopiaInterno::Existe(const QString& interno) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select interno from caratula where interno = ?"), {interno});
    return IsRecord(rs);
}

void CopiaInterno::Copiar(const QString& origen, const QString& destino) {
    StoreDirectory& stores = ctx_.stores();
    {
        Transaccion tx(stores, {kInternos, kSystablas});
        Conexion& internos = stores.getDataConnectionByEntity(kInternos);
        if (!Existe(origen))
            throw KorvenError(KorvenError::ErrorStore,
                              QStringLiteral("No existe el interno ") + origen,
                              QStringLiteral("OperationCopier.Main"));
        CopiarTabla(internos, QStringLiteral("caratula"), origen, destino,
                    {{QStringLiteral("fechaalta"), QDate::currentDate()},
                     {QStringLiteral("factura8"), QStringLiteral("S")}});
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
        if (Existe(destino)) {
            ctx_.dialogos().Mensaje(QStringLiteral("El Código de interno ya existe."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return {};
        }
        Copiar(origen, destino);
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
