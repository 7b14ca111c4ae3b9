#include "liquidation/AdminImpresion.h"

#include "liquidation/HojasListado.h"
#include "liquidation/ImpresionLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/DialogosDeConsola.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDir>

namespace korven {

bool AdminImpresion::EsOrden(const QString& orden) {
    return EsNombre(orden, "imprimir");
}

QString AdminImpresion::TextoAyuda() {
    return QStringLiteral(
        "  imprimir <interno> --pdf <archivo.pdf> [--desde N] [--hasta M] [--subitems]\n"
        "      Guarda en PDF la liquidación impresa de los ítems N a M del interno (todos, si\n"
        "      no se indican), como la pantalla Imprimir Listados; con --subitems, también\n"
        "      sus subítems.\n");
}

int AdminImpresion::Ejecutar(const QStringList& argumentos) {
    QStringList posicionales;
    QString config, pdf, desdeTexto, hastaTexto;
    bool subitems = false;
    for (int i = 0; i < argumentos.size(); ++i) {
        const QString& a = argumentos.at(i);
        auto valor = [&](QString& destino) {
            if (i + 1 >= argumentos.size()) {
                err_ << QStringLiteral("Falta el valor de la opción %1.").arg(a) << Qt::endl;
                return false;
            }
            destino = argumentos.at(++i);
            return true;
        };
        bool bien = true;
        if (a == QLatin1String("--config"))
            bien = valor(config);
        else if (a == QLatin1String("--pdf"))
            bien = valor(pdf);
        else if (a == QLatin1String("--desde"))
            bien = valor(desdeTexto);
        else if (a == QLatin1String("--hasta"))
            bien = valor(hastaTexto);
        else if (a == QLatin1String("--subitems"))
            subitems = true;
        else if (a.startsWith(QLatin1String("--"))) {
            err_ << QStringLiteral("Opción desconocida: %1").arg(a) << Qt::endl;
            return Uso;
        } else
            posicionales << a;
        if (!bien)
            return Uso;
    }
    bool desdeBien = true, hastaBien = true;
    const int desdeDado = desdeTexto.isEmpty() ? -1 : desdeTexto.toInt(&desdeBien);
    const int hastaDado = hastaTexto.isEmpty() ? -1 : hastaTexto.toInt(&hastaBien);
    if (posicionales.size() != 1 || pdf.isEmpty() || !desdeBien || !hastaBien || desdeDado < -1 ||
        hastaDado < -1) {
        err_ << QStringLiteral("Uso: korven-admin imprimir <interno> --pdf <archivo.pdf> "
                               "[--desde N] [--hasta M] [--subitems] [--config F]")
             << Qt::endl;
        return Uso;
    }
    const QString interno = posicionales.first();
    try {
        StoreDirectory stores;
        CargarConfiguracionAdmin(stores, config, directorio_);
        DialogosDeConsola dialogos(out_);
        SettingsStore settings(settings_);
        AppContext ctx(stores, dialogos, settings, directorio_);
        ctx.InternoActual = interno;
        Conexion& c = stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        const Recordset rs = c.Abrir(
            QStringLiteral("select min(id), max(id) from item where interno = ?"), {interno});
        if (rs.Eof() || rs.Fields(0).isNull()) {
            err_ << QStringLiteral("El interno %1 no tiene ítems.").arg(interno) << Qt::endl;
            return Fallo;
        }
        const int desde = desdeDado >= 0 ? desdeDado : static_cast<int>(EsNumero(rs.Fields(0)));
        const int hasta = hastaDado >= 0 ? hastaDado : static_cast<int>(EsNumero(rs.Fields(1)));
        ImpresionLiquidacion impresion(ctx);
        if (!impresion.pr_ImprimirLiq(desde, hasta, interno, subitems))
            return Fallo;
        const QString error = HojasListado(impresion.Listados(), interno).GuardarPdf(pdf);
        if (!error.isEmpty()) {
            err_ << error << Qt::endl;
            return Fallo;
        }
        out_ << QStringLiteral("Liquidación del interno %1 guardada en %2.")
                    .arg(interno, QDir::toNativeSeparators(pdf))
             << Qt::endl;
        return Correcto;
    } catch (const KorvenError& e) {
        err_ << QStringLiteral("Error %1: %2").arg(e.numero()).arg(e.descripcion()) << Qt::endl;
        return Fallo;
    }
}

} // namespace korven
