#include "goods/CargaSubItems.h"

#include "goods/GrabacionSubItems.h"
#include "goods/SubItemsDatos.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/SentenciasPreparadas.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <memory>

namespace korven {

namespace {

const QString kCancelado = QStringLiteral("###CANCELADO###");

// Keeps what the save says of one line. A prompt cannot be answered by an import: it is
// refused and remembered, and the question that follows a refused prompt (whether to give up)
// is answered yes; any other question no. A save that keeps asking is stopped.
class DialogosImportacion : public Dialogos {
public:
    void Mensaje(const QString& texto, const QString&, Icono) override {
        Contar();
        mensajes << texto;
    }
    bool Pregunta(const QString& texto, const QString&, Icono) override {
        Contar();
        const bool rendirse = !pedido.isEmpty();
        if (pedido.isEmpty())
            pedido = texto;
        return rendirse;
    }
    std::optional<QString> PedirTexto(const QString& pregunta, const QString&, int,
                                      const QString&) override {
        Contar();
        if (pedido.isEmpty())
            pedido = pregunta;
        return std::nullopt;
    }
    void Limpiar() {
        mensajes.clear();
        pedido.clear();
        veces_ = 0;
    }

    QStringList mensajes;
    QString pedido;

private:
    void Contar() {
        if (++veces_ > 50)
            throw KorvenError(5,
                              QStringLiteral("La grabación pide datos que la importación no "
                                             "puede dar."),
                              QStringLiteral("CargaSubItems"));
    }
    int veces_ = 0;
};

// A context for the save that shares the stores of the program but answers through the dialogs
// above, whose suffix lists refuse as the clerk's Esc would, and whose per-user settings are
// written where nobody reads them (each save clears the Operation's AEC choice; an import does
// it once, when its transaction has committed).
struct Entorno {
    Entorno(AppContext& base, const QString& interno)
        : ctx(base.stores(), dialogos, borrador, base.directorioPrograma()),
          ean(SubItemsDatos(base).Caratula(interno).admiteEAN), grabacion(ctx, dialogos, interno) {
        ctx.config() = base.config();
        ctx.componentes() = base.componentes();
        ctx.InternoActual = base.InternoActual;
        ctx.FlagDto1439 = base.FlagDto1439;
        ctx.FlagDto1439A1 = base.FlagDto1439A1;
        ctx.FlagD1330A6 = base.FlagD1330A6;
        ctx.FlagD1330A7 = base.FlagD1330A7;
        ctx.FlagD1330A8 = base.FlagD1330A8;
        ctx.TotalProrrateo = base.TotalProrrateo;
        for (const char* lista : {"FrmCargaSufijos", "FrmSufijos"}) {
            const QString nombre = QString::fromLatin1(lista);
            ctx.pantallas().Registrar(nombre, [this](AppContext&, const QVariantMap& args) {
                if (dialogos.pedido.isEmpty()) {
                    const QStringList opciones =
                        args.value(QStringLiteral("opciones")).toStringList();
                    dialogos.pedido = opciones.isEmpty() ? QStringLiteral("la lista de sufijos")
                                                         : QStringLiteral("elegir entre ") +
                                                               opciones.join(QStringLiteral(" / "));
                }
                return QVariant(kCancelado);
            });
        }
    }

    // The verdict of one save.
    CargaSubItems::Veredicto Juzgar(bool grabado) const {
        CargaSubItems::Veredicto v;
        v.aceptada = grabado && dialogos.pedido.isEmpty();
        QStringList partes = dialogos.mensajes;
        if (!dialogos.pedido.isEmpty())
            partes.prepend(CargaSubItems::MensajeSufijos(dialogos.pedido));
        if (!v.aceptada && partes.isEmpty())
            partes << QStringLiteral("La línea no se grabó.");
        v.mensaje = partes.join(QStringLiteral(" / "));
        return v;
    }

    // Saves one line as the goods screen does; true when it was saved. What the save said is
    // kept for the verdict.
    bool Grabar(const LineaSubItem& original) {
        dialogos.Limpiar();
        LineaSubItem l = original;
        try {
            return grabacion.GrabarSubItems(2, l, false, ean).grabado;
        } catch (const KorvenError& err) {
            dialogos.mensajes << err.descripcion();
            return false;
        }
    }

    DialogosImportacion dialogos;
    SettingsStore borrador{QString()};
    AppContext ctx;
    const bool ean;
    GrabacionSubItems grabacion;
};

Conexion& ConexionInternos(AppContext& ctx) {
    return ctx.stores().getDataConnectionByEntity(QStringLiteral("INTERNOS"));
}

} // namespace

CargaSubItems::CargaSubItems(AppContext& ctx, QString interno)
    : ctx_(ctx), interno_(std::move(interno)) {}

QString CargaSubItems::MensajeSufijos(const QString& pedido) {
    return QStringLiteral("Los sufijos de la posición piden datos (%1): complete la columna "
                          "Sufijos o cargue esta línea en la pantalla.")
        .arg(pedido);
}

std::vector<CargaSubItems::Veredicto>
CargaSubItems::Verificar(const std::vector<LineaSubItem>& lineas, const Avance& avance) {
    SentenciasPreparadas reutilizar;
    Entorno e(ctx_, interno_);
    std::vector<Veredicto> r;
    r.reserve(lineas.size());
    const int total = static_cast<int>(lineas.size());
    for (const LineaSubItem& original : lineas) {
        bool grabado = false;
        {
            Transaccion t(ctx_.stores(), {QStringLiteral("INTERNOS")});
            grabado = e.Grabar(original);
            t.Deshacer();
        }
        r.push_back(e.Juzgar(grabado));
        if (avance)
            avance(static_cast<int>(r.size()), total);
    }
    return r;
}

CargaSubItems::Resultado CargaSubItems::Grabar(const std::vector<LineaSubItem>& lineas,
                                               const Avance& avance) {
    SentenciasPreparadas reutilizar;
    Resultado r;
    Entorno e(ctx_, interno_);
    const int total = static_cast<int>(lineas.size());
    Transaccion t(ctx_.stores(), {QStringLiteral("INTERNOS")});
    for (const LineaSubItem& original : lineas) {
        r.veredictos.push_back(e.Juzgar(e.Grabar(original)));
        // A save that failed, or whose own transaction rolled back the whole, ends the import.
        if (!r.veredictos.back().aceptada || !ConexionInternos(ctx_).enTransaccion()) {
            if (r.veredictos.back().aceptada) {
                r.veredictos.back().aceptada = false;
                r.veredictos.back().mensaje = QStringLiteral("La transacción se deshizo.");
            }
            t.Deshacer();
            return r;
        }
        if (avance)
            avance(static_cast<int>(r.veredictos.size()), total);
    }
    t.Confirmar();
    ctx_.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno_,
                                QString());
    r.grabado = true;
    r.grabadas = total;
    return r;
}

CargaSubItems::Resultado CargaSubItems::Importar(const std::vector<LineaSubItem>& lineas,
                                                 const Avance& avance) {
    SentenciasPreparadas reutilizar;
    Resultado r;
    Entorno e(ctx_, interno_);
    const int total = static_cast<int>(lineas.size());
    bool todas = true;
    auto t = std::make_unique<Transaccion>(ctx_.stores(), QStringList{QStringLiteral("INTERNOS")});
    for (const LineaSubItem& original : lineas) {
        r.veredictos.push_back(e.Juzgar(e.Grabar(original)));
        todas = todas && r.veredictos.back().aceptada;
        // A failure that rolled the whole back: nothing will be kept, the rest are still judged.
        if (!ConexionInternos(ctx_).enTransaccion()) {
            todas = false;
            t = std::make_unique<Transaccion>(ctx_.stores(),
                                              QStringList{QStringLiteral("INTERNOS")});
        }
        if (avance)
            avance(static_cast<int>(r.veredictos.size()), total);
    }
    if (!todas) {
        t->Deshacer();
        return r;
    }
    t->Confirmar();
    ctx_.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno_,
                                QString());
    r.grabado = true;
    r.grabadas = total;
    return r;
}

} // namespace korven
