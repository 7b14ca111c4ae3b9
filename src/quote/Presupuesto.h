#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace korven {

class AppContext;

// The work behind the client's quote: what it reads of an Operation, the broker's concepts and
// the references it keeps, the amount paid on account and the HTML text built from the section
// templates. No widgets; the screen shows what it answers.
class Presupuesto {
public:
    // One row of the liquidation totals: its mark ("P", "C", "G" or another) and both amounts.
    struct FilaLiq {
        QString concepto, pgc;
        double peso = 0, dolar = 0;
    };
    // Dollar and peso totals of one mark.
    struct Total {
        double dolar = 0, peso = 0;
    };
    struct Caratula {
        QString email, servidor; // sender's address and mail server (KORVEN.ini)
        QString acuenta;         // factura6 when numeric, else empty
        QString despachante, cliente, domicilio, clienteEmail;
        double fob = 0, flete = 0, seguro = 0, ajInc = 0, ajDed = 0;
        double paseFob = 0, paseFlete = 0, paseSeguro = 0;
        double baseImp = 0, baseIva = 0;
        QList<FilaLiq> liq;
        Total despacho, cobrar, garantizar; // "P", "C", "G"
    };
    struct Concepto {
        QString concepto;
        double peso = 0, dolar = 0;
    };
    struct Referencia {
        QString referencia, valor;
    };
    // Everything the HTML text needs, as the screen holds it: the header and liquidation as
    // read (less the rows the clerk took out), and what the screen adds.
    struct Datos {
        Caratula car;
        QString interno, comentario;
        QList<Referencia> referencias;
        QList<Concepto> conceptos;
        double pase = 0;
        Total operativos;
        double acuenta = 0;
        bool hayAcuenta = false; // the a-cuenta text was numeric
    };

    Presupuesto(AppContext& ctx, QString interno);

    // The header and the liquidation totals, the peso amounts at the rate given. False (with
    // nothing read) when the Operation has no header.
    bool LeerCaratula(double pase, Caratula& c);
    QList<Concepto> Conceptos();
    QList<Referencia> Referencias();
    QString Comentario();

    // The rows the clerk picks from (concepts and references of the system).
    QStringList ConceptosDelSistema();
    QStringList ReferenciasDelSistema();

    // False when the concept is already in the quote. The amount goes to pesos or dollars and
    // the other currency is 0.
    bool AgregarConcepto(const QString& concepto, double valor, bool enDolares);
    void BorrarConcepto(const QString& concepto);
    // False when the reference is already there.
    bool AgregarReferencia(const QString& referencia, const QString& valor);
    void BorrarReferencia(const QString& referencia);
    // Stores the amount paid on account (0 when the text is no number).
    void GrabarACuenta(const QString& acuenta);

    // The folder of the section templates: "seccion" of the program folder, or the one under
    // the data folder the build copies beside the program.
    static QString CarpetaSecciones(const QString& directorioPrograma);
    // Builds the HTML text from the templates of the folder. Every value is HTML-escaped; the
    // comment keeps its line ends as <br>. False with the fault's description when a template
    // cannot be read.
    static bool Armar(const Datos& d, const QString& carpeta, QString& html, QString* error);
    // Text safe inside HTML: & < > " ' as entities.
    static QString Escapar(const QString& texto);

private:
    AppContext& ctx_;
    QString interno_;
};

} // namespace korven
