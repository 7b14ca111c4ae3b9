#include "header/Facturas.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
}

bool Facturas::Agregar_Facturas(const QString& interno, const QString& factura) {
    try {
        bool existe = false;
        EnTransaccion(ctx_.stores(), {kInternos}, [&](Transaccion&) {
            Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
            Recordset rs = cn.Abrir(QStringLiteral("select count(*) as cant from facturas where "
                                                   "interno = ? and factura = ?"),
                                    {interno, factura});
            existe = EsNumero(rs.Fields(QStringLiteral("cant"))) > 0;
            if (existe)
                return;
            Recordset mx =
                cn.Abrir(QStringLiteral("select Max(orden) as ord from facturas where interno = ?"),
                         {interno});
            const int orden = static_cast<int>(EsNumero(mx.Fields(QStringLiteral("ord")))) + 1;
            cn.Ejecutar(
                QStringLiteral("insert into facturas(interno,orden,factura) values (?,?,?)"),
                {interno, orden, factura});
        });
        if (existe)
            ctx_.dialogos().Mensaje(QStringLiteral("Ya existe esta factura."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
        return !existe;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [Agregar_Facturas] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
}

void Facturas::Eliminar_Factura(const QString& interno, const QString& factura) {
    try {
        ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
            QStringLiteral("delete from facturas where interno = ? and factura = ?"),
            {interno, factura});
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [Eliminar_Factura] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

QStringList Facturas::Lista(const QString& interno) {
    QStringList l;
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select factura from facturas where interno = ? order by orden"), {interno});
    for (; !rs.Eof(); rs.MoveNext())
        l << EsNull(rs.Fields(QStringLiteral("factura")));
    return l;
}

} // namespace korven
