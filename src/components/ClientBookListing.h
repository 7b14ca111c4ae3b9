#pragma once

#include <QObject>
#include <QString>

namespace korven {

class AppContext;

// ClientBook.Listing: the client book. MostrarListado shows the list of clients, where they are
// added, changed and deleted; with Seleccionar on, the operator chooses one and Cliente_Cuit and
// Cliente_nombre answer it (empty when none was chosen).
class ClientBookListing : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool Seleccionar READ Seleccionar WRITE setSeleccionar)
    Q_PROPERTY(bool OrigenKorven READ OrigenKorven WRITE setOrigenKorven)
    Q_PROPERTY(QString Cliente_Cuit READ Cliente_Cuit)
    Q_PROPERTY(QString Cliente_nombre READ Cliente_nombre)
public:
    explicit ClientBookListing(AppContext& ctx, QObject* parent = nullptr);

    bool Seleccionar() const { return seleccionar_; }
    void setSeleccionar(bool s) { seleccionar_ = s; }
    // Whether the caller is this program; the book then works on the program's own stores, as
    // it does in every case here.
    bool OrigenKorven() const { return origenKorven_; }
    void setOrigenKorven(bool o) { origenKorven_ = o; }
    QString Cliente_Cuit() const { return cuit_; }
    QString Cliente_nombre() const { return nombre_; }

    // The component works on the stores of the program that made it; a store directory handed
    // over here is that one.
    Q_INVOKABLE void SetDataConnection(QObject* stores);
    // Shows the list modally over the form given.
    Q_INVOKABLE void MostrarListado(QObject* formulario = nullptr);

private:
    AppContext& ctx_;
    bool seleccionar_ = false;
    bool origenKorven_ = true;
    QString cuit_, nombre_;
};

} // namespace korven
