#include "foundation/FrmDetalleInterno.h"

#include "foundation/BloqueoInterno.h"
#include "foundation/OpcionesInterno.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/QueryDesk.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "ui_FrmDetalleInterno.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

class RelojDeArena {
public:
    RelojDeArena() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~RelojDeArena() { QApplication::restoreOverrideCursor(); }
};

QString Seccion(const char* boton) {
    return QStringLiteral("Seccion [KORVEN.frmDetalleInterno.") + QString::fromLatin1(boton) +
           QLatin1Char(']');
}

} // namespace

FrmDetalleInterno::FrmDetalleInterno(AppContext& ctx, const QVariantMap& args, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmDetalleInterno>()), ctx_(ctx),
      interno_(args.value(QStringLiteral("interno")).toString()) {
    ui->setupUi(this);
    ctx_.InternoActual = interno_;
    ctx_.FormularioDeDatos = false;

    if (ctx_.config().ARMARITEM == 1)
        ui->opOrdenxNCM->setChecked(true);
    else
        ui->opOrdenxCarga->setChecked(true);
    // Command1 exists only with its component.
    try {
        ctx_.componentes().Crear(QStringLiteral("OperationExchange.Main"), ctx_);
        ui->Command1->setEnabled(true);
    } catch (const KorvenError&) {
        ui->Command1->setEnabled(false);
    }

    const std::pair<QPushButton*, void (FrmDetalleInterno::*)()> botones[] = {
        {ui->cmdCaratula, &FrmDetalleInterno::cmdCaratula},
        {ui->CmdSubItems, &FrmDetalleInterno::CmdSubItems},
        {ui->cmdITEM, &FrmDetalleInterno::cmdITEM},
        {ui->CmdBultos, &FrmDetalleInterno::CmdBultos},
        {ui->CmdTransMaria, &FrmDetalleInterno::CmdTransMaria},
        {ui->CmdPresupuesto, &FrmDetalleInterno::CmdPresupuesto},
        {ui->cmdPrint, &FrmDetalleInterno::cmdPrint},
        {ui->CmdHojaVal, &FrmDetalleInterno::CmdHojaVal},
        {ui->cmdCertOrig, &FrmDetalleInterno::cmdCertOrig},
        {ui->cmdExportar, &FrmDetalleInterno::cmdExportar},
        {ui->cmdExportINS, &FrmDetalleInterno::cmdExportINS},
        {ui->Command1, &FrmDetalleInterno::Command1},
        {ui->Command4, &FrmDetalleInterno::Command4},
    };
    for (const auto& [boton, accion] : botones)
        connect(boton, &QPushButton::clicked, this, accion);

    setWindowTitle(QStringLiteral("Detalles de Interno"));
    VerDatos();

    // The options of the Operation.
    const OpcionesInterno::Valores opciones = OpcionesInterno(ctx_.settings()).Leer(interno_);
    for (int i = 0; i < OpcionesInterno::CantidadFlags; ++i)
        CkFlag(i)->setChecked(opciones.flags[static_cast<size_t>(i)]);
    ui->ChCOEF->setChecked(opciones.coefExpo);

    for (QWidget* w : findChildren<QWidget*>())
        w->installEventFilter(this);
    ui->cmdCaratula->setFocus();
}

FrmDetalleInterno::~FrmDetalleInterno() {
    Cerrar();
}

QCheckBox* FrmDetalleInterno::CkFlag(int n) const {
    return findChild<QCheckBox*>(QStringLiteral("CkFlag_%1").arg(n));
}

void FrmDetalleInterno::VerDatos() {
    EstadoInterno(ctx_).VerDatos(interno_, estado_);
    Aplicar();
}

// Puts the decisions of VerDatos on the controls named by them.
void FrmDetalleInterno::Aplicar() {
    for (auto i = estado_.textos.cbegin(); i != estado_.textos.cend(); ++i)
        if (auto* l = findChild<QLabel*>(i.key()))
            l->setText(i.value());
    for (auto i = estado_.colores.cbegin(); i != estado_.colores.cend(); ++i)
        if (auto* w = findChild<QWidget*>(i.key())) {
            QPalette p = w->palette();
            p.setColor(QPalette::WindowText, i.value());
            w->setPalette(p);
        }
    for (auto i = estado_.habilitados.cbegin(); i != estado_.habilitados.cend(); ++i)
        if (auto* w = findChild<QWidget*>(i.key()))
            w->setEnabled(i.value());
    for (auto i = estado_.visibles.cbegin(); i != estado_.visibles.cend(); ++i)
        if (auto* w = findChild<QWidget*>(i.key()))
            w->setHidden(!i.value());
}

void FrmDetalleInterno::Reportar(const KorvenError& e, const QString& seccion) {
    ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                                QStringLiteral(" - ") + seccion,
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

std::unique_ptr<QObject> FrmDetalleInterno::Componente(const QString& nombre) {
    return ctx_.componentes().Crear(nombre, ctx_);
}

QString FrmDetalleInterno::CadenaConexion(const QString& ruta) const {
    return QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + ruta;
}

// The supplies store rides on the second desk of the process, connected at its first use and
// kept open; the operations store on the hand-off's own desk. Both are the store directory's
// entities (INSUMOS, INTERNOS), wherever an installation keeps them.
QueryDesk& FrmDetalleInterno::ConectarDesks(QueryDesk& operaciones) {
    QueryDesk& insumos = ctx_.queryDesk(1);
    if (!insumos.EstadoConexion()) {
        insumos.setCadenaConexion(QStringLiteral("INSUMOS"));
        insumos.Conectar();
    }
    operaciones.setCadenaConexion(QStringLiteral("INTERNOS"));
    operaciones.Conectar();
    return insumos;
}

void FrmDetalleInterno::AbrirPantalla(const QString& nombre, const QVariantMap& args,
                                      const QString& seccion) {
    try {
        ctx_.AbrirModal(nombre, args);
    } catch (const KorvenError& e) {
        Reportar(e, seccion);
    }
    VerDatos();
}

void FrmDetalleInterno::cmdCaratula() {
    AbrirPantalla(QStringLiteral("FrmCaratula"), {{QStringLiteral("interno"), interno_}},
                  Seccion("cmdCaratula"));
}

void FrmDetalleInterno::CmdSubItems() {
    // The goods screen hides the columns and fields of the options that are off.
    QVariantList flags;
    for (int i = 0; i < OpcionesInterno::CantidadFlags; ++i)
        flags << CkFlag(i)->isChecked();
    AbrirPantalla(QStringLiteral("FrmSubItems"),
                  {{QStringLiteral("interno"), interno_}, {QStringLiteral("flags"), flags}},
                  Seccion("CmdSubItems"));
}

void FrmDetalleInterno::cmdITEM() {
    try {
        EstadoInterno estado(ctx_);
        ctx_.ArmadoResultado = QStringLiteral("SI");
        if (estado.LeerFactura8(interno_) == QStringLiteral("S")) {
            ctx_.config().ARMARITEM = ui->opOrdenxNCM->isChecked() ? 1 : 2;
            QVariantMap args;
            args.insert(QStringLiteral("interno"), interno_);
            args.insert(QStringLiteral("ejecutar"), true);
            args.insert(QStringLiteral("multa"), ui->ChMulta->isChecked());
            // The coefficient goes into the first calculation of item 0, which the run makes.
            ctx_.CoefExport =
                estado_.idsubreg.startsWith(QLatin1Char('E')) && ui->ChCOEF->isChecked();
            ctx_.CalcularCoeficiente = ctx_.CoefExport;
            ctx_.AbrirModal(QStringLiteral("FrmArmarItem"), args);
        }
        if (ctx_.ArmadoResultado != QStringLiteral("SI")) {
            // The run did not succeed: the Operation stays to be assembled.
            estado.MarcarCambiado(interno_);
        } else {
            ctx_.AbrirModal(QStringLiteral("FrmVerItem"),
                            {{QStringLiteral("interno"), interno_}, {QStringLiteral("item"), 0}});
        }
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("[KORVEN.frmDetalleInterno.cmdItem]"));
    }
    VerDatos();
}

void FrmDetalleInterno::CmdBultos() {
    AbrirPantalla(QStringLiteral("FrmBultos"), {{QStringLiteral("interno"), interno_}},
                  Seccion("CmdBultos"));
}

void FrmDetalleInterno::CmdPresupuesto() {
    AbrirPantalla(QStringLiteral("FrmPresupuesto"), {{QStringLiteral("interno"), interno_}},
                  Seccion("CmdPresupuesto"));
}

void FrmDetalleInterno::Command4() {
    try {
        ctx_.AbrirModal(QStringLiteral("FrmConsultas"));
    } catch (const KorvenError& e) {
        Reportar(e, Seccion("Command4"));
    }
}

void FrmDetalleInterno::CmdTransMaria() {
    try {
        if (ctx_.config().VERSION == 1)
            return;
        // The countries of the Operation are compared before anything goes to the customs.
        const bool diferencias = ctx_.AbrirModal(QStringLiteral("ChequearInterno"),
                                                 {{QStringLiteral("interno"), interno_}})
                                     .toBool();
        if (diferencias &&
            !ctx_.dialogos().Pregunta(
                QStringLiteral("Se encontraron diferencias entre los datos de la operacion\n"
                               "y la informacion a enviar al SIM, ¿desea continuar?"),
                QStringLiteral("Diferencias en Operacion - Confirmacion de la Operacion"),
                Dialogos::Icono::Pregunta))
            return;
        std::unique_ptr<QObject> salida = Componente(QStringLiteral("DeclarationOutput.Main"));
        QMetaObject::invokeMethod(salida.get(), "setDataAccessManager", Q_ARG(QObject*, nullptr));
        salida->setProperty("NumeroInterno", interno_);
        salida->setProperty("TransferirComsionesExt", ctx_.config().EnviarComExt);
        QMetaObject::invokeMethod(salida.get(), "Mostrar");
    } catch (const KorvenError& e) {
        Reportar(e, Seccion("CmdTransMaria"));
    }
}

void FrmDetalleInterno::cmdPrint() {
    try {
        std::unique_ptr<QObject> impresion = Componente(QStringLiteral("SupplyLink.Main"));
        QueryDesk operaciones(ctx_.stores());
        QueryDesk& insumos = ConectarDesks(operaciones);
        Conexion& cx = ctx_.stores().getDataConnectionByEntity(kInternos);
        const QString subregimen =
            EsNull(cx.Escalar(QStringLiteral("select descripcion from sta where id = ") +
                              SqlTexto(estado_.idsubreg)));
        const QString idaduana = EsNull(cx.Escalar(
            QStringLiteral("select idaduana from caratula where interno = ") + SqlTexto(interno_)));
        const QString aduana = EsNull(cx.Escalar(
            QStringLiteral("select descripcion from aduana where id = ") + SqlTexto(idaduana)));
        impresion->setProperty("VincularDatos", QVariant::fromValue<QObject*>(&insumos));
        impresion->setProperty("VincularDatosKorven", QVariant::fromValue<QObject*>(&operaciones));
        impresion->setProperty("SubRegimen", subregimen);
        impresion->setProperty("ADUANA", aduana);
        impresion->setProperty("Interno", interno_);
        impresion->setProperty("Dir_Formularios", ctx_.directorioPrograma() +
                                                      QStringLiteral("forms") + QDir::separator());
        QMetaObject::invokeMethod(impresion.get(), "GenerarIMP");
    } catch (const KorvenError& e) {
        Reportar(e, Seccion("cmdPrint"));
    }
}

void FrmDetalleInterno::CmdHojaVal() {
    try {
        const QString s = estado_.idsubreg;
        const bool importacion =
            QStringList{QStringLiteral("I"), QStringLiteral("T"), QStringLiteral("D"),
                        QStringLiteral("R")}
                .contains(s.left(1)) ||
            QStringList{QStringLiteral("LAPI"), QStringLiteral("ZFTR"), QStringLiteral("ZFRE")}
                .contains(s.left(4)) ||
            s.left(2) == QStringLiteral("ZF");
        std::unique_ptr<QObject> hoja = Componente(QStringLiteral("ValueSheet.Main"));
        // The stores are handed over by their entity names.
        hoja->setProperty("DBAPath",
                          QFileInfo(ctx_.config().rutaInternos).absolutePath() + QDir::separator());
        QMetaObject::invokeMethod(hoja.get(), "coneccion", Q_ARG(QString, kInternos),
                                  Q_ARG(QString, QStringLiteral("PERSONAL")),
                                  Q_ARG(QString, QStringLiteral("SYSTABLAS")));
        hoja->setProperty("IniPath", ctx_.directorioPrograma());
        hoja->setProperty("NROInte", interno_);
        if (importacion)
            hoja->setProperty("IMPRESORA", ctx_.config().DEVICENAME);
        hoja->setProperty("Vinculado", 1);
        hoja->setProperty("TipoDespacho", importacion ? 0 : 1);
        QMetaObject::invokeMethod(hoja.get(), "Mostrar");
    } catch (const KorvenError& e) {
        Reportar(e, Seccion("CmdHojaVal"));
    }
}

void FrmDetalleInterno::cmdCertOrig() {
    try {
        std::unique_ptr<QObject> certificado = Componente(QStringLiteral("OriginCertificate.Main"));
        QMetaObject::invokeMethod(certificado.get(), "coneccion", Q_ARG(QString, kInternos),
                                  Q_ARG(QString, QStringLiteral("PERSONAL")));
        certificado->setProperty("FRMDIR", ctx_.directorioPrograma() + QStringLiteral("forms") +
                                               QDir::separator());
        certificado->setProperty("dbkorven", ctx_.config().rutaInternos);
        certificado->setProperty("PRGPRINTER", ctx_.config().DEVICENAME);
        certificado->setProperty("cdodata", interno_);
        QMetaObject::invokeMethod(certificado.get(), "IniciaProyecto");
    } catch (const KorvenError& e) {
        Reportar(e, Seccion("cmdCertOrig"));
    }
}

void FrmDetalleInterno::cmdExportar() {
    try {
        std::unique_ptr<QObject> importacion =
            Componente(QStringLiteral("CancellationImport.Main"));
        QString artcanins = ctx_.config().rutaInternos;
        artcanins.replace(QStringLiteral("internos.mdb"), QStringLiteral("artcanins.mdb"),
                          Qt::CaseInsensitive);
        importacion->setProperty("Ubicacion_Base_Datos", CadenaConexion(artcanins));
        importacion->setProperty("Numero_Interno", interno_);
        importacion->setProperty("ITEM", 0);
        importacion->setProperty("Base_Korven", CadenaConexion(ctx_.config().rutaInternos));
        bool conectado = false;
        QMetaObject::invokeMethod(importacion.get(), "Conectar_DB", Q_RETURN_ARG(bool, conectado));
        if (!conectado) {
            ctx_.dialogos().Mensaje(QStringLiteral("Error en conectar con base de datos."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
            return;
        }
        QMetaObject::invokeMethod(importacion.get(), "Importar");
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("Seccion [KORVEN.Detalleinterno.cmdExportar]"));
    }
}

void FrmDetalleInterno::cmdExportINS() {
    try {
        if (!insumosTemporales_)
            insumosTemporales_ = Componente(QStringLiteral("SupplyTemporary.Main"));
        QueryDesk operaciones(ctx_.stores());
        QueryDesk& insumos = ConectarDesks(operaciones);
        Conexion& cx = ctx_.stores().getDataConnectionByEntity(kInternos);
        const QString idaduana = EsNull(cx.Escalar(
            QStringLiteral("select idaduana from caratula where interno = ") + SqlTexto(interno_)));
        insumosTemporales_->setProperty(
            "ADUANA",
            EsNull(cx.Escalar(QStringLiteral("select descripcion from aduana where id = ") +
                              SqlTexto(idaduana))));
        QMetaObject::invokeMethod(insumosTemporales_.get(), "ConectarDB", Q_ARG(QObject*, &insumos),
                                  Q_ARG(int, 1), Q_ARG(QObject*, &operaciones));
        insumosTemporales_->setProperty("Interno_Externo", interno_);
        QMetaObject::invokeMethod(insumosTemporales_.get(), "Importar");
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("Seccion [Korven.frmdetalleinterno.cmdExportINS]"));
    }
}

void FrmDetalleInterno::Command1() {
    try {
        std::unique_ptr<QObject> intercambio = Componente(QStringLiteral("OperationExchange.Main"));
        QMetaObject::invokeMethod(intercambio.get(), "Conectar",
                                  Q_ARG(QString, CadenaConexion(ctx_.config().rutaEstado)),
                                  Q_ARG(QString, CadenaConexion(ctx_.config().rutaInternos)),
                                  Q_ARG(QString, CadenaConexion(ctx_.config().rutaPersonal)));
        intercambio->setProperty("Nro_Interno", interno_);
        QMetaObject::invokeMethod(intercambio.get(), "Mostrar");
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                QStringLiteral("\n\nEsta sección esta deshabilitada!"),
            QStringLiteral("Sección OperationExchangexDLL"), Dialogos::Icono::Critico);
    }
}

// The closing routine: the options go back to the settings store and the lock is released.
void FrmDetalleInterno::Cerrar() {
    if (cerrado_)
        return;
    cerrado_ = true;
    RelojDeArena reloj;
    try {
        OpcionesInterno::Valores v;
        for (int i = 0; i < OpcionesInterno::CantidadFlags; ++i)
            v.flags[static_cast<size_t>(i)] = CkFlag(i)->isChecked();
        v.coefExpo = ui->ChCOEF->isChecked();
        OpcionesInterno(ctx_.settings()).Guardar(interno_, v, ui->ChCOEF->isEnabled());
        BloqueoInterno(ctx_.stores(), ctx_.dialogos(), MaquinaLocal()).Liberar(interno_);
    } catch (const KorvenError& e) {
        Reportar(e, Seccion("Cerrar"));
    }
    // Every store's connection drops with the Operation; they reopen on demand.
    ctx_.stores().CloseAllDataConnection();
    ctx_.InternoActual.clear();
}

void FrmDetalleInterno::reject() {
    Cerrar();
    QDialog::reject();
}

bool FrmDetalleInterno::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        const auto* k = static_cast<QKeyEvent*>(evento);
        if (k->key() == Qt::Key_Escape ||
            (k->key() == Qt::Key_C && (k->modifiers() & Qt::ControlModifier))) {
            reject();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
