#include "header/CambioDivisas.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

void CambioDivisas::VerificarCambio(const QString& codigo, const QString& valor) {
    if (codigo.trimmed().isEmpty())
        return;
    const QString entidad = QStringLiteral("INTERNOS");
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(entidad);
        Recordset rs = cn.Abrir(QStringLiteral("select imp from divisas where id = ?"), {codigo});
        if (!IsRecord(rs)) {
            ctx_.dialogos().Mensaje(QStringLiteral("No se encontro codigo de DIVISAS en base."),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Informacion);
            return;
        }
        const QString mascara = QStringLiteral("0.000000");
        const QString guardado = Formato(EsNumero(rs.Fields(QStringLiteral("imp"))), mascara);
        const QString tipeado = Formato(QVariant(valor), mascara);
        if (guardado == tipeado)
            return;
        if (!ctx_.dialogos().Pregunta(
                QStringLiteral("El valor ingresado por usted es ") + valor +
                QStringLiteral(" este valor no corresponde al que tiene guardado en la tabla de "
                               "Divisas que es ") +
                guardado + QStringLiteral(", desea guardar el nuevo valor como predeterminado.")))
            return;
        const int filas = cn.Ejecutar(QStringLiteral("update divisas set imp = ? where id = ?"),
                                      {NumeroTecleado(valor), codigo});
        if (filas > 0)
            ctx_.dialogos().Mensaje(QStringLiteral("Valor Guardado Correctamente."));
        else
            ctx_.dialogos().Mensaje(QStringLiteral("No se puede guardar valor"),
                                    QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [VERIFICARCAMBIO] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
    }
}

} // namespace korven
