#pragma once

// Stores for the header tests: every table of the system and a small set of reference rows of
// our own, so that each expectation can be worked out by hand.

#include "foundation/RegistrarPantallasOperaciones.h"
#include "header/CaratulaDatos.h"
#include "header/PantallasCaratula.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QStringList>
#include <QTest>
#include <initializer_list>

namespace korven::test {

inline void Ejecutar(TestStores& ts, const char* entidad, const QStringList& sentencias) {
    Conexion& cn = ts.conexion(QString::fromLatin1(entidad));
    for (const QString& s : sentencias)
        cn.Ejecutar(s);
}

// The stores as the program makes them (reference data and the demo Operations), with the
// screens of the register and the header registered.
inline void PrepararDemo(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    const QString datos = schema::CarpetaDatos(ts.directorio());
    schema::CargarDatosReferencia(ts.stores(), datos);
    schema::CargarOperacionesDemo(ts.stores(), datos);
    RegistrarPantallasOperaciones(ts.ctx().pantallas());
    RegistrarPantallasCaratula(ts.ctx().pantallas());
}

inline void PrepararCaratula(TestStores& ts) {
    schema::CrearOActualizar(ts.stores());
    Ejecutar(ts, "INTERNOS",
             {
                 "insert into sta (id,descripcion,cstaimpexp) values "
                 "('IC04','IMPORTACION A CONSUMO','I'),('EC01','EXPORTACION A CONSUMO','E'),"
                 "('EC16','EXPORTACION CON FACILIDAD','E'),('IT01','IMPORTACION TEMPORAL','I'),"
                 "('ZZ99','SIN DESTINO','I')",
                 "insert into aduana (id,descripcion) values ('001','BUENOS AIRES'),"
                 "('073','EZEIZA'),('033','ROSARIO')",
                 "insert into condiciondeventa (id,descripcion) values ('FOB','FREE ON BOARD'),"
                 "('CIF','COSTO SEGURO Y FLETE')",
                 "insert into unidades (id,descripcion) values ('07','UNIDAD'),('01','KILOGRAMO')",
                 "insert into divisas (id,descripcion,imp) values ('DOL','DOLAR ESTADOUNIDENSE',1),"
                 "('060','EURO',1.085),('001','PESO',0)",
                 "insert into puertos (cpor,lpor) values ('BUE','BUENOS AIRES'),"
                 "('ROS','ROSARIO')",
                 "insert into prorrateo (interno,codigo,descripcion,valor) values "
                 "('P-100','A','GASTOS',100),('P-100','B','COMISION',50)",
             });
    Ejecutar(ts, "SYSTABLAS",
             {
                 "insert into pais (id,descripcion) values ('212','ESTADOS UNIDOS'),"
                 "('203','BRASIL'),('1','ZONA FRANCA')",
                 "insert into bancos (id,descripcion) values ('011','BANCO NACION'),"
                 "('007','BANCO GALICIA')",
                 "insert into motivos (id,descripcion) values ('M1','MOTIVO UNO')",
                 "insert into mottmp (id,descripcion,dias,impexpo) values "
                 "('T1','PERFECCIONAMIENTO',180,'I'),('T2','EXHIBICION',90,'I'),"
                 "('T9','REPARACION',60,'E')",
                 "insert into oncca_cortes (categoria,id,descripcion,ncm) values "
                 "('NOV','C1','LOMO','0201.30.00'),('VAC','C2','BIFE','0202.30.00')",
                 "insert into oncca_faneador (id,descripcion) values ('F1','FANEADOR NORTE'),"
                 "('F2','FANEADOR OESTE')",
                 "insert into oncca_sispro (id,descripcion) values ('P1','PASTORIL')",
             });
    Ejecutar(ts, "PERSONAL",
             {
                 "insert into despadu (cuit,nombre) values ('20123456786','DESPACHANTE PRUEBA')",
                 "insert into clientes (cuit,nombre,regalias,ajxvinc_4102) values "
                 "('30712345671','O''HIGGINS S.A.',1,0)",
                 "insert into vendedor (codigo,nombre,domicilio) values ('V01','VENDEDOR UNO',"
                 "'CALLE 1')",
                 "insert into transporte (cuit,nombre) values ('23000000000','TRANSPORTES SUR')",
             });
    // dest: IC04 does without the vendor; EC01 without the freight and the invoices.
    Ejecutar(ts, "USUARIO",
             {
                 "insert into dest (subreg,txtidvendedor) values ('IC04','x')",
                 "insert into dest (subreg,txtfletedivisas,txtfactura) values ('EC01','x','x')",
                 "insert into dest (subreg) values ('EC16')",
                 "insert into dest (subreg) values ('IT01')",
             });
}

// A table of cases in text, fields split by '|', as rows "sqlite <case>" and "postgresql <case>"
// of the columns "motor" and "caso".
inline void CasosPorMotor(std::initializer_list<const char*> casos) {
    QTest::addColumn<int>("motor");
    QTest::addColumn<QStringList>("caso");
    for (int motor : {0, 1})
        for (const char* c : casos)
            QTest::addRow("%s %s", motor ? "postgresql" : "sqlite", c)
                << motor << QString::fromUtf8(c).split(QLatin1Char('|'));
}

// A new Operation, as the register creates it.
inline void NuevaOperacion(TestStores& ts, const QString& interno) {
    ts.conexion(QStringLiteral("INTERNOS"))
        .Ejecutar(QStringLiteral("insert into caratula (interno,fechaalta,onccahabilitado) values "
                                 "('%1','2026-11-22','N')")
                      .arg(interno));
}

// One column of an Operation's header as the store gives it back, numbers without trailing zeros.
inline QString Columna(TestStores& ts, const QString& interno, const QString& columna) {
    const QVariant v = ts.conexion(QStringLiteral("INTERNOS"))
                           .Escalar(QStringLiteral("select %1 from caratula where interno = '%2'")
                                        .arg(columna, interno));
    return v.metaType().id() == QMetaType::Double
               ? Formato(v.toDouble(), QStringLiteral("0.######"), QStringLiteral("."))
               : EsNull(v);
}

// The columns the save of the header writes, as "column=value" in their order.
inline QStringList Fila(TestStores& ts, const QString& interno) {
    QStringList r;
    for (const CaratulaDatos::Campo& c : CaratulaDatos::CamposDeGuardado())
        r << c.columna.toLower() + QLatin1Char('=') + Columna(ts, interno, c.columna.toLower());
    return r;
}

} // namespace korven::test
