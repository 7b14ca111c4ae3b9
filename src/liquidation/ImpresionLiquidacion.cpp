#include "liquidation/ImpresionLiquidacion.h"

#include "liquidation/ClassLiquidacion.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QCoreApplication>

namespace korven {

namespace {

const QString kSeccion = QStringLiteral(" - seccion [korven.frmprintitem.pr_imprimirliq]::");

QString Importe(const QVariant& v) {
    return Formato(EsNumero(v), QStringLiteral("00.00"));
}

// The lines of one print, kept as they are written to the table.
class Escritor {
public:
    void operator()(const QString& linea) { lineas << linea; }
    void Blanco() { lineas << QString(); }
    QStringList lineas;
};

} // namespace

ImpresionLiquidacion::ImpresionLiquidacion(AppContext& ctx, QString puesto)
    : ctx_(ctx), puesto_(std::move(puesto)) {}

QString ImpresionLiquidacion::PuestoLocal() {
    return MaquinaLocal() + QLatin1Char('#') + QString::number(QCoreApplication::applicationPid());
}

QString ImpresionLiquidacion::Ajustar(const QString& texto, int ancho) {
    return texto.left(ancho).leftJustified(ancho, QLatin1Char(' '));
}

QStringList ImpresionLiquidacion::LineasDeTabla() {
    Conexion& p = ctx_.stores().getDataConnectionByEntity(QStringLiteral("PERSONAL"));
    QStringList r;
    for (Recordset rs = p.Abrir(QStringLiteral("select linea from tabla where puesto = ? order by "
                                               "idlin"),
                                {puesto_});
         !rs.Eof(); rs.MoveNext())
        r << EsNull(rs.Fields(0));
    return r;
}

bool ImpresionLiquidacion::pr_ImprimirLiq(int desde, int hasta, const QString& interno,
                                          bool subitems,
                                          const std::function<void(int, int)>& avance) {
    listados_.clear();
    if (desde > hasta) {
        ctx_.dialogos().Mensaje(QStringLiteral("El campo DESDE no puede ser mayor que HASTA"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        return false;
    }
    Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    Conexion& ncm = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
    Conexion& personal = ctx_.stores().getDataConnectionByEntity(QStringLiteral("PERSONAL"));
    bool abierta = false;
    try {
        SentenciasPreparadas preparadas;
        const Recordset car =
            c.Abrir(QStringLiteral("select * from caratula where interno = ?"), {interno});
        if (car.Eof()) {
            ctx_.dialogos().Mensaje(QStringLiteral("No se encontro el interno en caratula"));
            return false;
        }
        const auto C = [&](const char* campo) {
            return EsNumero(car.Fields(QLatin1String(campo)));
        };
        ClassLiquidacion liq(ctx_);
        liq.setCaratulaSubRegimen(EsNull(car.Fields(QStringLiteral("idsubreg"))));
        liq.setCaratulaFobTotal(C("fobdivisas") + C("valoraprorratear"));
        liq.setCaratulaFleteTotal(C("fletedivisas"));
        liq.setCaratulaSeguroValor(C("segurodivisas"));
        liq.setCaratulaSeguroProcent(C("seguroporcentaje"));
        liq.setCaratulaFactordeConvergencia(C("factorconver"));
        liq.setCaratulaAjusteIncluir(C("ajusteincluir"));
        liq.setCaratulaAjusteDeducir(C("ajustededucir"));
        liq.setCaratulaDivisasFOB(C("fobdivcambio"));
        liq.setCaratulaDivisasFlete(C("fletedivcambio"));
        liq.setCaratulaDivisasSeguro(C("segurodivcambio"));

        personal.Comenzar();
        abierta = true;
        personal.Ejecutar(QStringLiteral("delete from tabla where puesto = ?"), {puesto_});
        const auto texto = [](const QVariant& v) {
            return EsNull(v).replace(QLatin1Char('\''), QLatin1Char('`'));
        };
        // A position "8471.30.12.100M" is the row ("8471.30.12", "100").
        const auto posicion = [&](const QString& pos) {
            return ncm.Abrir(QStringLiteral("select \"015\", \"016\", \"017\", \"018\", \"020\", "
                                            "\"026\", \"028\", \"053\" from ncm where \"001\" = ? "
                                            "and \"002\" = ?"),
                             {pos.left(10), pos.right(4).left(3)});
        };
        const auto ventajas = [&](Escritor& w, int id, int guiones) {
            Recordset rs = c.Abrir(QStringLiteral("select idventaja from itemventaja where interno "
                                                  "= ? and iditem = ? order by idventaja"),
                                   {interno, id});
            if (rs.Eof())
                return;
            w.Blanco();
            w(QString(guiones, QLatin1Char('-')));
            w(QStringLiteral("VENTAJAS:"));
            w.Blanco();
            for (; !rs.Eof(); rs.MoveNext())
                w(texto(rs.Fields(0)));
            w.Blanco();
        };
        const auto informacion = [&](Escritor& w, int id, int guiones) {
            Recordset rs =
                c.Abrir(QStringLiteral("select idinfo, valor from iteminfo where interno "
                                       "= ? and iditem = ? order by idinfo"),
                        {interno, id});
            if (rs.Eof())
                return;
            w(QString(guiones, QLatin1Char('-')));
            w(QStringLiteral("INFORMACIÓN ADICIONAL:"));
            w.Blanco();
            w(Ajustar(QStringLiteral("Información"), 30) + QLatin1Char(' ') +
              Ajustar(QStringLiteral("Valor"), 30));
            w(QString(30, QLatin1Char('-')) + QLatin1Char(' ') + QString(30, QLatin1Char('-')));
            for (; !rs.Eof(); rs.MoveNext())
                w(Ajustar(texto(rs.Fields(0)), 30) + QLatin1Char(' ') +
                  Ajustar(texto(rs.Fields(1)), 30));
        };
        const auto columnas = [](const QStringList& valores, const QList<int>& anchos) {
            QStringList r;
            for (int i = 0; i < valores.size(); ++i)
                r << Ajustar(valores.at(i), anchos.at(i));
            return r.join(QLatin1Char(' '));
        };
        const auto guiones = [&](const QList<int>& anchos) {
            QStringList r;
            for (int a : anchos)
                r << QString(a, QLatin1Char('-'));
            return r.join(QLatin1Char(' '));
        };

        Escritor todas;
        ListadoImpreso cero;
        int finCero = -1;
        for (int n = desde; n <= hasta; ++n) {
            if (avance)
                avance(n, hasta);
            Escritor w;
            if (n == 0) {
                const Recordset it = c.Abrir(
                    QStringLiteral(
                        "select id,ajusteinc,ajusteded,estadistica,idproc,idpais,totalkneto,"
                        "estadomerc,lista,naladisa,ncm,idunidad,cantidad,preciounitario,"
                        "valorrelacionestadistica,valorderesp,"
                        // The FOB, freight and insurance of the Operation: those of its items.
                        "(select sum(fobtotal) from item x where x.interno = i.interno and x.id "
                        "<> 0) as fobtotal,(select sum(itflete) from item x where x.interno = "
                        "i.interno and x.id <> 0) as itflete,(select sum(itseguro) from item x "
                        "where x.interno = i.interno and x.id <> 0) as itseguro from item i "
                        "where id = 0 and interno = ?"),
                    {interno});
                const auto I = [&](const char* campo) { return it.Fields(QLatin1String(campo)); };
                cero.itemCero = true;
                cero.etiquetas = {{QStringLiteral("LbItem"), texto(I("ncm"))},
                                  {QStringLiteral("LbNaladisa"), texto(I("naladisa"))},
                                  {QStringLiteral("LbLista"), texto(I("lista"))},
                                  {QStringLiteral("LbEstMerc"), texto(I("estadomerc"))},
                                  {QStringLiteral("LbTotalKNeto"), Importe(I("totalkneto"))},
                                  {QStringLiteral("LbPaisOrigen"), texto(I("idpais"))},
                                  {QStringLiteral("LbPaisProc"), texto(I("idproc"))},
                                  {QStringLiteral("LbUnidadEstadistica"), texto(I("estadistica"))},
                                  {QStringLiteral("LbCantidad"), Importe(I("cantidad"))},
                                  {QStringLiteral("LbAjusteInc"), Importe(I("ajusteinc"))},
                                  {QStringLiteral("LbAjusteDed"), Importe(I("ajusteded"))},
                                  {QStringLiteral("LbFob"), Importe(I("fobtotal"))},
                                  {QStringLiteral("LbFlete"), Importe(I("itflete"))},
                                  {QStringLiteral("LbSeguro"), Importe(I("itseguro"))}};
                w(QStringLiteral("Interno: ") + texto(interno));
                // Both sums are read by their own code.
                const auto suma = [&](const QString& codigo) {
                    return Importe(c.Abrir(QStringLiteral("select valor from liqcero where "
                                                          "idconcepto = ? and interno = ?"),
                                           {codigo, interno})
                                       .Fields(0));
                };
                w(QStringLiteral("Base Imponible: ") + suma(QStringLiteral("###baseimp")));
                w(QStringLiteral("Base Iva: ") + suma(QStringLiteral("###baseiva")));
                w(QStringLiteral("------------"));
                w(QStringLiteral("LIQUIDACION:"));
                w(Ajustar(QStringLiteral("Conceptos"), 41) + QLatin1Char(' ') +
                  QStringLiteral("Importe"));
                w(QString(15, QLatin1Char('-')) + QLatin1Char(' ') + QString(26, QLatin1Char('-')));
                for (Recordset rs = c.Abrir(
                         QStringLiteral("select l.idconcepto, l.valor, c.descripcion from liqcero "
                                        "l left join conceptos c on c.id = l.idconcepto where "
                                        "l.interno = ? and l.idconcepto not like '###%' order by "
                                        "l.idconcepto"),
                         {interno});
                     !rs.Eof(); rs.MoveNext())
                    w(Ajustar(QStringLiteral(" (") + texto(rs.Fields(0)) + QStringLiteral(") ") +
                                  texto(rs.Fields(2)),
                              41) +
                      QLatin1Char(' ') + Importe(rs.Fields(1)));
                ventajas(w, 0, 25);
                informacion(w, 0, 30);
                if (subitems) {
                    const QList<int> anchos{15, 6, 15, 15, 15, 15, 15};
                    w.Blanco();
                    w(QStringLiteral("---------"));
                    w(QStringLiteral("SUBITEMS:"));
                    w(QStringLiteral("---------"));
                    w.Blanco();
                    w(columnas({QStringLiteral("Posición"), QStringLiteral("Unidad"),
                                QStringLiteral("Cantidad"), QStringLiteral("Unitario"),
                                QStringLiteral("FobTotal"), QStringLiteral("Estadistica"),
                                QStringLiteral("Derecho Especifico")},
                               anchos));
                    w(guiones(anchos));
                    for (Recordset rs = c.Abrir(
                             QStringLiteral("select ncm,idunidad,cantidad,preciounitario,cantidad "
                                            "* preciounitario as fobtotal,"
                                            "valorrelacionestadistica,valorderesp from "
                                            "groupsubitems where interno = ? order by idsub, "
                                            "orden"),
                             {interno});
                         !rs.Eof(); rs.MoveNext()) {
                        const QVariant pos = rs.Fields(0);
                        w(columnas({pos.isNull() ? QStringLiteral("0000.00.00.000D") : texto(pos),
                                    texto(rs.Fields(1)), Importe(rs.Fields(2)),
                                    Formato(EsNumero(rs.Fields(3)), QStringLiteral("00.0000")),
                                    Importe(rs.Fields(4)), Importe(rs.Fields(5)),
                                    Importe(rs.Fields(6))},
                                   anchos));
                    }
                }
                cero.lineas = w.lineas;
                todas.lineas << w.lineas;
                finCero = todas.lineas.size();
                continue;
            }

            const Recordset it = c.Abrir(
                QStringLiteral("select fobtotal,itflete,itseguro,ajusteinc,ajusteded,estadistica,"
                               "idproc,idpais,totalkneto,estadomerc,lista,naladisa,ncm,idunidad,"
                               "cantidad,preciounitario,valorrelacionestadistica,valorderesp "
                               "from item where id = ? and interno = ?"),
                {n, interno});
            if (it.Eof())
                continue;
            const auto I = [&](const char* campo) { return it.Fields(QLatin1String(campo)); };
            const QString pos = EsNull(I("ncm"));
            const Recordset N = posicion(pos);
            const auto V = [&](const char* col) {
                return N.Eof() ? 0.0 : EsNumero(N.Fields(QLatin1String(col)));
            };
            liq.setNcmDerechodeImportacionExtrazona(V("015"));
            liq.setNcmTasaEstadistica(V("016"));
            liq.setNcmDerechodeExpo(V("018"));
            liq.setncm_AEC(N.Eof() ? QString() : EsNull(N.Fields(QStringLiteral("028"))));
            liq.setncmValor_AEC(V("026"));
            liq.setFOBTotalITEM(EsNumero(I("fobtotal")));
            liq.setFLETETotalITEM(EsNumero(I("itflete")));
            liq.setSEGUROTotalITEM(EsNumero(I("itseguro")));
            liq.setAJUSTEINCLUIRtotalITEM(EsNumero(I("ajusteinc")));
            liq.setAJUSTEDEDUCIRtotalITEM(EsNumero(I("ajusteded")));
            liq.setItemCantidad(EsNumero(I("cantidad")));
            liq.setItemIdPais(EsNull(I("idpais")));
            liq.setItemEstadoMercaderia(EsNull(I("estadomerc")));
            const QString lista = EsNull(I("lista"));
            liq.setItemLista(lista);
            liq.setItemLISTA_MERCOSUR(lista == QLatin1String("MERCOSUR"));
            const double baseImp = liq.ObtenerBaseImponible();
            const double baseIva = liq.ObtenerBaseIVA();

            const QString cien = QString(79, QLatin1Char('.'));
            w.Blanco();
            w(cien);
            w.Blanco();
            w(QStringLiteral("   ITEM ") + Formato(n, QStringLiteral("000")));
            w(QStringLiteral("    NCM ") + texto(pos) + QStringLiteral(" -  UNID ESTA ") +
              texto(I("estadistica")));
            w(QStringLiteral(" CANTIDAD ") + Importe(I("cantidad")));
            w.Blanco();
            w(QStringLiteral("    FOB ") + Formato(liq.FOBTotalITEM(), QStringLiteral("00.00")) +
              QStringLiteral(" -  AJUS INC ") + Importe(I("ajusteinc")));
            w(QStringLiteral("  FLETE ") + Formato(liq.FLETETotalITEM(), QStringLiteral("00.00")) +
              QStringLiteral(" -  AJUS DED ") + Importe(I("ajusteded")));
            w(QStringLiteral("   SEGURO ") +
              Formato(liq.SEGUROTotalITEM(), QStringLiteral("00.00")) +
              QStringLiteral(" -  KG NETO ") + Importe(I("totalkneto")));
            w.Blanco();
            w(QStringLiteral(" EST MERC ") + texto(I("estadomerc")));
            w.Blanco();
            w(QStringLiteral("PAIS ORIG ") + texto(I("idpais")));
            w.Blanco();
            w(QStringLiteral("PAIS PROC ") + texto(I("idproc")));

            Recordset liqs = c.Abrir(
                QStringLiteral("select idconceptos, conceptos, porcentaje, pgc, baseimp, total, "
                               "motivo from itemliq where total > 0 and interno = ? and iditem = "
                               "? order by idconceptos"),
                {interno, n});
            if (!liqs.Eof()) {
                w.Blanco();
                w(QStringLiteral("Base Imponible: ") + Formato(baseImp, QStringLiteral("00.00")) +
                  QStringLiteral(" - Base Iva: ") + Formato(baseIva, QStringLiteral("00.00")));
                w.Blanco();
                if (!lista.isEmpty()) {
                    w(QStringLiteral("    LISTA: ") + texto(lista));
                    w.Blanco();
                }
                w(QStringLiteral("------------"));
                w(QStringLiteral("LIQUIDACION:"));
                const QList<int> anchos{30, 15, 5, 15, 15, 10};
                w(columnas({QStringLiteral("Conceptos"), QStringLiteral("Porc. %"),
                            QStringLiteral("P/C/G"), QStringLiteral("Base Imponible"),
                            QStringLiteral("Importe"), QStringLiteral("Motivos")},
                           anchos));
                w(guiones(anchos));
                for (; !liqs.Eof(); liqs.MoveNext())
                    w(columnas({QStringLiteral("(") + texto(liqs.Fields(0)) + QStringLiteral(") ") +
                                    texto(liqs.Fields(1)),
                                Importe(liqs.Fields(2)), texto(liqs.Fields(3)),
                                Importe(liqs.Fields(4)), Importe(liqs.Fields(5)),
                                texto(liqs.Fields(6))},
                               anchos));
            }
            ventajas(w, n, 9);
            informacion(w, n, 22);
            if (subitems) {
                const QList<int> anchos{15, 15, 15, 15, 15};
                w.Blanco();
                w(QStringLiteral("---------"));
                w(QStringLiteral("SUBITEMS:"));
                w(QStringLiteral("---------"));
                w.Blanco();
                w(columnas({QStringLiteral("Cantidad"), QStringLiteral("Unitario"),
                            QStringLiteral("FobTotal"), QStringLiteral("Estadistica"),
                            QStringLiteral("Cant. Especifico")},
                           anchos));
                w(guiones(anchos));
                for (Recordset rs = c.Abrir(
                         QStringLiteral("select fob as fobtotal,sufijos,cantidad,preciounitario,"
                                        "valorrelacionestadistica,valorderesp from groupsubitems "
                                        "where id = ? and interno = ? order by idsub, orden"),
                         {n, interno});
                     !rs.Eof(); rs.MoveNext()) {
                    w(columnas({Importe(rs.Fields(2)),
                                Formato(EsNumero(rs.Fields(3)), QStringLiteral("00.0000")),
                                Importe(rs.Fields(0)), Importe(rs.Fields(4)),
                                Importe(rs.Fields(5))},
                               anchos));
                    const QString sufijos = texto(rs.Fields(1));
                    if (!sufijos.isEmpty()) {
                        w(QStringLiteral("SUFIJO: ") + sufijos);
                        w.Blanco();
                    }
                }
            }
            todas.lineas << w.lineas;
        }

        for (const QString& linea : std::as_const(todas.lineas))
            personal.Ejecutar(QStringLiteral("insert into tabla (linea, puesto) values (?, ?)"),
                              {linea, puesto_});
        personal.Confirmar();
        abierta = false;

        // The reports read the table back, as printed.
        const QStringList impresas = LineasDeTabla();
        if (finCero >= 0) {
            cero.lineas = impresas.mid(0, finCero);
            listados_ << cero;
        }
        if (impresas.size() > std::max(finCero, 0)) {
            ListadoImpreso items;
            items.lineas = impresas.mid(std::max(finCero, 0));
            listados_ << items;
        }
        return true;
    } catch (const KorvenError& e) {
        if (abierta) {
            try {
                personal.Deshacer();
            } catch (const KorvenError&) {
            }
        }
        listados_.clear();
        ctx_.dialogos().Mensaje(e.descripcion() + QLatin1Char('\n') + QString::number(e.numero()) +
                                    kSeccion,
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
}

} // namespace korven
