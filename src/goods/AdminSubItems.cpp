#include "goods/AdminSubItems.h"

#include "foundation/LeerConfig.h"
#include "goods/CargaSubItems.h"
#include "goods/ImportadorSubItems.h"
#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/KorvenError.h"
#include "platform/ScriptedDialogs.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"

#include <QDir>
#include <QFileInfo>

namespace korven {

bool AdminSubItems::EsOrden(const QString& orden) {
    return EsNombre(orden, "importar-subitems");
}

QString AdminSubItems::TextoAyuda() {
    return QStringLiteral(
        "  importar-subitems <interno> <archivo.csv> [--config F]\n"
        "      Importa las líneas de mercadería de un CSV (UTF-8 o Latin-1, separado por \",\"\n"
        "      o \";\") en el interno, por la grabación de la pantalla de subitems: todas o\n"
        "      ninguna. Informa cada fila rechazada con el mensaje de la grabación.\n");
}

int AdminSubItems::Ejecutar(const QStringList& argumentos) {
    QStringList posicionales;
    QString config;
    for (int i = 0; i < argumentos.size(); ++i) {
        const QString& a = argumentos.at(i);
        if (a == QLatin1String("--config")) {
            if (i + 1 >= argumentos.size()) {
                err_ << QStringLiteral("Falta el valor de la opción %1.").arg(a) << Qt::endl;
                return Uso;
            }
            config = argumentos.at(++i);
        } else if (a.startsWith(QLatin1String("--"))) {
            err_ << QStringLiteral("Opción desconocida: %1").arg(a) << Qt::endl;
            return Uso;
        } else {
            posicionales << a;
        }
    }
    if (posicionales.size() != 2) {
        err_ << QStringLiteral("Uso: korven-admin importar-subitems <interno> <archivo.csv> "
                               "[--config F]")
             << Qt::endl;
        return Uso;
    }
    try {
        return Importar(posicionales.at(0), posicionales.at(1), config);
    } catch (const KorvenError& e) {
        err_ << QStringLiteral("Error %1: %2").arg(e.numero()).arg(e.descripcion()) << Qt::endl;
        return Fallo;
    }
}

int AdminSubItems::Importar(const QString& interno, const QString& archivo, const QString& config) {
    StoreDirectory stores;
    QString ruta = config;
    if (!ruta.isEmpty() && !QFileInfo(ruta).isFile())
        throw KorvenError(53, QStringLiteral("No existe el archivo de configuración: %1")
                                  .arg(QDir::toNativeSeparators(ruta)));
    stores.setParametersPath(
        ruta.isEmpty() ? QDir(directorio_).filePath(QStringLiteral("DataAccessConfig.ini"))
                       : QFileInfo(ruta).absoluteFilePath());
    stores.LoadParameters();
    ScriptedDialogs dialogos;
    SettingsStore settings(settings_);
    AppContext ctx(stores, dialogos, settings, directorio_);
    if (QFileInfo::exists(ctx.rutaIni()))
        LeerGeneral(ctx.rutaIni(), ctx.config());
    ctx.InternoActual = interno;
    // The suffixes are checked by the nomenclator's component, as in the program.
    RegistrarComponentesNomenclador(ctx.componentes());

    const Recordset rs =
        stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"))
            .Abrir(QStringLiteral("select interno from caratula where interno = ?"), {interno});
    if (rs.RecordCount() == 0) {
        err_ << QStringLiteral("No existe el interno %1.").arg(interno) << Qt::endl;
        return Fallo;
    }
    const ImportadorSubItems::Tabla tabla = ImportadorSubItems::LeerArchivo(archivo);
    if (tabla.filas.empty()) {
        err_ << QStringLiteral("El archivo %1 no tiene filas para importar.").arg(archivo)
             << Qt::endl;
        return Fallo;
    }
    const std::vector<ImportadorSubItems::Campo> mapeo = ImportadorSubItems::Mapeo(tabla);
    QStringList ignoradas;
    for (size_t i = 0; i < mapeo.size(); ++i)
        if (mapeo[i] == ImportadorSubItems::Campo::Ninguno)
            ignoradas << (static_cast<int>(i) < tabla.encabezado.size() &&
                                  !tabla.encabezado.at(static_cast<int>(i)).isEmpty()
                              ? tabla.encabezado.at(static_cast<int>(i))
                              : QStringLiteral("columna %1").arg(i + 1));
    if (!ignoradas.isEmpty())
        out_ << QStringLiteral("Columnas que no se importan: %1.")
                    .arg(ignoradas.join(QStringLiteral(", ")))
             << Qt::endl;

    ImportadorSubItems imp(ctx);
    const std::vector<ImportadorSubItems::Preparada> lineas = imp.Preparar(tabla, mapeo);
    std::vector<LineaSubItem> datos;
    for (const auto& l : lineas)
        datos.push_back(l.datos);
    const CargaSubItems::Resultado r = CargaSubItems(ctx, interno).Importar(datos);
    int rechazadas = 0;
    for (size_t i = 0; i < r.veredictos.size(); ++i) {
        if (r.veredictos[i].aceptada)
            continue;
        ++rechazadas;
        QString motivo = r.veredictos[i].mensaje;
        if (!lineas[i].aviso.isEmpty())
            motivo = lineas[i].aviso + QStringLiteral(" / ") + motivo;
        out_ << QStringLiteral("Línea %1: %2").arg(lineas[i].linea).arg(motivo) << Qt::endl;
    }
    if (!r.grabado) {
        out_ << QStringLiteral("%1 de %2 filas rechazadas: no se importó ninguna.")
                    .arg(rechazadas)
                    .arg(lineas.size())
             << Qt::endl;
        return Fallo;
    }
    out_ << QStringLiteral("Se importaron %1 filas en el interno %2.").arg(r.grabadas).arg(interno)
         << Qt::endl;
    return Correcto;
}

} // namespace korven
