#include "recepcion/parte.h"

#include <array>

#include "platform/listado/listado.h"
#include "platform/regional/nombres.h"
#include "platform/regional/regional.h"

namespace recepcion {

namespace {

using listado::Clase;

// What the page holds: names of a list, letters of a name and of its rooms.
constexpr std::size_t kNombres = 6, kLetras = 36;

// First day of the month after that of the date.
com::Fecha MesSiguiente(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  return c.mes == 12 ? com::FechaDe(c.anio + 1, 1, 1) : com::FechaDe(c.anio, c.mes + 1, 1);
}

CuentaDe CuentaDelMes(const Fuente& fuente, com::Fecha primero, com::Fecha hoy) {
  const com::Fecha ultimo = com::MasDias(MesSiguiente(primero), -1);
  return {primero, ultimo, Suma(LeeCifras(fuente, {primero, ultimo, ""}, hoy))};
}

std::string Mes(com::Fecha fecha) {
  const com::Civil c = com::ACivil(fecha);
  return std::string(regional::kMeses[static_cast<std::size_t>(c.mes - 1)]) + " de " + std::to_string(c.anio);
}

std::string NombreDelDia(com::Fecha fecha) {
  return std::string(regional::kDias[static_cast<std::size_t>(com::DiaSemana(fecha) - 1)]) + " " +
         regional::FechaCorta(fecha);
}

int Personas(const std::vector<Fila>& filas) {
  int personas = 0;
  for (const Fila& fila : filas) personas += fila.personas;
  return personas;
}

std::string Importe(double valor) { return regional::Moneda(valor); }
std::string Tanto(double valor) { return listado::Texto(Clase::PorCiento, valor); }

// "Llegadas: 5, con 11 personas".
std::string CuentaDeLista(const Parte& parte, Lista lista) {
  const auto& filas = parte.dia.listas[static_cast<std::size_t>(lista)];
  if (lista == Lista::NoLlegaron && !parte.dia.llevaEstancias) return "el hotel no registra entradas";
  std::string texto = std::to_string(filas.size());
  if (const int personas = Personas(filas); personas > 0) {
    texto += ", " + std::to_string(personas) + (personas == 1 ? " persona" : " personas");
  }
  return texto;
}

std::string Corto(const std::string& texto) {
  return com::LargoUtf8(texto) <= kLetras ? texto : com::PrincipioUtf8(texto, kLetras - 1) + "…";
}

// Lists that name their guests.
constexpr std::array kConNombres{Lista::Llegadas, Lista::Salidas, Lista::NoLlegaron};

std::vector<std::string> NombresDe(const Parte& parte, Lista lista) {
  const auto& filas = parte.dia.listas[static_cast<std::size_t>(lista)];
  std::vector<std::string> nombres;
  for (const Fila& f : filas) {
    if (nombres.size() == kNombres) {
      nombres.push_back("y " + std::to_string(filas.size() - kNombres) + " más");
      break;
    }
    std::string dice = Corto(f.huesped.empty() ? "Estancia " + f.estancia : f.huesped);
    if (!f.habitaciones.empty()) dice += " · " + Corto(f.habitaciones);
    if (!f.folio.empty()) dice += " · " + f.folio;
    nombres.push_back(std::move(dice));
  }
  return nombres;
}

// A table of the report: captions, then rows of texts.
struct Tabla {
  std::vector<std::string> titulos;
  std::vector<std::vector<std::string>> filas;
};

Tabla TablaDeNoches(const Parte& parte) {
  Tabla tabla{{"Noche", "Disponibles", "Ocupadas", "Ocupación", "Ingreso"}, {}};
  for (const CuentaDe& n : parte.noches) {
    tabla.filas.push_back({NombreDelDia(n.desde), std::to_string(n.cuenta.disponibles),
                           std::to_string(n.cuenta.Ocupadas()), Tanto(n.cuenta.Ocupacion()),
                           Importe(n.cuenta.ingreso)});
  }
  return tabla;
}

Tabla TablaDeMeses(const Parte& parte) {
  const CuentaDe &mes = parte.mes, &otro = parte.siguiente;
  Tabla tabla{{"", Mes(mes.desde), Mes(otro.desde)}, {}};
  const auto fila = [&](const char* que, auto&& dice) {
    tabla.filas.push_back({que, dice(mes.cuenta), dice(otro.cuenta)});
  };
  fila("Ocupación", [](const Cuenta& c) { return Tanto(c.Ocupacion()); });
  fila("Tarifa promedio", [](const Cuenta& c) { return Importe(c.Tarifa()); });
  fila("Ingreso por disponible", [](const Cuenta& c) { return Importe(c.PorHabitacion()); });
  fila("Noches vendidas", [](const Cuenta& c) { return std::to_string(c.vendidas); });
  fila("Vendidas hace un año a estas alturas", [](const Cuenta& c) { return std::to_string(c.vendidasEntonces); });
  fila("Vendidas hace un año al final", [](const Cuenta& c) { return std::to_string(c.vendidasAlFinal); });
  fila("Ingreso", [](const Cuenta& c) { return Importe(c.ingreso); });
  fila("Ingreso hace un año a estas alturas", [](const Cuenta& c) { return Importe(c.ingresoEntonces); });
  fila("Ingreso hace un año al final", [](const Cuenta& c) { return Importe(c.ingresoAlFinal); });
  return tabla;
}

std::string Escapado(const std::string& texto) {
  std::string html;
  for (const char c : texto) {
    switch (c) {
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '&':
        html += "&amp;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string HtmlDe(const Tabla& tabla) {
  std::string html = "<table width='100%' cellpadding='2' cellspacing='0'><tr>";
  const auto celda = [&](std::size_t c, const std::string& texto, const char* etiqueta) {
    html += std::string("<") + etiqueta + (c == 0 ? " align='left'>" : " align='right'>") + Escapado(texto) + "</" +
            etiqueta + ">";
  };
  for (std::size_t c = 0; c < tabla.titulos.size(); ++c) celda(c, tabla.titulos[c], "th");
  for (const auto& fila : tabla.filas) {
    html += "</tr><tr>";
    for (std::size_t c = 0; c < fila.size(); ++c) celda(c, fila[c], "td");
  }
  return html + "</tr></table>";
}

// Columns as wide as what they hold, the first one to the left.
std::string TextoDe(const Tabla& tabla) {
  std::vector<std::size_t> anchos(tabla.titulos.size(), 0);
  const auto mide = [&](const std::vector<std::string>& fila) {
    for (std::size_t c = 0; c < fila.size(); ++c) anchos[c] = std::max(anchos[c], com::LargoUtf8(fila[c]));
  };
  mide(tabla.titulos);
  for (const auto& fila : tabla.filas) mide(fila);
  std::string texto;
  const auto escribe = [&](const std::vector<std::string>& fila) {
    std::string linea;
    for (std::size_t c = 0; c < fila.size(); ++c) {
      const std::string hueco(anchos[c] - com::LargoUtf8(fila[c]), ' ');
      linea += c == 0 ? "  " + fila[c] + hueco : "  " + hueco + fila[c];
    }
    texto += com::RecortaDerecha(linea) + "\n";
  };
  escribe(tabla.titulos);
  for (const auto& fila : tabla.filas) escribe(fila);
  return texto;
}

std::string AlPie(const Parte& parte) {
  std::string texto = "Importes sin impuestos, en " + parte.moneda + ". Hace un año a estas alturas: lo reservado al " +
                      regional::FechaCorta(UnAnoAntes(parte.momento)) + ".";
  if (parte.hecho != com::Fecha{})
    texto += " Se hizo el " + regional::TextoFecha(parte.hecho) + ", con lo que había entonces.";
  return texto;
}

}  // namespace

Parte LeeParte(const Fuente& fuente, com::Fecha momento, std::string hotel, std::string moneda) {
  const com::Fecha hoy = com::SoloFecha(momento);
  const com::Civil c = com::ACivil(hoy);
  Parte parte;
  parte.hotel = std::move(hotel);
  parte.moneda = std::move(moneda);
  parte.momento = momento;
  parte.dia = LeeListas(fuente, hoy);
  parte.noches = LeeCifras(fuente, {hoy, com::MasDias(hoy, kNochesDelParte - 1), ""}, hoy);
  parte.mes = CuentaDelMes(fuente, com::FechaDe(c.anio, c.mes, 1), hoy);
  parte.siguiente = CuentaDelMes(fuente, MesSiguiente(hoy), hoy);
  return parte;
}

std::string TituloDe(const Parte& parte) {
  return "Parte del " + regional::FechaCorta(parte.momento) + " · " + parte.hotel;
}

std::string TextoDe(const Parte& parte) {
  std::string texto = TituloDe(parte) + "\n\n";
  for (std::size_t l = 0; l < kListas; ++l) {
    const auto lista = static_cast<Lista>(l);
    texto += std::string(TituloDe(lista)) + ": " + CuentaDeLista(parte, lista) + "\n";
  }
  for (const Lista lista : kConNombres) {
    const auto nombres = NombresDe(parte, lista);
    if (nombres.empty()) continue;
    texto += "\n" + std::string(TituloDe(lista)) + "\n";
    for (const std::string& nombre : nombres) texto += "  " + nombre + "\n";
  }
  return texto + "\nOcupación\n" + TextoDe(TablaDeNoches(parte)) + "\nCifras\n" + TextoDe(TablaDeMeses(parte)) + "\n" +
         AlPie(parte) + "\n";
}

std::string HtmlDe(const Parte& parte) {
  std::string html = "<html><body style='font-size:9pt'><h2>" + Escapado(parte.hotel) + "</h2><p><b>Parte del " +
                     NombreDelDia(parte.momento) + "</b></p><table width='100%' cellpadding='2' cellspacing='0'><tr>";
  for (std::size_t l = 0; l < kListas; ++l) {
    const auto lista = static_cast<Lista>(l);
    html += "<td><b>" + std::string(TituloDe(lista)) + "</b><br/>" + CuentaDeLista(parte, lista) + "</td>";
  }
  html += "</tr></table><table width='100%' cellpadding='2' cellspacing='0'><tr>";
  for (const Lista lista : kConNombres) {
    html += "<td width='33%' valign='top'><b>" + std::string(TituloDe(lista)) + "</b>";
    for (const std::string& nombre : NombresDe(parte, lista)) html += "<br/>" + Escapado(nombre);
    html += "</td>";
  }
  html += "</tr></table>";
  return html + "<p><b>Ocupación</b></p>" + HtmlDe(TablaDeNoches(parte)) + "<p><b>Cifras</b></p>" +
         HtmlDe(TablaDeMeses(parte)) + "<p>" + Escapado(AlPie(parte)) + "</p></body></html>";
}

}  // namespace recepcion
