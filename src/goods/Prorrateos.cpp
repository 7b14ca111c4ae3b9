#include "goods/Prorrateos.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
}

void Prorrateos::Reportar(const KorvenError& e, const QString& seccion) {
    ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                                QLatin1Char(' ') + seccion,
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

QList<Prorrateos::Codigo> Prorrateos::CargarList(const QString& interno) {
    QList<Codigo> l;
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
            QStringLiteral("select * from prorrateo where interno = ? order by codigo"), {interno});
        for (; !rs.Eof(); rs.MoveNext())
            l.append({EsNull(rs.Fields(QStringLiteral("codigo"))),
                      EsNull(rs.Fields(QStringLiteral("descripcion"))),
                      EsNumero(rs.Fields(QStringLiteral("valor")))});
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("[PRORRATEO.CARGAR_LISTA] "));
    }
    return l;
}

bool Prorrateos::Agregar(const QString& interno, const QString& codigo, const QString& descripcion,
                         const QString& valor) {
    Dialogos& dlg = ctx_.dialogos();
    if (codigo.isEmpty()) {
        dlg.Mensaje(QStringLiteral("Debe ingresar un valor en el campo CODIGO"));
        return false;
    }
    double numero = 0;
    if (!LeerNumeroTecleado(valor, &numero)) {
        dlg.Mensaje(QStringLiteral("Debe ingresar un dato Númerico en el campo VALOR"));
        return false;
    }
    if (!(numero > 0)) {
        dlg.Mensaje(QStringLiteral("El dato en el campo VALOR debe ser MAYOR A 0 (cero)"));
        return false;
    }
    try {
        bool existe = false;
        EnTransaccion(ctx_.stores(), {kInternos}, [&](Transaccion&) {
            Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
            existe = EsNumero(cn.Abrir(QStringLiteral("select count(1) as cont from prorrateo "
                                                      "where codigo = ? and interno = ?"),
                                       {codigo, interno})
                                  .Fields(QStringLiteral("Cont"))) > 0;
            if (existe)
                return;
            cn.Ejecutar(
                QStringLiteral("Insert into prorrateo (interno,codigo,descripcion,valor) "
                               "values (?,?,?,") +
                    SqlNumero(numero, ctx_.stores().getDecimalSeparatorbyEntity(kInternos)) +
                    QLatin1Char(')'),
                {interno, codigo, descripcion});
        });
        if (existe)
            dlg.Mensaje(QStringLiteral("El codigo ya Existe"));
        return !existe;
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("[PRORRATEO.AGREGAR] "));
    }
    return false;
}

bool Prorrateos::Eliminar(const QString& interno, const QString& codigo) {
    try {
        ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
            QStringLiteral("delete from prorrateo where interno = ? and codigo = ?"),
            {interno, codigo});
        return true;
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("[PRORRATEO.ELIMINAR] "));
    }
    return false;
}

double Prorrateos::Total(const QString& interno) {
    try {
        return EsNumero(ctx_.stores().getDataConnectionByEntity(kInternos).Escalar(
            QStringLiteral("select sum(valor) as tot from prorrateo where interno = ") +
            SqlTexto(interno)));
    } catch (const KorvenError& e) {
        Reportar(e, QStringLiteral("[PRORRATEO.TOTAL] "));
    }
    return 0;
}

} // namespace korven
