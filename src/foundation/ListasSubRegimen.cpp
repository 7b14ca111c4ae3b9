#include "foundation/ListasSubRegimen.h"

#include <QStringList>

namespace korven {

bool EsSubRegimenTemporal(const QString& idsubreg) {
    static const QStringList lista = {
        QStringLiteral("IT01"), QStringLiteral("IT03"), QStringLiteral("IT04"),
        QStringLiteral("IT05"), QStringLiteral("IT06"), QStringLiteral("IT07"),
        QStringLiteral("IT11"), QStringLiteral("IT13"), QStringLiteral("IT14"),
        QStringLiteral("IT15"), QStringLiteral("IT16"), QStringLiteral("IT17"),
        QStringLiteral("ET01"), QStringLiteral("ET02"), QStringLiteral("ETA1"),
        QStringLiteral("ETE1"), QStringLiteral("ETE2")};
    return lista.contains(idsubreg);
}

bool EsSubRegimenImpresion(const QString& idsubreg) {
    static const QStringList lista = {
        QStringLiteral("EC02"), QStringLiteral("EC03"), QStringLiteral("EC04"),
        QStringLiteral("EC05"), QStringLiteral("EC06"), QStringLiteral("EC16"),
        QStringLiteral("EG02"), QStringLiteral("EG03"), QStringLiteral("IC81"),
        QStringLiteral("IC82"), QStringLiteral("IC83"), QStringLiteral("DIR6"),
        QStringLiteral("IC06"), QStringLiteral("IC26"), QStringLiteral("IC36"),
        QStringLiteral("IG06"), QStringLiteral("IT06"), QStringLiteral("RnaE06"),
        QStringLiteral("TG06"), QStringLiteral("TG16"), QStringLiteral("TR06"),
        QStringLiteral("MARE"), QStringLiteral("IDT4")};
    return lista.contains(idsubreg);
}

} // namespace korven
