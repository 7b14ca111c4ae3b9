#include "assembly/ArmadoItems.h"

#include "assembly/AgrupacionSubItems.h"
#include "assembly/ConstruccionItems.h"
#include "assembly/ControlesArmado.h"
#include "assembly/ProrrateoTotales.h"
#include "liquidation/GeneracionLiquidacion.h"
#include "liquidation/LiquidacionOperacion.h"
#include "liquidation/ReglasLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QMetaObject>
#include <memory>

namespace korven {

namespace {

const QStringList kEntidades = {QStringLiteral("INTERNOS"), QStringLiteral("PERSONAL"),
                                QStringLiteral("NCM"), QStringLiteral("SYSTABLAS")};

bool Empieza(const QString& texto, std::initializer_list<const char*> prefijos) {
    for (const char* p : prefijos)
        if (texto.startsWith(QLatin1String(p)))
            return true;
    return false;
}

// The run flags of the context an assembly sets.
struct MarcasCorrida {
    explicit MarcasCorrida(const AppContext& c)
        : resultado(c.ArmadoResultado),
          aec(c.CalculoAEC), regimen{c.FlagDto1439, c.FlagDto1439A1, c.FlagD1330A6, c.FlagD1330A7,
                                     c.FlagD1330A8},
          pendiente(c.LiquidacionPendiente), multas(c.CalcMultas), coefExport(c.CoefExport),
          coeficiente(c.CalcularCoeficiente) {}
    void Poner(AppContext& c) const {
        c.ArmadoResultado = resultado;
        c.CalculoAEC = aec;
        c.FlagDto1439 = regimen[0];
        c.FlagDto1439A1 = regimen[1];
        c.FlagD1330A6 = regimen[2];
        c.FlagD1330A7 = regimen[3];
        c.FlagD1330A8 = regimen[4];
        c.LiquidacionPendiente = pendiente;
        c.CalcMultas = multas;
        c.CoefExport = coefExport;
        c.CalcularCoeficiente = coeficiente;
    }
    QString resultado, aec, regimen[5];
    bool pendiente, multas, coefExport, coeficiente;
};

} // namespace

ArmadoItems::ArmadoItems(AppContext& ctx, const QString& interno, ProgresoArmado& progreso)
    : ctx_(ctx), r_(std::in_place, ctx, interno, progreso) {}

bool ArmadoItems::Ejecutar() {
    // The same few statements run once per group and per item: prepared once for the run.
    SentenciasPreparadas preparadas;
    // What the run changes outside the stores, put back for another attempt.
    const MarcasCorrida antes(ctx_);
    const int vistos = ctx_.Interacciones();
    int intento = 0;
    try {
        EnTransaccion(
            ctx_.stores(), kEntidades,
            [&](Transaccion&) {
                if (intento++ > 0) {
                    antes.Poner(ctx_);
                    const QString interno = r_->interno;
                    ProgresoArmado& progreso = r_->progreso;
                    r_.emplace(ctx_, interno, progreso);
                    etapa_ = 0;
                }
                Generar();
                if (ctx_.ArmadoResultado == QLatin1String("SI")) {
                    // The hand-off to the view of item 0, which calculates every item and
                    // writes the totals and the amounts of the rows.
                    ctx_.LiquidacionPendiente = true;
                    LiquidacionOperacion(ctx_, r_->c)
                        .Calcular(r_->interno, [this](const QString& s) { r_->progreso.Item(s); });
                }
            },
            [&] { return ctx_.Interacciones() == vistos; });
    } catch (const KorvenError& e) {
        Fallo(e.numero(), e.descripcion(), e.origen());
        return false;
    } catch (const std::exception& e) {
        Fallo(0, QString::fromLocal8Bit(e.what()), QStringLiteral("ArmarItem.Generar"));
        return false;
    }
    return true;
}

void ArmadoItems::Fallo(int numero, const QString& texto, const QString& origen) {
    // The transaction is gone: the Operation is as it was, and stays to be assembled.
    ctx_.ArmadoResultado = QStringLiteral("NO");
    ctx_.dialogos().Mensaje(QStringLiteral("%1 - %2 [ArmarItem.Generar]:%3 : %4")
                                .arg(numero)
                                .arg(texto)
                                .arg(etapa_)
                                .arg(origen),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

void ArmadoItems::Etapa(int etapa, bool terminada) {
    etapa_ = etapa;
    r_->progreso.Etapa(etapa, terminada);
}

void ArmadoItems::Generar() {
    AgrupacionSubItems agrupacion(*r_);
    ProrrateoTotales prorrateo(*r_);
    ConstruccionItems items(*r_);
    ControlesArmado controles(*r_);
    Conexion& c = r_->c;
    const QString X = r_->X();
    const bool insumos = ctx_.componentes().Instalado(QStringLiteral("SupplyLink.Main"));

    // 1. The suffixes checked again.
    Etapa(1, false);
    agrupacion.Limpiar();
    agrupacion.Normalizar();
    if (!agrupacion.Validar() || r_->terminada)
        return;
    Etapa(1, true);

    // 2. Groups, links and regime flags; then the header, the regime and the client.
    Etapa(2, false);
    agrupacion.Agrupar();
    agrupacion.MarcarRegimen();
    r_->LeerCaratula();
    Etapa(2, true);

    // 3. The FOB prorated, the common data, the merged duplicates.
    Etapa(3, false);
    if (!prorrateo.ProrratearFob() || r_->terminada)
        return;
    prorrateo.DatosComunes();
    if (ctx_.config().VrySbtDup == QLatin1String("S"))
        agrupacion.BuscarDuplicados();
    Etapa(3, true);

    // 4. Gross kilos.
    Etapa(4, false);
    prorrateo.KilosBrutos();
    Etapa(4, true);

    // 5. The items.
    Etapa(5, false);
    items.GenerarItems();
    Etapa(5, true);

    // 6. The liquidation rows, the advantages, the common external tariff.
    Etapa(6, false);
    c.Ejecutar(QStringLiteral("delete from itemliq where interno = ") + X);
    c.Ejecutar(QStringLiteral("delete from itemventaja where interno = ") + X);
    if (!ctx_.config().NOCALCLIQU) {
        GeneracionLiquidacion(ctx_, c).GenerarOperacion(
            r_->interno, r_->car.idsubreg, r_->importacion, r_->cliente,
            [this](int n, int total, long long id) {
                r_->progreso.Item(QStringLiteral("Creando liquidación Item: ") +
                                  QString::number(id));
                r_->progreso.Barra(n, total);
            });
    }
    items.Ventajas();
    items.TarifaExternaComun();
    Etapa(6, true);

    // 7. End of the process.
    Etapa(7, false);
    items.Cerrar();
    Etapa(7, true);

    // 8. Integrity.
    Etapa(8, false);
    c.Ejecutar(QStringLiteral("Update item set itmodif = '' where interno = ") + X);
    ControlesArmado(*r_).VerificarIntegridad();
    items.ItemsGyD();
    Etapa(8, true);

    // 9. Inputs, only with the inputs component.
    if (insumos) {
        Etapa(9, false);
        ActualizarInsumos();
        if (r_->terminada)
            return;
        Etapa(9, true);
    }

    // External-trade amount and net kilos over the finished items.
    if (r_->car.dccomext > 0) {
        double comExt = r_->car.dccomext;
        double fob = r_->TotalFobOperacion;
        prorrateo.ProrratearComExt(comExt, fob);
    }
    if (r_->car.dckgneto > 0) {
        double kilos = r_->car.dckgneto;
        prorrateo.Prorratear_ItemCeroEx(kilos);
    }

    // 10. Marks of the positions.
    if (Empieza(r_->car.idsubreg, {"IC", "LAPI", "ZFE", "DIR", "ECA", "IG"})) {
        Etapa(10, false);
        MarcasNcm();
        Etapa(10, true);
    }
}

void ArmadoItems::ActualizarInsumos() {
    r_->progreso.MostrarInsumos();
    if (!SubregimenConInsumos(r_->car.idsubreg))
        return;
    std::unique_ptr<QObject> link =
        ctx_.componentes().Crear(QStringLiteral("SupplyLink.Main"), ctx_);
    link->setProperty("Interno", r_->interno);
    const Recordset items = r_->c.Abrir(
        QStringLiteral(
            "select id from item where interno = ? and cancelaciones = 'OK' order by id"),
        {r_->interno});
    for (int i = 0; i < items.RecordCount(); ++i) {
        const QVariant id = items.Fila(i).at(0);
        const Recordset subs =
            r_->c.Abrir(QStringLiteral("select idsub from groupsubitems where interno = ? and id = "
                                       "? order by orden"),
                        {r_->interno, id});
        QStringList lista;
        for (int j = 0; j < subs.RecordCount(); ++j)
            lista << EsNull(subs.Fila(j).at(0));
        bool ok = false;
        const bool llamado =
            QMetaObject::invokeMethod(link.get(), "EnviarNroItem", Q_RETURN_ARG(bool, ok),
                                      Q_ARG(qlonglong, static_cast<qlonglong>(EsNumero(id))),
                                      Q_ARG(QString, lista.join(QLatin1Char('|'))));
        if (!llamado || !ok) {
            ctx_.ArmadoResultado = QStringLiteral("NO");
            r_->terminada = true;
            return;
        }
    }
}

void ArmadoItems::MarcasNcm() {
    std::unique_ptr<QObject> validador =
        ctx_.componentes().Crear(QStringLiteral("ValidadorNCM"), ctx_);
    const Recordset rs = r_->c.Abrir(
        QStringLiteral("select distinct ncm from item where interno = ? and id <> 0 order by ncm"),
        {r_->interno});
    bool lapi = false, estampillas = false;
    for (int i = 0; i < rs.RecordCount(); ++i) {
        QVariantMap marcas;
        QMetaObject::invokeMethod(validador.get(), "MarcasPosicion",
                                  Q_RETURN_ARG(QVariantMap, marcas),
                                  Q_ARG(QString, EsNull(rs.Fila(i).at(0))));
        lapi = lapi || marcas.value(QStringLiteral("lapi")).toBool();
        estampillas = estampillas || marcas.value(QStringLiteral("estampillas")).toBool();
    }
    if (lapi)
        ctx_.dialogos().Mensaje(QStringLiteral("Se han encontrado posiciones con LAPI"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
    if (estampillas)
        ctx_.dialogos().Mensaje(QStringLiteral("Se han encontrado posiciones con ESTAMPILLAS"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
}

} // namespace korven
