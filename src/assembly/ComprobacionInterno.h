#pragma once

#include <QString>

namespace korven {

class AppContext;

// The countries of origin and of provenance compared across header, goods lines, groups and
// items of an assembled Operation.
class ComprobacionInterno {
public:
    explicit ComprobacionInterno(AppContext& ctx) : ctx_(ctx) {}

    // The report, one line per finding or per item checked, separated by line ends;
    // hayDiferencias is set when something differs. Errors are trapped into the text.
    QString ChequearInterno(const QString& interno, bool& hayDiferencias);
    // Runs the check and, when something differs, shows the report in
    // "Frm_ComprobacionErrores"; answers whether something differs.
    bool Comprobar(const QString& interno);

private:
    AppContext& ctx_;
};

} // namespace korven
