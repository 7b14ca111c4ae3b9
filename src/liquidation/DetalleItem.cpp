#include "liquidation/DetalleItem.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <utility>

namespace korven {

namespace {

const QString kEntidad = QStringLiteral("INTERNOS");

QString Dos(const QVariant& v) {
    return Formato(EsNumero(v), QStringLiteral("00.00"));
}

QVariantMap Fila(const Recordset& rs) {
    QVariantMap m;
    if (!IsRecord(rs))
        return m;
    const QStringList campos = rs.Campos();
    for (int i = 0; i < campos.size(); ++i)
        m.insert(campos.at(i).toLower(), rs.Fields(i));
    return m;
}

// An amount kept in a text column of the item, with the store's decimal point.
QString TextoImporte(double v) {
    return QString::number(RedondearDecimal(v, 2), 'f', 2);
}

// The lines of the item and those linked to them, as a sub-query of subitems ids; four
// parameters: interno, id, interno, interno and id again.
const QString kSubItemsDelItem =
    QStringLiteral("select * from ( select idsub from groupsubitems where interno = ? and id = ? "
                   "Union select idsub from idrel where interno = ? and idroot in ( select idsub "
                   "from groupsubitems where interno = ? and id = ?)) as tino");

} // namespace

DetalleItem::DetalleItem(AppContext& ctx, QString interno)
    : ctx_(ctx), c_(ctx.stores().getDataConnectionByEntity(kEntidad)),
      interno_(std::move(interno)) {}

const QStringList& DetalleItem::ColumnasOncca() {
    static const QStringList columnas{
        "onccaacuerdo",  "onccacategoria",   "onccacortes",  "onccaelaborador", "onccaespecie",
        "onccafaneador", "onccameccoorgbio", "onccares3106", "onccasispro",     "onccamatadero"};
    return columnas;
}

int DetalleItem::CantidadItems() {
    return static_cast<int>(EsNumero(
        c_.Abrir(QStringLiteral("select count(*) as c from item where interno = ? and id <>0"),
                 {interno_})
            .Fields(0)));
}

QVariantMap DetalleItem::LeerItem(long long id) {
    return Fila(c_.Abrir(QStringLiteral("select * from item where id = ? and interno = ?"),
                         {static_cast<double>(id), interno_}));
}

QVariantMap DetalleItem::LeerCaratula() {
    return Fila(c_.Abrir(QStringLiteral("select * from caratula where interno = ?"), {interno_}));
}

QList<QStringList> DetalleItem::Lineas(long long id) {
    const QString sql =
        QStringLiteral("select idarticulo,ncm,idunidad,cantidad,preciounitario,fob,sufijos,"
                       "estadistica,valorrelacionestadistica from groupsubitems where ") +
        (id == 0 ? QString() : QStringLiteral("id = ? and ")) +
        QStringLiteral("interno = ? ORDER BY idsub");
    const QVariantList p =
        id == 0 ? QVariantList{interno_} : QVariantList{static_cast<double>(id), interno_};
    QList<QStringList> filas;
    for (Recordset rs = c_.Abrir(sql, p); !rs.Eof(); rs.MoveNext())
        filas.push_back(
            {Dos(rs.Fields(3)), Formato(EsNumero(rs.Fields(4)), QStringLiteral("00.0000")),
             Dos(rs.Fields(5)), Dos(rs.Fields(8)), EsNull(rs.Fields(0)), EsNull(rs.Fields(6))});
    return filas;
}

QStringList DetalleItem::CertificadosOrigen(long long id) {
    const double d = static_cast<double>(id);
    QStringList certificados;
    for (Recordset rs = c_.Abrir(QStringLiteral("select certorig from subitems where interno = ? "
                                                "and (certorig is not null and certorig<>'') and "
                                                "id in (") +
                                     kSubItemsDelItem + QStringLiteral(") order by id"),
                                 {interno_, interno_, d, interno_, interno_, d});
         !rs.Eof(); rs.MoveNext())
        certificados << EsNull(rs.Fields(0));
    return certificados;
}

QList<QStringList> DetalleItem::Cancelaciones(long long id) {
    const double d = static_cast<double>(id);
    QList<QStringList> filas;
    for (Recordset rs = c_.Abrir(
             QStringLiteral("select dit,item,subitem,ncm,expctit,cantidad,factorponderacion from "
                            "descargas where interno = ? and idext in ( select idext from "
                            "subitems where interno = ? and id in (") +
                 kSubItemsDelItem + QStringLiteral(") ) order by dit, item, subitem"),
             {interno_, interno_, interno_, d, interno_, interno_, d});
         !rs.Eof(); rs.MoveNext())
        filas.push_back({EsNull(rs.Fields(0)), EsNull(rs.Fields(3)),
                         QString::number(static_cast<long long>(EsNumero(rs.Fields(1)))),
                         QString::number(static_cast<long long>(EsNumero(rs.Fields(2)))),
                         Dos(rs.Fields(5)), EsNull(rs.Fields(4))});
    return filas;
}

QList<double> DetalleItem::SumasItems() {
    const Recordset rs = c_.Abrir(QStringLiteral("select sum(fobtotal) as fob,sum(itflete) as "
                                                 "flete,sum(itseguro) as seguro from item where "
                                                 "interno = ? and id<>0"),
                                  {interno_});
    return {EsNumero(rs.Fields(0)), EsNumero(rs.Fields(1)), EsNumero(rs.Fields(2))};
}

QList<DetalleItem::Concepto> DetalleItem::Conceptos(long long id) {
    QList<Concepto> conceptos;
    for (Recordset rs = c_.Abrir(QStringLiteral("select idconceptos,conceptos,porcentaje,baseimp,"
                                                "total,pgc,motivo from itemliq where total>0 and "
                                                "interno = ? and iditem = ? order by idconceptos"),
                                 {interno_, static_cast<double>(id)});
         !rs.Eof(); rs.MoveNext())
        conceptos.push_back({EsNull(rs.Fields(0)), EsNull(rs.Fields(1)), rs.Fields(2), rs.Fields(3),
                             rs.Fields(4), EsNull(rs.Fields(5)).trimmed(), EsNull(rs.Fields(6))});
    return conceptos;
}

QList<QStringList> DetalleItem::Informacion(long long id) {
    QList<QStringList> filas;
    for (Recordset rs = c_.Abrir(QStringLiteral("select idinfo, valor from iteminfo where iditem "
                                                "= ? and interno = ? order by idinfo"),
                                 {static_cast<double>(id), interno_});
         !rs.Eof(); rs.MoveNext())
        filas.push_back({EsNull(rs.Fields(0)), EsNull(rs.Fields(1))});
    return filas;
}

QStringList DetalleItem::Ventajas(long long id) {
    QStringList ventajas;
    for (Recordset rs = c_.Abrir(QStringLiteral("select idventaja from itemventaja where iditem "
                                                "= ? and interno = ? order by idventaja"),
                                 {static_cast<double>(id), interno_});
         !rs.Eof(); rs.MoveNext())
        ventajas << EsNull(rs.Fields(0));
    return ventajas;
}

void DetalleItem::RecargarFlags() {
    const std::pair<const char*, QString*> flags[] = {{"1439/96", &ctx_.FlagDto1439},
                                                      {"1439/96A1", &ctx_.FlagDto1439A1},
                                                      {"D1330/04A6", &ctx_.FlagD1330A6},
                                                      {"D1330/04A7", &ctx_.FlagD1330A7},
                                                      {"D1330/04A8", &ctx_.FlagD1330A8}};
    for (const auto& [flag, destino] : flags) {
        *destino = QStringLiteral("N");
        // The last row the store holds for the flag stands.
        for (Recordset rs = c_.Abrir(QStringLiteral("select valor from sysflag where interno = ? "
                                                    "and flag = ? and item = 0 order by orden"),
                                     {interno_, QString::fromLatin1(flag)});
             !rs.Eof(); rs.MoveNext())
            *destino = EsNull(rs.Fields(0));
    }
}

void DetalleItem::ListaConceptos(long long id, const QString& lista, bool conTotal) {
    const double d = static_cast<double>(id);
    if (lista == QLatin1String("MERCOSUR"))
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = 0") +
                        (conTotal ? QStringLiteral(", total= 0") : QString()) +
                        QStringLiteral(" where interno = ? and idconceptos in "
                                       "('020','010','015','011') and iditem = ?"),
                    {interno_, d});
    else
        c_.Ejecutar(QStringLiteral("update itemliq set porcentaje = NULL where porcentaje = 0 and "
                                   "interno = ? and idconceptos in ('020','010','015','011') and "
                                   "iditem = ?"),
                    {interno_, d});
}

void DetalleItem::Ajuste(const QString& columna, const QString& tecleado, bool deduccion) {
    double ajuste = 0;
    const bool numero = LeerNumeroTecleado(tecleado.trimmed(), &ajuste);
    const double fobGeneral = EsNumero(LeerCaratula().value(QStringLiteral("fobdivisas")));
    if (!numero || ajuste <= 0) {
        c_.Ejecutar(
            QStringLiteral("update item set %1 = '0' where id = 0 and interno = ?").arg(columna),
            {interno_});
        return;
    }
    if (fobGeneral <= 0)
        return;
    c_.Ejecutar(QStringLiteral("update item set %1 = ? where id = 0 and interno = ?").arg(columna),
                {TextoImporte(ajuste), interno_});
    // The statement of the deductions has always been refused by the store: its error is
    // shown and the deduction stays on item 0 only, the rest of the save is kept.
    const QString condicion =
        deduccion ? QStringLiteral("tipoitem = <> 'G'") : QStringLiteral("tipoitem <> 'G'");
    c_.Ejecutar(QStringLiteral("SAVEPOINT ajuste"));
    Recordset rs;
    try {
        rs = c_.Abrir(QStringLiteral("select id,((fobtotal) * ?) / (?) as valor from item where "
                                     "id<> 0 and interno = ? and ") +
                          condicion,
                      {ajuste, fobGeneral, interno_});
        c_.Ejecutar(QStringLiteral("RELEASE SAVEPOINT ajuste"));
    } catch (const KorvenError& e) {
        c_.Ejecutar(QStringLiteral("ROLLBACK TO SAVEPOINT ajuste"));
        c_.Ejecutar(QStringLiteral("RELEASE SAVEPOINT ajuste"));
        ctx_.dialogos().Mensaje(QStringLiteral("%1 - %2 seccion[GrabarItem.FrmVerItem.KORVEN "
                                               "Linea 3 ]::")
                                    .arg(e.numero())
                                    .arg(e.descripcion()),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return;
    }
    for (; !rs.Eof(); rs.MoveNext())
        c_.Ejecutar(
            QStringLiteral("update item set %1 = ? where id = ? and interno = ?").arg(columna),
            {TextoImporte(EsNumero(rs.Fields(1))), EsNumero(rs.Fields(0)), interno_});
}

bool DetalleItem::GrabarItem(long long id, const Campos& c) {
    Transaccion t(ctx_.stores(), {kEntidad});
    if (id < 1) {
        const std::pair<const char*, const QString*> columnas[] = {
            {"naladisa", &c.naladisa},     {"lista", &c.lista},   {"idpais", &c.idpais},
            {"estadomerc", &c.estadomerc}, {"idproc", &c.idproc}, {"regalias", &c.regalias},
            {"standard", &c.standard}};
        for (const auto& [columna, valor] : columnas) {
            const QString col = QString::fromLatin1(columna);
            c_.Ejecutar(
                QStringLiteral("update item set %1 = ? where id = 0 and interno = ?").arg(col),
                {*valor, interno_});
            if (!valor->trimmed().isEmpty()) {
                // A country of provenance goes only to the items that have none.
                const QString soloSinValor = col == QLatin1String("idproc")
                                                 ? QStringLiteral(" and (idproc='' or idproc is "
                                                                  "null)")
                                                 : QString();
                c_.Ejecutar(QStringLiteral("update item set %1 = ? where interno = ?").arg(col) +
                                soloSinValor,
                            {*valor, interno_});
            }
            if (col == QLatin1String("lista"))
                ListaConceptos(0, c.lista, false);
        }
        Ajuste(QStringLiteral("ajusteinc"), c.ajusteinc, false);
        Ajuste(QStringLiteral("ajusteded"), c.ajusteded, true);
        t.Confirmar();
        return true;
    }
    QString oncca;
    QVariantList p{c.naladisa,
                   c.lista,
                   c.estadomerc,
                   c.totalkneto,
                   c.idpais,
                   c.insumostemp,
                   c.insumosacons,
                   c.idproc,
                   TextoImporte(NumeroTecleado(c.ajusteinc)),
                   TextoImporte(NumeroTecleado(c.ajusteded)),
                   c.regalias,
                   c.tipoitem,
                   c.standard,
                   c.itcomext,
                   c.itemasociado,
                   c.cofexp};
    for (const QString& col : ColumnasOncca()) {
        oncca += QStringLiteral(",%1 = ?").arg(col);
        p << c.oncca.value(col);
    }
    p << (c.mineria ? QStringLiteral("S") : QStringLiteral("N")) << c.opcionesiva
      << c.opcionesganancias << static_cast<double>(id) << interno_;
    const int filas = c_.Ejecutar(
        QStringLiteral("update item set naladisa = ?, lista = ?,estadomerc = ?,totalkneto = "
                       "?,idpais = ?,insumostemp = ?,insumosacons = ?,idproc = ?,ajusteinc = "
                       "?,ajusteded = ?,regalias = ?,tipoitem = ?,standard = ?,itcomext = "
                       "?,itemasociado = ?,cofexp = ?") +
            oncca +
            QStringLiteral(",mineria = ?,opcionesiva = ?,opcionesganancias = ? where id = ? and "
                           "interno = ?"),
        p);
    ListaConceptos(id, c.lista, true);
    t.Confirmar();
    return filas > 0;
}

void DetalleItem::MarcarModificado(long long id) {
    c_.Ejecutar(QStringLiteral("update item set itmodif = 'S' where id = ? and interno = ?"),
                {static_cast<double>(id), interno_});
}

} // namespace korven
