// A clerk without a plan: orders of the script's language at random, and what must hold whatever a clerk does.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <iosfwd>
#include <istream>
#include <map>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "guion/componente.h"
#include "guion/escritorio_guion.h"
#include "guion/vigilados.h"
#include "host/standalone/anfitrion.h"
#include "tests/mono/revision.h"

namespace mono {

// The scripted clerk's desktop, which tells what it was shown.
class Escritorio : public guion::EscritorioGuion {
 public:
  using EscritorioGuion::EscritorioGuion;
  int Mensaje(const controles::CajaMensaje& caja) override {
    vistos.push_back(caja);
    return EscritorioGuion::Mensaje(caja);
  }
  std::vector<controles::CajaMensaje> vistos;
};

// The script: each line is made up when the interpreter asks for it, from what the screen shows by then. It ends after
// so many orders, or at the first fault.
class Mono : private std::streambuf {
 public:
  struct Piezas {
    autonomo::Anfitrion& anfitrion;
    guion::Vigilancia& vigilancia;
    guion::Componente& componente;
    Escritorio& escritorio;
  };
  Mono(const Piezas& piezas, int pasos, std::uint32_t semilla);

  std::istream& Guion() { return guion_; }
  // Where the interpreter says which order was refused, and why.
  std::ostream& Rechazos() { return rechazos_; }
  // What went wrong; "" while nothing did.
  const std::string& Falla() const { return falla_; }
  // Every order so far, as a script.
  const std::vector<std::string>& Ordenes() const { return ordenes_; }
  // What it came to do.
  void Cuenta(std::ostream& salida) const;
  // Whether all that it is there for came about: reservations saved, refused, changed, loaded and saved again.
  bool HizoDeTodo() const;

 private:
  int_type underflow() override;

  // --- what it does next: orders to come, each with what is looked at behind it
  struct Paso {
    std::string orden;
    std::function<void()> despues;
  };
  void Pon(std::string orden, std::function<void()> despues = nullptr) {
    porHacer_.push_back({std::move(orden), std::move(despues)});
  }
  void Planea();
  void EnElTablero(const controles::Formulario& tablero);
  void Captura();
  void Noches();
  void PorTablero();
  void Abre();
  void Edita();
  void Suelta();
  void Mostrador();
  void Reloj();
  void Configura();
  void HazFallar();
  void Compara();

  // --- what it looks at
  void Mira();
  void MiraMensaje(const controles::CajaMensaje& caja);
  void MiraRechazo(const std::string& linea);
  void RevisaTodo();
  void RevisaTotal(const std::string& folio);
  void Acusa(const std::string& que);

  // --- chance
  int Azar(int menor, int mayor) {
    return menor + static_cast<int>(azar_() % static_cast<unsigned>(mayor - menor + 1));
  }
  template <class Lista>
  const auto& Alguno(const Lista& lista) {
    return lista[static_cast<std::size_t>(azar_() % std::size(lista))];
  }
  std::string Dia();
  std::string Folio();
  std::string Valor();
  controles::Control& Control(const controles::Formulario& formulario);

  Piezas piezas_;
  int pasos_;
  std::mt19937 azar_;
  std::istream guion_{this};
  std::ostringstream rechazos_;
  std::string linea_, falla_;
  std::deque<Paso> porHacer_;
  std::function<void()> despues_;
  std::vector<std::string> ordenes_, folios_;
  com::Fecha ahora_;
  std::map<std::string, int> cuentas_;
};

}  // namespace mono
