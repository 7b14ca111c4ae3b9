#include "header/ListasCodigos.h"

#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QVariantMap>

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");
const QString kSystablas = QStringLiteral("SYSTABLAS");

bool EsMotivoTemporal(const QString& lista) {
    return lista == QStringLiteral("MOTIVOSTEMPI") || lista == QStringLiteral("MOTIVOSTEMPE");
}

} // namespace

std::optional<ListasCodigos::Definicion> ListasCodigos::DefinicionLista(const QString& nombre) {
    const QString lista = nombre.trimmed().toUpper();
    auto def = [](const char* tabla, const QString& entidad, const char* sql) {
        return Definicion{QString::fromLatin1(tabla), entidad, QString::fromLatin1(sql)};
    };
    if (lista == QStringLiteral("SUBREG"))
        return def("sta", kInternos,
                   "select distinct id,descripcion from sta order by id,descripcion");
    if (lista == QStringLiteral("ADUANA"))
        return def("ADUANA", kInternos, "select * from ADUANA order by descripcion,id");
    if (lista == QStringLiteral("CODEMB"))
        return def("CODEMB", kInternos, "select * from CODEMB order by descripcion,id");
    if (lista == QStringLiteral("TIPOEMB"))
        return def("TIPOEMB", kInternos, "select * from TIPOEMB order by descripcion,id");
    if (lista == QStringLiteral("CODVENTA"))
        return def("CONDICIONDEVENTA", kInternos,
                   "select * from CONDICIONDEVENTA order by descripcion,id");
    if (lista == QStringLiteral("PAIS"))
        return def("PAIS", kSystablas, "select * from PAIS order by length(id) desc,descripcion");
    if (lista == QStringLiteral("BANCOS"))
        return def("BANCOS", kSystablas, "select * from BANCOS order by descripcion");
    if (lista == QStringLiteral("MOTIVOS"))
        return def("MOTIVOS", kSystablas, "select * from MOTIVOS order by descripcion");
    if (lista == QStringLiteral("MOTIVO"))
        return def("MOTIVO", kSystablas, "select * from MOTIVO order by descripcion");
    if (lista == QStringLiteral("MOTIVOSTEMPI"))
        return def("MOTTMP", kSystablas,
                   "select id,descripcion,dias from MOTTMP where impexpo = 'I' order by "
                   "descripcion");
    if (lista == QStringLiteral("MOTIVOSTEMPE"))
        return def("MOTTMP", kSystablas,
                   "select id,descripcion,dias from MOTTMP where impexpo = 'E' order by "
                   "descripcion");
    if (lista == QStringLiteral("VIA"))
        return def("via", kInternos, "select * from via order by id");
    if (lista == QStringLiteral("ESTADOMERCADERIA"))
        return def("ESTADOMERCADERIA", kInternos,
                   "select id , descripcion from ESTADOMERCADERIA order by id");
    if (lista == QStringLiteral("UNIDADES"))
        return def("UNIDADES", kInternos,
                   "select id,' ' || descripcion AS descr from UNIDADES order by descripcion ");
    if (lista == QStringLiteral("PUERTO"))
        return def("PUERTOS", kInternos,
                   "select cpor as id,lpor as descripcion from puertos where cpor is not null and "
                   "lpor is not null  order by lpor");
    if (lista == QStringLiteral("DIVISAS"))
        return def("DIVISAS", kInternos, "select * from DIVISAS order by descripcion,id");
    return std::nullopt;
}

QString ListasCodigos::BuscarDescripcion(const QString& nombre, const QString& codigo,
                                         QString* extra) {
    if (extra)
        extra->clear();
    if (codigo.isEmpty())
        return {};
    const QString lista = nombre.trimmed().toUpper();
    const std::optional<Definicion> d = DefinicionLista(lista);
    if (!d)
        return {};
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(d->entidad);
        const QString sql =
            lista == QStringLiteral("PUERTO")
                ? QStringLiteral("SELECT LPOR as descripcion FROM PUERTOS where cpor = ?")
                : QStringLiteral("select descripcion from ") + d->tabla +
                      QStringLiteral(" where id = ?");
        Recordset rs = cn.Abrir(sql, {codigo});
        QString descripcion;
        if (IsRecord(rs)) {
            descripcion = EsNull(rs.Fields(QStringLiteral("Descripcion")));
        } else {
            ctx_.dialogos().Mensaje(QStringLiteral("CODIGO INEXISTENTE DE ") + d->tabla +
                                    QStringLiteral("\n\nNo se enconto DESCRIPCIÓN para esta "
                                                   "CLAVE\n\n[CARATULA.BUSCARDESCRIPCION.") +
                                    d->tabla + QStringLiteral("]"));
        }
        if (extra)
            *extra = Extra(lista, codigo);
        return descripcion;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [BDESCRIPCION] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return {};
    }
}

QString ListasCodigos::Extra(const QString& lista, const QString& codigo) {
    if (lista == QStringLiteral("SUBREG")) {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
            QStringLiteral("select cstaimpexp from sta where id = ?"), {codigo});
        return IsRecord(rs) ? EsNull(rs.Fields(QStringLiteral("cstaimpexp"))) : QString();
    }
    if (lista == QStringLiteral("DIVISAS")) {
        Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
            QStringLiteral("select * from divisas where id = ?"), {codigo});
        return IsRecord(rs) ? Formato(EsNumero(rs.Fields(QStringLiteral("imp"))),
                                      QStringLiteral("00.000000"))
                            : QString();
    }
    return {};
}

QList<ListasCodigos::Fila> ListasCodigos::Filas(const QString& nombre) {
    QList<Fila> filas;
    const QString lista = nombre.trimmed().toUpper();
    const std::optional<Definicion> d = DefinicionLista(lista);
    if (!d)
        return filas;
    Recordset rs = ctx_.stores().getDataConnectionByEntity(d->entidad).Abrir(d->sql);
    const QString campoDescripcion = lista == QStringLiteral("UNIDADES")
                                         ? QStringLiteral("descr")
                                         : QStringLiteral("descripcion");
    for (; !rs.Eof(); rs.MoveNext()) {
        Fila f;
        const QString id = EsNull(rs.Fields(QStringLiteral("id")));
        f.codigo = id;
        f.descripcion = EsNull(rs.Fields(campoDescripcion));
        if (lista == QStringLiteral("DIVISAS")) {
            f.descripcion += QLatin1Char('\t') + Formato(EsNumero(rs.Fields(QStringLiteral("imp"))),
                                                         QStringLiteral("000.000000"));
        } else if (lista == QStringLiteral("BANCOS")) {
            f.descripcion += QStringLiteral(" (") + id + QLatin1Char(')');
        } else if (EsMotivoTemporal(lista)) {
            f.codigo = id + QLatin1Char('|') + EsNull(rs.Fields(QStringLiteral("dias")));
        }
        f.texto = id + QLatin1Char('\t') + f.descripcion;
        filas.append(f);
    }
    return filas;
}

QString ListasCodigos::AbrirListado(AppContext& ctx, const QString& titulo,
                                    const QList<Fila>& filas) {
    QStringList codigos, descripciones, valores;
    for (const Fila& f : filas) {
        codigos << f.texto.section(QLatin1Char('\t'), 0, 0);
        descripciones << f.descripcion;
        valores << f.codigo;
    }
    QVariantMap args;
    args.insert(QStringLiteral("titulo"), titulo);
    args.insert(QStringLiteral("codigos"), codigos);
    args.insert(QStringLiteral("descripciones"), descripciones);
    args.insert(QStringLiteral("valores"), valores);
    return ctx.AbrirModal(QStringLiteral("FrmListado"), args).toString();
}

QString ListasCodigos::MostrarLista(const QString& nombre, const QString& titulo, QString* extra) {
    if (extra)
        extra->clear();
    const QString lista = nombre.trimmed().toUpper();
    try {
        const QString codigo = AbrirListado(ctx_, titulo, Filas(lista));
        if (extra && !codigo.isEmpty())
            *extra = Extra(lista, codigo);
        return codigo;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") +
                                    e.descripcion() + QStringLiteral(" [BDESCRIPCION] "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return {};
    }
}

} // namespace korven
