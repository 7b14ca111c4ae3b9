// The import of 10,000 goods lines pasted from a spreadsheet into an Operation: reading and
// completing the rows, the verdicts of the save on every row (rolled back), and the import of
// all of them in one transaction (the screen), and the one pass of korven-admin, on SQLite and,
// when KORVEN_TEST_PG names a server, on PostgreSQL. Prints the median of the runs in milliseconds.
//
//   build/bench/bench_importar [runs]

#include "Medir.h"
#include "goods/CargaSubItems.h"
#include "goods/ImportadorSubItems.h"
#include "goods/PantallasNomenclador.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "schema/Esquema.h"

#include <QCoreApplication>
#include <cstdio>

using namespace korven;

namespace {

// Four lines of an invoice of the demo Operation, their suffixes complete, over and over.
QString Pegado(int lineas) {
    const QStringList filas{
        QStringLiteral("8471.30.12.100M\tNOTEBOOK 14 PULGADAS\t20\t07\t450\t36\t310\t"
                       "AA(LENOVO)-AB(IDEAPAD 5)-AI(NB 14 16)-AJ(PF4XK2LM)-EM01-PR02-ZA(002025)-"
                       "ZD(000016)-ZG(001550)-ZH(000140)-"),
        QStringLiteral("6403.99.90.100T\tZAPATO DE CUERO\t120\t08\t18,5\t96\t310\t"
                       "AA(SIN MARCA)-MS02-TC02-ZB(000042)-"),
        QStringLiteral("8516.60.00.100I\tHORNO ELECTRICO 45 LITROS\t30\t07\t95\t360\t203\t"
                       "AA(ELECTROLUX)-AB(EOT45)-AI(HE 45)-TE01-"),
        QStringLiteral("9503.00.97.100T\tJUGUETE DE ENCASTRE\t500\t07\t2,3\t150\t310\t"
                       "AA(SIN MARCA)-ED02-")};
    QString t = QStringLiteral("Posición\tDescripción\tCantidad\tUnidad\tUnitario\tKG Neto\t"
                               "Pais de Origen\tSufijos\n");
    for (int i = 0; i < lineas; ++i)
        t += filas.at(i % filas.size()) + QLatin1Char('\n');
    return t;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 3;
    const int lineas = 10000;
    const QString texto = Pegado(lineas);
    SeparadorDecimalScope coma(QStringLiteral(","));
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        schema::CrearOActualizar(ts.stores());
        schema::CargarDatosReferencia(ts.stores(), QStringLiteral(KORVEN_SOURCE_DIR_BENCH "/data"));
        RegistrarComponentesNomenclador(ts.ctx().componentes());
        int serie = 0;
        QString interno;
        auto nuevo = [&] {
            interno = QStringLiteral("BENCH-%1").arg(++serie);
            ts.conexion(QStringLiteral("INTERNOS"))
                .Ejecutar(QStringLiteral("insert into caratula (interno,fechaalta,idsubreg,"
                                         "onccahabilitado,factura8) values (?,'2026-11-23',"
                                         "'IC04','N','N')"),
                          {interno});
        };
        std::vector<LineaSubItem> datos;
        const double lectura = bench::Mediana(corridas, [&] {
            const ImportadorSubItems::Tabla t = ImportadorSubItems::LeerTexto(texto);
            ImportadorSubItems imp(ts.ctx());
            datos.clear();
            for (const auto& p : imp.Preparar(t, ImportadorSubItems::Mapeo(t)))
                datos.push_back(p.datos);
        });
        int correctas = 0;
        const double verdictos = bench::Mediana(
            corridas,
            [&] {
                correctas = 0;
                for (const auto& v : CargaSubItems(ts.ctx(), interno).Verificar(datos))
                    correctas += v.aceptada ? 1 : 0;
            },
            nuevo);
        int grabadas = 0;
        const double grabacion = bench::Mediana(
            corridas, [&] { grabadas = CargaSubItems(ts.ctx(), interno).Grabar(datos).grabadas; },
            nuevo);
        // korven-admin: the verdicts and the import in one pass.
        int unPaso = 0;
        const double admin = bench::Mediana(
            corridas, [&] { unPaso = CargaSubItems(ts.ctx(), interno).Importar(datos).grabadas; },
            nuevo);
        std::printf("%-10s %d lineas pegadas: lectura %8.2f ms, veredictos %8.2f ms (%d "
                    "correctas), importacion %8.2f ms (%d grabadas); pantalla %8.2f ms; "
                    "korven-admin %8.2f ms (%d grabadas)\n",
                    bench::NombreMotor(motor), lineas, lectura, verdictos, correctas, grabacion,
                    grabadas, lectura + verdictos + grabacion, lectura + admin, unPaso);
    }
    return 0;
}
