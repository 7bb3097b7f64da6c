#include "desktop/pistas.h"

#include <algorithm>

#include "component/nombres.h"

namespace vista {

bool EsTablero(const controles::Grid& grid) { return !grid.Estilos().empty(); }

const PistasGrid& Pistas::De(const controles::Grid& grid) const { return EsTablero(grid) ? tablero : renglones; }

QString Pistas::IconoDe(const std::string& boton) const {
  const auto par = std::find_if(iconos.begin(), iconos.end(), [&](const auto& i) { return i.first == boton; });
  return par == iconos.end() ? QString() : par->second;
}

std::string Pistas::FichaDe(const std::string& campo) const {
  const auto par = std::find_if(fichas.begin(), fichas.end(), [&](const auto& f) { return f.first == campo; });
  return par == fichas.end() ? std::string() : par->second;
}

bool Pistas::EsEntero(const std::string& campo) const {
  return std::find(enteros.begin(), enteros.end(), campo) != enteros.end();
}

Pistas PistasDeLasPantallas() {
  namespace control = kv207::control;
  using kv207::EstadoCelda;
  return {
      .iconos = {{control::kFichaCliente, QStringLiteral("ficha")},
                 {control::kFichaHuesped, QStringLiteral("ficha")},
                 {control::kEditaNotas, QStringLiteral("notas")},
                 {control::kAbreTablero, QStringLiteral("tablero")},
                 {control::kPrecios, QStringLiteral("precios")}},
      .fichas = {{control::kCliente, control::kFichaCliente}, {control::kHuesped, control::kFichaHuesped}},
      .enteros = {control::kDias},
      .trasEditar = control::kHuesped,
      .abre = control::kFolio,
      .totales = {control::kSubTotal, control::kImpuestos, control::kTotal},
      .barra = {.nueva = QStringLiteral("Nueva reservación"),
                .editada = QStringLiteral("Editando "),
                .mostrada = QStringLiteral("Folio "),
                .abrir = QStringLiteral("Abrir la reservación"),
                .copiar = QStringLiteral("Copiar el folio")},
      .renglones = {.primera = std::string(kv207::col::kAdultos),
                    .enteras = {std::string(kv207::col::kTotal)},
                    .explicadas = {std::string(kv207::col::kPrecio), std::string(kv207::col::kPrecioExtra),
                                   std::string(kv207::col::kDescuento), std::string(kv207::col::kDescuentoImporte),
                                   std::string(kv207::col::kImpuestoImporte), std::string(kv207::col::kTotal)},
                    .acordada = std::string(kv207::col::kPrecio),
                    .agregar = QStringLiteral("Agregar habitación"),
                    .quitar = QStringLiteral("Quitar habitación"),
                    .manija = QStringLiteral("Clic y Supr quitan la habitación")},
      .tablero = {.libre = std::string(kv207::NombreEstado(EstadoCelda::Disponible)),
                  .marcada = std::string(kv207::NombreEstado(EstadoCelda::Ocupando)),
                  .manija = QStringLiteral("Clic: marca o desmarca toda la fila"),
                  .sinColumnas = QStringLiteral("Sin noches que mostrar: revise llegada y salida"),
                  .sinFilas = QStringLiteral("Ninguna habitación con estos filtros")},
  };
}

}  // namespace vista
