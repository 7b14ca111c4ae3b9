#pragma once

#include "platform/ComponentRegistry.h"
#include "platform/Configuracion.h"
#include "platform/Dialogos.h"
#include "platform/Pantallas.h"

#include <QString>
#include <memory>

namespace korven {

class SettingsStore;
class StoreDirectory;
class QueryDesk;

// The process-wide state of one running Korven: services, settings and run flags. The program
// makes one at start and hands it to whatever needs it; each test makes its own.
class AppContext {
public:
    AppContext(StoreDirectory& stores, Dialogos& dialogos, SettingsStore& settings,
               QString directorioPrograma);
    ~AppContext();

    StoreDirectory& stores() { return stores_; }
    Dialogos& dialogos() { return dialogos_; }
    // How many messages, questions and screens have been shown so far: an action whose store
    // work conflicted is done again only when it showed nothing meanwhile.
    int Interacciones() const { return dialogos_.vistos; }
    void ContarInteraccion() { ++dialogos_.vistos; }
    SettingsStore& settings() { return settings_; }
    ComponentRegistry& componentes() { return componentes_; }
    Pantallas& pantallas() { return pantallas_; }
    // Opens a screen by name (see Pantallas).
    QVariant AbrirModal(const QString& nombre, const QVariantMap& args = {}) {
        ContarInteraccion();
        return pantallas_.AbrirModal(*this, nombre, args);
    }
    Configuracion& config() { return config_; }
    const Configuracion& config() const { return config_; }

    // The program directory, normalised (ends in the directory separator).
    const QString& directorioPrograma() const { return directorioPrograma_; }
    // Normalised program directory + "KORVEN.ini".
    QString rutaIni() const;

    // The three QueryDesk.Main instances kept for the life of the process.
    QueryDesk& queryDesk(int n);

    // Run flags.
    QString ArmadoResultado;           // "SI", "No", "NO" of the last assembly
    bool LiquidacionPendiente = false; // the liquidation must be rewritten
    QString VentajaElegida;            // the code picked in FrmVentajas; empty after a cancel
    QString FlagDto1439 = "N";
    QString FlagDto1439A1 = "N";
    QString FlagD1330A6 = "N";
    QString FlagD1330A7 = "N";
    QString FlagD1330A8 = "N";
    // Assembly and liquidation: the fines option and the export coefficient of the hub, the
    // answer on the common external tariff kept for the running system ("", "R", "P", "N"),
    // and the flag that makes concept 020 compute a new coefficient.
    bool CalcMultas = false;
    bool CoefExport = false;
    QString CalculoAEC;
    bool CalcularCoeficiente = false;
    // The date mask kept by the start routine (nothing reads it).
    QString MascaraFecha = "yyyyMMdd";

    // The Operation open on this workstation, and whether a data form is on screen (its text
    // boxes then mark the Operation changed).
    QString InternoActual;
    bool FormularioDeDatos = false;

    // Goods entry: set when the suffixes of an article were carried over by search onto a new
    // line (they are then confirmed again), and the total of the Operation's proration values
    // kept when the proration codes screen closes.
    bool SufijosDeArticulo = false;
    double TotalProrrateo = 0;

private:
    // The dialogs given, counting what goes through them.
    struct Contados : Dialogos {
        explicit Contados(Dialogos& d) : destino(d) {}
        void Mensaje(const QString& texto, const QString& titulo, Icono icono) override {
            ++vistos;
            destino.Mensaje(texto, titulo, icono);
        }
        bool Pregunta(const QString& texto, const QString& titulo, Icono icono) override {
            ++vistos;
            return destino.Pregunta(texto, titulo, icono);
        }
        std::optional<QString> PedirTexto(const QString& pregunta, const QString& titulo,
                                          int largoMaximo, const QString& porDefecto) override {
            ++vistos;
            return destino.PedirTexto(pregunta, titulo, largoMaximo, porDefecto);
        }
        Dialogos& destino;
        int vistos = 0;
    };

    StoreDirectory& stores_;
    Contados dialogos_;
    SettingsStore& settings_;
    ComponentRegistry componentes_;
    Pantallas pantallas_;
    Configuracion config_;
    QString directorioPrograma_;
    std::unique_ptr<QueryDesk> queryDesks_[3];
};

} // namespace korven
