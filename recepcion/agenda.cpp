#include "recepcion/agenda.h"

#include <ctime>
#include <map>

#include "host/contract/estados.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace recepcion {

namespace {

constexpr std::size_t kMasLarga = 75;  // bytes of a line

bool EsLlano(char c) { return com::EsDigito(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-'; }

// Letters and digits of a text, those of ASCII.
std::string Llano(const std::string& texto) {
  std::string llano;
  for (const char c : texto) {
    if (EsLlano(c)) llano += c;
  }
  return llano;
}

// A line, folded between letters.
void Linea(std::string& ics, std::string_view linea) {
  std::size_t caben = kMasLarga;
  while (linea.size() > caben) {
    std::size_t corte = 0;
    for (std::size_t letra = com::LargoDeSecuencia(linea); corte + std::max<std::size_t>(letra, 1) <= caben;
         letra = com::LargoDeSecuencia(linea.substr(corte)))
      corte += std::max<std::size_t>(letra, 1);
    ics.append(linea.substr(0, corte)).append("\r\n ");
    linea.remove_prefix(corte);
    caben = kMasLarga - 1;  // the blank counts
  }
  ics.append(linea).append("\r\n");
}

// A text as a value.
std::string Valor(std::string_view texto) {
  std::string valor;
  for (const char c : texto) {
    if (c == '\r') continue;
    if (c == '\n') {
      valor += "\\n";
      continue;
    }
    if (c == '\\' || c == ';' || c == ',') valor += '\\';
    if (static_cast<unsigned char>(c) >= ' ') valor += c;
  }
  return valor;
}

std::string Dia(com::Fecha fecha) {
  std::string dia = com::AIso(com::SoloFecha(fecha));
  std::erase(dia, '-');
  return dia;
}

// The server's time as universal time.
std::string Sello(com::Fecha local) {
  const com::Civil c = com::ACivil(local);
  std::tm partes{};
  partes.tm_year = c.anio - 1900;
  partes.tm_mon = c.mes - 1;
  partes.tm_mday = c.dia;
  partes.tm_hour = c.hora;
  partes.tm_min = c.minuto;
  partes.tm_sec = c.segundo;
  partes.tm_isdst = -1;
  const std::time_t momento = std::mktime(&partes);
  const std::tm* universal = std::gmtime(&momento);
  char texto[32] = "";
  if (universal == nullptr || std::strftime(texto, sizeof texto, "%Y%m%dT%H%M%SZ", universal) == 0) {
    return Dia(local) + "T000000Z";
  }
  return texto;
}

// What a bar is for as long as it holds the room from that night on, however often it is stored; the name of the hotel
// may change, so that it has no part in it.
std::string Identidad(const Barra& b, const Habitacion& h) {
  std::string quien;
  switch (b.clase) {
    case Barra::Clase::Reservacion:
      quien = "reservacion-" + Llano(b.folio);
      break;
    case Barra::Clase::Estancia:
      quien = Llano(b.huesped);
      break;
    case Barra::Clase::Bloqueo:
      quien = "bloqueo";
      break;
  }
  return quien + "-" + NombreDeArchivo(h.clave) + "-" + Dia(b.inicio);
}

void Evento(std::string& ics, const std::string& identidad, const Barra& b, const Habitacion& h,
            const PedidoAgenda& pedido, bool todas) {
  std::string dice = EstadoDe(b);
  if (b.clase == Barra::Clase::Reservacion && !b.enCasa) dice = "Reservada";
  if (pedido.conNombres && !b.folio.empty()) dice = b.huesped + " (" + EstadoDe(b) + ")";
  if (todas) dice = h.clave + " " + dice;
  Linea(ics, "BEGIN:VEVENT");
  Linea(ics, "UID:" + identidad + "@reservas");
  Linea(ics, "DTSTAMP:" + Sello(b.modificada == com::Fecha{} ? b.inicio : b.modificada));
  Linea(ics, "DTSTART;VALUE=DATE:" + Dia(b.inicio));
  Linea(ics, "DTEND;VALUE=DATE:" + Dia(b.fin));
  Linea(ics, "SUMMARY:" + Valor(dice));
  Linea(ics, "LOCATION:" + Valor(h.clave + " " + h.nombre));
  if (pedido.conNombres && !b.folio.empty()) Linea(ics, "DESCRIPTION:" + Valor("Reservación " + b.folio));
  Linea(ics, "TRANSP:OPAQUE");
  Linea(ics, "END:VEVENT");
}

void Abre(std::string& ics, const std::string& nombre) {
  Linea(ics, "BEGIN:VCALENDAR");
  Linea(ics, "VERSION:2.0");
  Linea(ics, "PRODID:-//reservas//Habitaciones//ES");
  Linea(ics, "CALSCALE:GREGORIAN");
  Linea(ics, "X-WR-CALNAME:" + Valor(nombre));
}

void EventosDe(std::string& ics, const Cuadro& cuadro, int fila, const PedidoAgenda& pedido, bool todas) {
  const Habitacion& h = cuadro.habitaciones()[static_cast<std::size_t>(fila)];
  const auto [primera, fin] = cuadro.BarrasDe(fila);
  std::map<std::string, int> veces;
  for (std::size_t i = primera; i < fin; ++i) {
    const Barra& b = cuadro.barras()[i];
    if (b.inicio >= b.fin) continue;  // a stay of no night holds no day
    std::string identidad = Identidad(b, h);
    if (const int vez = ++veces[identidad]; vez > 1) identidad += "-" + std::to_string(vez);
    Evento(ics, identidad, b, h, pedido, todas);
  }
}

// A calendar has one component at least: where nothing holds a room that is the time that the stamps are in.
void Cierra(std::string& ics) {
  if (ics.find("BEGIN:VEVENT") == std::string::npos) {
    for (const char* linea : {"BEGIN:VTIMEZONE", "TZID:UTC", "BEGIN:STANDARD", "DTSTART:19700101T000000",
                              "TZOFFSETFROM:+0000", "TZOFFSETTO:+0000", "END:STANDARD", "END:VTIMEZONE"}) {
      Linea(ics, linea);
    }
  }
  Linea(ics, "END:VCALENDAR");
}

std::string AgendaDe(const Cuadro& cuadro, int fila, const PedidoAgenda& pedido) {
  std::string ics;
  Abre(ics, "Habitación " + cuadro.habitaciones()[static_cast<std::size_t>(fila)].clave);
  EventosDe(ics, cuadro, fila, pedido, false);
  Cierra(ics);
  return ics;
}

}  // namespace

PedidoAgenda PedidoDeAgenda(com::Fecha hoy, std::string hotel, bool conNombres) {
  constexpr int kAtras = 31, kAdelante = 366;
  return {com::MasDias(com::SoloFecha(hoy), -kAtras), kAtras + kAdelante, conNombres, std::move(hotel)};
}

std::vector<Agenda> LeeAgendas(const Fuente& fuente, const PedidoAgenda& pedido) {
  Cuadro cuadro;
  cuadro.Lee(fuente, pedido.desde, pedido.noches);
  std::vector<Agenda> agendas;
  for (std::size_t f = 0; f < cuadro.habitaciones().size(); ++f) {
    agendas.push_back({cuadro.habitaciones()[f].clave, AgendaDe(cuadro, static_cast<int>(f), pedido)});
  }
  return agendas;
}

std::string LeeAgenda(const Fuente& fuente, const std::string& habitacion, const PedidoAgenda& pedido) {
  Cuadro cuadro;
  cuadro.Lee(fuente, pedido.desde, pedido.noches);
  if (habitacion.empty()) {
    std::string ics;
    Abre(ics, pedido.hotel.empty() ? "Habitaciones" : pedido.hotel);
    for (std::size_t f = 0; f < cuadro.habitaciones().size(); ++f)
      EventosDe(ics, cuadro, static_cast<int>(f), pedido, true);
    Cierra(ics);
    return ics;
  }
  const int fila = cuadro.FilaDe(habitacion);
  if (fila < 0) throw com::Error(com::error::kArgumento, "No existe la habitación «" + habitacion + "»");
  return AgendaDe(cuadro, fila, pedido);
}

std::string NombreDeArchivo(const std::string& habitacion) {
  std::string nombre;
  for (const char c : habitacion) {
    EsLlano(c) ? nombre += c : nombre += "_" + std::to_string(static_cast<unsigned char>(c));
  }
  return nombre;
}

}  // namespace recepcion
