#pragma once

#include <QHash>
#include <QString>

namespace korven {

// KORVEN.ini with the private-profile semantics: sections and keys compared without regard to
// case, values read at most 750 characters, keys written upper-case. Writing edits the one line
// (or adds the section/key) and leaves the rest of the file as it was. Every read goes to the
// file.
class IniFile {
public:
    static constexpr int LargoMaximo = 750;

    // The value of the key, trimmed of the blanks around it, at most 750 characters; empty when
    // the file, section or key is missing. The key is lower-cased before the look-up.
    static QString Leer(const QString& clave, const QString& seccion, const QString& archivo);
    // Writes the value under the upper-cased key, creating file and section when missing.
    // Returns false when the file cannot be written.
    static bool Escribir(const QString& seccion, const QString& clave, const QString& valor,
                         const QString& archivo);
    // Every section with its keys (upper-case names), for readers of whole files.
    static QHash<QString, QHash<QString, QString>> LeerTodo(const QString& archivo);
};

} // namespace korven
