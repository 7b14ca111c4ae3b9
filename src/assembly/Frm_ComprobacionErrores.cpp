#include "assembly/Frm_ComprobacionErrores.h"

#include "ui_Frm_ComprobacionErrores.h"

namespace korven {

Frm_ComprobacionErrores::Frm_ComprobacionErrores(AppContext& /*ctx*/, const QVariantMap& args,
                                                 QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::Frm_ComprobacionErrores>()) {
    ui_->setupUi(this);
    QStringList lineas = args.value(QStringLiteral("texto")).toString().split(QLatin1Char('\n'));
    if (!lineas.isEmpty() && lineas.constLast().isEmpty())
        lineas.removeLast();
    ui_->LstReporte->addItems(lineas);
    ui_->LstReporte->setFocus();
}

Frm_ComprobacionErrores::~Frm_ComprobacionErrores() = default;

} // namespace korven
