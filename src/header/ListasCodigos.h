#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace korven {

class AppContext;

// The code look-ups the whole program shares: the description of a code by list name, and the
// list screen of a list name (FrmListado filled with the rows of its table).
class ListasCodigos {
public:
    struct Definicion {
        QString tabla;   // table named in the messages
        QString entidad; // store of the table
        QString sql;     // statement of the list
    };
    // One row of the list screen: the code handed back when it is chosen, the description
    // column and the whole row text (code, a tab, description, and what the list adds).
    struct Fila {
        QString codigo;
        QString descripcion;
        QString texto;
    };

    explicit ListasCodigos(AppContext& ctx) : ctx_(ctx) {}

    // The table, store and list statement of a list name; nothing for an unknown name.
    static std::optional<Definicion> DefinicionLista(const QString& lista);

    // The description of a code of a list; empty for an empty code. An unknown code shows the
    // message "CODIGO INEXISTENTE DE ..." and answers empty. For "SUBREG" extra receives the
    // sub-regime's cstaimpexp, for "DIVISAS" the stored rate in "00.000000".
    QString BuscarDescripcion(const QString& lista, const QString& codigo,
                              QString* extra = nullptr);

    // The rows of a list, in the order of its statement.
    QList<Fila> Filas(const QString& lista);

    // Shows the list screen with the title and answers the code chosen, or empty when none. For
    // "SUBREG" extra receives cstaimpexp of the code chosen, for "DIVISAS" its rate.
    QString MostrarLista(const QString& lista, const QString& titulo, QString* extra = nullptr);

    // Opens FrmListado with the rows and answers the code chosen (empty when none).
    static QString AbrirListado(AppContext& ctx, const QString& titulo, const QList<Fila>& filas);

private:
    QString Extra(const QString& lista, const QString& codigo);

    AppContext& ctx_;
};

} // namespace korven
