#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace korven {

class StoreDirectory;

// The store side of the small master lists: vendors, customs brokers, the agreement lists of
// the countries and the comment of an Operation. Every routine throws KorvenError when the
// store refuses.
class ListasMaestras {
public:
    explicit ListasMaestras(StoreDirectory& stores) : stores_(stores) {}

    // Vendors as rows {codigo, nombre, domicilio}, ordered by name or by code.
    QList<QStringList> Vendedores(bool ordenPorNombre);
    bool ExisteVendedor(const QString& codigo);
    int InsertarVendedor(const QString& codigo, const QString& nombre, const QString& domicilio);
    int ActualizarVendedor(const QString& codigo, const QString& nombre, const QString& domicilio);
    int EliminarVendedor(const QString& codigo);

    // Customs brokers as rows {cuit, nombre}, by name.
    QList<QStringList> Despachantes();

    // The lists (agreements) of the given countries as rows {id, descripcion}; empty codes are
    // left out of the condition.
    QList<QStringList> ListasDePaises(const QStringList& paises);

    QString LeerComentario(const QString& interno);
    // Inserts the comment or replaces the one there is.
    void GrabarComentario(const QString& interno, const QString& texto);

private:
    StoreDirectory& stores_;
};

} // namespace korven
