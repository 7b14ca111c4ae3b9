#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace korven {

class AppContext;

// ValidadorNCM: checks a goods line against the nomenclator. A position is valid when the
// nomenclator has it; a suffix string is valid when its codes are exactly the prefixes of the
// suffixes that apply to the position, each once (a token repeated as it stands counts once),
// a free code with a value and a listed code with one of its options or "00".
class ValidadorNCM : public QObject {
    Q_OBJECT
public:
    // What ValidarSubItem answers.
    static constexpr int Valido = 0;
    static constexpr int PosicionInvalida = 1;
    static constexpr int SufijosInvalidos = 2;
    static constexpr int Desconocido = 3;

    explicit ValidadorNCM(AppContext& ctx, QObject* parent = nullptr);

    // The component works on the stores of the program that made it; a store directory handed
    // over here is that one.
    Q_INVOKABLE void SetDataAccess(QObject* stores);

    // 0 valid, 1 invalid position, 2 invalid suffixes, 3 a fault of the store. The position is
    // read by place: [001] characters 1-10, [002] 12-14, and [003] the 15th when there is one.
    Q_INVOKABLE int ValidarSubItem(const QString& ncm, const QString& sufijos);

    // The marks of a position: {"lapi": [059] is "*", "estampillas": [041] is "*"}; both false
    // for a position the nomenclator lacks.
    Q_INVOKABLE QVariantMap MarcasPosicion(const QString& ncm);

    // The four texts of sufidos.sim that apply to a position (chapter, heading, subheading and
    // full level), and the same as an SQL list "('..','..','..','..')".
    static QStringList NivelesSim(const QString& posicion);
    static QString ListaSim(const QString& posicion);

private:
    bool ExistePosicion(const QString& ncm);

    AppContext& ctx_;
};

} // namespace korven
