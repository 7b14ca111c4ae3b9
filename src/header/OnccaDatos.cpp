#include "header/OnccaDatos.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

QStringList OnccaDatos::Columnas() {
    return {QStringLiteral("ONCCAAcuerdo"),     QStringLiteral("ONCCACategoria"),
            QStringLiteral("ONCCACortes"),      QStringLiteral("ONCCAElaborador"),
            QStringLiteral("ONCCAEspecie"),     QStringLiteral("ONCCAFaneador"),
            QStringLiteral("ONCCAMeccoorgbio"), QStringLiteral("ONCCAres3106"),
            QStringLiteral("ONCCAsispro"),      QStringLiteral("ONCCAMatadero")};
}

std::optional<OnccaDatos::Datos> OnccaDatos::CargarDatos(const QString& interno) {
    try {
        Recordset rs =
            ctx_.stores()
                .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
                .Abrir(QStringLiteral("select ONCCAHabilitado, ONCCAAcuerdo, ONCCACategoria, "
                                      "ONCCACortes, ONCCAElaborador, ONCCAEspecie , ONCCAFaneador, "
                                      "ONCCAMeccoorgbio, ONCCAres3106, ONCCAsispro, ONCCAMatadero "
                                      "from caratula where interno = ?"),
                       {interno});
        Datos d;
        if (IsRecord(rs)) {
            d.habilitado =
                EsNull(rs.Fields(QStringLiteral("ONCCAHabilitado"))) == QStringLiteral("S");
            for (const QString& c : Columnas())
                d.codigos.insert(c, EsNull(rs.Fields(c)));
        }
        return d;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                QStringLiteral(" seccion CargarDatos en Formulario frmONCCA :: "),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return std::nullopt;
    }
}

bool OnccaDatos::GuardarDatos(const QString& interno, const Datos& d) {
    try {
        QStringList partes;
        QVariantList valores;
        for (const QString& c : Columnas()) {
            partes << c + QStringLiteral(" = ?");
            valores << d.codigos.value(c);
        }
        partes << QStringLiteral("ONCCAHabilitado = ?");
        valores << (d.habilitado ? QStringLiteral("S") : QStringLiteral("N")) << interno;
        ctx_.stores()
            .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
            .Ejecutar(QStringLiteral("update caratula set ") + partes.join(QStringLiteral(", ")) +
                          QStringLiteral(" where interno = ?"),
                      valores);
        return true;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(
            QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                QStringLiteral(" seccion GuardarDatos en Formulario frmONCCA :: "),
            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
}

} // namespace korven
