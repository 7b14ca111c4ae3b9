#pragma once

// Stores with the nomenclator and the suffixes of the reference data, made once per engine for a
// whole test program, and a context whose dialogs keep the details of every input box.

#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/ScriptedDialogs.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QAbstractItemView>
#include <QBrush>
#include <QStringList>
#include <QTest>
#include <map>
#include <memory>

namespace korven::test {

// Keeps every step of a dialogue in order: "!" and the text of a message, "?" and the text of a
// question, "prompt|title|maximum|default" of an input box (a list screen of the test may add
// its own steps).
class DialogosGrabados : public ScriptedDialogs {
public:
    void Mensaje(const QString& texto, const QString& titulo, Icono icono) override {
        pasos << "!" + texto;
        ScriptedDialogs::Mensaje(texto, titulo, icono);
    }
    bool Pregunta(const QString& texto, const QString& titulo, Icono icono) override {
        pasos << "?" + texto;
        return ScriptedDialogs::Pregunta(texto, titulo, icono);
    }
    std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo,
                                      int largoMaximo, const QString& porDefecto) override {
        pasos
            << QStringLiteral("%1|%2|%3|%4").arg(pregunta, titulo).arg(largoMaximo).arg(porDefecto);
        return ScriptedDialogs::PedirTexto(pregunta, titulo, largoMaximo, porDefecto);
    }
    QStringList pasos;
};

// One set of stores per engine available to the run, with the reference data loaded.
class BasesNomenclador {
public:
    TestStores* Para(Motor motor) {
        auto it = bases_.find(motor);
        if (it != bases_.end())
            return it->second.get();
        if (!TestStores::Disponible(motor))
            return nullptr;
        auto ts = std::make_unique<TestStores>(motor);
        schema::CrearOActualizar(ts->stores());
        schema::CargarDatosReferencia(ts->stores(), schema::CarpetaDatos(ts->directorio()));
        return (bases_[motor] = std::move(ts)).get();
    }

private:
    std::map<Motor, std::unique_ptr<TestStores>> bases_;
};

// A context of its own over the stores, with recording dialogs and the nomenclator's
// component and screens registered.
struct Contexto {
    explicit Contexto(TestStores& ts) : ctx(ts.stores(), dialogos, ts.settings(), ts.directorio()) {
        RegistrarComponentesNomenclador(ctx.componentes());
        RegistrarPantallasNomenclador(ctx.pantallas());
    }
    DialogosGrabados dialogos;
    AppContext ctx;
};

// The stores of the row's engine ("motor"), or a skip when the engine is not available.
#define BASES_O_SALTAR(ts)                                                                         \
    QFETCH(int, motor);                                                                            \
    TestStores* ts = bases_.Para(static_cast<Motor>(motor));                                       \
    if (!ts)                                                                                       \
        QSKIP("PostgreSQL no está disponible en esta corrida");

// Adds the engine to the name of a data row: "<name> / sqlite".
inline QByteArray ConMotor(const QString& nombre, Motor motor) {
    return (nombre + (motor == Motor::SQLite ? QStringLiteral(" / sqlite")
                                             : QStringLiteral(" / postgresql")))
        .toUtf8();
}

// The rows of a list or grid, their cells joined by "|" without the empty ones at the end, and
// "*" in front of a row in the colour of the position itself.
QStringList Filas(QAbstractItemView* vista) {
    const QAbstractItemModel* m = vista->model();
    QStringList r;
    for (int i = 0; i < m->rowCount(); ++i) {
        QStringList c;
        for (int j = 0; j < m->columnCount(); ++j)
            c << m->index(i, j).data().toString();
        while (!c.isEmpty() && c.last().isEmpty())
            c.removeLast();
        const QVariant fondo = m->index(i, 0).data(Qt::BackgroundRole);
        r << (fondo.value<QBrush>().color() == QColor(214, 237, 214) ? "*" : "") + c.join('|');
    }
    return r;
}

} // namespace korven::test
