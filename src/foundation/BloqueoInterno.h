#pragma once

#include "platform/KorvenError.h"

#include <QDate>
#include <QString>
#include <functional>
#include <optional>

namespace korven {

class Dialogos;
class StoreDirectory;

// The workstation lock of an Operation: one row of the table interno says on which workstation
// the Operation is open, and since when. The row's key is enforced by the store, so that the
// lock is taken by its insert alone: of two workstations opening the same Operation at once, the
// one whose insert lands first wins and the other is told who has it.
class BloqueoInterno {
public:
    struct Cerrojo {
        QString maquina;
        QDate fecha;
    };

    // maquina is the name of this workstation (MaquinaLocal() in the program).
    BloqueoInterno(StoreDirectory& stores, Dialogos& dialogos, QString maquina);

    const QString& maquina() const { return maquina_; }

    // Takes the lock for this workstation. A lock of another workstation is told with the
    // information icon and answers false; a lock of this one (left by a crash) is told with the
    // critical icon, replaced, and the answer is true. Throws KorvenError when the store refuses.
    bool Tomar(const QString& interno);
    // Called by Tomar between reading the lock and inserting its own: the moment in which
    // another workstation may take the Operation. Lets a test hold two workstations there.
    void setAntesDeInsertar(std::function<void()> f) { antesDeInsertar_ = std::move(f); }

    // Takes the lock inside the caller's transaction, for an action that must not run while the
    // Operation is open elsewhere (the lock goes with the transaction). A lock of this
    // workstation is replaced silently. The store's refusal when another workstation holds it
    // (the caller rolls back, then reads who); nothing when taken.
    std::optional<KorvenError> TomarEnTransaccion(const QString& interno);
    // Tells the operator which workstation has the Operation open, as the opening does.
    void AvisarAbiertoEnOtraPc(const Cerrojo& c);

    // Deletes the lock of the Operation, whoever holds it.
    void Liberar(const QString& interno);
    // The lock of the Operation, if there is one.
    std::optional<Cerrojo> Leer(const QString& interno);

private:
    void Insertar(const QString& interno);

    StoreDirectory& stores_;
    Dialogos& dialogos_;
    QString maquina_;
    std::function<void()> antesDeInsertar_;
};

} // namespace korven
