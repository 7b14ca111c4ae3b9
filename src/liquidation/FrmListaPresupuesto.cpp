#include "liquidation/FrmListaPresupuesto.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace korven {

FrmListaPresupuesto::FrmListaPresupuesto(AppContext& ctx, Definicion d, QWidget* padre)
    : QDialog(padre), ctx_(ctx), d_(std::move(d)), lista_(new QListWidget(this)),
      entrada_(new QLineEdit(this)),
      ayuda_(new QLabel(QStringLiteral("ENTER para Guardar ESCAPE para Cancelar"), this)) {
    setObjectName(d_.formulario);
    setWindowTitle(d_.titulo);
    lista_->setObjectName(d_.lista);
    entrada_->setObjectName(QStringLiteral("TxtNuevo"));
    ayuda_->setObjectName(QStringLiteral("LbAyuda"));
    auto* caja = new QVBoxLayout(this);
    caja->addWidget(lista_);
    caja->addWidget(entrada_);
    caja->addWidget(ayuda_);
    resize(420, 460);
    entrada_->hide();
    ayuda_->hide();
    lista_->installEventFilter(this);
    entrada_->installEventFilter(this);
    Cargar();
    lista_->setFocus();
}

void FrmListaPresupuesto::Error(const QString& rutina, int numero, const QString& descripcion) {
    ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[%3.%4.KORVEN]::")
                                .arg(numero)
                                .arg(descripcion, rutina, d_.formulario),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

void FrmListaPresupuesto::Cargar() {
    lista_->clear();
    try {
        const Recordset rs =
            ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS")).Abrir(d_.consulta);
        for (int i = 0; i < rs.RecordCount(); ++i)
            lista_->addItem(EsNull(rs.Fila(i).at(0)));
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Cargar"), e.numero(), e.descripcion());
    }
    if (lista_->count() > 0)
        lista_->setCurrentRow(0);
}

void FrmListaPresupuesto::Guardar() {
    const QString texto = entrada_->text().trimmed();
    Dialogos& dlg = ctx_.dialogos();
    try {
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        const double hay =
            EsNumero(c.Abrir(QStringLiteral("select count(*) as cont from %1 where %2 = ?")
                                 .arg(d_.tabla, d_.columna),
                             {texto})
                         .Fields(0));
        if (hay > 0) {
            dlg.Mensaje(d_.repetido, QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return;
        }
        if (texto.isEmpty()) {
            dlg.Mensaje(QStringLiteral("Debe ingresar un Nombre valido para el nuevo concepto."),
                        QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return;
        }
        c.Ejecutar(QStringLiteral("insert into %1 (%2) values (?)").arg(d_.tabla, d_.columna),
                   {texto});
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Guardar"), e.numero(), e.descripcion());
        return;
    }
    CerrarEntrada();
    Cargar();
    const auto fila = lista_->findItems(texto, Qt::MatchExactly);
    if (!fila.isEmpty())
        lista_->setCurrentItem(fila.first());
}

void FrmListaPresupuesto::Eliminar() {
    const QListWidgetItem* fila = lista_->currentItem();
    if (!fila)
        return;
    try {
        ctx_.stores()
            .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("delete from %1 where %2 = ?").arg(d_.tabla, d_.columna),
                      {fila->text()});
    } catch (const KorvenError& e) {
        Error(QStringLiteral("Eliminar"), e.numero(), e.descripcion());
        return;
    }
    const int donde = lista_->currentRow();
    Cargar();
    lista_->setCurrentRow(std::min(donde, lista_->count() - 1));
}

void FrmListaPresupuesto::CerrarEntrada() {
    entrada_->clear();
    entrada_->hide();
    ayuda_->hide();
    lista_->setFocus();
}

bool FrmListaPresupuesto::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const int tecla = static_cast<QKeyEvent*>(evento)->key();
    if (objeto == lista_ && tecla == Qt::Key_Insert) {
        entrada_->show();
        ayuda_->show();
        entrada_->setFocus();
        return true;
    }
    if (objeto == lista_ && tecla == Qt::Key_Delete) {
        Eliminar();
        return true;
    }
    if (objeto == entrada_ && (tecla == Qt::Key_Return || tecla == Qt::Key_Enter)) {
        Guardar();
        return true;
    }
    if (objeto == entrada_ && tecla == Qt::Key_Escape) {
        CerrarEntrada();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

FrmConceptos::FrmConceptos(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : FrmListaPresupuesto(ctx,
                          {QStringLiteral("FrmConceptos"), QStringLiteral("Conceptos"),
                           QStringLiteral("LstConceptos"), QStringLiteral("conpresu"),
                           QStringLiteral("concepto"),
                           QStringLiteral("select * from conpresu order by concepto"),
                           QStringLiteral("Ya existe este concepto.!")},
                          padre) {}

FrmReferencias::FrmReferencias(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : FrmListaPresupuesto(ctx,
                          {QStringLiteral("FrmReferencias"), QStringLiteral("Referencias"),
                           QStringLiteral("LstReferencias"), QStringLiteral("referencias"),
                           QStringLiteral("referencia"),
                           QStringLiteral("select referencia from referencias order by referencia"),
                           QStringLiteral("Esta referencia ya existe")},
                          padre) {}

} // namespace korven
