#include "liquidation/HojasListado.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>

namespace korven {

QString HojasListado::Rotulo(const QString& etiqueta) {
    static const QHash<QString, QString> rotulos{
        {QStringLiteral("LbItem"), QStringLiteral("Posición")},
        {QStringLiteral("LbNaladisa"), QStringLiteral("Naladisa")},
        {QStringLiteral("LbLista"), QStringLiteral("Lista")},
        {QStringLiteral("LbEstMerc"), QStringLiteral("Est. Merc.")},
        {QStringLiteral("LbTotalKNeto"), QStringLiteral("Kg Neto")},
        {QStringLiteral("LbPaisOrigen"), QStringLiteral("País Origen")},
        {QStringLiteral("LbPaisProc"), QStringLiteral("País Proc.")},
        {QStringLiteral("LbUnidadEstadistica"), QStringLiteral("Unid. Est.")},
        {QStringLiteral("LbCantidad"), QStringLiteral("Cantidad")},
        {QStringLiteral("LbAjusteInc"), QStringLiteral("Ajuste Inc.")},
        {QStringLiteral("LbAjusteDed"), QStringLiteral("Ajuste Ded.")},
        {QStringLiteral("LbFob"), QStringLiteral("FOB")},
        {QStringLiteral("LbFlete"), QStringLiteral("Flete")},
        {QStringLiteral("LbSeguro"), QStringLiteral("Seguro")}};
    return rotulos.value(etiqueta, etiqueta);
}

void HojasListado::Dibujar(QPagedPaintDevice& dispositivo) const {
    dispositivo.setPageOrientation(QPageLayout::Portrait);
    dispositivo.setPageMargins(QMarginsF(15, 12, 15, 12), QPageLayout::Millimeter);
    QPainter p(&dispositivo);
    const QRectF area(QPointF(0, 0), QSizeF(dispositivo.width(), dispositivo.height()));

    // The font: fixed width, no larger than 10 points, small enough for the widest line.
    int ancho = 80;
    for (const ListadoImpreso& l : listados_) {
        for (const QString& linea : l.lineas)
            ancho = std::max<int>(ancho, linea.size());
    }
    QFont fuente = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fuente.setStyleHint(QFont::Monospace);
    qreal puntos = 10;
    for (; puntos > 5; puntos -= 0.5) {
        fuente.setPointSizeF(puntos);
        if (QFontMetricsF(fuente, &dispositivo)
                .horizontalAdvance(QString(ancho, QLatin1Char('M'))) <= area.width())
            break;
    }
    fuente.setPointSizeF(puntos);
    QFont negrita = fuente;
    negrita.setBold(true);
    const qreal alto = QFontMetricsF(fuente, &dispositivo).lineSpacing();
    const qreal ascenso = QFontMetricsF(fuente, &dispositivo).ascent();

    int pagina = 0;
    qreal y = 0;
    bool primera = true;
    const auto nuevaPagina = [&](const QString& titulo) {
        if (!primera)
            dispositivo.newPage();
        primera = false;
        ++pagina;
        p.setFont(negrita);
        p.drawText(QPointF(0, ascenso), titulo);
        const QString numero = QStringLiteral("Página %1").arg(pagina);
        p.drawText(
            QPointF(area.width() - QFontMetricsF(negrita, &dispositivo).horizontalAdvance(numero),
                    ascenso),
            numero);
        p.drawLine(QPointF(0, alto * 1.2), QPointF(area.width(), alto * 1.2));
        p.setFont(fuente);
        y = alto * 2;
    };
    const auto linea = [&](const QString& titulo, const QString& texto) {
        if (y + alto > area.height())
            nuevaPagina(titulo);
        p.drawText(QPointF(0, y + ascenso), texto);
        y += alto;
    };
    for (const ListadoImpreso& l : listados_) {
        const QString titulo =
            l.itemCero ? QStringLiteral("Liquidación del interno %1 - Item 0").arg(interno_)
                       : QStringLiteral("Liquidación del interno %1 - Items").arg(interno_);
        nuevaPagina(titulo);
        if (l.itemCero) {
            // The header section: two captions and values a line.
            for (int i = 0; i < l.etiquetas.size(); i += 2) {
                QString texto;
                for (int j = i; j < std::min<int>(i + 2, l.etiquetas.size()); ++j)
                    texto += ImpresionLiquidacion::Ajustar(
                        ImpresionLiquidacion::Ajustar(
                            Rotulo(l.etiquetas.at(j).first) + QLatin1Char(':'), 13) +
                            l.etiquetas.at(j).second,
                        40);
                linea(titulo, texto.trimmed());
            }
            linea(titulo, QString());
        }
        for (const QString& texto : l.lineas)
            linea(titulo, texto);
    }
}

QString HojasListado::GuardarPdf(const QString& archivo) const {
    if (!QFileInfo(archivo).absoluteDir().exists())
        return QStringLiteral("No se puede escribir el archivo %1.").arg(archivo);
    QFile::remove(archivo);
    QPdfWriter pdf(archivo);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setResolution(300);
    pdf.setTitle(QStringLiteral("Liquidación del interno %1").arg(interno_));
    pdf.setCreator(QStringLiteral("KORVEN"));
    Dibujar(pdf);
    if (!QFileInfo(archivo).isFile() || QFileInfo(archivo).size() == 0)
        return QStringLiteral("No se puede escribir el archivo %1.").arg(archivo);
    return {};
}

QString HojasListado::Imprimir(const QString& impresora) const {
    const QPrinterInfo info = impresora.trimmed().isEmpty()
                                  ? QPrinterInfo::defaultPrinter()
                                  : QPrinterInfo::printerInfo(impresora.trimmed());
    if (info.isNull())
        return impresora.trimmed().isEmpty()
                   ? QStringLiteral("No hay ninguna impresora instalada.")
                   : QStringLiteral("No se encontró la impresora %1.").arg(impresora.trimmed());
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(QStringLiteral("Liquidación del interno %1").arg(interno_));
    if (!printer.isValid())
        return QStringLiteral("No se encontró la impresora %1.").arg(info.printerName());
    Dibujar(printer);
    return {};
}

} // namespace korven
