#include "goods/ListaSubItems.h"

#include "foundation/LlamadaComponente.h"
#include "goods/SubItemsDatos.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <string_view>

using namespace std::string_view_literals;

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

QString Seccion(const char* rutina) {
    return QStringLiteral("seccion ") + QString::fromLatin1(rutina) +
           QStringLiteral(" en Formulario FrmSubItems :: ");
}

// The column a list column is ordered by.
const char* const kOrden[] = {"id",  "ncm", "idunidad",  "cantidad", "preciounitario",
                              "fob", "id",  "idarticulo"};

} // namespace

void ListaSubItems::setFiltro(int filtro, const QString& texto) {
    filtro_ = filtro;
    texto_ = texto;
}

void ListaSubItems::setOrden(int columna, bool ascendente) {
    columna_ = columna;
    ascendente_ = ascendente;
}

QString ListaSubItems::Donde(QVariantList* valores) const {
    *valores << interno_;
    QString w = QStringLiteral(" where interno = ?");
    switch (filtro_) {
    case ConKilos:
        return w + QStringLiteral(" and (kgneto>0) ");
    case SinKilos:
        return w + QStringLiteral(" and (kgneto=0) ");
    case ConPaisOrigen:
        return w + QStringLiteral(" and not (idpais = '' or idpais is null) ");
    case SinPaisOrigen:
        return w + QStringLiteral(" and (idpais = '' or idpais is null) ");
    case ConEstado:
        return w + QStringLiteral(" and not (estadomerc = '' or estadomerc is null) ");
    case SinEstado:
        return w + QStringLiteral(" and (estadomerc = '' or estadomerc is null) ");
    case PorPosicion:
        *valores << texto_ + QLatin1Char('%');
        return w + QStringLiteral(" and ncm like ? ");
    case NcmInvalida:
        return w + QStringLiteral(" and length(ncm)<>15 ");
    case SinSufijos:
        return w + QStringLiteral(" and (sufijos='' or sufijos is null)");
    case EstadisticaCero:
        return w + QStringLiteral(" and valorrelacionestadistica = 0");
    default:
        return w + QLatin1Char(' ');
    }
}

QString ListaSubItems::Consulta(QVariantList* valores) const {
    return QStringLiteral("select interno,estadomerc,sufijos,idpais,kgneto,id,ncm,idunidad,"
                          "cantidad,preciounitario,fob,idarticulo,cancelaciones, itfiller, "
                          "descripcion as descr from subitems as a") +
           Donde(valores) +
           (ctx_.config().SbtMostrarAsc ? QStringLiteral(" order by a.id asc")
                                        : QStringLiteral(" order by a.id desc"));
}

ListaSubItems::Totales ListaSubItems::LeerTotales() const {
    QVariantList v;
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select count(*) as n, sum(cantidad) as c, sum(kgneto) as k, sum(fob) as f "
                       "from subitems as a") +
            Donde(&v),
        v);
    Totales t;
    t.lineas = static_cast<int>(EsNumero(rs.Fields(QStringLiteral("n"))));
    t.cantidad = EsNumero(rs.Fields(QStringLiteral("c")));
    t.kgneto = EsNumero(rs.Fields(QStringLiteral("k")));
    t.fob = EsNumero(rs.Fields(QStringLiteral("f")));
    return t;
}

std::vector<ListaSubItems::Fila> ListaSubItems::LeerFilas(int desde, int cuantas,
                                                          int lineas) const {
    QVariantList v;
    const QString donde = Donde(&v);
    QString orden;
    if (columna_ < 0 || columna_ >= Columnas) {
        orden =
            ctx_.config().SbtMostrarAsc ? QStringLiteral("a.id asc") : QStringLiteral("a.id desc");
    } else {
        const QString dir = ascendente_ ? QStringLiteral(" asc") : QStringLiteral(" desc");
        orden = QStringLiteral("a.") + QString::fromLatin1(kOrden[columna_]) + dir +
                QStringLiteral(", a.id") + dir;
    }
    v << cuantas << desde;
    // The number of a line is its place by id, whichever the order shown; in the order by id
    // it follows from the place in the page.
    const bool porId = columna_ < 0 || columna_ >= Columnas || kOrden[columna_] == "id"sv;
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select ") +
            (porId ? QStringLiteral("0 as nro")
                   : QStringLiteral("row_number() over (order by "
                                    "a.id) as nro")) +
            QStringLiteral(", id, ncm, idunidad, cantidad, preciounitario, fob, idarticulo, "
                           "cancelaciones from subitems as a") +
            donde + QStringLiteral(" order by ") + orden + QStringLiteral(" limit ? offset ?"),
        v);
    const bool ascendente =
        porId && (columna_ < 0 || columna_ >= Columnas ? ctx_.config().SbtMostrarAsc : ascendente_);
    const long long total =
        porId && !ascendente ? (lineas >= 0 ? lineas : LeerTotales().lineas) : 0;
    std::vector<Fila> filas;
    filas.reserve(static_cast<size_t>(rs.RecordCount()));
    for (; !rs.Eof(); rs.MoveNext()) {
        Fila f;
        const long long lugar = desde + static_cast<long long>(filas.size());
        f.nro = !porId       ? static_cast<long long>(EsNumero(rs.Fields(0)))
                : ascendente ? lugar + 1
                             : total - lugar;
        f.id = static_cast<long long>(EsNumero(rs.Fields(1)));
        f.ncm = EsNull(rs.Fields(2));
        f.idunidad = EsNull(rs.Fields(3));
        f.cantidad = EsNumero(rs.Fields(4));
        f.preciounitario = EsNumero(rs.Fields(5));
        f.fob = EsNumero(rs.Fields(6));
        f.idarticulo = EsNull(rs.Fields(7));
        f.cancelada = EsNull(rs.Fields(8)).trimmed() == QStringLiteral("OK");
        filas.push_back(std::move(f));
    }
    return filas;
}

int ListaSubItems::Eliminar(const QList<long long>& ids, Dialogos& dialogos) {
    int eliminadas = 0;
    try {
        Transaccion tx(ctx_.stores(), {kInternos});
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
        for (long long id : ids) {
            Recordset rs = cn.Abrir(QStringLiteral("select cancelaciones,idcatalogo,idarticulo,id "
                                                   "from subitems where interno = ? and id = ?"),
                                    {interno_, id});
            if (rs.Eof())
                continue;
            if (EsNull(rs.Fields(QStringLiteral("cancelaciones"))).trimmed() ==
                QStringLiteral("OK")) {
                // The link with the inputs goes first; without it the line stays.
                bool suelto = false;
                try {
                    std::unique_ptr<QObject> link =
                        ctx_.componentes().Crear(QStringLiteral("SupplyLink.Main"), ctx_);
                    AsignarMiembro(*link, "Interno", interno_);
                    AsignarMiembro(*link, "CATNRO",
                                   EsNull(rs.Fields(QStringLiteral("idcatalogo"))));
                    AsignarMiembro(*link, "PRDNRO",
                                   EsNull(rs.Fields(QStringLiteral("idarticulo"))));
                    AsignarMiembro(*link, "SUBITEM", id);
                    suelto = LlamarMiembro(*link, "EliminarInsumo").toBool();
                    if (!suelto)
                        dialogos.Mensaje(
                            QStringLiteral("Error en eliminar la relacion con insumos"),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
                } catch (const KorvenError& e) {
                    dialogos.Mensaje(Seccion("lpEliminar") + e.descripcion(),
                                     QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
                }
                if (!suelto)
                    continue;
            }
            eliminadas +=
                cn.Ejecutar(QStringLiteral("delete from subitems where interno = ? and id = ?"),
                            {interno_, id});
        }
        SubItemsDatos(ctx_).MarcarCambio(interno_);
    } catch (const KorvenError& e) {
        dialogos.Mensaje(Seccion("lpEliminar") + QString::number(e.numero()) +
                             QStringLiteral(" - ") + e.descripcion(),
                         QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return 0;
    }
    return eliminadas;
}

bool ListaSubItems::Masivo(Dialogos& dialogos, const QString& pregunta, const QString& seccion,
                           const QStringList& sentencias) {
    if (!dialogos.Pregunta(pregunta))
        return false;
    try {
        EnTransaccion(ctx_.stores(), {kInternos}, [&](Transaccion&) {
            Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
            for (const QString& s : sentencias)
                cn.Ejecutar(s, {interno_});
        });
    } catch (const KorvenError& e) {
        dialogos.Mensaje(seccion + QString::number(e.numero()) + QStringLiteral(" - ") +
                             e.descripcion(),
                         QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
    return true;
}

bool ListaSubItems::SetearKilosCero(Dialogos& dialogos) {
    return Masivo(dialogos, QStringLiteral("CONFIRMA DEJAR EN 0, KG NETO, ESTADISTICA, ESPECIFICO"),
                  Seccion("SetearKilosCero"),
                  {QStringLiteral("update subitems set kgneto = 0 where interno = ?"),
                   QStringLiteral("update subitems set valorrelacionestadistica = 0 where "
                                  "estadistica = '01' and interno = ?"),
                   QStringLiteral("update subitems set valorderesp = 0 where deresp = '01' and "
                                  "interno = ?")});
}

bool ListaSubItems::VariarPaisOrigen(Dialogos& dialogos) {
    return Masivo(dialogos,
                  QStringLiteral("Confirma vaciar el campo Pais Origen en todos los articulos "
                                 "cargados?"),
                  Seccion("VariarPaisOrigen"),
                  {QStringLiteral("update subitems set idpais = '' where interno = ?")});
}

bool ListaSubItems::VaciarFiller(Dialogos& dialogos) {
    return Masivo(dialogos,
                  QStringLiteral("Confirma vaciar el campo Filler en todos los articulos "
                                 "cargados?"),
                  Seccion("VaciarFiller"),
                  {QStringLiteral("update subitems set itfiller = '' where interno = ?")});
}

bool ListaSubItems::VaciarIdProrrateo(Dialogos& dialogos) {
    return Masivo(dialogos,
                  QStringLiteral("Confirma vaciar el campo Id Prorrateo en todos los articulos "
                                 "cargados?"),
                  Seccion("VaciarIdProrrateo"),
                  {QStringLiteral("update subitems set codprorrateo = '' where interno = ?")});
}

} // namespace korven
