#include "header/Transportes.h"

#include "header/DigitoVerificador.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kPersonal = QStringLiteral("PERSONAL");
}

void Transportes::Error(const KorvenError& e) {
    ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                                QStringLiteral(" [BUSCAR AG_TRANSPORTE] "),
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

QList<Transportes::Agente> Transportes::Cargar() {
    QList<Agente> l;
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kPersonal).Abrir(
            QStringLiteral("select * from transporte order by nombre"));
        for (; !rs.Eof(); rs.MoveNext())
            l.append({EsNull(rs.Fields(QStringLiteral("cuit"))),
                      EsNull(rs.Fields(QStringLiteral("nombre")))});
    } catch (const KorvenError& e) {
        Error(e);
    }
    return l;
}

QString Transportes::BuscarTrans(const QString& cuit, bool* encontrado) {
    if (encontrado)
        *encontrado = false;
    if (!DigitoVerificador::Valido(cuit)) {
        ctx_.dialogos().Mensaje(QStringLiteral("Cuit Invalido"), QStringLiteral("KORVEN"),
                                Dialogos::Icono::Exclamacion);
        return {};
    }
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kPersonal).Abrir(
            QStringLiteral("select nombre from transporte where cuit = ?"), {cuit});
        if (IsRecord(rs)) {
            if (encontrado)
                *encontrado = true;
            return EsNull(rs.Fields(QStringLiteral("Nombre")));
        }
    } catch (const KorvenError& e) {
        Error(e);
    }
    return {};
}

bool Transportes::Eliminar(const QString& cuit) {
    if (!ctx_.dialogos().Pregunta(
            QStringLiteral("Confirma eliminar el Agente de Tranporte seleccionado")))
        return false;
    try {
        const int filas = ctx_.stores().getDataConnectionByEntity(kPersonal).Ejecutar(
            QStringLiteral("delete from transporte where cuit = ?"), {cuit});
        if (filas == 0) {
            ctx_.dialogos().Mensaje(QStringLiteral("0 cero registros eliminados"));
            return false;
        }
        return true;
    } catch (const KorvenError& e) {
        Error(e);
    }
    return false;
}

bool Transportes::Guardar(int modo, const QString& anterior, const QString& cuit,
                          const QString& nombre) {
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(kPersonal);
        if (modo == 1) {
            if (!DigitoVerificador::Valido(cuit)) {
                ctx_.dialogos().Mensaje(QStringLiteral("Cuit Invalido"), QStringLiteral("KORVEN"),
                                        Dialogos::Icono::Exclamacion);
                return false;
            }
            Transaccion tx(ctx_.stores(), {kPersonal});
            Recordset rs =
                cn.Abrir(QStringLiteral("select nombre from transporte where cuit = ?"), {cuit});
            if (IsRecord(rs)) {
                ctx_.dialogos().Mensaje(QStringLiteral("El CUIT ingresado ya existe en el sistema"),
                                        QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
                return false;
            }
            cn.Ejecutar(QStringLiteral("insert into transporte(cuit,nombre) values (?,?)"),
                        {cuit, nombre});
            tx.Confirmar();
            return true;
        }
        return cn.Ejecutar(
                   QStringLiteral("update transporte set cuit = ?, nombre = ? where cuit = ?"),
                   {cuit, nombre, anterior}) > 0;
    } catch (const KorvenError& e) {
        Error(e);
    }
    return false;
}

} // namespace korven
