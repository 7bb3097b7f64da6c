// The board on a real host with a database in memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "host/standalone/anfitrion.h"
#include "publico/publico.h"
#include "tests/comun/conexion_vigilada.h"
#include "tests/comun/escritorio_prueba.h"

namespace pruebas {

// One cell as the clerk sees it, with the state behind it.
struct CeldaVista {
  std::string texto, estilo;
  int estado = -1;
  bool operator==(const CeldaVista&) const = default;
};
struct FilaVista {
  std::string clave, nombre;
  std::vector<CeldaVista> celdas;
  bool operator==(const FilaVista&) const = default;
};
void PrintTo(const FilaVista& fila, std::ostream* salida);

class TableroPrueba : public ::testing::Test {
 protected:
  TableroPrueba();
  ~TableroPrueba() override;

  // A tester's statement.
  void Sql(const std::string& sentencia) { host.conexion()->Directa(sentencia); }
  // A room type with its product and price; a room of it; one area and group besides.
  void Tipo(const std::string& clave, const std::string& descripcion);
  void Habitacion(const std::string& clave, const std::string& tipo, const std::string& grupo = "0001",
                  const std::string& area = "0001", const std::string& estado = "AC");
  // Dates 'AAAA-MM-DD' with or without a time.
  void Reserva(const std::string& folio, const std::string& habitacion, const std::string& inicio,
               const std::string& fin, const std::string& estado = "AC");
  void Estancia(const std::string& folio, const std::string& habitacion, const std::string& llegada,
                const std::string& salida, const std::string& estado = "AC");
  void Bloqueo(const std::string& habitacion, const std::string& inicio, const std::string& fin,
               const std::string& estado = "AC");

  // Day columns for the nights from the day on, then a load. False when one of them failed.
  bool Abre(com::Fecha desde, int noches);
  std::vector<FilaVista> Vista() const;
  CeldaVista Celda(const std::string& clave, int noche) const;
  void Clic(int fila, int noche) { tablero.ssDisponibilidad.ClicCelda(fila, noche + kv207::kColumnasFijas); }

  EscritorioPrueba escritorio;
  autonomo::Anfitrion host;
  std::shared_ptr<ConexionVigilada> conexion;
  kv207::frmDisponibilidad tablero;
};

}  // namespace pruebas
