#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QString>

class QComboBox;
class QLineEdit;
class QListWidget;
class QWidget;

namespace korven {

class AppContext;

// The companion of a text box, list box or combo box of a data form. Linked to a text box it
// gives the keyboard behaviour of every data form: Enter moves on as Tab does, the arrows up and
// down move back and forth, the field takes a colour while it has the focus (by its "Tag"
// property: ending in "#F6" marks a field with an F6 list, beginning with "BB" keeps its own
// colour), the numeric pad's decimal key types the system separator, and while a data form is
// on screen any change marks the open Operation as changed.
class ClCntrl : public QObject {
    Q_OBJECT
public:
    // Colours as the system keeps them: BGR longs.
    static constexpr quint32 ColorF6 = 14083326;
    static constexpr quint32 ColorFoco = 0xC0FFC0;
    static constexpr quint32 ColorBlanco = 0xFFFFFF;

    explicit ClCntrl(AppContext& ctx, QObject* parent = nullptr);

    // One companion per control; the companion lives as long as the control it is linked to
    // (it becomes the control's child when it has no parent of its own).
    void sLinkText(QLineEdit* txt);
    void sLinkListBox(QListWidget* lst);
    void sLinkCBoBox(QComboBox* cbo);
    // Makes and links a companion for a text box.
    static ClCntrl* Vincular(AppContext& ctx, QLineEdit* txt);

    // Reads the system decimal separator again and answers it.
    QString Obtener_Sep_Decim();
    // Selects the first row of the linked list (or combo box) whose text starts with the text,
    // without regard to case; the index chosen, -1 when no row matches.
    int LstBuscarStr(const QString& texto);
    int BuscarCBO(const QString& texto);
    // Keeps control characters out of a text box, however they come in (typed, pasted or set by
    // the program): NUL and the like are dropped at once; tab and line ends stay. Every text
    // box linked to a companion gets this.
    static void SoloTexto(QLineEdit* txt);
    // Clears every text box of the form.
    static void VaciarTxt(QWidget* form);

    // A BGR long as the colour it names.
    static QColor ColorVB(quint32 bgr);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void GotFocus();
    void LostFocus();
    void Change();
    void Pasar(bool adelante);

    AppContext& ctx_;
    QPointer<QLineEdit> txt_;
    QPointer<QListWidget> lst_;
    QPointer<QComboBox> cbo_;
    QString separador_;
};

} // namespace korven
