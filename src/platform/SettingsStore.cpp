#include "platform/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>
#include <optional>

namespace korven {

namespace {

const QChar kSep(0x1f);

QString Clave(const QString& aplicacion, const QString& seccion) {
    return aplicacion.toUpper() + kSep + seccion.toUpper();
}

QString Codificar(const QString& t) {
    return QString::fromLatin1(QUrl::toPercentEncoding(t));
}
QString Decodificar(const QString& t) {
    return QUrl::fromPercentEncoding(t.toLatin1());
}

qint64 Firma(const QString& archivo) {
    QFileInfo fi(archivo);
    if (!fi.exists())
        return 0;
    return fi.lastModified().toMSecsSinceEpoch() * 1000003 + fi.size();
}

} // namespace

SettingsStore::SettingsStore(QString carpeta) : carpeta_(std::move(carpeta)) {
    if (!carpeta_.isEmpty())
        QDir().mkpath(carpeta_);
}

QString SettingsStore::CarpetaDelUsuario() {
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
}

QString SettingsStore::archivo() const {
    return QDir(carpeta_).filePath(QStringLiteral("settings.txt"));
}

// One line a value: application, section, key and value, percent-encoded, separated by tabs.
void SettingsStore::Cargar() {
    if (carpeta_.isEmpty())
        return; // kept in memory
    const qint64 firma = Firma(archivo());
    if (firma == leido_)
        return;
    datos_.clear();
    nombres_.clear();
    QFile f(archivo());
    if (f.open(QIODevice::ReadOnly)) {
        while (!f.atEnd()) {
            QString linea = QString::fromLatin1(f.readLine());
            while (linea.endsWith(QLatin1Char('\n')) || linea.endsWith(QLatin1Char('\r')))
                linea.chop(1);
            const QStringList c = linea.split(QLatin1Char('\t'));
            if (c.size() != 4)
                continue;
            const QString app = Decodificar(c[0]), sec = Decodificar(c[1]);
            const QString k = Decodificar(c[2]);
            const QString clave = Clave(app, sec);
            nombres_.insert(clave, app + kSep + sec);
            nombres_.insert(clave + kSep + k.toUpper(), k);
            datos_[clave].insert(k.toUpper(), Decodificar(c[3]));
        }
    }
    leido_ = firma;
}

void SettingsStore::Guardar() {
    if (carpeta_.isEmpty())
        return;
    QSaveFile f(archivo());
    if (!f.open(QIODevice::WriteOnly))
        return;
    for (auto s = datos_.cbegin(); s != datos_.cend(); ++s) {
        const QStringList nombre = nombres_.value(s.key()).split(kSep);
        for (auto k = s->cbegin(); k != s->cend(); ++k) {
            const QString clave = nombres_.value(s.key() + kSep + k.key(), k.key());
            const QString linea = Codificar(nombre.value(0)) + QLatin1Char('\t') +
                                  Codificar(nombre.value(1)) + QLatin1Char('\t') +
                                  Codificar(clave) + QLatin1Char('\t') + Codificar(k.value()) +
                                  QLatin1Char('\n');
            f.write(linea.toLatin1());
        }
    }
    f.commit();
    leido_ = Firma(archivo());
}

QString SettingsStore::GetSetting(const QString& aplicacion, const QString& seccion,
                                  const QString& clave, const QString& porDefecto) {
    Cargar();
    const auto s = datos_.constFind(Clave(aplicacion, seccion));
    if (s == datos_.cend())
        return porDefecto;
    const auto k = s->constFind(clave.toUpper());
    return k == s->cend() ? porDefecto : *k;
}

void SettingsStore::SaveSetting(const QString& aplicacion, const QString& seccion,
                                const QString& clave, const QString& valor) {
    std::optional<QLockFile> bloqueo;
    if (!carpeta_.isEmpty()) {
        bloqueo.emplace(archivo() + QStringLiteral(".lock"));
        bloqueo->lock();
    }
    leido_ = -1; // another process may have written since our last read
    Cargar();
    const QString c = Clave(aplicacion, seccion);
    if (!nombres_.contains(c))
        nombres_.insert(c, aplicacion + kSep + seccion);
    if (!nombres_.contains(c + kSep + clave.toUpper()))
        nombres_.insert(c + kSep + clave.toUpper(), clave);
    datos_[c].insert(clave.toUpper(), valor);
    Guardar();
}

void SettingsStore::DeleteSetting(const QString& aplicacion, const QString& seccion,
                                  const QString& clave) {
    std::optional<QLockFile> bloqueo;
    if (!carpeta_.isEmpty()) {
        bloqueo.emplace(archivo() + QStringLiteral(".lock"));
        bloqueo->lock();
    }
    leido_ = -1;
    Cargar();
    const QString c = Clave(aplicacion, seccion);
    if (clave.isEmpty())
        datos_.remove(c);
    else if (datos_.contains(c)) {
        datos_[c].remove(clave.toUpper());
        if (datos_[c].isEmpty())
            datos_.remove(c);
    }
    Guardar();
}

QStringList SettingsStore::Claves(const QString& aplicacion, const QString& seccion) {
    Cargar();
    QStringList r;
    const QString c = Clave(aplicacion, seccion);
    for (const QString& k : datos_.value(c).keys())
        r << nombres_.value(c + kSep + k, k);
    return r;
}

} // namespace korven
