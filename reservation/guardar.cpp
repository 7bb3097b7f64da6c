// Saving the reservation: checks, then header, lines, card and change audit in one transaction, then mail or print.
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "platform/regional/regional.h"
#include "publico/avisos.h"
#include "publico/columnas.h"
#include "publico/publico.h"
#include "publico/transaccion.h"
#include "reservation/correo.h"
#include "reservation/frmKV207.h"
#include "reservation/renglones.h"
#include "reservation/sentencias.h"

namespace kv207 {

namespace mensaje = anfitrion::mensaje;

// --- statements ---

void ArmaBorraTarjeta(ado::TextoSQL& sql, std::string_view folio) {
  sql.Agrega("DELETE FROM Reservacion_Datos_Tarjeta WHERE Rs_Folio = '?' ", {folio});
}

void ArmaInsertaTarjeta(ado::TextoSQL& sql, std::string_view folio, std::string_view banco, std::string_view numero,
                        std::string_view codigo, std::string_view vencimiento) {
  // Bank and number are stored with one blank at their end.
  sql.Agrega(
      "INSERT INTO Reservacion_Datos_Tarjeta("
      "   Rs_Folio,"
      "   Rdt_Banco,"
      "   Rdt_Numero,"
      "   Rdt_Codigo_Seguridad,"
      "   Rdt_Vencimiento"
      ")VALUES ("
      "'?',"
      "'? ',"
      "'? ',"
      "'?',"
      "'?')",
      {folio, banco, numero, codigo, vencimiento});
}

void ArmaActualizaTarjetaCliente(ado::TextoSQL& sql, std::string_view cliente, std::string_view banco,
                                 std::string_view numero, std::string_view codigo, std::string_view vencimiento) {
  sql.Agrega(
      "UPDATE Cliente SET "
      "   Cl_Tarjeta_Credito = 'SI', "
      "   Cl_Tarjeta_Banco= '?', "
      "   Cl_Tarjeta_Numero = '?', "
      "   Cl_Tarjeta_Codigo_Seguridad = '?', "
      "   Cl_Tarjeta_Vencimiento = '?' "
      "WHERE Cl_Cve_Cliente = '?'",
      {banco, numero, codigo, vencimiento, cliente});
}

namespace {

// Why a save that has begun ends without storing, and what the clerk is told once it has been rolled back.
struct Rechazo {
  enum class Foco { Ninguno, GridAntes, GridDespues };  // before or after the toolbar hears of it

  const anfitrion::DatosMensaje* mensaje = nullptr;  // null: says nothing
  std::string texto{};                               // empty: the store's reason, asked for after the roll-back
  Foco foco = Foco::Ninguno;
};

void Rechaza(frmKV207& formulario, const Rechazo& rechazo, anfitrion::Hotel& almacen) {
  if (rechazo.mensaje != nullptr) {
    const std::string texto = rechazo.texto.empty() ? almacen.ErrorHotel() : rechazo.texto;
    // A header refused without a reason is refused in silence.
    if (!texto.empty() || rechazo.mensaje != &mensaje::kGuardarReservacion) {
      Avisa(formulario, *rechazo.mensaje, texto);
    }
  }
  if (rechazo.foco == Rechazo::Foco::GridAntes) formulario.Enfoca(formulario.ssReservaciones);
  formulario.Controles.RechazaAceptar();
  if (rechazo.foco == Rechazo::Foco::GridDespues) formulario.Enfoca(formulario.ssReservaciones);
}

// --- checks before anything is written ---

bool RevisaEncabezado(frmKV207& f) {
  struct Requisito {
    bool falta;
    const anfitrion::DatosMensaje& mensaje;
    controles::Control& foco;
  };
  const Requisito requisitos[] = {
      {f.txtDias.text().empty(), mensaje::kSinDias, f.txtDias},
      {f.txtNMoneda.text().empty(), mensaje::kSinMoneda, f.txtMoneda},
      {com::CDbl(f.txtTipoCambio.valor()) <= 0, mensaje::kTipoCambioCero, f.txtMoneda},
      {f.txtNHuesped.text().empty(), mensaje::kSinHuesped, f.txtHuesped},
      {f.txtNForma_Pago.text().empty(), mensaje::kSinFormaPago, f.txtForma_Pago},
  };
  for (const Requisito& r : requisitos) {
    if (!r.falta) continue;
    Avisa(f, r.mensaje);
    f.Enfoca(r.foco);
    f.Controles.RechazaAceptar();
    return false;
  }
  return true;
}

bool RevisaDisponibilidad(frmKV207& f) {
  bool ok = false;
  f.Valida_Disponibilidad(ok);
  if (ok) return true;
  if (!f.MensajeDisponibilidad.empty()) Avisa(f, mensaje::kSinDisponibilidad, f.MensajeDisponibilidad);
  f.Enfoca(f.ssReservaciones);
  f.Controles.RechazaAceptar();
  return false;
}

bool RevisaTarjeta(frmKV207& f) {
  if (!f.frTarjeta.visible()) return true;
  bool ok = false;
  f.ValidaTarjeta(ok);
  return ok;
}

bool RevisaRenglones(frmKV207& f) {
  if (f.ssReservaciones.Filas() > 0) return true;
  Avisa(f, mensaje::kSinHabitaciones);
  f.Controles.RechazaAceptar();
  return false;
}

// --- header ---

anfitrion::DatosReservacion DatosDelEncabezado(const frmKV207& f) {
  anfitrion::DatosReservacion datos;
  datos.folio = f.txtFolio.text();
  datos.fecha = com::ADiasCom(f.dpFecha.valor());
  datos.llegada = com::ADiasCom(f.dpFecha_llegada.valor());
  datos.salida = com::ADiasCom(f.dpFecha_salida.valor());
  datos.moneda = f.txtMoneda.text();
  datos.tipoCambio = com::CDbl(f.txtTipoCambio.text());
  datos.sucursal = f.txtSucursal.text();
  datos.huesped = f.txtHuesped.text();
  datos.cliente = f.ClaveCliente();
  datos.referencia = f.txtReferencia.text();
  datos.comentario = f.txtComentario.text();
  datos.formaPago = f.txtForma_Pago.text();
  datos.notas = f.txtNotas.text();
  return datos;
}

// The folio under which the header was stored; nothing when the store refused it.
std::optional<std::string> GuardaEncabezado(const frmKV207& f, anfitrion::Hotel& almacen) {
  almacen.Encabezado(DatosDelEncabezado(f));
  if (!almacen.GuardaReservacion()) return std::nullopt;
  return almacen.Encabezado().folio.Texto();
}

// --- lines ---

// A line with a room is stored, others are passed over; so are totals from -1 down, while those between -1 and 0 are
// refused by RevisaRenglon.
bool ParticipaRenglon(const controles::Grid& grid, int fila) {
  return !CeldaVacia(grid.celda(fila, col::kNombre)) && com::CDbl(grid.celda(fila, col::kTotal)) > -1;
}

std::optional<Rechazo> RevisaRenglon(const frmKV207& f, int fila) {
  const controles::Grid& grid = f.ssReservaciones;
  const auto rechaza = [](const anfitrion::DatosMensaje& mensaje, const std::string& complemento = {}) {
    return Rechazo{&mensaje, std::string(mensaje.texto) + complemento, Rechazo::Foco::GridDespues};
  };
  if (com::SoloFecha(f.dpFecha_llegada.valor()) > FechaDeCelda(grid.celda(fila, col::kInicio))) {
    return rechaza(mensaje::kInicioAntesDeLlegada);
  }
  if (com::SoloFecha(f.dpFecha_salida.valor()) < FechaDeCelda(grid.celda(fila, col::kFin))) {
    return rechaza(mensaje::kFinDespuesDeSalida);
  }
  const com::Variant& maximo = grid.celda(fila, col::kPersonasMax);
  if (PersonasDelRenglon(grid, fila) > com::CDbl(maximo)) {
    return rechaza(mensaje::kExcesoAlGuardar, com::CStr(maximo));
  }
  if (com::CDbl(grid.celda(fila, col::kTotal)) < 0) {
    return rechaza(mensaje::kTotalNegativo, com::CStr(grid.celda(fila, col::kNombre)) + "' no puede ser menor a cero");
  }
  return std::nullopt;
}

anfitrion::DatosDetalle DatosDelRenglon(const controles::Grid& grid, int fila) {
  const auto numero = [&](std::string_view columna) { return com::CDbl(grid.celda(fila, columna)); };
  anfitrion::DatosDetalle datos;
  datos.habitacion = com::CStr(grid.celda(fila, col::kClave));
  datos.inicio = com::ADiasCom(FechaDeCelda(grid.celda(fila, col::kInicio)));
  datos.fin = com::ADiasCom(FechaDeCelda(grid.celda(fila, col::kFin)));
  datos.adultos = PersonasDeCelda(grid.celda(fila, col::kAdultos));
  datos.menores = PersonasDeCelda(grid.celda(fila, col::kMenores));
  datos.infantes = PersonasDeCelda(grid.celda(fila, col::kInfantes));
  datos.personasExtra = numero(col::kPersonasExtra);
  datos.precio = numero(col::kPrecio);
  datos.precioPersonasExtra = numero(col::kPrecioExtra);
  datos.descuentoFactor = numero(col::kDescuento) / 100;
  datos.total = com::CDbl(regional::ConFormato(numero(col::kTotal), "#########0.00#######"));
  return datos;
}

std::optional<Rechazo> GuardaRenglones(frmKV207& f, anfitrion::Hotel& almacen) {
  controles::Grid& grid = f.ssReservaciones;
  grid.MuevePrimera();
  const int filas = grid.Filas();
  int guardados = 0;
  for (int fila = 0; fila < filas; ++fila) {
    grid.fila(fila);
    if (!ParticipaRenglon(grid, fila)) continue;
    if (auto rechazo = RevisaRenglon(f, fila)) return rechazo;
    almacen.Detalle(DatosDelRenglon(grid, fila));
    if (!almacen.GuardaDetalle(f.PuedeCambiarPrecio)) return Rechazo{&mensaje::kGuardarDetalle};
    ++guardados;
  }
  if (guardados > 0) return std::nullopt;
  return Rechazo{&mensaje::kNadaQueReservar, std::string(mensaje::kNadaQueReservar.texto), Rechazo::Foco::GridAntes};
}

// --- card ---

// The web client's card belongs to the reservation, any other's to the client.
void GuardaTarjeta(const frmKV207& f, const std::string& folio) {
  if (!f.frTarjeta.visible()) return;
  const std::string cliente = f.ClaveCliente();
  const std::string vencimiento = publico::Utilerias().FechaSQL(f.dpVencimiento.valor());
  const std::string &banco = f.txtBanco.text(), &numero = f.txtTarjeta.text(), &codigo = f.txtCodigo.text();
  if (cliente == f.ClienteWeb) {
    ArmaBorraTarjeta(publico::NuevaSentencia(), folio);
    publico::Ejecuta();
    ArmaInsertaTarjeta(publico::NuevaSentencia(), folio, banco, numero, codigo, vencimiento);
  } else {
    ArmaActualizaTarjetaCliente(publico::NuevaSentencia(), cliente, banco, numero, codigo, vencimiento);
  }
  publico::Ejecuta();
}

// --- the whole ---

// Everything that stands between the begin and the commit: the folio stored, or why there is none.
std::variant<std::string, Rechazo> GuardaTodo(frmKV207& f, bool nuevo, anfitrion::Hotel& almacen) {
  frmKV207::Imagen antes;
  if (nuevo) {
    // Proposed for the next one also when this save is refused.
    f.FechaCaptura = f.dpFecha.valor();
    f.MonedaDefault = f.txtMoneda.text();
  } else {
    f.Resevacion_Antes(f.txtFolio.text(), antes);
  }
  const std::optional<std::string> folio = GuardaEncabezado(f, almacen);
  if (!folio) return Rechazo{&mensaje::kGuardarReservacion};
  if (auto rechazo = GuardaRenglones(f, almacen)) return *std::move(rechazo);
  GuardaTarjeta(f, *folio);
  if (nuevo) return *folio;
  frmKV207::Imagen despues;
  bool ok = false;
  f.Resevacion_Despues(*folio, despues);
  f.Analizar_Reservacion(*folio, antes, despues, ok);
  if (!ok) return Rechazo{};  // the audit has reported its own failure
  return *folio;
}

void CorreoOImpresion(frmKV207& f, const std::string& folio) {
  if (Avisa(f, mensaje::kPreguntaCorreoAlGuardar) == controles::kSi) {
    EnviaCorreo(f, folio, kPlantillaReservacion, mensaje::kPlantillaAlGuardar, mensaje::kCorreoAlGuardar);
  } else {
    f.Imprime(folio);
  }
}

}  // namespace

void frmKV207::Controles_Aceptar(bool nuevo) {
  if (!RevisaEncabezado(*this) || !RevisaDisponibilidad(*this) || !RevisaPrecios() || !RevisaTarjeta(*this) ||
      !RevisaRenglones(*this)) {
    return;
  }
  const auto guarda = [&](TransaccionBD& transaccion) {
    transaccion.Comienza();
    const auto almacen = publico::CreaServicio<anfitrion::Hotel>(anfitrion::kClaseHotel, "Hotel");
    const auto resultado = GuardaTodo(*this, nuevo, *almacen);
    if (const auto* rechazo = std::get_if<Rechazo>(&resultado)) {
      transaccion.Deshace();
      Rechaza(*this, *rechazo, *almacen);
      return;
    }
    const auto& folio = std::get<std::string>(resultado);
    transaccion.Confirma(folio, "guardada");
    Controles.ConcluyeAceptar();
    CorreoOImpresion(*this, folio);
    Controles_Limpiar();
  };
  if (!AtrapaTransaccion(*this, mensaje::kAceptar, guarda)) Controles.RechazaAceptar();
}

}  // namespace kv207
