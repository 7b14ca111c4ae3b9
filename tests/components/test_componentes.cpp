// The components of the system: the client book (the check of a client, its store on SQLite and
// on PostgreSQL, its screens driven from the keyboard), the copy of an Operation under a new
// number, and the service components reached by name.

#include "components/ClientBookListing.h"
#include "components/CopiaInterno.h"
#include "components/FrmCliente.h"
#include "components/FrmClientes.h"
#include "components/LibroClientes.h"
#include "components/RegistrarComponentesPropios.h"
#include "foundation/FixtureOperaciones.h"
#include "platform/AppContext.h"
#include "platform/Formato.h"
#include "platform/SettingsStore.h"
#include "support/LiqTablas.h"
#include "support/Pantallas.h"
#include "support/Principal.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

using namespace korven;
using namespace korven::test;

namespace {

std::unique_ptr<TestStores> Stores(int motor, bool maestros = false) {
    auto ts = std::make_unique<TestStores>(static_cast<Motor>(motor));
    schema::CrearOActualizar(ts->stores());
    if (maestros)
        CargarMaestros(*ts);
    RegistrarComponentesPropios(ts->ctx().componentes());
    return ts;
}

// Every column, in the order of the record.
Cliente Completo() {
    return {"30712345671",
            "D'Angelo Hnos SA",
            "Av. Corrientes 1234",
            "compras@dangelo.com.ar",
            3.5,
            1.25,
            "S",
            50,
            100,
            "S",
            20,
            40,
            "S",
            2.5,
            "N"};
}

// A client of the given tax number, name and mail, the other columns as in Completo.
Cliente Uno(const QString& cuit, const QString& nombre, const QString& email = {}) {
    Cliente c = Completo();
    std::tie(c.cuit, c.nombre, c.email) = std::tie(cuit, nombre, email);
    return c;
}

// Every column of a client, to compare two at once.
QStringList Texto(const std::optional<Cliente>& c) {
    if (!c)
        return {"<no existe>"};
    QStringList r{c->cuit,    c->nombre,        c->domicilio, c->email,
                  c->eximgan, c->ivaareduccion, c->cvdi,      c->ExcepLAPIAEC};
    for (double n : {c->regalias, c->ajxvinc_4102, c->eximganvalor, c->eximganvalortemp,
                     c->ivaareduccionvalor, c->ivaareduccionvalortemp, c->ingbru})
        r << QString::number(n);
    return r;
}

// Types a text box and leaves it with Enter, or ticks ("+") or clears ("-") a check box.
void Poner(QWidget* f, const QString& campo, const QString& valor) {
    if (auto* c = f->findChild<QCheckBox*>(campo)) {
        if (c->isChecked() != (valor == "+")) {
            c->setFocus();
            QTest::keyClick(c, Qt::Key_Space);
        }
    } else {
        auto* t = f->findChild<QLineEdit*>(campo);
        t->setFocus();
        t->clear();
        QTest::keyClicks(t, valor);
        QTest::keyClick(t, Qt::Key_Return);
    }
}

// Every row of a table of one Operation, the key column left out, in a fixed order.
QList<QStringList> Filas(TestStores& ts, const QString& entidad, const QString& tabla,
                         const QString& interno, const QString& orden) {
    Recordset rs = ts.conexion(entidad).Abrir(
        QStringLiteral("select * from %1 where interno = ? order by %2").arg(tabla, orden),
        {interno});
    QList<QStringList> r;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList fila;
        for (const QString& c : rs.Campos())
            if (c.toLower() != "interno")
                fila << c.toLower() + "=" + EsNull(rs.Fields(c));
        r << fila;
    }
    return r;
}

} // namespace

class TestComponentes : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void cuitValido_data() {
        // name | tax number -> valid
        FilasDeTexto(R"(
            resto 9, verificador 2  | 20111111112   | 1
            resto 6, verificador 5  | 30999999995   | 1
            resto 0, verificador 0  | 20000000060   | 1
            resto 1, verificador 1  | 20000000011   | 1
            resto 10, verificador 1 | 30712345671   | 1
            resto 1 con 0           | 20000000010   | 0
            digito errado           | 20111111113   | 0
            diez digitos            | 2011111111    | 0
            letra                   | 2011111111A   | 0)",
                     false);
    }

    void cuitValido() {
        QFETCH(QStringList, f);
        QCOMPARE(LibroClientes::CuitValido(f[1]), f[2] == "1");
    }

    void validar_data() {
        // name | tax number | name | mail -> message
        FilasDeTexto(R"(
            correcto            | 20111111112 | Uno | a.b@c.com  |
            sin mail            | 20111111112 | Uno |            |
            cuit                | 20111111113 | Uno |            | Cuit Invalido
            nombre              | 20111111112 |     |            | Debe ingresar el nombre del cliente.
            mail sin arroba     | 20111111112 | Uno | ab.com     | La dirección de correo no es válida.)",
                     false);
    }

    void validar() {
        QFETCH(QStringList, f);
        QCOMPARE(LibroClientes::Validar(Uno(f[1], f[2], f[3])), f[4]);
    }

    void buscar_data() { FilasDeMotores(); }
    void buscar() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        LibroClientes libro(ts->stores());
        for (const auto& [cuit, nombre] : {std::pair{"30500010912", "Zeta SA"},
                                           {"30712345671", "Alfa SRL"},
                                           {"20111111112", "Beta Zeta"}})
            libro.Insertar(Uno(cuit, nombre));
        auto cuits = [](const QList<Cliente>& l) {
            QStringList r;
            for (const Cliente& c : l)
                r << c.cuit;
            return r;
        };
        QCOMPARE(cuits(libro.Listar("30")), (QStringList{"30712345671", "30500010912"}));
        QCOMPARE(cuits(libro.Listar("", "zeta")), (QStringList{"20111111112", "30500010912"}));
        QCOMPARE(cuits(libro.Listar("30", "ZETA")), QStringList{"30500010912"});
        QVERIFY(libro.Listar("9").isEmpty());
    }

    void altaDesdeLaLista_data() { FilasDeMotores(); }

    // Insert in the list: every column typed in the editor, numbers with the system separator.
    void altaDesdeLaLista() {
        MOTOR_O_SALTAR();
        for (const QString s : {",", "."}) {
            SeparadorDecimalScope scope(s);
            auto ts = Stores(motor);
            FrmClientes lista(ts->ctx(), false);
            lista.show();
            // Each box in its order, "+" and "-" a check box to tick or clear.
            const QString campos =
                "TxtCuit=30712345671;TxtNombre=D'Angelo Hnos SA;TxtDomicilio=Av. Corrientes 1234;"
                "TxtEmail=compras@dangelo.com.ar;TxtRegalias=3,5;TxtAjVinc=1,25;ChEximGan=+;"
                "TxtEximGanValor=50;TxtEximGanValorTemp=100;ChIvaReduccion=+;"
                "TxtIvaReduccionValor=20;TxtIvaReduccionValorTemp=40;ChCVDI=+;TxtIngBru=2,5;"
                "ChExcepLAPIAEC=-";
            AlAbrir<FrmCliente> editor([&](FrmCliente* e) {
                for (const QString& c : campos.split(';'))
                    Poner(e, c.section('=', 0, 0), c.section('=', 1).replace(',', s));
                QTest::keyClick(e->findChild<QPushButton*>("CmdGuardar"), Qt::Key_Return);
            });
            QTest::keyClick(lista.findChild<QTreeWidget*>("LstClientes"), Qt::Key_Insert);
            QCOMPARE(editor.veces(), 1);
            QVERIFY(ts->dialogos().registro().isEmpty());
            QCOMPARE(Texto(LibroClientes(ts->stores()).Leer("30712345671")), Texto(Completo()));
            QCOMPARE(lista.CuitSeleccionado(), QStringLiteral("30712345671"));
        }
    }

    // A bad client gets its message and the editor stays with what was typed.
    void altaRechazada() {
        auto ts = Stores(0);
        LibroClientes(ts->stores()).Insertar(Completo());
        FrmCliente e(ts->ctx(), std::nullopt);
        e.show();
        Poner(&e, "TxtCuit", "30712345672");
        Poner(&e, "TxtNombre", "Nuevo");
        QVERIFY(!e.Guardar());
        Poner(&e, "TxtCuit", "30712345671");
        QVERIFY(!e.Guardar());
        Poner(&e, "TxtCuit", "20111111112");
        Poner(&e, "TxtIngBru", "dos");
        QVERIFY(!e.Guardar());
        QCOMPARE(ts->dialogos().mensajes(),
                 (QStringList{"Cuit Invalido", "El CUIT ingresado ya existe en el sistema",
                              "Debe Ingresar un Valor Númerico"}));
        QVERIFY(e.isVisible());
        QCOMPARE(e.findChild<QLineEdit*>("TxtNombre")->text(), QStringLiteral("Nuevo"));
        Poner(&e, "TxtIngBru", "");
        QVERIFY(e.Guardar());
        QCOMPARE(LibroClientes(ts->stores()).Leer("20111111112")->nombre, QStringLiteral("Nuevo"));
        QCOMPARE(LibroClientes(ts->stores()).Leer("20111111112")->cvdi, QStringLiteral("N"));
    }

    // The list reached through the component chooses a client; on its own it changes and deletes.
    void lista_data() { FilasDeMotores(); }
    void lista() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        LibroClientes(ts->stores()).Insertar(Completo());
        LibroClientes(ts->stores()).Insertar(Uno("20111111112", "Beta"));
        std::unique_ptr<QObject> libro =
            ts->ctx().componentes().Crear("ClientBook.Listing", ts->ctx());
        QVERIFY(
            QMetaObject::invokeMethod(libro.get(), "SetDataConnection", Q_ARG(QObject*, nullptr)));
        QVERIFY(libro->setProperty("Seleccionar", true));
        QVERIFY(libro->setProperty("OrigenKorven", true));
        // Searched by tax number, chosen with Enter.
        AlAbrir<FrmClientes> eleccion([](FrmClientes* l) {
            QTest::keyClicks(l->findChild<QLineEdit*>("TxtBuscarCuit"), "3071");
            QTest::keyClick(l->findChild<QLineEdit*>("TxtBuscarCuit"), Qt::Key_Return);
            QTest::keyClick(l->findChild<QTreeWidget*>("LstClientes"), Qt::Key_Return);
        });
        QVERIFY(QMetaObject::invokeMethod(libro.get(), "MostrarListado", Q_ARG(QObject*, nullptr)));
        QCOMPARE(eleccion.veces(), 1);
        QCOMPARE(libro->property("Cliente_Cuit").toString(), QStringLiteral("30712345671"));
        QCOMPARE(libro->property("Cliente_nombre").toString(), QStringLiteral("D'Angelo Hnos SA"));
        // The list on its own: changes and deletions.
        FrmClientes lista(ts->ctx(), false);
        lista.show();
        auto* lst = lista.findChild<QTreeWidget*>("LstClientes");
        QCOMPARE(lista.CuitSeleccionado(), QStringLiteral("20111111112"));
        QTest::keyClick(lst, Qt::Key_Down);
        QCOMPARE(lista.CuitSeleccionado(), QStringLiteral("30712345671"));
        // F6: the client without its income-tax exemption.
        AlAbrir<FrmCliente> editor([](FrmCliente* e) {
            QVERIFY(e->findChild<QLineEdit*>("TxtCuit")->isReadOnly());
            Poner(e, "ChEximGan", "-");
            Poner(e, "TxtNombre", "D'Angelo e Hijos");
            e->Guardar();
        });
        QTest::keyClick(lst, Qt::Key_F6);
        QCOMPARE(editor.veces(), 1);
        Cliente esperado = Completo();
        esperado.nombre = "D'Angelo e Hijos";
        esperado.eximgan = "N";
        esperado.eximganvalor = 0;
        esperado.eximganvalortemp = 0;
        QCOMPARE(Texto(LibroClientes(ts->stores()).Leer("30712345671")), Texto(esperado));
        QCOMPARE(lst->currentItem()->text(1), QStringLiteral("D'Angelo e Hijos"));
        // Delete, answered no and then yes.
        ts->dialogos().ResponderNo();
        QTest::keyClick(lst, Qt::Key_Delete);
        QVERIFY(LibroClientes(ts->stores()).Existe("30712345671"));
        ts->dialogos().ResponderSi();
        QTest::keyClick(lst, Qt::Key_Delete);
        QCOMPARE(ts->dialogos().registro().last().texto,
                 QStringLiteral("Confirma eliminar el cliente seleccionado"));
        QVERIFY(!LibroClientes(ts->stores()).Existe("30712345671"));
        QCOMPARE(lst->topLevelItemCount(), 1);
    }

    void copia_data() { FilasDeMotores(); }
    // A number in use, a blank one or a cancel copy nothing; then the copy through the component,
    // and a store that refuses one statement of a copy leaves nothing of it.
    void copia() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor, true);
        OperacionConTodo(*ts, "100");
        // A blank number and a cancelled question copy nothing, and say nothing.
        CopiaInterno copiaInterno(ts->ctx());
        ScriptedDialogs& d = ts->dialogos();
        d.ResponderTexto(" ");
        d.ResponderCancelar();
        QCOMPARE(copiaInterno.Mostrar("100"), QString());
        QCOMPARE(copiaInterno.Mostrar("100"), QString());
        QVERIFY(d.mensajes().isEmpty());
        QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 1.0);
        d.Limpiar();
        SettingsStore& s = ts->settings();
        for (const char* clave : {"FLAG4", "COEFEXPO", "PROCESOS"})
            s.SaveSetting("KORVEN", "100", clave, clave);
        s.SaveSetting("KORVEN", "AEC", "100", "R");

        std::unique_ptr<QObject> copiador =
            ts->ctx().componentes().Crear("OperationCopier.Main", ts->ctx());
        QVERIFY(copiador->setProperty("Numero_Interno", "100"));
        QVERIFY(QMetaObject::invokeMethod(copiador.get(), "GetDataAccessManager",
                                          Q_ARG(QObject*, nullptr)));
        ts->dialogos().ResponderTexto("100-B");
        QVERIFY(QMetaObject::invokeMethod(copiador.get(), "Mostrar"));
        QCOMPARE(copiador->property("NuevoNumero").toString(), QStringLiteral("100-B"));
        const auto& r = ts->dialogos().registro();
        QCOMPARE(r.size(), 1);
        QCOMPARE(r.at(0).texto, QStringLiteral("Ingrese el nuevo numero de INTERNO/CARPETA"));

        // The header: the same values, created today and to be assembled.
        QList<QStringList> original = Filas(*ts, "INTERNOS", "caratula", "100", "interno");
        QList<QStringList> copia = Filas(*ts, "INTERNOS", "caratula", "100-B", "interno");
        QCOMPARE(copia.size(), 1);
        QCOMPARE(Valor(*ts, "select fechaalta from caratula where interno = '100-B'").toDate(),
                 QDate::currentDate());
        QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100-B'")),
                 QStringLiteral("S"));
        for (QStringList* f : {&original.first(), &copia.first()})
            f->removeIf([](const QString& v) {
                return v.startsWith("fechaalta=") || v.startsWith("factura8=");
            });
        QCOMPARE(copia, original);
        QVERIFY(original.first().contains("cuitcliente=30500010912"));
        // What the clerk loaded comes along, row by row.
        for (const auto& [entidad, tabla, orden] : {std::tuple{"INTERNOS", "facturas", "orden"},
                                                    {"INTERNOS", "subitems", "id"},
                                                    {"INTERNOS", "prorrateo", "codigo"},
                                                    {"SYSTABLAS", "coment", "coment"}}) {
            const auto o = Filas(*ts, entidad, tabla, "100", orden);
            QVERIFY2(!o.isEmpty(), tabla);
            QCOMPARE(Filas(*ts, entidad, tabla, "100-B", orden), o);
        }
        // What the assembly and the liquidation derive does not, nor the lock.
        for (const char* t :
             {"groupsubitems", "item", "itemliq", "liqcero", "itemventaja", "iteminfo", "itempresu",
              "itemref", "idrel", "sysflag", "descargas", "interno"})
            QCOMPARE(Contar(*ts, "INTERNOS", t, "100-B"), 0);
        QCOMPARE(Contar(*ts, "SYSTABLAS", "hval", "100-B"), 0);
        // The options of the Operation, without the mark of a run.
        QCOMPARE(s.GetSetting("KORVEN", "100-B", "PROCESOS", "<no>") + '|' +
                     s.GetSetting("KORVEN", "100-B", "COEFEXPO") + '|' +
                     s.GetSetting("KORVEN", "100-B", "FLAG4"),
                 QStringLiteral("<no>|COEFEXPO|FLAG4"));
        QCOMPARE(s.GetSetting("KORVEN", "AEC", "100-B", "<no>"), QStringLiteral("<no>"));
        // The original is untouched.
        QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
                 QStringLiteral("N"));
        QCOMPARE(Contar(*ts, "INTERNOS", "item", "100"), 2);
        ts->dialogos().Limpiar();
        ts->settings().SaveSetting("KORVEN", "100", "FLAG1", "0");
        ts->conexion("INTERNOS").Ejecutar("drop table prorrateo");
        ts->dialogos().ResponderTexto("101");
        QCOMPARE(CopiaInterno(ts->ctx()).Mostrar("100"), QString());
        const QStringList m = ts->dialogos().mensajes();
        QCOMPARE(m.size(), 1);
        QVERIFY2(m.at(0).endsWith(" - seccion [OperationCopier.Main.Mostrar]::"),
                 qPrintable(m.at(0)));
        QVERIFY2(m.at(0).contains("prorrateo"), qPrintable(m.at(0)));
        for (const char* t : {"caratula", "facturas", "subitems"})
            QCOMPARE(Contar(*ts, "INTERNOS", t, "101"), 0);
        QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "101"), 0);
        QVERIFY(ts->settings().Claves("KORVEN", "101").isEmpty());
        QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "100"), 2);
    }

    // The service components reached by name, as the start routine and the forms reach them.
    void servicios() {
        test::TestStores t(Motor::SQLite);
        RegistrarComponentesPropios(t.ctx().componentes());
        // A value of a store: "." is its decimal point under either separator.
        std::unique_ptr<QObject> reglas = t.ctx().componentes().Crear("ValueRules.Main", t.ctx());
        SeparadorDecimalScope coma(",");
        double n = -1;
        QVERIFY(QMetaObject::invokeMethod(reglas.get(), "EsNumero", Q_RETURN_ARG(double, n),
                                          Q_ARG(QVariant, QVariant("1234.5"))));
        QCOMPARE(n, 1234.5);
        // The question of a new number, cut to its length.
        std::unique_ptr<QObject> mail = t.ctx().componentes().Crear("DesktopMail.Main", t.ctx());
        const QString pregunta = "Ingrese el nuevo numero de INTERNO/CARPETA";
        QString r;
        t.dialogos().ResponderTexto("2026-000123456789");
        QVERIFY(QMetaObject::invokeMethod(
            mail.get(), "ExInputBox", Q_RETURN_ARG(QString, r), Q_ARG(QString, pregunta),
            Q_ARG(QString, "Crear nuevo interno"), Q_ARG(int, 15), Q_ARG(QString, QString()),
            Q_ARG(QString, QString()), Q_ARG(bool, false)));
        QCOMPARE(r, QStringLiteral("2026-0001234567"));
        QCOMPARE(t.dialogos().todo(), QStringList{pregunta});
    }
};

int main(int argc, char** argv) {
    return korven::test::EjecutarClases<QApplication, TestComponentes>(argc, argv);
}

#include "test_componentes.moc"
