#include "schema/Catalogo.h"

#include <QRegularExpression>

namespace korven::schema {

namespace {

// Columns are written as one text: names separated by blanks, each with an optional mark in
// front ('#' number, '@' date, '%' date and time, '+' counter; none is text) and an optional
// ":<version>" behind when a later schema version brought the column.
std::vector<DefColumna> Columnas(const QString& texto) {
    std::vector<DefColumna> r;
    const QStringList partes =
        texto.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    for (QString p : partes) {
        DefColumna c;
        const int dos = p.indexOf(QLatin1Char(':'));
        if (dos > 0) {
            c.desde = p.mid(dos + 1).toInt();
            p = p.left(dos);
        }
        switch (p.at(0).toLatin1()) {
        case '#':
            c.tipo = TipoColumna::Numero;
            p.remove(0, 1);
            break;
        case '@':
            c.tipo = TipoColumna::Fecha;
            p.remove(0, 1);
            break;
        case '+':
            c.tipo = TipoColumna::Contador;
            p.remove(0, 1);
            break;
        case '%':
            c.tipo = TipoColumna::FechaHora;
            p.remove(0, 1);
            break;
        default:
            break;
        }
        c.nombre = p.toLower();
        r.push_back(c);
    }
    return r;
}

QStringList Lista(const QString& texto) {
    return texto.toLower().split(QLatin1Char(','), Qt::SkipEmptyParts);
}

// indices: each "col1,col2" or "col1,col2:<version>"; every index comes with version 2 unless
// it says otherwise.
DefTabla Def(const char* entidad, const char* nombre, const QString& columnas, const char* clave,
             std::initializer_list<const char*> indices = {}, int desde = 1) {
    DefTabla t;
    t.entidad = QString::fromLatin1(entidad);
    t.nombre = QString::fromLatin1(nombre).toLower();
    t.columnas = Columnas(columnas);
    t.clave = Lista(QString::fromLatin1(clave));
    t.desde = desde;
    for (const DefColumna& c : t.columnas)
        if (c.tipo == TipoColumna::Contador)
            t.clavePrimaria << c.nombre;
    for (const char* i : indices) {
        QString texto = QString::fromLatin1(i);
        DefIndice ix;
        const int dos = texto.indexOf(QLatin1Char(':'));
        if (dos > 0) {
            ix.desde = texto.mid(dos + 1).toInt();
            texto = texto.left(dos);
        }
        ix.columnas = Lista(texto);
        ix.nombre = QStringLiteral("ix_") + t.nombre + QLatin1Char('_') +
                    ix.columnas.join(QLatin1Char('_'));
        t.indices.push_back(ix);
    }
    return t;
}

// The columns of the header screen that a sub-regime may hide: one column of dest each.
const char* const ControlesCaratula =
    "TxtSubReg TxtSubRegDesc txtIdAduana1 TxtAduana1 TxtIdAduana2 TxtAduana2 TxtCUITCliente "
    "TxtNombre TxtCuitAduana TxtNombreadu Txtidvendedor TxtNombreven Txtfobdivisas TxtCoddivfob "
    "TxtDivValorFob TxtDolFob Txtfletedivisas TxtCodDivFlete TxtDivValorFlete TxtDolFlete "
    "Txtsegurodivisas TxtCodDivseguro TxtDivValorSeguro TxtDolSeguro TxtPorc TxtProrratear "
    "TxtAjustIncluir TxtAjustDeducir TxtFactCon Txtidcondventa Txtidpais TxtdescPais "
    "Txtmotdestsusp TxtautdestSusp TxtPlazoaut TxtCierreVenta txtFechaEmbarque cboFacilidadPago "
    "txtDepAlm TxtFactura LstFact ChFacturas txtDCEstMerc chkDCForzarEstMerc txtDCPaisOrigen "
    "chkDCForzarPaisOrigen txtDCPaisDest txtDCStandard TxtDCRegalias txtDCBancos txtKgNeto "
    "txtDCComiExt cboOpcionIVA cboOpcionesGanancias";

QString ColumnasNomenclador() {
    QStringList c;
    for (int i = 1; i <= 62; ++i)
        c << QStringLiteral("%1").arg(i, 3, 10, QLatin1Char('0'));
    return c.join(QLatin1Char(' '));
}

std::vector<DefTabla> Definir() {
    std::vector<DefTabla> t;
    const char* const I = "INTERNOS";
    const char* const S = "SYSTABLAS";
    const char* const P = "PERSONAL";

    // ---- INTERNOS: the records of each Operation
    // The header: one per number, whatever the case the number is typed in. The register
    // filters by client, broker and date and orders by number or by date.
    t.push_back(Def(
        I, "caratula",
        "interno @fechaalta idsubreg idaduana idaduanasal cuitcliente cuitdespaduana idvendedor "
        "factura1 factura2 factura3 factura5 factura6 factura7 factura8 factura9 factura10 "
        "facturas #fobdivisas fobcoddivisas #fobdivcambio #fletedivisas fletecoddivisas "
        "#fletedivcambio #segurodivisas segurocoddivisas #segurodivcambio #seguroporcentaje "
        "#valoraprorratear #ajusteincluir #ajustededucir #factorconver idcondiciondeventa "
        "idpaisdestino motivodestsuspensiva autorizdestsuspensiva plazoautorizacion cierreventa "
        "fechaembarque facilidadpago dcestmerc dcforzarestmerc dcpaisorigen dcforzarpaisorigen "
        "dcpaisdestino dcstandard dcregalias dcbancos #dckgneto #dccomext opcionesiva "
        "opcionesganancias bulnro bulcod bultip #bulpes #buldes marcabul via trans bandera "
        "cuittrans venemb onccahabilitado onccaacuerdo onccaelaborador onccaespecie "
        "onccafaneador onccamatadero onccameccoorgbio onccares3106 onccasispro onccacategoria "
        "onccacortes",
        "interno",
        {"interno", "idsubreg", "cuitcliente,interno:4", "cuitdespaduana,interno:4",
         "fechaalta,interno:4", "cuitcliente,fechaalta,interno:4",
         "cuitdespaduana,fechaalta,interno:4"}));
    t.back().clavePrimaria = QStringList{QStringLiteral("interno")};
    t.back().clavePrimariaDesde = 4;
    t.back().unicaSinMayusculas = QStringLiteral("interno");
    t.push_back(Def(
        I, "subitems",
        "#id interno idcatalogo idarticulo ncm idunidad #cantidad #preciounitario #fob "
        "estadistica #valorrelacionestadistica deresp #valorderesp idpais idpaisproc estadomerc "
        "sufijos biendeuso codprorrateo #insumostemp #insumosacons cancelaciones #canccantidad "
        "#cancnroitem #cancnrosubitem sbtrei lapi #kgneto #kgbruto descripcion otros itfiller "
        "certorig onccacategoria onccacortes codigoean tipoitem idext:3",
        "interno,id", {"interno,id", "interno,idcatalogo,idarticulo"}));
    t.push_back(Def(
        I, "groupsubitems",
        "#id #idsub interno idcatalogo idarticulo ncm #preciounitario idpais idpaisproc sufijos "
        "idunidad estadomerc biendeuso #cantidad estadistica #valorrelacionestadistica deresp "
        "#valorderesp lapi #kgneto #kgbruto #fob itfiller #insumostemp #insumosacons "
        "cancelaciones codigoean tipoitem onccacategoria onccacortes codprorrateo flgkg #orden:5",
        "interno,orden", {"interno,id", "interno,idsub", "interno,orden:5"}));
    // The derived rows of an assembly carry the order in which the run wrote them, which is
    // the order the run reads them back in.
    t.push_back(Def(I, "idrel", "interno #idroot #idsub #orden:5", "interno,orden",
                    {"interno,idroot", "interno,orden:5"}));
    t.push_back(
        Def(I, "item",
            "#id interno ncm idpais idproc idunidad estadomerc biendeuso estadistica "
            "#valorrelacionestadistica deresp #valorderesp #cantidad #preciounitario lapi itfiller "
            "#insumostemp #insumosacons cancelaciones tipoitem #totalkneto #totalkbruto #fobtotal "
            "#itflete #itseguro #itcomext #cofexp ajusteinc ajusteded lista naladisa regalias "
            "standard itemasociado itmodif lman mineria opcionesiva opcionesganancias codprorrateo "
            "sbtrei onccaacuerdo onccacategoria onccacortes onccaelaborador onccaespecie "
            "onccafaneador onccamatadero onccameccoorgbio onccares3106 onccasispro",
            "interno,id", {"interno,id"}));
    t.push_back(Def(I, "itemliq",
                    "interno #iditem idconceptos conceptos pgc motivo #porcentaje #porcentajeb "
                    "#baseimp #total #valor",
                    "interno,iditem,idconceptos", {"interno,iditem,idconceptos"}));
    t.push_back(Def(I, "liqcero", "interno idconcepto concepto #valor pgc", "interno,idconcepto",
                    {"interno,idconcepto"}));
    t.push_back(Def(I, "itemventaja", "interno #iditem idventaja", "interno,iditem,idventaja",
                    {"interno,iditem"}));
    t.push_back(Def(I, "iteminfo", "interno #iditem idinfo valor", "interno,iditem,idinfo",
                    {"interno,iditem"}));
    t.push_back(
        Def(I, "sysflag", "interno flag valor #item #orden:5", "interno,orden", {"interno,flag"}));
    t.push_back(
        Def(I, "facturas", "interno #orden factura", "interno,factura", {"interno,factura"}));
    t.push_back(Def(I, "prorrateo", "interno codigo descripcion #valor", "interno,codigo",
                    {"interno,codigo"}));
    t.push_back(Def(I, "itempresu", "interno concepto #valordolar #valorpeso", "interno,concepto",
                    {"interno"}));
    t.push_back(Def(I, "itemref", "interno referencia valor", "interno,referencia", {"interno"}));
    t.push_back(Def(I, "descargas",
                    "interno dit #item #subitem ncm expctit #cantidad #factorponderacion idext:3",
                    "", {"interno", "interno,idext:3"}));
    // The workstation lock: the key is enforced, so that two workstations cannot both open.
    {
        DefTabla lock = Def(I, "interno", "interno maquina usuario %fecha", "interno");
        lock.clavePrimaria = QStringList{QStringLiteral("interno")};
        t.push_back(lock);
    }
    // Master tables kept beside the Operations.
    t.push_back(Def(I, "sta", "id descripcion cstaimpexp", "id", {"id"}));
    for (const char* m : {"aduana", "codemb", "tipoemb", "condiciondeventa", "via",
                          "estadomercaderia", "unidades", "informacion", "ventajas", "conceptos"})
        t.push_back(Def(I, m, "id descripcion", "id", {"id"}));
    t.push_back(Def(I, "divisas", "id descripcion #imp", "id", {"id"}));
    t.push_back(Def(I, "puertos", "cpor lpor", "cpor", {"cpor"}));
    t.push_back(Def(I, "tax", "ctax ctaxpog ltaxabr #porcentaje", "ctax", {"ctax"}));
    t.push_back(Def(I, "conpresu", "concepto", "concepto"));
    t.push_back(Def(I, "referencias", "referencia", "referencia"));
    t.push_back(Def(I, "unidrel", "unid1 unid2 #pase", "unid1,unid2", {"unid1,unid2"}));

    // ---- SYSTABLAS: common code tables
    for (const char* m : {"pais", "bancos", "motivos", "motivo"})
        t.push_back(Def(S, m, "id descripcion", "id", {"id"}));
    t.push_back(Def(S, "mottmp", "id descripcion #dias impexpo", "id", {"id"}));
    t.push_back(Def(S, "ean", "subreg item", "subreg", {"subreg"}));
    t.push_back(Def(S, "diemchina", "ncm #diem", "ncm", {"ncm"}));
    // The lists of agreements that a country belongs to: id is the country.
    t.push_back(Def(S, "lista", "id descripcion", "id,descripcion", {"id"}));
    t.push_back(Def(S, "coment", "interno coment", "interno", {"interno"}));
    // Valuation sheets: written by their component, deleted with the Operation.
    t.push_back(Def(S, "hval", "interno", "", {"interno"}));
    t.push_back(Def(S, "hvalexp", "interno", "", {"interno"}));
    // The ONCCA code lists behind the list dialogs of the header and the goods lines.
    for (const char* m : {"oncca_acuerdo", "oncca_categoria", "oncca_elaborador", "oncca_ganado",
                          "oncca_faneador", "oncca_mecoorgbio", "oncca_res3106", "oncca_sispro"})
        t.push_back(Def(S, m, "id descripcion", "id", {"id"}));
    // Cuts depend on the category and, when ncm is not empty, on the position.
    t.push_back(
        Def(S, "oncca_cortes", "categoria id descripcion ncm", "categoria,id", {"categoria"}));

    // ---- PERSONAL: persons
    t.push_back(Def(P, "clientes",
                    "cuit nombre domicilio email #regalias #ajxvinc_4102 eximgan #eximganvalor "
                    "#eximganvalortemp ivaareduccion #ivaareduccionvalor #ivaareduccionvalortemp "
                    "cvdi #ingbru exceplapiaec",
                    "cuit", {"cuit"}));
    t.push_back(Def(P, "despadu", "cuit nombre", "cuit", {"cuit"}));
    t.push_back(Def(P, "vendedor", "codigo nombre domicilio", "codigo", {"codigo"}));
    t.push_back(Def(P, "transporte", "cuit nombre", "cuit", {"cuit"}));
    t.push_back(Def(P, "ventajasrel", "cuit idsubregimen ncm idventaja",
                    "cuit,idsubregimen,ncm,idventaja", {"cuit,idsubregimen"}));
    // Scratch lines of a printout, numbered by the store.
    t.push_back(Def(P, "tabla", "+idlin linea puesto:6", "idlin", {"puesto,idlin:6"}));

    // ---- NCM: the tariff nomenclator
    t.push_back(Def("NCM", "ncm", ColumnasNomenclador(), "001,002,003", {"001,002"}));
    t.push_back(Def("NCM", "sufidos", "sim sufijo detalle", "sim,sufijo", {"sim"}));
    t.push_back(Def("NCM", "control_fecha", "@fecha", "fecha"));

    // ---- CATALOGOS: the clients' article catalogues
    t.push_back(
        Def("CATALOGOS", "catalogos", "idcatalogo descripcion cuit", "idcatalogo", {"idcatalogo"}));
    t.push_back(Def("CATALOGOS", "catarticulos",
                    "idcatalogo idarticulo descripcion idpais idpaisproc idunidad estadomerc "
                    "biendeuso codigoean otros onccacategoria onccacortes ncm sufijos "
                    "#preciounitario #kgunitario #cantidad usuario @fecha",
                    "idcatalogo,idarticulo", {"idcatalogo,idarticulo"}));

    // ---- USUARIO: per-installation tables
    t.push_back(Def("USUARIO", "dest", QStringLiteral("subreg ") + ControlesCaratula, "subreg",
                    {"subreg"}));
    t.push_back(Def("USUARIO", "impuestos_internos", "ncm decreto #tasa_nominal", "ncm", {"ncm"}));
    return t;
}

} // namespace

const DefColumna* DefTabla::Columna(const QString& n) const {
    const QString b = n.toLower();
    for (const DefColumna& c : columnas)
        if (c.nombre == b)
            return &c;
    return nullptr;
}

QStringList DefTabla::NombresColumnas(int version) const {
    QStringList r;
    for (const DefColumna& c : columnas)
        if (c.desde <= version)
            r << c.nombre;
    return r;
}

const std::vector<DefTabla>& Catalogo::Tablas() {
    static const std::vector<DefTabla> tablas = Definir();
    return tablas;
}

const DefTabla* Catalogo::Tabla(const QString& nombre) {
    const QString b = nombre.trimmed().toLower();
    for (const DefTabla& t : Tablas())
        if (t.nombre == b)
            return &t;
    return nullptr;
}

std::vector<const DefTabla*> Catalogo::TablasDe(const QString& entidad) {
    std::vector<const DefTabla*> r;
    const QString e = entidad.toUpper();
    for (const DefTabla& t : Tablas())
        if (t.entidad == e)
            r.push_back(&t);
    return r;
}

QString Catalogo::TablaVersion() {
    return QStringLiteral("korven_version");
}

} // namespace korven::schema
