// The assembly of an Operation of 1,000 and of 10,000 goods lines (about 200 and 2,000 items)
// with the first calculation of item 0, beside the insert of the same output rows (groups,
// items, liquidation rows, totals and links) with one prepared statement per table in one
// transaction, on SQLite and, when KORVEN_TEST_PG names a server, on PostgreSQL. Prints the
// median of the runs in milliseconds.
//
//   build/bench/bench_armado [runs]

#include "Medir.h"
#include "assembly/ArmadoItems.h"
#include "platform/SentenciasPreparadas.h"
#include "support/OperacionArmado.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <array>
#include <cstdio>

using namespace korven;

namespace {

const QStringList kSalida = {"groupsubitems", "item", "itemliq", "liqcero", "idrel"};

// The time each stage of the last run took; the calculation of item 0 that follows the
// stages counts as stage 11.
class Etapas : public ProgresoArmado {
public:
    void Empezar() {
        ms_.fill(0);
        actual_ = 0;
        ultimo_ = 0;
        reloj_.start();
    }
    void Etapa(int etapa, bool terminada) override {
        if (!terminada)
            Pasar(etapa);
    }
    void Item(const QString& texto) override {
        if (actual_ != 11 && texto.startsWith(QLatin1String("Liquidando")))
            Pasar(11);
    }
    void Terminar() { Pasar(0); }
    QString Texto() const {
        QStringList t;
        for (int i = 1; i <= 11; ++i)
            if (ms_[i] > 0)
                t << QStringLiteral("%1:%2").arg(i).arg(ms_[i], 0, 'f', 0);
        return t.join(QLatin1Char(' '));
    }

private:
    void Pasar(int etapa) {
        const double ahora = static_cast<double>(reloj_.nsecsElapsed()) / 1e6;
        ms_[actual_] += ahora - ultimo_;
        ultimo_ = ahora;
        actual_ = etapa;
    }
    QElapsedTimer reloj_;
    std::array<double, 12> ms_{};
    int actual_ = 0;
    double ultimo_ = 0;
};

// Inserts the rows the assembly left for one number again under another, one bound statement
// per table, in one transaction.
void InsertarEnBloque(StoreDirectory& stores, const QString& de, const QString& a) {
    Conexion& c = stores.getDataConnectionByEntity(QStringLiteral("INTERNOS"));
    std::vector<std::pair<QString, Recordset>> filas;
    for (const QString& t : kSalida)
        filas.emplace_back(
            t, c.Abrir(QStringLiteral("select * from ") + t + QStringLiteral(" where interno = ?"),
                       {de}));
    SentenciasPreparadas preparadas;
    Transaccion tr(stores, {QStringLiteral("INTERNOS")});
    for (auto& [t, rs] : filas) {
        QStringList marcas;
        for (int i = 0; i < rs.Campos().size(); ++i)
            marcas << QStringLiteral("?");
        const QString sql =
            QStringLiteral("insert into %1 (%2) values (%3)")
                .arg(t, rs.Campos().join(QLatin1Char(',')), marcas.join(QLatin1Char(',')));
        const int ci = static_cast<int>(rs.Campos().indexOf(QStringLiteral("interno")));
        for (int i = 0; i < rs.RecordCount(); ++i) {
            QVariantList v(rs.Fila(i).begin(), rs.Fila(i).end());
            v[ci] = a;
            c.Ejecutar(sql, v);
        }
    }
    tr.Confirmar();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int corridas = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 3;
    for (Motor motor : bench::Motores()) {
        test::TestStores ts(motor);
        bench::StoresParaArmar(ts);
        double armado[2] = {0, 0};
        int n = 0;
        for (int lineas : {1000, 10000}) {
            const QString interno = QStringLiteral("BENCH-%1").arg(lineas);
            test::OperacionParaArmar(ts.stores(), interno, lineas);
            QString resultado;
            Etapas etapas;
            const double ms = bench::Mediana(corridas, [&] {
                ts.ctx().ArmadoResultado = QStringLiteral("SI");
                etapas.Empezar();
                ArmadoItems(ts.ctx(), interno, etapas).Ejecutar();
                etapas.Terminar();
                resultado = ts.ctx().ArmadoResultado;
            });
            int serie = 0;
            int salida = 0;
            for (const QString& t : kSalida)
                salida += static_cast<int>(
                    EsNumero(ts.conexion(QStringLiteral("INTERNOS"))
                                 .Abrir(QStringLiteral("select count(*) from ") + t +
                                            QStringLiteral(" where interno = ?"),
                                        {interno})
                                 .Fields(0)));
            const double bloque = bench::Mediana(corridas, [&] {
                InsertarEnBloque(ts.stores(), interno,
                                 QStringLiteral("COPIA-%1-%2").arg(lineas).arg(++serie));
            });
            const int items = static_cast<int>(
                EsNumero(ts.conexion(QStringLiteral("INTERNOS"))
                             .Abrir(QStringLiteral("select count(*) from item where interno = ? "
                                                   "and id <> 0"),
                                    {interno})
                             .Fields(0)));
            std::printf("%-10s %6d lines %5d items  armado %9.1f ms  (%s)  bulk insert of %6d "
                        "rows %8.1f ms  ratio %.1f\n",
                        bench::NombreMotor(motor), lineas, items, ms, qPrintable(resultado), salida,
                        bloque, ms / bloque);
            std::printf("           ms by stage of the last run: %s\n", qPrintable(etapas.Texto()));
            armado[n++] = ms;
        }
        std::printf("%-10s 10,000 / 1,000 lines: %.1f x\n", bench::NombreMotor(motor),
                    armado[1] / armado[0]);
        std::fflush(stdout);
    }
    return 0;
}
