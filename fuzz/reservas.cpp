// Any bytes are read as a file of bookings, each row as a booking that makes sense or as one that says why not; and as
// a file of rooms, whole or refused as a bad argument.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "fuzz/exige.h"
#include "guion/csv.h"
#include "guion/reservas_csv.h"
#include "platform/com/error.h"

namespace {

// A file in memory, written anew each time.
std::string Archivo(std::string_view cabecera, std::string_view resto) {
  static const int archivo = memfd_create("reservas", 0);
  fuzz::Exige(ftruncate(archivo, 0) == 0 && lseek(archivo, 0, SEEK_SET) == 0);
  for (const std::string_view parte : {cabecera, resto}) {
    fuzz::Exige(write(archivo, parte.data(), parte.size()) == static_cast<ssize_t>(parte.size()));
  }
  return "/proc/self/fd/" + std::to_string(archivo);
}

bool TieneSentido(const guion::ReservaCsv& r) {
  return !r.id.empty() && r.noches >= 0 && r.adultos >= 0 && r.menores >= 0 && r.infantes >= 0 && r.tarifa >= 0 &&
         com::MasDias(r.llegada, r.noches) >= r.llegada && r.campos.size() == guion::ColumnasReservas().size();
}

void LeeReservas(std::string_view texto) {
  const std::string cabecera = guion::LineaCsv(guion::ColumnasReservas());
  guion::HabitacionCsv doble;
  doble.tipo = "DOB";
  const std::string ruta = Archivo(cabecera, texto);
  const guion::ReservasCsv leidas = guion::LeeReservas(ruta, {doble});
  fuzz::Exige(leidas.reservas.size() + leidas.malas.size() == guion::LeeCsv(ruta, guion::ColumnasReservas()).size());
  for (const guion::ReservaCsv& r : leidas.reservas) fuzz::Exige(TieneSentido(r));
  for (const guion::FilaMala& f : leidas.malas) fuzz::Exige(!f.motivo.empty());
  const auto eventos = guion::OrdenaEventos(leidas.reservas);
  fuzz::Exige(eventos.size() >= leidas.reservas.size() && eventos.size() <= 2 * leidas.reservas.size());
}

void LeeHabitaciones(std::string_view texto) {
  constexpr std::string_view kCabecera =
      "habitacion,descripcion,tipo,tipo_descripcion,grupo,area,personas,personas_max,precio_noche\n";
  try {
    for (const guion::HabitacionCsv& h : guion::LeeHabitaciones(Archivo(kCabecera, texto))) {
      fuzz::Exige(!h.habitacion.empty() && !h.tipo.empty() && h.personas >= 0 && h.precioNoche >= 0);
    }
  } catch (const com::Error& e) {
    fuzz::Exige(e.Numero() == com::error::kArgumento);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  LeeReservas(fuzz::Texto(datos, largo));
  LeeHabitaciones(fuzz::Texto(datos, largo));
  return 0;
}
