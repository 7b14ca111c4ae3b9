#include "header/BultosDatos.h"

#include "header/FechasTexto.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
}

std::optional<BultosDatos::Datos> BultosDatos::MostrarDatos(const QString& interno) {
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
            QStringLiteral("select factura9,BULNRO,BULCOD,BULTIP,BULPES,BULDES,marcabul, via, "
                           "trans, bandera, cuittrans ,factura10, venemb from caratula where "
                           "interno = ") +
            SqlTexto(interno));
        if (!IsRecord(rs))
            return std::nullopt;
        auto campo = [&](const char* nombre) {
            return EsNull(rs.Fields(QString::fromLatin1(nombre)));
        };
        Datos d;
        d.noTransferir = campo("factura9").trimmed() == QStringLiteral("1");
        d.nroBultos = campo("BULNRO");
        d.codigo = campo("BULCOD");
        d.tipo = campo("BULTIP");
        const QVariant peso = rs.Fields(QStringLiteral("BULPES"));
        d.peso = EsVacio(peso) ? QString() : Formato(EsNumero(peso), QStringLiteral("00.00"));
        const QVariant despachar = rs.Fields(QStringLiteral("BULDES"));
        d.bultosDespachar = EsVacio(despachar) ? QString() : EsNull(EsNumero(despachar));
        d.marca = campo("marcabul");
        d.via = campo("via");
        d.nombreTransporte = campo("trans");
        d.bandera = campo("bandera");
        d.cuit = campo("cuittrans");
        d.nombreAgente = campo("factura10");
        const QString venemb = campo("venemb");
        const QDate f = FechasTexto::Leer(venemb);
        d.vencimiento = f.isValid() ? FormatoFecha(f, QStringLiteral("dd/mm/yyyy")) : venemb;
        return d;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() +
                                    QStringLiteral(" seccion [korven.frmbultos.mostrardatos]"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return std::nullopt;
    }
}

bool BultosDatos::Grabar(const QString& interno, Datos& d, const QDate& hoy, QString* foco) {
    Dialogos& dlg = ctx_.dialogos();
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
        if (d.noTransferir) {
            cn.Ejecutar(QStringLiteral("update caratula set factura9 = '1' where interno = ") +
                        SqlTexto(interno));
            dlg.Mensaje(QStringLiteral("Eligio no transferir bultos, los datos no seran guardados"),
                        QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
            return true;
        }
        const QDate vence = FechasTexto::Leer(d.vencimiento);
        if (!vence.isValid()) {
            dlg.Mensaje(QStringLiteral("En Vencimiendo de Embarque debe tener una fecha valida"),
                        QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            if (foco)
                *foco = QStringLiteral("TxtVencimiento");
            return false;
        }
        if (vence < hoy) {
            dlg.Mensaje(
                QStringLiteral("La fecha Vencimiento de Embarque debe ser superior a la del día."),
                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            if (foco)
                *foco = QStringLiteral("TxtVencimiento");
            return false;
        }
        if (d.cuit.trimmed().isEmpty())
            d.nombreAgente.clear();
        const QString sep = ctx_.stores().getDecimalSeparatorbyEntity(kInternos);
        cn.Ejecutar(QStringLiteral("update caratula set marcabul = ") + SqlTexto(d.marca) +
                    QStringLiteral(", bulnro = ") + SqlTexto(d.nroBultos) +
                    QStringLiteral(", via = ") + SqlTexto(d.via) + QStringLiteral(", trans = ") +
                    SqlTexto(d.nombreTransporte) + QStringLiteral(", bandera = ") +
                    SqlTexto(d.bandera) + QStringLiteral(", cuittrans = ") + SqlTexto(d.cuit) +
                    QStringLiteral(", factura9 = '0', factura10 = ") + SqlTexto(d.nombreAgente) +
                    QStringLiteral(", bulcod = ") + SqlTexto(d.codigo) +
                    QStringLiteral(", bultip = ") + SqlTexto(d.tipo) +
                    QStringLiteral(", bulpes = ") + SqlNumero(d.peso.trimmed(), sep) +
                    QStringLiteral(", buldes = ") + SqlNumero(d.bultosDespachar.trimmed(), sep) +
                    QStringLiteral(", venemb = ") +
                    SqlTexto(FormatoFecha(vence, QStringLiteral("dd-mm-yy"))) +
                    QStringLiteral(" where interno = ") + SqlTexto(interno));
        return true;
    } catch (const KorvenError& e) {
        dlg.Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                        QStringLiteral(" - seccion [korven.frmbultos.grabar]"),
                    QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
}

} // namespace korven
