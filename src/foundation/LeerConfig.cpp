#include "foundation/LeerConfig.h"

#include "platform/AppContext.h"
#include "platform/Configuracion.h"
#include "platform/IniFile.h"
#include "platform/KorvenError.h"
#include "platform/SettingsStore.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {

const QString kKorven = QStringLiteral("KORVEN");
const QString kGeneral = QStringLiteral("GENERAL");
const QString kBaseServer = QStringLiteral("BASESERVER");
const QString kBaseLocal = QStringLiteral("BASELOCAL");

bool EsS(const QString& v) {
    return v == QStringLiteral("S");
}

// 2 for "S", 1 for anything else.
int UnoDos(const QString& v) {
    return EsS(v) ? 2 : 1;
}

// A number of the file; a text that is no number gives the default.
double NumeroODefecto(const QString& v, double defecto) {
    return EsNumerico(v) ? EsNumero(v) : defecto;
}

// Publishes a value in the settings store. A value the store already holds is not written
// again: each write goes to disk, and most starts publish what the last one did.
void Publicar(SettingsStore& s, const QString& seccion, const QString& clave,
              const QString& valor) {
    const QString nunca = QStringLiteral("\x1f");
    if (s.GetSetting(kKorven, seccion, clave, nunca) != valor)
        s.SaveSetting(kKorven, seccion, clave, valor);
}

// One store location: its key, the section of the key and the store file.
struct Ubicacion {
    QString* valor;
    const char* seccion;
    const char* clave;
    const char* archivo;
    QString* ruta;
};

} // namespace

QString LeerIni(const QString& clave, const QString& seccion, const QString& archivoIni) {
    return IniFile::Leer(clave, seccion, archivoIni);
}

void LeerGeneral(const QString& ini, Configuracion& c) {
    auto leer = [&ini](const char* clave) { return LeerIni(QLatin1String(clave), kGeneral, ini); };
    c.CORDANO = EsS(leer("CORDANO"));
    c.CORDANORAF = EsS(leer("CORDANORAF"));
    c.NROSUFIJ = leer("NROSUFIJ");
    c.MODIFCAT = UnoDos(leer("MODIFCAT"));
    c.VALORCAT = UnoDos(leer("VALORCAT"));
    c.PRIMR100 = UnoDos(leer("PRIMR100"));
    c.GROUPBYART = EsS(leer("GROUPBYART"));
    c.ARMARITEM = EsNumero(leer("ARMARITEM")) == 1 ? 1 : 2;
    c.MODARTSUB = EsS(leer("MODARTSUB").trimmed()) ? QStringLiteral("S") : QStringLiteral("N");
    // Whatever the key holds, the hub must always hand off to the declaration output.
    leer("VERSION");
    c.VERSION = 2;
    c.VrySbtDup = EsS(leer("VrySbtDup")) ? QStringLiteral("S") : QStringLiteral("N");
    c.SbtMantCodart = EsS(leer("SbtMantCodart"));
    c.SbtMantDatos = EsS(leer("SbtMantDatos"));
    c.SbtMostrarAsc = EsS(leer("SbtMostrarAsc"));
    c.FlgIdArtTOOtros = EsS(leer("FlgIdArtTOOtros"));
    c.SbtNroArtAI = EsS(leer("SbtNroArtAI"));
    c.NOCALCLIQU = EsS(leer("NOCALCLIQU"));
    c.EnviarComExt = EsS(leer("EnviarComExt"));
    c.SbtForzarNroArtAI = EsS(leer("SbtForzarNroArtAI"));
    c.VendedorOrderxNombre = EsS(leer("VendedorOrderxNombre"));
    // The one key whose default is on: only "N" turns it off.
    c.SbtFuncionCargaPor = leer("SbtFuncionCargaPor") != QStringLiteral("N");
    c.OperacionesMostrarTODO = EsS(leer("OperacionesMostrarTODO"));
    c.LISTADO = static_cast<int>(EsNumero(leer("LISTADO")));
    // The rates are kept with either separator; they are read under the system's.
    c.IVARIN = NumeroTecleado(ReemplazarSeparadorDecimal(leer("IVARIN")));
    c.IVARNI = NumeroTecleado(ReemplazarSeparadorDecimal(leer("IVARNI")));
    c.DEVICENAME = leer("DEVICENAME");
    c.DRIVERNAME = leer("DRIVERNAME");
    c.PORT = leer("PORT");
    c.DIEMCHINA_IndMaxArancel = NumeroODefecto(leer("DIEMCHINA-IndMaxArancel"), 35);
    c.DIEMCHINA_PrefPorc = NumeroODefecto(leer("DIEMCHINA-PrefPorc"), 40);
}

void LeerConfig(AppContext& ctx) {
    try {
        SettingsStore& s = ctx.settings();
        Configuracion& c = ctx.config();
        const QString ini = ctx.rutaIni();
        const QString dir = ctx.directorioPrograma();
        const QString bases = QStringLiteral("BASES");

        Publicar(s, QStringLiteral("DEFAULT"), QStringLiteral("UBICACION"), dir);

        // The locations go to the settings store as the file has them, before the defaults of
        // this run are applied: a first start with an empty file publishes empty locations.
        QString interno = LeerIni(QStringLiteral("INTERNO"), kBaseServer, ini);
        Publicar(s, bases, QStringLiteral("INTERNO"), DirectorioNormal(interno));
        c.CORDANO = EsS(LeerIni(QStringLiteral("CORDANO"), kGeneral, ini));
        c.CORDANORAF = EsS(LeerIni(QStringLiteral("CORDANORAF"), kGeneral, ini));
        c.NROSUFIJ = LeerIni(QStringLiteral("NROSUFIJ"), kGeneral, ini);
        QString systablas = LeerIni(QStringLiteral("INTERNO"), kBaseServer, ini);
        Publicar(s, bases, QStringLiteral("SYSTABLAS"), systablas);
        QString personal = LeerIni(QStringLiteral("PERSONAL"), kBaseServer, ini);
        Publicar(s, bases, QStringLiteral("PERSONAL"), personal);
        QString ncm = LeerIni(QStringLiteral("NCM"), kBaseServer, ini);
        Publicar(s, bases, QStringLiteral("NCM"), ncm);
        QString estado = LeerIni(QStringLiteral("ESTADO"), kBaseServer, ini);
        Publicar(s, bases, QStringLiteral("ESTADO"), estado);
        QString usuario = LeerIni(QStringLiteral("USUARIO"), kBaseLocal, ini);
        Publicar(s, bases, QStringLiteral("USUARIO"), usuario);

        // An empty location takes the db folder beside the program and the file keeps it. A
        // location that is there is taken as it stands.
        const Ubicacion ubicaciones[] = {
            {&interno, "BASESERVER", "INTERNO", "internos.mdb", &c.rutaInternos},
            {&systablas, "BASESERVER", "INTERNO", "systablas.mdb", &c.rutaSystablas},
            {&personal, "BASESERVER", "PERSONAL", "personal.mdb", &c.rutaPersonal},
            {&ncm, "BASESERVER", "NCM", "ncm.mdb", &c.rutaNcm},
            {&usuario, "BASELOCAL", "USUARIO", "usuario.mdb", &c.rutaUsuario},
            {&estado, "BASESERVER", "ESTADO", "estados.mdb", &c.rutaEstado},
        };
        for (const Ubicacion& u : ubicaciones) {
            if (u.valor->trimmed().isEmpty()) {
                *u.valor = DirectorioNormal(dir + QStringLiteral("db"));
                IniFile::Escribir(QLatin1String(u.seccion), QLatin1String(u.clave), *u.valor, ini);
            }
            *u.ruta = *u.valor + QLatin1String(u.archivo);
        }

        LeerGeneral(ini, c);
        c.CancelManual = EsS(s.GetSetting(kGeneral, QStringLiteral("OBJ"),
                                          QStringLiteral("CancelManual"), QStringLiteral("N")));

        // Whether the temporary supplies component can be made; its failure is no error.
        c.SupplyTemporaryInstalado = false;
        try {
            auto obj = ctx.componentes().Crear(QStringLiteral("SupplyTemporary.Main"), ctx);
            c.SupplyTemporaryInstalado = obj != nullptr;
        } catch (const KorvenError&) {
        }
        c.INSTMP_RestarPerMer =
            c.SupplyTemporaryInstalado &&
            EsS(s.GetSetting(kKorven, QStringLiteral("OBJ"), QStringLiteral("INSTMP.RestarPerMer"),
                             QStringLiteral("N")));
    } catch (const KorvenError& e) {
        throw KorvenError(KorvenError::ErrorLeerConfig,
                          QStringLiteral("KORVEN.Global.LeerConfig:: (") +
                              QString::number(e.numero()) + QStringLiteral(" / ") +
                              e.descripcion() + QLatin1Char(')'),
                          QStringLiteral("KORVEN.Global.LeerConfig"));
    }
}

} // namespace korven
