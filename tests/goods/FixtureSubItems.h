#pragma once

// Stores for the goods tests: the reference data of the program (nomenclator, suffixes, units
// and their conversions, countries) with a few positions of our own whose units make every
// conversion easy to work out by hand, and one Operation.

#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/Pantallas.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QStringList>
#include <deque>

namespace korven::test {

inline const QString kInterno = QStringLiteral("T-SUB");

// 9901.10.00.100A: statistics in units, specific duty in units too.
// 9902.20.00.100B: statistics in kilograms, no specific duty.
// 9903.30.00.100C: statistics in units, specific duty in kilograms.
// 9904.40.00.100D: no statistics unit.
inline void PrepararSubItems(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
    Conexion& ncm = ts.conexion(QStringLiteral("NCM"));
    ncm.Ejecutar(QStringLiteral(
        "insert into ncm (\"001\",\"002\",\"003\",\"004\",\"010\",\"012\",\"019\",\"020\","
        "\"059\") values ('9901.10.00','100','A','JUGUETES','LOS DEMAS','07','0','07','*'),"
        "('9902.20.00','100','B','GRANOS','CEREALES','01','0','',''),"
        "('9903.30.00','100','C','PIEZAS','METALES','07','0','01',''),"
        "('9904.40.00','100','D','SIN UNIDAD','VARIOS','','0','','')"));
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("insert into caratula (interno,fechaalta,idsubreg,fobdivisas,"
                                 "onccahabilitado,factura8) values ('%1','2026-11-22','IC04',"
                                 "1000,'N','N')")
                      .arg(kInterno));
    ts.ctx().InternoActual = kInterno;
    RegistrarComponentesNomenclador(ts.ctx().componentes());
}

// The columns of a stored line, numbers as "0.####", in one text for a comparison.
inline QString Fila(TestStores& ts, long long id, const QString& columnas) {
    Recordset rs = ts.conexion(QStringLiteral("INTERNOS"))
                       .Abrir(QStringLiteral("select %1 from subitems where interno = ? and id = ?")
                                  .arg(columnas),
                              {kInterno, id});
    if (rs.Eof())
        return QStringLiteral("(no existe)");
    QStringList r;
    for (const QString& c : rs.Campos()) {
        const QVariant v = rs.Fields(c);
        r << (v.metaType().id() == QMetaType::Double || v.metaType().id() == QMetaType::Int ||
                      v.metaType().id() == QMetaType::LongLong
                  ? Formato(v.toDouble(), QStringLiteral("0.####"), QStringLiteral("."))
                  : EsNull(v));
    }
    return r.join(QLatin1Char('|'));
}

inline int Lineas(TestStores& ts) {
    return static_cast<int>(EsNumero(ts.conexion(QStringLiteral("INTERNOS"))
                                         .Escalar(QStringLiteral("select count(*) from subitems "
                                                                 "where interno = 'T-SUB'"))));
}

inline QString Factura8(TestStores& ts) {
    return EsNull(ts.conexion(QStringLiteral("INTERNOS"))
                      .Escalar(QStringLiteral("select factura8 from caratula where interno = "
                                              "'T-SUB'")));
}

// The list of listed suffix values answered from a script: each answer is the beginning of the
// row to choose ("MS02"), or empty for Esc. The rows offered are kept.
struct CargaSufijosGuionada {
    std::deque<QString> respuestas;
    QStringList ofrecidas;
    void Registrar(AppContext& ctx) {
        ctx.pantallas().Registrar(
            QStringLiteral("FrmCargaSufijos"), [this](AppContext&, const QVariantMap& args) {
                const QStringList opciones = args.value(QStringLiteral("opciones")).toStringList();
                ofrecidas << opciones;
                const QString r = respuestas.empty() ? QString() : respuestas.front();
                if (!respuestas.empty())
                    respuestas.pop_front();
                for (const QString& o : opciones)
                    if (!r.isEmpty() && o.startsWith(r))
                        return QVariant(o);
                return QVariant(QStringLiteral("###CANCELADO###"));
            });
    }
};

} // namespace korven::test
