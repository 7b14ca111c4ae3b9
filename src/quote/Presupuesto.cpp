#include "quote/Presupuesto.h"

#include "foundation/ListasMaestras.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/IniFile.h"
#include "platform/Recordset.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/Esquema.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace korven {

namespace {
const QString kInternos = QStringLiteral("INTERNOS");
const QString kSystablas = QStringLiteral("SYSTABLAS");
const QString kPersonal = QStringLiteral("PERSONAL");

QString F2(double v) {
    return Formato(v, QStringLiteral("00.00"));
}
QString F6(double v) {
    return Formato(v, QStringLiteral("00.000000"));
}

// What a label shows, read back as the number it shows.
double Mostrado(double v, int decimales) {
    return RedondearDecimal(v, decimales);
}

// A product as the clerk works it out: on the decimal values, not on their binary
// approximations (532.53 x 2.5 is 1331.325, which shows as 1331.33).
double Producto(double a, double b) {
    return RedondearDecimal(a * b, 9);
}

// The header's adjustment when it is a number other than 0, else the sum of the items'.
double Ajuste(Conexion& cx, const QVariant& cabecera, const QString& columnaItem,
              const QString& interno) {
    if (EsNumerico(cabecera) && EsNumero(cabecera) != 0)
        return EsNumero(cabecera);
    Recordset rs = cx.Abrir(QStringLiteral("select %1 as total from item where isnumeric(%1)<>0 "
                                           "and id<>0 and interno = ?")
                                .arg(columnaItem),
                            {interno});
    double total = 0;
    for (; !rs.Eof(); rs.MoveNext())
        total += EsNumero(rs.Fields(QStringLiteral("total")));
    return total;
}

bool LeerSeccion(const QString& carpeta, const QString& nombre, QString& texto, QString* error) {
    QFile f(QDir(carpeta).filePath(nombre));
    if (!f.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("No se pudo leer %1: %2").arg(f.fileName(), f.errorString());
        return false;
    }
    texto = QString::fromUtf8(f.readAll());
    return true;
}

// A section repeated once per row; with no rows, one empty row in its place.
QString Repetir(const QString& plantilla, int filas,
                const std::function<QString(QString, int)>& llenar, const QString& vacia) {
    if (filas == 0)
        return vacia;
    QString r;
    for (int i = 0; i < filas; ++i)
        r += llenar(plantilla, i);
    return r;
}
} // namespace

Presupuesto::Presupuesto(AppContext& ctx, QString interno)
    : ctx_(ctx), interno_(std::move(interno)) {}

bool Presupuesto::LeerCaratula(double pase, Caratula& c) {
    Conexion& cx = ctx_.stores().getDataConnectionByEntity(kInternos);
    Recordset rs = cx.Abrir(QStringLiteral("select * from caratula where interno = ?"), {interno_});
    if (!IsRecord(rs))
        return false;
    c = Caratula{};
    c.email = IniFile::Leer(QStringLiteral("EMAIL"), QStringLiteral("SMTP"), ctx_.rutaIni());
    c.servidor = IniFile::Leer(QStringLiteral("SERVER"), QStringLiteral("SMTP"), ctx_.rutaIni());
    const QVariant acuenta = rs.Fields(QStringLiteral("factura6"));
    if (EsNumerico(acuenta))
        c.acuenta = F2(EsNumero(acuenta));

    Conexion& personal = ctx_.stores().getDataConnectionByEntity(kPersonal);
    Recordset des = personal.Abrir(QStringLiteral("select nombre from despadu where cuit = ?"),
                                   {EsNull(rs.Fields(QStringLiteral("cuitdespaduana")))});
    if (IsRecord(des))
        c.despachante = EsNull(des.Fields(QStringLiteral("nombre")));
    Recordset cli =
        personal.Abrir(QStringLiteral("select nombre,domicilio,email from clientes where cuit = ?"),
                       {EsNull(rs.Fields(QStringLiteral("cuitcliente")))});
    if (IsRecord(cli)) {
        c.cliente = EsNull(cli.Fields(QStringLiteral("nombre")));
        c.domicilio = EsNull(cli.Fields(QStringLiteral("domicilio")));
        c.clienteEmail = EsNull(cli.Fields(QStringLiteral("email")));
    }

    c.fob = Mostrado(EsNumero(cx.Abrir(QStringLiteral("select sum(fob) as total from "
                                                      "groupsubitems where interno = ?"),
                                       {interno_})
                                  .Fields(QStringLiteral("total"))),
                     2);
    c.paseFob = Mostrado(EsNumero(rs.Fields(QStringLiteral("fobdivcambio"))), 6);
    c.paseFlete = Mostrado(EsNumero(rs.Fields(QStringLiteral("fletedivcambio"))), 6);
    c.paseSeguro = Mostrado(EsNumero(rs.Fields(QStringLiteral("segurodivcambio"))), 6);
    c.flete = Mostrado(EsNumero(rs.Fields(QStringLiteral("fletedivisas"))), 2);
    c.seguro = Mostrado(EsNumero(rs.Fields(QStringLiteral("segurodivisas"))), 2);
    c.ajDed = Mostrado(Ajuste(cx, rs.Fields(QStringLiteral("ajustededucir")),
                              QStringLiteral("ajusteded"), interno_),
                       2);
    c.ajInc = Mostrado(Ajuste(cx, rs.Fields(QStringLiteral("ajusteincluir")),
                              QStringLiteral("ajusteinc"), interno_),
                       2);

    // Exports carry no freight or insurance in the base.
    double base = Producto(c.fob, c.paseFob);
    const QString regimen = EsNull(rs.Fields(QStringLiteral("idsubreg"))).left(2).toUpper();
    if (regimen != QLatin1String("EG") && regimen != QLatin1String("EC"))
        base += Producto(c.flete, c.paseFlete) + Producto(c.seguro, c.paseSeguro);
    base += Producto(c.ajInc, c.paseFob) - Producto(c.ajDed, c.paseFob);
    c.baseImp = Mostrado(base, 2);

    Recordset liq = cx.Abrir(QStringLiteral("select * from liqcero where LEFT(idconcepto,3) <> "
                                            "'###' and interno = ? order by pgc desc,concepto"),
                             {interno_});
    for (; !liq.Eof(); liq.MoveNext()) {
        FilaLiq f;
        f.concepto = EsNull(liq.Fields(QStringLiteral("concepto")));
        f.pgc = EsNull(liq.Fields(QStringLiteral("pgc")));
        f.dolar = Mostrado(EsNumero(liq.Fields(QStringLiteral("valor"))), 2);
        f.peso = Mostrado(Producto(EsNumero(liq.Fields(QStringLiteral("valor"))), pase), 2);
        c.liq.append(f);
        Total* t = f.pgc == QLatin1String("P")   ? &c.despacho
                   : f.pgc == QLatin1String("C") ? &c.cobrar
                   : f.pgc == QLatin1String("G") ? &c.garantizar
                                                 : nullptr;
        if (t) {
            t->peso = RedondearDecimal(t->peso + f.peso, 2);
            t->dolar = RedondearDecimal(t->dolar + f.dolar, 2);
        }
    }
    Recordset iva = cx.Abrir(QStringLiteral("select valor from liqcero where idconcepto = "
                                            "'###baseiva' and interno = ?"),
                             {interno_});
    c.baseIva = IsRecord(iva) ? Mostrado(EsNumero(iva.Fields(QStringLiteral("valor"))), 2) : 0;
    return true;
}

QList<Presupuesto::Concepto> Presupuesto::Conceptos() {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select * from itempresu where interno = ? order by concepto"), {interno_});
    QList<Concepto> r;
    for (; !rs.Eof(); rs.MoveNext())
        r.append({EsNull(rs.Fields(QStringLiteral("concepto"))),
                  EsNumero(rs.Fields(QStringLiteral("valorpeso"))),
                  EsNumero(rs.Fields(QStringLiteral("valordolar")))});
    return r;
}

QList<Presupuesto::Referencia> Presupuesto::Referencias() {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select * from itemref where interno = ? order by referencia"), {interno_});
    QList<Referencia> r;
    for (; !rs.Eof(); rs.MoveNext())
        r.append({EsNull(rs.Fields(QStringLiteral("referencia"))),
                  EsNull(rs.Fields(QStringLiteral("valor")))});
    return r;
}

QString Presupuesto::Comentario() {
    return ListasMaestras(ctx_.stores()).LeerComentario(interno_);
}

QStringList Presupuesto::ConceptosDelSistema() {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select concepto from conpresu order by concepto"));
    QStringList r;
    for (; !rs.Eof(); rs.MoveNext())
        r << EsNull(rs.Fields(0));
    return r;
}

QStringList Presupuesto::ReferenciasDelSistema() {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select referencia from referencias order by referencia"));
    QStringList r;
    for (; !rs.Eof(); rs.MoveNext())
        r << EsNull(rs.Fields(0));
    return r;
}

bool Presupuesto::AgregarConcepto(const QString& concepto, double valor, bool enDolares) {
    bool nuevo = false;
    EnTransaccion(ctx_.stores(), {kInternos}, [&](Transaccion&) {
        Conexion& cx = ctx_.stores().getDataConnectionByEntity(kInternos);
        nuevo = false;
        if (EsNumero(cx.Abrir(QStringLiteral("select count(*) as cont from itempresu where interno "
                                             "= ? and  concepto = ?"),
                              {interno_, concepto})
                         .Fields(QStringLiteral("cont"))) > 0)
            return;
        nuevo = true;
        cx.Ejecutar(enDolares ? QStringLiteral("insert into itempresu "
                                               "(interno,concepto,valordolar,valorpeso) values "
                                               "(?,?,?,0)")
                              : QStringLiteral("insert into itempresu "
                                               "(interno,concepto,valorpeso,valordolar) values "
                                               "(?,?,?,0)"),
                    {interno_, concepto, RedondearDecimal(valor, 2)});
    });
    return nuevo;
}

void Presupuesto::BorrarConcepto(const QString& concepto) {
    ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("delete from itempresu where interno = ? and concepto = ?"),
        {interno_, concepto});
}

bool Presupuesto::AgregarReferencia(const QString& referencia, const QString& valor) {
    bool nuevo = false;
    EnTransaccion(ctx_.stores(), {kInternos}, [&](Transaccion&) {
        Conexion& cx = ctx_.stores().getDataConnectionByEntity(kInternos);
        nuevo = false;
        if (EsNumero(cx.Abrir(QStringLiteral("select count(*) as cont from itemref where interno = "
                                             "? and referencia = ?"),
                              {interno_, referencia})
                         .Fields(QStringLiteral("cont"))) > 0)
            return;
        nuevo = true;
        cx.Ejecutar(QStringLiteral("insert into itemref (interno,referencia,valor) values (?,?,?)"),
                    {interno_, referencia, valor});
    });
    return nuevo;
}

void Presupuesto::BorrarReferencia(const QString& referencia) {
    ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("delete from itemref where interno = ? and referencia = ?"),
        {interno_, referencia});
}

void Presupuesto::GrabarACuenta(const QString& acuenta) {
    const QString valor = Formato(NumeroTecleado(acuenta), QStringLiteral("00.00"),
                                  ctx_.stores().getDecimalSeparatorbyEntity(kInternos));
    ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(
        QStringLiteral("update caratula set factura6 = ? where interno = ?"), {valor, interno_});
}

QString Presupuesto::CarpetaSecciones(const QString& directorioPrograma) {
    const QString propia = QDir(directorioPrograma).filePath(QStringLiteral("seccion"));
    if (QFileInfo(propia).isDir())
        return propia;
    return QDir(schema::CarpetaDatos(directorioPrograma)).filePath(QStringLiteral("seccion"));
}

QString Presupuesto::Escapar(const QString& texto) {
    return texto.toHtmlEscaped().replace(QLatin1Char('\''), QStringLiteral("&#39;"));
}

bool Presupuesto::Armar(const Datos& d, const QString& carpeta, QString& html, QString* error) {
    QString s[8];
    const char* nombres[] = {"seccion00.cpl", "seccion01.cpl", "seccioncc.cpl", "seccion02.cpl",
                             "seccion03.cpl", "seccion04.cpl", "seccion05.cpl", "seccion06.cpl"};
    for (int i = 0; i < 8; ++i)
        if (!LeerSeccion(carpeta, QString::fromLatin1(nombres[i]), s[i], error))
            return false;
    auto poner = [](QString t, const char* marca, const QString& valor) {
        return t.replace(QStringLiteral("###%1###").arg(QLatin1String(marca)), Escapar(valor));
    };
    const QString filaVacia = QStringLiteral("<tr class=texto ></tr>");

    QString t = s[0];
    t = poner(t, "fechapres", FormatoFecha(QDate::currentDate(), QStringLiteral("Long Date")));
    t = poner(t, "desnom", d.car.despachante);
    t = poner(t, "clinom", d.car.cliente);
    t = poner(t, "intnro", d.interno);
    t = poner(t, "clidir", d.car.domicilio);

    t += Repetir(
        s[1], static_cast<int>(d.referencias.size()),
        [&](QString p, int i) {
            p = poner(p, "refer00", d.referencias[i].referencia);
            return poner(p, "valorrefer00", d.referencias[i].valor);
        },
        filaVacia);

    if (!d.comentario.trimmed().isEmpty()) {
        QString coment = Escapar(d.comentario);
        coment.replace(QStringLiteral("\r\n"), QStringLiteral("<br>"));
        coment.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
        coment.replace(QLatin1Char('\r'), QStringLiteral("<br>"));
        QString cc = s[2];
        cc.replace(QStringLiteral("###comentarios###"), coment);
        t.replace(QStringLiteral("<!--###seccioncc###-->"), cc);
    }

    QString v = s[3];
    v = poner(v, "fobvlr", F2(d.car.fob));
    v = poner(v, "fletvlr", F2(d.car.flete));
    v = poner(v, "segvlr", F2(d.car.seguro));
    v = poner(v, "ajuinc", F2(d.car.ajInc));
    v = poner(v, "ajuded", F2(d.car.ajDed));
    v = poner(v, "pasfob", F6(d.car.paseFob));
    v = poner(v, "pasflet", F6(d.car.paseFlete));
    v = poner(v, "passeg", F6(d.car.paseSeguro));
    v = poner(v, "bimp", F2(d.car.baseImp));
    v = poner(v, "bimppeso", F2(Producto(d.car.baseImp, d.pase)));
    v = poner(v, "biva", F2(d.car.baseIva));
    v = poner(v, "tipocambio", F6(d.pase));
    t += v;

    t += Repetir(
        s[4], static_cast<int>(d.car.liq.size()),
        [&](QString p, int i) {
            p = poner(p, "gstdsc", d.car.liq[i].concepto);
            p = poner(p, "pgc", d.car.liq[i].pgc);
            p = poner(p, "gstpesr", F2(d.car.liq[i].peso));
            return poner(p, "gstdlr", F2(d.car.liq[i].dolar));
        },
        filaVacia);

    QString tot = s[5];
    tot = poner(tot, "gsttotpes", F2(d.car.despacho.peso));
    tot = poner(tot, "gstotdol", F2(d.car.despacho.dolar));
    tot = poner(tot, "totgarpes", F2(d.car.garantizar.peso));
    tot = poner(tot, "totgardol", F2(d.car.garantizar.dolar));
    tot = poner(tot, "totcobpes", F2(d.car.cobrar.peso));
    tot = poner(tot, "totcobdol", F2(d.car.cobrar.dolar));
    t += tot;

    t += Repetir(
        s[6], static_cast<int>(d.conceptos.size()),
        [&](QString p, int i) {
            p = poner(p, "opdsc", d.conceptos[i].concepto);
            p = poner(p, "oppes", F2(d.conceptos[i].peso));
            return poner(p, "opdol", F2(d.conceptos[i].dolar));
        },
        QStringLiteral("<tr class=texto ><td colspan=3 >Sin Datos...</td></tr>"));

    QString fin = s[7];
    fin = poner(fin, "optotpes", F2(d.operativos.peso));
    fin = poner(fin, "optotdol", F2(d.operativos.dolar));
    fin = poner(fin, "totadu", F2(d.car.despacho.peso));
    fin = poner(fin, "totdol", F2(d.operativos.dolar));
    fin = poner(fin, "totpes", F2(d.operativos.peso));
    const double subtotal =
        RedondearDecimal(d.car.despacho.peso + d.pase * d.operativos.dolar + d.operativos.peso, 2);
    fin = poner(fin, "subtotal", F2(subtotal));
    double total = subtotal;
    if (d.hayAcuenta && d.acuenta > 0) {
        fin = poner(fin, "cuenta", F2(d.acuenta) + QLatin1Char('-'));
        total = subtotal - d.acuenta;
    } else {
        fin.replace(QStringLiteral("###cuenta###"), QString());
        fin.replace(QStringLiteral("A CUENTA:"), QString());
    }
    fin = poner(fin, "totalgeneral", F2(total));
    t += fin;
    html = t;
    return true;
}

} // namespace korven
