#pragma once

#include <QObject>
#include <QVariant>

namespace korven {

// ValueRules.Main: the value tests of the platform, reachable by name for the components that
// ask for them.
class ValueRulesMain : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    Q_INVOKABLE QString EsNull(const QVariant& valor) const;
    Q_INVOKABLE double EsNumero(const QVariant& valor) const;
};

} // namespace korven
