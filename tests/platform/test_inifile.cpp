#include "platform/IniFile.h"
#include "platform/SettingsStore.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace korven;

class TestIniFile : public QObject {
    Q_OBJECT

    QTemporaryDir tmp_;
    QString escribir(const QByteArray& contenido) {
        const QString ruta = tmp_.filePath(QStringLiteral("KORVEN.ini"));
        QFile f(ruta);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(contenido);
        return ruta;
    }
    static QByteArray leer(const QString& ruta) {
        QFile f(ruta);
        f.open(QIODevice::ReadOnly);
        return f.readAll();
    }

private Q_SLOTS:
    void lectura_data() {
        QTest::addColumn<QByteArray>("contenido");
        QTest::addColumn<QString>("seccion");
        QTest::addColumn<QString>("clave");
        QTest::addColumn<QString>("esperado");
        const QByteArray base = "; comentario\n[BaseServer]\nInterno = C:\\korven\\db\\ \n"
                                "[general]\ncordano=S\nDIEMCHINA-PrefPorc=abc\nVACIA=\n"
                                "COMILLAS=\"con blancos \"\n";
        QTest::newRow("clave y seccion sin mayusculas") << base << "GENERAL"
                                                        << "CORDANO"
                                                        << "S";
        QTest::newRow("valor recortado") << base << "BASESERVER"
                                         << "INTERNO"
                                         << "C:\\korven\\db\\";
        QTest::newRow("clave con guion") << base << "general"
                                         << "diemchina-prefporc"
                                         << "abc";
        QTest::newRow("vacia") << base << "GENERAL"
                               << "VACIA"
                               << "";
        QTest::newRow("falta la clave") << base << "GENERAL"
                                        << "LISTADO"
                                        << "";
        QTest::newRow("falta la seccion") << base << "SMTP"
                                          << "SERVER"
                                          << "";
        QTest::newRow("otra seccion no cuenta") << base << "BASESERVER"
                                                << "CORDANO"
                                                << "";
        QTest::newRow("comillas") << base << "GENERAL"
                                  << "COMILLAS"
                                  << "con blancos ";
        QTest::newRow("crlf") << QByteArray("[GENERAL]\r\nLISTADO=1\r\n") << "GENERAL"
                              << "LISTADO"
                              << "1";
        QTest::newRow("750 caracteres") << QByteArray("[G]\nK=") + QByteArray(800, 'x') + "\n"
                                        << "G"
                                        << "K" << QString(750, QLatin1Char('x'));
    }
    void lectura() {
        QFETCH(QByteArray, contenido);
        QFETCH(QString, seccion);
        QFETCH(QString, clave);
        QFETCH(QString, esperado);
        QCOMPARE(IniFile::Leer(clave, seccion, escribir(contenido)), esperado);
    }

    void archivoInexistente() {
        QCOMPARE(IniFile::Leer(QStringLiteral("X"), QStringLiteral("Y"),
                               tmp_.filePath(QStringLiteral("no.ini"))),
                 QString());
    }

    void escrituraEditaSoloSuLinea() {
        const QString ruta =
            escribir("; cabecera\n[BASESERVER]\nncm=/a/\n\n[GENERAL]\nCordano=N\nLISTADO=0\n");
        QVERIFY(IniFile::Escribir(QStringLiteral("general"), QStringLiteral("cordano"),
                                  QStringLiteral("S"), ruta));
        QVERIFY(IniFile::Escribir(QStringLiteral("BASESERVER"), QStringLiteral("interno"),
                                  QStringLiteral("/b/"), ruta));
        QVERIFY(IniFile::Escribir(QStringLiteral("SMTP"), QStringLiteral("server"),
                                  QStringLiteral("mail"), ruta));
        QCOMPARE(leer(ruta),
                 QByteArray("; cabecera\n[BASESERVER]\nncm=/a/\nINTERNO=/b/\n\n[GENERAL]\n"
                            "CORDANO=S\nLISTADO=0\n\n[SMTP]\nSERVER=mail\n"));
        QCOMPARE(IniFile::Leer(QStringLiteral("Interno"), QStringLiteral("BaseServer"), ruta),
                 QStringLiteral("/b/"));
    }

    void escrituraCreaArchivoYConservaCrlf() {
        const QString nuevo = tmp_.filePath(QStringLiteral("nuevo.ini"));
        QVERIFY(IniFile::Escribir(QStringLiteral("BASELOCAL"), QStringLiteral("usuario"),
                                  QStringLiteral("/u/"), nuevo));
        QCOMPARE(leer(nuevo), QByteArray("[BASELOCAL]\nUSUARIO=/u/\n"));
        const QString ruta = escribir("[GENERAL]\r\nLISTADO=0\r\n");
        QVERIFY(IniFile::Escribir(QStringLiteral("GENERAL"), QStringLiteral("listado"),
                                  QStringLiteral("1"), ruta));
        QCOMPARE(leer(ruta), QByteArray("[GENERAL]\r\nLISTADO=1\r\n"));
    }

    void settingsStore() {
        QTemporaryDir carpeta;
        SettingsStore a(carpeta.path());
        QCOMPARE(a.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"),
                              QStringLiteral("100"), QStringLiteral("N")),
                 QStringLiteral("N"));
        a.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), QStringLiteral("100"),
                      QStringLiteral("R"));
        a.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"), QStringLiteral("FLAG0"),
                      QStringLiteral("tab\tlinea\n%"));
        a.SaveSetting(QStringLiteral("GENERAL"), QStringLiteral("OBJ"),
                      QStringLiteral("CancelManual"), QStringLiteral("S"));
        // Names compare without regard to case.
        QCOMPARE(
            a.GetSetting(QStringLiteral("korven"), QStringLiteral("aec"), QStringLiteral("100")),
            QStringLiteral("R"));
        // A second store on the same folder (another process of the same user) sees the values.
        SettingsStore b(carpeta.path());
        QCOMPARE(b.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"),
                              QStringLiteral("flag0")),
                 QStringLiteral("tab\tlinea\n%"));
        QCOMPARE(b.GetSetting(QStringLiteral("GENERAL"), QStringLiteral("OBJ"),
                              QStringLiteral("CANCELMANUAL")),
                 QStringLiteral("S"));
        QCOMPARE(b.Claves(QStringLiteral("KORVEN"), QStringLiteral("AEC")),
                 QStringList{QStringLiteral("100")});
        b.SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), QStringLiteral("100"),
                      QString());
        QCOMPARE(a.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"),
                              QStringLiteral("100"), QStringLiteral("N")),
                 QString());
        a.DeleteSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), QStringLiteral("100"));
        QCOMPARE(b.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"),
                              QStringLiteral("100"), QStringLiteral("N")),
                 QStringLiteral("N"));
        b.DeleteSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"));
        QCOMPARE(a.GetSetting(QStringLiteral("KORVEN"), QStringLiteral("100/A"),
                              QStringLiteral("FLAG0"), QStringLiteral("x")),
                 QStringLiteral("x"));
        QCOMPARE(a.GetSetting(QStringLiteral("GENERAL"), QStringLiteral("OBJ"),
                              QStringLiteral("CancelManual")),
                 QStringLiteral("S"));
    }
};

QTEST_GUILESS_MAIN(TestIniFile)
#include "test_inifile.moc"
