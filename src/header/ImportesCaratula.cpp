#include "header/ImportesCaratula.h"

#include "platform/Formato.h"
#include "platform/ValueRules.h"

namespace korven {

std::optional<QString> ImportesCaratula::Multiplicar(const QString& valor, const QString& cambio) {
    if (!EsNumerico(valor) || !EsNumerico(cambio))
        return std::nullopt;
    const double producto = EsNumero(valor) * EsNumero(cambio);
    if (producto == 0)
        return QString();
    return Formato(producto, QStringLiteral("00.00"));
}

std::optional<ImportesCaratula::Seguro>
ImportesCaratula::SeguroPorcentual(const QString& porcentaje, const QString& dolFob,
                                   const QString& dolFlete, const QString& prorratear,
                                   double sumaCodigosProrrateo, const QString& cambioSeguro) {
    if (!EsNumerico(porcentaje) || EsNumero(porcentaje) == 0)
        return std::nullopt;
    if (!EsNumerico(dolFob) || !EsNumerico(dolFlete))
        return std::nullopt;
    double base = EsNumero(dolFob) + EsNumero(dolFlete);
    if (EsNumerico(prorratear) || sumaCodigosProrrateo > 0)
        base += sumaCodigosProrrateo + EsNumero(prorratear);
    Seguro s;
    const double dolares = ImportePorcentual(base, EsNumero(porcentaje));
    s.dolares = Formato(dolares, QStringLiteral("00.00"));
    if (EsNumerico(cambioSeguro) && EsNumero(cambioSeguro) > 0) {
        s.conDivisas = true;
        s.divisas = Formato(dolares / EsNumero(cambioSeguro), QStringLiteral("00.00"));
    }
    return s;
}

QString ImportesCaratula::CodigoDivisa(const QString& codigo) {
    return Formato(QVariant(codigo), QStringLiteral("000"));
}

QString ImportesCaratula::FormatoImporte(const QString& texto) {
    if (!EsNumerico(texto))
        return texto;
    return Formato(EsNumero(texto), QStringLiteral("00.00"));
}

QString ImportesCaratula::FormatoCambio(double cambio) {
    return Formato(cambio, QStringLiteral("0.000000"));
}

} // namespace korven
