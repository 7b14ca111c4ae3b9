#include "schema/ImportadorCsv.h"

#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"
#include "schema/DialectoEsquema.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>
#include <cmath>
#include <limits>

namespace korven::schema {

namespace {

// At most this many bound values in one statement (old SQLite builds stop at 999).
constexpr int MaximoParametros = 900;

KorvenError ErrorImportacion(const QString& texto) {
    return KorvenError(3751, texto, QStringLiteral("ImportadorCsv"));
}

// A number as a store writes it: digits with "." as the decimal point ("-1234.5", "3e2"),
// whatever the locale; no grouping, no comma, no "nan" or "inf".
bool LeerNumero(const QString& texto, double* valor) {
    static const QRegularExpression numero(
        QStringLiteral("^[-+]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([eE][-+]?[0-9]+)?$"));
    const QString t = texto.trimmed();
    if (!numero.match(t).hasMatch())
        return false;
    bool ok = false;
    *valor = QLocale::c().toDouble(t, &ok);
    return ok;
}

bool LeerFecha(const QString& texto, QDate* fecha) {
    const QString t = texto.trimmed();
    *fecha = QDate::fromString(t, QStringLiteral("yyyy-MM-dd"));
    if (!fecha->isValid())
        *fecha = QDate::fromString(t, QStringLiteral("dd/MM/yyyy"));
    return fecha->isValid();
}

// The form of the values that the system reads by place.
QString FormaInvalida(const DefTabla& t, const QString& columna, const QString& valor) {
    static const QRegularExpression codigo(QStringLiteral("^\\d{4}\\.\\d{2}\\.\\d{2}$"));
    static const QRegularExpression apertura(QStringLiteral("^\\d{3}$"));
    static const QRegularExpression letra(QStringLiteral("^[A-Z]$"));
    if (t.nombre == QLatin1String("ncm")) {
        if (columna == QLatin1String("001") && !codigo.match(valor).hasMatch())
            return QStringLiteral("La columna 001 debe tener la forma NNNN.NN.NN: '%1'").arg(valor);
        if (columna == QLatin1String("002") && !apertura.match(valor).hasMatch())
            return QStringLiteral("La columna 002 debe tener 3 dígitos: '%1'").arg(valor);
        if (columna == QLatin1String("003") && !letra.match(valor).hasMatch())
            return QStringLiteral("La columna 003 debe ser una letra mayúscula: '%1'").arg(valor);
    } else if (t.nombre == QLatin1String("sufidos")) {
        if (columna == QLatin1String("sim") && valor.size() != 14)
            return QStringLiteral("La columna sim debe tener 14 caracteres: '%1'").arg(valor);
        if (columna == QLatin1String("sufijo") && valor.trimmed().size() != 2 &&
            valor.trimmed().size() != 4)
            return QStringLiteral("La columna sufijo debe tener 2 o 4 caracteres: '%1'").arg(valor);
    }
    return {};
}

QVariant NuloDe(TipoColumna tipo) {
    switch (tipo) {
    case TipoColumna::Numero:
        return QVariant(QMetaType::fromType<double>());
    case TipoColumna::Contador:
        return QVariant(QMetaType::fromType<int>());
    case TipoColumna::Fecha:
    case TipoColumna::FechaHora:
        return QVariant(QMetaType::fromType<QDate>());
    case TipoColumna::Texto:
        break;
    }
    return QVariant(QMetaType::fromType<QString>());
}

} // namespace

QString ImportadorCsv::TextoClave(const QVariantList& valores, const QList<int>& indices) {
    QStringList partes;
    for (int i : indices) {
        const QVariant& v = valores.at(i);
        if (v.isNull())
            partes << QString();
        else if (v.metaType().id() == QMetaType::Double || v.metaType().id() == QMetaType::Int)
            partes << QString::number(v.toDouble(), 'g', 15);
        else if (v.metaType().id() == QMetaType::QDate)
            partes << v.toDate().toString(Qt::ISODate);
        else
            partes << v.toString();
    }
    return partes.join(QChar(0x1F));
}

ImportadorCsv::Preparacion
ImportadorCsv::Preparar(const DefTabla& t, const LectorCsv& csv, Motor motor,
                        const std::function<bool(const QHash<QString, QString>&)>& filtro) {
    Preparacion p;
    p.tabla = &t;
    if (csv.encabezado().isEmpty())
        throw ErrorImportacion(QStringLiteral("El archivo no tiene encabezado."));
    std::vector<const DefColumna*> defs;
    for (QString nombre : csv.encabezado()) {
        nombre = nombre.trimmed().toLower();
        if (nombre.startsWith(QLatin1Char('[')) && nombre.endsWith(QLatin1Char(']')))
            nombre = nombre.mid(1, nombre.size() - 2);
        const DefColumna* d = t.Columna(nombre);
        if (!d)
            throw ErrorImportacion(
                QStringLiteral("La columna '%1' no es de la tabla %2.").arg(nombre, t.nombre));
        if (p.columnas.contains(d->nombre))
            throw ErrorImportacion(
                QStringLiteral("La columna '%1' está repetida en el encabezado.").arg(nombre));
        p.columnas << d->nombre;
        defs.push_back(d);
    }
    QList<int> clave;
    for (const QString& k : t.clave) {
        const int i = static_cast<int>(p.columnas.indexOf(k));
        if (i < 0)
            throw ErrorImportacion(
                QStringLiteral("Falta la columna clave '%1' de la tabla %2.").arg(k, t.nombre));
        clave << i;
    }

    QHash<QString, int> vistas; // key -> line where it was first seen
    const int n = static_cast<int>(p.columnas.size());
    for (const LectorCsv::Fila& fila : csv.filas()) {
        if (filtro) {
            QHash<QString, QString> campos;
            for (int i = 0; i < n && i < fila.valores.size(); ++i)
                campos.insert(p.columnas.at(i), fila.valores.at(i));
            if (!filtro(campos))
                continue;
        }
        ++p.leidas;
        if (fila.valores.size() != n) {
            p.rechazos.push_back({fila.linea, QStringLiteral("La línea tiene %1 campos y el "
                                                             "encabezado %2.")
                                                  .arg(fila.valores.size())
                                                  .arg(n)});
            continue;
        }
        QVariantList valores;
        QString motivo;
        for (int i = 0; i < n && motivo.isEmpty(); ++i) {
            const DefColumna& d = *defs[static_cast<size_t>(i)];
            const QString& texto = fila.valores.at(i);
            switch (d.tipo) {
            case TipoColumna::Texto:
                // An empty text is stored as '' (never NULL), as the system writes it.
                motivo = FormaInvalida(t, d.nombre, texto);
                valores << QVariant(texto.isNull() ? QString(QLatin1String("")) : texto);
                break;
            case TipoColumna::Numero:
            case TipoColumna::Contador: {
                double v = 0;
                if (texto.trimmed().isEmpty()) {
                    if (d.tipo == TipoColumna::Contador)
                        motivo = QStringLiteral("Falta el valor de la columna %1.").arg(d.nombre);
                    valores << NuloDe(d.tipo);
                } else if (!LeerNumero(texto, &v)) {
                    motivo = QStringLiteral("Valor no numérico en la columna %1: '%2'")
                                 .arg(d.nombre, texto);
                } else if (d.tipo == TipoColumna::Contador &&
                           (v != std::floor(v) || v < std::numeric_limits<int>::min() ||
                            v > std::numeric_limits<int>::max())) {
                    // A counter is a whole number the store's integer holds; cut, it would
                    // become another row's number.
                    motivo = QStringLiteral("La columna %1 debe tener un número entero: '%2'")
                                 .arg(d.nombre, texto);
                } else {
                    valores << (d.tipo == TipoColumna::Contador ? QVariant(static_cast<int>(v))
                                                                : QVariant(v));
                }
                break;
            }
            case TipoColumna::Fecha:
            case TipoColumna::FechaHora: {
                QDate f;
                if (texto.trimmed().isEmpty())
                    valores << NuloDe(d.tipo);
                else if (!LeerFecha(texto, &f))
                    motivo = QStringLiteral("Fecha inválida en la columna %1: '%2' (se espera "
                                            "AAAA-MM-DD o DD/MM/AAAA)")
                                 .arg(d.nombre, texto);
                else
                    valores << (motor == Motor::PostgreSQL ? QVariant(f)
                                                           : QVariant(f.toString(Qt::ISODate)));
                break;
            }
            }
        }
        // The first column of a key names the row; the others may be empty (a rule for
        // every sub-regime, a cut for every position).
        if (motivo.isEmpty() && !clave.isEmpty() &&
            fila.valores.at(clave.first()).trimmed().isEmpty())
            motivo = QStringLiteral("Falta el valor de la columna clave %1.")
                         .arg(p.columnas.at(clave.first()));
        if (motivo.isEmpty() && !clave.isEmpty()) {
            const QString k = TextoClave(valores, clave);
            if (vistas.contains(k))
                motivo = QStringLiteral("Clave repetida en el archivo (ya está en la línea %1).")
                             .arg(vistas.value(k));
            else
                vistas.insert(k, fila.linea);
        }
        if (!motivo.isEmpty()) {
            p.rechazos.push_back({fila.linea, motivo});
            continue;
        }
        p.lineas.push_back(fila.linea);
        p.valores.push_back(valores);
    }
    return p;
}

void ImportadorCsv::Insertar(Conexion& c, const Preparacion& p) {
    if (p.valores.empty())
        return;
    const int n = static_cast<int>(p.columnas.size());
    QStringList columnas;
    for (const QString& col : p.columnas)
        columnas << DialectoEsquema::Identificador(col);
    QStringList marcas;
    for (int i = 0; i < n; ++i)
        marcas << QStringLiteral("?");
    const QString grupo = QLatin1Char('(') + marcas.join(QLatin1Char(',')) + QLatin1Char(')');
    const QString cabeza = QStringLiteral("insert into ") + p.tabla->nombre + QStringLiteral(" (") +
                           columnas.join(QLatin1Char(',')) + QStringLiteral(") values ");
    const size_t porSentencia = static_cast<size_t>(std::max(1, MaximoParametros / n));
    for (size_t desde = 0; desde < p.valores.size(); desde += porSentencia) {
        const size_t hasta = std::min(p.valores.size(), desde + porSentencia);
        QStringList grupos;
        QVariantList parametros;
        for (size_t i = desde; i < hasta; ++i) {
            grupos << grupo;
            parametros << p.valores[i];
        }
        c.Ejecutar(cabeza + grupos.join(QLatin1Char(',')), parametros);
    }
}

ImportadorCsv::Resultado ImportadorCsv::Importar(const QString& tabla, const QString& archivo,
                                                 const Opciones& opciones) {
    const LectorCsv csv = LectorCsv::DeArchivo(archivo);
    Resultado r = Importar(tabla, csv, opciones);
    r.latin1 = csv.latin1();
    return r;
}

ImportadorCsv::Resultado ImportadorCsv::Importar(const QString& tabla, const LectorCsv& csv,
                                                 const Opciones& opciones) {
    const DefTabla* t = Catalogo::Tabla(tabla);
    if (!t)
        throw ErrorImportacion(QStringLiteral("La tabla %1 no existe en el esquema.").arg(tabla));
    Conexion& c = stores_.getDataConnectionByEntity(t->entidad);
    Preparacion p = Preparar(*t, csv, c.motor());

    // Keys the table holds already (they stay unless the table is replaced).
    if (!opciones.reemplazar && !t->clave.isEmpty()) {
        QStringList cols;
        QList<int> indices;
        for (int i = 0; i < t->clave.size(); ++i) {
            cols << DialectoEsquema::Identificador(t->clave.at(i));
            indices << i;
        }
        QSet<QString> existentes;
        Recordset rs = c.Abrir(QStringLiteral("select ") + cols.join(QLatin1Char(',')) +
                               QStringLiteral(" from ") + t->nombre);
        for (; !rs.Eof(); rs.MoveNext()) {
            QVariantList v;
            for (int i = 0; i < t->clave.size(); ++i) {
                QVariant x = rs.Fields(i);
                const DefColumna* d = t->Columna(t->clave.at(i));
                if (d->tipo == TipoColumna::Texto)
                    x = EsNull(x);
                else if (d->tipo == TipoColumna::Fecha)
                    x = QDate::fromString(EsNull(x).left(10), Qt::ISODate);
                else if (!x.isNull())
                    x = EsNumero(x);
                v << x;
            }
            existentes.insert(TextoClave(v, indices));
        }
        QList<int> enFila;
        for (const QString& k : t->clave)
            enFila << static_cast<int>(p.columnas.indexOf(k));
        std::vector<int> lineas;
        std::vector<QVariantList> valores;
        for (size_t i = 0; i < p.valores.size(); ++i) {
            QVariantList v = p.valores[i];
            for (int k = 0; k < enFila.size(); ++k) {
                QVariant& x = v[enFila.at(k)];
                if (x.metaType().id() == QMetaType::QString &&
                    t->Columna(t->clave.at(k))->tipo == TipoColumna::Fecha)
                    x = QDate::fromString(x.toString(), Qt::ISODate);
            }
            if (existentes.contains(TextoClave(v, enFila))) {
                p.rechazos.push_back({p.lineas[i], QStringLiteral("La clave ya existe en la "
                                                                  "tabla %1.")
                                                       .arg(t->nombre)});
                continue;
            }
            lineas.push_back(p.lineas[i]);
            valores.push_back(p.valores[i]);
        }
        p.lineas = std::move(lineas);
        p.valores = std::move(valores);
    }
    std::sort(p.rechazos.begin(), p.rechazos.end(),
              [](const Rechazo& a, const Rechazo& b) { return a.linea < b.linea; });

    Resultado r;
    r.tabla = t->nombre;
    r.leidas = p.leidas;
    r.rechazos = p.rechazos;
    if (!r.rechazos.empty() && !opciones.parcial)
        return r;
    Transaccion tx(stores_, {t->entidad});
    if (opciones.reemplazar)
        c.Ejecutar(QStringLiteral("delete from ") + t->nombre);
    Insertar(c, p);
    tx.Confirmar();
    r.importadas = static_cast<int>(p.valores.size());
    return r;
}

} // namespace korven::schema
