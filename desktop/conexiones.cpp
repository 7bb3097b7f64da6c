#include "desktop/conexiones.h"

#include <QApplication>
#include <memory>
#include <optional>

#include "component/nombres.h"
#include "desktop/dialogos.h"
#include "desktop/escritorio_qt.h"
#include "desktop/exportar.h"
#include "desktop/fechas.h"
#include "desktop/impresion.h"
#include "desktop/mostrador.h"
#include "desktop/pantallas.h"
#include "desktop/preguntas.h"
#include "desktop/ventana_pendientes.h"
#include "desktop/vista.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/busquedas.h"
#include "host/standalone/catalogos.h"
#include "host/standalone/documento.h"
#include "host/standalone/parametros.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"
#include "recepcion/explicacion.h"
#include "recepcion/porque.h"

namespace vista {

namespace {

// The branch's field has no lookup of its own.
std::string CatalogoDe(const controles::LookupField& campo) {
  return campo.nombre() == kv207::control::kSucursal ? "SUCURSAL" : campo.diseno().idconsulta;
}

// Names of keys, shown to whoever works the windows.
void ConectaNombres(Contexto& contexto, autonomo::Anfitrion& anfitrion) {
  contexto.catalogo = CatalogoDe;
  contexto.nombre = [&anfitrion](const std::string& catalogo, const std::string& clave) -> std::optional<QString> {
    try {
      autonomo::Conexion& conexion = *anfitrion.conexion();
      const autonomo::Busqueda& busqueda = autonomo::BusquedaDe(catalogo);
      if (const auto nombre = autonomo::NombreDe(conexion, busqueda, clave)) return Q(*nombre);
      if (!autonomo::HayFilas(conexion, busqueda)) return QString();
      return std::nullopt;
    } catch (const com::Error&) {  // a caption more; the key can be used without it
      return QString();
    }
  };
}

// The search of a field's keys; a client's is the front desk's, which types him.
std::string BuscaClave(const controles::LookupField& campo, const QString& filtro, autonomo::Anfitrion& anfitrion,
                       EscritorioQt& escritorio, Mostrador& mostrador) {
  autonomo::Conexion& conexion = *anfitrion.conexion();
  const std::string catalogo = CatalogoDe(campo);
  if (com::IgualSinCaja(catalogo, "Cliente")) {
    mostrador.BuscaHuesped(campo.nombre(), filtro.toStdString());
    return {};
  }
  if (catalogo == "RESERVACION") return BuscaReservacion(conexion, escritorio);
  const autonomo::Busqueda& busqueda = autonomo::BusquedaDe(catalogo);
  Busqueda dialogo(Q(busqueda.titulo), autonomo::LeeFilas(conexion, busqueda), escritorio.Frente());
  dialogo.Filtra(filtro);
  return Atiende(dialogo) == QDialog::Accepted ? dialogo.Elegida() : std::string();
}

// How the prices of the lines came about, and which of them were agreed.
void DiceLosPrecios(Contexto& contexto, EscritorioQt& escritorio) {
  contexto.explica = [&escritorio](int fila) {
    const controles::Formulario* principal = escritorio.Principal();
    if (principal == nullptr) return QString();
    return Q(recepcion::TextoDe(fila < 0 ? recepcion::ExplicaTotal(*principal)
                                         : recepcion::ExplicaRenglon(*principal, fila)));
  };
  contexto.acordado = [&escritorio, acordados = std::make_shared<recepcion::Acordados>()](int fila) {
    const controles::Formulario* principal = escritorio.Principal();
    return principal != nullptr && acordados->Es(*principal, fila);
  };
  contexto.avisoDeRenglones = [&escritorio] {
    const controles::Formulario* principal = escritorio.Principal();
    return principal == nullptr ? QString() : Q(recepcion::AvisoDePrecio(*principal));
  };
}

// What the toolbar and the calendars tell of the host, to a person and in a script's pictures.
void DiceLoHecho(Contexto& contexto, autonomo::Anfitrion& anfitrion) {
  contexto.demo = autonomo::EsDemo(*anfitrion.conexion());
  contexto.estado = [&anfitrion](const std::string& folio) {
    const auto filas =
        anfitrion.conexion()->Consulta("SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = ?", {folio});
    const bool dice = !filas->Eof() && !filas->Fields(0).Value().EsNulo();
    return dice ? Q(autonomo::EstadoLegible(com::CStr(filas->Fields(0).Value()))) : QString();
  };
  contexto.hoy = [&anfitrion] { return ADate(anfitrion.reloj().Ahora()); };
  contexto.novedad = [&anfitrion] {
    const auto& ultima = anfitrion.novedades().Ultima();
    return ultima ? Contexto::Novedad{Q(ultima->Texto()), Q(ultima->folio)} : Contexto::Novedad();
  };
}

// The front desk's windows, the lists and the catalogues, in the hotel's menu.
void PoneMenu(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion, Mostrador& mostrador) {
  auto& menu = escritorio.contexto().menu;
  menu.push_back({QStringLiteral("Ho&y"), [&mostrador] { mostrador.AbreHoy(); }, Qt::Key_F5});
  menu.push_back({QStringLiteral("Cua&dro de habitaciones"), [&mostrador] { mostrador.AbreCuadro(); }, Qt::Key_F7});
  menu.push_back({QStringLiteral("Coti&zar…"), [&mostrador] { mostrador.AbreCotizacion(); }, Qt::Key_F8});
  menu.push_back({QStringLiteral("Repon&er habitaciones"), [&mostrador] { mostrador.ReponeHabitaciones(); }, 0});
  menu.push_back({QStringLiteral("Hué&sped…"), [&mostrador] { mostrador.AbreHuesped(); }, Qt::Key_F9});
  menu.push_back({QStringLiteral("De dónde sale el &total…"), [&mostrador] { mostrador.Explica(); },
                  QKeyCombination(Qt::ControlModifier, Qt::Key_T).toCombined()});
  menu.push_back({QStringLiteral("Cifr&as"), [&mostrador] { mostrador.AbreCifras(); }, Qt::Key_F11});
  const auto opcion = [&](const char* titulo, const char* codigo) {
    menu.push_back({QString::fromUtf8(titulo), [&escritorio, codigo] { escritorio.AbrePantalla(codigo, {}); }, 0});
  };
  const auto sale = [&](const char* titulo, void (*hace)(autonomo::Anfitrion&, QWidget*)) {
    menu.push_back(
        {QString::fromUtf8(titulo), [&escritorio, &anfitrion, hace] { hace(anfitrion, escritorio.Frente()); }, 0});
  };
  sale("&Parte del día…", MuestraParte);
  sale("Ca&lendario de una habitación…", ExportaCalendario);
  opcion("&Clientes…", anfitrion::pantalla::kClientes);
  opcion("&Formas de pago…", anfitrion::pantalla::kFormasPago);
  opcion("&Monedas y tipos de cambio…", anfitrion::pantalla::kMonedas);
  opcion("&Habitaciones, tipos y tarifas…", anfitrion::pantalla::kHabitaciones);
  opcion("&Bitácora…", anfitrion::pantalla::kBitacora);
  opcion("Co&rreos…", anfitrion::pantalla::kCorreos);
  opcion("C&onfiguración…", anfitrion::pantalla::kConfiguracion);
  menu.push_back({QStringLiteral("&Ver la lista de pendientes…"),
                  [&escritorio, &anfitrion] { MuestraPendientes(anfitrion, escritorio); }, 0});
  menu.push_back({QStringLiteral("&Manual"), [&mostrador] { mostrador.AbreAyuda(); }, Qt::Key_F1, kAyuda});
  menu.push_back({QStringLiteral("&Acerca de este programa"),
                  [&escritorio, &anfitrion] {
                    Avisa(autonomo::TextoVersionDe(*anfitrion.conexion(), "Reservaciones", anfitrion.base()),
                          caja::kInforme, escritorio.Frente());
                  },
                  0, kAyuda});
}

}  // namespace

void DiceDelAnfitrion(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion) {
  Contexto& contexto = escritorio.contexto();
  ConectaNombres(contexto, anfitrion);
  DiceLoHecho(contexto, anfitrion);
  DiceLosPrecios(contexto, escritorio);
}

void MuestraPendientes(autonomo::Anfitrion& anfitrion, EscritorioQt& escritorio) {
  VentanaPendientes ventana(anfitrion, escritorio.Frente());
  const int salida = Atiende(ventana);
  escritorio.VuelveAlFrente();
  const controles::Formulario* principal = escritorio.Principal();
  if (salida != VentanaPendientes::kHecho || principal == nullptr || !escritorio.PermiteSalir(*principal)) return;
  QApplication::exit(kOtraSesion);
}

void ConectaAnfitrion(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion, Mostrador& mostrador) {
  RegistraPantallas(escritorio, anfitrion,
                    [&mostrador](const std::string& folio) { mostrador.AbreReservacion(folio); });
  escritorio.Conserva(InstalaImpresion(anfitrion, [&escritorio] { return escritorio.Frente(); }));
  DiceDelAnfitrion(escritorio, anfitrion);
  Contexto& contexto = escritorio.contexto();
  contexto.avisoDeRenglones = [precio = contexto.avisoDeRenglones, &mostrador] {
    const QString texto = precio();
    return texto.isEmpty() ? mostrador.AvisoDeQuitados() : texto;
  };
  contexto.busca = [&](const controles::LookupField& campo, const QString& filtro) {
    return BuscaClave(campo, filtro, anfitrion, escritorio, mostrador);
  };
  contexto.abreCatalogo = [&](const controles::LookupField& campo) {
    escritorio.AbrePantalla(campo.diseno().transaccion, {});
  };
  contexto.porque = [](const controles::Grid& grid, int fila, int columna) {
    return Q(recepcion::EnLineas(recepcion::PorQue(grid.formulario(), fila, columna)));
  };
  PoneMenu(escritorio, anfitrion, mostrador);
}

}  // namespace vista
