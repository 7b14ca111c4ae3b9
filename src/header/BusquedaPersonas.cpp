#include "header/BusquedaPersonas.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QVariantMap>
#include <memory>

namespace korven {

namespace {
const QString kPersonal = QStringLiteral("PERSONAL");
}

void BusquedaPersonas::Error(const KorvenError& e, const QString& seccion) {
    ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                                seccion,
                            QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

QString BusquedaPersonas::BuscarDespachante(const QString& cuit) {
    if (cuit.size() != 11) {
        ctx_.dialogos().Mensaje(QStringLiteral("Cuit Invalido"));
        return {};
    }
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kPersonal).Abrir(
            QStringLiteral("select nombre from despadu where cuit = ?"), {cuit});
        if (IsRecord(rs))
            return EsNull(rs.Fields(QStringLiteral("nombre")));
        ctx_.dialogos().Mensaje(QStringLiteral("No se encontro el CUIT Ingresado"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
    } catch (const KorvenError& e) {
        Error(e, QStringLiteral(" [BUSCAR DESPACHANTE] "));
    }
    return {};
}

BusquedaPersonas::Cliente BusquedaPersonas::BuscarCliente(const QString& cuit) {
    Cliente c;
    if (cuit.isEmpty()) {
        ctx_.dialogos().Mensaje(QStringLiteral("Falta ingresar CUIT como parametro"));
        return c;
    }
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kPersonal).Abrir(
            QStringLiteral("select nombre,regalias,ajxvinc_4102 from clientes where cuit = ?"),
            {cuit});
        if (IsRecord(rs)) {
            c.encontrado = true;
            c.nombre = EsNull(rs.Fields(QStringLiteral("nombre")));
            c.regalias = EsNumero(rs.Fields(QStringLiteral("regalias")));
            c.ajxvinc4102 = EsNumero(rs.Fields(QStringLiteral("ajxvinc_4102")));
        }
    } catch (const KorvenError& e) {
        Error(e, QStringLiteral(" [BUSCAR CLIENTE] "));
    }
    return c;
}

std::optional<BusquedaPersonas::Persona> BusquedaPersonas::BuscarVendedor(const QString& codigo) {
    if (codigo.isEmpty()) {
        ctx_.dialogos().Mensaje(
            QStringLiteral("Falta Codigo de Vendedor para realizar la busqueda."));
        return std::nullopt;
    }
    try {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kPersonal).Abrir(
            QStringLiteral("select nombre from vendedor where codigo = ?"), {codigo});
        if (IsRecord(rs))
            return Persona{codigo, EsNull(rs.Fields(QStringLiteral("nombre")))};
        if (!ctx_.dialogos().Pregunta(
                QStringLiteral("No se encontro este codigo en la lista de VENDEDORES.\nDesea "
                               "AGREGARLO a la lista")))
            return std::nullopt;
        QVariantMap args;
        args.insert(QStringLiteral("codigo"), codigo);
        return Devuelto(ctx_.AbrirModal(QStringLiteral("FrmNewVendedor"), args));
    } catch (const KorvenError& e) {
        Error(e, QStringLiteral(" [BUSCAR VENDEDOR] "));
    }
    return std::nullopt;
}

std::optional<BusquedaPersonas::Persona> BusquedaPersonas::ListaVendedores() {
    try {
        return Devuelto(ctx_.AbrirModal(QStringLiteral("FrmLstVendedores")));
    } catch (const KorvenError& e) {
        Error(e, QStringLiteral(" [BUSCAR VENDEDOR] "));
    }
    return std::nullopt;
}

std::optional<BusquedaPersonas::Persona> BusquedaPersonas::ListaDespachantes() {
    try {
        return Devuelto(ctx_.AbrirModal(QStringLiteral("FrmListadoDespachante")));
    } catch (const KorvenError& e) {
        Error(e, QStringLiteral(" [BUSCAR DESPACHANTE] "));
    }
    return std::nullopt;
}

QString BusquedaPersonas::SeleccionarCliente(QObject* formulario) {
    try {
        std::unique_ptr<QObject> libro =
            ctx_.componentes().Crear(QStringLiteral("ClientBook.Listing"), ctx_);
        QMetaObject::invokeMethod(libro.get(), "SetDataConnection", Q_ARG(QObject*, nullptr));
        libro->setProperty("Seleccionar", true);
        libro->setProperty("OrigenKorven", true);
        QMetaObject::invokeMethod(libro.get(), "MostrarListado", Q_ARG(QObject*, formulario));
        return libro->property("Cliente_Cuit").toString();
    } catch (const KorvenError& e) {
        Error(e, QStringLiteral(" [SELECCIONAR CLIENTE] "));
    }
    return {};
}

QString BusquedaPersonas::NombrePersona(const QString& tabla, const QString& codigo) {
    const QString t = tabla.trimmed().toLower();
    QString columna;
    if (t == QStringLiteral("clientes") || t == QStringLiteral("despadu"))
        columna = QStringLiteral("cuit");
    else if (t == QStringLiteral("vendedor"))
        columna = QStringLiteral("codigo");
    else
        return {};
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kPersonal).Abrir(
        QStringLiteral("select nombre from ") + t + QStringLiteral(" where ") + columna +
            QStringLiteral(" = ?"),
        {codigo});
    return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("nombre"))) : QString();
}

std::optional<BusquedaPersonas::Persona> BusquedaPersonas::Devuelto(const QVariant& respuesta) {
    Persona p;
    if (respuesta.metaType().id() == QMetaType::QVariantMap) {
        const QVariantMap m = respuesta.toMap();
        p.codigo = m.value(QStringLiteral("codigo"), m.value(QStringLiteral("cuit"))).toString();
        p.nombre = m.value(QStringLiteral("nombre")).toString();
    } else if (respuesta.metaType().id() == QMetaType::QStringList) {
        const QStringList l = respuesta.toStringList();
        p.codigo = l.value(0);
        p.nombre = l.value(1);
    } else {
        p.codigo = respuesta.toString();
    }
    if (p.codigo.isEmpty())
        return std::nullopt;
    return p;
}

} // namespace korven
