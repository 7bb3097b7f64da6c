// mono [--pasos N] [--semilla S] [--graba SCRIPT] and the options of reservas-guion: so many orders at random on the
// demo hotel, in memory unless another database is named. The same seed gives the same orders; --graba keeps them as a
// script that reservas-guion runs with the same options. Ends with 1 at the first thing that must not be.
#include <QCoreApplication>
#include <fstream>
#include <iostream>

#include "guion/interprete.h"
#include "guion/manos_modelos.h"
#include "guion/opciones.h"
#include "platform/com/error.h"
#include "tests/mono/mono.h"

namespace {

// Swallows the interpreter's answers.
class Nada : public std::streambuf {
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
  std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

int Corre(const guion::Argumentos& argumentos) {
  const int pasos = std::stoi(argumentos.Valor("pasos").value_or("2000"));
  const auto semilla = static_cast<std::uint32_t>(std::stoul(argumentos.Valor("semilla").value_or("20260309")));
  autonomo::Opciones opciones = guion::LeeAnfitrion(argumentos);
  opciones.demo = true;
  if (!opciones.ahora) opciones.ahora = com::DeIso("2026-03-09T10:00:00");
  std::cout << "--pasos " << pasos << " --semilla " << semilla << std::endl;

  autonomo::Anfitrion anfitrion(opciones);
  anfitrion.RegistraClases();
  guion::Vigilancia vigilancia(anfitrion);
  guion::Respuestas respuestas;
  guion::ManosModelos manos;
  mono::Escritorio escritorio(respuestas, manos);
  guion::Componente componente;
  Nada nada;
  std::ostream respuestasDelGuion(&nada);
  mono::Mono mono({anfitrion, vigilancia, componente, escritorio}, pasos, semilla);
  guion::Interprete interprete({anfitrion, vigilancia, respuestas, manos, componente}, respuestasDelGuion,
                               mono.Rechazos());
  escritorio.AlAbrirModal([&](controles::Formulario& formulario) { interprete.AtiendeModal(formulario); });
  interprete.Corre(mono.Guion(), "mono");

  if (const auto graba = argumentos.Valor("graba")) {
    std::ofstream archivo(*graba);
    for (const std::string& orden : mono.Ordenes()) archivo << orden << '\n';
  }
  mono.Cuenta(std::cout);
  if (!mono.Falla().empty()) {
    std::cerr << mono.Falla();
    return 1;
  }
  if (mono.HizoDeTodo()) return 0;
  std::cerr << "Nothing was saved, or nothing compared: give it more orders\n";
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication aplicacion(argc, argv);
  try {
    std::vector<guion::Opcion> opciones = guion::OpcionesDeAnfitrion();
    for (const char* propia : {"pasos", "semilla", "graba"}) opciones.push_back({propia, true});
    return Corre(guion::Argumentos({argv + 1, argv + argc}, opciones, 0));
  } catch (const std::exception& e) {
    std::cerr << "mono: " << e.what() << '\n';
    return 1;
  }
}
