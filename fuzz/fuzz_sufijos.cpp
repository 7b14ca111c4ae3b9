// The suffix strings of a position against the reference nomenclator. An input gives, by lines,
// the position (its first 14 characters, as the screens pass it), the present suffix string, a line
// whose first character chooses the mode ("1" asks every code again) and whose second the decimal
// separator, and then what the clerk answers, in order: typed texts, "S"/"N" to the questions, and
// for a list the row's number, "C" to cancel or anything else to close it empty. A string built to
// the end is one the nomenclator's check accepts, its free numbers have six digits; the silent
// rebuild, the rewrite of one code and the customer rule never break.

#include "Arnes.h"
#include "goods/PantallasNomenclador.h"
#include "goods/Sufijos.h"
#include "goods/ValidadorNCM.h"
#include "platform/AppContext.h"
#include "platform/ComponentRegistry.h"
#include "platform/Formato.h"
#include "platform/Pantallas.h"
#include "schema/Esquema.h"
#include "support/TestStores.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <deque>

using namespace korven;
using korven::fuzz::Exigir;

namespace {

// The clerk of the input: answers in order; with none left, cancels and says yes to giving up.
class Empleado : public Dialogos {
public:
    std::deque<QString> respuestas;
    QStringList mensajes;

    void Mensaje(const QString& texto, const QString&, Icono) override { mensajes << texto; }
    bool Pregunta(const QString&, const QString&, Icono) override {
        return Siguiente().value_or(QStringLiteral("S")).startsWith(QLatin1Char('S'));
    }
    std::optional<QString> PedirTexto(const QString&, const QString&, int largo,
                                      const QString&) override {
        const std::optional<QString> r = Siguiente();
        return r ? std::optional<QString>(r->left(largo)) : std::nullopt;
    }
    std::optional<QString> Siguiente() {
        if (respuestas.empty())
            return std::nullopt;
        const QString r = respuestas.front();
        respuestas.pop_front();
        return r;
    }
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    korven::fuzz::Arnes arnes(argc, argv, "sufijos",
                              {"8703.23.10.100", "3004.10.12.100", "0401.10.10.100", "AA(", "ZA(",
                               "CB01", "-", ")-", "\nS\n", "\nN\n", "\nC\n", "\n0\n", "\n2\n",
                               "12,5", "99999,5"});
    arnes.LimitarBytes(4 * 1024);
    test::TestStores ts(Motor::SQLite);
    schema::CrearOActualizar(ts.stores());
    schema::CargarDatosReferencia(ts.stores(), schema::CarpetaDatos(ts.directorio()));
    const QRegularExpression numeroLibre(QStringLiteral("Z[A-Z]\\(([^)]*)\\)"));

    return arnes.Correr([&](const QByteArray& entrada) {
        const QStringList l = QString::fromUtf8(entrada).split(QLatin1Char('\n'));
        // The screens hand over the first 14 characters of the position box and the suffix
        // string trimmed.
        const QString posicion = l.value(0).left(14), sufijos = l.value(1).trimmed();
        const QString opciones = l.value(2);
        const int modo = opciones.startsWith(QLatin1Char('1')) ? 1 : 2;
        SeparadorDecimalScope sep(opciones.mid(1, 1) == QLatin1String(".") ? QStringLiteral(".")
                                                                           : QStringLiteral(","));
        Empleado empleado;
        for (const QString& r : l.mid(3))
            empleado.respuestas.push_back(r);
        AppContext ctx(ts.stores(), empleado, ts.settings(), ts.directorio());
        RegistrarComponentesNomenclador(ctx.componentes());
        // The list of a listed code: a row of the ones offered, a cancel, or nothing.
        ctx.pantallas().Registrar(
            QStringLiteral("FrmCargaSufijos"), [&](AppContext&, const QVariantMap& args) {
                const QStringList filas = args.value(QStringLiteral("opciones")).toStringList();
                const QString r = empleado.Siguiente().value_or(QStringLiteral("C"));
                bool ok = false;
                const int n = r.toInt(&ok);
                if (ok && n >= 0 && !filas.isEmpty())
                    return QVariant(filas.at(n % filas.size()));
                return r.startsWith(QLatin1Char('C')) ? QVariant(QStringLiteral("###CANCELADO###"))
                                                      : QVariant();
            });

        const QString r = Sufijos(ctx).VerificarSufijos(
            posicion, sufijos, modo, QStringLiteral("A-1"), QStringLiteral("AUTO"));
        const bool especial =
            r == QLatin1String("##ERRORNCM##") || r == QLatin1String("SIN SUFIJOS");
        if (!especial && r.endsWith(QLatin1Char('-'))) {
            const int v = ValidadorNCM(ctx).ValidarSubItem(posicion, r);
            Exigir(v == ValidadorNCM::Valido,
                   QStringLiteral("'%1' para %2 no pasa la verificación (%3)")
                       .arg(r, posicion)
                       .arg(v));
            // The string the clerk kept may be as it was; the ones built have six digits.
            if (r != sufijos && r != sufijos + QLatin1Char('-'))
                for (const auto& m : numeroLibre.globalMatch(r))
                    Exigir(QRegularExpression(QStringLiteral("^\\d{6}$"))
                               .match(m.captured(1))
                               .hasMatch(),
                           QStringLiteral("valor numérico '%1' en '%2'").arg(m.captured(1), r));
        }
        for (const QString& m : empleado.mensajes)
            Exigir(!m.trimmed().isEmpty(), QStringLiteral("mensaje vacío"));

        const QString actual = Sufijos(ctx).ActuSufijos(posicion, sufijos);
        Exigir(actual.isEmpty() || actual == QLatin1String("SIN SUFIJOS") ||
                   actual.endsWith(QLatin1Char('-')),
               QStringLiteral("ActuSufijos da '%1'").arg(actual));
        const QString reemplazo =
            Sufijos::Reemplazarsufijos(sufijos, l.value(3).left(2), l.value(4));
        Exigir(reemplazo.isEmpty() ||
                   reemplazo.contains(l.value(3).left(2) + QLatin1Char('(') +
                                      QString(l.value(4)).remove(QLatin1Char('\''))),
               QStringLiteral("Reemplazarsufijos da '%1'").arg(reemplazo));
        Sufijos::ValidaSufijoCordano(posicion, sufijos, l.value(3));
    });
}
