#include "header/ImportesCaratula.h"

#include "platform/Formato.h"
#include "platform/ValueRules.h"

namespace korven {

std::optional<QString> ImportesCaratula::Multiplicar(const QString& valor, const QString& cambio) {
    if (!EsNumeroTecleado(valor) || !EsNumeroTecleado(cambio))
        return std::nullopt;
    const double producto = NumeroTecleado(valor) * NumeroTecleado(cambio);
    if (producto == 0)
        return QString();
    return Formato(producto, QStringLiteral("00.00"));
}

std::optional<ImportesCaratula::Seguro>
ImportesCaratula::SeguroPorcentual(const QString& porcentaje, const QString& dolFob,
                                   const QString& dolFlete, const QString& prorratear,
                                   double sumaCodigosProrrateo, const QString& cambioSeguro) {
    if (!EsNumeroTecleado(porcentaje) || NumeroTecleado(porcentaje) == 0)
        return std::nullopt;
    if (!EsNumeroTecleado(dolFob) || !EsNumeroTecleado(dolFlete))
        return std::nullopt;
    double base = NumeroTecleado(dolFob) + NumeroTecleado(dolFlete);
    if (EsNumeroTecleado(prorratear) || sumaCodigosProrrateo > 0)
        base += sumaCodigosProrrateo + NumeroTecleado(prorratear);
    Seguro s;
    const double dolares = ImportePorcentual(base, NumeroTecleado(porcentaje));
    s.dolares = Formato(dolares, QStringLiteral("00.00"));
    if (EsNumeroTecleado(cambioSeguro) && NumeroTecleado(cambioSeguro) > 0) {
        s.conDivisas = true;
        s.divisas = Formato(dolares / NumeroTecleado(cambioSeguro), QStringLiteral("00.00"));
    }
    return s;
}

QString ImportesCaratula::CodigoDivisa(const QString& codigo) {
    return Formato(QVariant(codigo), QStringLiteral("000"));
}

QString ImportesCaratula::FormatoImporte(const QString& texto) {
    if (!EsNumeroTecleado(texto))
        return texto;
    return Formato(NumeroTecleado(texto), QStringLiteral("00.00"));
}

QString ImportesCaratula::FormatoCambio(double cambio) {
    return Formato(cambio, QStringLiteral("0.000000"));
}

} // namespace korven
