#include "tests/mono/mono.h"

#include <algorithm>
#include <cmath>

#include "component/nombres.h"
#include "host/contract/parametros.h"
#include "platform/controls/grid.h"

namespace mono {

namespace {

constexpr int kCadaCuanto = 200;       // orders between two looks at the whole database
constexpr std::size_t kRecuerda = 15;  // orders told with a fault
constexpr int kHorizonte = 75;         // days ahead that reservations are for

// Critical messages that a clerk's doing may well bring: a key that breaks its statement, what the host has to say. All
// others are failures that no handler foresaw.
constexpr const char* kPrevistos[] = {
    "falla inyectada", "Comilla sin cerrar", "No hay tipo de cambio",        "ya está reservada la noche",
    "no tiene precio", "No hay tarifa",      "no tiene dirección de correo",
};

// Why an order may be refused: the screen does not take it just now, or the value is none.
constexpr const char* kNoProcede[] = {
    "está deshabilitado",     "no está a la vista",
    "no acepta captura",      "que no se muestra",
    "no está disponible",     "no está activa",
    "no se puede dejar",      "no recibe teclas",
    "no muestra la columna",  "tiene bloqueada",
    "no tiene el renglón",    "no tiene la columna",
    "no es un campo",         "no es un botón",
    "no está abierta",        "no tiene botón",
    "no tiene la noche",      "no tiene la habitación",
    "No existe el control",   "No hay un renglón",
    "no tiene reservación",   "está libre la noche",
    "no está libre la noche", "Faltan la habitación",
    "El cuadro muestra",      "Caben ",
    "No hay lugar",           "No hay una oferta",
    "No hay tarifa",          "No hay tipo de cambio",
    "falla inyectada",        "Comilla sin cerrar",
    "demasiado grande",       "No coinciden los tipos",
    "fuera del calendario",   "demasiado pequeño",
    "no puede ser negativo",  "corrija ",
};

template <class Lista>
bool Dice(const std::string& texto, const Lista& algunos) {
  return std::ranges::any_of(algunos, [&](const char* t) { return texto.find(t) != std::string::npos; });
}

constexpr const char* kValores[] = {"1",
                                    "2",
                                    "3",
                                    "5",
                                    "0",
                                    "-1",
                                    "101",
                                    "0210",
                                    "0305",
                                    "9999",
                                    "40000",
                                    "1.5",
                                    "%",
                                    "USD",
                                    "EUR",
                                    "MXN",
                                    "XYZ",
                                    "O'Brien",
                                    "ñandú",
                                    "  ",
                                    "1e9",
                                    "+3",
                                    "15/3",
                                    "31/12/9999",
                                    "12,5",
                                    "0001",
                                    "1234567890123456",
                                    "\xF0\x9F\x9B\x8F",
                                    "una nota más larga que lo que cabe en la pantalla de una recepción"};
constexpr const char* kColumnas[] = {"Adultos", "Menores", "Infantes", "Descuento", "Precio",
                                     "FECHAI",  "FECHAF",  "Clave",    "Total",     "PERSONA_EXTRA"};
constexpr const char* kTeclas[] = {"F2",  "F3",   "F5",  "F6",        "F7", "Esc", "Enter", "Tab",
                                   "Tab", "Supr", "Tab", "Retroceso", "7",  "a",   "%"};
constexpr const char* kAcciones[] = {"nuevo",    "editar",    "aceptar", "aceptar",  "limpiar", "confirmar",
                                     "eliminar", "reactivar", "correo",  "registro", "cerrar"};
constexpr const char* kPreguntas[] = {"7500051", "7500052", "7500053", "7500054", "7500061"};

std::string Palabra(const std::string& texto) {
  std::string palabra = "\"";
  for (const char c : texto) {
    if (c == '"' || c == '\\') palabra += '\\';
    palabra += c;
  }
  return palabra + '"';
}

std::string Numero(int n) { return std::to_string(n); }

const controles::ScreenToolbar* Barra(const controles::Formulario& formulario) {
  for (const controles::Control* c : formulario.controles()) {
    if (const auto* barra = controles::Como<controles::ScreenToolbar>(c)) return barra;
  }
  return nullptr;
}

const controles::Grid& Rejilla(const controles::Formulario& formulario) {
  for (const controles::Control* c : formulario.controles()) {
    if (const auto* grid = controles::Como<controles::Grid>(c)) return *grid;
  }
  throw std::logic_error("A form without a grid");
}

}  // namespace

Mono::Mono(const Piezas& piezas, int pasos, std::uint32_t semilla)
    : piezas_(piezas), pasos_(pasos), azar_(semilla), ahora_(piezas.anfitrion.reloj().Ahora()) {
  piezas_.anfitrion.Parametro(std::string(anfitrion::parametro::kSobreventa.clave), "0");
  folios_ = Folios(*piezas_.anfitrion.conexion());
}

// --- the script ------------------------------------------------------------------------------------------------------

Mono::int_type Mono::underflow() {
  if (!ordenes_.empty()) Mira();
  if (falla_.empty() && static_cast<int>(ordenes_.size()) >= pasos_ && porHacer_.empty()) RevisaTodo();
  if (!falla_.empty() || static_cast<int>(ordenes_.size()) >= pasos_) return traits_type::eof();
  while (porHacer_.empty()) Planea();
  linea_ = porHacer_.front().orden;
  despues_ = std::move(porHacer_.front().despues);
  porHacer_.pop_front();
  ordenes_.push_back(linea_);
  linea_ += '\n';
  setg(linea_.data(), linea_.data(), linea_.data() + linea_.size());
  return traits_type::to_int_type(linea_[0]);
}

void Mono::Planea() {
  if (!piezas_.componente.Abierta()) return Pon("abre");
  const controles::Formulario& activo = *piezas_.componente.Activo();
  if (&activo == &piezas_.componente.tablero()) return EnElTablero(activo);
  struct Quehacer {
    int peso;
    void (Mono::*hace)();
  };
  static constexpr Quehacer kQuehaceres[] = {
      {14, &Mono::Captura},  {8, &Mono::PorTablero}, {14, &Mono::Abre},     {14, &Mono::Edita},    {30, &Mono::Suelta},
      {6, &Mono::Mostrador}, {1, &Mono::Reloj},      {3, &Mono::Configura}, {3, &Mono::HazFallar}, {7, &Mono::Compara},
  };
  int suerte = Azar(0, 99);
  for (const Quehacer& q : kQuehaceres) {
    if ((suerte -= q.peso) < 0) return (this->*q.hace)();
  }
}

void Mono::EnElTablero(const controles::Formulario& tablero) {
  const controles::Grid& grid = Rejilla(tablero);
  const int noches = grid.NumColumnas() - kv207::kColumnasFijas;
  switch (Azar(0, 9)) {
    case 0:
    case 1:
    case 2:
    case 3:
      if (grid.Filas() == 0 || noches <= 0) return Pon("accion cancelar");
      return Pon("marca " + Numero(Azar(0, grid.Filas() - 1)) + " " + Numero(Azar(0, noches - 1)));
    case 4:
      if (grid.Filas() == 0) return Pon("accion cancelar");
      return Pon("marcafila " + Numero(Azar(0, grid.Filas() - 1)));
    case 5:
      return Pon(Azar(0, 1) == 0 ? "clic opHabitacion" : "clic opTipoHabitacion");
    case 6:
      return Pon("tecla " + std::string(Alguno(kTeclas)));
    case 7:
      return Pon("campo " + Control(tablero).nombre() + " " + Palabra(Valor()));
    default:
      return Pon(Azar(0, 3) == 0 ? "accion cancelar" : "accion aceptar");
  }
}

// --- what a clerk does -----------------------------------------------------------------------------------------------

std::string Mono::Dia() { return com::AIso(com::MasDias(com::SoloFecha(ahora_), Azar(0, kHorizonte))); }

std::string Mono::Folio() {
  if (folios_.empty() || Azar(0, 30) == 0) return Valor();
  // The last ones above all: they are being worked at.
  const std::size_t atras = azar_() % (Azar(0, 2) == 0 ? folios_.size() : std::min<std::size_t>(folios_.size(), 12));
  return folios_[folios_.size() - 1 - atras];
}

std::string Mono::Valor() { return Azar(0, 2) == 0 ? Numero(Azar(1, 30)) : Alguno(kValores); }

controles::Control& Mono::Control(const controles::Formulario& formulario) { return *Alguno(formulario.controles()); }

void Mono::Captura() {
  Pon("accion nuevo");
  Pon("campo txtHuesped " + Numero(Azar(1, 25)));
  Pon("campo txtForma_Pago " + Numero(Azar(1, 4)));
  if (Azar(0, 4) == 0) Pon("campo txtMoneda USD");
  if (Azar(0, 5) == 0) {
    Pon("texto txtBanco Banco");
    Pon("texto txtTarjeta 4111111111111111");
    Pon("texto txtCodigo 123");
  }
  Noches();
  Pon("accion aceptar");
}

// Dates and up to three rooms with their persons.
void Mono::Noches() {
  const com::Fecha llegada = com::MasDias(com::SoloFecha(ahora_), Azar(0, kHorizonte));
  Pon("fecha dpFecha_llegada " + com::AIso(llegada));
  Pon("fecha dpFecha_salida " + com::AIso(com::MasDias(llegada, Azar(1, 6))));
  for (int n = Azar(1, 3); n > 0; --n) {
    Pon("celda nueva Clave " + Numero(100 * Azar(1, 3) + Azar(1, 13)));
    if (Azar(0, 9) > 0) Pon("tecla Tab");
  }
  for (int fila = 0; fila < 3; ++fila) Pon("celda " + Numero(fila) + " Adultos " + Numero(Azar(1, 2)));
}

void Mono::PorTablero() {
  Pon("accion nuevo");
  Pon("campo txtHuesped " + Numero(Azar(1, 25)));
  Pon("campo txtForma_Pago 1");
  const com::Fecha llegada = com::MasDias(com::SoloFecha(ahora_), Azar(0, kHorizonte));
  Pon("fecha dpFecha_llegada " + com::AIso(llegada));
  Pon("fecha dpFecha_salida " + com::AIso(com::MasDias(llegada, Azar(1, 6))));
  Pon("tecla F6");
}

void Mono::Abre() {
  Pon("campo txtFolio " + Palabra(Folio()));
  static constexpr const char* kSobreElla[] = {"editar",    "confirmar", "eliminar", "eliminar",
                                               "reactivar", "correo",    "registro"};
  Pon("accion " + std::string(Alguno(kSobreElla)));
}

void Mono::Edita() {
  Pon("campo txtFolio " + Palabra(Folio()));
  Pon("accion editar");
  for (int n = Azar(1, 3); n > 0; --n) {
    switch (Azar(0, 5)) {
      case 0:
        Pon("responde 7500054 6");
        Pon("borra 0");
        break;
      case 1:
        Noches();
        break;
      case 2:
        Pon("campo txtMoneda " + std::string(Azar(0, 1) == 0 ? "USD" : "MXN"));
        break;
      case 3:
        Pon("texto txtNotas " + Palabra(Valor()));
        break;
      default:
        Pon("celda 0 " + std::string(Alguno(kColumnas)) + " " + Palabra(Valor()));
    }
  }
  Pon("accion aceptar");
}

// One order, wherever it falls.
void Mono::Suelta() {
  const controles::Formulario& formulario = *piezas_.componente.Activo();
  const std::string control = Control(formulario).nombre();
  const int filas = Rejilla(formulario).Filas();
  switch (Azar(0, 13)) {
    case 0:
    case 1:
      return Pon("texto " + control + " " + Palabra(Valor()));
    case 2:
      return Pon("enter " + control);
    case 3:
      return Pon("campo " + control + " " + Palabra(Valor()));
    case 4:
      return Pon("clic " + control);
    case 5:
      return Pon("tecla " + std::string(Alguno(kTeclas)) + (Azar(0, 1) == 0 ? " " + control : ""));
    case 6:
      return Pon("fecha " + std::string(Azar(0, 1) == 0 ? "dpFecha_llegada " : "dpFecha_salida ") + Dia());
    case 7:
    case 8:
      return Pon("accion " + std::string(Alguno(kAcciones)));
    case 9:
      return Pon("celda " + Numero(Azar(0, filas)) + " " + Alguno(kColumnas) + " " + Palabra(Valor()));
    case 10:
      return Pon("ve " + Numero(Azar(0, filas)) + " " + Alguno(kColumnas));
    case 11:
      return Pon("borra " + Numero(Azar(0, filas)));
    case 12:
      return Pon("responde " + std::string(Alguno(kPreguntas)) + (Azar(0, 1) == 0 ? " 6" : " 7"));
    default:
      return Pon("tamano " + Numero(Azar(0, 20000)) + " " + Numero(Azar(0, 15000)));
  }
}

void Mono::Mostrador() {
  switch (Azar(0, 4)) {
    case 0:
      Pon("hoy");
      return Pon("hoy busca " + Palabra(Azar(0, 1) == 0 ? "ma" : Folio()));
    case 1:
      Pon("hoy");
      return Pon("hoy abre " + Numero(Azar(0, 5)));
    case 2:
      Pon("cuadro " + Dia() + " " + Numero(Azar(1, 30)));
      return Pon("cuadro abre 010" + Numero(Azar(1, 9)) + " " + Dia());
    case 3: {
      const com::Fecha dia = com::MasDias(com::SoloFecha(ahora_), Azar(0, kHorizonte));
      Pon("cuadro " + com::AIso(dia) + " 14");
      return Pon("cuadro reserva 020" + Numero(Azar(1, 9)) + " " + com::AIso(dia) + " " +
                 com::AIso(com::MasDias(dia, Azar(1, 3))));
    }
    default: {
      const com::Fecha dia = com::MasDias(com::SoloFecha(ahora_), Azar(0, kHorizonte));
      Pon("cotiza " + com::AIso(dia) + " " + com::AIso(com::MasDias(dia, Azar(1, 5))) + " " + Numero(Azar(1, 4)));
      if (Azar(0, 1) == 0) Pon("cotiza reserva 0");
    }
  }
}

void Mono::Reloj() {
  ahora_ = com::MasDias(ahora_, Azar(0, 2));
  Pon("ahora " + com::AIso(com::SoloFecha(ahora_)) + "T1" + Numero(Azar(0, 9)) + ":30");
}

void Mono::Configura() {
  static constexpr const char* kCambios[] = {"cambio USD 18.75", "cambio USD 19.5", "tarifa 0002 1300 250 125",
                                             "tarifa 0001 900 200 100", "direccion 0000000003 huesped@example.com"};
  Pon(Alguno(kCambios));
}

// A fault in the way of what comes next: nothing may be lost or half done by it.
void Mono::HazFallar() {
  static constexpr const char* kFallas[] = {"falla commit",
                                            "falla begin",
                                            "falla sentencia Reservacion_Detalle",
                                            "falla sentencia Habitacion 3",
                                            "falla host Hotel.GuardaDetalle",
                                            "falla host Hotel.GuardaReservacion",
                                            "falla host Utilerias.FechaServidor",
                                            "falla tienda GuardaDetalle \"falla inyectada en la tienda\"",
                                            "falla correo \"falla inyectada\""};
  Pon(Alguno(kFallas));
  if (Azar(0, 1) == 0) {
    Captura();
  } else {
    Edita();
  }
}

// Loaded and saved again, a reservation is what it was.
void Mono::Compara() {
  const std::string folio = Folio();
  if (folio.find('\'') != std::string::npos) return;
  autonomo::Conexion& conexion = *piezas_.anfitrion.conexion();
  const std::string antes = Imagen(conexion, folio);
  Pon("accion limpiar");
  Pon("campo txtFolio " + Palabra(folio), [this, folio] {
    const auto* barra = Barra(piezas_.componente.formulario());
    if (barra->ClaveActual() != folio || barra->EnEdicion())
      return porHacer_.clear();  // not loaded: a fault in its way
    RevisaTotal(folio);
  });
  Pon("accion editar");
  Pon("accion aceptar", [this, folio, antes] {
    const std::string despues = Imagen(*piezas_.anfitrion.conexion(), folio);
    if (despues != antes)
      return Acusa("saved as it was loaded, " + folio + " changed from\n" + antes + "to\n" + despues);
    ++cuentas_["loaded and saved again"];
  });
}

// --- what it looks at ------------------------------------------------------------------------------------------------

void Mono::Mira() {
  for (const controles::CajaMensaje& caja : std::exchange(piezas_.escritorio.vistos, {})) MiraMensaje(caja);
  if (const std::string rechazo = rechazos_.str(); !rechazo.empty()) {
    rechazos_.str({});
    MiraRechazo(rechazo);
  }
  if (despues_) std::exchange(despues_, nullptr)();
  if (piezas_.anfitrion.conexion()->EnTransaccion()) Acusa("a transaction is left open");
  if (ordenes_.size() % kCadaCuanto == 0) RevisaTodo();
}

void Mono::MiraMensaje(const controles::CajaMensaje& caja) {
  ++cuentas_["message " + caja.id];
  constexpr int kIcono = 0x70, kCritico = 0x10;
  if ((caja.estilo & kIcono) != kCritico || Dice(caja.texto, kPrevistos)) return;
  Acusa("a clerk was told " + caja.id + ": " + caja.texto);
}

void Mono::MiraRechazo(const std::string& linea) {
  ++cuentas_["order refused"];
  if (!Dice(linea, kNoProcede)) Acusa("an order failed: " + linea);
}

void Mono::RevisaTodo() {
  autonomo::Conexion& conexion = *piezas_.anfitrion.conexion();
  if (const std::string falta = Revisa(conexion); !falta.empty()) Acusa(falta);
  const std::vector<std::string> antes = std::exchange(folios_, Folios(conexion));
  cuentas_["reservations made"] += static_cast<int>(folios_.size() - antes.size());
  // What the host and the script keep for whoever asks.
  piezas_.vigilancia.TomaLlamadas();
  piezas_.vigilancia.TomaSentencias();
}

// The footer shows what is stored.
void Mono::RevisaTotal(const std::string& folio) {
  const auto* campo = controles::Como<controles::LookupField>(piezas_.componente.formulario().Busca("txtTotal"));
  const double mostrado = com::CDbl(campo->valor()), guardado = Total(*piezas_.anfitrion.conexion(), folio);
  // A price may have more digits than a number keeps cents of.
  if (std::abs(mostrado - guardado) > 0.005 + 1e-12 * guardado) {
    Acusa(folio + " shows a total of " + campo->text() + " and holds " + std::to_string(guardado));
  }
  ++cuentas_["totals compared"];
}

void Mono::Acusa(const std::string& que) {
  if (!falla_.empty()) return;
  falla_ = "order " + Numero(static_cast<int>(ordenes_.size())) + ": " + que + "\n";
  const std::size_t desde = ordenes_.size() > kRecuerda ? ordenes_.size() - kRecuerda : 0;
  for (std::size_t i = desde; i < ordenes_.size(); ++i) falla_ += "  " + ordenes_[i] + "\n";
}

void Mono::Cuenta(std::ostream& salida) const {
  for (const auto& [que, veces] : cuentas_) salida << veces << ' ' << que << '\n';
}

bool Mono::HizoDeTodo() const {
  const auto veces = [this](const char* que) {
    const auto it = cuentas_.find(que);
    return it == cuentas_.end() ? 0 : it->second;
  };
  return veces("reservations made") > 0 && veces("loaded and saved again") > 0 && veces("totals compared") > 0;
}

}  // namespace mono
