#include "goods/Sufijos.h"

#include "goods/ValidadorNCM.h"
#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMetaObject>
#include <memory>

namespace korven {

namespace {

const QString kCancelado = QStringLiteral("###CANCELADO###");

// Engines and vehicles: their suffixes are not held to the article code.
constexpr const char* kMotores[] = {"8407", "8408", "8701", "8702", "8703", "8704", "8706", "8707"};

// The busy cursor for the life of the object, when there is a screen to show it on.
class CursorOcupado {
public:
    CursorOcupado() : activo_(qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        if (activo_)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~CursorOcupado() {
        if (activo_)
            QGuiApplication::restoreOverrideCursor();
    }
    CursorOcupado(const CursorOcupado&) = delete;
    CursorOcupado& operator=(const CursorOcupado&) = delete;

private:
    bool activo_;
};

// What the clerk types into a free code: text (first letter "A"), a number ("Z"), or, before
// any of those, nothing is accepted.
enum class Clase { Ninguna, Texto, Numero };

// The prefixes of the suffixes that apply to a position, in the order of the codes.
QStringList Prefijos(Conexion& cn, const QString& lista) {
    Recordset rs = cn.Abrir(QStringLiteral("select distinct left(sufijo,2) as asufijo from "
                                           "sufidos where sim in ") +
                            lista + QStringLiteral(" order by asufijo"));
    QStringList p;
    for (; !rs.Eof(); rs.MoveNext())
        p << EsNull(rs.Fields(QStringLiteral("asufijo")));
    return p;
}

Recordset FilasPrefijo(Conexion& cn, const QString& lista, const QString& asufijo) {
    return cn.Abrir(QStringLiteral("select sufijo,detalle from sufidos where sim in ") + lista +
                        QStringLiteral(" and left(sufijo,2) = ? order by sufijo"),
                    {asufijo.trimmed()});
}

void ReportarFalla(AppContext& ctx, const QString& descripcion, int numero,
                   const QString& seccion) {
    ctx.dialogos().Mensaje(descripcion + QLatin1Char('\n') + QStringLiteral(" - seccion [") +
                               seccion + QStringLiteral("]::") + QStringLiteral(" - nro ") +
                               QString::number(numero),
                           QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
}

// The present value of a free code in a suffix string: the text between "<code>(" and ")".
QString ValorLibre(const QString& sufijos, const QString& codigo) {
    const qsizetype p = sufijos.indexOf(codigo + QLatin1Char('('));
    if (p < 0)
        return {};
    const qsizetype inicio = p + codigo.size() + 1;
    const qsizetype fin = sufijos.indexOf(QLatin1Char(')'), inicio);
    if (fin < 0)
        return {};
    return sufijos.mid(inicio, fin - inicio);
}

// The present option of a listed code: the four characters of its token.
QString ValorListado(const QString& sufijos, const QString& codigo) {
    if (sufijos.startsWith(codigo))
        return sufijos.left(4);
    const qsizetype guion = sufijos.indexOf(QLatin1Char('-') + codigo);
    if (guion >= 0)
        return sufijos.mid(guion + 1, 4);
    const qsizetype p = sufijos.indexOf(codigo);
    if (p < 0)
        return {};
    return sufijos.mid(p, 5).remove(QLatin1Char('-')).left(4);
}

QString ConGuionFinal(QString s) {
    if (!s.endsWith(QLatin1Char('-')))
        s += QLatin1Char('-');
    return s;
}

} // namespace

QString Sufijos::LimpiarValor(const QString& texto) {
    QString t = texto;
    for (const QChar c : {QLatin1Char('('), QLatin1Char(')'), QLatin1Char('-')})
        t.replace(c, QLatin1Char(' '));
    return ComponerValor(t);
}

QString Sufijos::VerificarSufijos(const QString& posicion, const QString& sufijos, int modo,
                                  const QString& articulo, const QString& descripcion) {
    CursorOcupado cursor;
    QString resultado;
    Dialogos& dlg = ctx_.dialogos();
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
        if (cn.Abrir(QStringLiteral("select \"001\" as pos from ncm where \"001\" = ? and "
                                    "\"002\" = ?"),
                     {posicion.left(10), posicion.mid(11, 3)})
                .Eof()) {
            dlg.Mensaje(QStringLiteral("No existe la posicion ") + posicion +
                            QStringLiteral(" en el nomenclador"),
                        QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
            return QStringLiteral("##ERRORNCM##");
        }

        const QString lista = ValidadorNCM::ListaSim(posicion);
        const QStringList prefijos = Prefijos(cn, lista);
        if (prefijos.isEmpty()) {
            dlg.Mensaje(QStringLiteral("No se encontro Sufijo en el nomenclador"));
            return QStringLiteral("SIN SUFIJOS");
        }

        if (modo != 1 && !sufijos.isEmpty()) {
            if (ctx_.SufijosDeArticulo)
                dlg.Mensaje(QStringLiteral("Se encontró diferencias, entre los sufijos de su "
                                           "ARTICULO y la posición del nomenclador\n\nSe "
                                           "procederá a reconfirmarlos."),
                            QStringLiteral("Verificación de Sufijos"),
                            Dialogos::Icono::Informacion);
            std::unique_ptr<QObject> validador =
                ctx_.componentes().Crear(QStringLiteral("ValidadorNCM"), ctx_);
            int r = -1;
            if (!QMetaObject::invokeMethod(validador.get(), "ValidarSubItem", Qt::DirectConnection,
                                           Q_RETURN_ARG(int, r), Q_ARG(QString, posicion),
                                           Q_ARG(QString, sufijos)))
                throw KorvenError(438,
                                  QStringLiteral("El objeto no acepta esta propiedad o "
                                                 "método"),
                                  QStringLiteral("ValidadorNCM"));
            if (r == 0)
                return ConGuionFinal(sufijos);
            if (!ctx_.SufijosDeArticulo)
                dlg.Mensaje(QStringLiteral("Se encontro diferencias entre los Sufijos de Subitem "
                                           "y el nomenclador."));
        }

        Clase clase = Clase::Ninguna;
        for (const QString& asufijo : prefijos) {
            Recordset rs = FilasPrefijo(cn, lista, asufijo);
            if (rs.Eof())
                continue;
            const QString primero = EsNull(rs.Fields(QStringLiteral("sufijo")));
            if (primero.size() == 2) {
                const QString codigo = primero.trimmed();
                const QChar letra = codigo.left(1).toUpper().at(0);
                if (letra == QLatin1Char('A'))
                    clase = Clase::Texto;
                else if (letra == QLatin1Char('Z'))
                    clase = Clase::Numero;
                const QString actual = sufijos.isEmpty() ? QString() : ValorLibre(sufijos, codigo);
                const QString titulo = EsNull(rs.Fields(QStringLiteral("detalle"))).trimmed();
                int maximo = clase == Clase::Numero ? 6 : 20;
                QString porDefecto = actual;
                if (actual.isEmpty() &&
                    (codigo == QLatin1String("AB") || codigo == QLatin1String("AI"))) {
                    maximo = 20;
                    porDefecto = articulo;
                } else if (actual.isEmpty() && codigo == QLatin1String("AA")) {
                    maximo = 20;
                    porDefecto = descripcion;
                }
                QString valor;
                for (;;) {
                    const std::optional<QString> r = dlg.PedirTexto(
                        QStringLiteral("SUFIJO ") + codigo, titulo, maximo, porDefecto);
                    const QString respuesta = r ? r->left(maximo) : QString();
                    if (respuesta.isEmpty()) {
                        if (dlg.Pregunta(QStringLiteral("Desea cancelar la operación"),
                                         QStringLiteral("KORVEN"), Dialogos::Icono::Pregunta))
                            return {};
                        continue;
                    }
                    valor = LimpiarValor(respuesta);
                    if (clase == Clase::Numero) {
                        if (!EsNumeroTecleado(valor)) {
                            dlg.Mensaje(QStringLiteral("Debe Ingresar un Valor Númerico"));
                            continue;
                        }
                        valor = Formato(NumeroTecleado(valor.left(6)), QStringLiteral("000000"));
                        break;
                    }
                    if (clase == Clase::Texto && !valor.trimmed().isEmpty())
                        break;
                }
                if (!resultado.trimmed().isEmpty())
                    resultado += QLatin1Char('-');
                resultado += codigo + QLatin1Char('(') + valor + QLatin1Char(')');
            } else if (primero.size() == 4) {
                const QString codigo = asufijo.trimmed();
                const QString actual =
                    sufijos.isEmpty() ? QString() : ValorListado(sufijos, codigo);
                QStringList opciones{codigo + QStringLiteral("00 - Ninguna opción")};
                for (; !rs.Eof(); rs.MoveNext())
                    opciones << EsNull(rs.Fields(QStringLiteral("sufijo"))).trimmed() +
                                    QStringLiteral(" - ") +
                                    EsNull(rs.Fields(QStringLiteral("detalle"))).trimmed();
                const QString elegido = ctx_.AbrirModal(QStringLiteral("FrmCargaSufijos"),
                                                        {{QStringLiteral("opciones"), opciones},
                                                         {QStringLiteral("seleccion"), actual}})
                                            .toString();
                if (elegido.isEmpty()) {
                    dlg.Mensaje(QStringLiteral("Error en generar sufijos"));
                    return resultado;
                }
                if (elegido == kCancelado) {
                    dlg.Mensaje(QStringLiteral("Carga de SUFIJOS cancelada"),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Exclamacion);
                    return resultado;
                }
                if (!resultado.trimmed().isEmpty())
                    resultado += QLatin1Char('-');
                resultado += elegido.left(4);
            }
        }
        ctx_.SufijosDeArticulo = false;
        return ConGuionFinal(resultado);
    } catch (const KorvenError& e) {
        ReportarFalla(ctx_, e.descripcion(), e.numero(),
                      QStringLiteral("KORVEN.Global.VerificarSufijos"));
    }
    return resultado;
}

QString Sufijos::ActuSufijos(const QString& posicion, const QString& sufijosViejos) {
    if (posicion.isEmpty())
        return {};
    QString resultado;
    bool buscado = false;
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(QStringLiteral("NCM"));
        const QString lista = ValidadorNCM::ListaSim(posicion);
        const QStringList prefijos = Prefijos(cn, lista);
        if (prefijos.isEmpty()) {
            ctx_.dialogos().Mensaje(QStringLiteral("No se encontro Sufijo en el nomenclador"));
            return QStringLiteral("SIN SUFIJOS");
        }
        const QString viejos = sufijosViejos.toUpper();
        for (const QString& asufijo : prefijos) {
            const QString prefijo = asufijo.trimmed().toUpper();
            for (Recordset rs = FilasPrefijo(cn, lista, asufijo); !rs.Eof(); rs.MoveNext()) {
                const QString sufijo = EsNull(rs.Fields(QStringLiteral("sufijo")));
                if (sufijo.size() == 2) {
                    const qsizetype p = viejos.indexOf(sufijo.toUpper() + QLatin1Char('('));
                    if (p < 0)
                        continue;
                    const qsizetype inicio = p + 3;
                    const qsizetype fin = sufijosViejos.indexOf(QLatin1Char(')'), inicio);
                    if (fin < 0)
                        continue;
                    const QString valor = sufijosViejos.mid(inicio, fin - inicio);
                    if (valor.trimmed().isEmpty())
                        continue;
                    resultado +=
                        QLatin1Char('-') + sufijo + QLatin1Char('(') + valor + QLatin1Char(')');
                    buscado = true;
                } else if (sufijo.size() == 4) {
                    if (sufijosViejos.left(2) == prefijo) {
                        resultado += QLatin1Char('-') + sufijosViejos.left(4);
                    } else if (const qsizetype p =
                                   sufijosViejos.indexOf(QLatin1Char('-') + asufijo);
                               p >= 0) {
                        resultado += sufijosViejos.mid(p, 5);
                        buscado = true;
                    }
                }
            }
        }
    } catch (const KorvenError& e) {
        ReportarFalla(ctx_, e.descripcion(), e.numero(),
                      QStringLiteral("KORVEN.FrmSubItems.ActuSufijos"));
        return resultado;
    }
    if (resultado.startsWith(QLatin1Char('-')))
        resultado.remove(0, 1);
    ctx_.SufijosDeArticulo = buscado;
    return ConGuionFinal(resultado);
}

QString Sufijos::Reemplazarsufijos(const QString& sufijos, const QString& codigo,
                                   const QString& valor) {
    const qsizetype p = sufijos.indexOf(codigo + QLatin1Char('('));
    if (p < 0)
        return {};
    const qsizetype largoCabeza = p + codigo.size() + 1;
    const qsizetype cola = sufijos.indexOf(QStringLiteral(")-"), largoCabeza);
    if (cola < 0)
        return {};
    return sufijos.left(largoCabeza) + QString(valor).remove(QLatin1Char('\'')) + sufijos.mid(cola);
}

bool Sufijos::ValidaSufijoCordano(const QString& posicion, const QString& sufijos,
                                  const QString& articulo) {
    if (posicion == QLatin1String("8409.91.12.100G") ||
        posicion == QLatin1String("8409.99.12.100C"))
        return true;
    for (const char* capitulo : kMotores)
        if (posicion.left(4) == QLatin1String(capitulo))
            return true;
    const QString codigo = LimpiarTexto(articulo);
    return sufijos.contains(QStringLiteral("AI(") + codigo + QLatin1Char(')')) ||
           sufijos.contains(QStringLiteral("AB(") + codigo + QLatin1Char(')'));
}

} // namespace korven
