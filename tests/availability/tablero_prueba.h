// The board on a real host with a database in memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "host/standalone/anfitrion.h"
#include "publico/publico.h"
#include "tests/comun/escritorio_prueba.h"

namespace pruebas {

// Hands the statements on; says what the test wants about whole sets, keeps the texts, fails on demand.
class ConexionVigilada : public ado::Connection {
 public:
  explicit ConexionVigilada(ado::ConnectionPtr real) : real_(std::move(real)) {}
  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    sentencias.push_back(sentencia.Texto());
    if (!falla.empty() && sentencia.Texto().find(falla) != std::string::npos && --faltan == 0) {
      throw com::Error(com::error::kInyectada, "falla inyectada");
    }
    return real_->Execute(sentencia);
  }
  using ado::Connection::Execute;
  void BeginTrans() override { real_->BeginTrans(); }
  void CommitTrans() override { real_->CommitTrans(); }
  void RollbackTrans() override { real_->RollbackTrans(); }
  bool LeeConjuntos() const override { return conjuntos; }

  bool conjuntos = true;
  std::vector<std::string> sentencias;
  std::string falla;  // the faltan-th statement with this text fails
  int faltan = 0;

 private:
  ado::ConnectionPtr real_;
};

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
