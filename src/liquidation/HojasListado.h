#pragma once

#include "liquidation/ImpresionLiquidacion.h"

#include <QList>
#include <QString>

class QPagedPaintDevice;
class QPrinter;

namespace korven {

// The pages of the printed reports: a title line with the Operation and the page number, item
// 0's captions as a header section, and the lines in a fixed-width font sized so that the
// widest line fits the page. Each report starts on a new page.
class HojasListado {
public:
    HojasListado(QList<ListadoImpreso> listados, QString interno)
        : listados_(std::move(listados)), interno_(std::move(interno)) {}

    // Paints every page on the device, whose orientation is set here (portrait).
    void Dibujar(QPagedPaintDevice& dispositivo) const;
    // Writes the pages as PDF; the failure's text, or empty.
    QString GuardarPdf(const QString& archivo) const;
    // Sends the pages to the printer of that name, or the system's default one when empty,
    // without a dialog; the failure's text, or empty when printed.
    QString Imprimir(const QString& impresora) const;

    // The caption printed before each of item 0's values.
    static QString Rotulo(const QString& etiqueta);

private:
    QList<ListadoImpreso> listados_;
    QString interno_;
};

} // namespace korven
