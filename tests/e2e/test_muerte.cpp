// Every action that writes more than one row, killed at random moments, on SQLite and on
// PostgreSQL: the Operation is each time exactly as before the action or exactly as the whole
// action leaves it, never in between, and the SQLite file stays sound.
//
// With "--accion <DataAccessConfig.ini> <action> <number>" this program is a workstation that
// runs one action on one Operation, saying "EMPIEZA" just before it and "HECHO" after.

#include "assembly/ArmadoItems.h"
#include "assembly/FrmProrKg.h"
#include "components/CopiaInterno.h"
#include "foundation/EliminarInterno.h"
#include "foundation/NuevoInterno.h"
#include "goods/CargaSubItems.h"
#include "goods/ImportadorSubItems.h"
#include "goods/ListaSubItems.h"
#include "goods/PantallasNomenclador.h"
#include "goods/Prorrateos.h"
#include "header/CaratulaDatos.h"
#include "liquidation/DetalleItem.h"
#include "liquidation/FrmAdCon.h"
#include "liquidation/ListasItem.h"
#include "quote/Presupuesto.h"
#include "schema/Catalogo.h"
#include "schema/Esquema.h"
#include "schema/OperacionesDemo.h"
#include "support/OperacionArmado.h"
#include "support/OperacionGrande.h"
#include "support/TestStores.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>
#include <functional>
#include <limits>
#include <map>

using namespace korven;
using namespace korven::test;

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

// The Operation each round starts from, made once per engine.
enum class Base {
    Ninguna, // no Operation: the action creates it
    Grande,  // OperacionGrande: every table of an Operation, 1,000 goods lines
    Armar,   // OperacionParaArmar: 1,000 goods lines ready to assemble
    Armada   // the same, assembled
};

struct Accion {
    const char* nombre;
    Base base;
    // The action, as its screen runs it, in the child. True when it did its work.
    std::function<bool(AppContext&, ScriptedDialogs&, const QString&)> correr;
    // A statement on each round's Operation (its number the one "?") before the action.
    const char* preparar = nullptr;
};

// The number of the copy of an Operation.
QString Copia(const QString& n) {
    return n + QStringLiteral("-C");
}

// Item 1's first concept with an amount, as the item screen hands it to the concept screen.
QVariantMap FilaConcepto(AppContext& ctx, const QString& n) {
    const Recordset rs = ctx.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select * from itemliq where interno = ? and iditem = 1 and total > 0 "
                       "order by idconceptos"),
        {n});
    QVariantMap args{
        {QStringLiteral("interno"), n}, {QStringLiteral("iditem"), 1}, {QStringLiteral("modo"), 2}};
    for (const char* k :
         {"idconceptos", "conceptos", "porcentaje", "baseimp", "total", "pgc", "motivo"})
        args.insert(QString::fromLatin1(k), rs.Fields(QString::fromLatin1(k)));
    return args;
}

// 100 goods lines pasted from a spreadsheet: the lines of the demo Operations in turn.
std::vector<LineaSubItem> Pegadas(AppContext& ctx) {
    const Recordset rs = ctx.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select ncm, descripcion, cantidad, idunidad, preciounitario, kgneto, "
                       "kgbruto, idpais, estadomerc, sufijos from subitems where interno like "
                       "'DEMO-%' order by interno, id"));
    QString texto = QStringLiteral("ncm\tdescripcion\tcantidad\tidunidad\tpreciounitario\t"
                                   "kgneto\tkgbruto\tidpais\testadomerc\tsufijos\n");
    for (int i = 0; i < 100; ++i) {
        QStringList f;
        for (const QVariant& v : rs.Fila(i % rs.RecordCount()))
            f << (v.metaType().id() == QMetaType::Double ? QString::number(v.toDouble())
                                                         : EsNull(v));
        texto += f.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    const ImportadorSubItems::Tabla t = ImportadorSubItems::LeerTexto(texto);
    std::vector<LineaSubItem> r;
    for (const auto& p : ImportadorSubItems(ctx).Preparar(t, ImportadorSubItems::Mapeo(t)))
        r.push_back(p.datos);
    return r;
}

const std::vector<Accion>& Acciones() {
    using C = AppContext&;
    using D = ScriptedDialogs&;
    using N = const QString&;
    static const std::vector<Accion> a{
        {"nuevo", Base::Ninguna,
         [](C c, D d, N n) {
             d.ResponderTexto(n);
             return NuevoInterno(c).Ejecutar() == n;
         }},
        {"copia", Base::Grande,
         [](C c, D, N n) {
             CopiaInterno(c).Copiar(n, Copia(n));
             return true;
         }},
        {"eliminar", Base::Grande,
         [](C c, D, N n) { return EliminarInterno(c, QStringLiteral("PC-TEST")).Ejecutar(n); }},
        {"eliminar lineas", Base::Grande,
         [](C c, D d, N n) {
             QList<long long> ids;
             for (long long i = 1; i <= 1000; i += 2)
                 ids << i;
             return ListaSubItems(c, n).Eliminar(ids, d) == ids.size();
         }},
        {"kilos cero", Base::Armar,
         [](C c, D d, N n) { return ListaSubItems(c, n).SetearKilosCero(d); }},
        {"pais origen", Base::Grande,
         [](C c, D d, N n) { return ListaSubItems(c, n).VariarPaisOrigen(d); },
         "update subitems set idpais = '310' where interno = ?"},
        {"filler", Base::Grande, [](C c, D d, N n) { return ListaSubItems(c, n).VaciarFiller(d); },
         "update subitems set itfiller = 'F' where interno = ?"},
        {"codigo prorrateo", Base::Grande,
         [](C c, D d, N n) { return ListaSubItems(c, n).VaciarIdProrrateo(d); },
         "update subitems set codprorrateo = 'P1' where interno = ?"},
        {"prorrateo", Base::Grande,
         [](C c, D, N n) {
             return Prorrateos(c).Agregar(n, QStringLiteral("P9"), QStringLiteral("Flete"),
                                          QStringLiteral("25"));
         }},
        {"caratula", Base::Armar,
         [](C c, D, N n) {
             CaratulaDatos datos(c);
             const std::optional<CaratulaDatos::Carga> carga = datos.Cargar(n);
             CaratulaDatos::Pantalla p;
             for (const CaratulaDatos::Valor& v : carga->valores) {
                 p.Poner(v.campo.control, v.texto);
                 p.Visible(v.campo.control, true);
             }
             p.facturas = carga->facturas;
             p.Poner(QStringLiteral("cboFacilidadPago"), QStringLiteral("N"));
             p.Poner(QStringLiteral("txtKgNeto"), QStringLiteral("1234"));
             return datos.Guardar(n, p) == CaratulaDatos::Resultado::Guardado;
         }},
        {"grabar lineas", Base::Armar,
         [](C c, D, N n) { return CargaSubItems(c, n).Grabar(Pegadas(c)).grabado; }},
        {"importar", Base::Armar,
         [](C c, D, N n) { return CargaSubItems(c, n).Importar(Pegadas(c)).grabado; }},
        {"armado", Base::Armar,
         [](C c, D d, N n) {
             d.ResponderSiempre(false);
             c.ArmadoResultado = QStringLiteral("SI");
             ProgresoArmado sinVentana;
             return ArmadoItems(c, n, sinVentana).Ejecutar();
         }},
        {"item cero", Base::Armada,
         [](C c, D, N n) {
             DetalleItem::Campos campos;
             campos.idproc = QStringLiteral("212");
             campos.estadomerc = QStringLiteral("2");
             campos.regalias = QStringLiteral("N");
             campos.ajusteinc = QStringLiteral("150");
             return DetalleItem(c, n).GrabarItem(0, campos);
         }},
        {"agregar ventaja", Base::Armada,
         [](C c, D, N n) {
             c.pantallas().Registrar(QStringLiteral("FrmVentajas"),
                                     [](AppContext& x, const QVariantMap&) {
                                         x.VentajaElegida = QStringLiteral("AA");
                                         return QVariant(x.VentajaElegida);
                                     });
             return ListasItem(c).Agregar(ListasItem::Lista::Ventajas, n, 0);
         }},
        {"quitar ventaja", Base::Armada,
         [](C c, D, N n) {
             return ListasItem(c).Eliminar(ListasItem::Lista::Ventajas, n, 0, QStringLiteral("AA"));
         },
         "insert into itemventaja (interno, iditem, idventaja) "
         "select interno, id, 'AA' from item where interno = ?"},
        {"quitar concepto", Base::Armada,
         [](C c, D, N n) { return ListasItem(c).EliminarConcepto(n, 1, QStringLiteral("010")); }},
        {"modificar concepto", Base::Armada,
         [](C c, D, N n) {
             FrmAdCon f(c, FilaConcepto(c, n));
             return f.PF_Modificar();
         }},
        {"kilos a mano", Base::Armada,
         [](C c, D, N n) {
             FrmProrKg f(c, {{QStringLiteral("interno"), n}, {QStringLiteral("item"), 0}});
             f.findChild<QLineEdit*>(QStringLiteral("TxtValor"))->setText(QStringLiteral("5000"));
             f.findChild<QPushButton*>(QStringLiteral("CmdPror"))->click();
             return true;
         },
         "update groupsubitems set kgneto = 0, "
         "valorrelacionestadistica = 0 where interno = ?"},
        {"presupuesto", Base::Armada,
         [](C c, D, N n) {
             return Presupuesto(c, n).AgregarConcepto(QStringLiteral("HONORARIOS"), 120, true);
         }},
    };
    return a;
}

const Accion& AccionLlamada(const QString& nombre) {
    for (const Accion& a : Acciones())
        if (nombre == QLatin1String(a.nombre))
            return a;
    qFatal("Accion desconocida: %s", qPrintable(nombre));
}

// The tables that hold rows of an Operation, with their columns less the number of the
// Operation and those the store numbers by itself, each after ", ".
std::vector<std::pair<const schema::DefTabla*, QString>> TablasDeOperacion() {
    std::vector<std::pair<const schema::DefTabla*, QString>> r;
    for (const schema::DefTabla& t : schema::Catalogo::Tablas()) {
        if (!t.Columna(QStringLiteral("interno")))
            continue;
        QString cols;
        for (const schema::DefColumna& c : t.columnas)
            if (c.nombre != QLatin1String("interno") && c.tipo != schema::TipoColumna::Contador)
                cols += QStringLiteral(", ") + c.nombre;
        r.emplace_back(&t, cols);
    }
    return r;
}

// Every row under the number (and under the number of its copy) in every table of an
// Operation, one line per row, sorted: the table and the row's values, the number left out.
// No other column is left out: two whole runs leave the same values (dates are today's).
QStringList Huella(StoreDirectory& stores, const QString& n) {
    QStringList r;
    for (const auto& [t, cols] : TablasDeOperacion()) {
        const Recordset rs =
            stores.getDataConnectionByEntity(t->entidad)
                .Abrir(QStringLiteral("select case when interno = ? then '' else 'C' end%1 "
                                      "from %2 where interno in (?, ?)")
                           .arg(cols, t->nombre),
                       {n, n, Copia(n)});
        for (int i = 0; i < rs.RecordCount(); ++i) {
            QStringList f{t->nombre};
            for (const QVariant& v : rs.Fila(i))
                f << (v.isNull() ? QStringLiteral("null")
                      : v.metaType().id() == QMetaType::Double
                          ? QString::number(v.toDouble(), 'g', 12)
                          : v.toString());
            r << f.join(QLatin1Char('|'));
        }
    }
    r.sort();
    return r;
}

// A new Operation with every row of another.
void Clonar(StoreDirectory& stores, const QString& origen, const QString& destino) {
    for (const auto& [t, cols] : TablasDeOperacion())
        stores.getDataConnectionByEntity(t->entidad)
            .Ejecutar(QStringLiteral("insert into %1 (interno%2) select ?%2 from %1 where "
                                     "interno = ?")
                          .arg(t->nombre, cols),
                      {destino, origen});
}

// Takes away every row of the Operation and of its copy, which keeps the stores small.
void Borrar(StoreDirectory& stores, const QString& n) {
    for (const auto& [t, cols] : TablasDeOperacion())
        stores.getDataConnectionByEntity(t->entidad)
            .Ejecutar(QStringLiteral("delete from %1 where interno in (?, ?)").arg(t->nombre),
                      {n, Copia(n)});
}

// The stores of one engine for every row of the test, with the reference data, the demo
// Operations and the base Operations.
std::map<Motor, std::unique_ptr<TestStores>> todas;

TestStores& Stores(Motor motor) {
    std::unique_ptr<TestStores>& ts = todas[motor];
    if (!ts) {
        ts = std::make_unique<TestStores>(motor);
        schema::CrearOActualizar(ts->stores());
        schema::CargarDatosReferencia(ts->stores(), schema::CarpetaDatos(ts->directorio()));
        RegistrarComponentesNomenclador(ts->ctx().componentes());
        schema::OperacionesDemo(ts->stores(), schema::CarpetaDatos(ts->directorio())).Cargar();
        OperacionGrande(ts->stores(), QStringLiteral("B-1"), 1000);
        OperacionParaArmar(ts->stores(), QStringLiteral("B-2"), 1000);
        OperacionParaArmar(ts->stores(), QStringLiteral("B-3"), 1000);
        ts->dialogos().ResponderSiempre(false);
        ts->ctx().ArmadoResultado = QStringLiteral("SI");
        ProgresoArmado sinVentana;
        if (!ArmadoItems(ts->ctx(), QStringLiteral("B-3"), sinVentana).Ejecutar())
            qFatal("No se pudo armar la Operacion de base");
        ts->AgregarConfiguracion(QString()); // the file the child is pointed at
    }
    return *ts;
}

int Hijo(const QString& ini, const QString& accion, const QString& n) {
    QTemporaryDir tmp;
    StoreDirectory stores;
    stores.setParametersPath(ini);
    stores.LoadParameters();
    ScriptedDialogs dialogos;
    dialogos.ResponderSiempre(true);
    SettingsStore settings(tmp.path() + QStringLiteral("/settings"));
    AppContext ctx(stores, dialogos, settings, tmp.path() + QLatin1Char('/'));
    RegistrarComponentesNomenclador(ctx.componentes());
    stores.getDataConnectionByEntity(kInternos);
    QTextStream salida(stdout);
    salida << "EMPIEZA" << Qt::endl;
    if (!AccionLlamada(accion).correr(ctx, dialogos, n)) {
        qWarning("%s", qPrintable(dialogos.todo().join(QLatin1Char('\n'))));
        return 1;
    }
    salida << "HECHO" << Qt::endl;
    return 0;
}

} // namespace

class TestMuerte : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanupTestCase() { todas.clear(); }
    void matarEnMedio_data() {
        QTest::addColumn<int>("motor");
        QTest::addColumn<QString>("accion");
        for (const Accion& a : Acciones())
            for (Motor m : {Motor::SQLite, Motor::PostgreSQL})
                QTest::addRow("%s %s", m == Motor::SQLite ? "sqlite" : "postgresql", a.nombre)
                    << static_cast<int>(m) << QString::fromLatin1(a.nombre);
    }

    // The action on a fresh Operation each round: once whole, which tells how long it takes and
    // what it leaves, then 20 times killed after a random part of that time.
    void matarEnMedio() {
        MOTOR_O_SALTAR();
        QFETCH(QString, accion);
        TestStores& ts = Stores(static_cast<Motor>(motor));
        const Accion& a = AccionLlamada(accion);
        const int indice = static_cast<int>(&a - Acciones().data());
        const QString base = QStringLiteral("B-%1").arg(static_cast<int>(a.base));
        auto numero = [&](int r) { return QStringLiteral("M%1-%2").arg(indice).arg(r); };
        // The Operation of round r, as the action finds it.
        auto preparar = [&](int r) {
            Clonar(ts.stores(), base, numero(r));
            if (a.preparar)
                ts.conexion(kInternos).Ejecutar(QString::fromLatin1(a.preparar), {numero(r)});
            ts.stores().CloseAllDataConnection();
        };
        // Runs the action on the Operation of round r; kills it after espera microseconds, or
        // when negative lets it end and tells how long it took to say it was done. True when it
        // said so.
        auto correr = [&](int r, qint64 espera, qint64* duracion) {
            QProcess p;
            p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
            p.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--accion"), ts.stores().parametersPath(), accion, numero(r)});
            p.waitForStarted();
            while (!p.canReadLine() && p.waitForReadyRead(60000)) {
            }
            if (p.readLine().trimmed() != "EMPIEZA")
                return false;
            QElapsedTimer reloj;
            reloj.start();
            QByteArray salida;
            if (espera >= 0) {
                QThread::usleep(static_cast<unsigned long>(espera));
                p.kill();
            }
            while (espera < 0 && !(salida += p.readAll()).contains("HECHO") &&
                   p.waitForReadyRead(120000)) {
            }
            if (duracion)
                *duracion = std::min(*duracion, reloj.nsecsElapsed() / 1000);
            p.waitForFinished(120000);
            // A server finishes on its own what it was given, a commit included: the stores are
            // looked at once the session of the workstation is gone.
            for (int i = 0; i < 1000 && motor == static_cast<int>(Motor::PostgreSQL) &&
                            EsNumero(ts.conexion(kInternos).Escalar(QStringLiteral(
                                "select count(*) from pg_stat_activity where "
                                "datname = current_database() and backend_type = "
                                "'client backend' and pid <> pg_backend_pid()"))) > 0;
                 ++i)
                QThread::msleep(10);
            return (salida + p.readAll()).contains("HECHO");
        };
        // Rounds 0 and 1 run whole: what the action leaves, the same both times, and how long
        // it takes once the stores are warm.
        preparar(0);
        const QStringList antes = Huella(ts.stores(), numero(0));
        qint64 duracion = std::numeric_limits<qint64>::max();
        QVERIFY(correr(0, -1, &duracion));
        const QStringList despues = Huella(ts.stores(), numero(0));
        QVERIFY(despues != antes);
        Borrar(ts.stores(), numero(0));
        preparar(1);
        QVERIFY(correr(1, -1, &duracion));
        QCOMPARE(Huella(ts.stores(), numero(1)), despues);
        Borrar(ts.stores(), numero(1));
        QRandomGenerator azar(20261124);
        int cortadas = 0, sinEfecto = 0;
        for (int r = 2; r <= 21; ++r) {
            preparar(r);
            const bool termino =
                correr(r, static_cast<qint64>(azar.bounded(double(duracion))), nullptr);
            const QStringList ahora = Huella(ts.stores(), numero(r));
            // On failure: a row that neither state has, if any, and the counts of rows.
            const QSet<QString> ajenas = QSet<QString>(ahora.begin(), ahora.end()) -
                                         QSet<QString>(antes.begin(), antes.end()) -
                                         QSet<QString>(despues.begin(), despues.end());
            QVERIFY2(ahora == antes || ahora == despues,
                     qPrintable(QStringLiteral("ronda %1: %2 de %3/%4 filas; %5")
                                    .arg(r)
                                    .arg(ahora.size())
                                    .arg(antes.size())
                                    .arg(despues.size())
                                    .arg(ajenas.values().value(0))));
            Borrar(ts.stores(), numero(r));
            cortadas += !termino;
            sinEfecto += ahora == antes;
            if (motor == static_cast<int>(Motor::SQLite))
                QCOMPARE(EsNull(ts.conexion(kInternos).Escalar(
                             QStringLiteral("PRAGMA integrity_check"))),
                         QStringLiteral("ok"));
        }
        qInfo("%s: %lld us; %d of 20 killed before the end, %d left it as before",
              qPrintable(accion), duracion, cortadas, sinEfecto);
    }
};

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 5 && args.at(1) == QStringLiteral("--accion"))
        return Hijo(args.at(2), args.at(3), args.at(4));
    TestMuerte t;
    return QTest::qExec(&t, argc, argv);
}

#include "test_muerte.moc"
