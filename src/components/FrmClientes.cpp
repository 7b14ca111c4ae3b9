#include "components/FrmClientes.h"

#include "components/FrmCliente.h"
#include "components/LibroClientes.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmClientes.h"

#include <QKeyEvent>

namespace korven {

FrmClientes::FrmClientes(AppContext& ctx, bool seleccionar, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmClientes>()), ctx_(ctx),
      seleccionar_(seleccionar) {
    ui->setupUi(this);
    if (seleccionar_)
        setWindowTitle(QStringLiteral("Seleccionar cliente"));
    for (QLineEdit* t : {ui->TxtBuscarCuit, ui->TxtBuscarNombre})
        ClCntrl::SoloTexto(t);
    connect(ui->TxtBuscarCuit, &QLineEdit::textChanged, this, [this] { Cargar(); });
    connect(ui->TxtBuscarNombre, &QLineEdit::textChanged, this, [this] { Cargar(); });
    connect(ui->LstClientes, &QTreeWidget::itemDoubleClicked, this, [this] {
        if (seleccionar_)
            Elegir();
        else
            Modificar();
    });
    for (QWidget* w : findChildren<QWidget*>())
        w->installEventFilter(this);
    Cargar();
    ui->TxtBuscarNombre->setFocus();
}

FrmClientes::~FrmClientes() = default;

void FrmClientes::Error(const QString& seccion, int numero, const QString& descripcion) {
    ctx_.dialogos().Mensaje(QString::number(numero) + QStringLiteral(" - ") + descripcion +
                                QStringLiteral(" - ") + seccion,
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

void FrmClientes::Cargar() {
    const QString anterior = CuitSeleccionado();
    ui->LstClientes->clear();
    try {
        const QList<Cliente> clientes =
            LibroClientes(ctx_.stores())
                .Listar(ui->TxtBuscarCuit->text().trimmed(), ui->TxtBuscarNombre->text().trimmed());
        for (const Cliente& c : clientes)
            new QTreeWidgetItem(ui->LstClientes, {c.cuit, c.nombre, c.domicilio, c.email});
        AjustarColumnas(ui->LstClientes);
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Sección Clientes"), e.numero(), e.descripcion());
    }
    Seleccionar(anterior);
}

void FrmClientes::Seleccionar(const QString& cuit) {
    QTreeWidget* l = ui->LstClientes;
    for (int i = 0; i < l->topLevelItemCount(); ++i)
        if (l->topLevelItem(i)->text(0) == cuit) {
            l->setCurrentItem(l->topLevelItem(i));
            return;
        }
    if (l->topLevelItemCount() > 0)
        l->setCurrentItem(l->topLevelItem(0));
}

QString FrmClientes::CuitSeleccionado() const {
    const QTreeWidgetItem* fila = ui->LstClientes->currentItem();
    return fila ? fila->text(0) : QString();
}

void FrmClientes::Agregar() {
    FrmCliente editor(ctx_, std::nullopt, this);
    if (editor.exec() != QDialog::Accepted)
        return;
    Cargar();
    Seleccionar(editor.cliente().cuit);
}

void FrmClientes::Modificar() {
    const QString cuit = CuitSeleccionado();
    if (cuit.isEmpty())
        return;
    try {
        const std::optional<Cliente> c = LibroClientes(ctx_.stores()).Leer(cuit);
        if (!c)
            return;
        FrmCliente editor(ctx_, c, this);
        if (editor.exec() == QDialog::Accepted)
            Cargar();
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Sección Clientes"), e.numero(), e.descripcion());
    }
}

void FrmClientes::Eliminar() {
    const QString cuit = CuitSeleccionado();
    if (cuit.isEmpty())
        return;
    if (!ctx_.dialogos().Pregunta(QStringLiteral("Confirma eliminar el cliente seleccionado"),
                                  QStringLiteral("KORVEN"), Dialogos::Icono::Pregunta))
        return;
    try {
        LibroClientes(ctx_.stores()).Eliminar(cuit);
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Sección Eliminar Cliente"), e.numero(), e.descripcion());
    }
    Cargar();
}

void FrmClientes::Elegir() {
    const QTreeWidgetItem* fila = ui->LstClientes->currentItem();
    if (!fila)
        return;
    cuit_ = fila->text(0);
    nombre_ = fila->text(1);
    accept();
}

bool FrmClientes::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    const bool enter = tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
    switch (tecla) {
    case Qt::Key_Escape:
        cuit_.clear();
        nombre_.clear();
        reject();
        return true;
    case Qt::Key_Insert:
        Agregar();
        return true;
    case Qt::Key_F6:
        Modificar();
        return true;
    default:
        break;
    }
    if (objeto == ui->LstClientes) {
        if (enter) {
            if (seleccionar_)
                Elegir();
            else
                Modificar();
            return true;
        }
        if (tecla == Qt::Key_Delete) {
            Eliminar();
            return true;
        }
    } else if (enter && (objeto == ui->TxtBuscarCuit || objeto == ui->TxtBuscarNombre)) {
        ui->LstClientes->setFocus();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
