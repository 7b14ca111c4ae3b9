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
    // clang-format off
    return {"30712345671", "D'Angelo Hnos SA", "Av. Corrientes 1234", "compras@dangelo.com.ar", 3.5,
            1.25, "S", 50, 100, "S", 20, 40, "S", 2.5, "N"};
    // clang-format on
}

Cliente Uno(const QString& cuit, const QString& nombre, const QString& email = {}) {
    Cliente c;
    c.cuit = cuit;
    c.nombre = nombre;
    c.email = email;
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

void Escribir(QWidget* f, const char* campo, const QString& texto) {
    auto* t = f->findChild<QLineEdit*>(campo);
    t->setFocus();
    t->clear();
    QTest::keyClicks(t, texto);
    QTest::keyClick(t, Qt::Key_Return);
}

void Marcar(QWidget* f, const char* campo, bool marcado) {
    auto* c = f->findChild<QCheckBox*>(campo);
    if (c->isChecked() != marcado) {
        c->setFocus();
        QTest::keyClick(c, Qt::Key_Space);
    }
}

} // namespace

class TestClientBook : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void cuitValido_data() {
        // name | tax number -> valid
        FilasDeTexto(R"(
            resto 9, verificador 2  | 20111111112   | 1
            resto 9, otro           | 30500010912   | 1
            resto 6, verificador 5  | 30999999995   | 1
            resto 0, verificador 0  | 20000000060   | 1
            resto 1, verificador 1  | 20000000011   | 1
            resto 10, verificador 1 | 30712345671   | 1
            resto 1 con 0           | 20000000010   | 0
            digito errado           | 20111111113   | 0
            diez digitos            | 2011111111    | 0
            doce digitos            | 201111111120  | 0
            con guiones             | 20-11111111-2 | 0
            letra                   | 2011111111A   | 0
            vacio                   |               | 0)",
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
            mail sin arroba     | 20111111112 | Uno | ab.com     | La dirección de correo no es válida.
            mail con dos puntos | 20111111112 | Uno | a..b@c.com | La dirección de correo no es válida.)",
                     false);
    }

    void validar() {
        QFETCH(QStringList, f);
        QCOMPARE(LibroClientes::Validar(Uno(f[1], f[2], f[3])), f[4]);
    }

    void libro_data() { FilasDeMotores(); }
    void libro() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        LibroClientes libro(ts->stores());
        const Cliente c = Completo();
        libro.Insertar(c);
        QVERIFY(libro.Existe(c.cuit));
        QVERIFY(!libro.Existe("20111111112"));
        QCOMPARE(Texto(libro.Leer(c.cuit)), Texto(c));
        // The columns as the other parts of the program read them.
        Recordset rs =
            ts->conexion("PERSONAL")
                .Abrir("select nombre,regalias,ajxvinc_4102,eximgan,cvdi,ingbru,exceplapiaec from "
                       "clientes");
        QCOMPARE(EsNull(rs.Fields("nombre")), c.nombre);
        QCOMPARE(EsNumero(rs.Fields("regalias")), 3.5);
        QCOMPARE(EsNumero(rs.Fields("ajxvinc_4102")), 1.25);
        QCOMPARE(EsNull(rs.Fields("eximgan")), QStringLiteral("S"));

        // Changes go through the screen; see cambioYBaja.
        QCOMPARE(libro.Eliminar(c.cuit), 1);
        QVERIFY(!libro.Leer(c.cuit));
        QCOMPARE(libro.Eliminar(c.cuit), 0);
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
        QCOMPARE(cuits(libro.Listar()).size(), 3);
        QCOMPARE(cuits(libro.Listar("30")), (QStringList{"30712345671", "30500010912"}));
        QCOMPARE(cuits(libro.Listar("", "zeta")), (QStringList{"20111111112", "30500010912"}));
        QCOMPARE(cuits(libro.Listar("30", "ZETA")), QStringList{"30500010912"});
        QCOMPARE(cuits(libro.Listar("305")), QStringList{"30500010912"});
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
            AlAbrir<FrmCliente> editor([&s](FrmCliente* e) {
                Escribir(e, "TxtCuit", "30712345671");
                Escribir(e, "TxtNombre", "D'Angelo Hnos SA");
                Escribir(e, "TxtDomicilio", "Av. Corrientes 1234");
                Escribir(e, "TxtEmail", "compras@dangelo.com.ar");
                Escribir(e, "TxtRegalias", "3" + s + "5");
                Escribir(e, "TxtAjVinc", "1" + s + "25");
                Marcar(e, "ChEximGan", true);
                Escribir(e, "TxtEximGanValor", "50");
                Escribir(e, "TxtEximGanValorTemp", "100");
                Marcar(e, "ChIvaReduccion", true);
                Escribir(e, "TxtIvaReduccionValor", "20");
                Escribir(e, "TxtIvaReduccionValorTemp", "40");
                Marcar(e, "ChCVDI", true);
                Escribir(e, "TxtIngBru", "2" + s + "5");
                Marcar(e, "ChExcepLAPIAEC", false);
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
        Escribir(&e, "TxtCuit", "30712345672");
        Escribir(&e, "TxtNombre", "Nuevo");
        QVERIFY(!e.Guardar());
        Escribir(&e, "TxtCuit", "30712345671");
        QVERIFY(!e.Guardar());
        Escribir(&e, "TxtCuit", "20111111112");
        Escribir(&e, "TxtEmail", "nuevo@");
        QVERIFY(!e.Guardar());
        Escribir(&e, "TxtEmail", "");
        Escribir(&e, "TxtIngBru", "dos");
        QVERIFY(!e.Guardar());
        QCOMPARE(ts->dialogos().mensajes(),
                 (QStringList{"Cuit Invalido", "El CUIT ingresado ya existe en el sistema",
                              "La dirección de correo no es válida.",
                              "Debe Ingresar un Valor Númerico"}));
        QVERIFY(e.isVisible());
        QCOMPARE(e.findChild<QLineEdit*>("TxtNombre")->text(), QStringLiteral("Nuevo"));
        Escribir(&e, "TxtIngBru", "");
        QVERIFY(e.Guardar());
        QCOMPARE(LibroClientes(ts->stores()).Leer("20111111112")->nombre, QStringLiteral("Nuevo"));
        QCOMPARE(LibroClientes(ts->stores()).Leer("20111111112")->cvdi, QStringLiteral("N"));
    }

    void cambioYBaja_data() { FilasDeMotores(); }
    void cambioYBaja() {
        MOTOR_O_SALTAR();
        auto ts = Stores(motor);
        LibroClientes(ts->stores()).Insertar(Completo());
        LibroClientes(ts->stores()).Insertar(Uno("20111111112", "Beta"));
        FrmClientes lista(ts->ctx(), false);
        lista.show();
        auto* lst = lista.findChild<QTreeWidget*>("LstClientes");
        QCOMPARE(lista.CuitSeleccionado(), QStringLiteral("20111111112"));
        QTest::keyClick(lst, Qt::Key_Down);
        QCOMPARE(lista.CuitSeleccionado(), QStringLiteral("30712345671"));
        // F6: the client without its income-tax exemption.
        AlAbrir<FrmCliente> editor([](FrmCliente* e) {
            QVERIFY(e->findChild<QLineEdit*>("TxtCuit")->isReadOnly());
            QVERIFY(e->findChild<QLineEdit*>("TxtEximGanValor")->isEnabled());
            Marcar(e, "ChEximGan", false);
            QVERIFY(!e->findChild<QLineEdit*>("TxtEximGanValor")->isEnabled());
            Escribir(e, "TxtNombre", "D'Angelo e Hijos");
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

    void seleccionDesdeElComponente_data() { FilasDeMotores(); }
    void seleccionDesdeElComponente() {
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
        // Leaving with Esc chooses nothing.
        AlAbrir<FrmClientes> salida([](FrmClientes* l) {
            QTest::keyClick(l->findChild<QTreeWidget*>("LstClientes"), Qt::Key_Escape);
        });
        QVERIFY(QMetaObject::invokeMethod(libro.get(), "MostrarListado", Q_ARG(QObject*, nullptr)));
        QCOMPARE(salida.veces(), 1);
        QVERIFY(libro->property("Cliente_Cuit").toString().isEmpty());
        QVERIFY(libro->property("Cliente_nombre").toString().isEmpty());
    }
};

// The copy of an Operation under a new number, on SQLite and on PostgreSQL.
namespace {

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

class TestCopia : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void copiaLoQueCargoElDespachante_data() { FilasDeMotores(); }
    void copiaLoQueCargoElDespachante();
    void numeroExistenteOVacio_data() { FilasDeMotores(); }
    void numeroExistenteOVacio();
    void errorNoDejaMediaCopia_data() { FilasDeMotores(); }
    void errorNoDejaMediaCopia();
};

void TestCopia::copiaLoQueCargoElDespachante() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor, true);
    OperacionConTodo(*ts, "100");
    SettingsStore& s = ts->settings();
    s.SaveSetting("KORVEN", "100", "FLAG4", "0");
    s.SaveSetting("KORVEN", "100", "COEFEXPO", "1");
    s.SaveSetting("KORVEN", "100", "DESC", "0");
    s.SaveSetting("KORVEN", "100", "PROCESOS", "2");
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
    QCOMPARE(r.at(0).titulo, QStringLiteral("Copiar interno 100"));

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
    for (const char* t : {"groupsubitems", "item", "itemliq", "liqcero", "itemventaja", "iteminfo",
                          "itempresu", "itemref", "idrel", "sysflag", "descargas", "interno"})
        QCOMPARE(Contar(*ts, "INTERNOS", t, "100-B"), 0);
    QCOMPARE(Contar(*ts, "SYSTABLAS", "hval", "100-B"), 0);
    // The options of the Operation, without the mark of a run.
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "FLAG4"), QStringLiteral("0"));
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "COEFEXPO"), QStringLiteral("1"));
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "DESC"), QStringLiteral("0"));
    QCOMPARE(s.GetSetting("KORVEN", "100-B", "PROCESOS", "<no>"), QStringLiteral("<no>"));
    QCOMPARE(s.GetSetting("KORVEN", "AEC", "100-B", "<no>"), QStringLiteral("<no>"));
    // The original is untouched.
    QCOMPARE(EsNull(Valor(*ts, "select factura8 from caratula where interno = '100'")),
             QStringLiteral("N"));
    QCOMPARE(Contar(*ts, "INTERNOS", "item", "100"), 2);
}

void TestCopia::numeroExistenteOVacio() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor, true);
    OperacionConTodo(*ts, "100");
    Insertar(*ts, "INTERNOS", "caratula", CaratulaCompleta("200"));
    CopiaInterno copia(ts->ctx());
    ScriptedDialogs& d = ts->dialogos();
    d.ResponderTexto("200");
    d.ResponderTexto(" ");
    d.ResponderCancelar();
    QCOMPARE(copia.Mostrar("100"), QString());
    QCOMPARE(copia.Mostrar("100"), QString());
    QCOMPARE(copia.Mostrar("100"), QString());
    QCOMPARE(d.mensajes(), QStringList{"El Código de interno ya existe."});
    QCOMPARE(d.registro().at(1).icono, Dialogos::Icono::Exclamacion);
    QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "200"), 0);
    QCOMPARE(EsNumero(Valor(*ts, "select count(*) from caratula")), 2.0);
}

// A store that refuses one statement of the copy leaves nothing of it.
void TestCopia::errorNoDejaMediaCopia() {
    MOTOR_O_SALTAR();
    auto ts = Stores(motor, true);
    OperacionConTodo(*ts, "100");
    ts->settings().SaveSetting("KORVEN", "100", "FLAG1", "0");
    ts->conexion("INTERNOS").Ejecutar("drop table prorrateo");
    ts->dialogos().ResponderTexto("101");
    QCOMPARE(CopiaInterno(ts->ctx()).Mostrar("100"), QString());
    const QStringList m = ts->dialogos().mensajes();
    QCOMPARE(m.size(), 1);
    QVERIFY2(m.at(0).endsWith(" - seccion [OperationCopier.Main.Mostrar]::"), qPrintable(m.at(0)));
    QVERIFY2(m.at(0).contains("prorrateo"), qPrintable(m.at(0)));
    for (const char* t : {"caratula", "facturas", "subitems"})
        QCOMPARE(Contar(*ts, "INTERNOS", t, "101"), 0);
    QCOMPARE(Contar(*ts, "SYSTABLAS", "coment", "101"), 0);
    QVERIFY(ts->settings().Claves("KORVEN", "101").isEmpty());
    QCOMPARE(Contar(*ts, "INTERNOS", "subitems", "100"), 2);
}

// The service components reached by name, as the start routine and the forms reach them.
class TestServicios : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void exInputBox() {
        test::TestStores t(Motor::SQLite);
        RegistrarComponentesPropios(t.ctx().componentes());
        std::unique_ptr<QObject> mail = t.ctx().componentes().Crear("DesktopMail.Main", t.ctx());
        const QString pregunta = "Ingrese el nuevo numero de INTERNO/CARPETA";
        auto preguntar = [&] {
            QString r = "<sin llamar>";
            QMetaObject::invokeMethod(
                mail.get(), "ExInputBox", Q_RETURN_ARG(QString, r), Q_ARG(QString, pregunta),
                Q_ARG(QString, "Crear nuevo interno"), Q_ARG(int, 15), Q_ARG(QString, QString()),
                Q_ARG(QString, QString()), Q_ARG(bool, false));
            return r;
        };
        t.dialogos().ResponderTexto("2026-000123456789");
        t.dialogos().ResponderCancelar();
        QCOMPARE(preguntar(), QStringLiteral("2026-0001234567"));
        QCOMPARE(preguntar(), QString());
        QCOMPARE(t.dialogos().todo(), (QStringList{pregunta, pregunta}));
        QCOMPARE(t.dialogos().registro().first().titulo, QStringLiteral("Crear nuevo interno"));
    }

    void valueRules() {
        test::TestStores t(Motor::SQLite);
        RegistrarComponentesPropios(t.ctx().componentes());
        std::unique_ptr<QObject> reglas = t.ctx().componentes().Crear("ValueRules.Main", t.ctx());
        // A value of a store: "." is its decimal point under either separator.
        for (const auto& [sep, texto, numero] :
             {std::tuple{",", "1234.5", 1234.5}, {".", "1234.5", 1234.5}, {",", "12 kg", 0.0}}) {
            SeparadorDecimalScope scope(sep);
            double n = -1;
            QVERIFY(QMetaObject::invokeMethod(reglas.get(), "EsNumero", Q_RETURN_ARG(double, n),
                                              Q_ARG(QVariant, QVariant(texto))));
            QCOMPARE(n, numero);
        }
        QString s = "x";
        QVERIFY(QMetaObject::invokeMethod(reglas.get(), "EsNull", Q_RETURN_ARG(QString, s),
                                          Q_ARG(QVariant, QVariant())));
        QCOMPARE(s, QString());
    }
};

int main(int argc, char** argv) {
    return korven::test::EjecutarClases<QApplication, TestClientBook, TestCopia, TestServicios>(
        argc, argv);
}

#include "test_componentes.moc"
