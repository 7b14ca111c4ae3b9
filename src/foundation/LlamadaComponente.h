#pragma once

#include <QVariant>
#include <QVariantList>

class QObject;

namespace korven {

// Late-bound use of an in-house component: its members are properties, its operations
// invokable methods. A member the component does not have is error 438, an argument of the
// wrong type error 13, as for any object reached by name.

void AsignarMiembro(QObject& componente, const char* miembro, const QVariant& valor);
QVariant LlamarMiembro(QObject& componente, const char* miembro, const QVariantList& args = {});

} // namespace korven
