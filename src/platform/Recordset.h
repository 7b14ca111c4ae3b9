#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

namespace korven {

// The rows a statement returned, held in memory, read forward with MoveNext. Field names are
// compared without regard to case (PostgreSQL folds unquoted names to lower case).
class Recordset {
public:
    Recordset() = default;
    Recordset(QStringList campos, std::vector<std::vector<QVariant>> filas);

    bool Eof() const { return pos_ >= static_cast<int>(filas_.size()); }
    bool Bof() const { return filas_.empty() || pos_ < 0; }
    void MoveNext() { ++pos_; }
    void MoveFirst() { pos_ = 0; }
    int RecordCount() const { return static_cast<int>(filas_.size()); }
    int Posicion() const { return pos_; }

    // The value of the field in the current row; throws KorvenError for an unknown field or when
    // there is no current row.
    QVariant Fields(const QString& campo) const;
    QVariant Fields(int indice) const;
    bool TieneCampo(const QString& campo) const;
    const QStringList& Campos() const { return campos_; }
    // Every value of one row (for listings and tests).
    const std::vector<QVariant>& Fila(int i) const { return filas_.at(static_cast<size_t>(i)); }

private:
    int indice(const QString& campo) const;

    QStringList campos_;
    QHash<QString, int> indices_; // lower-case name -> column
    std::vector<std::vector<QVariant>> filas_;
    int pos_ = 0;
};

} // namespace korven
