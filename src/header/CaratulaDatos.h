#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <optional>

namespace korven {

class AppContext;

// The header record of an Operation as the header screen loads and saves it. The screen hands
// its fields over by control name; the work here knows which column each one holds, reads the
// record, checks what the clerk typed and writes it back in one statement.
class CaratulaDatos {
public:
    enum class Tipo {
        Codigo,  // a code with a look-up: the screen fills it and runs its Enter
        Texto,   // plain text
        Importe, // an amount, "00.00"
        Cambio,  // an exchange rate, "0.000000"
        Numero,  // a number as it stands
        Marca,   // a check box, "S" or "N"
        Opcion,  // a list of options: the code
        SoN,     // "S" or "N", anything else empty
        NSiVacio // a code that shows "N" when empty
    };
    struct Campo {
        QString columna;
        QString control;
        Tipo tipo;
    };
    struct Valor {
        Campo campo;
        QString texto; // as the screen shows it
    };
    struct Carga {
        QList<Valor> valores; // in the order of the columns of the record
        QStringList facturas; // the invoice numbers, in their order
    };

    // What the screen holds when it saves: text of each field by control name (check boxes as
    // "S"/"N", the payment facility "S"/"N"/"", the option lists as their codes), the fields
    // the clerk sees, and the invoice list.
    class Pantalla {
    public:
        void Poner(const QString& control, const QString& texto) {
            textos_.insert(control.toLower(), texto);
        }
        QString Texto(const QString& control) const { return textos_.value(control.toLower()); }
        void Visible(const QString& control, bool visible) {
            if (visible)
                visibles_.insert(control.toLower());
            else
                visibles_.remove(control.toLower());
        }
        bool EsVisible(const QString& control) const {
            return visibles_.contains(control.toLower());
        }
        QStringList facturas;

    private:
        QHash<QString, QString> textos_;
        QSet<QString> visibles_;
    };

    enum class Resultado {
        Guardado, // written: the screen closes
        Quedarse, // the screen stays open (on the field named by foco)
        Salir     // the clerk leaves without saving: the screen closes
    };

    explicit CaratulaDatos(AppContext& ctx) : ctx_(ctx) {}

    // The fields of the load, in the order of the columns.
    static QList<Campo> CamposDeCarga();
    // The columns of the update, in their order, with the control each one takes.
    static QList<Campo> CamposDeGuardado();

    // Reads the record; nothing (and the message "No se encontro Interno en base de datos")
    // when there is none.
    std::optional<Carga> Cargar(const QString& interno);
    // The sum of the proration codes of the Operation.
    double SumaProrrateo(const QString& interno);

    // Checks and writes. Asks the clerk through the dialogs service; the shipment date, when
    // valid, is rewritten in the screen's texts as "dd/mm/yyyy".
    Resultado Guardar(const QString& interno, Pantalla& p, QString* foco = nullptr);

    // The invoice numbers joined by ",", cut to 80 characters and freed of the last one.
    static QString Factura1(const QStringList& facturas);
    // The update statement for the screen's texts, with its values bound in the order of the
    // "?" marks: texts as they stand, amounts as numbers read as the clerk typed them.
    struct Sentencia {
        QString sql;
        QVariantList valores;
    };
    static Sentencia SentenciaGuardado(const QString& interno, const Pantalla& p);

private:
    // "Faltan Facturas." when the invoices are asked for and there are none.
    void ControlFacturas(const Pantalla& p);

    AppContext& ctx_;
};

} // namespace korven
