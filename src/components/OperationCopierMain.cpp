#include "components/OperationCopierMain.h"

#include "components/CopiaInterno.h"

namespace korven {

OperationCopierMain::OperationCopierMain(AppContext& ctx, QObject* parent)
    : QObject(parent), ctx_(ctx) {}

void OperationCopierMain::GetDataAccessManager(QObject*) {}

void OperationCopierMain::Mostrar() {
    nuevo_ = CopiaInterno(ctx_).Mostrar(numero_);
}

} // namespace korven
