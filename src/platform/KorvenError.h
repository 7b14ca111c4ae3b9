#pragma once

#include <QString>
#include <exception>

namespace korven {

// The one error type of the system: number, description and source, as every handler reports
// them ("<number> / <description>" and a section text naming the form and routine).
class KorvenError : public std::exception {
public:
    KorvenError(int numero, QString descripcion, QString origen = {});

    int numero() const { return numero_; }
    const QString& descripcion() const { return descripcion_; }
    const QString& origen() const { return origen_; }
    const char* what() const noexcept override { return what_.constData(); }

    // The store refused the statement because another workstation wrote at the same time (busy
    // store, serialization failure, deadlock): the whole action may be done again.
    bool conflicto() const { return conflicto_; }
    KorvenError& MarcarConflicto() {
        conflicto_ = true;
        return *this;
    }

    // Error numbers in use.
    static constexpr int ErrorStore = 3146;           // a statement the store refused
    static constexpr int ComponenteNoInstalado = 429; // a component that cannot be created
    static constexpr int ErrorLeerConfig = 11111;     // re-raised by the configuration reader
    static constexpr int TransaccionDividida = 3033;  // one action over two connections
    static constexpr int FormatoAnterior = 3049;      // stores of the former one-file-per-store

private:
    int numero_;
    QString descripcion_;
    QString origen_;
    QByteArray what_;
    bool conflicto_ = false;
};

} // namespace korven
