// The screens on the measured hotel, without a window.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "availability/frmDisponibilidad.h"
#include "host/standalone/anfitrion.h"
#include "platform/controls/formulario.h"
#include "reservation/frmKV207.h"

namespace banco {

// Shows nothing. The mail question after a save is answered with No; any other message means that a run failed, and
// ends the program.
class EscritorioMudo : public controles::Escritorio {
 public:
  // When the mail question was asked last: the save was committed by then.
  std::chrono::steady_clock::time_point pregunta;

  void Muestra(controles::Formulario&) override {}
  void MuestraModal(controles::Formulario&) override {}
  void Oculta(controles::Formulario&) override {}
  void Descarga(controles::Formulario&) override {}
  void Enfoca(controles::Control&) override {}
  int AnchoTexto(const controles::Formulario&, std::string_view texto) override {
    return 100 * static_cast<int>(texto.size());
  }
  void ProcesaPendientes() override {}
  int Mensaje(const controles::CajaMensaje& caja) override;
  std::string EditaNotas(const std::string&, const std::string& texto, int) override { return texto; }
  std::string EligeDeCatalogo(const std::string&, const std::vector<std::pair<std::string, std::string>>&) override {
    return {};
  }
  void AbrePantalla(const std::string&, const std::vector<com::Variant>&) override {}
  void EnviaTeclas(const std::string&) override {}
};

// Passes everything on; notes when the last transaction began.
class ConexionCronometrada : public ado::Connection {
 public:
  explicit ConexionCronometrada(ado::ConnectionPtr real) : real_(std::move(real)) {}
  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override { return real_->Execute(sentencia); }
  void BeginTrans() override {
    comienzo = std::chrono::steady_clock::now();
    real_->BeginTrans();
  }
  void CommitTrans() override { real_->CommitTrans(); }
  void RollbackTrans() override { real_->RollbackTrans(); }
  bool LeeConjuntos() const override { return real_->LeeConjuntos(); }

  std::chrono::steady_clock::time_point comienzo;

 private:
  ado::ConnectionPtr real_;
};

// The host on a hotel, a file or an address, with its services registered. One at a time.
class Sesion {
 public:
  explicit Sesion(const std::string& hotel, bool leeConjuntos = true);
  ~Sesion();
  Sesion(const Sesion&) = delete;
  Sesion& operator=(const Sesion&) = delete;
  autonomo::Anfitrion& host() { return host_; }
  const EscritorioMudo& escritorio() const { return escritorio_; }

 private:
  EscritorioMudo escritorio_;
  autonomo::Anfitrion host_;
};

// Both screens, shown.
struct Pantallas {
  kv207::frmDisponibilidad tablero;
  kv207::frmKV207 reservacion{tablero};

  Pantallas() { reservacion.Muestra(); }
  ~Pantallas() { reservacion.Descarga(); }
  Pantallas(const Pantallas&) = delete;
  Pantallas& operator=(const Pantallas&) = delete;
};

// A new reservation of the rooms for two nights, ready to be accepted.
void Captura(kv207::frmKV207& pantalla, const std::vector<std::string>& habitaciones, com::Fecha llegada);
// The n-th arrival so late that nobody else comes then, each two nights after the last.
com::Fecha LlegadaLejana(int n);
// Loads a reservation by its folio.
void CargaFolio(kv207::frmKV207& pantalla, const std::string& folio);

// The board for the measured nights, loaded in the given view. Ends the program when the load fails.
std::unique_ptr<kv207::frmDisponibilidad> AbreTablero(kv207::ModoVista modo);
void CargaTablero(kv207::frmDisponibilidad& tablero);

}  // namespace banco
