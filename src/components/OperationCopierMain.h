#pragma once

#include <QObject>
#include <QString>

namespace korven {

class AppContext;

// OperationCopier.Main: copies the Operation Numero_Interno under a number the operator gives
// (Mostrar). NuevoNumero answers the number of the last copy made, empty when none.
class OperationCopierMain : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString Numero_Interno READ Numero_Interno WRITE setNumero_Interno)
    Q_PROPERTY(QString NuevoNumero READ NuevoNumero)
public:
    explicit OperationCopierMain(AppContext& ctx, QObject* parent = nullptr);

    QString Numero_Interno() const { return numero_; }
    void setNumero_Interno(const QString& n) { numero_ = n; }
    QString NuevoNumero() const { return nuevo_; }

    // The component works on the stores of the program that made it; a store directory handed
    // over here is that one.
    Q_INVOKABLE void GetDataAccessManager(QObject* stores);
    Q_INVOKABLE void Mostrar();

private:
    AppContext& ctx_;
    QString numero_;
    QString nuevo_;
};

} // namespace korven
