#include "liquidation/ReglasLiquidacion.h"

#include <algorithm>
#include <array>

namespace korven {

namespace {

constexpr std::array<const char*, 23> kSubregimenesConInsumos = {
    "EC02", "EC03",   "EC04", "EC05", "EC06", "EC16", "EG02", "EG03",
    "IC81", "IC82",   "IC83", "DIR6", "IC06", "IC26", "IC36", "IG06",
    "IT06", "RnaE06", "TG06", "TG16", "TR06", "MARE", "IDT4"};

constexpr std::array<const char*, 17> kSubregimenesTemporales = {
    "IT01", "IT03", "IT04", "IT05", "IT06", "IT07", "IT11", "IT13", "IT14",
    "IT15", "IT16", "IT17", "ET01", "ET02", "ETA1", "ETE1", "ETE2"};

constexpr std::array<int, 129> kPaisesConTope = {
    101, 103, 104, 105, 107, 108, 111, 112, 113, 115, 116, 117, 118, 120, 121, 124, 125, 126, 127,
    128, 129, 130, 131, 132, 133, 134, 135, 137, 139, 140, 141, 142, 144, 149, 151, 153, 156, 158,
    159, 200, 201, 202, 203, 204, 205, 206, 208, 209, 210, 211, 212, 213, 214, 215, 216, 217, 218,
    219, 220, 221, 222, 224, 225, 226, 232, 233, 234, 235, 236, 237, 238, 240, 303, 304, 307, 308,
    309, 312, 315, 316, 319, 320, 322, 323, 326, 327, 329, 331, 332, 333, 335, 341, 344, 345, 346,
    405, 406, 407, 409, 410, 411, 412, 413, 414, 415, 416, 417, 418, 419, 420, 422, 423, 424, 425,
    426, 427, 429, 430, 435, 436, 438, 448, 449, 451, 501, 504, 512, 513, 518};

template <size_t N> bool EnLista(const std::array<const char*, N>& lista, const QString& valor) {
    return std::any_of(lista.begin(), lista.end(),
                       [&valor](const char* s) { return valor == QLatin1String(s); });
}

} // namespace

QString MarcaPais(const QString& idpais) {
    const QString p = idpais.trimmed();
    if (p == QLatin1String("225") || p == QLatin1String("221"))
        return QStringLiteral("M");
    if (p == QLatin1String("203"))
        return QStringLiteral("B");
    if (p.isEmpty())
        return QString();
    return QStringLiteral("E");
}

bool SubregimenConInsumos(const QString& subregimen) {
    return EnLista(kSubregimenesConInsumos, subregimen.trimmed());
}

bool SubregimenTemporal(const QString& subregimen) {
    return EnLista(kSubregimenesTemporales, subregimen);
}

bool PaisConTopeArancel(const QString& pais) {
    bool ok = false;
    const int n = pais.trimmed().toInt(&ok);
    return ok && std::find(kPaisesConTope.begin(), kPaisesConTope.end(), n) != kPaisesConTope.end();
}

} // namespace korven
