#include "assembly/AdminArmado.h"

#include "assembly/ArmadoItems.h"
#include "foundation/LeerConfig.h"
#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/DialogosDeConsola.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QDir>
#include <QFileInfo>

namespace korven {

bool AdminArmado::EsOrden(const QString& orden) {
    return EsNombre(orden, "armar");
}

QString AdminArmado::TextoAyuda() {
    return QStringLiteral(
        "  armar <interno> [--ini KORVEN.ini] [--ajustes carpeta] [--orden 1|2] [--multas]\n"
        "        [--coeficiente] [--respuesta \"<comienzo de la pregunta>=<respuesta>\"]...\n"
        "      Arma los ítems del interno y calcula su liquidación, como el botón ARMADO DE\n"
        "      ITEMS seguido de la vista del ítem 0, en una transacción. Muestra cada mensaje;\n"
        "      una pregunta sin respuesta dada toma \"No\" o su valor por omisión. Sale con 0\n"
        "      cuando el armado terminó bien.\n");
}

int AdminArmado::Ejecutar(const QStringList& argumentos) {
    QStringList posicionales;
    QString config, ini, ajustes = settings_;
    int orden = 0;
    bool multas = false, coeficiente = false;
    QList<QPair<QString, QString>> respuestas;
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
        QString v;
        if (a == QLatin1String("--config")) {
            if (!valor(config))
                return Uso;
        } else if (a == QLatin1String("--ini")) {
            if (!valor(ini))
                return Uso;
        } else if (a == QLatin1String("--ajustes")) {
            if (!valor(ajustes))
                return Uso;
        } else if (a == QLatin1String("--orden")) {
            if (!valor(v))
                return Uso;
            if (v != QLatin1String("1") && v != QLatin1String("2")) {
                err_ << QStringLiteral("El orden de los ítems es 1 (por NCM) o 2 (por orden de "
                                       "carga): %1")
                            .arg(v)
                     << Qt::endl;
                return Uso;
            }
            orden = v.toInt();
        } else if (a == QLatin1String("--multas")) {
            multas = true;
        } else if (a == QLatin1String("--coeficiente")) {
            coeficiente = true;
        } else if (a == QLatin1String("--respuesta")) {
            if (!valor(v))
                return Uso;
            const int igual = v.lastIndexOf(QLatin1Char('='));
            if (igual <= 0) {
                err_ << QStringLiteral("La respuesta se da como \"<comienzo de la "
                                       "pregunta>=<respuesta>\": %1")
                            .arg(v)
                     << Qt::endl;
                return Uso;
            }
            respuestas << qMakePair(v.left(igual), v.mid(igual + 1));
        } else if (a.startsWith(QLatin1String("--"))) {
            err_ << QStringLiteral("Opción desconocida: %1").arg(a) << Qt::endl;
            return Uso;
        } else {
            posicionales << a;
        }
    }
    if (posicionales.size() != 1) {
        err_ << QStringLiteral("Uso: korven-admin armar <interno> [--ini F] [--ajustes C] "
                               "[--orden 1|2] [--multas] [--coeficiente] [--respuesta T=R]...")
             << Qt::endl;
        return Uso;
    }
    const QString interno = posicionales.first();
    try {
        StoreDirectory stores;
        CargarConfiguracionAdmin(stores, config, directorio_);
        DialogosDeConsola dialogos(out_, respuestas);
        SettingsStore settings(ajustes);
        AppContext ctx(stores, dialogos, settings, directorio_);
        const QString rutaIni = ini.isEmpty() ? ctx.rutaIni() : ini;
        if (!ini.isEmpty() && !QFileInfo(ini).isFile())
            throw KorvenError(
                53, QStringLiteral("No existe el archivo %1.").arg(QDir::toNativeSeparators(ini)));
        if (QFileInfo::exists(rutaIni))
            LeerGeneral(rutaIni, ctx.config());
        if (orden)
            ctx.config().ARMARITEM = orden;
        ctx.InternoActual = interno;
        RegistrarComponentesNomenclador(ctx.componentes());

        Conexion& c = stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        const Recordset rs =
            c.Abrir(QStringLiteral("select idsubreg from caratula where interno = ?"), {interno});
        if (rs.Eof()) {
            err_ << QStringLiteral("No existe el interno %1.").arg(interno) << Qt::endl;
            return Fallo;
        }
        ctx.ArmadoResultado = QStringLiteral("SI");
        ctx.CalcMultas = multas;
        ctx.CoefExport =
            EsNull(rs.Fields(QStringLiteral("idsubreg"))).startsWith(QLatin1Char('E')) &&
            coeficiente;
        ctx.CalcularCoeficiente = ctx.CoefExport;
        ProgresoArmado sinVentana;
        ArmadoItems(ctx, interno, sinVentana).Ejecutar();
        if (ctx.ArmadoResultado != QLatin1String("SI")) {
            // As the hub does: the Operation stays to be assembled.
            c.Ejecutar(QStringLiteral("update caratula set factura8 = 'S' where interno = ?"),
                       {interno});
            settings.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno,
                                 QString());
            out_ << QStringLiteral("Armado: %1").arg(ctx.ArmadoResultado) << Qt::endl;
            return Fallo;
        }
        out_ << QStringLiteral("Armado: SI") << Qt::endl;
        return Correcto;
    } catch (const KorvenError& e) {
        err_ << QStringLiteral("Error %1: %2").arg(e.numero()).arg(e.descripcion()) << Qt::endl;
        return Fallo;
    }
}

} // namespace korven
