// reservas-guion: the scripted clerk on the screens' models, without a display.
#include <QCoreApplication>
#include <iostream>
#include <memory>
#include <sstream>

#include "guion/archivos.h"
#include "guion/escritorio_guion.h"
#include "guion/interprete.h"
#include "guion/manos_modelos.h"
#include "guion/opciones.h"
#include "platform/com/error.h"

namespace {

constexpr int kTodoBien = 0, kConFallas = 1, kUsoErroneo = 2;

std::unique_ptr<autonomo::Anfitrion> AbreAnfitrion(const autonomo::Opciones& opciones) {
  try {
    return std::make_unique<autonomo::Anfitrion>(opciones);
  } catch (const com::Error& e) {
    // A connection string may hold a password: only a file is named.
    if (!opciones.base.conexion.empty()) throw;
    throw com::Error(e.Numero(), guion::ConArchivo(opciones.base.ruta, e.Descripcion()));
  }
}

int Corre(const guion::OpcionesGuion& opciones) {
  const bool deArchivo = opciones.guion != "-";
  std::istringstream archivo(deArchivo ? guion::LeeArchivo(opciones.guion) : std::string());
  const auto abierto = AbreAnfitrion(opciones.anfitrion);
  autonomo::Anfitrion& anfitrion = *abierto;
  anfitrion.RegistraClases();
  guion::Vigilancia vigilancia(anfitrion);
  guion::Respuestas respuestas;
  guion::ManosModelos manos;
  guion::EscritorioGuion escritorio(respuestas, manos);
  guion::Componente componente;
  guion::Interprete interprete({anfitrion, vigilancia, respuestas, manos, componente}, std::cout, std::cerr);
  escritorio.AlAbrirModal([&](controles::Formulario& formulario) { interprete.AtiendeModal(formulario); });
  std::istream& entrada = deArchivo ? static_cast<std::istream&>(archivo) : std::cin;
  return interprete.Corre(entrada, deArchivo ? opciones.guion : "(entrada)") == 0 ? kTodoBien : kConFallas;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication aplicacion(argc, argv);
  guion::OpcionesGuion opciones;
  try {
    opciones = guion::LeeOpciones(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const com::Error& e) {
    std::cerr << "reservas-guion: " << e.Descripcion() << "\n\n" << guion::kUsoGuion;
    return kUsoErroneo;
  }
  if (opciones.ayuda) {
    std::cout << guion::kUsoGuion;
    return kTodoBien;
  }
  try {
    return Corre(opciones);
  } catch (const std::exception& e) {
    std::cerr << "reservas-guion: " << e.what() << '\n';
    return kConFallas;
  }
}
