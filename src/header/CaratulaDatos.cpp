#include "header/CaratulaDatos.h"

#include "header/FechasTexto.h"
#include "platform/AppContext.h"
#include "platform/Dialogos.h"
#include "platform/Formato.h"
#include "platform/KorvenError.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

CaratulaDatos::Campo C(const char* columna, const char* control, CaratulaDatos::Tipo tipo) {
    return {QString::fromLatin1(columna), QString::fromLatin1(control), tipo};
}

// One of the checks of the save: the message and the field the screen goes back to.
struct Falla {
    QString mensaje;
    QString control;
};

} // namespace

QList<CaratulaDatos::Campo> CaratulaDatos::CamposDeCarga() {
    using T = Tipo;
    return {
        C("idsubreg", "TxtSubReg", T::Codigo),
        C("idaduana", "txtIdAduana1", T::Codigo),
        C("idaduanasal", "TxtIdAduana2", T::Codigo),
        C("cuitcliente", "TxtCUITCliente", T::Codigo),
        C("cuitdespaduana", "TxtCuitAduana", T::Codigo),
        C("idvendedor", "Txtidvendedor", T::Codigo),
        C("fobdivisas", "Txtfobdivisas", T::Importe),
        C("fobcoddivisas", "TxtCoddivfob", T::Codigo),
        C("fobdivcambio", "TxtDivValorFob", T::Cambio),
        C("fletedivisas", "Txtfletedivisas", T::Importe),
        C("fletecoddivisas", "TxtCodDivFlete", T::Codigo),
        C("fletedivcambio", "TxtDivValorFlete", T::Cambio),
        C("segurodivisas", "Txtsegurodivisas", T::Importe),
        C("segurocoddivisas", "TxtCodDivseguro", T::Codigo),
        C("segurodivcambio", "TxtDivValorSeguro", T::Cambio),
        C("seguroporcentaje", "TxtPorc", T::Importe),
        C("valoraprorratear", "TxtProrratear", T::Importe),
        C("ajusteincluir", "TxtAjustIncluir", T::Importe),
        C("ajustededucir", "TxtAjustDeducir", T::Importe),
        C("idcondiciondeventa", "Txtidcondventa", T::Codigo),
        C("factorconver", "TxtFactCon", T::Numero),
        C("idpaisdestino", "Txtidpais", T::Codigo),
        C("motivodestsuspensiva", "Txtmotdestsusp", T::Texto),
        C("autorizdestsuspensiva", "TxtautdestSusp", T::Texto),
        C("plazoautorizacion", "TxtPlazoaut", T::Texto),
        C("cierreventa", "TxtCierreVenta", T::Texto),
        C("facilidadpago", "cboFacilidadPago", T::SoN),
        C("facturas", "ChFacturas", T::Marca),
        C("factura5", "txtDepAlm", T::Texto),
        C("DCEstMerc", "txtDCEstMerc", T::Texto),
        C("DCForzarEstMerc", "chkDCForzarEstMerc", T::Marca),
        C("DCPaisOrigen", "txtDCPaisOrigen", T::Texto),
        C("DCForzarPaisOrigen", "chkDCForzarPaisOrigen", T::Marca),
        C("DCPaisDestino", "txtDCPaisDest", T::Texto),
        C("DCStandard", "txtDCStandard", T::NSiVacio),
        C("DCRegalias", "TxtDCRegalias", T::NSiVacio),
        C("DCBancos", "txtDCBancos", T::Texto),
        C("DCKgNeto", "txtKgNeto", T::Importe),
        C("DCComExt", "txtDCComiExt", T::Importe),
        C("fechaembarque", "txtFechaEmbarque", T::Texto),
        C("opcionesiva", "cboOpcionIVA", T::Opcion),
        C("opcionesganancias", "cboOpcionesGanancias", T::Opcion),
    };
}

QList<CaratulaDatos::Campo> CaratulaDatos::CamposDeGuardado() {
    using T = Tipo;
    return {
        C("idsubreg", "TxtSubReg", T::Texto),
        C("idaduana", "txtIdAduana1", T::Texto),
        C("idaduanasal", "TxtIdAduana2", T::Texto),
        C("cuitcliente", "TxtCUITCliente", T::Texto),
        C("cuitdespaduana", "TxtCuitAduana", T::Texto),
        C("factura1", "LstFact", T::Texto),
        C("factura2", "TxtNombreven", T::Texto),
        C("factura3", "TxtNombreadu", T::Texto),
        C("factura5", "txtDepAlm", T::Texto),
        C("factura7", "TxtNombre", T::Texto),
        C("idvendedor", "Txtidvendedor", T::Texto),
        C("fobdivisas", "Txtfobdivisas", T::Numero),
        C("fobcoddivisas", "TxtCoddivfob", T::Texto),
        C("fobdivcambio", "TxtDivValorFob", T::Numero),
        C("fletedivisas", "Txtfletedivisas", T::Numero),
        C("fletecoddivisas", "TxtCodDivFlete", T::Texto),
        C("fletedivcambio", "TxtDivValorFlete", T::Numero),
        C("Segurodivisas", "Txtsegurodivisas", T::Numero),
        C("segurocoddivisas", "TxtCodDivseguro", T::Texto),
        C("segurodivcambio", "TxtDivValorSeguro", T::Numero),
        C("seguroporcentaje", "TxtPorc", T::Numero),
        C("valoraprorratear", "TxtProrratear", T::Numero),
        C("ajusteincluir", "TxtAjustIncluir", T::Numero),
        C("ajustededucir", "TxtAjustDeducir", T::Numero),
        C("factorconver", "TxtFactCon", T::Numero),
        C("idcondiciondeventa", "Txtidcondventa", T::Texto),
        C("idpaisdestino", "Txtidpais", T::Texto),
        C("motivodestsuspensiva", "Txtmotdestsusp", T::Texto),
        C("autorizdestsuspensiva", "TxtautdestSusp", T::Texto),
        C("plazoautorizacion", "TxtPlazoaut", T::Texto),
        C("cierreventa", "TxtCierreVenta", T::Texto),
        C("facilidadpago", "cboFacilidadPago", T::Texto),
        C("DCComext", "txtDCComiExt", T::Numero),
        C("DCEstMerc", "txtDCEstMerc", T::Texto),
        C("DCForzarEstMerc", "chkDCForzarEstMerc", T::Texto),
        C("DCPaisOrigen", "txtDCPaisOrigen", T::Texto),
        C("DCForzarPaisOrigen", "chkDCForzarPaisOrigen", T::Texto),
        C("DCPaisDestino", "txtDCPaisDest", T::Texto),
        C("DCStandard", "txtDCStandard", T::Texto),
        C("DCRegalias", "TxtDCRegalias", T::Texto),
        C("DCBancos", "txtDCBancos", T::Texto),
        C("DCKgNeto", "txtKgNeto", T::Numero),
        C("OpcionesIVA", "cboOpcionIVA", T::Texto),
        C("OpcionesGanancias", "cboOpcionesGanancias", T::Texto),
        C("fechaembarque", "txtFechaEmbarque", T::Texto),
    };
}

std::optional<CaratulaDatos::Carga> CaratulaDatos::Cargar(const QString& interno) {
    try {
        Conexion& cn = ctx_.stores().getDataConnectionByEntity(kInternos);
        Recordset rs =
            cn.Abrir(QStringLiteral("select * from caratula where interno = ?"), {interno});
        if (!IsRecord(rs)) {
            ctx_.dialogos().Mensaje(QStringLiteral("No se encontro Interno en base de datos"));
            return std::nullopt;
        }
        Carga carga;
        for (const Campo& c : CamposDeCarga()) {
            const QVariant v = rs.Fields(c.columna);
            QString texto;
            switch (c.tipo) {
            case Tipo::Importe:
                texto = EsVacio(v) ? QString() : Formato(EsNumero(v), QStringLiteral("00.00"));
                break;
            case Tipo::Cambio:
                // The rate as a number, its text in the system's separator, then the mask.
                texto = EsVacio(v) ? QString() : Formato(EsNumero(v), QStringLiteral("0.000000"));
                break;
            case Tipo::Numero:
                texto = EsVacio(v) ? QString() : EsNull(EsNumero(v));
                break;
            case Tipo::Marca:
                texto = EsNull(v).trimmed() == QStringLiteral("S") ? QStringLiteral("S")
                                                                   : QStringLiteral("N");
                break;
            case Tipo::SoN: {
                const QString t = EsNull(v).trimmed();
                texto = t == QStringLiteral("S") || t == QStringLiteral("N") ? t : QString();
                break;
            }
            case Tipo::NSiVacio:
                texto = EsNull(v).isEmpty() ? QStringLiteral("N") : EsNull(v);
                break;
            default:
                texto = EsNull(v);
                break;
            }
            carga.valores.append({c, texto});
        }
        Recordset fs = cn.Abrir(
            QStringLiteral("select factura from facturas where interno = ? order by orden"),
            {interno});
        for (; !fs.Eof(); fs.MoveNext())
            carga.facturas << EsNull(fs.Fields(QStringLiteral("factura")));
        return carga;
    } catch (const KorvenError& e) {
        ctx_.dialogos().Mensaje(e.descripcion() + QStringLiteral(" - ") +
                                    QString::number(e.numero()) + QStringLiteral(" / "),
                                QStringLiteral("KORVEN"), Dialogos::Icono::Critico);
        return std::nullopt;
    }
}

double CaratulaDatos::SumaProrrateo(const QString& interno) {
    Recordset rs = ctx_.stores().getDataConnectionByEntity(kInternos).Abrir(
        QStringLiteral("select sum(valor) as tot from prorrateo where interno = ?"), {interno});
    return IsRecord(rs) ? EsNumero(rs.Fields(QStringLiteral("tot"))) : 0.0;
}

QString CaratulaDatos::Factura1(const QStringList& facturas) {
    QString t;
    for (const QString& f : facturas)
        t += f + QLatin1Char(',');
    t = t.left(80);
    if (!t.isEmpty())
        t.chop(1);
    return t;
}

CaratulaDatos::Sentencia CaratulaDatos::SentenciaGuardado(const QString& interno,
                                                          const Pantalla& p) {
    Sentencia r;
    QStringList partes;
    for (const Campo& c : CamposDeGuardado()) {
        partes << c.columna + QStringLiteral(" = ?");
        if (c.columna == QStringLiteral("factura1"))
            r.valores << Factura1(p.facturas);
        else if (c.tipo == Tipo::Numero)
            // An amount as the clerk typed it; empty (or not a number) is 0.
            r.valores << NumeroTecleado(p.Texto(c.control));
        else
            r.valores << p.Texto(c.control);
    }
    r.sql = QStringLiteral("update caratula set ") + partes.join(QStringLiteral(",")) +
            QStringLiteral(" where interno = ? ");
    r.valores << interno;
    return r;
}

void CaratulaDatos::ControlFacturas(const Pantalla& p) {
    if (p.EsVisible(QStringLiteral("TxtFactura")) && p.facturas.isEmpty() &&
        !p.Texto(QStringLiteral("TxtSubReg")).startsWith(QStringLiteral("EC")))
        ctx_.dialogos().Mensaje(QStringLiteral("Faltan Facturas."), QStringLiteral("KORVEN"),
                                Dialogos::Icono::Exclamacion);
}

CaratulaDatos::Resultado CaratulaDatos::Guardar(const QString& interno, Pantalla& p,
                                                QString* foco) {
    auto enfocar = [&](const QString& control) {
        if (foco)
            *foco = control;
    };
    Dialogos& dlg = ctx_.dialogos();
    const QString titulo = QStringLiteral("KORVEN");
    try {
        const QString cierre = p.Texto(QStringLiteral("TxtCierreVenta"));
        if (!cierre.trimmed().isEmpty() && !FechasTexto::EsFecha(cierre)) {
            dlg.Mensaje(QStringLiteral("El valor ingresado en el campo CIERRE DE VENTA no es una "
                                       "FECHA valida. Corrija el Valor o deje vacio el campo."),
                        titulo, Dialogos::Icono::Critico);
            enfocar(QStringLiteral("TxtCierreVenta"));
            return Resultado::Quedarse;
        }

        std::optional<Falla> falla;
        auto vacio = [&](const char* control) {
            return p.Texto(QString::fromLatin1(control)).trimmed().isEmpty();
        };
        auto visible = [&](const char* control) {
            return p.EsVisible(QString::fromLatin1(control));
        };
        auto numerico = [&](const char* control) {
            return EsNumeroTecleado(p.Texto(QString::fromLatin1(control)).trimmed());
        };
        auto fallar = [&](const char* mensaje, const char* control) {
            falla = Falla{QString::fromUtf8(mensaje), QString::fromLatin1(control)};
        };
        if (vacio("TxtCuitAduana")) {
            fallar("Debe ingresar el CUIT de DESPACHANTE", "TxtCuitAduana");
        } else if (vacio("Txtidvendedor") && visible("Txtidvendedor")) {
            fallar("Debe seleccionar vendedor", "Txtidvendedor");
        } else if (vacio("Txtidcondventa") && visible("Txtidcondventa")) {
            fallar("Debe ingresar Condición de venta", "Txtidcondventa");
        }
        if (!falla && visible("txtFechaEmbarque") && !vacio("txtFechaEmbarque")) {
            const QDate f = FechasTexto::Leer(p.Texto(QStringLiteral("txtFechaEmbarque")));
            if (!f.isValid())
                fallar("Debe ingresar una fecha valida en Fecha de Embarque", "txtFechaEmbarque");
            else
                p.Poner(QStringLiteral("txtFechaEmbarque"),
                        FormatoFecha(f, QStringLiteral("dd/mm/yyyy")));
        }
        struct Grupo {
            const char* valor;
            const char* divisa;
            const char* cambio;
            const char* mValor;
            const char* mDivisa;
            const char* mCambio;
        };
        const Grupo grupos[] = {
            {"Txtfobdivisas", "TxtCoddivfob", "TxtDivValorFob",
             "El valor FOB debe ser un valor númerico", "Codigo de divisa no ingresado",
             "El tipo de cambio debe ser un valor numerico valido"},
            {"Txtfletedivisas", "TxtCodDivFlete", "TxtDivValorFlete",
             "El valor FLETE debe ser un valor númerico", "Codigo de divisa en FLETE no ingresado",
             "El tipo de cambio en FLETE debe ser un valor numerico valido"},
            {"Txtsegurodivisas", "TxtCodDivseguro", "TxtDivValorSeguro",
             "El valor SEGURO debe ser un valor númerico",
             "Codigo de divisa en SEGURO no ingresado",
             "El tipo de cambio en SEGURO debe ser un valor numerico valido"},
        };
        for (const Grupo& g : grupos) {
            if (falla || !visible(g.valor))
                continue;
            if (!numerico(g.valor))
                fallar(g.mValor, g.valor);
            else if (vacio(g.divisa))
                fallar(g.mDivisa, g.divisa);
            else if (!numerico(g.cambio))
                fallar(g.mCambio, g.cambio);
        }
        // The other amounts may stay empty (they are saved as 0), but what is typed in them
        // must read as a number: a text such as "1,234.5" is refused rather than guessed. The
        // commissions abroad keep their own rule: what is no number is written as 0.
        const struct {
            const char* control;
            const char* mensaje;
        } importes[] = {
            {"TxtPorc", "El PORCENTAJE de SEGURO debe ser un valor númerico"},
            {"TxtProrratear", "El valor PRORRATEOS debe ser un valor númerico"},
            {"TxtAjustIncluir", "El valor AJUSTE INCLUIR debe ser un valor númerico"},
            {"TxtAjustDeducir", "El valor AJUSTE DEDUCIR debe ser un valor númerico"},
            {"TxtFactCon", "El FACTOR DE CONVERGENCIA debe ser un valor númerico"},
            {"txtKgNeto", "El valor KG NETO TOTAL debe ser un valor númerico"},
        };
        for (const auto& i : importes)
            if (!falla && visible(i.control) && !vacio(i.control) && !numerico(i.control))
                fallar(i.mensaje, i.control);
        if (falla) {
            dlg.Mensaje(falla->mensaje, titulo, Dialogos::Icono::Exclamacion);
            if (!dlg.Pregunta(
                    QStringLiteral("desea SALIR de la caratula, sin guardar la información?"))) {
                enfocar(falla->control);
                return Resultado::Quedarse;
            }
            ControlFacturas(p);
            return Resultado::Salir;
        }

        const Sentencia sql = SentenciaGuardado(interno, p);
        if (visible("cboFacilidadPago") && vacio("cboFacilidadPago")) {
            dlg.Mensaje(QStringLiteral("Debe seleccionar S/N en Facilidad de Pago"), titulo,
                        Dialogos::Icono::Critico);
            enfocar(QStringLiteral("cboFacilidadPago"));
            return Resultado::Quedarse;
        }
        if (ctx_.stores().getDataConnectionByEntity(kInternos).Ejecutar(sql.sql, sql.valores) > 0)
            return Resultado::Guardado;
        if (dlg.Pregunta(
                QStringLiteral("Los datos no pueden ser guardados, desea SALIR de caratula?"))) {
            ControlFacturas(p);
            return Resultado::Salir;
        }
        return Resultado::Quedarse;
    } catch (const KorvenError& e) {
        dlg.Mensaje(QString::number(e.numero()) + QStringLiteral(" - ") + e.descripcion() +
                        QStringLiteral(" Seccion: korven.caratula::"),
                    titulo, Dialogos::Icono::Critico);
        return Resultado::Quedarse;
    }
}

} // namespace korven
