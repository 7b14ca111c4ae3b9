#include "platform/ui/IdiomaEscritorio.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace korven {

bool InstalarIdiomaEscritorio(QCoreApplication* app) {
    if (!app)
        return false;
    const QString nombre = QStringLiteral("IdiomaEscritorio");
    if (app->findChild<QTranslator*>(nombre, Qt::FindDirectChildrenOnly))
        return true;
    auto* traductor = new QTranslator(app);
    traductor->setObjectName(nombre);
    if (!traductor->load(QLocale(QLocale::Spanish, QLocale::Argentina), QStringLiteral("qtbase"),
                         QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete traductor;
        return false;
    }
    return QCoreApplication::installTranslator(traductor);
}

} // namespace korven
