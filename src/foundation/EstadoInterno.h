#pragma once

#include <QColor>
#include <QMap>
#include <QString>

namespace korven {

class AppContext;

// What VerDatos decided for the controls of the hub, by control name. The hub keeps one and
// hands it to every VerDatos: a control that a run does not touch keeps what it showed, since
// the rules touch some controls only in some cases and an error leaves what was written so far.
struct EstadoDetalle {
    QMap<QString, QString> textos;
    QMap<QString, QColor> colores;
    QMap<QString, bool> habilitados;
    QMap<QString, bool> visibles;

    // State of the form: the kind of sub-regime ("T" for "TG...", "P" otherwise), cstaimpexp in
    // one character ("N" when the sub-regime is unknown), whether the header is complete.
    QString idsubreg;
    QString tipoSubRegimen;
    QString cstaimpexp;
    QString factura8;
    bool caratulaCompleta = false;
};

// The status of an Operation, derived each time from its tables; nothing of it is stored.
class EstadoInterno {
public:
    static const QString Completo;   // "COMPLETO!"
    static const QString Incompleto; // "INCOMPLETO"
    static const QString Generado;   // "GENERADO!"
    static const QString SinGenerar; // "SIN GENERAR"

    explicit EstadoInterno(AppContext& ctx) : ctx_(ctx) {}

    // Recomputes everything the hub shows into estado. An error is told to the operator
    // ("Seccion Verdatos::") and answers false, with what was decided so far in estado.
    bool VerDatos(const QString& interno, EstadoDetalle& estado);

    // factura8 of the header: "S" when the Operation changed since its last assembly. Throws
    // KorvenError when the store refuses.
    QString LeerFactura8(const QString& interno);
    // Marks the Operation to be assembled again: factura8 "S" and its AEC value cleared.
    void MarcarCambiado(const QString& interno);

private:
    void Calcular(const QString& interno, EstadoDetalle& e);

    AppContext& ctx_;
};

} // namespace korven
