#pragma once

#include "goods/LineaSubItem.h"

#include <QChar>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace korven {

class AppContext;

// The reading of goods lines that the clerk brings from a spreadsheet: rows copied to the
// clipboard (tab-separated) or a CSV file (UTF-8 or Latin-1, "," or ";" separated). Each column
// is mapped to a field of the goods screen, by its header (the column names of subitems or the
// screen's captions) or, without a header, by its place. Each row becomes the goods line the
// clerk would have typed: numbers in the system's decimal mark, the position completed from the
// nomenclator and the missing quantities filled by the screen's own arithmetic. Work code: it
// reads the stores and never talks to the clerk.
class ImportadorSubItems {
public:
    // The fields a column can feed.
    enum class Campo {
        Ninguno,
        Posicion,
        Descripcion,
        Cantidad,
        Unidad,
        Unitario,
        Fob,
        KgNeto,
        KgBruto,
        Pais,
        PaisProc,
        EstadoMerc,
        Sufijos,
        Catalogo,
        Articulo,
        Otros,
        ValorEstadistica,
        DerEsp,
        KgUnitario,
        BienDeUso,
        CodProrrateo,
        Filler,
        CodigoEAN,
        CertOrig,
        OnccaCategoria,
        OnccaCorte,
        InsumosTemp,
        InsumosCons,
        Cancelaciones,
        CancCantidad,
        NroItem,
        NroSubitem,
    };

    struct Fila {
        int linea = 0; // line of the text or file where the row begins
        QStringList valores;
    };

    // The rows as read. encabezado is empty when the first row was data.
    struct Tabla {
        QStringList encabezado;
        std::vector<Fila> filas;
        QChar separador = QLatin1Char('\t');
        bool latin1 = false;
        int columnas = 0; // the widest row
    };

    // One row made a goods line, with what its preparation has to say (empty when nothing).
    struct Preparada {
        int linea = 0;
        LineaSubItem datos;
        QString aviso;
    };

    // Every field that a column can feed, in the order the mapping lists offer them.
    static const std::vector<Campo>& Campos();
    // The caption of a field (the screen's where it has one); "(no importar)" for Ninguno.
    static QString Nombre(Campo campo);
    // The field a header names: a column of subitems or a caption of the goods screen, in any
    // case, with or without accents. Ninguno for anything else.
    static Campo CampoDeEncabezado(const QString& titulo);
    // Without a header the columns are taken in this order.
    static const std::vector<Campo>& OrdenSinEncabezado();

    // Reads pasted text or a file. A first row that names at least one field and holds no
    // number is the header. Throws KorvenError when the file cannot be read or a quoted field is
    // not closed.
    static Tabla LeerTexto(const QString& texto);
    static Tabla LeerArchivo(const QString& ruta);

    // The field of each column: by the header, or by place without one.
    static std::vector<Campo> Mapeo(const Tabla& tabla);

    // The decimal mark the numbers of the table are written in: the one the figures show
    // (a mark used twice groups thousands, a mark followed by other than three digits is the
    // decimal one), else the system's.
    static QChar MarcaDecimal(const Tabla& tabla, const std::vector<Campo>& mapeo);
    // A figure written with that decimal mark, in the system's ("1.234,5" with "," gives
    // "1234.5" under "."). Text that is no figure comes back trimmed as it was, for the save to
    // refuse with its own message.
    static QString NumeroDelSistema(const QString& texto, QChar marca);

    explicit ImportadorSubItems(AppContext& ctx) : ctx_(ctx) {}

    // Every row of the table as a goods line.
    std::vector<Preparada> Preparar(const Tabla& tabla, const std::vector<Campo>& mapeo);
    // One row (values in the order of the mapping).
    Preparada Preparar(const Fila& fila, const std::vector<Campo>& mapeo, QChar marca);

private:
    struct DatosNcm {
        bool hallada = false;
        QString posicion, estadistica, derEsp;
        bool lapi = false;
    };
    const DatosNcm& BuscarNcm(const QString& posicion);
    // The factor from one unit to another (unidrel); a unit goes to itself by 1.
    bool Pase(const QString& de, const QString& a, double* pase);
    // The caption the catalogue code shows (LbDescCatalogo).
    QString DescripcionCatalogo(const QString& catalogo);

    AppContext& ctx_;
    QHash<QString, DatosNcm> ncm_;
    QHash<QString, QString> catalogos_;
    QHash<QString, double> pases_;
    bool pasesLeidos_ = false;
};

} // namespace korven
