#include "foundation/EstadoInterno.h"

#include "foundation/ListasSubRegimen.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

const QString EstadoInterno::Completo = QStringLiteral("COMPLETO!");
const QString EstadoInterno::Incompleto = QStringLiteral("INCOMPLETO");
const QString EstadoInterno::Generado = QStringLiteral("GENERADO!");
const QString EstadoInterno::SinGenerar = QStringLiteral("SIN GENERAR");

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

// A field of the current row, as text or as a number; a field the row lacks reads empty.
QString Texto(const Recordset& rs, const char* campo) {
    if (rs.Eof() || !rs.TieneCampo(QString::fromLatin1(campo)))
        return {};
    return EsNull(rs.Fields(QString::fromLatin1(campo)));
}
double Numero(const Recordset& rs, const char* campo) {
    if (rs.Eof() || !rs.TieneCampo(QString::fromLatin1(campo)))
        return 0;
    return EsNumero(rs.Fields(QString::fromLatin1(campo)));
}
bool Falta(const Recordset& rs, const char* campo) {
    return Texto(rs, campo).trimmed().isEmpty();
}
bool FaltaNumero(const Recordset& rs, const char* campo) {
    return Numero(rs, campo) == 0;
}

} // namespace

bool EstadoInterno::VerDatos(const QString& interno, EstadoDetalle& estado) {
    try {
        Calcular(interno, estado);
        return true;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    QStringLiteral("Seccion Verdatos::") + e.descripcion(),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
    return false;
}

QString EstadoInterno::LeerFactura8(const QString& interno) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select factura8 from caratula where interno = ") + SqlTexto(interno));
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("factura8"))) : QString();
}

void EstadoInterno::MarcarCambiado(const QString& interno) {
    ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("update caratula set factura8 = 'S' where interno = ") + SqlTexto(interno));
    ctx_.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno,
                                QString());
}

void EstadoInterno::Calcular(const QString& interno, EstadoDetalle& e) {
    StoreDirectory& stores = ctx_.stores();
    Conexion& internos = stores.getDataConnectionByEntity(kInternos);
    const QString clave = SqlTexto(interno);

    e.textos[QStringLiteral("LbInterno")] = interno;

    // 1. The header; with none the header labels stay empty and every test below fails.
    const Recordset car =
        internos.Abrir(QStringLiteral("select * from caratula where interno = ") + clave);
    const bool hayCaratula = IsRecord(car);

    // 2. The sub-regime and its kind.
    const QString idsubreg = Texto(car, "idsubreg");
    e.idsubreg = idsubreg;
    if (hayCaratula)
        e.textos[QStringLiteral("LbSubregimen")] = idsubreg;
    e.tipoSubRegimen =
        idsubreg.left(2) == QStringLiteral("TG") ? QStringLiteral("T") : QStringLiteral("P");

    // 3. Import or export.
    const Recordset sta = internos.Abrir(QStringLiteral("select cstaimpexp from sta where id = ") +
                                         SqlTexto(idsubreg));
    e.cstaimpexp = IsRecord(sta) ? Texto(sta, "cstaimpexp").left(1) : QStringLiteral("N");
    const bool expo = e.cstaimpexp == QStringLiteral("E");
    e.habilitados[QStringLiteral("ChCOEF")] = expo;

    // 4. Customs office and parties.
    if (hayCaratula) {
        const QString aduana = Texto(car, "idaduana");
        const Recordset ad = internos.Abrir(
            QStringLiteral("select descripcion from aduana where id = ") + SqlTexto(aduana));
        e.textos[QStringLiteral("LbAduana")] =
            aduana.isEmpty()
                ? QString()
                : QStringLiteral("(") + aduana + QStringLiteral(") ") + Texto(ad, "descripcion");
        Conexion& personal = stores.getDataConnectionByEntity(QStringLiteral("PERSONAL"));
        const Recordset despa =
            personal.Abrir(QStringLiteral("select nombre from despadu where cuit = ") +
                           SqlTexto(Texto(car, "cuitdespaduana")));
        e.textos[QStringLiteral("LbDespa")] = Texto(despa, "nombre");
        const Recordset cli =
            personal.Abrir(QStringLiteral("select nombre from clientes where cuit = ") +
                           SqlTexto(Texto(car, "cuitcliente")));
        e.textos[QStringLiteral("LbCliente")] = Texto(cli, "nombre");
    }

    // 5. Counts.
    e.textos[QStringLiteral("LbItem")] = QString::number(EsNumero(internos.Escalar(
        QStringLiteral("select count(*) as valor from item where id<>0 and interno = ") + clave)));
    e.textos[QStringLiteral("LbSubItem")] = QString::number(EsNumero(internos.Escalar(
        QStringLiteral("select count(*) as valor from groupsubitems where interno = ") + clave)));

    // 6. The header is complete when the sub-regime has its fields defined and every required
    // value is there.
    bool completa = false;
    if (Numero(car, "fobdivisas") != 0) {
        const Recordset dest =
            stores.getDataConnectionByEntity(QStringLiteral("USUARIO"))
                .Abrir(QStringLiteral("select * from dest where subreg = ") + SqlTexto(idsubreg));
        if (IsRecord(dest)) {
            completa = true;
            if (idsubreg.isEmpty())
                completa = false;
            if (idsubreg.right(2) == QStringLiteral("06") && Falta(car, "factura5"))
                completa = false;
            if (Falta(car, "idaduana") || Falta(car, "cuitcliente") || Falta(car, "cuitdespaduana"))
                completa = false;
            if (Falta(car, "idvendedor") && Falta(dest, "Txtidvendedor"))
                completa = false;
            if (FaltaNumero(car, "fobdivisas") || Falta(car, "fobcoddivisas") ||
                FaltaNumero(car, "fobdivcambio"))
                completa = false;
            if (e.cstaimpexp == QStringLiteral("I") || idsubreg.left(4) == QStringLiteral("LAPI")) {
                if (FaltaNumero(car, "fletedivisas") || Falta(car, "fletecoddivisas") ||
                    FaltaNumero(car, "fletedivcambio") || FaltaNumero(car, "segurodivisas") ||
                    Falta(car, "segurocoddivisas") || FaltaNumero(car, "segurodivcambio"))
                    completa = false;
            }
            if (Falta(car, "idcondiciondeventa") && Falta(dest, "Txtidcondventa"))
                completa = false;
        }
    }
    e.caratulaCompleta = completa;
    e.textos[QStringLiteral("LbEstadoCaratula")] = completa ? Completo : Incompleto;

    const QString factura8 = Texto(car, "factura8");
    e.factura8 = factura8;
    QString estadoBultos;
    if (!completa) {
        e.textos[QStringLiteral("LbEstadoItem")] = QString();
    } else {
        // 7. The goods lines must add up to the FOB of the header.
        const double lineas = EsNumero(internos.Escalar(
            QStringLiteral("select sum(fob) as total from subitems where interno = ") + clave));
        const QString mascara = QStringLiteral("00.00");
        if (Formato(lineas, mascara) == Formato(Numero(car, "fobdivisas"), mascara)) {
            e.textos[QStringLiteral("LbEstadoSubItem")] = Completo;
            e.colores[QStringLiteral("LbEstadoSubItem")] = QColor(0, 0, 0);
            // 8. The items follow the change mark, not their number.
            const bool sinGenerar = factura8 == QStringLiteral("S");
            e.textos[QStringLiteral("LbEstadoItem")] = sinGenerar ? SinGenerar : Generado;
            e.visibles[QStringLiteral("frmOrdenar")] = sinGenerar;
        } else {
            e.textos[QStringLiteral("LbEstadoSubItem")] = Incompleto;
            e.colores[QStringLiteral("LbEstadoSubItem")] = QColor(255, 0, 0);
        }
        // 9. The packages, for an export.
        if (expo) {
            const Recordset b = internos.Abrir(
                QStringLiteral("select factura9,BULNRO,BULCOD,BULTIP,BULPES,BULDES from "
                               "caratula where interno = ") +
                clave);
            estadoBultos = QStringLiteral("COMPLETO");
            if (Texto(b, "factura9").trimmed() != QStringLiteral("1")) {
                bool falta;
                if (Texto(b, "BULCOD") == QStringLiteral("32") &&
                    Texto(b, "BULTIP") == QStringLiteral("A"))
                    falta = Falta(b, "BULCOD") || Falta(b, "BULTIP") || FaltaNumero(b, "BULPES");
                else
                    falta = Falta(b, "BULNRO") || Falta(b, "BULCOD") || Falta(b, "BULTIP") ||
                            FaltaNumero(b, "BULPES") || FaltaNumero(b, "BULDES");
                if (falta)
                    estadoBultos = QStringLiteral("INCOMPLETO");
            }
            e.textos[QStringLiteral("LbEstadoBultos")] = estadoBultos;
        } else {
            e.habilitados[QStringLiteral("CmdBultos")] = false;
            e.habilitados[QStringLiteral("cmdCertOrig")] = false;
        }
    }

    // 10. The buttons.
    const QString estadoItem = e.textos.value(QStringLiteral("LbEstadoItem"));
    e.habilitados[QStringLiteral("cmdITEM")] = completa;
    e.habilitados[QStringLiteral("CmdPresupuesto")] = completa;
    e.visibles[QStringLiteral("frmOrdenar")] = completa && estadoItem == SinGenerar;
    if (expo) {
        e.habilitados[QStringLiteral("CmdBultos")] = completa;
        e.habilitados[QStringLiteral("cmdCertOrig")] = completa;
    }
    const bool temporal = EsSubRegimenTemporal(idsubreg);
    const bool impresion = EsSubRegimenImpresion(idsubreg);
    if (completa && expo) {
        const bool bultos = estadoBultos == QStringLiteral("COMPLETO");
        e.habilitados[QStringLiteral("CmdTransMaria")] = bultos;
        e.habilitados[QStringLiteral("cmdExportar")] = bultos;
        e.habilitados[QStringLiteral("cmdExportINS")] = bultos && temporal;
        e.habilitados[QStringLiteral("cmdPrint")] = impresion;
        e.habilitados[QStringLiteral("CmdHojaVal")] = true;
    } else if (completa && idsubreg == QStringLiteral("IDA4")) {
        e.habilitados[QStringLiteral("cmdExportar")] = estadoItem == Generado;
        e.habilitados[QStringLiteral("CmdTransMaria")] = true;
        e.habilitados[QStringLiteral("cmdExportINS")] = temporal;
        e.habilitados[QStringLiteral("cmdPrint")] = impresion;
    } else {
        e.habilitados[QStringLiteral("CmdTransMaria")] = completa;
        e.habilitados[QStringLiteral("cmdExportar")] = completa;
        e.habilitados[QStringLiteral("cmdExportINS")] = completa && temporal;
        e.habilitados[QStringLiteral("cmdPrint")] = completa && impresion;
    }
    // A changed Operation must pass the assembly before any output.
    if (factura8 == QStringLiteral("S")) {
        for (const char* b : {"CmdTransMaria", "CmdBultos", "cmdCertOrig", "CmdPresupuesto",
                              "CmdHojaVal", "cmdExportar", "cmdExportINS", "cmdPrint"})
            e.habilitados[QString::fromLatin1(b)] = false;
    }
}

} // namespace korven
