#pragma once

#include "liquidation/GeneracionLiquidacion.h"

#include <QHash>
#include <QString>
#include <QVariant>

namespace korven {

class AppContext;
class Conexion;

// What the window of an assembly run shows. A run without a window (korven-admin, tests,
// benchmarks) leaves every call empty.
class ProgresoArmado {
public:
    virtual ~ProgresoArmado() = default;
    // Stage 1 to 10 begins (terminada false) or ends; the window repaints.
    virtual void Etapa(int /*etapa*/, bool /*terminada*/) {}
    // pbSUF and Pb1.
    virtual void BarraSufijos(int /*valor*/, int /*maximo*/) {}
    virtual void Barra(int /*valor*/, int /*maximo*/) {}
    // lbITM.
    virtual void Item(const QString& /*texto*/) {}
    // lbInsumos and Image9 come into view.
    virtual void MostrarInsumos() {}
    // Shows a report in the shared result window; false when there is no window, and the run
    // then shows it as a message titled "Resultados".
    virtual bool MostrarDatos(const QString& /*texto*/) { return false; }
};

// The header values the run reads once, after the grouping.
struct CaratulaArmado {
    bool existe = false;
    QString idsubreg, cuitcliente, motivodestsuspensiva;
    double fobdivisas = 0, valoraprorratear = 0, fletedivisas = 0, segurodivisas = 0;
    double dckgneto = 0, dccomext = 0;
    QString dcestmerc, dcpaisorigen, dcpaisdestino, dcstandard, dcregalias;
    bool dcforzarestmerc = false, dcforzarpaisorigen = false; // "S" is true, NULL false
    QString onccaacuerdo, onccaelaborador, onccaespecie, onccafaneador, onccamatadero,
        onccameccoorgbio, onccares3106, onccasispro, onccacategoria, onccacortes;
    QString opcionesiva, opcionesganancias;
};

// One assembly run of one Operation: what its stages share. Every statement of the run goes
// through the connection of INTERNOS (c); the other entities are read through theirs, which in
// a working installation are the same connection, so the whole run is one transaction.
//
// Run-wide results live in the context: ArmadoResultado, the five regime flags, CalcMultas,
// CoefExport, CalculoAEC.
class CorridaArmado {
public:
    CorridaArmado(AppContext& ctx, QString interno, ProgresoArmado& progreso);

    AppContext& ctx;
    Conexion& c;         // INTERNOS
    Conexion& personal;  // PERSONAL: clientes, VentajasRel
    Conexion& ncm;       // NCM: the nomenclator
    Conexion& systablas; // SYSTABLAS
    const QString interno;
    ProgresoArmado& progreso;

    CaratulaArmado car;         // read by ReadCaratula after the grouping
    ClienteLiquidacion cliente; // read with the header
    bool importacion = true;    // sta.cstaimpexp is "I"
    double TotalFobOperacion = 0;
    int OrdenItems = 2; // 1 by position, 2 in order of loading
    // The run was ended (its window closes): no further stage runs.
    bool terminada = false;
    // The option of the store: the article of a group comes from subitems.otros.
    bool FlgIdArtTOOtros = false;

    // The Operation's number as an SQL literal: 'X' with apostrophes doubled.
    QString X() const;
    // RedondeoSql of INTERNOS: the store's rounding of expr with the decimals of the mask.
    QString Redondeo(const QString& expr, const QString& mascara) const;
    // SqlNumero with the decimal point of INTERNOS.
    QString Numero(const QVariant& valor) const;
    // The next value of the column orden of groupsubitems, idrel or sysflag for this
    // Operation: rows are numbered in the order the run writes them, and read back in it.
    long long SiguienteOrden(const QString& tabla);
    // After a set statement wrote rows with their own numbering, the next number is taken
    // from the table again.
    void OlvidarOrden(const QString& tabla);

    // Reads the header values and the client (after the grouping, as the run does).
    void LeerCaratula();

    // A report in the shared result window (or a message "Resultados" without a window).
    void MostrarDatos(const QString& texto);
    // Sends a group of goods lines to the inputs component: the root line and the others
    // separated by "|". Without the component, that it is not installed is an error of the
    // run. A false answer is error 11101.
    void EnviarGrupoIdSub(long long idRoot, const QString& lista);
    // Asks the destination of a spare part of the common external tariff (the dialog
    // "Destino del repuesto"), which keeps its answer in the settings; then reads the answer
    // (section "AEC", key the Operation, default "N") into ctx.CalculoAEC.
    void PreguntarAEC();
    // Keeps "N" in the settings section "AEC" under the Operation.
    void GuardarAEC_N();

private:
    QHash<QString, long long> ordenes_;
};

} // namespace korven
