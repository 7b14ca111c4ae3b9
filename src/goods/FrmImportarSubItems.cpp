#include "goods/FrmImportarSubItems.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/ui/AnchoColumnas.h"
#include "ui_FrmImportarSubItems.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>

namespace korven {

namespace {

using Campo = ImportadorSubItems::Campo;

const QString kPantalla = QStringLiteral("FrmImportarSubItems");
const QColor kRechazada(255, 192, 192);

// The busy cursor for the length of a block, restored on every way out.
struct CursorOcupado {
    CursorOcupado() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CursorOcupado() { QApplication::restoreOverrideCursor(); }
};

void MensajeError(AppContext& ctx, const KorvenError& e) {
    ctx.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                               QStringLiteral(" - seccion [KORVEN.FrmImportarSubItems]::"),
                           QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

} // namespace

FrmImportarSubItems::FrmImportarSubItems(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmImportarSubItems>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    setProperty("Respuesta", 0);
    setWindowTitle(windowTitle() + QStringLiteral(" - Interno: ") + interno_);
    ui->LstColumnas->installEventFilter(this);
    ui->GrdFilas->installEventFilter(this);
    ui->GrdFilas->verticalHeader()->hide();
    ui->GrdFilas->horizontalHeader()->setStretchLastSection(true);
    recalcular_.setSingleShot(true);
    recalcular_.setInterval(250);
    connect(&recalcular_, &QTimer::timeout, this, &FrmImportarSubItems::Verificar);

    QString origen;
    try {
        if (args.contains(QStringLiteral("archivo"))) {
            const QString ruta = args.value(QStringLiteral("archivo")).toString();
            tabla_ = ImportadorSubItems::LeerArchivo(ruta);
            origen =
                QStringLiteral("Archivo %1 (%2)")
                    .arg(ruta, tabla_.latin1 ? QStringLiteral("Latin-1") : QStringLiteral("UTF-8"));
        } else {
            tabla_ = ImportadorSubItems::LeerTexto(args.value(QStringLiteral("texto")).toString());
            origen = QStringLiteral("Filas pegadas");
        }
    } catch (const KorvenError& e) {
        MensajeError(ctx_, e);
    }
    mapeo_ = ImportadorSubItems::Mapeo(tabla_);
    ui->LbOrigen->setText(origen + QStringLiteral(" - %1 filas, %2")
                                       .arg(tabla_.filas.size())
                                       .arg(tabla_.encabezado.isEmpty()
                                                ? QStringLiteral("sin encabezado")
                                                : QStringLiteral("con encabezado")));
    MostrarColumnas();
    Verificar();
    ui->LstColumnas->setFocus();
}

FrmImportarSubItems::~FrmImportarSubItems() = default;

int FrmImportarSubItems::Importar(AppContext& ctx, const QString& interno, const QString& texto) {
    if (texto.trimmed().isEmpty()) {
        ctx.dialogos().Mensaje(QStringLiteral("No hay filas para importar."),
                               QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        return 0;
    }
    QVariantMap args;
    args.insert(QStringLiteral("interno"), interno);
    args.insert(QStringLiteral("texto"), texto);
    return ctx.AbrirModal(kPantalla, args).toInt();
}

int FrmImportarSubItems::ImportarArchivo(AppContext& ctx, const QString& interno,
                                         const QString& ruta) {
    QString archivo = ruta;
    if (archivo.isEmpty())
        archivo = QFileDialog::getOpenFileName(QApplication::activeWindow(),
                                               QStringLiteral("Importar SubItems"), QString(),
                                               QStringLiteral("CSV (*.csv *.txt);;Todos (*)"));
    if (archivo.isEmpty())
        return 0;
    QVariantMap args;
    args.insert(QStringLiteral("interno"), interno);
    args.insert(QStringLiteral("archivo"), archivo);
    return ctx.AbrirModal(kPantalla, args).toInt();
}

void FrmImportarSubItems::MostrarColumnas() {
    const int actual =
        std::max(0, ui->LstColumnas->indexOfTopLevelItem(ui->LstColumnas->currentItem()));
    ui->LstColumnas->clear();
    for (int i = 0; i < tabla_.columnas; ++i) {
        const QString titulo = i < tabla_.encabezado.size() ? tabla_.encabezado.at(i) : QString();
        const QString primero = !tabla_.filas.empty() && i < tabla_.filas.front().valores.size()
                                    ? tabla_.filas.front().valores.at(i)
                                    : QString();
        ui->LstColumnas->addTopLevelItem(
            new QTreeWidgetItem({QString::number(i + 1), titulo, primero,
                                 ImportadorSubItems::Nombre(mapeo_.at(static_cast<size_t>(i)))}));
    }
    AjustarColumnas(ui->LstColumnas);
    if (ui->LstColumnas->topLevelItemCount() > 0)
        ui->LstColumnas->setCurrentItem(ui->LstColumnas->topLevelItem(
            std::min(actual, ui->LstColumnas->topLevelItemCount() - 1)));
}

void FrmImportarSubItems::CambiarCampo(int paso) {
    const int columna = ui->LstColumnas->indexOfTopLevelItem(ui->LstColumnas->currentItem());
    if (columna < 0)
        return;
    const std::vector<Campo>& campos = ImportadorSubItems::Campos();
    const auto n = static_cast<int>(campos.size());
    Campo& c = mapeo_[static_cast<size_t>(columna)];
    int i = static_cast<int>(std::find(campos.begin(), campos.end(), c) - campos.begin());
    // A field fed by another column is skipped: each field takes one column.
    for (int k = 0; k < n; ++k) {
        i = (i + paso + n) % n;
        const Campo candidato = campos.at(static_cast<size_t>(i));
        if (candidato == Campo::Ninguno ||
            std::find(mapeo_.begin(), mapeo_.end(), candidato) == mapeo_.end())
            break;
    }
    c = campos.at(static_cast<size_t>(i));
    ui->LstColumnas->currentItem()->setText(3, ImportadorSubItems::Nombre(c));
    ui->LbResumen->setText(QStringLiteral("Verificando..."));
    recalcular_.start();
}

void FrmImportarSubItems::Verificar() {
    recalcular_.stop();
    CursorOcupado ocupado;
    try {
        ImportadorSubItems imp(ctx_);
        lineas_ = imp.Preparar(tabla_, mapeo_);
        std::vector<LineaSubItem> datos;
        datos.reserve(lineas_.size());
        for (const auto& l : lineas_)
            datos.push_back(l.datos);
        veredictos_ = CargaSubItems(ctx_, interno_).Verificar(datos);
    } catch (const KorvenError& e) {
        veredictos_.assign(lineas_.size(), CargaSubItems::Veredicto{false, e.descripcion()});
        MensajeError(ctx_, e);
    }
    MostrarFilas();
}

void FrmImportarSubItems::MostrarFilas() {
    QTableWidget* g = ui->GrdFilas;
    const QStringList titulos{
        QStringLiteral("Línea"),     QStringLiteral("Posición"),     QStringLiteral("Descripción"),
        QStringLiteral("Cantidad"),  QStringLiteral("Unidad"),       QStringLiteral("Unitario"),
        QStringLiteral("FOB Total"), QStringLiteral("Cant. Estad."), QStringLiteral("KG Neto"),
        QStringLiteral("KG Bruto"),  QStringLiteral("Pais"),         QStringLiteral("Sufijos"),
        QStringLiteral("Resultado")};
    g->setUpdatesEnabled(false);
    g->clear();
    g->setColumnCount(static_cast<int>(titulos.size()));
    g->setHorizontalHeaderLabels(titulos);
    g->setRowCount(static_cast<int>(lineas_.size()));
    int correctas = 0;
    for (size_t f = 0; f < lineas_.size(); ++f) {
        const auto& p = lineas_[f];
        const LineaSubItem& l = p.datos;
        const CargaSubItems::Veredicto v =
            f < veredictos_.size() ? veredictos_[f] : CargaSubItems::Veredicto{};
        correctas += v.aceptada ? 1 : 0;
        QString resultado = v.aceptada ? QStringLiteral("Correcta") : QStringLiteral("Rechazada");
        for (const QString& s : {p.aviso, v.mensaje})
            if (!s.isEmpty())
                resultado += QStringLiteral(": ") + s;
        const QStringList celdas{QString::number(p.linea),
                                 l.posicion,
                                 l.descripcion,
                                 l.cantidad,
                                 l.unidad,
                                 l.unitario,
                                 l.fobTotal,
                                 l.valorEstadistica,
                                 l.kgNeto,
                                 l.kgBruto,
                                 l.idPais,
                                 l.sufijos,
                                 resultado};
        for (int c = 0; c < celdas.size(); ++c) {
            auto* item = new QTableWidgetItem(celdas.at(c));
            if (!v.aceptada)
                item->setBackground(kRechazada);
            if (c == celdas.size() - 1)
                item->setToolTip(resultado);
            g->setItem(static_cast<int>(f), c, item);
        }
    }
    // Sizing by the first rows is enough and keeps a long paste quick.
    AjustarColumnas(g);
    g->setUpdatesEnabled(true);
    if (g->rowCount() > 0)
        g->setCurrentCell(0, 0);
    const int total = static_cast<int>(lineas_.size());
    ui->LbResumen->setText(QStringLiteral("%1 filas: %2 correctas, %3 rechazadas")
                               .arg(total)
                               .arg(correctas)
                               .arg(total - correctas));
}

void FrmImportarSubItems::Aceptar() {
    if (recalcular_.isActive())
        Verificar();
    std::vector<LineaSubItem> aceptadas;
    std::vector<int> lineas;
    for (size_t i = 0; i < lineas_.size() && i < veredictos_.size(); ++i)
        if (veredictos_[i].aceptada) {
            aceptadas.push_back(lineas_[i].datos);
            lineas.push_back(lineas_[i].linea);
        }
    const int rechazadas = static_cast<int>(lineas_.size() - aceptadas.size());
    if (aceptadas.empty()) {
        ctx_.dialogos().Mensaje(QStringLiteral("No hay filas correctas para importar."),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        return;
    }
    if (rechazadas > 0 &&
        !ctx_.dialogos().Pregunta(QStringLiteral("%1 filas rechazadas no se importarán. "
                                                 "¿Importa las %2 filas correctas?")
                                      .arg(rechazadas)
                                      .arg(aceptadas.size())))
        return;
    CargaSubItems::Resultado r;
    try {
        CursorOcupado ocupado;
        r = CargaSubItems(ctx_, interno_).Grabar(aceptadas);
    } catch (const KorvenError& e) {
        MensajeError(ctx_, e);
        return;
    }
    if (!r.grabado) {
        const size_t i = r.veredictos.empty() ? 0 : r.veredictos.size() - 1;
        ctx_.dialogos().Mensaje(
            QStringLiteral("No se importó ninguna fila: la línea %1 fue rechazada. %2")
                .arg(lineas.at(i))
                .arg(r.veredictos.empty() ? QString() : r.veredictos.back().mensaje),
            QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        Verificar();
        return;
    }
    setProperty("Respuesta", r.grabadas);
    accept();
}

void FrmImportarSubItems::reject() {
    setProperty("Respuesta", 0);
    QDialog::reject();
}

bool FrmImportarSubItems::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    const auto* k = static_cast<QKeyEvent*>(evento);
    if (k->key() == Qt::Key_F12) {
        Aceptar();
        return true;
    }
    if (objeto == ui->LstColumnas && (k->key() == Qt::Key_Left || k->key() == Qt::Key_Right)) {
        CambiarCampo(k->key() == Qt::Key_Right ? 1 : -1);
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
