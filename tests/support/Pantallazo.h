#pragma once

// Pictures of screens as a clerk sees them on a 1024 x 768 desktop: the frame at the top left,
// the screen centred above the task bar with a title bar drawn over it, and whatever falls off
// the desktop cut away. Saved as PNG in the folder named by KORVEN_PANTALLAZOS; nothing is
// saved when that variable is not set.

#include <QColor>
#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <QString>
#include <QWidget>

namespace korven::test {

inline constexpr QSize kEscritorio{1024, 768};

inline QString CarpetaPantallazos() {
    return qEnvironmentVariable("KORVEN_PANTALLAZOS");
}

// The picture of the screen (and, when given, the frame under it) on the desktop.
inline QPixmap Pantallazo(QWidget* pantalla, QWidget* marco = nullptr) {
    constexpr int titulo = 30, tareas = 40;
    QPixmap escritorio(kEscritorio);
    escritorio.fill(QColor(0x3A, 0x6E, 0xA5));
    QPainter p(&escritorio);
    auto ventana = [&p](QWidget* w, QPoint en) {
        p.fillRect(QRect(en, QSize(w->width(), titulo)), QColor(0x20, 0x30, 0x60));
        p.setPen(Qt::white);
        p.drawText(QRect(en + QPoint(8, 0), QSize(w->width() - 8, titulo)),
                   Qt::AlignVCenter | Qt::AlignLeft, w->windowTitle());
        p.drawPixmap(en + QPoint(0, titulo), w->grab());
    };
    if (marco)
        ventana(marco, {0, 0});
    if (pantalla && pantalla != marco) {
        const int alto = kEscritorio.height() - tareas;
        const QPoint en((kEscritorio.width() - pantalla->width()) / 2,
                        qMax(0, (alto - pantalla->height() - titulo) / 2));
        ventana(pantalla, en);
    }
    p.fillRect(QRect(0, kEscritorio.height() - tareas, kEscritorio.width(), tareas),
               QColor(0x20, 0x20, 0x20));
    return escritorio;
}

// Saves the picture as <folder>/<nombre>.png when a folder is set; the path, or empty.
inline QString GuardarPantallazo(const QString& nombre, QWidget* pantalla,
                                 QWidget* marco = nullptr) {
    const QString carpeta = CarpetaPantallazos();
    if (carpeta.isEmpty())
        return {};
    QDir().mkpath(carpeta);
    const QString ruta = QDir(carpeta).filePath(nombre + QStringLiteral(".png"));
    Pantallazo(pantalla, marco).save(ruta);
    return ruta;
}

} // namespace korven::test
