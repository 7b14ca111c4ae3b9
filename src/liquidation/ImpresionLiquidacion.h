#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <functional>

namespace korven {

class AppContext;

// One printed report: the lines of the printing table it shows, in a fixed-width font, and,
// for item 0, the captions of its header section (name of the label, value).
struct ListadoImpreso {
    bool itemCero = false;
    QList<QPair<QString, QString>> etiquetas;
    QStringList lineas;
};

// The printed liquidation of an Operation's items: writes the listing line by line into the
// printing table of the store PERSONAL and answers the reports to print from it. The table is
// shared by every workstation; each one writes and reads only the lines of its own "puesto"
// (machine name and process), emptied at each print. The whole print is one transaction.
class ImpresionLiquidacion {
public:
    explicit ImpresionLiquidacion(AppContext& ctx, QString puesto = PuestoLocal());

    // This process's workstation mark: the machine's name and the process id.
    static QString PuestoLocal();
    // Cuts the text to the width, or pads it on the right with blanks.
    static QString Ajustar(const QString& texto, int ancho);

    // Writes the items desde..hasta of the Operation. False when refused or failed (the message
    // has been shown). avance(item, ultimo) is called before each item.
    bool pr_ImprimirLiq(int desde, int hasta, const QString& interno, bool subitems,
                        const std::function<void(int, int)>& avance = {});

    // The reports of the last print: item 0's first, when it was in the range, then the other
    // items' one.
    const QList<ListadoImpreso>& Listados() const { return listados_; }
    // The lines of this workstation in the printing table, in order.
    QStringList LineasDeTabla();
    const QString& Puesto() const { return puesto_; }

private:
    AppContext& ctx_;
    QString puesto_;
    QList<ListadoImpreso> listados_;
};

} // namespace korven
