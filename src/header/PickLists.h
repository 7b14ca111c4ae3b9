#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>

namespace korven {

class AppContext;

// The list dialogs of the system ("PickLists.Main"): descriptions of codes without the message
// of an unknown code, and the lists of the ONCCA data, kept in tables of our own in SYSTABLAS.
// Other libraries reach it by name through the component registry and call its members
// late-bound; the header's own screens use it directly.
class PickLists : public QObject {
    Q_OBJECT
public:
    explicit PickLists(AppContext& ctx, QObject* parent = nullptr);

    Q_INVOKABLE QString getAduanaDescripcion(const QString& codigo);
    Q_INVOKABLE QString getPaisDescripcion(const QString& codigo);
    Q_INVOKABLE QString getEstadoMercaderiaDescripcion(const QString& codigo);
    Q_INVOKABLE QString getUnidadesDescripcion(const QString& codigo);
    Q_INVOKABLE QString getVIADescripcion(const QString& codigo);
    Q_INVOKABLE QString getTipoEmbarqueDescripcion(const QString& codigo);
    Q_INVOKABLE QString getCodigoEmbarqueDescripcion(const QString& codigo);
    Q_INVOKABLE QString getCondicionVentaDescripcion(const QString& codigo);
    // The description of a sub-regime.
    Q_INVOKABLE QString getSubRegimen(const QString& codigo);

    // The list screen of a list name ("MOTIVOS", "PAIS", ...): the code chosen, empty when none.
    Q_INVOKABLE QString getListado(const QString& lista);
    Q_INVOKABLE QString getMotivosListado();

    // ONCCA: each description member answers the description of a code (empty when unknown);
    // each list member shows its list and answers the code chosen (empty when none). The cuts
    // take a filter: a category, or a position (the cuts whose position begins it); an empty
    // filter lists them all.
    Q_INVOKABLE QString getONCCAAcuerdo(const QString& codigo);
    Q_INVOKABLE QString getONCCAAcuerdoListado();
    Q_INVOKABLE QString getONCCACategoria(const QString& codigo);
    Q_INVOKABLE QString getONCCACategoriaListado();
    Q_INVOKABLE QString getONCCACortes(const QString& codigo, const QString& filtro);
    Q_INVOKABLE QString getONCCACortesListado(const QString& filtro);
    Q_INVOKABLE QString getONCCAElaborador(const QString& codigo);
    Q_INVOKABLE QString getONCCAElaboradorListado();
    Q_INVOKABLE QString getONCCAEspecie(const QString& codigo);
    Q_INVOKABLE QString getONCCAEspecieListado();
    Q_INVOKABLE QString getONCCAFaneador(const QString& codigo);
    Q_INVOKABLE QString getONCCAFaneadorListado();
    Q_INVOKABLE QString getONCCAMecoorgbio(const QString& codigo);
    Q_INVOKABLE QString getONCCAMecoorgbioListado();
    Q_INVOKABLE QString getONCCAres3106(const QString& codigo);
    Q_INVOKABLE QString getONCCAres3106Listado();
    Q_INVOKABLE QString getONCCASisPro(const QString& codigo);
    Q_INVOKABLE QString getONCCASisProListado();

    // The ONCCA lists by their short names: "Acuerdo", "Categoria", "Cortes", "Elaborador",
    // "Especie", "Faneador", "Mecoorgbio", "Res3106", "SisPro".
    static QString TablaONCCA(const QString& lista);
    static QString TituloONCCA(const QString& lista);
    // The description of a code of an ONCCA list; the filter applies to the cuts only.
    QString DescripcionONCCA(const QString& lista, const QString& codigo,
                             const QString& filtro = {});
    // Shows an ONCCA list and answers the code chosen.
    QString ListadoONCCA(const QString& lista, const QString& filtro = {});

private:
    QString Descripcion(const QString& entidad, const QString& tabla, const QString& codigo);
    static QString FiltroCortes(const QString& filtro, QVariantList& valores);

    AppContext& ctx_;
};

} // namespace korven
