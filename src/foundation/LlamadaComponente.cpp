#include "foundation/LlamadaComponente.h"

#include "platform/KorvenError.h"

#include <QMetaMethod>
#include <QMetaObject>
#include <QMetaProperty>
#include <QObject>
#include <array>

namespace korven {

namespace {

constexpr int kSinMiembro = 438;
constexpr int kTipos = 13;

KorvenError SinMiembro(const QObject& c, const char* miembro) {
    return KorvenError(kSinMiembro,
                       QStringLiteral("El objeto no admite esta propiedad o método: ") +
                           QString::fromUtf8(miembro),
                       c.objectName());
}

KorvenError Tipos(const QObject& c) {
    return KorvenError(kTipos, QStringLiteral("No coinciden los tipos"), c.objectName());
}

} // namespace

void AsignarMiembro(QObject& c, const char* miembro, const QVariant& valor) {
    const QMetaObject* mo = c.metaObject();
    const int i = mo->indexOfProperty(miembro);
    if (i < 0)
        throw SinMiembro(c, miembro);
    const QMetaProperty p = mo->property(i);
    QVariant v = valor;
    if (!p.isWritable() || (v.metaType() != p.metaType() && !v.convert(p.metaType())) ||
        !p.write(&c, v))
        throw Tipos(c);
}

QVariant LlamarMiembro(QObject& c, const char* miembro, const QVariantList& args) {
    const QMetaObject* mo = c.metaObject();
    const QByteArray nombre(miembro);
    for (int i = 0; i < mo->methodCount(); ++i) {
        const QMetaMethod m = mo->method(i);
        if (m.name() != nombre || m.parameterCount() != args.size() ||
            m.access() != QMetaMethod::Public || m.methodType() == QMetaMethod::Signal)
            continue;
        if (args.size() > 10)
            throw Tipos(c);
        QVariantList valores = args;
        std::array<QGenericArgument, 10> a{};
        for (int k = 0; k < valores.size(); ++k) {
            const QMetaType t = m.parameterMetaType(k);
            if (valores[k].metaType() != t && !valores[k].convert(t))
                throw Tipos(c);
            a[static_cast<size_t>(k)] = QGenericArgument(t.name(), valores[k].constData());
        }
        QVariant resultado;
        QGenericReturnArgument r;
        const QMetaType rt = m.returnMetaType();
        if (rt.isValid() && rt.id() != QMetaType::Void) {
            resultado = QVariant(rt);
            r = QGenericReturnArgument(rt.name(), resultado.data());
        }
        if (!m.invoke(&c, Qt::DirectConnection, r, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7],
                      a[8], a[9]))
            throw SinMiembro(c, miembro);
        return resultado;
    }
    throw SinMiembro(c, miembro);
}

} // namespace korven
