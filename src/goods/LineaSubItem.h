#pragma once

#include <QString>

namespace korven {

// The fields of the goods screen as the clerk left them: the texts of the boxes and the
// captions and states of the labels the save reads. The save reads and rewrites it (suffix
// string, statistics quantity...), as it does the screen.
struct LineaSubItem {
    QString idCatalogo;           // TxtIdCatalogo
    QString idArticulo;           // txtIdArticulo
    QString descripcion;          // TxtDescArticulos
    QString kgUnitario;           // txtKgUnitario
    QString otros;                // txtOtros
    QString posicion;             // TxtPosicion
    QString codigoEstadistica;    // LbCodigoEstadistica
    QString unidad;               // TxtUnidad
    QString cantidad;             // TxtCantidad
    QString unitario;             // TxtUnitario
    QString fobTotal;             // TxtFobTotal
    QString valorEstadistica;     // TxtValorsobreestadistica
    QString idDerEsp;             // LbIdDerEsp
    QString derEsp;               // TxtDerEsp
    bool derEspVisible = false;   // FramDerEsp
    QString kgNeto;               // TxtKgNeto
    QString kgBruto;              // TxtKgBruto
    QString idPais;               // TxtIdpais
    QString idPaisProc;           // txtIdPaisProc
    QString estadoMerc;           // TxtIdEstadoMercaderia
    QString sufijos;              // txtSufijos
    bool bienDeUso = true;        // cboBiendeUso index 0
    QString codProrrateo;         // TxtCodProrrateo
    QString filler;               // TxtFiller
    QString codigoEAN;            // TxtCodigoEAN
    QString certOrig;             // txtCertOrig
    QString insumosTemp;          // TxtInsumosTemp
    QString insumosCons;          // TxtInsumCons
    QString cancelaciones;        // TxtCanelaciones
    QString cancCantidad;         // TxtCancCantidad
    QString nroItem;              // txtNroItem
    QString nroSubitem;           // TxtNroSubitem
    QString onccaCategoria;       // txtONCCACategoria
    QString onccaCorte;           // txtONCCACorte
    bool lapi = false;            // LbLapi visible
    QString reintegro;            // LbREINT caption
    QString descCatalogo;         // LbDescCatalogo caption
    bool catalogoVisible = false; // the catalogue frame
};

// How a save ended: written or not, and where the focus goes (the control's name, empty to
// leave it). The message, when there was one, has been shown through the dialogs service.
struct ResultadoSubItem {
    bool grabado = false;
    QString foco;
    long long id = 0; // the id of the line written
};

} // namespace korven
