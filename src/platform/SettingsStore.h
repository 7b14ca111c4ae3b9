#pragma once

#include <QHash>
#include <QString>

namespace korven {

// The per-user settings store: a tree application / section / key of text values. One file per
// user, in a folder given at construction (the user's configuration folder in the program,
// a temporary folder in tests). Every write goes to the file at once; reads see the writes of
// other processes. A store made with an empty folder keeps its values in memory only (for a trial
// run that must leave the user's settings as they are).
class SettingsStore {
public:
    explicit SettingsStore(QString carpeta);

    QString GetSetting(const QString& aplicacion, const QString& seccion, const QString& clave,
                       const QString& porDefecto = {});
    void SaveSetting(const QString& aplicacion, const QString& seccion, const QString& clave,
                     const QString& valor);
    // Deletes one key, or the whole section when the key is empty.
    void DeleteSetting(const QString& aplicacion, const QString& seccion,
                       const QString& clave = {});

    // All keys of a section, in no particular order.
    QStringList Claves(const QString& aplicacion, const QString& seccion);

    const QString& carpeta() const { return carpeta_; }
    // The user's own configuration folder.
    static QString CarpetaDelUsuario();

private:
    void Cargar();
    void Guardar();
    QString archivo() const;

    QString carpeta_;
    // application\x1fsection -> key -> value; names compared case-insensitively (upper-case).
    QHash<QString, QHash<QString, QString>> datos_;
    QHash<QString, QString> nombres_; // upper-case key of a name -> name as first written
    qint64 leido_ = -1;
};

} // namespace korven
