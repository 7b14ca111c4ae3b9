#include "foundation/FrmConGen.h"

#include "foundation/LeerConfig.h"
#include "platform/AppContext.h"
#include "platform/Configuracion.h"
#include "platform/Dialogos.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "platform/ui/ClCntrl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPrinterInfo>
#include <QRadioButton>
#include <QVBoxLayout>

namespace korven {

namespace {

const QString kGeneral = QStringLiteral("GENERAL");
const QString kOBJ = QStringLiteral("OBJ");

QString SN(const QCheckBox* c) {
    return c->isChecked() ? QStringLiteral("S") : QStringLiteral("N");
}

QLineEdit* Texto(const char* nombre, QWidget* padre) {
    auto* t = new QLineEdit(padre);
    t->setObjectName(QLatin1String(nombre));
    return t;
}

} // namespace

QCheckBox* FrmConGen::Check(const char* nombre, const QString& texto) {
    auto* c = new QCheckBox(texto, this);
    c->setObjectName(QLatin1String(nombre));
    return c;
}

FrmConGen::FrmConGen(AppContext& ctx, const QVariantMap&, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName(QStringLiteral("FrmConGen"));
    setWindowTitle(QStringLiteral("Configuración General - Korven Windows"));

    cboListado_ = new QComboBox(this);
    cboListado_->setObjectName(QStringLiteral("cboListado"));
    cboListado_->addItems(
        {QStringLiteral("Numero de Interno"), QStringLiteral("Fecha de Creación")});
    chkMostrarOperaciones_ =
        Check("chkMostrarOperaciones", QStringLiteral("Mostrar todas las operaciones"));
    chVendedorxNombre_ = Check("chVendedorxNombre", QStringLiteral("Buscar Vendedor por Nombre"));
    chSbtMantCodart_ =
        Check("chSbtMantCodart", QStringLiteral("Mantener Codigo de Articulo al grabar"));
    chSbtMantDatos_ = Check("chSbtMantDatos", QStringLiteral("Mantener todos los datos al grabar"));
    chSbtMostrarAsc_ =
        Check("chSbtMostrarAsc", QStringLiteral("Mostrar los subitem's en forma descendente"));
    chSbtNroArtAI_ =
        Check("chSbtNroArtAI",
              QStringLiteral("Al insertar subit en sufijo (AI) colocar el Nro. Articulo"));
    chkSBTForzarARTenAI_ =
        Check("chkSBTForzarARTenAI", QStringLiteral("Forzar Codigo Articulo en Sufijo AI"));
    chSbtFuncionCargaPor_ = Check(
        "chSbtFuncionCargaPor", QStringLiteral("Habilitar carga Cantidad/Unitario - Cantidad/FOB"));
    check1_ = Check("Check1", QStringLiteral("Agregar Articulo nuevo en catalogo"));
    check2_ = Check("Check2", QStringLiteral("Mostrar los 100 primeros articulos"));
    check3_ = Check("Check3", QStringLiteral("Guardar FOB y Kg Neto Unitario en Catalogo"));
    chFlgArtModSub_ =
        Check("chFlgArtModSub", QStringLiteral("Modificar los cambios del articulo en catálogo"));
    check4_ = Check("Check4", QStringLiteral("En armado cambiar \"Cod Art.\" por \"Otros\""));
    check5_ = Check("Check5", QStringLiteral("No borrar sufijos al cambiar NCM"));
    chByArt_ = Check("chByArt", QStringLiteral("en el armado tener en cuenta Código de Articulo"));
    chVfySbtDup_ = Check(
        "chVfySbtDup",
        QStringLiteral("Verificar Subitem's duplicados por problemas de redondeo en factura"));
    chkNoCalcularLiquidacion_ =
        Check("Chk_NoCalcularLiquidacion",
              QStringLiteral("No Calcular LIQUIDACION (Agiliza armado de items)"));
    opARMARITEM1_ = new QRadioButton(
        QStringLiteral("Ordenar Item's por Posición Arancelaria Ascendente"), this);
    opARMARITEM1_->setObjectName(QStringLiteral("opARMARITEM1"));
    opARMARITEM2_ =
        new QRadioButton(QStringLiteral("Ordenar Item's por orden de cargar en subitem's"), this);
    opARMARITEM2_->setObjectName(QStringLiteral("opARMARITEM2"));
    chkEnviarComExt_ =
        Check("chkEnviarComExt",
              QStringLiteral("Comisiones al Exterior: Cuando no posea transferir valor 0 (CERO)"));
    txtRIN_ = Texto("txtRIN", this);
    txtRNI_ = Texto("TxtRNI", this);
    txtIndMaxArancel_ = Texto("txtIndMaxArancel", this);
    txtPrefPorc_ = Texto("txtPrefPorc", this);
    chCANCSinStock_ = Check("chCANCSinStock", QStringLiteral("Carga manual sin Stock"));
    chINSTEMPPerMer_ = Check("chINSTEMPPerMer", QStringLiteral("Restar Mermas y Perdidas"));
    chINSTEMPVDE_ =
        Check("chINSTEMPVDE", QStringLiteral("Habilitar Modo: Valor Decimal Extendido, valido si "
                                             "tiene que descargar valores muy chicos"));
    lstImpresoras_ = new QListWidget(this);
    lstImpresoras_->setObjectName(QStringLiteral("LstImpresoras"));
    for (QLineEdit* t : {txtRIN_, txtRNI_, txtIndMaxArancel_, txtPrefPorc_}) {
        ClCntrl::Vincular(ctx, t);
        t->installEventFilter(this);
    }

    // Layout: options of the goods on the left, the rest on the right.
    auto* operaciones = new QGroupBox(QStringLiteral("Operaciones"), this);
    auto* lo = new QFormLayout(operaciones);
    lo->addRow(QStringLiteral("Ordenar internos por:"), cboListado_);
    lo->addRow(chkMostrarOperaciones_);
    auto* caratula = new QGroupBox(QStringLiteral("Caratula"), this);
    (new QVBoxLayout(caratula))->addWidget(chVendedorxNombre_);
    auto* subitems = new QGroupBox(QStringLiteral("Subitem's"), this);
    auto* ls = new QVBoxLayout(subitems);
    for (QCheckBox* c :
         {chSbtMantCodart_, chSbtMantDatos_, chSbtMostrarAsc_, chSbtNroArtAI_, chkSBTForzarARTenAI_,
          chSbtFuncionCargaPor_, check1_, check2_, check3_, chFlgArtModSub_, check5_})
        ls->addWidget(c);
    auto* armado = new QGroupBox(QStringLiteral("Armado de Item's"), this);
    auto* la = new QVBoxLayout(armado);
    for (QWidget* w :
         std::initializer_list<QWidget*>{check4_, chByArt_, chVfySbtDup_, chkNoCalcularLiquidacion_,
                                         opARMARITEM1_, opARMARITEM2_, chkEnviarComExt_})
        la->addWidget(w);
    auto* iva = new QGroupBox(QStringLiteral("Valores IVA"), this);
    auto* li = new QFormLayout(iva);
    li->addRow(QStringLiteral("Inscripto"), txtRIN_);
    li->addRow(QStringLiteral("No Inscripto"), txtRNI_);
    auto* diem = new QGroupBox(QStringLiteral("DIEM-CHINA"), this);
    auto* ld = new QFormLayout(diem);
    ld->addRow(QStringLiteral("Ind. Max. Arancel"), txtIndMaxArancel_);
    ld->addRow(QStringLiteral("Preferencia Porcentual"), txtPrefPorc_);
    auto* canc = new QGroupBox(QStringLiteral("CANCELACIONES"), this);
    (new QVBoxLayout(canc))->addWidget(chCANCSinStock_);
    auto* insumos = new QGroupBox(QStringLiteral("INSUMOS TEMPORALES"), this);
    auto* ln = new QVBoxLayout(insumos);
    ln->addWidget(chINSTEMPPerMer_);
    ln->addWidget(chINSTEMPVDE_);
    auto* impresoras = new QGroupBox(QStringLiteral("Impresoras"), this);
    (new QVBoxLayout(impresoras))->addWidget(lstImpresoras_);
    lstImpresoras_->setMaximumHeight(110);

    auto* izquierda = new QVBoxLayout;
    izquierda->addWidget(operaciones);
    izquierda->addWidget(caratula);
    izquierda->addWidget(subitems);
    izquierda->addStretch(1);
    auto* derecha = new QVBoxLayout;
    derecha->addWidget(armado);
    auto* valores = new QHBoxLayout;
    valores->addWidget(iva);
    valores->addWidget(diem);
    derecha->addLayout(valores);
    derecha->addWidget(canc);
    derecha->addWidget(insumos);
    derecha->addWidget(impresoras);
    auto* cuerpo = new QHBoxLayout;
    cuerpo->addLayout(izquierda);
    cuerpo->addLayout(derecha);
    auto* todo = new QVBoxLayout(this);
    todo->addLayout(cuerpo);
    todo->addWidget(new QLabel(QStringLiteral("ESC [Salir]"), this));

    Cargar();
}

void FrmConGen::Cargar() {
    try {
        Configuracion c;
        LeerGeneral(ctx_.rutaIni(), c);
        const QLocale loc;
        cboListado_->setCurrentIndex(c.LISTADO == 0 ? 0 : 1);
        chkMostrarOperaciones_->setChecked(c.OperacionesMostrarTODO);
        chVendedorxNombre_->setChecked(c.VendedorOrderxNombre);
        chSbtMantCodart_->setChecked(c.SbtMantCodart);
        chSbtMantDatos_->setChecked(c.SbtMantDatos);
        chSbtMostrarAsc_->setChecked(c.SbtMostrarAsc);
        chSbtNroArtAI_->setChecked(c.SbtNroArtAI);
        chkSBTForzarARTenAI_->setChecked(c.SbtForzarNroArtAI);
        chSbtFuncionCargaPor_->setChecked(c.SbtFuncionCargaPor);
        check1_->setChecked(c.MODIFCAT == 2);
        check2_->setChecked(c.PRIMR100 == 2);
        check3_->setChecked(c.VALORCAT == 2);
        chFlgArtModSub_->setChecked(c.MODARTSUB == QStringLiteral("S"));
        check4_->setChecked(c.FlgIdArtTOOtros);
        chByArt_->setChecked(c.GROUPBYART);
        chVfySbtDup_->setChecked(c.VrySbtDup == QStringLiteral("S"));
        chkNoCalcularLiquidacion_->setChecked(c.NOCALCLIQU);
        (c.ARMARITEM == 1 ? opARMARITEM1_ : opARMARITEM2_)->setChecked(true);
        chkEnviarComExt_->setChecked(c.EnviarComExt);
        txtRIN_->setText(loc.toString(c.IVARIN, 'g', 15));
        txtRNI_->setText(loc.toString(c.IVARNI, 'g', 15));
        txtIndMaxArancel_->setText(loc.toString(c.DIEMCHINA_IndMaxArancel, 'g', 15));
        txtPrefPorc_->setText(loc.toString(c.DIEMCHINA_PrefPorc, 'g', 15));

        SettingsStore& s = ctx_.settings();
        chCANCSinStock_->setChecked(s.GetSetting(kGeneral, kOBJ, QStringLiteral("CancelManual"),
                                                 QStringLiteral("N")) == QStringLiteral("S"));
        const bool insumos = ctx_.config().SupplyTemporaryInstalado;
        chINSTEMPPerMer_->setEnabled(insumos);
        chINSTEMPVDE_->setEnabled(insumos);
        chINSTEMPPerMer_->setChecked(s.GetSetting(QStringLiteral("KORVEN"), kOBJ,
                                                  QStringLiteral("INSTMP.RestarPerMer"),
                                                  QStringLiteral("N")) == QStringLiteral("S"));
        chINSTEMPVDE_->setChecked(s.GetSetting(QStringLiteral("SupplyLink"),
                                               QStringLiteral("CONFIG"), QStringLiteral("opVDE"),
                                               QStringLiteral("N")) == QStringLiteral("S"));
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 [Leer Config] %3")
                                    .arg(e.numero())
                                    .arg(e.descripcion(), e.origen()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    LeeImpresoras(QPrinterInfo::availablePrinterNames());
}

void FrmConGen::LeeImpresoras(const QStringList& nombres) {
    lstImpresoras_->clear();
    impresoras_.clear();
    const QString actual = ctx_.config().DEVICENAME;
    for (const QString& n : nombres) {
        if (impresoras_.size() == MaxImpresoras) {
            // The form's table holds ten printers.
            ctx_.dialogos().Mensaje(QStringLiteral("9 / Subíndice fuera del intervalo Seccion "
                                                   "[KORVEN.frmConGen.LeeImpresoras]"),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
            return;
        }
        impresoras_ << n;
        lstImpresoras_->addItem(n);
        if (n == actual)
            lstImpresoras_->setCurrentRow(lstImpresoras_->count() - 1);
    }
}

void FrmConGen::Escribir(const char* clave, const QString& valor) {
    IniFile::Escribir(kGeneral, QLatin1String(clave), valor, ctx_.rutaIni());
}

bool FrmConGen::Guardar() {
    if (!EsNumeroTecleado(txtIndMaxArancel_->text())) {
        ctx_.dialogos().Mensaje(
            QStringLiteral("El campo Indice Maximo Arancel debe tener un valor númerico"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        txtIndMaxArancel_->setFocus();
        return false;
    }
    if (!EsNumeroTecleado(txtPrefPorc_->text())) {
        ctx_.dialogos().Mensaje(
            QStringLiteral("El campo Preferencia Porcentual debe tener un valor númerico"),
            QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        txtPrefPorc_->setFocus();
        return false;
    }
    Configuracion& c = ctx_.config();
    SettingsStore& s = ctx_.settings();

    c.LISTADO = cboListado_->currentIndex();
    Escribir("LISTADO", QString::number(c.LISTADO));
    c.GROUPBYART = chByArt_->isChecked();
    Escribir("GROUPBYART", SN(chByArt_));
    c.MODIFCAT = check1_->isChecked() ? 2 : 1;
    Escribir("MODIFCAT", SN(check1_));
    c.PRIMR100 = check2_->isChecked() ? 2 : 1;
    Escribir("PRIMR100", SN(check2_));
    c.VALORCAT = check3_->isChecked() ? 2 : 1;
    Escribir("VALORCAT", SN(check3_));
    c.FlgIdArtTOOtros = check4_->isChecked();
    Escribir("FlgIdArtTOOtros", SN(check4_));
    c.ARMARITEM = opARMARITEM1_->isChecked() ? 1 : 2;
    Escribir("ARMARITEM", QString::number(c.ARMARITEM));
    c.VrySbtDup = SN(chVfySbtDup_);
    Escribir("VrySbtDup", c.VrySbtDup);
    c.SbtNroArtAI = chSbtNroArtAI_->isChecked();
    Escribir("SbtNroArtAI", SN(chSbtNroArtAI_));
    c.NOCALCLIQU = chkNoCalcularLiquidacion_->isChecked();
    Escribir("NOCALCLIQU", SN(chkNoCalcularLiquidacion_));

    // The two modes of the supplies exclude each other.
    if (c.SupplyTemporaryInstalado) {
        QString restar = SN(chINSTEMPPerMer_);
        if (chINSTEMPVDE_->isChecked())
            restar = QStringLiteral("N");
        c.INSTMP_RestarPerMer = restar == QStringLiteral("S");
        s.SaveSetting(QStringLiteral("KORVEN"), kOBJ, QStringLiteral("INSTMP.RestarPerMer"),
                      restar);
        s.SaveSetting(QStringLiteral("SupplyLink"), QStringLiteral("CONFIG"),
                      QStringLiteral("opVDE"), SN(chINSTEMPVDE_));
    }

    if (QListWidgetItem* i = lstImpresoras_->currentItem()) {
        c.DEVICENAME = i->text();
        c.DRIVERNAME.clear();
        c.PORT.clear();
        Escribir("DEVICENAME", c.DEVICENAME);
    }

    const QString rin = PonerPuntoDecimal(txtRIN_->text().trimmed());
    const QString rni = PonerPuntoDecimal(txtRNI_->text().trimmed());
    Escribir("IVARIN", rin);
    Escribir("IVARNI", rni);
    c.IVARIN = NumeroTecleado(ReemplazarSeparadorDecimal(rin));
    c.IVARNI = NumeroTecleado(ReemplazarSeparadorDecimal(rni));

    c.OperacionesMostrarTODO = chkMostrarOperaciones_->isChecked();
    Escribir("OperacionesMostrarTODO", SN(chkMostrarOperaciones_));
    c.VendedorOrderxNombre = chVendedorxNombre_->isChecked();
    Escribir("VendedorOrderxNombre", SN(chVendedorxNombre_));
    c.SbtMantCodart = chSbtMantCodart_->isChecked();
    Escribir("SbtMantCodart", SN(chSbtMantCodart_));
    c.SbtMantDatos = chSbtMantDatos_->isChecked();
    Escribir("SbtMantDatos", SN(chSbtMantDatos_));
    c.SbtMostrarAsc = chSbtMostrarAsc_->isChecked();
    Escribir("SbtMostrarAsc", SN(chSbtMostrarAsc_));
    c.SbtForzarNroArtAI = chkSBTForzarARTenAI_->isChecked();
    Escribir("SbtForzarNroArtAI", SN(chkSBTForzarARTenAI_));
    c.SbtFuncionCargaPor = chSbtFuncionCargaPor_->isChecked();
    Escribir("SbtFuncionCargaPor", SN(chSbtFuncionCargaPor_));
    c.MODARTSUB = SN(chFlgArtModSub_);
    Escribir("MODARTSUB", c.MODARTSUB);
    c.EnviarComExt = chkEnviarComExt_->isChecked();
    Escribir("EnviarComExt", SN(chkEnviarComExt_));
    c.DIEMCHINA_IndMaxArancel = NumeroTecleado(txtIndMaxArancel_->text());
    Escribir("DIEMCHINA-IndMaxArancel", PonerPuntoDecimal(txtIndMaxArancel_->text().trimmed()));
    c.DIEMCHINA_PrefPorc = NumeroTecleado(txtPrefPorc_->text());
    Escribir("DIEMCHINA-PrefPorc", PonerPuntoDecimal(txtPrefPorc_->text().trimmed()));
    c.CancelManual = chCANCSinStock_->isChecked();
    s.SaveSetting(kGeneral, kOBJ, QStringLiteral("CancelManual"), SN(chCANCSinStock_));
    return true;
}

void FrmConGen::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_C && (e->modifiers() & Qt::ControlModifier)) {
        reject();
        return;
    }
    QDialog::keyPressEvent(e);
}

// Ctrl+C leaves the screen, from the text boxes too.
bool FrmConGen::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress || evento->type() == QEvent::ShortcutOverride) {
        auto* k = static_cast<QKeyEvent*>(evento);
        if (k->key() == Qt::Key_C && (k->modifiers() & Qt::ControlModifier)) {
            if (evento->type() == QEvent::KeyPress)
                reject();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

void FrmConGen::done(int r) {
    if (!cerrando_) {
        if (!Guardar())
            return;
        cerrando_ = true;
    }
    QDialog::done(r);
}

} // namespace korven
