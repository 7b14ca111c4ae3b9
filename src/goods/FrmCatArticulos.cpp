#include "goods/FrmCatArticulos.h"

#include "foundation/LlamadaComponente.h"
#include "goods/CatalogoArticulos.h"
#include "goods/Sufijos.h"
#include "header/ListasCodigos.h"
#include "header/PickLists.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "platform/ui/AnchoColumnas.h"
#include "platform/ui/ClCntrl.h"
#include "ui_FrmCatArticulos.h"

#include <QKeyEvent>

namespace korven {

const QString FrmCatArticulos::kEstadoCatalogos =
    QStringLiteral("[F6] LISTADOS - [F9] LISTA DE ARTICULO - [F11] IMPRIMIR - [ESC] SALIR");
const QString FrmCatArticulos::kEstadoArticulos =
    QStringLiteral("[ENTER] SELECCIONAR ARTICULO - [+] EXPANDIR - [-] CONTRAER - [F6] BUSCAR - "
                   "[F9] VOLVER - [ESC] SALIR");

namespace {

const QString kAdvertencia = QStringLiteral("Advertencia: CATALOGO");

bool EsEnter(int tecla) {
    return tecla == Qt::Key_Return || tecla == Qt::Key_Enter;
}

// A number of the store as the clerk types it.
QString Tecleado(double valor) {
    return Formato(valor, QStringLiteral("0.######"));
}

} // namespace

FrmCatArticulos::FrmCatArticulos(AppContext& ctx, const QVariantMap&, QWidget* padre)
    : QDialog(padre), ui(std::make_unique<Ui::FrmCatArticulos>()), ctx_(ctx) {
    ui->setupUi(this);
    // Every text box behind its companion; the form's own handling runs before it.
    for (QLineEdit* t : findChildren<QLineEdit*>()) {
        ClCntrl::Vincular(ctx_, t);
        t->installEventFilter(this);
    }
    for (QWidget* w : {static_cast<QWidget*>(ui->ckBiendeUso), static_cast<QWidget*>(ui->chDatos),
                       static_cast<QWidget*>(ui->CmdAgregar), static_cast<QWidget*>(ui->Lst)})
        w->installEventFilter(this);
    ui->CmdAgregar->setAutoDefault(false);
    connect(ui->CmdAgregar, &QPushButton::clicked, this, [this] { AgregarArticuloEx(2); });
    // The catalogue code is typed upper-case; a new code leaves the catalogue in hand.
    connect(ui->TxtIdCatalogo, &QLineEdit::textEdited, this, [this](const QString& texto) {
        if (texto != texto.toUpper()) {
            const int pos = ui->TxtIdCatalogo->cursorPosition();
            ui->TxtIdCatalogo->setText(texto.toUpper());
            ui->TxtIdCatalogo->setCursorPosition(pos);
        }
        catalogo_.clear();
        ui->LbDescCatalogo->clear();
        ui->Lst->clear();
        Habilitar();
    });
    ui->Lst->setFocusPolicy(Qt::NoFocus);
    ui->LbEstado->setText(kEstadoCatalogos);
    Habilitar();
    ui->TxtIdCatalogo->setFocus();
}

FrmCatArticulos::~FrmCatArticulos() = default;

void FrmCatArticulos::Informar(const KorvenError& e, const QString& seccion) {
    ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                                QStringLiteral(" - ") + seccion,
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

// The fields of an article take input in the data mode, once a catalogue is in hand.
void FrmCatArticulos::Habilitar() {
    ui->FrmArticulo->setEnabled(modo_ == 1 && !catalogo_.isEmpty());
    ui->TxtIdCatalogo->setEnabled(modo_ == 1);
}

bool FrmCatArticulos::SeleccionarCatalogo(bool lista) {
    CatalogoArticulos cat(ctx_);
    try {
        if (lista) {
            const auto elegido = cat.ElegirCatalogo();
            if (!elegido)
                return false;
            ui->TxtIdCatalogo->setText(elegido->first);
            ui->LbDescCatalogo->setText(elegido->second);
        } else {
            ui->LbDescCatalogo->setText(cat.BuscarCatalogo(ui->TxtIdCatalogo->text()));
        }
    } catch (const KorvenError& e) {
        Informar(e, QStringLiteral("[ARTICULOS.BUSCAR] "));
        return false;
    }
    const QString codigo = ui->TxtIdCatalogo->text().trimmed();
    const bool conocido = !codigo.isEmpty() && !ui->LbDescCatalogo->text().startsWith(kAdvertencia);
    catalogo_ = conocido ? codigo : QString();
    CargarArticulosbyCatalogo();
    Habilitar();
    return conocido;
}

void FrmCatArticulos::CargarArticulosbyCatalogo() {
    ui->Lst->clear();
    if (catalogo_.isEmpty())
        return;
    try {
        for (const ArticuloCatalogo& a : CatalogoArticulos(ctx_).Articulos(catalogo_)) {
            auto* fila = new QTreeWidgetItem(
                QStringList{a.idArticulo, a.descripcion, a.ncm,
                            Formato(a.precioUnitario, QStringLiteral("00.0000")), a.usuario,
                            FormatoFecha(a.fecha, QStringLiteral("dd/mm/yyyy"))});
            fila->setTextAlignment(3, Qt::AlignRight | Qt::AlignVCenter);
            // The details open under the article.
            const QStringList detalles[] = {
                {QStringLiteral("Sufijos"), a.sufijos},
                {QStringLiteral("Unidad"), a.idUnidad},
                {QStringLiteral("Origen"), a.idPais},
                {QStringLiteral("Kg. Unitario"), Formato(a.kgUnitario, QStringLiteral("00.00"))}};
            for (const QStringList& d : detalles)
                fila->addChild(new QTreeWidgetItem(d));
            ui->Lst->addTopLevelItem(fila);
        }
    } catch (const KorvenError& e) {
        Informar(e, QStringLiteral("[ARTICULOS.BUSCAR] "));
    }
    AjustarColumnas(ui->Lst);
    if (ui->Lst->topLevelItemCount() > 0)
        ui->Lst->setCurrentItem(ui->Lst->topLevelItem(0));
}

void FrmCatArticulos::LimpiarCampos() {
    for (QLineEdit* t : ui->FrmArticulo->findChildren<QLineEdit*>())
        t->clear();
}

bool FrmCatArticulos::AgregarArticuloEx(int modo) {
    Dialogos& d = ctx_.dialogos();
    const QString titulo = QStringLiteral("KORVEN");
    auto detener = [&](const QString& texto, Dialogos::Icono icono, QLineEdit* foco) {
        d.Mensaje(texto, titulo, icono);
        foco->setFocus();
        return false;
    };
    if (catalogo_.isEmpty())
        return false;
    try {
        if (ui->TxtCatalogo->text().trimmed().isEmpty() &&
            ui->TxtArtDesc->text().trimmed().isEmpty())
            return detener(QStringLiteral("Debe ingresar un Nombre o Código de Articulo"),
                           Dialogos::Icono::Informacion, ui->TxtCatalogo);
        if (ui->TxtUnidad->text().trimmed().isEmpty())
            return detener(QStringLiteral("Debe ingresar el Codigo de UNIDAD"),
                           Dialogos::Icono::Exclamacion, ui->TxtUnidad);
        if (!EsNumeroTecleado(ui->TxtUnitario->text()))
            return detener(
                QStringLiteral("Debe ingresar un valor numeric en el campo VALOR UNITARIO"),
                Dialogos::Icono::Exclamacion, ui->TxtUnitario);
        if (ui->TxtPosicion->text().trimmed().isEmpty())
            return detener(QStringLiteral("Debe ingresar una POSICION del Nomenclador"),
                           Dialogos::Icono::Informacion, ui->TxtPosicion);
        const QString sufijos = Sufijos(ctx_).VerificarSufijos(
            ui->TxtPosicion->text().left(14), ui->txtSufijos->text().trimmed(), modo,
            ui->TxtCatalogo->text().trimmed(), ui->LbDescCatalogo->text());
        ui->txtSufijos->setText(sufijos);
        if (sufijos == QStringLiteral("##ERRORNCM##"))
            return false;

        ArticuloCatalogo a;
        a.idCatalogo = catalogo_;
        a.idArticulo = ui->TxtCatalogo->text().trimmed();
        a.descripcion = EsNull(ui->TxtArtDesc->text());
        a.idPais = EsNull(ui->TxtIdpais->text()).trimmed();
        a.idUnidad = EsNull(ui->TxtUnidad->text()).trimmed();
        a.estadoMerc = EsNull(ui->TxtIdEstadoMercaderia->text()).trimmed();
        a.bienDeUso = ui->ckBiendeUso->isChecked() ? QStringLiteral("S") : QStringLiteral("N");
        a.codigoEAN = EsNull(ui->txtCodigoEAN->text());
        a.otros = EsNull(ui->txtOtros->text());
        a.ncm = EsNull(ui->TxtPosicion->text()).trimmed();
        a.sufijos = EsNull(ui->txtSufijos->text());
        a.precioUnitario = NumeroTecleado(ui->TxtUnitario->text());
        a.kgUnitario = NumeroTecleado(ui->txtKgUnitario->text());
        if (!CatalogoArticulos(ctx_).GuardarArticulo(a, false))
            return false;
    } catch (const KorvenError& e) {
        Informar(e, QStringLiteral("[ARTICULOS.AGREGAR]"));
        return false;
    }
    CargarArticulosbyCatalogo();
    if (!ui->chDatos->isChecked())
        LimpiarCampos();
    ui->TxtCatalogo->setFocus();
    return true;
}

void FrmCatArticulos::EliminarArticulo(const QString& catalogo, const QString& articulo) {
    if (catalogo.trimmed().isEmpty() || articulo.trimmed().isEmpty()) {
        ctx_.dialogos().Mensaje(QStringLiteral("Falta parametros.!"));
        return;
    }
    if (!ctx_.dialogos().Pregunta(QStringLiteral("Confirma eliminar el articulo: ") + articulo +
                                  QStringLiteral(" del catalogo: ") + catalogo))
        return;
    try {
        CatalogoArticulos(ctx_).EliminarArticulo(catalogo, articulo);
    } catch (const KorvenError& e) {
        Informar(e, QStringLiteral("[ARTICULOS.ELIMINAR]"));
    }
}

bool FrmCatArticulos::BuscarArticuloSobreCat(const QString& texto, bool lista) {
    if (catalogo_.isEmpty())
        return false;
    CatalogoArticulos cat(ctx_);
    std::optional<ArticuloCatalogo> a;
    try {
        QString codigo = texto.trimmed();
        if (!lista && !codigo.isEmpty())
            a = cat.LeerArticulo(catalogo_, codigo);
        // Not an exact code: the clerk picks the article from those the text finds.
        if (!a && (lista || !codigo.isEmpty())) {
            QVariantMap args;
            args.insert(QStringLiteral("catalogo"), catalogo_);
            args.insert(QStringLiteral("texto"), codigo);
            const QVariant r = ctx_.AbrirModal(QStringLiteral("FrmCatArticulosBuscar"), args);
            if (!r.isValid())
                return false;
            codigo = r.toMap().value(QStringLiteral("articulo")).toString();
            a = cat.LeerArticulo(catalogo_, codigo);
        }
        if (!a)
            return false;
        PickLists listas(ctx_);
        ui->TxtCatalogo->setText(a->idArticulo);
        ui->TxtArtDesc->setText(a->descripcion);
        ui->TxtIdpais->setText(a->idPais);
        ui->TxtdescPais->setText(listas.getPaisDescripcion(a->idPais));
        ui->TxtUnidad->setText(a->idUnidad);
        ui->TxtIdEstadoMercaderia->setText(a->estadoMerc);
        ui->TxtDescMercaderia->setText(listas.getEstadoMercaderiaDescripcion(a->estadoMerc));
        ui->ckBiendeUso->setChecked(a->bienDeUso == QStringLiteral("S"));
        ui->txtCodigoEAN->setText(a->codigoEAN);
        ui->txtOtros->setText(a->otros);
        ui->TxtPosicion->setText(a->ncm);
        ui->txtSufijos->setText(a->sufijos);
        ui->TxtUnitario->setText(Tecleado(a->precioUnitario));
        ui->txtKgUnitario->setText(Tecleado(a->kgUnitario));
    } catch (const KorvenError& e) {
        Informar(e, QStringLiteral("[ARTICULOS.BUSCAR] "));
        return false;
    }
    return true;
}

void FrmCatArticulos::ImprimirCatalogo() {
    try {
        auto c = ctx_.componentes().Crear(QStringLiteral("CataloguePrinter.Main"), ctx_);
        LlamarMiembro(
            *c, "LinkODB",
            {ctx_.stores().getDataConnectionByEntity(QStringLiteral("CATALOGOS")).nombreQt()});
        LlamarMiembro(*c, "Mostrar");
    } catch (const KorvenError& e) {
        Informar(e, QStringLiteral("[ARTICULOS.IMPRIMIR]"));
    }
}

void FrmCatArticulos::Modificar() {
    if (modo_ == 1) {
        modo_ = 2;
        CargarArticulosbyCatalogo();
        ui->LbEstado->setText(kEstadoArticulos);
        ui->Lst->setFocusPolicy(Qt::StrongFocus);
        Habilitar();
        ui->Lst->setFocus();
    } else {
        modo_ = 1;
        ui->LbEstado->setText(kEstadoCatalogos);
        ui->Lst->setFocusPolicy(Qt::NoFocus);
        Habilitar();
        if (catalogo_.isEmpty())
            ui->TxtIdCatalogo->setFocus();
        else
            ui->TxtCatalogo->setFocus();
    }
}

bool FrmCatArticulos::Buscar(QLineEdit* campo) {
    ListasCodigos listas(ctx_);
    const QString codigo = campo->text().trimmed();
    if (campo == ui->TxtIdCatalogo)
        return !SeleccionarCatalogo(false);
    if (campo == ui->TxtCatalogo)
        BuscarArticuloSobreCat(codigo, false);
    else if (campo == ui->TxtIdpais)
        ui->TxtdescPais->setText(listas.BuscarDescripcion(QStringLiteral("PAIS"), codigo));
    else if (campo == ui->TxtIdEstadoMercaderia)
        ui->TxtDescMercaderia->setText(
            listas.BuscarDescripcion(QStringLiteral("ESTADOMERCADERIA"), codigo));
    return false;
}

void FrmCatArticulos::Listar(QLineEdit* campo) {
    ListasCodigos listas(ctx_);
    auto lista = [&](const char* nombre) {
        const QString n = QString::fromLatin1(nombre);
        const QString c = listas.MostrarLista(n, QStringLiteral("Buscar ") + n);
        if (!c.isEmpty()) {
            campo->setText(c);
            Buscar(campo);
        }
    };
    if (campo == ui->TxtIdCatalogo) {
        SeleccionarCatalogo(true);
    } else if (campo == ui->TxtCatalogo) {
        BuscarArticuloSobreCat(campo->text(), true);
    } else if (campo == ui->TxtIdpais) {
        lista("PAIS");
    } else if (campo == ui->TxtUnidad) {
        lista("UNIDADES");
    } else if (campo == ui->TxtIdEstadoMercaderia) {
        lista("ESTADOMERCADERIA");
    } else if (campo == ui->TxtPosicion) {
        try {
            QVariantMap args;
            args.insert(QStringLiteral("texto"),
                        campo->text().replace(QLatin1Char(','), QLatin1Char('.')));
            const QVariant r = ctx_.AbrirModal(QStringLiteral("FrmPosicion"), args);
            if (r.isValid())
                campo->setText(r.toMap().value(QStringLiteral("posicion")).toString());
        } catch (const KorvenError& e) {
            Informar(e, QStringLiteral("[ARTICULOS.BUSCAR] "));
        }
    }
}

bool FrmCatArticulos::TeclaLista(int tecla) {
    QTreeWidgetItem* fila = ui->Lst->currentItem();
    if (fila && fila->parent())
        fila = fila->parent();
    switch (tecla) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (fila && BuscarArticuloSobreCat(fila->text(0), false)) {
            Modificar();
            ui->TxtArtDesc->setFocus();
        }
        return true;
    case Qt::Key_Plus:
        if (fila)
            fila->setExpanded(true);
        return true;
    case Qt::Key_Minus:
        if (fila) {
            fila->setExpanded(false);
            ui->Lst->setCurrentItem(fila);
        }
        return true;
    case Qt::Key_F6:
        if (const auto t = ctx_.dialogos().PedirTexto(QStringLiteral("Ingrese el texto a buscar"),
                                                      QStringLiteral("Buscar"), 50)) {
            if (!t->trimmed().isEmpty() && BuscarArticuloSobreCat(*t, true)) {
                Modificar();
                ui->TxtArtDesc->setFocus();
            }
        }
        return true;
    case Qt::Key_Delete:
        if (fila) {
            EliminarArticulo(catalogo_, fila->text(0));
            CargarArticulosbyCatalogo();
        }
        return true;
    default:
        return false;
    }
}

bool FrmCatArticulos::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objeto, evento);
    auto* k = static_cast<QKeyEvent*>(evento);
    const int tecla = k->key();
    if (tecla == Qt::Key_C && k->modifiers() == Qt::ControlModifier) {
        reject();
        return true;
    }
    if (tecla == Qt::Key_F9) {
        Modificar();
        return true;
    }
    if (tecla == Qt::Key_F11) {
        ImprimirCatalogo();
        return true;
    }
    if (objeto == ui->Lst)
        return TeclaLista(tecla) || QDialog::eventFilter(objeto, evento);
    if (auto* campo = qobject_cast<QLineEdit*>(objeto)) {
        if (EsEnter(tecla))
            return Buscar(campo);
        if (tecla == Qt::Key_F6) {
            Listar(campo);
            return true;
        }
        return QDialog::eventFilter(objeto, evento);
    }
    if (EsEnter(tecla)) {
        if (objeto == ui->CmdAgregar)
            ui->CmdAgregar->click();
        else
            focusNextChild();
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace korven
