#pragma once

#include <QString>

namespace korven {

// The process-wide settings read once from KORVEN.ini at start (and updated in place by the
// configuration screens). Field names follow the keys.
struct Configuracion {
    // Store locations: full paths of the legacy store files, as the configuration reader builds
    // them from BASESERVER / BASELOCAL.
    QString rutaInternos, rutaSystablas, rutaPersonal, rutaNcm, rutaUsuario, rutaEstado;

    bool CORDANO = false;
    bool CORDANORAF = false;
    QString NROSUFIJ;
    int MODIFCAT = 1; // 2 when "S"
    int VALORCAT = 1; // 2 when "S"
    int PRIMR100 = 1; // 2 when "S"
    bool GROUPBYART = false;
    int ARMARITEM = 2;       // 1 by NCM, 2 in order of loading
    QString MODARTSUB = "N"; // "S" or "N"
    int VERSION = 2;         // always 2
    QString VrySbtDup = "N";
    bool SbtMantCodart = false;
    bool SbtMantDatos = false;
    bool SbtMostrarAsc = false;
    bool FlgIdArtTOOtros = false;
    bool SbtNroArtAI = false;
    bool NOCALCLIQU = false;
    bool EnviarComExt = false;
    bool SbtForzarNroArtAI = false;
    bool VendedorOrderxNombre = false;
    bool SbtFuncionCargaPor = true;
    bool OperacionesMostrarTODO = false;
    int LISTADO = 0;
    double IVARIN = 0;
    double IVARNI = 0;
    QString DEVICENAME;
    QString DRIVERNAME;
    QString PORT;
    double DIEMCHINA_IndMaxArancel = 35;
    double DIEMCHINA_PrefPorc = 40;

    // From the settings store.
    bool CancelManual = false;
    bool INSTMP_RestarPerMer = false;
    bool SupplyTemporaryInstalado = false;

    // The nomenclator date in "Long Date", as Integridad found it.
    QString FechaNomenclador;
};

} // namespace korven
