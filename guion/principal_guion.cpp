// reservas-guion: the scripted clerk on the screens' models, without a display.
#include <QGuiApplication>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "guion/archivos.h"
#include "guion/escritorio_guion.h"
#include "guion/interprete.h"
#include "guion/manos_modelos.h"
#include "guion/opciones.h"
#include "host/standalone/proceso.h"
#include "host/standalone/registro.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"

namespace {

constexpr const char* kPrograma = "reservas-guion";

std::unique_ptr<autonomo::Anfitrion> AbreAnfitrion(const autonomo::Opciones& opciones) {
  try {
    return std::make_unique<autonomo::Anfitrion>(opciones);
  } catch (const com::Error& e) {
    throw com::Error(e.Numero(), guion::ConArchivo(opciones.base.Nombre(), e.Descripcion()));
  }
}

// guion: "-" for the standard input.
int Corre(const autonomo::Opciones& opciones, const std::string& guion) {
  const bool deArchivo = guion != "-";
  std::istringstream archivo(deArchivo ? guion::LeeArchivo(guion) : std::string());
  const auto abierto = AbreAnfitrion(opciones);
  autonomo::Anfitrion& anfitrion = *abierto;
  guion::DiceAvisos(kPrograma, *anfitrion.conexion());
  anfitrion.RegistraClases();
  guion::Vigilancia vigilancia(anfitrion);
  guion::Respuestas respuestas;
  guion::ManosModelos manos;
  guion::EscritorioGuion escritorio(respuestas, manos);
  guion::Componente componente;
  guion::Interprete interprete({anfitrion, vigilancia, respuestas, manos, componente}, std::cout, std::cerr);
  escritorio.AlAbrirModal([&](controles::Formulario& formulario) { interprete.AtiendeModal(formulario); });
  std::istream& entrada = deArchivo ? static_cast<std::istream&>(archivo) : std::cin;
  return interprete.Corre(entrada, deArchivo ? guion : "(entrada)") == 0 ? guion::kTodoBien : guion::kConFallas;
}

// Nothing for whoever runs a script: told wherever no session runs.
void AlMensaje(QtMsgType, const QMessageLogContext&, const QString& texto) {
  if (!texto.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) std::cerr << texto.toStdString() << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  autonomo::ProtegeMemoria();
  qInstallMessageHandler(AlMensaje);
  qputenv("QT_QPA_PLATFORM", "offscreen");  // pages are drawn, not shown
  const QGuiApplication aplicacion(argc, argv);
  autonomo::Opciones opciones;
  std::string guion = "-";
  std::optional<std::string> registro;
  try {
    const guion::Argumentos argumentos({argv + 1, argv + argc}, guion::OpcionesDeAnfitrion(), 1);
    if (argumentos.PideAyuda()) {
      std::cout << guion::kUsoGuion;
      return guion::kTodoBien;
    }
    opciones = guion::LeeAnfitrion(argumentos);
    if (argumentos.PideVersion()) {
      std::cout << autonomo::TextoVersionPreguntando(kPrograma, opciones.base.Nombre());
      return guion::kTodoBien;
    }
    if (const auto sueltos = argumentos.Sueltos(); !sueltos.empty()) guion = sueltos.front();
    registro = argumentos.Valor("registro");
  } catch (const com::Error& e) {
    std::cerr << kPrograma << ": " << e.Descripcion() << "\n\n" << guion::kUsoGuion;
    return guion::kUsoErroneo;
  }
  autonomo::registro::Sesion sesion;
  try {
    sesion.Comienza(kPrograma, opciones.base.Nombre(), registro);
    return Corre(opciones, guion);
  } catch (const std::exception& e) {
    autonomo::registro::AnotaFalla(e);
    std::cerr << kPrograma << ": " << e.what() << '\n';
    return guion::kConFallas;
  }
}
