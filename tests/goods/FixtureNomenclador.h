#pragma once

// Stores with the nomenclator and the suffixes of the reference data, made once per engine for a
// whole test program, and a context whose dialogs keep the details of every input box.

#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/ScriptedDialogs.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QStringList>
#include <QTest>
#include <map>
#include <memory>

namespace korven::test {

// Keeps "prompt|title|maximum|default" of every input box it answers.
class DialogosGrabados : public ScriptedDialogs {
public:
    std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo,
                                      int largoMaximo, const QString& porDefecto) override {
        pedidos
            << QStringLiteral("%1|%2|%3|%4").arg(pregunta, titulo).arg(largoMaximo).arg(porDefecto);
        return ScriptedDialogs::PedirTexto(pregunta, titulo, largoMaximo, porDefecto);
    }
    QStringList pedidos;
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

// Adds the engine to the name of a data row: "<name> / sqlite".
inline QByteArray ConMotor(const QString& nombre, Motor motor) {
    return (nombre + (motor == Motor::SQLite ? QStringLiteral(" / sqlite")
                                             : QStringLiteral(" / postgresql")))
        .toUtf8();
}

} // namespace korven::test
