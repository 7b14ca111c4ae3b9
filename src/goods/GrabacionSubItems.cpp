#include "goods/GrabacionSubItems.h"

#include "foundation/LlamadaComponente.h"
#include "goods/CatalogoArticulos.h"
#include "goods/SubItemsDatos.h"
#include "goods/Sufijos.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {

using Icono = Dialogos::Icono;

const QString kInternos = QStringLiteral("INTERNOS");

bool Numero(const QString& t) {
    return EsNumeroTecleado(t.trimmed());
}
double Valor(const QString& t) {
    return NumeroTecleado(t.trimmed());
}
QString SinApostrofes(const QString& t) {
    QString r = t;
    return r.replace(QLatin1Char('\''), QLatin1Char(' '));
}
QString SN(bool b) {
    return b ? QStringLiteral("S") : QStringLiteral("N");
}

// The check stopped the save: its message, and where the focus goes.
struct Alto {
    QString texto;
    Icono icono = Icono::Exclamacion;
    QString foco;
};

// A check that stops the save: its message shown, the focus it asks for kept in the result.
ResultadoSubItem Parar(Dialogos& dialogos, ResultadoSubItem& r, const Alto& a) {
    dialogos.Mensaje(a.texto, QStringLiteral("KORVEN"), a.icono);
    r.foco = a.foco;
    return r;
}

} // namespace

GrabacionSubItems::GrabacionSubItems(AppContext& ctx, Dialogos& dialogos, const QString& interno)
    : ctx_(ctx), dialogos_(dialogos), interno_(interno) {}

// The checks the save and the modification share, against the nomenclator and the screen's
// units; an empty text when they pass.
static std::optional<Alto> ChequeosUnidades(AppContext& ctx, const LineaSubItem& l) {
    const QString codEst = l.codigoEstadistica.trimmed();
    if (codEst.isEmpty())
        return Alto{QStringLiteral("Falta unidad estadistica"), Icono::Critico,
                    QStringLiteral("TxtPosicion")};
    const std::optional<UnidadesNcm> u = SubItemsDatos(ctx).Unidades(l.posicion);
    if (u) {
        const QString segunda = QStringLiteral(
            "Para refrescar las unidades del ncm presione ENTER en el campo posición");
        if (u->estadistica != codEst)
            return Alto{QStringLiteral("Error en Codigo de Estadistica debe ser [ ") +
                            u->estadistica + QStringLiteral(" ]"),
                        Icono::Exclamacion, QStringLiteral("TxtPosicion")};
        if (u->derEsp != l.idDerEsp.trimmed()) {
            if (u->derEsp.isEmpty())
                return Alto{QStringLiteral("Esta posición no tiene Unidad del Derecho "
                                           "Especifico, pero en la pantalla tiene [ ") +
                                l.idDerEsp + QStringLiteral(" ]\n\n") + segunda,
                            Icono::Exclamacion,
                            {}};
            return Alto{QStringLiteral("Error en Codigo de Derecho Especifico debe ser [ ") +
                            u->derEsp + QStringLiteral(" ]\n\n") + segunda,
                        Icono::Exclamacion, QStringLiteral("TxtPosicion")};
        }
    }
    if (codEst != QStringLiteral("01") && Valor(l.valorEstadistica) == 0)
        return Alto{QStringLiteral("Debe ingresar un valor mayor a cero en CANTIDA ESTADISTICA"),
                    Icono::Critico, QStringLiteral("TxtValorsobreestadistica")};
    return std::nullopt;
}

static std::optional<Alto> ChequeoKilos(const LineaSubItem& l) {
    const double neto = Valor(l.kgNeto);
    const double bruto = Valor(l.kgBruto);
    if (neto > 0 && bruto > 0 && bruto < neto)
        return Alto{QStringLiteral("KG Neto debe ser Menor que KG Bruto"), Icono::Exclamacion, {}};
    return std::nullopt;
}

static std::optional<Alto> ChequeoCantidades(const LineaSubItem& l) {
    if (l.codigoEstadistica.trimmed() == l.unidad.trimmed() &&
        Valor(l.cantidad) != Valor(l.valorEstadistica))
        return Alto{QStringLiteral("La CANTIDAD DECLARADA ( ") + l.cantidad +
                        QStringLiteral(" ) debe ser igual a CANTIDAD ESTADISTICA ( ") +
                        l.valorEstadistica + QStringLiteral(" )"),
                    Icono::Exclamacion,
                    {}};
    return std::nullopt;
}

// Position, unit and the three amounts; numeric is spelt as each routine spells it.
static std::optional<Alto> ChequeosPosicion(const LineaSubItem& l, const QString& numerico) {
    if (l.posicion.trimmed().size() != 15)
        return Alto{QStringLiteral("Debe ingresar una POSICION del Nomenclador"),
                    Icono::Informacion, QStringLiteral("TxtPosicion")};
    if (l.unidad.trimmed().isEmpty())
        return Alto{QStringLiteral("Debe ingresar el Codigo de UNIDAD"), Icono::Exclamacion,
                    QStringLiteral("TxtUnidad")};
    if (!Numero(l.cantidad))
        return Alto{QStringLiteral("Debe ingresar un valor numerico en el campo CANTIDAD"),
                    Icono::Exclamacion, QStringLiteral("TxtCantidad")};
    if (!Numero(l.unitario))
        return Alto{QStringLiteral("Debe ingresar un valor ") + numerico +
                        QStringLiteral(" en el campo VALOR UNITARIO"),
                    Icono::Exclamacion, QStringLiteral("TxtUnitario")};
    if (!Numero(l.fobTotal))
        return Alto{QStringLiteral("Debe ingresar un valor ") + numerico +
                        QStringLiteral(" en el campo FOB TOTAL"),
                    Icono::Exclamacion, QStringLiteral("TxtFobTotal")};
    return std::nullopt;
}

// The catalogue code must name a catalogue.
static std::optional<Alto> ChequeoCatalogo(AppContext& ctx, const LineaSubItem& l) {
    if (l.idCatalogo.trimmed().isEmpty())
        return std::nullopt;
    const QString d = CatalogoArticulos(ctx).BuscarCatalogo(l.idCatalogo.trimmed());
    if (d.startsWith(QStringLiteral("Advertencia: CATALOGO")))
        return Alto{QStringLiteral("Codigo de catalogo no esta en base de datos."),
                    Icono::Exclamacion, QStringLiteral("TxtIdCatalogo")};
    return std::nullopt;
}

// Builds or re-checks the suffix string of the line, then the customer rule and the forced
// article code. False when the save stops (the message, if any, has been shown).
static bool Sufijar(AppContext& ctx, Dialogos& dialogos, int modo, LineaSubItem& l) {
    const Configuracion& cfg = ctx.config();
    const QString articulo = cfg.SbtNroArtAI && !l.idArticulo.isEmpty() ? l.idArticulo : QString();
    l.sufijos = Sufijos(ctx).VerificarSufijos(l.posicion.left(14), l.sufijos.trimmed(), modo,
                                              articulo, l.descCatalogo);
    if (cfg.CORDANO && !Sufijos::ValidaSufijoCordano(l.posicion, l.sufijos, l.idArticulo)) {
        dialogos.Mensaje(QStringLiteral("Error sufijos AB invàlido ") + l.sufijos +
                             QStringLiteral(" codigo de articulo ") + l.idArticulo,
                         QStringLiteral("KORVEN"), Icono::Exclamacion);
        return false;
    }
    l.sufijos = SinApostrofes(l.sufijos);
    if (cfg.SbtForzarNroArtAI) {
        QString valor = l.idArticulo;
        valor.replace(QLatin1Char('('), QLatin1Char(' '))
            .replace(QLatin1Char(')'), QLatin1Char(' '))
            .replace(QLatin1Char('-'), QLatin1Char(' '));
        const QString r = Sufijos::Reemplazarsufijos(l.sufijos, QStringLiteral("AI"),
                                                     Sufijos::LimpiarValor(valor));
        if (!r.isEmpty())
            l.sufijos = r;
    }
    return true;
}

// The catalogue keeps what the line says of its article.
static void MantenerCatalogo(AppContext& ctx, const LineaSubItem& l) {
    const Configuracion& cfg = ctx.config();
    ArticuloCatalogo a;
    a.idCatalogo = l.idCatalogo.trimmed();
    a.idArticulo = l.idArticulo.trimmed();
    a.descripcion = l.descripcion;
    a.ncm = l.posicion.trimmed();
    a.idUnidad = l.unidad.trimmed();
    if (cfg.VALORCAT == 2) {
        a.precioUnitario = Valor(l.unitario);
        a.kgUnitario = Valor(l.kgUnitario);
    }
    a.idPais = l.idPais.trimmed();
    a.idPaisProc = l.idPaisProc.trimmed();
    a.estadoMerc = l.estadoMerc.trimmed();
    a.sufijos = l.sufijos;
    a.bienDeUso = SN(l.bienDeUso);
    a.codigoEAN = l.codigoEAN;
    a.otros = l.otros;
    a.onccaCategoria = l.onccaCategoria;
    a.onccaCortes = l.onccaCorte;
    CatalogoArticulos(ctx).GuardarArticulo(a, cfg.MODARTSUB != QStringLiteral("S"));
}

static bool ConMantenimientoCatalogo(const AppContext& ctx, const LineaSubItem& l) {
    const Configuracion& cfg = ctx.config();
    const QString cat = l.idCatalogo.trimmed();
    const QString art = l.idArticulo.trimmed();
    return (cfg.MODARTSUB == QStringLiteral("S") || cfg.MODIFCAT == 2) &&
           cat != QStringLiteral("INS") && art != QStringLiteral("INS") && l.catalogoVisible &&
           !cat.isEmpty() && !art.isEmpty();
}

// The reference values of the position are asked for; nobody reads the answer, so a plain
// installation without the component goes on.
static void ValoresCriterio(AppContext& ctx, const LineaSubItem& l) {
    const QString nombre = QStringLiteral("ReferenceValues.Main");
    if (!ctx.componentes().Instalado(nombre))
        return;
    std::unique_ptr<QObject> c = ctx.componentes().Crear(nombre, ctx);
    LlamarMiembro(*c, "GetValoresCriterio",
                  {QStringLiteral("IC01"), l.posicion, l.unidad, l.idPais});
}

static QStringList Entidades(const AppContext& ctx, const LineaSubItem& l) {
    QStringList e{kInternos};
    if (ConMantenimientoCatalogo(ctx, l))
        e << QStringLiteral("CATALOGOS");
    return e;
}

// A line of temporary inputs lives only with its link: the inputs component takes the quantity
// and gives the CIF it discounted; when it refuses, the line goes again.
static bool VincularInsumo(AppContext& ctx, const QString& interno_, const LineaSubItem& linea,
                           long long id) {
    Conexion& cn = ctx.stores().getDataConnectionByEntity(kInternos);
    std::unique_ptr<QObject> link = ctx.componentes().Crear(QStringLiteral("SupplyLink.Main"), ctx);
    AsignarMiembro(*link, "CATNRO", linea.idCatalogo);
    AsignarMiembro(*link, "PRDNRO", linea.idArticulo);
    AsignarMiembro(*link, "Interno", interno_);
    AsignarMiembro(*link, "SUBITEM", id);
    AsignarMiembro(*link, "PRDCAN", Formato(Valor(linea.cantidad), QStringLiteral("00.00")));
    if (LlamarMiembro(*link, "AgregarInsumo").toBool()) {
        cn.Ejecutar(QStringLiteral("update subitems set insumostemp = ?, cancelaciones = 'OK' "
                                   "where interno = ? and id = ?"),
                    {EsNumero(link->property("CIFDescontado")), interno_, id});
        return true;
    }
    cn.Ejecutar(QStringLiteral("delete from subitems where interno = ? and id = ?"),
                {interno_, id});
    return false;
}

ResultadoSubItem GrabacionSubItems::GrabarSubItems(int modoSufijos, LineaSubItem& linea,
                                                   bool deInsumos, bool admiteEAN) {
    ResultadoSubItem r;
    int paso = 0;
    auto parar = [&](const Alto& a) { return Parar(dialogos_, r, a); };
    try {
        paso = 1;
        if (auto a = ChequeosUnidades(ctx_, linea))
            return parar(*a);
        paso = 4;
        if (!Numero(linea.cantidad) || Valor(linea.cantidad) == 0)
            return parar({QStringLiteral("Valor Invalido en CANTIDAD"), Icono::Exclamacion,
                          QStringLiteral("TxtCantidad")});
        paso = 5;
        if (auto a = ChequeoKilos(linea))
            return parar(*a);
        paso = 6;
        linea.valorEstadistica =
            Numero(linea.valorEstadistica)
                ? Formato(Valor(linea.valorEstadistica), QStringLiteral("00.00"))
                : QStringLiteral("0");
        paso = 7;
        if (auto a = ChequeoCantidades(linea))
            return parar(*a);
        paso = 8;
        if (!Numero(linea.unitario) || Valor(linea.unitario) == 0)
            return parar({QStringLiteral("Valor Invalido en PRECIO UNITARIO"), Icono::Exclamacion,
                          QStringLiteral("TxtUnitario")});

        // From here the Operation is marked changed, whatever the rest of the checks say. The
        // store work is done again when it crosses another workstation, as long as nothing has
        // been asked or shown.
        long long id = 0;
        bool preguntado = false, completo = false;
        auto alto = [&](const Alto& a) {
            preguntado = true;
            Parar(dialogos_, r, a);
        };
        EnTransaccion(
            ctx_.stores(), Entidades(ctx_, linea),
            [&](Transaccion&) {
                paso = 9;
                SubItemsDatos(ctx_).MarcarCambio(interno_);
                paso = 10;
                linea.sufijos = SinApostrofes(linea.sufijos);
                linea.descripcion = SinApostrofes(linea.descripcion);
                paso = 11;
                if (!deInsumos && ctx_.config().MODIFCAT == 2 && linea.catalogoVisible)
                    if (auto a = ChequeoCatalogo(ctx_, linea)) {
                        alto(*a);
                        return;
                    }
                paso = 12;
                if (auto a = ChequeosPosicion(linea, QStringLiteral("numerico"))) {
                    alto(*a);
                    return;
                }
                paso = 15;
                preguntado = true;
                if (!Sufijar(ctx_, dialogos_, modoSufijos, linea))
                    return;
                paso = 19;
                if (linea.sufijos.isEmpty())
                    return; // the clerk gave up in the suffix dialogue
                id = SubItemsDatos(ctx_).Insertar(interno_, linea, deInsumos, admiteEAN);
                paso = 20;
                ValoresCriterio(ctx_, linea);
                paso = 21;
                if (deInsumos && !VincularInsumo(ctx_, interno_, linea, id))
                    return;
                paso = 22;
                if (ConMantenimientoCatalogo(ctx_, linea))
                    MantenerCatalogo(ctx_, linea);
                completo = true;
            },
            [&] { return !preguntado; });
        if (!completo)
            return r;
        r.grabado = true;
        r.id = id;
        r.foco =
            linea.catalogoVisible ? QStringLiteral("txtIdArticulo") : QStringLiteral("TxtPosicion");
    } catch (const KorvenError& e) {
        dialogos_.Mensaje(QString::number(e.numero()) + QStringLiteral(" / ") + e.descripcion() +
                              QStringLiteral(" - seccion [KORVEN.Global.GrabarSubItems]::") +
                              QStringLiteral(" LINEA: ") + QString::number(paso),
                          QStringLiteral("KORVEN"), Icono::Critico);
        r = ResultadoSubItem{};
    }
    return r;
}

ResultadoSubItem GrabacionSubItems::ModificarSubItems(int modoSufijos, LineaSubItem& linea,
                                                      long long id, bool admiteEAN) {
    ResultadoSubItem r;
    if (modoSufijos != 1 && modoSufijos != 2)
        return r;
    int paso = 0;
    // The store work is done again when it crosses another workstation, as long as nothing has
    // been asked or shown.
    bool preguntado = false, completo = false;
    int filas = 0;
    auto parar = [&](const Alto& a) {
        preguntado = true;
        Parar(dialogos_, r, a);
    };
    try {
        EnTransaccion(
            ctx_.stores(), Entidades(ctx_, linea),
            [&](Transaccion&) {
                SubItemsDatos(ctx_).MarcarCambio(interno_);
                paso = 1;
                QString posicion = linea.posicion;
                posicion.replace(QLatin1Char(','), QLatin1Char('.'));
                const std::optional<UnidadesNcm> u = SubItemsDatos(ctx_).Unidades(posicion, true);
                if (!u)
                    return parar({QStringLiteral("No se encontro la posición ") + posicion,
                                  Icono::Critico,
                                  {}});
                if (u->estadistica.isEmpty())
                    return parar({QStringLiteral("Error: no hay unidad estadistica"),
                                  Icono::Exclamacion,
                                  {}});
                paso = 2;
                if (auto a = ChequeosUnidades(ctx_, linea))
                    return parar(*a);
                if (auto a = ChequeoCantidades(linea))
                    return parar(*a);
                const Configuracion& cfg = ctx_.config();
                if ((cfg.MODIFCAT == 2 || cfg.MODARTSUB == QStringLiteral("S")) &&
                    linea.idCatalogo.trimmed() != QStringLiteral("INS"))
                    if (auto a = ChequeoCatalogo(ctx_, linea))
                        return parar(*a);
                paso = 3;
                if (auto a = ChequeosPosicion(linea, QStringLiteral("numeric")))
                    return parar(*a);
                paso = 4;
                if (linea.derEspVisible &&
                    (!Numero(linea.derEsp) || linea.derEsp.trimmed() == QStringLiteral(".")))
                    return parar({QStringLiteral("El valor de el campo Derecho Especifico debe ser "
                                                 "númerico"),
                                  Icono::Exclamacion,
                                  {}});
                paso = 5;
                if (auto a = ChequeoKilos(linea))
                    return parar(*a);
                paso = 6;
                linea.sufijos = SinApostrofes(linea.sufijos);
                preguntado = true;
                if (linea.sufijos.trimmed() != QStringLiteral("SIN SUFIJOS") &&
                    !Sufijar(ctx_, dialogos_, modoSufijos, linea))
                    return;
                if (linea.sufijos.isEmpty())
                    return parar({QStringLiteral("Para Grabar es necesario completar los sufijos"),
                                  Icono::Exclamacion,
                                  {}});
                paso = 7;
                linea.descripcion = SinApostrofes(linea.descripcion);
                filas = SubItemsDatos(ctx_).Actualizar(interno_, id, linea, admiteEAN);
                paso = 8;
                ValoresCriterio(ctx_, linea);
                paso = 9;
                if (filas > 0 && ConMantenimientoCatalogo(ctx_, linea))
                    MantenerCatalogo(ctx_, linea);
                completo = true;
            },
            [&] { return !preguntado; });
        if (!completo)
            return r;
        r.grabado = filas > 0;
        r.id = id;
    } catch (const KorvenError& e) {
        dialogos_.Mensaje(QString::number(e.numero()) + QStringLiteral(" / ") + e.descripcion() +
                              QStringLiteral(" - seccion [KORVEN.Global.ModificarSubItems]::") +
                              QStringLiteral(" LINEA: ") + QString::number(paso),
                          QStringLiteral("KORVEN"), Icono::Critico);
        r = ResultadoSubItem{};
    }
    return r;
}

} // namespace korven
