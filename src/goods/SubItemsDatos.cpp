#include "goods/SubItemsDatos.h"

#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kNcm = QStringLiteral("NCM");

double Valor(const QString& t) {
    return NumeroTecleado(t.trimmed());
}
double DosDecimales(const QString& t) {
    return RedondearDecimal(Valor(t), 2);
}
QString SN(bool b) {
    return b ? QStringLiteral("S") : QStringLiteral("N");
}
QString T(const Recordset& rs, const char* campo) {
    return EsNull(rs.Fields(QString::fromLatin1(campo)));
}
// A number of the store as the screen shows it, in the system separator.
QString N(const Recordset& rs, const char* campo) {
    const QVariant v = rs.Fields(QString::fromLatin1(campo));
    if (v.isNull())
        return {};
    return ReemplazarSeparadorDecimal(QString::number(EsNumero(v), 'g', 15));
}

} // namespace

std::optional<UnidadesNcm> SubItemsDatos::Unidades(const QString& posicion, bool conLetra) {
    QString sql =
        QStringLiteral("select \"012\",\"020\" from ncm where \"001\" = ? and \"002\" = ?");
    QVariantList p{posicion.left(10), posicion.mid(11, 3)};
    if (conLetra && posicion.size() == 15) {
        sql += QStringLiteral(" and \"003\" = ?");
        p << posicion.right(1);
    }
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kNcm).Abrir(sql, p);
    if (rs.Eof())
        return std::nullopt;
    return UnidadesNcm{T(rs, "012").trimmed(), T(rs, "020").trimmed()};
}

std::optional<PosicionNcm> SubItemsDatos::BuscarNCM(const QString& posicion) {
    Conexion& cn = ctx_.stores().getDataConnectionByEntity(kNcm);
    QString sql = QStringLiteral("select \"001\",\"002\",\"003\",\"004\",\"010\",\"012\",\"015\","
                                 "\"018\",\"019\",\"020\",\"052\",\"044\",\"059\" from ncm "
                                 "where \"001\" = ?");
    QVariantList p{posicion.left(10)};
    if (posicion.size() != 10) {
        sql += QStringLiteral(" and \"002\" = ?");
        p << posicion.mid(11, 3);
    }
    if (posicion.size() == 15) {
        sql += QStringLiteral(" and \"003\" = ?");
        p << posicion.right(1);
    }
    sql += QStringLiteral(" order by \"001\",\"002\",\"003\"");
    Recordset rs = cn.Abrir(sql, p);
    if (rs.Eof())
        return std::nullopt;
    PosicionNcm r;
    const QString c001 = T(rs, "001").trimmed(), c002 = T(rs, "002").trimmed(),
                  c003 = T(rs, "003").trimmed();
    r.posicion = c001 + QLatin1Char('.') + c002 + c003;
    r.estadistica = T(rs, "012").trimmed();
    r.derEsp = T(rs, "020").trimmed();
    r.lapi = T(rs, "059").trimmed() == QStringLiteral("*");
    r.segElect = !T(rs, "052").trimmed().isEmpty();
    r.prohibicion = T(rs, "044").trimmed() == QStringLiteral("*");
    const QVariant rein = rs.Fields(QStringLiteral("019"));
    r.reintegro =
        EsNumerico(rein) && EsNumero(rein) > 0 ? T(rs, "019").trimmed() : QStringLiteral("0");
    r.tip =
        QStringLiteral("  Información de la Posición\n") + QString(40, QLatin1Char('-')) +
        QStringLiteral("\n  Posición NCM: ") + r.posicion +
        QStringLiteral("\n  Unidad Estadistica: ") + r.estadistica +
        QStringLiteral("\n  Unidad Der. Esp.: ") + r.derEsp + QStringLiteral("\n  Posee LAPI: ") +
        (r.lapi ? QStringLiteral("Si") : QStringLiteral("No")) +
        QStringLiteral("\n  Derecho de Importación ExtraZona: ") + T(rs, "015").trimmed() +
        QStringLiteral("%\n  Derecho de Exportación: ") + T(rs, "018").trimmed() +
        QStringLiteral("%\n  Reintegro Extrazona: ") + T(rs, "019").trimmed() + QStringLiteral("%");
    Recordset d = cn.Abrir(QStringLiteral("select \"004\",\"005\",\"006\",\"007\",\"008\",\"009\","
                                          "\"010\" from ncm where \"001\" = ? and \"002\" = ? "
                                          "order by \"003\""),
                           {c001, c002});
    if (!d.Eof()) {
        QStringList lineas{T(d, "004").trimmed()};
        for (const char* c : {"005", "006", "007", "008", "009", "010"})
            if (!T(d, c).trimmed().isEmpty())
                lineas << T(d, c).trimmed();
        r.texto = lineas.join(QLatin1Char('\n'));
    }
    return r;
}

std::optional<double> SubItemsDatos::Pase(const QString& desde, const QString& hasta) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select pase from unidrel where unid1 = ? and "
                       "unid2 = ?"),
        {desde.trimmed(), hasta.trimmed()});
    if (rs.Eof())
        return std::nullopt;
    return EsNumero(rs.Fields(QStringLiteral("pase")));
}

CaratulaSubItems SubItemsDatos::Caratula(const QString& interno) {
    CaratulaSubItems c;
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select idsubreg,fobdivisas,onccahabilitado from "
                       "caratula where interno = ?"),
        {interno});
    if (rs.Eof())
        return c;
    c.idsubreg = T(rs, "idsubreg");
    c.fobdivisas = EsNumero(rs.Fields(QStringLiteral("fobdivisas")));
    c.oncca = T(rs, "onccahabilitado") == QStringLiteral("S");
    Recordset e = ctx_.stores()
                      .getDataConnectionByEntity(QStringLiteral("SYSTABLAS"))
                      .Abrir(QStringLiteral("select item from ean where subreg = ?"), {c.idsubreg});
    c.admiteEAN = !e.Eof();
    return c;
}

std::optional<LineaSubItem> SubItemsDatos::LeerSubItem(const QString& interno, long long id) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select * from subitems where interno = ? and id = ?"), {interno, id});
    if (rs.Eof())
        return std::nullopt;
    LineaSubItem l;
    l.idCatalogo = T(rs, "idcatalogo");
    l.idArticulo = T(rs, "idarticulo");
    l.descripcion = T(rs, "descripcion");
    l.otros = T(rs, "otros");
    l.posicion = T(rs, "ncm");
    l.codigoEstadistica = T(rs, "estadistica");
    l.unidad = T(rs, "idunidad");
    l.cantidad = N(rs, "cantidad");
    l.unitario = N(rs, "preciounitario");
    l.fobTotal = N(rs, "fob");
    l.valorEstadistica = N(rs, "valorrelacionestadistica");
    l.idDerEsp = T(rs, "deresp");
    l.derEsp = N(rs, "valorderesp");
    l.kgNeto = N(rs, "kgneto");
    l.kgBruto = N(rs, "kgbruto");
    l.idPais = T(rs, "idpais");
    l.idPaisProc = T(rs, "idpaisproc");
    l.estadoMerc = T(rs, "estadomerc");
    l.sufijos = T(rs, "sufijos");
    l.bienDeUso = T(rs, "biendeuso") == QStringLiteral("S");
    l.codProrrateo = T(rs, "codprorrateo");
    l.filler = T(rs, "itfiller");
    l.codigoEAN = T(rs, "codigoean");
    l.certOrig = T(rs, "certorig");
    l.insumosTemp = N(rs, "insumostemp");
    l.insumosCons = N(rs, "insumosacons");
    l.cancelaciones = T(rs, "cancelaciones");
    l.cancCantidad = N(rs, "canccantidad");
    l.nroItem = N(rs, "cancnroitem");
    l.nroSubitem = N(rs, "cancnrosubitem");
    l.onccaCategoria = T(rs, "onccacategoria");
    l.onccaCorte = T(rs, "onccacortes");
    l.lapi = T(rs, "lapi") == QStringLiteral("S");
    l.reintegro = T(rs, "sbtrei");
    return l;
}

void SubItemsDatos::MarcarCambio(const QString& interno) {
    ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("update caratula set factura8 = 'S' where interno = ?"), {interno});
    const QString app = QStringLiteral("KORVEN"), aec = QStringLiteral("AEC");
    if (ctx_.settings().GetSetting(app, aec, interno, QStringLiteral("\x01")) != QString())
        ctx_.settings().SaveSetting(app, aec, interno, QString());
}

long long SubItemsDatos::Insertar(const QString& interno, const LineaSubItem& l, bool deInsumos,
                                  bool admiteEAN) {
    Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
    const long long id =
        static_cast<long long>(EsNumero(cn.Abrir(QStringLiteral("select max(id) as m from "
                                                                "subitems where interno = ?"),
                                                 {interno})
                                            .Fields(0))) +
        1;
    cn.Ejecutar(
        QStringLiteral(
            "insert into subitems (id,IdCatalogo,IdArticulo,ncm,IdUnidad,Cantidad,Preciounitario,"
            "fob,Estadistica,valorrelacionestadistica,IdPais,EstadoMerc,Sufijos,Biendeuso,"
            "codprorrateo,insumostemp,insumosacons,cancelaciones,cancCantidad,cancnroitem,"
            "cancnrosubitem,deresp,valorderesp,lapi,kgneto,kgbruto,descripcion,interno,otros,"
            "itfiller,certorig,ONCCACategoria,ONCCACortes,IdPaisProc,codigoean) values "
            "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"),
        {id,
         l.idCatalogo,
         l.idArticulo,
         l.posicion.trimmed(),
         l.unidad.trimmed(),
         DosDecimales(l.cantidad),
         Valor(l.unitario),
         Valor(l.fobTotal),
         l.codigoEstadistica.trimmed(),
         DosDecimales(l.valorEstadistica),
         l.idPais.trimmed(),
         l.estadoMerc.trimmed(),
         l.sufijos,
         SN(l.bienDeUso),
         l.codProrrateo.trimmed(),
         Valor(l.insumosTemp),
         Valor(l.insumosCons),
         deInsumos ? QStringLiteral("ERR") : QString(),
         Valor(l.cancCantidad),
         Valor(l.nroItem),
         Valor(l.nroSubitem),
         l.idDerEsp.trimmed(),
         DosDecimales(l.derEsp),
         SN(l.lapi),
         DosDecimales(l.kgNeto),
         DosDecimales(l.kgBruto),
         l.descripcion,
         interno,
         l.otros,
         l.filler,
         l.certOrig,
         l.onccaCategoria,
         l.onccaCorte,
         l.idPaisProc.trimmed(),
         admiteEAN ? l.codigoEAN : QString()});
    return id;
}

int SubItemsDatos::Actualizar(const QString& interno, long long id, const LineaSubItem& l,
                              bool admiteEAN) {
    return ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral(
            "update subitems set ncm = ?, idunidad = ?, cantidad = ?, preciounitario = ?, fob = ?, "
            "estadistica = ?, valorrelacionestadistica = ?, idpais = ?, idpaisproc = ?, "
            "estadomerc = ?, sufijos = ?, biendeuso = ?, otros = ?, certorig = ?, "
            "codprorrateo = ?, insumostemp = ?, insumosacons = ?, cancelaciones = ?, "
            "canccantidad = ?, cancnroitem = ?, lapi = ?, SBTREI = ?, kgneto = ?, kgbruto = ?, "
            "deresp = ?, valorderesp = ?, descripcion = ?, codigoean = ?, ONCCACategoria = ?, "
            "ONCCACortes = ?, cancnrosubitem = ?, itfiller = ? where id = ? and interno = ?"),
        {l.posicion.trimmed(),
         l.unidad.trimmed(),
         Valor(l.cantidad),
         Valor(l.unitario),
         Valor(l.fobTotal),
         l.codigoEstadistica.trimmed(),
         Valor(l.valorEstadistica),
         l.idPais.trimmed(),
         l.idPaisProc.trimmed(),
         l.estadoMerc.trimmed(),
         l.sufijos,
         SN(l.bienDeUso),
         l.otros,
         l.certOrig,
         l.codProrrateo.trimmed(),
         Valor(l.insumosTemp),
         Valor(l.insumosCons),
         l.cancelaciones,
         Valor(l.cancCantidad),
         Valor(l.nroItem),
         SN(l.lapi),
         l.reintegro.isEmpty() ? QStringLiteral("0") : l.reintegro,
         Valor(l.kgNeto),
         Valor(l.kgBruto),
         l.idDerEsp.trimmed(),
         Valor(l.derEsp),
         l.descripcion,
         admiteEAN ? l.codigoEAN : QString(),
         l.onccaCategoria,
         l.onccaCorte,
         Valor(l.nroSubitem),
         l.filler,
         id,
         interno});
}

} // namespace korven
