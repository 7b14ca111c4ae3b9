#include "platform/Recordset.h"

#include "platform/KorvenError.h"

namespace korven {

Recordset::Recordset(QStringList campos, std::vector<std::vector<QVariant>> filas)
    : campos_(std::move(campos)), filas_(std::move(filas)) {
    for (int i = 0; i < campos_.size(); ++i)
        if (!indices_.contains(campos_[i].toLower()))
            indices_.insert(campos_[i].toLower(), i);
}

int Recordset::indice(const QString& campo) const {
    const auto i = indices_.constFind(campo.toLower());
    if (i == indices_.cend())
        throw KorvenError(
            3265, QStringLiteral("No se encontró el elemento en la colección: %1").arg(campo),
            QStringLiteral("Recordset"));
    return *i;
}

QVariant Recordset::Fields(const QString& campo) const {
    return Fields(indice(campo));
}

QVariant Recordset::Fields(int i) const {
    if (Eof() || pos_ < 0)
        throw KorvenError(3021,
                          QStringLiteral("BOF o EOF es True, o el registro activo se eliminó."),
                          QStringLiteral("Recordset"));
    if (i < 0 || i >= campos_.size())
        throw KorvenError(3265,
                          QStringLiteral("No se encontró el elemento en la colección: %1").arg(i),
                          QStringLiteral("Recordset"));
    return filas_[static_cast<size_t>(pos_)][static_cast<size_t>(i)];
}

bool Recordset::TieneCampo(const QString& campo) const {
    return indices_.contains(campo.toLower());
}

} // namespace korven
