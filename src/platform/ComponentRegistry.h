#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>

namespace korven {

class AppContext;

// In-house components, created by name at the moment of use ("ClientBook.Listing",
// "OperationCopier.Main", ...). A component is a QObject: callers set its members as properties
// (setProperty) and call its operations as invokable methods, the way the system reaches them
// late-bound. An installation registers the components it has; asking for one that is not
// registered raises KorvenError ComponenteNoInstalado with "El componente <name> no está
// instalado.", which the caller reports with its own section text.
class ComponentRegistry {
public:
    using Fabrica = std::function<std::unique_ptr<QObject>(AppContext&)>;

    void Registrar(const QString& nombre, Fabrica fabrica);
    bool Instalado(const QString& nombre) const;
    // Throws KorvenError when the component is not installed.
    std::unique_ptr<QObject> Crear(const QString& nombre, AppContext& ctx) const;
    QStringList Nombres() const;

    static QString MensajeNoInstalado(const QString& nombre);

private:
    QHash<QString, Fabrica> fabricas_; // upper-case name -> factory
};

} // namespace korven
