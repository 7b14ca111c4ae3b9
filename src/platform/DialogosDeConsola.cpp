#include "platform/DialogosDeConsola.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"

#include <QDir>
#include <QFileInfo>

namespace korven {

void DialogosDeConsola::Mensaje(const QString& texto, const QString& titulo, Icono) {
    out_ << QStringLiteral("[%1] %2").arg(titulo, texto) << Qt::endl;
}

bool DialogosDeConsola::Pregunta(const QString& texto, const QString& titulo, Icono) {
    const QString r = Respuesta(texto).value_or(QString()).trimmed().toUpper();
    const bool si = r == QLatin1String("S") || r == QLatin1String("SI") ||
                    r == QStringLiteral("SÍ") || r == QLatin1String("Y") ||
                    r == QLatin1String("YES");
    out_ << QStringLiteral("[%1] %2 -> %3")
                .arg(titulo, texto, si ? QStringLiteral("Sí") : QStringLiteral("No"))
         << Qt::endl;
    return si;
}

std::optional<QString> DialogosDeConsola::PedirTexto(const QString& pregunta, const QString& titulo,
                                                     int, const QString& porDefecto) {
    const QString r = Respuesta(pregunta).value_or(porDefecto);
    out_ << QStringLiteral("[%1] %2 -> %3").arg(titulo, pregunta, r) << Qt::endl;
    return r;
}

std::optional<QString> DialogosDeConsola::Respuesta(const QString& texto) const {
    for (const auto& [comienzo, respuesta] : respuestas_)
        if (texto.startsWith(comienzo))
            return respuesta;
    return std::nullopt;
}

void CargarConfiguracionAdmin(StoreDirectory& stores, const QString& config,
                              const QString& directorioPrograma) {
    if (!config.isEmpty() && !QFileInfo(config).isFile())
        throw KorvenError(53, QStringLiteral("No existe el archivo de configuración: %1")
                                  .arg(QDir::toNativeSeparators(config)));
    stores.setParametersPath(
        config.isEmpty() ? QDir(directorioPrograma).filePath(QStringLiteral("DataAccessConfig.ini"))
                         : QFileInfo(config).absoluteFilePath());
    stores.LoadParameters();
}

} // namespace korven
