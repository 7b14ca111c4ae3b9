#include "foundation/MenuP.h"

#include "foundation/Integridad.h"
#include "foundation/LlamadaComponente.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>

namespace korven {

namespace {

const QString kFinSeccionCarga = QStringLiteral(" - seccion[Form_Load.MenuP.KORVEN]::");
const QString kSeccionMenu = QStringLiteral(" - seccion[GrdMenuMain_DblClick.MenuP.KORVEN]::");
const QString kSeccionFormulario = QStringLiteral(" - seccion[LlamarFormulario.MenuNew.KORVEN]::");

QTableWidget* NuevaGrilla(const QString& nombre, QWidget* padre) {
    auto* g = new QTableWidget(padre);
    g->setObjectName(nombre);
    g->setEditTriggers(QAbstractItemView::NoEditTriggers);
    g->setSelectionBehavior(QAbstractItemView::SelectRows);
    g->setSelectionMode(QAbstractItemView::SingleSelection);
    g->setTabKeyNavigation(false);
    g->verticalHeader()->setVisible(false);
    return g;
}

QTableWidgetItem* Celda(const QString& texto) {
    auto* c = new QTableWidgetItem(texto);
    c->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return c;
}

} // namespace

QStringList MenuP::TextosMenu() {
    return {QStringLiteral("Operaciones"),          QStringLiteral("Clientes"),
            QStringLiteral("Nomenclador"),          QStringLiteral("Catálogos"),
            QStringLiteral("Configuración"),        QStringLiteral("Exportar Operaciones "),
            QStringLiteral("Importar Operaciones ")};
}

QStringList MenuP::TextosFormularios() {
    return {QStringLiteral("Hoja de Valoración"),
            QStringLiteral("Multinota"),
            QStringLiteral("Boleta de Deposito"),
            QStringLiteral("SENASA"),
            QStringLiteral("Solictud Particular"),
            QStringLiteral("Mineria"),
            QStringLiteral("Om 1993"),
            QStringLiteral("PREDIBIOS - Impo"),
            QStringLiteral("PREDIBIOS - Expo")};
}

MenuP::MenuP(AppContext& ctx, std::function<void(int)> finDelProceso, QWidget* parent)
    : QWidget(parent), ctx_(ctx), finDelProceso_(std::move(finDelProceso)),
      lbVersion_(new QLabel(this)), lbFechaKorven_(new QLabel(this)),
      lbNomenclador_(new QLabel(this)),
      grdMenuMain_(NuevaGrilla(QStringLiteral("GrdMenuMain"), this)),
      gridFormularios_(NuevaGrilla(QStringLiteral("GridFormularios"), this)) {
    setObjectName(QStringLiteral("MenuP"));
    setWindowTitle(QStringLiteral("Menu Principal"));
    lbVersion_->setObjectName(QStringLiteral("lbVersion"));
    lbFechaKorven_->setObjectName(QStringLiteral("lbFechaKorven"));
    lbNomenclador_->setObjectName(QStringLiteral("lbNomenclador"));

    auto* titulo = new QLabel(QStringLiteral("KORVEN"), this);
    QFont f = titulo->font();
    f.setPointSize(f.pointSize() * 2);
    f.setBold(true);
    titulo->setFont(f);

    auto* datos = new QVBoxLayout;
    datos->addWidget(titulo);
    auto fila = [this, datos](const QString& rotulo, QLabel* valor) {
        auto* h = new QHBoxLayout;
        auto* r = new QLabel(rotulo, this);
        r->setMinimumWidth(90);
        h->addWidget(r);
        h->addWidget(valor, 1);
        datos->addLayout(h);
    };
    fila(QStringLiteral("Versión:"), lbVersion_);
    fila(QStringLiteral("Fecha:"), lbFechaKorven_);
    fila(QStringLiteral("Nomenclador:"), lbNomenclador_);
    // Which stores this workstation works on: the SQLite file, or the PostgreSQL server and
    // database; one line per place when the configuration splits them.
    auto* lbBases = new QLabel(this);
    lbBases->setObjectName(QStringLiteral("lbBases"));
    lbBases->setTextInteractionFlags(Qt::TextSelectableByMouse);
    {
        QStringList lugares;
        QHash<QString, QStringList> entidades;
        for (const QString& e : StoreDirectory::Entidades()) {
            const QString u = ctx_.stores().Ubicacion(e);
            if (!entidades.contains(u))
                lugares << u;
            entidades[u] << e;
        }
        QStringList lineas;
        for (const QString& u : lugares)
            lineas << (lugares.size() == 1 ? u
                                           : QStringLiteral("%1: %2").arg(
                                                 entidades.value(u).join(QLatin1Char(',')), u));
        lbBases->setText(lineas.join(QLatin1Char('\n')));
    }
    fila(QStringLiteral("Bases:"), lbBases);

    auto* grillas = new QHBoxLayout;
    grillas->addWidget(grdMenuMain_, 3);
    grillas->addWidget(gridFormularios_, 2);
    auto* todo = new QVBoxLayout(this);
    todo->addLayout(datos);
    todo->addLayout(grillas, 1);
    todo->addWidget(new QLabel(QStringLiteral("ENTER [Elegir]   ESC [Salir]"), this));

    grdMenuMain_->installEventFilter(this);
    gridFormularios_->installEventFilter(this);
    connect(grdMenuMain_, &QTableWidget::cellDoubleClicked, this,
            [this](int r, int) { EjecutarMenu(r); });

    Form_Load();
    setTabOrder(grdMenuMain_, gridFormularios_);
    grdMenuMain_->setFocus();
}

QString MenuP::RutaPrograma() const {
    return ctx_.directorioPrograma();
}

QString MenuP::DirectorioPrograma() const {
    QString d = ctx_.directorioPrograma();
    if (d.size() > 1 && (d.endsWith(QDir::separator()) || d.endsWith(QLatin1Char('/'))))
        d.chop(1);
    return d;
}

void MenuP::Form_Load() {
    try {
        lbVersion_->setText(QStringLiteral("%1.%2.%3")
                                .arg(KORVEN_VERSION_MAJOR)
                                .arg(KORVEN_VERSION_MINOR)
                                .arg(KORVEN_VERSION_PATCH));
        // The release date is the date of the program's file.
        const QFileInfo programa(QCoreApplication::applicationFilePath());
        lbFechaKorven_->setText(
            FormatoFecha(programa.lastModified().date(), QStringLiteral("Long Date")));

        lbNomenclador_->setText(QStringLiteral("Leyendo Fecha...."));
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
        cn.setSql(QStringLiteral("select fecha from control_fecha order by fecha desc"));
        Recordset rs;
        if (cn.CrearRs(rs)) {
            const QDate fecha = FechaDeCampo(rs.Fields(QStringLiteral("Fecha")));
            lbNomenclador_->setText(FormatoFecha(fecha, QStringLiteral("Long Date")));
        }

        LlenarMenu();
        LlenarFormularios();
    } catch (const KorvenError& e) {
        Informar(kFinSeccionCarga, e);
    }
}

void MenuP::LlenarMenu() {
    const QStringList textos = TextosMenu();
    const QStyle::StandardPixmap imagenes[] = {QStyle::SP_DirOpenIcon,
                                               QStyle::SP_FileDialogContentsView,
                                               QStyle::SP_FileDialogDetailedView,
                                               QStyle::SP_FileDialogListView,
                                               QStyle::SP_ComputerIcon,
                                               QStyle::SP_ArrowUp,
                                               QStyle::SP_ArrowDown};
    grdMenuMain_->setColumnCount(2);
    grdMenuMain_->setRowCount(static_cast<int>(textos.size()));
    grdMenuMain_->horizontalHeader()->setVisible(false);
    grdMenuMain_->setColumnWidth(0, 600 / 15);
    grdMenuMain_->setColumnWidth(1, 3000 / 15);
    grdMenuMain_->setIconSize(QSize(24, 24));
    for (int i = 0; i < textos.size(); ++i) {
        auto* imagen = Celda(QString());
        imagen->setIcon(style()->standardIcon(imagenes[i]));
        grdMenuMain_->setItem(i, 0, imagen);
        grdMenuMain_->setItem(i, 1, Celda(textos[i]));
        grdMenuMain_->setRowHeight(i, 32);
    }
    grdMenuMain_->setCurrentCell(0, 1);
}

void MenuP::LlenarFormularios() {
    const QStringList textos = TextosFormularios();
    gridFormularios_->setColumnCount(1);
    gridFormularios_->setHorizontalHeaderLabels({QStringLiteral("Formularios")});
    gridFormularios_->horizontalHeader()->setStretchLastSection(true);
    gridFormularios_->setRowCount(static_cast<int>(textos.size()));
    for (int i = 0; i < textos.size(); ++i)
        gridFormularios_->setItem(i, 0, Celda(textos[i]));
    gridFormularios_->setCurrentCell(0, 0);
}

void MenuP::Informar(const QString& seccion, const KorvenError& e) {
    const QString error = QStringLiteral("%1 / %2").arg(e.numero()).arg(e.descripcion());
    // Sections of the form " - seccion[...]::" follow the error, with its source; the others
    // lead the message.
    const QString texto =
        seccion.startsWith(QStringLiteral(" - ")) ? error + seccion + e.origen() : seccion + error;
    ctx_.dialogos().Mensaje(texto, QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

void MenuP::EjecutarMenu(int fila) {
    if (fila == 1) {
        Clientes();
        return;
    }
    try {
        switch (fila) {
        case 0:
            ctx_.AbrirModal(QStringLiteral("FrmInternoNew"));
            break;
        case 2:
            ctx_.AbrirModal(QStringLiteral("FrmConsultas"));
            break;
        case 3:
            ctx_.AbrirModal(QStringLiteral("FrmCatArticulos"));
            break;
        case 4:
            ctx_.AbrirModal(QStringLiteral("FrmConfig"));
            break;
        case 5:
            Transferencia(true);
            break;
        case 6:
            Transferencia(false);
            break;
        default:
            break;
        }
    } catch (const KorvenError& e) {
        Informar(kSeccionMenu, e);
    }
}

void MenuP::Clientes() {
    try {
        auto c = ctx_.componentes().Crear(QStringLiteral("ClientBook.Listing"), ctx_);
        // The components work on the stores of the context that made them: the store directory
        // they are handed is that one.
        LlamarMiembro(*c, "SetDataConnection", {QVariant::fromValue<QObject*>(nullptr)});
        AsignarMiembro(*c, "Seleccionar", false);
        AsignarMiembro(*c, "OrigenKorven", true);
        LlamarMiembro(*c, "MostrarListado", {QVariant::fromValue<QObject*>(this)});
    } catch (const KorvenError& e) {
        Informar(QStringLiteral("[KORVEN.MenuP.Clientes]:: Nro: "), e);
    }
}

void MenuP::Transferencia(bool exportar) {
    auto c = ctx_.componentes().Crear(QStringLiteral("OperationTransfer.Main"), ctx_);
    AsignarMiembro(*c, "DAMSource", QVariant::fromValue<QObject*>(nullptr));
    LlamarMiembro(*c, exportar ? "GuardarInternos" : "LeerInternos");
}

void MenuP::LlamarFormulario(const QString& texto) {
    const QString ruta = RutaPrograma();
    const QString db = DirectorioNormal(ruta + QStringLiteral("db"));
    const QString forms = DirectorioNormal(ruta + QStringLiteral("forms"));
    auto crear = [this](const char* nombre) {
        return ctx_.componentes().Crear(QLatin1String(nombre), ctx_);
    };
    QString seccion = kSeccionFormulario;
    try {
        if (texto == QStringLiteral("Hoja de Valoración")) {
            seccion = QStringLiteral("seccion HojadeValorEXPO en Formulario MenuP :: ");
            auto c = crear("ValueSheet.Main");
            AsignarMiembro(*c, "DBAPath", QString());
            AsignarMiembro(*c, "IniPath", DirectorioPrograma());
            AsignarMiembro(*c, "NROInte", QString());
            AsignarMiembro(*c, "Vinculado", 0);
            AsignarMiembro(*c, "TipoDespacho", 1);
            LlamarMiembro(*c, "Mostrar");
        } else if (texto == QStringLiteral("Multinota")) {
            seccion = QStringLiteral("KORVEN.MenuP.Multinota::");
            auto c = crear("NoteForm.Main");
            AsignarMiembro(*c, "DBDIR", db + QStringLiteral("planillas.mdb"));
            AsignarMiembro(*c, "FRMDIR", forms);
            LlamarMiembro(*c, "IniciaProyecto");
        } else if (texto == QStringLiteral("Boleta de Deposito")) {
            seccion = QStringLiteral("seccion BoletaDeposito en Formulario MenuP :: ");
            auto c = crear("DepositSlipForm.Main");
            AsignarMiembro(*c, "DBDIR", db);
            AsignarMiembro(*c, "FRMDIR", forms);
            LlamarMiembro(*c, "IniciaProyecto");
        } else if (texto == QStringLiteral("SENASA")) {
            seccion = QStringLiteral("seccion SENASA en Formulario MenuP :: ");
            auto c = crear("HealthForm.Main");
            AsignarMiembro(*c, "Ubicación", DirectorioPrograma());
            LlamarMiembro(*c, "Mostrar");
        } else if (texto == QStringLiteral("Solictud Particular")) {
            seccion = QStringLiteral("seccion SolicitudParticular en Formulario MenuP :: ");
            auto c = crear("ParticularRequest.Main");
            LlamarMiembro(*c, "Show", {db + QStringLiteral("database.mdb"), forms, true});
        } else if (texto == QStringLiteral("Mineria")) {
            seccion = QStringLiteral("seccion Mineria en Formulario MenuP :: ");
            auto c = crear("MiningForm.Main");
            Conexion* cn = &ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
            LlamarMiembro(*c, "skorvenconn", {QVariant::fromValue(cn)});
            LlamarMiembro(*c, "Main");
        } else if (texto == QStringLiteral("Om 1993")) {
            seccion = QStringLiteral("seccion Om1993 en Formulario MenuP :: ");
            auto c = crear("Form1993.Main");
            Conexion* cn = &ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
            AsignarMiembro(*c, "conexion", QVariant::fromValue(cn));
            AsignarMiembro(*c, "UbicacionDB", db + QStringLiteral("interno.mdb"));
            AsignarMiembro(*c, "UbicacionPath", ruta);
            LlamarMiembro(*c, "Mostrar");
        } else if (texto == QStringLiteral("PREDIBIOS - Impo") ||
                   texto == QStringLiteral("PREDIBIOS - Expo")) {
            auto c = crear(texto.endsWith(QStringLiteral("Impo")) ? "DepotManifest.Impo"
                                                                  : "DepotManifest.Expo");
            AsignarMiembro(*c, "BasedeDatos",
                           QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + db +
                               QStringLiteral("edacassa.mdb"));
            LlamarMiembro(*c, "ConectarDB");
            LlamarMiembro(*c, "Mostrar");
        }
        // A text that names no form is ignored.
    } catch (const KorvenError& e) {
        Informar(seccion, e);
    }
}

bool MenuP::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (k->key() == Qt::Key_Escape) {
            if (finDelProceso_)
                finDelProceso_(0);
            return true;
        }
        if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
            if (objeto == grdMenuMain_) {
                EjecutarMenu(grdMenuMain_->currentRow());
                return true;
            }
            if (objeto == gridFormularios_) {
                const int fila = gridFormularios_->currentRow();
                if (QTableWidgetItem* c = gridFormularios_->item(fila, 0))
                    LlamarFormulario(c->text());
                return true;
            }
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

void MenuP::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape) {
        // The process ends with no question and no shutdown work.
        if (finDelProceso_)
            finDelProceso_(0);
        return;
    }
    QWidget::keyPressEvent(e);
}

} // namespace korven
