#include "goods/Nomenclador.h"

#include "goods/ValidadorNCM.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {

const QString kNcm = QStringLiteral("NCM");

struct Columna {
    const char* numero;
    const char* titulo;
};

// The columns shown by the details display, group by group.
QList<std::pair<const char*, QList<Columna>>> Grupos() {
    return {
        {"",
         {{"012", "Unidad Estadistica:"},
          {"020", "Unidad del Derecho Especifico:"},
          {"013", "Ramo:"}}},
        {"GRAVAMENES",
         {{"015", "Derecho de Importación Extrazona:"},
          {"021", "Derecho de Importación intrazona:"},
          {"026", "Arancel Externo Común:"},
          {"016", "Estadistica:"},
          {"017", "Derecho Especifico:"},
          {"018", "Derecho de Exportación:"},
          {"019", "Reintegro Extrazona:"},
          {"048", "Marca de Exento de IVA:"}}},
        {"FUENTES",
         {{"030", "Derecho Import. Extrazona:"},
          {"031", "Estadistica:"},
          {"032", "Derecho Especifico:"},
          {"033", "Derecho de Exportación:"},
          {"034", "Reintegro Extrazona:"},
          {"035", "Derecho de Import. Intrazona:"},
          {"036", "Reintegro de Brasil:"},
          {"037", "Reintegro de Uruguay:"},
          {"038", "Reintegro de Paraguay:"}}},
        {"POSEE",
         {{"040", "Impuestos Interno:"},
          {"041", "Estampillado:"},
          {"042", "Eiquetado:"},
          {"043", "Intervención:"},
          {"044", "Prohibición:"},
          {"045", "Antidumping:"},
          {"046", "Exención Estadística:"},
          {"047", "Usados:"},
          {"049", "Certificado de Origen Res.763/96:"},
          {"050", "Valores de Refencia:"},
          {"051", "Certificado de Insp. Preembarque:"},
          {"052", "Lealtad Comercial (Seg. Eléctrica):"},
          {"053", "Indicador de Maximo Arancel:"},
          {"054", "Lista de Exclusiones:"},
          {"055", "Bien de Capital:"},
          {"056", "Bien de Informatica/Telecom:"},
          {"057", "Reg. de Adecuación:"},
          {"058", "Cupo Salvaguardia:"},
          {"059", "Formulario Informativo:"},
          {"060", "Insumos Inversiones Mineras:"},
          {"061", "Seguridad Gas:"},
          {"062", "Seguridad Aceros:"}}},
    };
}

// A mark of the POSEE group that compares equal to false: empty, "0" or "false".
bool EsFalso(const QString& v) {
    const QString t = v.trimmed();
    return t.isEmpty() || t == QLatin1String("0") ||
           t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0;
}

} // namespace

QStringList Nomenclador::BuscarNCM(const QString& texto) {
    QString t = texto;
    t.replace(QLatin1Char('.'), QLatin1Char('%'));
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kNcm).Abrir(
        QStringLiteral("select \"001\" || '.' || \"002\" || \"003\" as ncm, \"012\" as "
                       "estadistica, \"020\" as deresp from ncm where \"001\" like ? order by "
                       "\"001\",\"002\",\"003\""),
        {t + QLatin1Char('%')});
    QStringList l;
    for (; !rs.Eof(); rs.MoveNext())
        l << EsNull(rs.Fields(QStringLiteral("ncm")));
    return l;
}

QList<Nomenclador::Fila> Nomenclador::Buscar(const QString& filtro, const QVariantList& parametros,
                                             const QString& separador) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kNcm).Abrir(
        QStringLiteral("select \"001\",\"002\",\"003\",\"004\",\"010\" from ncm where ") + filtro +
            QStringLiteral(" order by \"001\",\"002\",\"003\""),
        parametros);
    QList<Fila> l;
    for (; !rs.Eof(); rs.MoveNext())
        l.append({EsNull(rs.Fields(0)).trimmed() + QLatin1Char('.') + EsNull(rs.Fields(1)) +
                      EsNull(rs.Fields(2)),
                  EsNull(rs.Fields(4)) + separador + EsNull(rs.Fields(3))});
    return l;
}

QList<Nomenclador::Fila> Nomenclador::BuscarPorPosicion(const QString& texto) {
    QString t = texto;
    t.replace(QLatin1Char(','), QLatin1Char('.')).replace(QLatin1Char('.'), QLatin1Char('%'));
    return Buscar(QStringLiteral("\"001\" like ?"), {t + QLatin1Char('%')},
                  QStringLiteral(" - - "));
}

QList<Nomenclador::Fila> Nomenclador::BuscarPorDescripcion(const QString& texto) {
    // The nomenclator is written in capitals; the search does not mind the case typed.
    const QString patron = QLatin1Char('%') + texto.toUpper() + QLatin1Char('%');
    return Buscar(QStringLiteral("upper(\"010\") like ? or upper(\"004\") like ?"),
                  {patron, patron}, QStringLiteral(" -- "));
}

std::optional<Nomenclador::DatosPosicion> Nomenclador::MostrarDatos(const QString& posicion) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kNcm).Abrir(
        QStringLiteral("Select \"010\" as descrip,\"004\" as descrip1, \"012\" as "
                       "estadistica,\"020\" as deresp, \"059\" as lapi,\"019\" as rein, \"052\" "
                       "as segelect, \"044\" as prohibicion from ncm where \"001\" = ? and "
                       "\"002\" = ? and \"003\" = ?"),
        {posicion.left(10), posicion.mid(11, 3), posicion.mid(14, 1)});
    if (rs.Eof())
        return std::nullopt;
    DatosPosicion d;
    auto campo = [&rs](const char* c) { return EsNull(rs.Fields(QString::fromLatin1(c))); };
    d.descripcion = campo("descrip") + QLatin1Char('\n') + campo("descrip1");
    const QVariant rein = rs.Fields(QStringLiteral("rein"));
    d.marcas = {{QStringLiteral("estadistica"), campo("estadistica")},
                {QStringLiteral("deresp"), campo("deresp")},
                {QStringLiteral("lapi"), campo("lapi") == QLatin1String("*")},
                {QStringLiteral("reintegro"), EsNumerico(rein) && EsNumero(rein) > 0},
                {QStringLiteral("segelect"), campo("segelect") == QLatin1String("*")},
                {QStringLiteral("prohibicion"), campo("prohibicion") == QLatin1String("*")}};
    for (const Sufijo& s : SufijosAplicables(posicion))
        d.sufijos << s.sufijo.trimmed().leftJustified(5, QLatin1Char(' ')) + s.detalle.trimmed();
    return d;
}

QList<Nomenclador::Sufijo> Nomenclador::SufijosAplicables(const QString& posicion) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kNcm).Abrir(
        QStringLiteral("select * from sufidos where sim in ") + ValidadorNCM::ListaSim(posicion) +
        QStringLiteral(" order by sim, sufijo"));
    QList<Sufijo> l;
    for (; !rs.Eof(); rs.MoveNext())
        l.append({EsNull(rs.Fields(QStringLiteral("sim"))),
                  EsNull(rs.Fields(QStringLiteral("sufijo"))),
                  EsNull(rs.Fields(QStringLiteral("detalle")))});
    return l;
}

QList<Nomenclador::Detalle> Nomenclador::Detalles(const QString& posicion, QString* descripcion) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kNcm).Abrir(
        QStringLiteral("select * from ncm where \"001\" = ? and \"002\" = ?"),
        {posicion.left(10), posicion.right(4).left(3)});
    QList<Detalle> l;
    if (rs.Eof())
        return l;
    auto campo = [&rs](const char* c) { return EsNull(rs.Fields(QString::fromLatin1(c))); };
    if (descripcion)
        *descripcion = campo("010") + QLatin1Char('\n') + campo("004");
    l.append({true, {}, QStringLiteral("Detalles del Nomenclador"), {}});
    for (const auto& [grupo, columnas] : Grupos()) {
        if (*grupo)
            l.append({true, {}, QString::fromUtf8(grupo), {}});
        for (const Columna& c : columnas) {
            QString valor = campo(c.numero);
            const QString numero = QString::fromLatin1(c.numero);
            if (QLatin1String(grupo) == QLatin1String("POSEE")) {
                const bool siempreQueTenga =
                    numero == QLatin1String("040") || numero == QLatin1String("062");
                if (siempreQueTenga ? valor.trimmed().isEmpty() : !EsFalso(valor))
                    continue;
            } else if (numero == QLatin1String("020") && valor.trimmed().isEmpty()) {
                valor = QStringLiteral("No posee");
            }
            l.append({false, numero, QString::fromUtf8(c.titulo), valor});
        }
    }
    return l;
}

} // namespace korven
