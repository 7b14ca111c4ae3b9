#include "assembly/CorridaArmado.h"

#include "platform/AppContext.h"
#include "platform/Conexion.h"
#include "platform/Dialogos.h"
#include "platform/KorvenError.h"
#include "platform/Recordset.h"
#include "platform/SettingsStore.h"
#include "platform/StoreDirectory.h"
#include "platform/ValueRules.h"

#include <QMetaObject>
#include <memory>

namespace korven {

namespace {

const QString kInternos = QStringLiteral("INTERNOS");

QString Texto(const Recordset& rs, const char* campo) {
    return EsNull(rs.Fields(QString::fromLatin1(campo)));
}

} // namespace

CorridaArmado::CorridaArmado(AppContext& contexto, QString numero, ProgresoArmado& p)
    : ctx(contexto), c(contexto.stores().getDataConnectionByEntity(kInternos)),
      personal(contexto.stores().getDataConnectionByEntity(QStringLiteral("PERSONAL"))),
      ncm(contexto.stores().getDataConnectionByEntity(QStringLiteral("NCM"))),
      systablas(contexto.stores().getDataConnectionByEntity(QStringLiteral("SYSTABLAS"))),
      interno(std::move(numero)), progreso(p), OrdenItems(contexto.config().ARMARITEM == 1 ? 1 : 2),
      FlgIdArtTOOtros(contexto.config().FlgIdArtTOOtros) {}

QString CorridaArmado::X() const {
    return SqlTexto(interno);
}

QString CorridaArmado::Redondeo(const QString& expr, const QString& mascara) const {
    return RedondeoSql(ctx.stores(), kInternos, expr, mascara);
}

QString CorridaArmado::Numero(const QVariant& valor) const {
    return SqlNumero(valor, ctx.stores().getDecimalSeparatorbyEntity(kInternos));
}

long long CorridaArmado::SiguienteOrden(const QString& tabla) {
    auto it = ordenes_.find(tabla);
    if (it == ordenes_.end()) {
        const QVariant max = c.Escalar(QStringLiteral("select max(orden) from ") + tabla +
                                       QStringLiteral(" where interno = ") + X());
        it = ordenes_.insert(tabla, static_cast<long long>(EsNumero(max)));
    }
    return ++it.value();
}

void CorridaArmado::OlvidarOrden(const QString& tabla) {
    ordenes_.remove(tabla);
}

void CorridaArmado::LeerCaratula() {
    Recordset rs = c.Abrir(
        QStringLiteral("select idsubreg, cuitcliente, motivodestsuspensiva, fobdivisas, "
                       "valoraprorratear, fletedivisas, segurodivisas, dckgneto, dccomext, "
                       "dcestmerc, dcforzarestmerc, dcpaisorigen, dcforzarpaisorigen, "
                       "dcpaisdestino, dcstandard, dcregalias, onccaacuerdo, onccaelaborador, "
                       "onccaespecie, onccafaneador, onccamatadero, onccameccoorgbio, "
                       "onccares3106, onccasispro, onccacategoria, onccacortes, opcionesiva, "
                       "opcionesganancias from caratula where interno = ?"),
        {interno});
    car = CaratulaArmado();
    if (rs.Eof())
        return;
    car.existe = true;
    car.idsubreg = Texto(rs, "idsubreg");
    car.cuitcliente = Texto(rs, "cuitcliente");
    car.motivodestsuspensiva = Texto(rs, "motivodestsuspensiva");
    car.fobdivisas = EsNumero(rs.Fields(QStringLiteral("fobdivisas")));
    car.valoraprorratear = EsNumero(rs.Fields(QStringLiteral("valoraprorratear")));
    car.fletedivisas = EsNumero(rs.Fields(QStringLiteral("fletedivisas")));
    car.segurodivisas = EsNumero(rs.Fields(QStringLiteral("segurodivisas")));
    car.dckgneto = EsNumero(rs.Fields(QStringLiteral("dckgneto")));
    car.dccomext = EsNumero(rs.Fields(QStringLiteral("dccomext")));
    car.dcestmerc = Texto(rs, "dcestmerc");
    car.dcforzarestmerc = Texto(rs, "dcforzarestmerc") == QLatin1String("S");
    car.dcpaisorigen = Texto(rs, "dcpaisorigen");
    car.dcforzarpaisorigen = Texto(rs, "dcforzarpaisorigen") == QLatin1String("S");
    car.dcpaisdestino = Texto(rs, "dcpaisdestino");
    car.dcstandard = Texto(rs, "dcstandard");
    car.dcregalias = Texto(rs, "dcregalias");
    car.onccaacuerdo = Texto(rs, "onccaacuerdo");
    car.onccaelaborador = Texto(rs, "onccaelaborador");
    car.onccaespecie = Texto(rs, "onccaespecie");
    car.onccafaneador = Texto(rs, "onccafaneador");
    car.onccamatadero = Texto(rs, "onccamatadero");
    car.onccameccoorgbio = Texto(rs, "onccameccoorgbio");
    car.onccares3106 = Texto(rs, "onccares3106");
    car.onccasispro = Texto(rs, "onccasispro");
    car.onccacategoria = Texto(rs, "onccacategoria");
    car.onccacortes = Texto(rs, "onccacortes");
    car.opcionesiva = Texto(rs, "opcionesiva");
    car.opcionesganancias = Texto(rs, "opcionesganancias");

    // Import or export, by the subregime.
    Recordset sta =
        c.Abrir(QStringLiteral("select cstaimpexp from sta where id = ?"), {car.idsubreg});
    importacion = !sta.Eof() && Texto(sta, "cstaimpexp") == QLatin1String("I");

    // The client's exemptions.
    cliente = ClienteLiquidacion();
    Recordset cl = personal.Abrir(
        QStringLiteral("select cuit, eximgan, eximganvalor, eximganvalortemp, ivaareduccion, "
                       "ivaareduccionvalor, cvdi, ivaareduccionvalortemp, ingbru, exceplapiaec "
                       "from clientes where cuit = ?"),
        {car.cuitcliente});
    const bool temporal = car.idsubreg.startsWith(QLatin1String("TG"));
    if (!cl.Eof()) {
        cliente.cuit = Texto(cl, "cuit");
        cliente.IngresosBrutos = EsNumero(cl.Fields(QStringLiteral("ingbru")));
        cliente.EsCVDI = Texto(cl, "cvdi").toUpper() == QLatin1String("S");
        if (Texto(cl, "eximgan").toUpper() == QLatin1String("S"))
            cliente.Ganancias = EsNumero(cl.Fields(temporal ? QStringLiteral("eximganvalortemp")
                                                            : QStringLiteral("eximganvalor")));
        if (Texto(cl, "ivaareduccion").toUpper() == QLatin1String("S"))
            cliente.Reduccion =
                EsNumero(cl.Fields(temporal ? QStringLiteral("ivaareduccionvalortemp")
                                            : QStringLiteral("ivaareduccionvalor")));
    }
    if (car.idsubreg.startsWith(QLatin1String("EC")) ||
        car.idsubreg.startsWith(QLatin1String("DIR")))
        cliente.Ganancias = 0;
}

void CorridaArmado::MostrarDatos(const QString& texto) {
    if (progreso.MostrarDatos(texto))
        ctx.ContarInteraccion();
    else
        ctx.dialogos().Mensaje(texto, QStringLiteral("Resultados"), Dialogos::Icono::Ninguno);
}

void CorridaArmado::EnviarGrupoIdSub(long long idRoot, const QString& lista) {
    const QString origen = QStringLiteral("go_SupplyLink.EnviarGrupoIdSub");
    const QString nombre = QStringLiteral("SupplyLink.Main");
    if (!ctx.componentes().Instalado(nombre))
        throw KorvenError(KorvenError::ComponenteNoInstalado,
                          ComponentRegistry::MensajeNoInstalado(nombre), origen);
    std::unique_ptr<QObject> link = ctx.componentes().Crear(nombre, ctx);
    link->setProperty("Interno", interno);
    bool ok = false;
    const bool llamado = QMetaObject::invokeMethod(link.get(), "EnviarGrupoIdSub",
                                                   Q_RETURN_ARG(bool, ok), Q_ARG(QString, interno),
                                                   Q_ARG(qlonglong, idRoot), Q_ARG(QString, lista));
    if (!llamado || !ok)
        throw KorvenError(
            11101, QStringLiteral("Error en enviar vinculación de subitems a insumos"), origen);
}

void CorridaArmado::PreguntarAEC() {
    const QString app = QStringLiteral("KORVEN");
    const QString seccion = QStringLiteral("AEC");
    if (ctx.pantallas().Registrada(QStringLiteral("FrmABMClientes"))) {
        ctx.AbrirModal(QStringLiteral("FrmABMClientes"), {{QStringLiteral("interno"), interno}});
    } else {
        // Without screens the dialog's three answers are two questions.
        QString a = QStringLiteral("N");
        const QString titulo = QStringLiteral("Destino del repuesto");
        if (ctx.dialogos().Pregunta(QStringLiteral("Destino del repuesto: ¿calcular el arancel "
                                                   "externo común de la posición?"),
                                    titulo))
            a = ctx.dialogos().Pregunta(QStringLiteral("Destino del repuesto: ¿Reposición? "
                                                       "(No: Producción)"),
                                        titulo)
                    ? QStringLiteral("R")
                    : QStringLiteral("P");
        ctx.settings().SaveSetting(app, seccion, interno, QString());
        ctx.settings().SaveSetting(app, seccion, interno, a);
    }
    ctx.CalculoAEC = ctx.settings().GetSetting(app, seccion, interno, QStringLiteral("N"));
}

void CorridaArmado::GuardarAEC_N() {
    ctx.settings().SaveSetting(QStringLiteral("KORVEN"), QStringLiteral("AEC"), interno,
                               QStringLiteral("N"));
}

} // namespace korven
