#include "host/standalone/cambio_llave.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "host/standalone/tarjetas_sql.h"
#include "host/standalone/transaccion.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/com/variant.h"

namespace autonomo {
namespace {

const Llave* Busca(const std::vector<Llave>& llaves, const std::string& huella) {
  const auto llave = std::ranges::find(llaves, huella, &Llave::Huella);
  return llave == llaves.end() ? nullptr : &*llave;
}

ado::RecordsetPtr Valores(ConexionDeMotor& motor, const ColumnaDeTarjeta& c) {
  const std::string columna(c.columna);
  return motor.Consulta("SELECT " + std::string(c.llave) + ", " + columna + " FROM " + std::string(c.tabla) +
                        " WHERE " + columna + " <> ''");
}

// The text in clear of what a column holds.
std::string EnClaro(const std::string& texto, const std::vector<Llave>& llaves, std::string_view tabla) {
  const std::string_view marca = BuscaMarca(texto);
  if (marca.empty()) return texto;
  const Llave* llave = Busca(llaves, HuellaDeMarca(marca));
  std::optional<std::string> claro = llave == nullptr ? std::nullopt : llave->Abre(marca);
  if (claro) return *std::move(claro);
  throw com::Error(com::error::kBaseDatos,
                   "Hay un dato de tarjeta en " + std::string(tabla) + " que la llave " + HuellaDeMarca(marca) +
                       (llave == nullptr ? " abre, y no está en este equipo" : " no abre: está dañado") +
                       ". No se cambió ninguno");
}

std::size_t Resella(ConexionDeMotor& motor, const ColumnaDeTarjeta& c, const std::vector<Llave>& llaves,
                    const Llave& nueva) {
  const std::string columna(c.columna),
      cambia = "UPDATE " + std::string(c.tabla) + " SET " + columna + " = ? WHERE " + std::string(c.llave) + " = ?";
  std::size_t cuantos = 0;
  for (const auto filas = Valores(motor, c); !filas->Eof(); filas->MoveNext(), ++cuantos) {
    const std::string claro = EnClaro(com::TextoDe(filas->Fields(1).Value()), llaves, c.tabla);
    motor.Consulta(
        cambia, {nueva.Sella(claro, c.clase, motor.Motor() == esquema::Motor::PostgreSQL), filas->Fields(0).Value()});
  }
  return cuantos;
}

}  // namespace

Sellos CuentaSellos(ConexionDeMotor& motor, const std::vector<Llave>& llaves) {
  Sellos sellos;
  for (const ColumnaDeTarjeta& c : ColumnasDeTarjeta()) {
    for (const auto filas = Valores(motor, c); !filas->Eof(); filas->MoveNext()) {
      const std::string texto = com::TextoDe(filas->Fields(1).Value());
      const std::string_view marca = BuscaMarca(texto);
      if (marca.empty()) {
        ++sellos.enClaro;
        continue;
      }
      ++sellos.porLlave[HuellaDeMarca(marca)];
      const Llave* llave = Busca(llaves, HuellaDeMarca(marca));
      if (llave != nullptr && !llave->Abre(marca)) ++sellos.danados;
    }
  }
  return sellos;
}

std::size_t CambiaLlave(ConexionDeMotor& motor, const std::vector<Llave>& llaves, const Llave& nueva) {
  Transaccion todas(motor);
  // The embedded engine has one writer at a time anyway. On a server whoever has asked which key to seal with ends
  // first.
  if (motor.Motor() == esquema::Motor::PostgreSQL)
    motor.Directa("LOCK TABLE Cliente, Reservacion_Datos_Tarjeta IN ACCESS EXCLUSIVE MODE");
  std::size_t cuantos = 0;
  for (const ColumnaDeTarjeta& c : ColumnasDeTarjeta()) cuantos += Resella(motor, c, llaves, nueva);
  const Sellos quedan = CuentaSellos(motor, {nueva});
  const auto suyos = quedan.porLlave.find(nueva.Huella());
  if (quedan.danados != 0 || quedan.enClaro != 0 || quedan.porLlave.size() > 1 ||
      (suyos == quedan.porLlave.end() ? 0 : suyos->second) != cuantos)
    throw com::Error(com::error::kBaseDatos, "No todas las tarjetas quedaron con la llave nueva: no se cambió ninguna");
  todas.Concluye();
  return cuantos;
}

}  // namespace autonomo
