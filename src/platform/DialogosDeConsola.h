#pragma once

#include "platform/Dialogos.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QTextStream>

namespace korven {

class StoreDirectory;

// The dialogs of an administration command: every message and question is printed as it
// comes; a question takes the answer whose text begins its own, else "No" (or, asking for a
// text, its default).
class DialogosDeConsola : public Dialogos {
public:
    DialogosDeConsola(QTextStream& out, QList<QPair<QString, QString>> respuestas = {})
        : out_(out), respuestas_(std::move(respuestas)) {}

    void Mensaje(const QString& texto, const QString& titulo, Icono) override;
    bool Pregunta(const QString& texto, const QString& titulo, Icono) override;
    std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo, int,
                                      const QString& porDefecto) override;

private:
    std::optional<QString> Respuesta(const QString& texto) const;
    QTextStream& out_;
    QList<QPair<QString, QString>> respuestas_;
};

// Points the stores at the configuration file given on the command line (or the one beside the
// program when empty) and loads it; a file named that does not exist is a failure.
void CargarConfiguracionAdmin(StoreDirectory& stores, const QString& config,
                              const QString& directorioPrograma);

} // namespace korven
