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
                           "interno = ?"),
            {interno});
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
            cn.Ejecutar(QStringLiteral("update caratula set factura9 = '1' where interno = ?"),
                        {interno});
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
        // The weight and the packages to clear may stay empty (saved as 0); what is typed in
        // them must read as a number, as the clerk types it.
        const struct {
            const QString& texto;
            const char* mensaje;
            const char* control;
        } numeros[] = {
            {d.peso, "El PESO debe ser un valor númerico", "TxtPeso"},
            {d.bultosDespachar, "Bultos a Despachar debe ser un valor númerico", "TxtBultDesp"},
        };
        for (const auto& n : numeros) {
            if (!n.texto.trimmed().isEmpty() && !EsNumeroTecleado(n.texto)) {
                dlg.Mensaje(QString::fromUtf8(n.mensaje), QStringLiteral("KORVEN"),
                            Dialogos::Icono::Exclamacion);
                if (foco)
                    *foco = QString::fromLatin1(n.control);
                return false;
            }
        }
        if (d.cuit.trimmed().isEmpty())
            d.nombreAgente.clear();
        cn.Ejecutar(QStringLiteral("update caratula set marcabul = ?, bulnro = ?, via = ?, "
                                   "trans = ?, bandera = ?, cuittrans = ?, factura9 = '0', "
                                   "factura10 = ?, bulcod = ?, bultip = ?, bulpes = ?, "
                                   "buldes = ?, venemb = ? where interno = ?"),
                    {d.marca, d.nroBultos, d.via, d.nombreTransporte, d.bandera, d.cuit,
                     d.nombreAgente, d.codigo, d.tipo, NumeroTecleado(d.peso),
                     NumeroTecleado(d.bultosDespachar),
                     FormatoFecha(vence, QStringLiteral("dd-mm-yy")), interno});
        return true;
    } catch (const KorvenError& e) {
        dlg.Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                        QStringLiteral(" - seccion [korven.frmbultos.grabar]"),
                    QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return false;
    }
}

} // namespace korven
