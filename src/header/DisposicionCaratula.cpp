#include "header/DisposicionCaratula.h"

#include "platform/AppContext.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

QStringList DisposicionCaratula::Companeros(const QString& control) {
    const QString c = control.toLower();
    if (c == QStringLiteral("txtfobdivisas"))
        return {QStringLiteral("TxtCoddivfob"), QStringLiteral("TxtDivValorFob")};
    if (c == QStringLiteral("txtfletedivisas"))
        return {QStringLiteral("TxtDivValorFlete"), QStringLiteral("TxtCodDivFlete"),
                QStringLiteral("TxtDolFlete")};
    if (c == QStringLiteral("txtsegurodivisas"))
        return {QStringLiteral("TxtDivValorseguro"), QStringLiteral("TxtCodDivseguro"),
                QStringLiteral("TxtPorc"), QStringLiteral("TxtDolSeguro")};
    return {};
}

DisposicionCaratula DisposicionCaratula::Calcular(AppContext& ctx, const QString& idsubreg) {
    DisposicionCaratula d;
    d.facilidadPagoVisible = idsubreg == QStringLiteral("EC16");
    Recordset rs = ctx.stores()
                       .getDataConnectionByEntity(QStringLiteral("USUARIO"))
                       .Abrir(QStringLiteral("select * from dest where subreg = ?"), {idsubreg});
    if (IsRecord(rs)) {
        d.hayDest = true;
        for (const QString& columna : rs.Campos()) {
            if (EsNull(rs.Fields(columna)) != QStringLiteral("x"))
                continue;
            d.ocultos << columna;
            d.ocultos << Companeros(columna);
        }
    }
    const QString prefijo = idsubreg.left(2);
    d.exportacion = prefijo == QStringLiteral("EC") || prefijo == QStringLiteral("EG");
    d.opcionesHabilitadas =
        idsubreg.left(1) == QStringLiteral("I") || idsubreg.left(4) == QStringLiteral("LAPI");
    return d;
}

} // namespace korven
