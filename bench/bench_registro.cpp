// The register's first page (50 rows) for each filter, with 10,000 and with 100,000 Operations,
// on SQLite and, when KORVEN_TEST_PG names a server, on PostgreSQL. Prints the median of the
// runs in milliseconds; with --planes also the engine's plan of each statement.
//
//   build/bench/bench_registro [runs] [--planes]
//
// The Operations are those of a busy office: 30 a day, one after the other, 500 clients, 20
// brokers; numbers "OP1000001", "OP1000002", ...

#include "Medir.h"
#include "foundation/BuscarInternos.h"
#include "platform/AppContext.h"
#include "platform/Configuracion.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"

#include <QCoreApplication>
#include <cstdio>

using namespace korven;

namespace {

// Adds the Operations numbered desde + 1 .. hasta.
void Llenar(Conexion& cx, int desde, int hasta) {
    const bool pg = cx.motor() == Motor::PostgreSQL;
    const QString fecha = pg ? QStringLiteral("DATE '2020-01-01' + (i / 30)")
                             : QStringLiteral("date('2020-01-01', '+' || (i / 30) || ' days')");
    cx.Comenzar();
    cx.Ejecutar(
        QStringLiteral("insert into caratula (interno, fechaalta, idsubreg, idaduana, cuitcliente, "
                       "cuitdespaduana, factura2, factura3, factura7, fobdivisas, fobcoddivisas, "
                       "idcondiciondeventa) WITH RECURSIVE n(i) AS (SELECT %1 UNION ALL SELECT i + "
                       "1 FROM n WHERE i < %2) SELECT 'OP' || (1000000 + i), %3, CASE WHEN i % 3 = "
                       "0 THEN 'EC01' ELSE 'IC04' END, CASE WHEN i % 2 = 0 THEN '001' ELSE '033' "
                       "END, '30' || (700000000 + i % 500), '20' || (500000000 + i % 20), "
                       "'Vendedor', 'Despachante ' || (i % 20), 'Cliente ' || (i % 500), i * 1.5, "
                       "'DOL', 'FOB' FROM n")
            .arg(desde + 1)
            .arg(hasta)
            .arg(fecha));
    cx.Confirmar();
    cx.Ejecutar(pg ? QStringLiteral("ANALYZE caratula") : QStringLiteral("ANALYZE"));
}

struct Caso {
    const char* nombre;
    FiltroInternos filtro;
    int listado;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    int corridas = 20;
    bool planes = false;
    for (int i = 1; i < argc; ++i) {
        const QString a = QString::fromLocal8Bit(argv[i]);
        if (a == QStringLiteral("--planes"))
            planes = true;
        else
            corridas = std::max(1, a.toInt());
    }
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        schema::CrearOActualizar(ts.stores());
        Conexion& cx = ts.conexion(QStringLiteral("INTERNOS"));
        cx.Ejecutar(QStringLiteral("insert into sta (id, descripcion, cstaimpexp) values ('IC04', "
                                   "'Importacion', 'I'), ('EC01', 'Exportacion', 'E')"));
        cx.Ejecutar(QStringLiteral("insert into aduana (id, descripcion) values ('001', 'BUENOS "
                                   "AIRES'), ('033', 'EZEIZA')"));
        int hay = 0;
        for (int n : {10000, 100000}) {
            Llenar(cx, hay, n);
            hay = n;
            // The last week of the office's days.
            const QDate ultimo = QDate(2020, 1, 1).addDays((n - 1) / 30);
            FiltroInternos semana;
            semana.filtroFecha = true;
            semana.desde = ultimo.addDays(-6);
            semana.hasta = ultimo;
            FiltroInternos cliente, despachante, numero, numeroAmplio;
            cliente.cliente = QStringLiteral("30700000123");
            despachante.despachante = QStringLiteral("20500000007");
            numero.interno = QStringLiteral("op10012");
            numeroAmplio.interno = QStringLiteral("OP1");
            const Caso casos[] = {{"sin filtro, por numero", {}, 0},
                                  {"sin filtro, por fecha", {}, 1},
                                  {"cliente", cliente, 0},
                                  {"cliente, por fecha", cliente, 1},
                                  {"despachante", despachante, 0},
                                  {"fechas (una semana)", semana, 0},
                                  {"fechas, por fecha", semana, 1},
                                  {"numero 'op10012'", numero, 0},
                                  {"numero 'OP1' (todos)", numeroAmplio, 0}};
            for (const Caso& c : casos) {
                ts.ctx().config().LISTADO = c.listado;
                BuscarInternos b(ts.stores(), ts.ctx().config());
                int filas = 0;
                const double ms = bench::Mediana(
                    corridas, [&] { filas = static_cast<int>(b.Buscar(c.filtro).size()); });
                std::printf("%-10s %6d operaciones  %-24s %7.2f ms  (%d filas)\n",
                            bench::NombreMotor(motor), n, c.nombre, ms, filas);
                std::fflush(stdout);
                if (planes && n == 100000) {
                    QVariantList p;
                    QString sql = b.Sql(c.filtro, &p);
                    // PostgreSQL does not prepare EXPLAIN: the values go in as literals.
                    for (const QVariant& v : p)
                        sql.replace(sql.indexOf(QLatin1Char('?')), 1, SqlTexto(v.toString()));
                    Recordset rs = cx.Abrir((motor == Motor::PostgreSQL
                                                 ? QStringLiteral("EXPLAIN ")
                                                 : QStringLiteral("EXPLAIN QUERY PLAN ")) +
                                            sql);
                    for (; !rs.Eof(); rs.MoveNext())
                        std::printf("      %s\n",
                                    qPrintable(EsNull(rs.Fields(rs.Campos().size() - 1))));
                }
            }
        }
    }
    return 0;
}
