#include "components/LibroClientes.h"

#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QVariantList>

namespace korven {

namespace {

const QString kPersonal = QStringLiteral("PERSONAL");
const QString kColumnas = QStringLiteral(
    "cuit,nombre,domicilio,email,regalias,ajxvinc_4102,eximgan,eximganvalor,eximganvalortemp,"
    "ivaareduccion,ivaareduccionvalor,ivaareduccionvalortemp,cvdi,ingbru,ExcepLAPIAEC");

Cliente DeFila(const Recordset& rs) {
    Cliente c;
    auto t = [&rs](const char* campo) { return EsNull(rs.Fields(QString::fromLatin1(campo))); };
    auto n = [&rs](const char* campo) { return EsNumero(rs.Fields(QString::fromLatin1(campo))); };
    c.cuit = t("cuit");
    c.nombre = t("nombre");
    c.domicilio = t("domicilio");
    c.email = t("email");
    c.regalias = n("regalias");
    c.ajxvinc_4102 = n("ajxvinc_4102");
    c.eximgan = t("eximgan");
    c.eximganvalor = n("eximganvalor");
    c.eximganvalortemp = n("eximganvalortemp");
    c.ivaareduccion = t("ivaareduccion");
    c.ivaareduccionvalor = n("ivaareduccionvalor");
    c.ivaareduccionvalortemp = n("ivaareduccionvalortemp");
    c.cvdi = t("cvdi");
    c.ingbru = n("ingbru");
    c.ExcepLAPIAEC = t("ExcepLAPIAEC");
    return c;
}

// The values after the tax number, in the order of kColumnas.
QVariantList Valores(const Cliente& c) {
    return {c.nombre,
            c.domicilio,
            c.email,
            c.regalias,
            c.ajxvinc_4102,
            c.eximgan,
            c.eximganvalor,
            c.eximganvalortemp,
            c.ivaareduccion,
            c.ivaareduccionvalor,
            c.ivaareduccionvalortemp,
            c.cvdi,
            c.ingbru,
            c.ExcepLAPIAEC};
}

} // namespace

QList<Cliente> LibroClientes::Listar(const QString& cuit, const QString& nombre) {
    Recordset rs = stores_.getDataConnectionByEntity(kPersonal).Abrir(
        QStringLiteral("select ") + kColumnas +
            QStringLiteral(" from clientes where cuit like ? and "
                           "lower(coalesce(nombre,'')) like ? "
                           "order by nombre, cuit"),
        {cuit + QLatin1Char('%'), QLatin1Char('%') + nombre.toLower() + QLatin1Char('%')});
    QList<Cliente> r;
    for (; !rs.Eof(); rs.MoveNext())
        r << DeFila(rs);
    return r;
}

std::optional<Cliente> LibroClientes::Leer(const QString& cuit) {
    Recordset rs = stores_.getDataConnectionByEntity(kPersonal).Abrir(
        QStringLiteral("select ") + kColumnas + QStringLiteral(" from clientes where cuit = ?"),
        {cuit});
    if (!IsRecord(rs))
        return std::nullopt;
    return DeFila(rs);
}

bool LibroClientes::Existe(const QString& cuit) {
    return Leer(cuit).has_value();
}

void LibroClientes::Insertar(const Cliente& c) {
    QVariantList v{c.cuit};
    v << Valores(c);
    stores_.getDataConnectionByEntity(kPersonal).Ejecutar(
        QStringLiteral("insert into clientes (") + kColumnas +
            QStringLiteral(") values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"),
        v);
}

void LibroClientes::Actualizar(const Cliente& c) {
    QVariantList v = Valores(c);
    v << c.cuit;
    stores_.getDataConnectionByEntity(kPersonal).Ejecutar(
        QStringLiteral("update clientes set nombre = ?, domicilio = ?, email = ?, "
                       "regalias = ?, ajxvinc_4102 = ?, eximgan = ?, eximganvalor = ?, "
                       "eximganvalortemp = ?, ivaareduccion = ?, ivaareduccionvalor = ?, "
                       "ivaareduccionvalortemp = ?, cvdi = ?, ingbru = ?, "
                       "ExcepLAPIAEC = ? where cuit = ?"),
        v);
}

int LibroClientes::Eliminar(const QString& cuit) {
    return stores_.getDataConnectionByEntity(kPersonal).Ejecutar(
        QStringLiteral("delete from clientes where cuit = ?"), {cuit});
}

bool LibroClientes::CuitValido(const QString& cuit) {
    if (cuit.size() != 11)
        return false;
    for (const QChar ch : cuit)
        if (ch < QLatin1Char('0') || ch > QLatin1Char('9'))
            return false;
    int suma = 0;
    int peso = 2;
    for (int i = 9; i >= 0; --i) {
        suma += (cuit.at(i).unicode() - '0') * peso;
        peso = peso == 7 ? 2 : peso + 1;
    }
    const int resto = suma % 11;
    const int verificador = resto <= 1 ? resto : 11 - resto;
    return verificador == cuit.at(10).unicode() - '0';
}

QString LibroClientes::Validar(const Cliente& c) {
    if (!CuitValido(c.cuit))
        return QStringLiteral("Cuit Invalido");
    if (c.nombre.trimmed().isEmpty())
        return QStringLiteral("Debe ingresar el nombre del cliente.");
    if (!c.email.isEmpty() && !ValidaMail(c.email))
        return QStringLiteral("La dirección de correo no es válida.");
    return {};
}

} // namespace korven
