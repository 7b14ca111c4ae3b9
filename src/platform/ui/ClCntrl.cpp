#include "platform/ui/ClCntrl.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>

namespace korven {

namespace {

QString Tag(const QWidget* w) {
    return w->property("Tag").toString();
}

// A paste takes the clipboard's text without its control characters before the field cuts it
// to its maximum length, so that what is dropped does not use up room.
class FiltroPegado : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override {
        if (evento->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(evento)->matches(QKeySequence::Paste)) {
            auto* txt = qobject_cast<QLineEdit*>(objeto);
            if (txt && !txt->isReadOnly()) {
                txt->insert(SinControles(QGuiApplication::clipboard()->text()));
                return true;
            }
        }
        return QObject::eventFilter(objeto, evento);
    }
};

void PonerColor(QWidget* w, const QColor& c) {
    QPalette p = w->palette();
    p.setColor(QPalette::Base, c);
    w->setPalette(p);
}

} // namespace

ClCntrl::ClCntrl(AppContext& ctx, QObject* parent)
    : QObject(parent), ctx_(ctx), separador_(SeparadorDecimal()) {}

QColor ClCntrl::ColorVB(quint32 bgr) {
    return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                  static_cast<int>((bgr >> 16) & 0xFF));
}

void ClCntrl::sLinkText(QLineEdit* txt) {
    if (txt_)
        txt_->removeEventFilter(this);
    txt_ = txt;
    if (!txt)
        return;
    if (!parent())
        setParent(txt);
    txt->installEventFilter(this);
    SoloTexto(txt);
    connect(txt, &QLineEdit::textChanged, this, [this] { Change(); });
}

void ClCntrl::sLinkListBox(QListWidget* lst) {
    lst_ = lst;
    if (lst && !parent())
        setParent(lst);
}

void ClCntrl::sLinkCBoBox(QComboBox* cbo) {
    cbo_ = cbo;
    if (cbo && !parent())
        setParent(cbo);
}

ClCntrl* ClCntrl::Vincular(AppContext& ctx, QLineEdit* txt) {
    auto* c = new ClCntrl(ctx, txt);
    c->sLinkText(txt);
    return c;
}

QString ClCntrl::Obtener_Sep_Decim() {
    separador_ = SeparadorDecimal();
    return separador_;
}

int ClCntrl::LstBuscarStr(const QString& texto) {
    if (!lst_)
        return -1;
    int encontrada = -1;
    for (int i = 0; i < lst_->count(); ++i) {
        if (lst_->item(i)->text().startsWith(texto, Qt::CaseInsensitive)) {
            encontrada = i;
            break;
        }
    }
    lst_->setCurrentRow(encontrada);
    return encontrada;
}

int ClCntrl::BuscarCBO(const QString& texto) {
    if (!cbo_)
        return -1;
    int encontrada = -1;
    for (int i = 0; i < cbo_->count(); ++i) {
        if (cbo_->itemText(i).startsWith(texto, Qt::CaseInsensitive)) {
            encontrada = i;
            break;
        }
    }
    cbo_->setCurrentIndex(encontrada);
    return encontrada;
}

void ClCntrl::SoloTexto(QLineEdit* txt) {
    if (!txt)
        return;
    txt->installEventFilter(new FiltroPegado(txt));
    connect(txt, &QLineEdit::textChanged, txt, [txt](const QString& texto) {
        const QString limpio = SinControles(texto);
        if (limpio.size() == texto.size())
            return;
        const int pos = txt->cursorPosition();
        const int antes = static_cast<int>(SinControles(texto.left(pos)).size());
        txt->setText(limpio);
        txt->setCursorPosition(antes);
    });
}

void ClCntrl::VaciarTxt(QWidget* form) {
    if (!form)
        return;
    for (QLineEdit* t : form->findChildren<QLineEdit*>())
        t->clear();
}

void ClCntrl::GotFocus() {
    const QString tag = Tag(txt_);
    if (tag.endsWith(QStringLiteral("#F6"))) {
        // The colour tells the user that F6 lists this field.
        PonerColor(txt_, ColorVB(ColorF6));
        txt_->selectAll();
    } else if (!tag.startsWith(QStringLiteral("BB"))) {
        PonerColor(txt_, ColorVB(ColorFoco));
        txt_->selectAll();
    }
}

void ClCntrl::LostFocus() {
    if (!Tag(txt_).startsWith(QStringLiteral("BB")))
        PonerColor(txt_, ColorVB(ColorBlanco));
}

void ClCntrl::Change() {
    // Filling a form does not count: the forms raise the flag only once they are loaded.
    if (!ctx_.FormularioDeDatos || ctx_.InternoActual.isEmpty())
        return;
    const QString interno = ctx_.InternoActual;
    try {
        ctx_.stores()
            .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set factura8 = 'S' where interno = ?"),
                      {interno});
        ctx_.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno,
                                    QString());
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion [KORVEN.ClCntrl.Change]::%3")
                                    .arg(e.numero())
                                    .arg(e.descripcion(), e.origen()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

// Moves the focus as Tab (or Shift-Tab) would from the linked text box.
void ClCntrl::Pasar(bool adelante) {
    QKeyEvent tab(QEvent::KeyPress, adelante ? Qt::Key_Tab : Qt::Key_Backtab,
                  adelante ? Qt::NoModifier : Qt::ShiftModifier);
    QCoreApplication::sendEvent(txt_, &tab);
}

bool ClCntrl::eventFilter(QObject* objeto, QEvent* evento) {
    // A text box being destroyed is no longer a QLineEdit when it gives up the focus: nothing is
    // done for it then (nor may it be reached through txt_).
    auto* txt = qobject_cast<QLineEdit*>(objeto);
    if (txt == nullptr || txt != txt_)
        return QObject::eventFilter(objeto, evento);
    switch (evento->type()) {
    case QEvent::FocusIn:
        GotFocus();
        break;
    case QEvent::FocusOut:
        LostFocus();
        break;
    case QEvent::KeyPress: {
        auto* k = static_cast<QKeyEvent*>(evento);
        const Qt::KeyboardModifiers mods =
            k->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
        if ((k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) && mods == Qt::NoModifier) {
            Pasar(true);
            return true;
        }
        if (k->key() == Qt::Key_Up && mods == Qt::NoModifier) {
            Pasar(false);
            return true;
        }
        if (k->key() == Qt::Key_Down && mods == Qt::NoModifier) {
            Pasar(true);
            return true;
        }
        // The numeric pad's decimal key types the system's separator, whatever the keyboard's.
        if ((k->modifiers() & Qt::KeypadModifier) &&
            (k->key() == Qt::Key_Period || k->key() == Qt::Key_Comma) && !separador_.isEmpty()) {
            const int tecla = separador_ == QStringLiteral(",") ? Qt::Key_Comma : Qt::Key_Period;
            QKeyEvent sep(QEvent::KeyPress, tecla, mods, separador_);
            QCoreApplication::sendEvent(txt_, &sep);
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(objeto, evento);
}

} // namespace korven
