// The goods screen of an Operation with 10,000 lines, on SQLite and, when KORVEN_TEST_PG names a
// server, on PostgreSQL: opening the screen (the list, its totals and the rows on screen), and
// saving one line typed in the fields with the refresh of the list that follows. Prints the
// median of the runs in milliseconds.
//
//   build/bench/bench_subitems [runs]

#include "Medir.h"
#include "goods/FrmSubItems.h"
#include "goods/ModeloSubItems.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/ScriptedDialogs.h"
#include "schema/Esquema.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <cstdio>

using namespace korven;

namespace {

const QString kInterno = QStringLiteral("OP-10000");

void Llenar(Conexion& cx, int lineas) {
    cx.Comenzar();
    cx.Ejecutar(QStringLiteral(
                    "insert into caratula (interno,fechaalta,idsubreg,fobdivisas,onccahabilitado,"
                    "factura8) values ('%1','2026-11-22','IC04',500000,'N','N')")
                    .arg(kInterno));
    cx.Ejecutar(
        QStringLiteral(
            "insert into subitems (id,interno,idcatalogo,idarticulo,ncm,idunidad,cantidad,"
            "preciounitario,fob,estadistica,valorrelacionestadistica,deresp,valorderesp,idpais,"
            "estadomerc,sufijos,biendeuso,kgneto,kgbruto,descripcion,cancelaciones) WITH "
            "RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) SELECT i, "
            "'%2', 'CAT-1', 'ART' || i, '7321.11.00.100X', '07', i % 50 + 1, 12.5, "
            "(i % 50 + 1) * 12.5, '07', i % 50 + 1, '', 0, '310', '1', 'SIN SUFIJOS', 'S', "
            "i % 7, i % 7 + 1, 'ARTICULO ' || i, CASE WHEN i % 100 = 0 THEN 'OK' ELSE '' END "
            "FROM n")
            .arg(lineas)
            .arg(kInterno));
    cx.Confirmar();
    cx.Ejecutar(cx.motor() == Motor::PostgreSQL ? QStringLiteral("ANALYZE subitems")
                                                : QStringLiteral("ANALYZE"));
}

void Poner(QWidget& f, const char* nombre, const QString& texto) {
    f.findChild<QLineEdit*>(QString::fromLatin1(nombre))->setText(texto);
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 15;
    SeparadorDecimalScope sep(QStringLiteral(","));
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        schema::CrearOActualizar(ts.stores());
        schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
        Conexion& cx = ts.conexion(QStringLiteral("INTERNOS"));
        Llenar(cx, 10000);
        ts.ctx().InternoActual = kInterno;
        ts.dialogos().ResponderSiempre(true);
        const QVariantMap args{{QStringLiteral("interno"), kInterno}};

        // Opening: the form, its list and totals, and the first paint of the rows on screen.
        const double abrir = bench::Mediana(corridas, [&] {
            FrmSubItems f(ts.ctx(), args);
            f.show();
            QApplication::processEvents();
            f.hide();
        });
        std::printf("%-10s abrir la pantalla con 10000 lineas          %7.2f ms\n",
                    bench::NombreMotor(motor), abrir);

        // Saving: the fields of a line, the save with every check, and the list read again
        // and painted.
        FrmSubItems f(ts.ctx(), args);
        f.show();
        QApplication::processEvents();
        auto* lista = f.findChild<QTableView*>(QStringLiteral("LstArticulos"));
        int n = 0;
        const double grabar = bench::Mediana(
            corridas,
            [&] {
                f.Grabar(2);
                lista->viewport()->repaint();
            },
            [&] {
                ++n;
                Poner(f, "TxtPosicion", QStringLiteral("7321.11.00.100X"));
                f.BuscarNCM(QStringLiteral("7321.11.00.100X"));
                Poner(f, "TxtUnidad", QStringLiteral("07"));
                Poner(f, "TxtCantidad", QString::number(n));
                Poner(f, "TxtFobTotal", QString::number(n * 10));
                Poner(f, "TxtUnitario", QStringLiteral("10"));
                Poner(f, "TxtValorsobreestadistica", QString::number(n));
                Poner(f, "TxtKgNeto", QStringLiteral("1"));
                Poner(f, "TxtKgBruto", QStringLiteral("2"));
                QApplication::processEvents();
            });
        const int lineas = f.modelo()->rowCount();
        std::printf("%-10s grabar una linea y refrescar la lista       %7.2f ms  (%d lineas)\n",
                    bench::NombreMotor(motor), grabar, lineas);
        std::fflush(stdout);
        if (lineas != 10000 + corridas)
            std::printf("  ATENCION: se esperaban %d lineas\n", 10000 + corridas);
    }
    return 0;
}
