#include "assembly/ComprobacionInterno.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/Pantallas.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QStringList>

namespace korven {

namespace {

QString Pais(const Recordset& rs, const char* campo) {
    return EsNull(rs.Fields(QString::fromLatin1(campo))).trimmed();
}

} // namespace

QString ComprobacionInterno::ChequearInterno(const QString& interno, bool& hayDiferencias) {
    QStringList t;
    try {
        Conexion& c = ctx_.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
        Recordset car = c.Abrir(QStringLiteral("select dcpaisorigen, dcforzarpaisorigen, "
                                               "dcpaisdestino from caratula where interno = ?"),
                                {interno});
        if (car.Eof()) {
            hayDiferencias = true;
            return QStringLiteral("Error Buscando Interno en CARATULA");
        }
        const QString origenCaratula = Pais(car, "dcpaisorigen");
        const bool forzar = Pais(car, "dcforzarpaisorigen") == QLatin1String("S");
        const QString destinoCaratula = Pais(car, "dcpaisdestino");

        Recordset rs = c.Abrir(
            QStringLiteral(
                "select subitems.id as subitemsid, subitems.idpais as subitemsidpais, "
                "subitems.idpaisproc as subitemsidpaisproc, groupsubitems.id as "
                "groupsubitemsid, groupsubitems.idpais as groupsubitemsidpais, "
                "groupsubitems.idpaisproc as groupsubitemsidproc, item.idpais as itemidpais, "
                "item.idproc as itemidpaisproc from subitems, groupsubitems, item where "
                "groupsubitems.id = item.id and subitems.id = groupsubitems.idsub and "
                "subitems.interno = groupsubitems.interno and groupsubitems.interno = "
                "item.interno and item.interno = ? order by groupsubitems.id, "
                "groupsubitems.idsub, groupsubitems.orden"),
            {interno});
        if (rs.Eof()) {
            hayDiferencias = true;
            return QStringLiteral("Error Analizando Interno en Item/SubItems/GroupSubItems");
        }

        const auto Alerta = [this] {
            ctx_.dialogos().Mensaje(
                QStringLiteral("ERROR EN ARMADO DE ITEMS, INFORMAR A ZEPTO7000"),
                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        };
        QString item;
        bool difiere = false;
        const auto CerrarItem = [&] {
            if (item.isNull())
                return;
            if (difiere)
                hayDiferencias = true;
            else
                t << QStringLiteral("Item: ") + item + QStringLiteral(" Verificacion OK");
        };
        for (; !rs.Eof(); rs.MoveNext()) {
            const QString n = QString::number(
                static_cast<long long>(EsNumero(rs.Fields(QStringLiteral("groupsubitemsid")))));
            if (n != item) {
                CerrarItem();
                item = n;
                difiere = false;
            }
            const QString origenLinea = Pais(rs, "subitemsidpais");
            const QString destinoLinea = Pais(rs, "subitemsidpaisproc");
            const QString origenGrupo = Pais(rs, "groupsubitemsidpais");
            const QString destinoGrupo = Pais(rs, "groupsubitemsidproc");
            const QString origenItem = Pais(rs, "itemidpais");
            const QString destinoItem = Pais(rs, "itemidpaisproc");
            const QString prefijo = QStringLiteral("Item: ") + n + QLatin1Char(' ');
            const QString error =
                QStringLiteral("ERROR DE INCONGRUENCIA DE DATOS Item: ") + n + QLatin1Char(' ');
            const auto Agregar = [&](const QString& linea) {
                t << linea;
                difiere = true;
            };
            const auto Difiere = [](const QString& quien, const QString& a, const QString& otro,
                                    const QString& b) {
                return QStringLiteral("(Pais ") + quien + QLatin1Char('=') + a +
                       QStringLiteral(") difiere de (Pais ") + otro + QLatin1Char('=') + b +
                       QLatin1Char(')');
            };
            const QString activado = QStringLiteral(" - Forzar ACTIVADO");
            const QString desactivado = QStringLiteral(" - Forzar DESACTIVADO");

            if (forzar) {
                if (origenItem != origenCaratula)
                    Agregar(prefijo +
                            Difiere(QStringLiteral("Origen ITEM"), origenItem,
                                    QStringLiteral("Origen Caratula"), origenCaratula) +
                            activado);
                if (!origenLinea.isEmpty()) {
                    if (origenLinea != origenGrupo)
                        Agregar(prefijo +
                                Difiere(QStringLiteral("Origen SUBITEM"), origenLinea,
                                        QStringLiteral("Origen Grupo"), origenGrupo) +
                                activado);
                    if (origenLinea != origenItem)
                        Agregar(prefijo +
                                Difiere(QStringLiteral("Origen SUBITEM"), origenLinea,
                                        QStringLiteral("Origen ITEM"), origenItem) +
                                activado);
                }
            } else if (!origenLinea.isEmpty()) {
                if (origenLinea != origenGrupo) {
                    Alerta();
                    Agregar(error +
                            Difiere(QStringLiteral("Origen SUBITEM"), origenLinea,
                                    QStringLiteral("Origen Grupo"), origenGrupo) +
                            desactivado);
                }
                if (origenGrupo != origenItem)
                    Agregar(prefijo +
                            Difiere(QStringLiteral("Origen Grupo"), origenGrupo,
                                    QStringLiteral("Origen ITEM"), origenItem) +
                            desactivado);
                if (origenLinea != origenItem)
                    Agregar(prefijo +
                            Difiere(QStringLiteral("Origen SUBITEM"), origenLinea,
                                    QStringLiteral("Origen ITEM"), origenItem) +
                            desactivado);
            } else if (origenItem.isEmpty()) {
                Agregar(QStringLiteral("Advertencia! ") + prefijo +
                        QStringLiteral("(Pais Origen SUBITEM no se ha completado)") + desactivado);
            }

            if (!destinoCaratula.isEmpty() || !destinoLinea.isEmpty() || !destinoItem.isEmpty()) {
                if (destinoLinea != destinoGrupo) {
                    Alerta();
                    Agregar(error + Difiere(QStringLiteral("Destino SUBITEM"), destinoLinea,
                                            QStringLiteral("Destino Grupo"), destinoGrupo));
                }
                if (!destinoLinea.isEmpty() && destinoLinea != destinoItem)
                    Agregar(prefijo + Difiere(QStringLiteral("Destino SUBITEM"), destinoLinea,
                                              QStringLiteral("Destino ITEM"), destinoItem));
            } else {
                Agregar(QStringLiteral("Advertencia! ") + prefijo +
                        QStringLiteral("(Pais Destino SUBITEM/ITEM no se ha completado, No "
                                       "especificado en Caratula)"));
            }
        }
        // The last item is closed like the others.
        CerrarItem();
    } catch (const KorvenError& e) {
        hayDiferencias = true;
        t << QStringLiteral("Error %1 (%2) en ChequearInterno de Módulo mod_comprobacion Linea:0")
                 .arg(e.numero())
                 .arg(e.descripcion());
    }
    return t.join(QLatin1Char('\n'));
}

bool ComprobacionInterno::Comprobar(const QString& interno) {
    bool hay = false;
    const QString texto = ChequearInterno(interno, hay);
    if (hay) {
        const QString pantalla = QStringLiteral("Frm_ComprobacionErrores");
        if (ctx_.pantallas().Registrada(pantalla))
            ctx_.AbrirModal(pantalla, {{QStringLiteral("texto"), texto}});
        else
            ctx_.dialogos().Mensaje(
                texto, QStringLiteral("Korven v3 - Reporte de Diferencias Encontradas."),
                Dialogos::Icono::Ninguno);
    }
    return hay;
}

} // namespace korven
