#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace korven {

class AppContext;
class Conexion;

// What the item screen reads and writes of one Operation's items, without widgets. Every
// write is one transaction on the store of the Operations; a store error rolls it back and
// goes to the caller as KorvenError.
class DetalleItem {
public:
    DetalleItem(AppContext& ctx, QString interno);

    // The count of declaration items (item 0 apart).
    int CantidadItems();
    // The columns of the item row, by lower-case name; empty when the item does not exist.
    QVariantMap LeerItem(long long id);
    // The header row, by lower-case name.
    QVariantMap LeerCaratula();

    // The goods lines of the item (of every item for 0), as the grid shows them: quantity,
    // unit price, FOB total, statistical quantity, article, suffixes.
    QList<QStringList> Lineas(long long id);
    // The certificates of origin of the lines of the item and of the lines linked to them.
    QStringList CertificadosOrigen(long long id);
    // The cancellations from stock of the lines of the item: declaration, position, item,
    // subitem, quantity, file.
    QList<QStringList> Cancelaciones(long long id);
    // The sums of FOB, freight and insurance of the items, for an Operation without a general FOB.
    QList<double> SumasItems();

    struct Concepto {
        QString codigo, concepto;
        QVariant porcentaje, baseimp, total;
        QString pgc, motivo;
    };
    // The concepts of the item with an amount, by code.
    QList<Concepto> Conceptos(long long id);
    // Information rows (code, value) and advantages (code) of the item.
    QList<QStringList> Informacion(long long id);
    QStringList Ventajas(long long id);

    // The five run flags of the Operation, from its stored flags ("N" when none).
    void RecargarFlags();

    // The values of the fields of the screen, as typed.
    struct Campos {
        QString naladisa, lista, estadomerc, idpais, idproc, regalias, standard, tipoitem,
            itemasociado, opcionesiva, opcionesganancias;
        QString ajusteinc, ajusteded; // typed, in the system decimal separator
        double totalkneto = 0, insumostemp = 0, insumosacons = 0, itcomext = 0, cofexp = 0;
        bool mineria = false;
        QHash<QString, QString> oncca; // column -> code
    };
    // Saves the item; item 0 (id below 1) sends its non-empty values and its adjustments to the
    // items. Answers false when the store changed nothing ("0 (cero) registros actualizados."
    // is the caller's to show); errors of a step are shown with the routine's section and the
    // step reached, after the rest of the save is kept.
    bool GrabarItem(long long id, const Campos& c);
    // The list of the item was cleared by hand: the item keeps it through later runs.
    void MarcarModificado(long long id);

    static const QStringList& ColumnasOncca();

private:
    void Ajuste(const QString& columna, const QString& tecleado, bool deduccion);
    void ListaConceptos(long long id, const QString& lista, bool conTotal);

    AppContext& ctx_;
    Conexion& c_;
    QString interno_;
};

} // namespace korven
