#include "foundation/LeerConfig.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"
#include "support/TestStores.h"

#include <QFile>
#include <QtTest>

using namespace korven;
using korven::test::TestStores;

namespace {

void EscribirArchivo(const QString& ruta, const QString& texto) {
    QFile f(ruta);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(texto.toUtf8());
}

QString LeerArchivo(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

// A setting by the name of its key.
QVariant Ajuste(const Configuracion& c, const QString& clave) {
    const QHash<QString, QVariant> t = {
        {"CORDANO", c.CORDANO},
        {"CORDANORAF", c.CORDANORAF},
        {"NROSUFIJ", c.NROSUFIJ},
        {"MODIFCAT", c.MODIFCAT},
        {"VALORCAT", c.VALORCAT},
        {"PRIMR100", c.PRIMR100},
        {"GROUPBYART", c.GROUPBYART},
        {"ARMARITEM", c.ARMARITEM},
        {"MODARTSUB", c.MODARTSUB},
        {"VERSION", c.VERSION},
        {"VrySbtDup", c.VrySbtDup},
        {"SbtMantCodart", c.SbtMantCodart},
        {"SbtMostrarAsc", c.SbtMostrarAsc},
        {"FlgIdArtTOOtros", c.FlgIdArtTOOtros},
        {"NOCALCLIQU", c.NOCALCLIQU},
        {"EnviarComExt", c.EnviarComExt},
        {"SbtFuncionCargaPor", c.SbtFuncionCargaPor},
        {"OperacionesMostrarTODO", c.OperacionesMostrarTODO},
        {"LISTADO", c.LISTADO},
        {"DEVICENAME", c.DEVICENAME},
        {"DIEMCHINA-IndMaxArancel", c.DIEMCHINA_IndMaxArancel},
        {"DIEMCHINA-PrefPorc", c.DIEMCHINA_PrefPorc},
    };
    return t.value(clave);
}

// A component that can always be made (stands for an installed one).
class Presente : public QObject {};

} // namespace

class TestLeerConfig : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void ubicacionesVaciasSeEscribenEnElArchivo();
    void ubicacionesPresentesSeUsanComoEstan();
    void publicacionAntesDeLosValoresPorDefecto();
    void clavesGenerales_data();
    void clavesGenerales();
    void tasasDeIvaConAmbosSeparadores_data();
    void tasasDeIvaConAmbosSeparadores();
    void ajustesDelUsuario();
};

void TestLeerConfig::ubicacionesVaciasSeEscribenEnElArchivo() {
    TestStores ts(Motor::SQLite);
    const QString ini = ts.ctx().rutaIni();
    EscribirArchivo(ini, QStringLiteral("[GENERAL]\nCORDANO=S\n"));
    LeerConfig(ts.ctx());

    const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
    // The section GENERAL stays as it was; the keys come in the order they were written back.
    QCOMPARE(LeerArchivo(ini), QStringLiteral("[GENERAL]\nCORDANO=S\n\n"
                                              "[BASESERVER]\nINTERNO=%1\nPERSONAL=%1\nNCM=%1\n"
                                              "ESTADO=%1\n\n[BASELOCAL]\nUSUARIO=%1\n")
                                   .arg(db));
    const Configuracion& c = ts.ctx().config();
    QCOMPARE(c.rutaInternos, db + "internos.mdb");
    QCOMPARE(c.rutaSystablas, db + "systablas.mdb");
    QCOMPARE(c.rutaPersonal, db + "personal.mdb");
    QCOMPARE(c.rutaNcm, db + "ncm.mdb");
    QCOMPARE(c.rutaUsuario, db + "usuario.mdb");
    QCOMPARE(c.rutaEstado, db + "estados.mdb");
    QVERIFY(c.CORDANO);

    // A second start finds the keys and changes nothing.
    LeerConfig(ts.ctx());
    QCOMPARE(IniFile::Leer("interno", "baseserver", ini), db);
    QCOMPARE(LeerArchivo(ini).count(QStringLiteral("INTERNO=")), 1);
}

void TestLeerConfig::ubicacionesPresentesSeUsanComoEstan() {
    TestStores ts(Motor::SQLite);
    const QString ini = ts.ctx().rutaIni();
    // A directory without its final separator is taken as it stands: the file name is glued
    // to it.
    EscribirArchivo(ini, QStringLiteral("[BASESERVER]\nInterno=/srv/korven\nPERSONAL=/srv/p/\n"
                                        "NCM=   \n[BASELOCAL]\nusuario=/home/u/\n"));
    LeerConfig(ts.ctx());
    const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
    const Configuracion& c = ts.ctx().config();
    QCOMPARE(c.rutaInternos, QStringLiteral("/srv/korveninternos.mdb"));
    QCOMPARE(c.rutaSystablas, QStringLiteral("/srv/korvensystablas.mdb"));
    QCOMPARE(c.rutaPersonal, QStringLiteral("/srv/p/personal.mdb"));
    QCOMPARE(c.rutaNcm, db + "ncm.mdb");
    QCOMPARE(c.rutaUsuario, QStringLiteral("/home/u/usuario.mdb"));
    QCOMPARE(c.rutaEstado, db + "estados.mdb");
    QCOMPARE(IniFile::Leer("INTERNO", "BASESERVER", ini), QStringLiteral("/srv/korven"));
    QCOMPARE(IniFile::Leer("NCM", "BASESERVER", ini), db);
    QCOMPARE(IniFile::Leer("ESTADO", "BASESERVER", ini), db);

    SettingsStore& s = ts.settings();
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "INTERNO"), QStringLiteral("/srv/korven/"));
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "SYSTABLAS"), QStringLiteral("/srv/korven"));
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "USUARIO"), QStringLiteral("/home/u/"));
}

void TestLeerConfig::publicacionAntesDeLosValoresPorDefecto() {
    TestStores ts(Motor::SQLite);
    SettingsStore& s = ts.settings();
    const QString db = DirectorioNormal(ts.directorio() + QStringLiteral("db"));
    const QStringList bases = {"INTERNO", "SYSTABLAS", "PERSONAL", "NCM", "ESTADO", "USUARIO"};

    // First start with no file: the settings store receives the empty locations, INTERNO
    // normalised to a lone separator.
    LeerConfig(ts.ctx());
    QCOMPARE(s.GetSetting("KORVEN", "DEFAULT", "UBICACION"), ts.directorio());
    QCOMPARE(s.GetSetting("KORVEN", "BASES", "INTERNO", "x"), DirectorioNormal(QString()));
    for (const QString& b : bases.mid(1))
        QCOMPARE(s.GetSetting("KORVEN", "BASES", b, "x"), QString());

    // The second start publishes what the first wrote back to the file.
    LeerConfig(ts.ctx());
    for (const QString& b : bases)
        QCOMPARE(s.GetSetting("KORVEN", "BASES", b), db);
}

void TestLeerConfig::clavesGenerales_data() {
    QTest::addColumn<QString>("clave");
    QTest::addColumn<QString>("linea");    // the line of the file; empty: the key is missing
    QTest::addColumn<QString>("esperado"); // as the value reads as text
    struct Caso {
        const char *nombre, *clave, *linea, *esperado;
    };
    // clang-format off
    const Caso casos[] = {
        {"VERSION 1 da 2", "VERSION", "VERSION=1", "2"},
        {"VERSION 0 da 2", "VERSION", "VERSION=0", "2"},
        {"VERSION falta", "VERSION", "", "2"},
        {"PrefPorc abc", "DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=abc", "40"},
        {"PrefPorc vacio", "DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=", "40"},
        {"PrefPorc 12.5", "DIEMCHINA-PrefPorc", "DIEMCHINA-PrefPorc=12.5", "12.5"},
        {"IndMax abc", "DIEMCHINA-IndMaxArancel", "DIEMCHINA-IndMaxArancel=abc", "35"},
        {"IndMax 20", "DIEMCHINA-IndMaxArancel", "DIEMCHINA-IndMaxArancel=20", "20"},
        {"CargaPor falta", "SbtFuncionCargaPor", "", "true"},
        {"CargaPor vacio", "SbtFuncionCargaPor", "SbtFuncionCargaPor=", "true"},
        {"CargaPor N", "SbtFuncionCargaPor", "SbtFuncionCargaPor=N", "false"},
        {"CargaPor N, clave en minusculas", "SbtFuncionCargaPor", "sbtfuncioncargapor=N", "false"},
        {"CargaPor S", "SbtFuncionCargaPor", "SbtFuncionCargaPor=S", "true"},
        {"ARMARITEM 1", "ARMARITEM", "ARMARITEM=1", "1"},
        {"ARMARITEM 2", "ARMARITEM", "ARMARITEM=2", "2"},
        {"ARMARITEM 3", "ARMARITEM", "ARMARITEM=3", "2"},
        {"ARMARITEM 0", "ARMARITEM", "ARMARITEM=0", "2"},
        {"ARMARITEM abc", "ARMARITEM", "ARMARITEM=abc", "2"},
        {"ARMARITEM falta", "ARMARITEM", "", "2"},
        {"MODIFCAT S", "MODIFCAT", "MODIFCAT=S", "2"},
        {"MODIFCAT N", "MODIFCAT", "MODIFCAT=N", "1"},
        {"MODIFCAT SI", "MODIFCAT", "MODIFCAT=SI", "1"},
        {"MODIFCAT falta", "MODIFCAT", "", "1"},
        {"VALORCAT S", "VALORCAT", "VALORCAT=S", "2"},
        {"PRIMR100 N", "PRIMR100", "PRIMR100=N", "1"},
        {"MODARTSUB S", "MODARTSUB", "MODARTSUB= S ", "S"},
        {"MODARTSUB X", "MODARTSUB", "MODARTSUB=X", "N"},
        {"MODARTSUB falta", "MODARTSUB", "", "N"},
        {"VrySbtDup S", "VrySbtDup", "VrySbtDup=S", "S"},
        {"VrySbtDup falta", "VrySbtDup", "", "N"},
        {"CORDANO S", "CORDANO", "CORDANO=S", "true"},
        {"CORDANO falta", "CORDANO", "", "false"},
        {"CORDANORAF S", "CORDANORAF", "CORDANORAF=S", "true"},
        {"NROSUFIJ", "NROSUFIJ", "NROSUFIJ=12", "12"},
        {"GROUPBYART S", "GROUPBYART", "GROUPBYART=S", "true"},
        {"SbtMantCodart S", "SbtMantCodart", "SbtMantCodart=S", "true"},
        {"SbtMostrarAsc N", "SbtMostrarAsc", "SbtMostrarAsc=N", "false"},
        {"FlgIdArtTOOtros S", "FlgIdArtTOOtros", "FlgIdArtTOOtros=S", "true"},
        {"NOCALCLIQU S", "NOCALCLIQU", "NOCALCLIQU=S", "true"},
        {"EnviarComExt falta", "EnviarComExt", "", "false"},
        {"MostrarTODO S", "OperacionesMostrarTODO", "OperacionesMostrarTODO=S", "true"},
        {"LISTADO 1", "LISTADO", "LISTADO=1", "1"},
        {"LISTADO vacio", "LISTADO", "LISTADO=", "0"},
        {"DEVICENAME", "DEVICENAME", "DEVICENAME=HP LaserJet 1020", "HP LaserJet 1020"},
    };
    // clang-format on
    for (const Caso& c : casos)
        QTest::newRow(c.nombre) << c.clave << c.linea << c.esperado;
}

void TestLeerConfig::clavesGenerales() {
    QFETCH(QString, clave);
    QFETCH(QString, linea);
    QFETCH(QString, esperado);
    TestStores ts(Motor::SQLite);
    EscribirArchivo(ts.ctx().rutaIni(), QStringLiteral("[GENERAL]\n") + linea + "\n");
    LeerConfig(ts.ctx());
    const QVariant valor = Ajuste(ts.ctx().config(), clave);
    QVERIFY2(valor.isValid(), qPrintable(clave));
    QCOMPARE(valor.toString(), esperado);
}

void TestLeerConfig::tasasDeIvaConAmbosSeparadores_data() {
    QTest::addColumn<QString>("separador");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<double>("esperado");
    for (const char* sep : {",", "."}) {
        const QString s = QString::fromLatin1(sep);
        QTest::newRow(qPrintable("punto, separador " + s)) << s << "10.5" << 10.5;
        QTest::newRow(qPrintable("coma, separador " + s)) << s << "10,5" << 10.5;
        QTest::newRow(qPrintable("entero, separador " + s)) << s << "21" << 21.0;
        QTest::newRow(qPrintable("vacio, separador " + s)) << s << "" << 0.0;
    }
}

void TestLeerConfig::tasasDeIvaConAmbosSeparadores() {
    QFETCH(QString, separador);
    QFETCH(QString, texto);
    QFETCH(double, esperado);
    SeparadorDecimalScope sep(separador);
    TestStores ts(Motor::SQLite);
    EscribirArchivo(ts.ctx().rutaIni(),
                    QStringLiteral("[GENERAL]\nIVARIN=%1\nIVARNI=%1\n").arg(texto));
    LeerConfig(ts.ctx());
    QCOMPARE(ts.ctx().config().IVARIN, esperado);
    QCOMPARE(ts.ctx().config().IVARNI, esperado);
}

void TestLeerConfig::ajustesDelUsuario() {
    TestStores ts(Motor::SQLite);
    SettingsStore& s = ts.settings();
    s.SaveSetting("GENERAL", "OBJ", "CancelManual", "S");
    s.SaveSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "S");

    // Without the temporary supplies component the option is off whatever the store says.
    LeerConfig(ts.ctx());
    QVERIFY(ts.ctx().config().CancelManual);
    QVERIFY(!ts.ctx().config().SupplyTemporaryInstalado);
    QVERIFY(!ts.ctx().config().INSTMP_RestarPerMer);

    ts.ctx().componentes().Registrar(
        "SupplyTemporary.Main", [](AppContext&) { return std::unique_ptr<QObject>(new Presente); });
    LeerConfig(ts.ctx());
    QVERIFY(ts.ctx().config().SupplyTemporaryInstalado);
    QVERIFY(ts.ctx().config().INSTMP_RestarPerMer);

    s.SaveSetting("KORVEN", "OBJ", "INSTMP.RestarPerMer", "N");
    s.SaveSetting("GENERAL", "OBJ", "CancelManual", "X");
    LeerConfig(ts.ctx());
    QVERIFY(!ts.ctx().config().INSTMP_RestarPerMer);
    QVERIFY(!ts.ctx().config().CancelManual);
}

QTEST_GUILESS_MAIN(TestLeerConfig)
#include "test_leerconfig.moc"
