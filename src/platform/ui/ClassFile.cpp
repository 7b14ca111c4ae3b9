#include "platform/ui/ClassFile.h"

#include <QFileDialog>

namespace korven {

QString ClassFile::Carpeta(const QString& titulo, const QString& inicial, QWidget* padre) {
    return QFileDialog::getExistingDirectory(padre, titulo, inicial, QFileDialog::ShowDirsOnly);
}

} // namespace korven
