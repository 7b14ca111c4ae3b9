#include "goods/ValidadorNCM.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QHash>
#include <QSet>

namespace korven {

namespace {

struct Codigo {
    bool libre = false;     // has a two-character row: the clerk types the value
    QSet<QString> opciones; // the four-character rows
};

// One token of a suffix string: the code, and either the free value or the listed option.
struct Token {
    QString codigo;
    QString texto; // the token as it stands
    bool libre = false;
    QString valor;
};

// Splits a suffix string into its tokens; false when it is not well formed.
bool Tokens(const QString& s, QList<Token>* tokens) {
    int i = 0;
    const int n = static_cast<int>(s.size());
    while (i < n) {
        if (s[i] == QLatin1Char('-')) {
            ++i;
            continue;
        }
        Token t;
        t.codigo = s.mid(i, 2);
        if (t.codigo.size() < 2)
            return false;
        if (i + 2 < n && s[i + 2] == QLatin1Char('(')) {
            const int cierre = static_cast<int>(s.indexOf(QLatin1Char(')'), i + 3));
            if (cierre < 0)
                return false;
            t.libre = true;
            t.valor = s.mid(i + 3, cierre - i - 3);
            t.texto = s.mid(i, cierre - i + 1);
            i = cierre + 1;
        } else {
            t.texto = s.mid(i, 4);
            if (t.texto.size() < 4)
                return false;
            i += 4;
        }
        if (i < n && s[i] != QLatin1Char('-'))
            return false;
        tokens->append(t);
    }
    return true;
}

} // namespace

ValidadorNCM::ValidadorNCM(AppContext& ctx, QObject* parent) : QObject(parent), ctx_(ctx) {}

void ValidadorNCM::SetDataAccess(QObject*) {}

QStringList ValidadorNCM::NivelesSim(const QString& posicion) {
    return {posicion.left(2) + QStringLiteral("  .  .  .   "),
            posicion.left(4) + QStringLiteral(".  .  .   "),
            posicion.left(7) + QStringLiteral(".  .   "), posicion.left(14)};
}

QString ValidadorNCM::ListaSim(const QString& posicion) {
    QStringList l;
    for (const QString& s : NivelesSim(posicion))
        l << SqlTexto(s);
    return QLatin1Char('(') + l.join(QLatin1Char(',')) + QLatin1Char(')');
}

bool ValidadorNCM::ExistePosicion(const QString& ncm) {
    Conexion& cn = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
    QString sql = QStringLiteral("select \"001\" from ncm where \"001\" = ? and \"002\" = ?");
    QVariantList p{ncm.left(10), ncm.mid(11, 3)};
    const QString letra = ncm.mid(14, 1).trimmed();
    if (!letra.isEmpty()) {
        sql += QStringLiteral(" and \"003\" = ?");
        p << letra;
    }
    return cn.Abrir(sql, p).RecordCount() > 0;
}

int ValidadorNCM::ValidarSubItem(const QString& ncm, const QString& sufijos) {
    try {
        if (ncm.size() < 14 || !ExistePosicion(ncm))
            return PosicionInvalida;

        Conexion& cn = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
        Recordset rs =
            cn.Abrir(QStringLiteral("select sufijo from sufidos where sim in ") + ListaSim(ncm));
        QHash<QString, Codigo> codigos;
        for (; !rs.Eof(); rs.MoveNext()) {
            const QString suf = EsNull(rs.Fields(QStringLiteral("sufijo"))).trimmed();
            Codigo& c = codigos[suf.left(2)];
            if (suf.size() == 2)
                c.libre = true;
            else if (suf.size() == 4)
                c.opciones.insert(suf);
        }

        const QString s = sufijos.trimmed();
        if (s.isEmpty() || s == QLatin1String("SIN SUFIJOS"))
            return codigos.isEmpty() ? Valido : SufijosInvalidos;
        QList<Token> tokens;
        if (s == QLatin1String("##ERRORNCM##") || !Tokens(s, &tokens))
            return SufijosInvalidos;

        QHash<QString, QString> vistos; // code -> its token
        for (const Token& t : tokens) {
            const auto c = codigos.constFind(t.codigo);
            if (c == codigos.cend())
                return SufijosInvalidos;
            if (t.libre) {
                if (!c->libre || t.valor.trimmed().isEmpty())
                    return SufijosInvalidos;
            } else if (!c->opciones.contains(t.texto) && t.texto.mid(2) != QLatin1String("00")) {
                return SufijosInvalidos;
            } else if (c->opciones.isEmpty()) {
                return SufijosInvalidos;
            }
            const auto v = vistos.constFind(t.codigo);
            if (v != vistos.cend() && *v != t.texto)
                return SufijosInvalidos;
            vistos.insert(t.codigo, t.texto);
        }
        return vistos.size() == codigos.size() ? Valido : SufijosInvalidos;
    } catch (const KorvenError&) {
        return Desconocido;
    }
}

QVariantMap ValidadorNCM::MarcasPosicion(const QString& ncm) {
    QVariantMap m{{QStringLiteral("lapi"), false}, {QStringLiteral("estampillas"), false}};
    Conexion& cn = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
    QString sql =
        QStringLiteral("select \"059\" as lapi, \"041\" as estampillas from ncm where \"001\" = ? "
                       "and \"002\" = ?");
    QVariantList p{ncm.left(10), ncm.mid(11, 3)};
    const QString letra = ncm.mid(14, 1).trimmed();
    if (!letra.isEmpty()) {
        sql += QStringLiteral(" and \"003\" = ?");
        p << letra;
    }
    Recordset rs = cn.Abrir(sql, p);
    if (!rs.Eof()) {
        m[QStringLiteral("lapi")] = EsNull(rs.Fields(QStringLiteral("lapi"))).trimmed() == "*";
        m[QStringLiteral("estampillas")] =
            EsNull(rs.Fields(QStringLiteral("estampillas"))).trimmed() == "*";
    }
    return m;
}

} // namespace korven
