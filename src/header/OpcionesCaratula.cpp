#include "header/OpcionesCaratula.h"

namespace korven {

namespace {

QStringList CodigosIVA() {
    return {QStringLiteral("NOCONTESTA"), QStringLiteral("NO_VALIDA"), QStringLiteral("IVAAD1"),
            QStringLiteral("IVAAD2")};
}

QStringList CodigosGanancias() {
    return {QStringLiteral("NOCONTESTA"), QStringLiteral("NO_VALIDA"), QStringLiteral("COMERC"),
            QStringLiteral("BDEUSO"), QStringLiteral("USOPAR")};
}

QString Codigo(const QStringList& codigos, int posicion) {
    return posicion >= 0 && posicion < codigos.size() ? codigos.at(posicion) : QString();
}

} // namespace

QStringList OpcionesCaratula::EntradasIVA() {
    return {QStringLiteral("<No contestar>"), QStringLiteral("Ninguno"),
            QStringLiteral("Uso o Consumo Particular"),
            QStringLiteral("Importación definitiva de cosas muebles")};
}

QStringList OpcionesCaratula::EntradasGanancias() {
    return {QStringLiteral("<No contestar>"), QStringLiteral("Ninguno"),
            QStringLiteral("Comercial"), QStringLiteral("Bien de Uso"),
            QStringLiteral("Uso Particular")};
}

QString OpcionesCaratula::CodigoIVA(int posicion) {
    return Codigo(CodigosIVA(), posicion);
}

QString OpcionesCaratula::CodigoGanancias(int posicion) {
    return Codigo(CodigosGanancias(), posicion);
}

int OpcionesCaratula::PosicionIVA(const QString& codigo) {
    return static_cast<int>(CodigosIVA().indexOf(codigo.trimmed()));
}

int OpcionesCaratula::PosicionGanancias(const QString& codigo) {
    return static_cast<int>(CodigosGanancias().indexOf(codigo.trimmed()));
}

} // namespace korven
