#include "liquidation/ListasItem.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {

struct Tabla {
    QString tabla;   // the item's rows
    QString columna; // the code column in them
    QString maestra; // the master list
    QString rutinaAgregar;
    QString rutinaEliminar;
    QString noEliminar;
};

Tabla De(ListasItem::Lista lista) {
    if (lista == ListasItem::Lista::Ventajas)
        return {QStringLiteral("itemventaja"),
                QStringLiteral("idventaja"),
                QStringLiteral("ventajas"),
                QStringLiteral("CmdAgregarVen"),
                QStringLiteral("CmdEliminarVen"),
                QStringLiteral("No se puede eliminar esta Ventaja. Debe eliminar la misma en el "
                               "ITEM 0 (cero)")};
    return {QStringLiteral("iteminfo"),
            QStringLiteral("idinfo"),
            QStringLiteral("informacion"),
            QStringLiteral("CmdAgregarInf"),
            QStringLiteral("CmdEliminarInf"),
            QStringLiteral("No se puede eliminar esta Información. Debe eliminar el mismo en el "
                           "ITEM 0 (cero)")};
}

bool Autoliquidacion(const QString& codigo) {
    return codigo == QLatin1String("AUTOLIQLIBREEXP") || codigo == QLatin1String("AUTOLIQLIBREIMP");
}

double Cuenta(Conexion& c, const QString& sql, const QVariantList& valores) {
    return EsNumero(c.Abrir(sql, valores).Fields(0));
}

} // namespace

void ListasItem::Error(const QString& rutina, int numero, const QString& descripcion) {
    ctx_.dialogos().Mensaje(QStringLiteral("%1 / %2 - seccion[%3.FrmVerItem.KORVEN]::")
                                .arg(numero)
                                .arg(descripcion, rutina),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

bool ListasItem::Agregar(Lista lista, const QString& interno, long long iditem) {
    const Tabla t = De(lista);
    ctx_.VentajaElegida.clear();
    try {
        ctx_.AbrirModal(
            QStringLiteral("FrmVentajas"),
            {{QStringLiteral("lista"), lista == Lista::Ventajas ? QStringLiteral("ventajas")
                                                                : QStringLiteral("informacion")}});
        const QString codigo = ctx_.VentajaElegida.trimmed();
        if (codigo.isEmpty())
            return false;

        Transaccion tr(ctx_.stores(), {QStringLiteral("INTERNOS")});
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        const QString contar =
            QStringLiteral(
                "select count(*) as c from %1 where iditem = ? and %2 = ? and interno = ?")
                .arg(t.tabla, t.columna);
        if (Cuenta(c, contar, {iditem, codigo, interno}) > 0) {
            ctx_.dialogos().Mensaje(QStringLiteral("Este item ya esta ingresado."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return false;
        }
        QString valor;
        if (lista == Lista::Informacion) {
            const QString descripcion =
                EsNull(c.Abrir(QStringLiteral("select descripcion from informacion where id = ?"),
                               {codigo})
                           .Fields(0));
            const auto dicho = ctx_.dialogos().PedirTexto(
                QStringLiteral("Ingrese el Valor de: ") + descripcion, QStringLiteral("KORVEN"));
            if (!dicho)
                return false;
            valor = *dicho;
        }
        const QString insertar =
            lista == Lista::Ventajas
                ? QStringLiteral(
                      "insert into itemventaja (iditem,idventaja,interno) values (?,?,?)")
                : QStringLiteral(
                      "insert into iteminfo (iditem,idinfo,valor,interno) values (?,?,?,?)");
        auto agregar = [&](long long id) {
            const int filas = lista == Lista::Ventajas
                                  ? c.Ejecutar(insertar, {id, codigo, interno})
                                  : c.Ejecutar(insertar, {id, codigo, valor, interno});
            if (filas > 0 && Autoliquidacion(codigo))
                c.Ejecutar(
                    QStringLiteral("update item set lman = 'M' where interno = ? and id = ?"),
                    {interno, id});
            return filas > 0;
        };
        bool agregado = agregar(iditem);
        if (iditem == 0) {
            const Recordset items = c.Abrir(
                QStringLiteral("select id from item where id<>0 and interno = ? order by id"),
                {interno});
            for (int i = 0; i < items.RecordCount(); ++i) {
                const long long id = items.Fila(i).at(0).toLongLong();
                if (Cuenta(c, contar, {id, codigo, interno}) == 0)
                    agregado = agregar(id) || agregado;
            }
        }
        tr.Confirmar();
        return agregado;
    } catch (const KorvenError& e) {
        Error(t.rutinaAgregar, e.numero(), e.descripcion());
    }
    return false;
}

bool ListasItem::Eliminar(Lista lista, const QString& interno, long long iditem,
                          const QString& codigo) {
    const Tabla t = De(lista);
    try {
        Transaccion tr(ctx_.stores(), {QStringLiteral("INTERNOS")});
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        if (iditem != 0 &&
            Cuenta(c,
                   QStringLiteral("select count(*) as cont from %1 where iditem = 0 and %2 = ? "
                                  "and interno = ?")
                       .arg(t.tabla, t.columna),
                   {codigo, interno}) > 0) {
            ctx_.dialogos().Mensaje(t.noEliminar, QStringLiteral("KORVEN"),
                                    Dialogos::Icono::Exclamacion);
            return false;
        }
        const int filas =
            iditem == 0
                ? c.Ejecutar(QStringLiteral("delete from %1 where %2 = ? and interno = ?")
                                 .arg(t.tabla, t.columna),
                             {codigo, interno})
                : c.Ejecutar(
                      QStringLiteral("delete from %1 where iditem = ? and %2 = ? and interno = ?")
                          .arg(t.tabla, t.columna),
                      {iditem, codigo, interno});
        if (Autoliquidacion(codigo))
            c.Ejecutar(QStringLiteral("update item set lman = '' where interno = ? and id = ?"),
                       {interno, iditem});
        tr.Confirmar();
        return filas > 0;
    } catch (const KorvenError& e) {
        Error(t.rutinaEliminar, e.numero(), e.descripcion());
    }
    return false;
}

bool ListasItem::EliminarConcepto(const QString& interno, long long iditem, const QString& codigo) {
    try {
        Transaccion tr(ctx_.stores(), {QStringLiteral("INTERNOS")});
        const int filas =
            ctx_.stores()
                .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
                .Ejecutar(QStringLiteral("delete from itemliq where interno = ? and iditem = ? and "
                                         "idconceptos = ?"),
                          {interno, iditem, codigo});
        tr.Confirmar();
        if (filas > 0)
            ctx_.LiquidacionPendiente = true;
        return filas > 0;
    } catch (const KorvenError& e) {
        Error(QStringLiteral("PP_LIQ_ELiminar"), e.numero(), e.descripcion());
    }
    return false;
}

} // namespace korven
