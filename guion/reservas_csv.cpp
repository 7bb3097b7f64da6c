#include "guion/reservas_csv.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "guion/csv.h"
#include "guion/palabras.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"

namespace guion {

namespace {

// Most characters that the board's type filter takes.
constexpr std::size_t kLargoTipo = 4;
constexpr int kMaxNoches = 3650, kMaxPersonas = 999;
constexpr double kMaxImporte = 1e9;

// Reads the fields of one record by position and names the column in its errors (kArgumento).
class Campos {
 public:
  Campos(const std::vector<std::string>& columnas, const RegistroCsv& registro)
      : columnas_(columnas), registro_(registro) {}

  [[noreturn]] static void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

  std::string Texto(std::size_t i) const { return registro_.campos[i]; }

  // Blanks around a key are no part of it: the database does not tell keys apart by them.
  std::string Obligado(std::size_t i) const {
    std::string texto = com::Recorta(registro_.campos[i]);
    if (texto.empty()) Rechaza("falta " + columnas_[i]);
    return texto;
  }

  // A key that the screens put between quotes in their statements.
  std::string Clave(std::size_t i) const {
    std::string clave = Obligado(i);
    if (clave.find('\'') != std::string::npos) Rechaza(columnas_[i] + " «" + clave + "» lleva una comilla");
    return clave;
  }

  int Entero(std::size_t i, int maximo) const {
    const int n = Numero<int>(i);
    if (n < 0 || n > maximo) {
      Rechaza(columnas_[i] + " «" + registro_.campos[i] + "» debe estar entre 0 y " + std::to_string(maximo));
    }
    return n;
  }

  double Importe(std::size_t i) const {
    const auto n = Numero<double>(i);
    if (!std::isfinite(n) || n < 0 || n > kMaxImporte) {
      Rechaza(columnas_[i] + " «" + registro_.campos[i] + "» debe estar entre 0 y mil millones");
    }
    return n;
  }

  com::Fecha Dia(std::size_t i) const {
    const auto fecha = registro_.campos[i].size() == 10 ? com::DeIso(registro_.campos[i]) : std::nullopt;
    if (!fecha) Rechaza(columnas_[i] + " " + NoEsFecha(registro_.campos[i]));
    return *fecha;
  }

 private:
  template <class N>
  N Numero(std::size_t i) const {
    return NumeroDe<N>(registro_.campos[i], columnas_[i] + " ");
  }

  const std::vector<std::string>& columnas_;
  const RegistroCsv& registro_;
};

// Keys that differ in case alone are one key to the database.
std::string Plegada(const std::string& clave) { return com::Mayusculas(clave); }

bool MismoTipo(const HabitacionCsv& a, const HabitacionCsv& b) {
  return a.tipoDescripcion == b.tipoDescripcion && a.personas == b.personas && a.personasMax == b.personasMax &&
         a.precioNoche == b.precioNoche;
}

HabitacionCsv LeeHabitacion(const Campos& campos) {
  HabitacionCsv h;
  h.habitacion = campos.Clave(0);
  h.descripcion = campos.Texto(1);
  h.tipo = campos.Clave(2);
  h.tipoDescripcion = campos.Obligado(3);
  h.grupo = campos.Obligado(4);
  h.area = campos.Obligado(5);
  h.personas = campos.Entero(6, kMaxPersonas);
  h.personasMax = campos.Entero(7, kMaxPersonas);
  h.precioNoche = campos.Importe(8);
  if (h.tipo.size() > kLargoTipo) Campos::Rechaza("el tipo tiene más de 4 letras");
  return h;
}

ReservaCsv LeeReserva(const Campos& campos) {
  ReservaCsv r;
  r.id = campos.Obligado(0);
  r.captura = campos.Dia(1);
  r.llegada = campos.Dia(2);
  r.noches = campos.Entero(3, kMaxNoches);
  r.adultos = campos.Entero(4, kMaxPersonas);
  r.menores = campos.Entero(5, kMaxPersonas);
  r.infantes = campos.Entero(6, kMaxPersonas);
  r.tipo = campos.Obligado(7);
  r.tarifa = campos.Importe(8);
  const std::string estado = campos.Texto(9);
  if (estado != "Check-Out" && estado != "No-Show" && estado != "Canceled") {
    Campos::Rechaza("estado «" + estado + "» no es Check-Out, No-Show ni Canceled");
  }
  r.cancelada = estado == "Canceled";
  r.fechaEstado = campos.Dia(10);
  if (r.noches > com::DiasEntre(r.llegada, com::FechaDe(9999, 12, 31))) Campos::Rechaza("la salida no tiene fecha");
  return r;
}

}  // namespace

const std::vector<std::string>& ColumnasReservas() {
  static const std::vector<std::string> columnas = {"id",      "captura", "llegada",     "noches",
                                                    "adultos", "menores", "infantes",    "tipo",
                                                    "tarifa",  "estado",  "fecha_estado"};
  return columnas;
}

std::vector<HabitacionCsv> LeeHabitaciones(const std::string& ruta) {
  static const std::vector<std::string> columnas = {"habitacion",       "descripcion",  "tipo",
                                                    "tipo_descripcion", "grupo",        "area",
                                                    "personas",         "personas_max", "precio_noche"};
  std::vector<HabitacionCsv> habitaciones;
  std::set<std::string> claves;
  std::map<std::string, std::size_t> tipos;
  const auto agrega = [&](const RegistroCsv& registro) {
    HabitacionCsv h = LeeHabitacion(Campos(columnas, registro));
    if (!claves.insert(Plegada(h.habitacion)).second) Campos::Rechaza("la habitación " + h.habitacion + " se repite");
    const auto [tipo, nuevo] = tipos.emplace(Plegada(h.tipo), habitaciones.size());
    if (!nuevo && !MismoTipo(habitaciones[tipo->second], h)) {
      Campos::Rechaza("el tipo " + h.tipo + " no coincide con el de renglones anteriores");
    }
    habitaciones.push_back(std::move(h));
  };
  for (const RegistroCsv& registro : SinDefectos(ruta, LeeCsv(ruta, columnas))) {
    try {
      agrega(registro);
    } catch (const com::Error& e) {
      RechazaLinea(ruta, registro.linea, e.Descripcion());
    }
  }
  if (habitaciones.empty()) RechazaLinea(ruta, 1, "el archivo no tiene habitaciones");
  return habitaciones;
}

ReservasCsv LeeReservas(const std::string& ruta, const std::vector<HabitacionCsv>& habitaciones) {
  std::set<std::string> tipos, ids;
  for (const HabitacionCsv& h : habitaciones) tipos.insert(Plegada(h.tipo));
  const auto lee = [&](const RegistroCsv& registro) {
    if (!registro.defecto.empty()) Campos::Rechaza(registro.defecto);
    ReservaCsv r = LeeReserva(Campos(ColumnasReservas(), registro));
    if (!tipos.contains(Plegada(r.tipo))) Campos::Rechaza("ninguna habitación es del tipo «" + r.tipo + "»");
    if (!ids.insert(Plegada(r.id)).second) Campos::Rechaza("el id «" + r.id + "» se repite");
    return r;
  };
  ReservasCsv archivo;
  for (RegistroCsv& registro : LeeCsv(ruta, ColumnasReservas())) {
    try {
      ReservaCsv r = lee(registro);
      r.linea = registro.linea;
      r.campos = std::move(registro.campos);
      r.campos[0] = r.id;
      archivo.reservas.push_back(std::move(r));
    } catch (const com::Error& e) {
      FilaMala mala{registro.linea, std::move(registro.campos), e.Descripcion(), {}};
      if (!registro.defecto.empty()) mala.texto = std::exchange(mala.campos, {}).at(0);
      mala.campos.resize(ColumnasReservas().size());
      archivo.malas.push_back(std::move(mala));
    }
  }
  return archivo;
}

std::vector<Evento> OrdenaEventos(const std::vector<ReservaCsv>& reservas) {
  std::vector<Evento> eventos;
  for (std::size_t i = 0; i < reservas.size(); ++i) eventos.push_back({reservas[i].captura, false, i});
  for (std::size_t i = 0; i < reservas.size(); ++i) {
    const ReservaCsv& r = reservas[i];
    if (r.cancelada) eventos.push_back({std::max(r.captura, r.fechaEstado), true, i});
  }
  std::ranges::stable_sort(eventos, {}, &Evento::dia);
  return eventos;
}

}  // namespace guion
