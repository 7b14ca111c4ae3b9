#include "assembly/ControlesArmado.h"

#include "assembly/CorridaArmado.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/ValueRules.h"

#include <QHash>
#include <QStringList>

#include <iterator>
#include <vector>

namespace korven {

namespace {

const QString kSeccionMostrar = QStringLiteral("Seccion MostrarSub");

long long Id(const Recordset& rs, const QString& campo = QStringLiteral("id")) {
    return static_cast<long long>(EsNumero(rs.Fields(campo)));
}

std::vector<long long> Ids(Conexion& c, const QString& sql, const QVariantList& valores) {
    std::vector<long long> r;
    for (Recordset rs = c.Abrir(sql, valores); !rs.Eof(); rs.MoveNext())
        r.push_back(Id(rs));
    return r;
}

// A text column of the report: cut or filled with blanks on the right.
QString Izquierda(const QString& texto, int ancho) {
    return texto.leftJustified(ancho, QLatin1Char(' '), true);
}

// A number of the report: "00.00", to the right of its column.
QString Derecha(const QVariant& valor, int ancho) {
    return Formato(EsNumero(valor), QStringLiteral("00.00"))
        .rightJustified(ancho, QLatin1Char(' '));
}

// Sets the net kilos of the items, in statements of some hundred items; a later value of the
// same item wins, as if each had been written in turn.
void GuardarKilos(CorridaArmado& r, const std::vector<std::pair<long long, double>>& kilos) {
    QHash<long long, double> ultimo;
    for (const auto& [id, k] : kilos)
        ultimo.insert(id, k);
    QStringList valores;
    for (auto it = ultimo.cbegin(); it != ultimo.cend(); ++it) {
        valores << QStringLiteral("(%1,%2)").arg(it.key()).arg(r.Numero(it.value()));
        if (valores.size() == 500 || std::next(it) == ultimo.cend()) {
            r.c.Ejecutar(QStringLiteral("update item set totalkneto = v.column2 from (values ") +
                             valores.join(QLatin1Char(',')) +
                             QStringLiteral(") v where item.interno = ? and item.id = v.column1"),
                         {r.interno});
            valores.clear();
        }
    }
}

} // namespace

void ControlesArmado::VerificarIntegridad() {
    CorridaArmado& r = r_;
    try {
        // Items not measured in kilos that carry kilos: every group must have its kilos.
        const std::vector<long long> conKilos =
            Ids(r.c,
                QStringLiteral("select id from item where (estadistica<>'01' and deresp<>'01') "
                               "and totalkneto > 0 and interno = ? order by id"),
                {r.interno});
        QHash<long long, long long> sinKilos;
        for (Recordset rs = r.c.Abrir(QStringLiteral("select id, count(*) as cant from "
                                                     "groupsubitems where kgneto = 0 and "
                                                     "interno = ? group by id"),
                                      {r.interno});
             !rs.Eof(); rs.MoveNext())
            sinKilos.insert(Id(rs), static_cast<long long>(EsNumero(rs.Fields(1))));
        const int n1 = static_cast<int>(conKilos.size());
        for (int i = 0; i < n1; ++i) {
            r.progreso.Barra(i + 1, n1);
            if (sinKilos.value(conKilos[static_cast<size_t>(i)]) > 0) {
                MostrarSubItems(conKilos[static_cast<size_t>(i)]);
                r.ctx.ArmadoResultado = QStringLiteral("NO");
                return;
            }
        }

        // Items measured in kilos: their net kilos are the quantities of their groups, and
        // either every group has its quantity or none has.
        const std::vector<long long> enKilos =
            Ids(r.c,
                QStringLiteral("select id from item where (estadistica='01' or deresp = '01') "
                               "and interno = ? and (valorrelacionestadistica > 0 or "
                               "valorderesp > 0) order by id"),
                {r.interno});
        const auto Guardar = [&r](const std::vector<std::pair<long long, double>>& k) {
            GuardarKilos(r, k);
        };
        // The sums of the groups of every item in one read per condition: for each item its
        // first row by statistics unit and specific-duty unit.
        struct Cantidades {
            QString estadistica, deresp;
            double est = 0, esp = 0;
        };
        const auto Leer = [&](const QString& condicion) {
            QHash<long long, Cantidades> r2;
            Recordset rs = r.c.Abrir(
                QStringLiteral("select id,estadistica,deresp,sum(") +
                    r.Redondeo(QStringLiteral("valorrelacionestadistica"),
                               QStringLiteral("00.00")) +
                    QStringLiteral(") as est,sum(") +
                    r.Redondeo(QStringLiteral("valorderesp"), QStringLiteral("00.00")) +
                    QStringLiteral(") as esp from groupsubitems where ") + condicion +
                    QStringLiteral(" and interno= ? group by id,estadistica,deresp order by id, "
                                   "coalesce(estadistica,''), coalesce(deresp,'')"),
                {r.interno});
            for (; !rs.Eof(); rs.MoveNext())
                if (!r2.contains(Id(rs)))
                    r2.insert(Id(rs), {EsNull(rs.Fields(1)), EsNull(rs.Fields(2)),
                                       EsNumero(rs.Fields(3)), EsNumero(rs.Fields(4))});
            return r2;
        };
        const QHash<long long, Cantidades> llenos =
            Leer(QStringLiteral("(valorrelacionestadistica > 0 or valorderesp > 0)"));
        const QHash<long long, Cantidades> sinEst =
            Leer(QStringLiteral("valorrelacionestadistica = 0"));
        const QHash<long long, Cantidades> sinEsp = Leer(QStringLiteral("valorderesp = 0"));

        // The net kilos each item ends with, written together when the pass ends.
        std::vector<std::pair<long long, double>> kilos;
        const auto Fallar = [&](long long id, const char* resultado) {
            Guardar(kilos);
            MostrarSubItems(id);
            r.ctx.ArmadoResultado = QString::fromLatin1(resultado);
        };
        const int n2 = static_cast<int>(enKilos.size());
        for (int i = 0; i < n2; ++i) {
            r.progreso.Barra(i + 1, n2);
            const long long id = enKilos[static_cast<size_t>(i)];
            double a = 0;
            int tipo = 0;
            const auto lleno = llenos.constFind(id);
            if (lleno != llenos.constEnd()) {
                if (lleno->estadistica == QLatin1String("01")) {
                    tipo = 1;
                    a = lleno->est;
                    kilos.emplace_back(id, a);
                } else if (lleno->deresp == QLatin1String("01")) {
                    tipo = 2;
                    a = lleno->esp;
                    kilos.emplace_back(id, a);
                }
            }
            // The groups without quantity, by kind. An item whose filled groups are of
            // neither kind has none to read.
            const QHash<long long, Cantidades>* vacios =
                tipo == 1 ? &sinEst : (tipo == 2 ? &sinEsp : nullptr);
            const auto vacio = vacios ? vacios->constFind(id) : sinEst.constEnd();
            if (!vacios || vacio == vacios->constEnd()) {
                if (a <= 0)
                    return Fallar(id, "NO");
                continue;
            }
            const double b = tipo == 2 ? vacio->esp : vacio->est;
            kilos.emplace_back(id, b);
            if (b == 0 && a != 0)
                return Fallar(id, "NO");
            if (b != 0 && a <= 0)
                return Fallar(id, "No");
            r.ctx.ArmadoResultado = QStringLiteral("SI");
        }
        Guardar(kilos);
    } catch (const KorvenError& e) {
        if (e.origen() == kSeccionMostrar)
            throw;
        throw KorvenError(e.numero(), e.descripcion(),
                          QStringLiteral("[Seccion VerificarIntegridad] Source: ") + e.origen());
    }
}

void ControlesArmado::MostrarSubItems(long long idItem) {
    CorridaArmado& r = r_;
    QString t = QStringLiteral(
        "Verificación de Subitem's:\n"
        "--------------------------\n"
        "Los siguientes subitem's deberán tener cargados todos kilogramos o ninguno.\n"
        "Por favor revise los campos ESTADÍSTICA si es 01, DERECHO ESPECIFICO si es 01\n"
        "y Kilogramos Neto.\n\n"
        "UE = UNIDAD ESTADISTICA, UDE = UNIDAD DE DERECHO ESPECIFICO\n\n"
        "NCM             UD   CANTIDAD PRE. UNIT. UE   CANT. UE UDE  CANT UDE.    KG NETO\n"
        "--------------- -- ---------- ---------- -- ---------- --- ---------- ----------\n");
    try {
        Recordset rs =
            r.c.Abrir(QStringLiteral("select ncm,idunidad,cantidad,preciounitario,estadistica,"
                                     "valorrelacionestadistica,deresp,valorderesp,kgneto from "
                                     "groupsubitems where id = ? and interno = ? order by orden"),
                      {idItem, r.interno});
        for (; !rs.Eof(); rs.MoveNext()) {
            t += Izquierda(EsNull(rs.Fields(0)), 15) + QLatin1Char(' ') +
                 Izquierda(EsNull(rs.Fields(1)), 2) + QLatin1Char(' ') + Derecha(rs.Fields(2), 10) +
                 QLatin1Char(' ') + Derecha(rs.Fields(3), 10) + QLatin1Char(' ') +
                 Izquierda(EsNull(rs.Fields(4)), 2) + QLatin1Char(' ') + Derecha(rs.Fields(5), 10) +
                 QLatin1Char(' ') + Izquierda(EsNull(rs.Fields(6)), 3) + QLatin1Char(' ') +
                 Derecha(rs.Fields(7), 10) + QLatin1Char(' ') + Derecha(rs.Fields(8), 10) +
                 QLatin1Char('\n');
        }
    } catch (const KorvenError& e) {
        throw KorvenError(e.numero(), e.descripcion(), kSeccionMostrar);
    }
    r.MostrarDatos(t);
}

} // namespace korven
