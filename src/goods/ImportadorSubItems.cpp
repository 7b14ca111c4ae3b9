#include "goods/ImportadorSubItems.h"

#include "goods/SubItemsDatos.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/LectorCsv.h"

#include <QFile>
#include <QRegularExpression>
#include <cmath>

namespace korven {

namespace {

using Campo = ImportadorSubItems::Campo;

struct Descripcion {
    Campo campo;
    const char* nombre;
    // Header words that name it (compared without case, accents, blanks or punctuation).
    std::vector<const char*> claves;
};

const std::vector<Descripcion>& Descripciones() {
    static const std::vector<Descripcion> d{
        {Campo::Posicion, "Posición", {"ncm", "posicion", "posicionncm", "txtposicion"}},
        {Campo::Descripcion, "Descripción", {"descripcion", "descarticulos", "mercaderia"}},
        {Campo::Cantidad, "Cantidad", {"cantidad", "txtcantidad"}},
        {Campo::Unidad, "Unidad Declarada", {"idunidad", "unidad", "unidaddeclarada"}},
        {Campo::Unitario, "Unitario", {"preciounitario", "unitario", "txtunitario"}},
        {Campo::Fob, "FOB Total", {"fob", "fobtotal", "txtfobtotal"}},
        {Campo::KgNeto, "KG Neto", {"kgneto", "kilos", "kilosnetos", "txtkgneto"}},
        {Campo::KgBruto, "KG Bruto", {"kgbruto", "kilosbrutos", "txtkgbruto"}},
        {Campo::Pais, "Pais de Origen", {"idpais", "pais", "paisdeorigen", "origen"}},
        {Campo::PaisProc, "Pais de Proc", {"idpaisproc", "paisdeproc", "paisdeprocedencia"}},
        {Campo::EstadoMerc, "Estado Mercaderia", {"estadomerc", "estadomercaderia"}},
        {Campo::Sufijos, "Sufijos", {"sufijos"}},
        {Campo::Catalogo, "Catálogo", {"idcatalogo", "catalogo"}},
        {Campo::Articulo, "Articulo", {"idarticulo", "articulo"}},
        {Campo::Otros, "Otros", {"otros"}},
        {Campo::ValorEstadistica,
         "Cantidad Estadistica",
         {"valorrelacionestadistica", "cantidadestadistica", "valorsobreestadistica"}},
        {Campo::DerEsp,
         "Derecho Especifico",
         {"valorderesp", "derechoespecifico", "derechoespecifco"}},
        {Campo::KgUnitario, "Kg Net. Unit", {"kgnetunit", "kgunitario"}},
        {Campo::BienDeUso, "Bien de Uso", {"biendeuso"}},
        {Campo::CodProrrateo, "Id de Prorrateo", {"codprorrateo", "iddeprorrateo"}},
        {Campo::Filler, "Filler", {"itfiller", "filler"}},
        {Campo::CodigoEAN, "Codigo EAN", {"codigoean", "ean"}},
        {Campo::CertOrig, "Cert Orig", {"certorig"}},
        {Campo::OnccaCategoria, "Categoria", {"onccacategoria", "categoria"}},
        {Campo::OnccaCorte, "Corte", {"onccacortes", "onccacorte", "corte"}},
        {Campo::InsumosTemp, "Ins.Temp", {"insumostemp", "instemp"}},
        {Campo::InsumosCons, "Ins Cons", {"insumosacons", "insumcons", "inscons"}},
        // The cancellation boxes; "Cant." on a spreadsheet is more likely the quantity.
        {Campo::Cancelaciones, "Canc.", {"cancelaciones", "canc"}},
        {Campo::CancCantidad, "Canc. Cantidad", {"canccantidad"}},
        {Campo::NroItem, "Nro. Item", {"cancnroitem", "nroitem"}},
        {Campo::NroSubitem, "Nro. Subitem", {"cancnrosubitem", "nrosubitem"}},
    };
    return d;
}

// Lower case, no accents, only letters and digits.
QString Clave(const QString& titulo) {
    const QString d = titulo.normalized(QString::NormalizationForm_D).toLower();
    QString r;
    for (const QChar c : d)
        if ((c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
            (c >= QLatin1Char('0') && c <= QLatin1Char('9')))
            r += c;
    return r;
}

bool EsNumerico(Campo c) {
    switch (c) {
    case Campo::Cantidad:
    case Campo::Unitario:
    case Campo::Fob:
    case Campo::KgNeto:
    case Campo::KgBruto:
    case Campo::ValorEstadistica:
    case Campo::DerEsp:
    case Campo::KgUnitario:
    case Campo::InsumosTemp:
    case Campo::InsumosCons:
    case Campo::CancCantidad:
        return true;
    default:
        return false;
    }
}

const QRegularExpression& Cifra() {
    static const QRegularExpression re(QStringLiteral("^[-+]?[0-9][0-9.,]*$"));
    return re;
}

// What a figure tells of its decimal mark: '.', ',' or nothing when it could be either.
QChar Indicio(const QString& t) {
    if (!Cifra().match(t).hasMatch())
        return {};
    const int puntos = static_cast<int>(t.count(QLatin1Char('.')));
    const int comas = static_cast<int>(t.count(QLatin1Char(',')));
    if (puntos && comas)
        return t.lastIndexOf(QLatin1Char('.')) > t.lastIndexOf(QLatin1Char(',')) ? QLatin1Char('.')
                                                                                 : QLatin1Char(',');
    if (puntos + comas == 0)
        return {};
    const QChar marca = puntos ? QLatin1Char('.') : QLatin1Char(',');
    const QChar otra = puntos ? QLatin1Char(',') : QLatin1Char('.');
    if (puntos + comas > 1)
        return otra; // the mark groups thousands
    const int en = static_cast<int>(t.indexOf(marca));
    const QString entera = t.left(en).remove(QLatin1Char('-')).remove(QLatin1Char('+'));
    if (t.size() - en - 1 != 3 || entera == QLatin1String("0") || entera.isEmpty())
        return marca;
    return {}; // "1,500": a thousand and a half or one and a half
}

bool TieneCifra(const QStringList& valores) {
    for (const QString& v : valores)
        if (Cifra().match(v.trimmed()).hasMatch())
            return true;
    return false;
}

// A number as the screen shows it in a text box after plain arithmetic: fifteen significant
// digits, written out in full (never "1e+24", which no box reads as a number).
QString TextoNumero(double v) {
    return EsNull(QString::number(v, 'g', 15).toDouble());
}

bool Numero(const QString& t, double* v) {
    return LeerNumeroTecleado(t.trimmed(), v);
}

// Enter in the position box: 12 or 11 digits without points take the points of a position,
// and a comma is a point.
QString PosicionTecleada(QString t) {
    t = t.trimmed().toUpper();
    if (!t.contains(QLatin1Char('.')) && (t.size() == 12 || t.size() == 11))
        t = t.left(4) + QLatin1Char('.') + t.mid(4, 2) + QLatin1Char('.') + t.mid(6, 2) +
            QLatin1Char('.') + t.mid(8);
    return t.replace(QLatin1Char(','), QLatin1Char('.'));
}

} // namespace

const std::vector<Campo>& ImportadorSubItems::Campos() {
    static const std::vector<Campo> c = [] {
        std::vector<Campo> r{Campo::Ninguno};
        for (const Descripcion& d : Descripciones())
            r.push_back(d.campo);
        return r;
    }();
    return c;
}

QString ImportadorSubItems::Nombre(Campo campo) {
    for (const Descripcion& d : Descripciones())
        if (d.campo == campo)
            return QString::fromUtf8(d.nombre);
    return QStringLiteral("(no importar)");
}

ImportadorSubItems::Campo ImportadorSubItems::CampoDeEncabezado(const QString& titulo) {
    const QString k = Clave(titulo);
    if (k.isEmpty())
        return Campo::Ninguno;
    for (const Descripcion& d : Descripciones()) {
        if (Clave(QString::fromUtf8(d.nombre)) == k)
            return d.campo;
        for (const char* c : d.claves)
            if (k == QLatin1String(c))
                return d.campo;
    }
    return Campo::Ninguno;
}

const std::vector<Campo>& ImportadorSubItems::OrdenSinEncabezado() {
    static const std::vector<Campo> o{Campo::Posicion, Campo::Descripcion, Campo::Cantidad,
                                      Campo::Unidad,   Campo::Unitario,    Campo::KgNeto,
                                      Campo::Pais};
    return o;
}

ImportadorSubItems::Tabla ImportadorSubItems::LeerTexto(const QString& texto) {
    // Lines before the first with something on it do not decide the separator.
    int desde = 0;
    int saltadas = 0;
    for (int i = 0; i < texto.size(); ++i) {
        const QChar c = texto.at(i);
        if (c == QLatin1Char('\n')) {
            desde = i + 1;
            ++saltadas;
        } else if (!c.isSpace()) {
            break;
        }
    }
    const schema::LectorCsv csv = schema::LectorCsv::DeTexto(texto.mid(desde));
    Tabla t;
    t.separador = csv.separador();
    std::vector<Fila> filas;
    const QStringList primera = csv.encabezado();
    bool encabezado = false;
    if (!TieneCifra(primera))
        for (const QString& c : primera)
            if (CampoDeEncabezado(c) != Campo::Ninguno)
                encabezado = true;
    if (encabezado)
        t.encabezado = primera;
    else if (!primera.isEmpty())
        filas.push_back(Fila{csv.lineaEncabezado() + saltadas, primera});
    for (const schema::LectorCsv::Fila& f : csv.filas())
        filas.push_back(Fila{f.linea + saltadas, f.valores});
    for (Fila& f : filas) {
        bool vacia = true;
        for (QString& v : f.valores) {
            v = v.trimmed();
            vacia = vacia && v.isEmpty();
        }
        if (vacia)
            continue;
        t.columnas = std::max(t.columnas, static_cast<int>(f.valores.size()));
        t.filas.push_back(std::move(f));
    }
    t.columnas = std::max(t.columnas, static_cast<int>(t.encabezado.size()));
    return t;
}

ImportadorSubItems::Tabla ImportadorSubItems::LeerArchivo(const QString& ruta) {
    QFile f(ruta);
    if (!f.open(QIODevice::ReadOnly))
        throw KorvenError(
            53, QStringLiteral("No se puede leer el archivo %1: %2").arg(ruta, f.errorString()),
            QStringLiteral("ImportadorSubItems"));
    bool latin1 = false;
    Tabla t = LeerTexto(schema::LectorCsv::Decodificar(f.readAll(), &latin1));
    t.latin1 = latin1;
    return t;
}

std::vector<ImportadorSubItems::Campo> ImportadorSubItems::Mapeo(const Tabla& tabla) {
    std::vector<Campo> m(static_cast<size_t>(tabla.columnas), Campo::Ninguno);
    for (int i = 0; i < tabla.columnas; ++i) {
        if (!tabla.encabezado.isEmpty()) {
            const Campo c = i < tabla.encabezado.size() ? CampoDeEncabezado(tabla.encabezado.at(i))
                                                        : Campo::Ninguno;
            // A field fed twice keeps its first column.
            if (std::find(m.begin(), m.end(), c) == m.end())
                m[static_cast<size_t>(i)] = c;
        } else if (i < static_cast<int>(OrdenSinEncabezado().size())) {
            m[static_cast<size_t>(i)] = OrdenSinEncabezado().at(static_cast<size_t>(i));
        }
    }
    return m;
}

QChar ImportadorSubItems::MarcaDecimal(const Tabla& tabla, const std::vector<Campo>& mapeo) {
    bool punto = false, coma = false;
    for (const Fila& f : tabla.filas)
        for (int i = 0; i < f.valores.size() && i < static_cast<int>(mapeo.size()); ++i) {
            if (!EsNumerico(mapeo.at(static_cast<size_t>(i))))
                continue;
            const QChar m = Indicio(f.valores.at(i));
            punto = punto || m == QLatin1Char('.');
            coma = coma || m == QLatin1Char(',');
        }
    if (punto != coma)
        return punto ? QLatin1Char('.') : QLatin1Char(',');
    return SeparadorDecimal().at(0);
}

QString ImportadorSubItems::NumeroDelSistema(const QString& texto, QChar marca) {
    const QString t = texto.trimmed();
    if (!Cifra().match(t).hasMatch())
        return t;
    const QChar grupo = marca == QLatin1Char(',') ? QLatin1Char('.') : QLatin1Char(',');
    const int en = static_cast<int>(t.indexOf(marca));
    if (en >= 0 && t.indexOf(marca, en + 1) >= 0)
        return t;
    QString entera = en < 0 ? t : t.left(en);
    const QString decimales = en < 0 ? QString() : t.mid(en + 1);
    if (decimales.contains(grupo))
        return t;
    if (entera.contains(grupo)) {
        // Thousands only in groups of three before the decimals.
        static const QRegularExpression miles(QStringLiteral("^[-+]?[0-9]{1,3}(G[0-9]{3})+$"));
        QString patron = miles.pattern();
        patron.replace(QLatin1Char('G'), QRegularExpression::escape(QString(grupo)));
        if (!QRegularExpression(patron).match(entera).hasMatch())
            return t;
        entera.remove(grupo);
    }
    if (decimales.isEmpty())
        return entera;
    return entera + SeparadorDecimal() + decimales;
}

std::vector<ImportadorSubItems::Preparada>
ImportadorSubItems::Preparar(const Tabla& tabla, const std::vector<Campo>& mapeo) {
    const QChar marca = MarcaDecimal(tabla, mapeo);
    std::vector<Preparada> r;
    r.reserve(tabla.filas.size());
    for (const Fila& f : tabla.filas)
        r.push_back(Preparar(f, mapeo, marca));
    return r;
}

ImportadorSubItems::Preparada
ImportadorSubItems::Preparar(const Fila& fila, const std::vector<Campo>& mapeo, QChar marca) {
    Preparada p;
    p.linea = fila.linea;
    LineaSubItem& l = p.datos;
    // A new line of the screen: the catalogue frame on, "Bien de Uso" at its first entry.
    l.catalogoVisible = true;
    QString bienDeUso;
    for (int i = 0; i < fila.valores.size() && i < static_cast<int>(mapeo.size()); ++i) {
        const Campo c = mapeo.at(static_cast<size_t>(i));
        const QString v = EsNumerico(c) ? NumeroDelSistema(fila.valores.at(i), marca)
                                        : fila.valores.at(i).trimmed();
        switch (c) {
        case Campo::Ninguno:
            break;
        case Campo::Posicion:
            l.posicion = v;
            break;
        case Campo::Descripcion:
            l.descripcion = v;
            break;
        case Campo::Cantidad:
            l.cantidad = v;
            break;
        case Campo::Unidad:
            l.unidad = v;
            break;
        case Campo::Unitario:
            l.unitario = v;
            break;
        case Campo::Fob:
            l.fobTotal = v;
            break;
        case Campo::KgNeto:
            l.kgNeto = v;
            break;
        case Campo::KgBruto:
            l.kgBruto = v;
            break;
        case Campo::Pais:
            l.idPais = v;
            break;
        case Campo::PaisProc:
            l.idPaisProc = v;
            break;
        case Campo::EstadoMerc:
            l.estadoMerc = v;
            break;
        case Campo::Sufijos:
            l.sufijos = v;
            break;
        case Campo::Catalogo:
            l.idCatalogo = v;
            break;
        case Campo::Articulo:
            l.idArticulo = v;
            break;
        case Campo::Otros:
            l.otros = v;
            break;
        case Campo::ValorEstadistica:
            l.valorEstadistica = v;
            break;
        case Campo::DerEsp:
            l.derEsp = v;
            break;
        case Campo::KgUnitario:
            l.kgUnitario = v;
            break;
        case Campo::BienDeUso:
            bienDeUso = v;
            break;
        case Campo::CodProrrateo:
            l.codProrrateo = v;
            break;
        case Campo::Filler:
            l.filler = v;
            break;
        case Campo::CodigoEAN:
            l.codigoEAN = v;
            break;
        case Campo::CertOrig:
            l.certOrig = v;
            break;
        case Campo::OnccaCategoria:
            l.onccaCategoria = v;
            break;
        case Campo::OnccaCorte:
            l.onccaCorte = v;
            break;
        case Campo::InsumosTemp:
            l.insumosTemp = v;
            break;
        case Campo::InsumosCons:
            l.insumosCons = v;
            break;
        case Campo::Cancelaciones:
            l.cancelaciones = v;
            break;
        case Campo::CancCantidad:
            l.cancCantidad = v;
            break;
        case Campo::NroItem:
            l.nroItem = v;
            break;
        case Campo::NroSubitem:
            l.nroSubitem = v;
            break;
        }
    }
    if (!bienDeUso.isEmpty())
        l.bienDeUso = bienDeUso.startsWith(QLatin1Char('S'), Qt::CaseInsensitive);
    if (!l.idCatalogo.isEmpty())
        l.descCatalogo = DescripcionCatalogo(l.idCatalogo);

    // The declared unit takes two digits; anything else is no unit.
    double n = 0;
    if (!l.unidad.isEmpty()) {
        bool ok = false;
        const int u = l.unidad.toInt(&ok);
        l.unidad = ok && u >= 0 ? Formato(u, QStringLiteral("00")) : QString();
    }

    // The position as Enter finds it in the nomenclator.
    l.posicion = PosicionTecleada(l.posicion);
    if (l.posicion.size() == 15 || l.posicion.size() == 14) {
        const DatosNcm& d = BuscarNcm(l.posicion);
        if (d.hallada) {
            l.posicion = d.posicion;
            l.codigoEstadistica = d.estadistica;
            l.idDerEsp = d.derEsp;
            l.derEspVisible = !d.derEsp.isEmpty();
            l.lapi = d.lapi;
        } else {
            p.aviso = QStringLiteral("POSICIÓN INEXISTENTE, en el Nomenclador");
        }
    } else if (!l.posicion.isEmpty()) {
        p.aviso = QStringLiteral("Longitud erronea del Posición");
    }
    if (!l.derEspVisible)
        l.derEsp = QStringLiteral("0");

    // What the clerk gave wins; the mirrors of the screen fill what is missing.
    const bool estadisticaDada = !l.valorEstadistica.isEmpty();
    const bool kgNetoDado = !l.kgNeto.isEmpty();
    const bool derEspDado = l.derEspVisible && !l.derEsp.isEmpty();
    const QString kilos = QStringLiteral("01");
    if (derEspDado) {
        if (l.idDerEsp == l.codigoEstadistica && l.valorEstadistica.isEmpty())
            l.valorEstadistica = l.derEsp;
        if (l.idDerEsp == kilos && l.kgNeto.isEmpty())
            l.kgNeto = l.derEsp;
    }
    if (estadisticaDada) {
        if (l.derEspVisible && l.idDerEsp == l.codigoEstadistica && l.derEsp.isEmpty())
            l.derEsp = l.valorEstadistica;
        if (l.codigoEstadistica == kilos && l.kgNeto.isEmpty())
            l.kgNeto = l.valorEstadistica;
        if (l.unidad == kilos && l.cantidad.isEmpty())
            l.cantidad = l.valorEstadistica;
    }
    if (kgNetoDado && Numero(l.kgNeto, &n)) {
        if (l.codigoEstadistica == kilos && l.valorEstadistica.isEmpty())
            l.valorEstadistica = l.kgNeto;
        if (l.derEspVisible && l.idDerEsp == kilos && l.derEsp.isEmpty())
            l.derEsp = l.kgNeto;
        if (l.unidad == kilos && l.codigoEstadistica == kilos && l.cantidad.isEmpty())
            l.cantidad = l.valorEstadistica;
    }

    // Quantity, unit price and FOB: the FOB is the product, the unit price the quotient.
    double cantidad = 0, unitario = 0, fob = 0;
    const bool hayCantidad = Numero(l.cantidad, &cantidad);
    if (hayCantidad) {
        // A product or quotient beyond any number stays unwritten, for the save to ask for it.
        if (l.fobTotal.isEmpty() && Numero(l.unitario, &unitario)) {
            if (std::isfinite(cantidad * unitario))
                l.fobTotal = Formato(cantidad * unitario, QStringLiteral("00.00"));
        } else if (l.unitario.isEmpty() && Numero(l.fobTotal, &fob) && cantidad != 0 &&
                   std::isfinite(fob / cantidad)) {
            l.unitario = Formato(fob / cantidad, QStringLiteral("00.0000"));
        }
        l.cantidad = Formato(cantidad, QStringLiteral("00.00"));
        if (Numero(l.unitario, &unitario))
            l.unitario = Formato(unitario, QStringLiteral("00.0000"));
        if (Numero(l.fobTotal, &fob))
            l.fobTotal = Formato(fob, QStringLiteral("00.00"));

        // The quantities in the statistics, kilo and specific-duty units, by unidrel.
        double pase = 0;
        if (l.valorEstadistica.isEmpty() && Pase(l.unidad, l.codigoEstadistica, &pase))
            l.valorEstadistica = TextoNumero(pase * cantidad);
        if (l.kgNeto.isEmpty() && Pase(l.unidad, kilos, &pase))
            l.kgNeto = TextoNumero(pase * cantidad);
        if (l.derEspVisible && l.derEsp.isEmpty() && Pase(l.unidad, l.idDerEsp, &pase))
            l.derEsp = TextoNumero(pase * cantidad);

        // Units that carry a net weight each.
        double kgUnitario = 0;
        if (l.unidad == QLatin1String("07") && Numero(l.kgUnitario, &kgUnitario) &&
            kgUnitario > 0) {
            const QString k = Formato(kgUnitario * cantidad, QStringLiteral("00.00"));
            if (l.codigoEstadistica == kilos && l.valorEstadistica.isEmpty())
                l.valorEstadistica = k;
            if (l.derEspVisible && l.idDerEsp == kilos && l.derEsp.isEmpty())
                l.derEsp = k;
            if (l.kgNeto.isEmpty())
                l.kgNeto = k;
        }
    }
    return p;
}

const ImportadorSubItems::DatosNcm& ImportadorSubItems::BuscarNcm(const QString& posicion) {
    auto it = ncm_.constFind(posicion);
    if (it != ncm_.constEnd())
        return *it;
    DatosNcm d;
    if (const std::optional<PosicionNcm> p = SubItemsDatos(ctx_).BuscarNCM(posicion)) {
        d.hallada = true;
        d.posicion = p->posicion;
        d.estadistica = p->estadistica;
        d.derEsp = p->derEsp;
        d.lapi = p->lapi;
    }
    return *ncm_.insert(posicion, d);
}

bool ImportadorSubItems::Pase(const QString& de, const QString& a, double* pase) {
    if (de.isEmpty() || a.isEmpty())
        return false;
    if (de == a) {
        *pase = 1;
        return true;
    }
    if (!pasesLeidos_) {
        pasesLeidos_ = true;
        Recordset rs = ctx_.stores()
                           .getDataConnectionByEntity(QStringLiteral("INTERNOS"))
                           .Abrir(QStringLiteral("select unid1,unid2,pase from unidrel"));
        for (; !rs.Eof(); rs.MoveNext())
            pases_.insert(EsNull(rs.Fields(0)).trimmed() + QLatin1Char('|') +
                              EsNull(rs.Fields(1)).trimmed(),
                          EsNumero(rs.Fields(2)));
    }
    auto it = pases_.constFind(de + QLatin1Char('|') + a);
    if (it == pases_.constEnd())
        return false;
    *pase = *it;
    return true;
}

QString ImportadorSubItems::DescripcionCatalogo(const QString& catalogo) {
    auto it = catalogos_.constFind(catalogo);
    if (it != catalogos_.constEnd())
        return *it;
    const Recordset rs =
        ctx_.stores()
            .getDataConnectionByEntity(QStringLiteral("CATALOGOS"))
            .Abrir(QStringLiteral("select descripcion from catalogos where idcatalogo = ?"),
                   {catalogo});
    const QString d = rs.RecordCount() > 0 ? EsNull(rs.Fields(0)).trimmed() : QString();
    return *catalogos_.insert(catalogo, d);
}

} // namespace korven
