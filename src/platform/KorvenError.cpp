#include "platform/KorvenError.h"

namespace korven {

KorvenError::KorvenError(int numero, QString descripcion, QString origen)
    : numero_(numero), descripcion_(std::move(descripcion)), origen_(std::move(origen)),
      what_((QString::number(numero_) + QStringLiteral(" / ") + descripcion_).toUtf8()) {}

} // namespace korven
