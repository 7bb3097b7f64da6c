#include "desktop/programa.h"

#include <QCursor>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <vector>

#include "desktop/acceso.h"
#include "desktop/ajustes.h"
#include "desktop/asistente.h"
#include "desktop/conexiones.h"
#include "desktop/cuida_captura.h"
#include "desktop/despues.h"
#include "desktop/dialogos.h"
#include "desktop/editor_catalogos.h"
#include "desktop/escala.h"
#include "desktop/escritorio_qt.h"
#include "desktop/guarda.h"
#include "desktop/guia.h"
#include "desktop/hoteles.h"
#include "desktop/idioma.h"
#include "desktop/manos_qt.h"
#include "desktop/mostrador.h"
#include "desktop/pantallas.h"
#include "desktop/preguntas.h"
#include "desktop/reparto.h"
#include "desktop/senales.h"
#include "desktop/vigia.h"
#include "desktop/vista.h"
#include "guion/componente.h"
#include "guion/interprete.h"
#include "guion/opciones.h"
#include "guion/respuestas.h"
#include "guion/vigilados.h"
#include "host/standalone/hotel_nuevo.h"
#include "host/standalone/parametros.h"
#include "host/standalone/permisos.h"
#include "host/standalone/registro.h"
#include "host/standalone/respaldo_diario.h"
#include "host/standalone/usuarios.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"
#include "platform/controls/barra.h"
#include "publico/publico.h"

namespace vista {

namespace {

void MuestraFalla(const std::string& texto) {
  std::cerr << "reservas: " << texto << '\n';
  Avisa(texto, caja::kCritico, nullptr);
}

// A stored parameter that cannot be read is corrected before the screens read it; one that is not ends the load with
// its name, but for a colour.
void CorrigeParametros(autonomo::Anfitrion& anfitrion) {
  std::string motivos;
  for (const std::string& motivo : autonomo::ParametrosIlegibles(*anfitrion.conexion())) motivos += motivo + ".\r\n";
  if (motivos.empty()) return;
  Avisa(motivos + "Corríjalo en la configuración.", caja::kAviso, nullptr);
  AbreConfiguracion(anfitrion, nullptr);
}

// What the screens hold of the host goes with its session.
struct Olvido {
  Olvido() = default;
  Olvido(const Olvido&) = delete;
  Olvido& operator=(const Olvido&) = delete;
  ~Olvido() {
    publico::Olvida();
    controles::FijaEscritorio(nullptr);
  }
};

// The locked screen, by itself or by the menu; null in a hotel without passwords.
std::unique_ptr<Bloqueo> PoneBloqueo(autonomo::Anfitrion& anfitrion, const autonomo::OpcionesConexion& base,
                                     EscritorioQt& escritorio) {
  if (!autonomo::PideContrasena(*anfitrion.conexion())) return nullptr;
  constexpr int kMinuto = 60000;
  const int minutos =
      com::CInt(autonomo::ValorParametro(*anfitrion.conexion(), anfitrion::parametro::kBloqueoMinutos.clave));
  auto bloqueo =
      std::make_unique<Bloqueo>(anfitrion, base, minutos * kMinuto, [] { QApplication::exit(kOtroUsuario); });
  escritorio.contexto().menu.push_back(
      {QStringLiteral("Blo&quear la pantalla"), [b = bloqueo.get()] { b->Bloquea(); }});
  return bloqueo;
}

// What the clerk is to know of what went on behind her back.
std::vector<std::string> TomaNoticias(autonomo::Anfitrion& anfitrion, std::optional<autonomo::RespaldoDiario>& diario) {
  std::vector<std::string> noticias = anfitrion.TomaAvisos();
  if (!diario) return noticias;
  for (const auto& noticia : diario->TomaNoticias()) {
    autonomo::registro::Anota(noticia.falla ? "falla la copia de respaldo" : noticia.texto);
    if (noticia.falla) noticias.push_back("No se hizo la copia de respaldo de hoy. " + noticia.texto);
  }
  return noticias;
}

void AlMensajeFatal(QtMsgType tipo, const QMessageLogContext&, const QString& texto) {
  if (tipo == QtFatalMsg) {
    std::cerr << "reservas: no se pudo abrir la pantalla gráfica: " << texto.toStdString() << '\n';
    std::_Exit(kFalla);
  }
  // Told by the toolkit wherever no session or window manager runs; nothing for the clerk.
  if (texto.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR"))) return;
  if (texto.startsWith(QLatin1String("This plugin does not support"))) return;
  // The last that the toolkit says before it ends the program.
  if (texto.contains(QLatin1String("connection broke"))) {
    std::cerr << "reservas: se perdió la pantalla gráfica. Lo aceptado quedó guardado; lo que estaba en captura se "
                 "ofrece al volver a abrir.\n";
    return;
  }
  if (tipo != QtDebugMsg) std::cerr << texto.toStdString() << '\n';
}

// Every window's title ends in the program's name; at a hotel to practise in, in what it is.
void FirmaVentanas(bool demo) {
  QApplication::setApplicationDisplayName(demo ? QStringLiteral("DEMO") : QStringLiteral("Reservaciones"));
}

// A database without a hotel was chosen in the menu, and its assistant was left.
struct SinHacer {};

// The assistant, where nobody has set a hotel up; whether one was made.
bool AtiendeHotelNuevo(autonomo::Anfitrion& anfitrion, bool elegido) {
  autonomo::Conexion& conexion = *anfitrion.conexion();
  if (!autonomo::SinHotel(conexion) || !autonomo::PuedeConfigurar(conexion, anfitrion.usuario())) return false;
  if (OfreceHotel(anfitrion, nullptr)) return true;
  if (elegido) throw SinHacer{};
  return false;
}

// What comes up first: what a new hotel lacks, the tour of the demo hotel, or the day.
void Comienza(autonomo::Anfitrion& anfitrion, EscritorioQt& escritorio, Mostrador& mostrador, Guia& guia, bool recien) {
  if (recien) MuestraPendientes(anfitrion, escritorio);
  if (escritorio.contexto().demo && !ajustes::OfrecidoRecorrido()) {
    ajustes::AnotaRecorrido();
    controles::CajaMensaje caja;
    caja.titulo = "Bienvenida";
    caja.texto =
        "Éste es un hotel de demostración, para practicar.\r\n¿Desea ver cómo se captura una reservación? Son tres "
        "minutos, y el recorrido queda en el menú del hotel, en Ayuda.";
    caja.estilo = caja::kPregunta | caja::kSiNo;
    if (CajaAviso(caja, escritorio.Frente()).Pregunta() == controles::kSi) {
      escritorio.VuelveAlFrente();
      return guia.Empieza();
    }
  }
  mostrador.AbreHoy();
}

// What the database's server wants; nothing when the person gives none.
std::optional<std::string> PideContrasena(const std::string& pregunta) {
  bool aceptada = false;
  const QString dada = QInputDialog::getText(nullptr, QStringLiteral("Contraseña"), Q(pregunta + ":"),
                                             QLineEdit::Password, QString(), &aceptada);
  return aceptada ? std::optional(dada.toStdString()) : std::nullopt;
}

// For the menu of hotels and the next start.
void RecuerdaHotel(const autonomo::Anfitrion& anfitrion, const OpcionesPrograma& opciones) {
  if (!opciones.anfitrion.base.EnMemoria()) ajustes::AnotaReciente(NombreEntero(anfitrion.base()));
  if (opciones.elegido) ajustes::FijaHotelPropio(NombreEntero(anfitrion.base()));
}

// Whoever leaves a locked screen to another finds her capture when she comes back.
void DejaCaptura(CuidaCaptura& cuida, int estado) {
  if (estado == kOtroUsuario) {
    vista::Corre([&] { cuida.Guarda(); });
  } else {
    cuida.Olvida();
  }
}

}  // namespace

int RevisaPantalla(int argc, char** argv) {
  qInstallMessageHandler(AlMensajeFatal);
#ifdef Q_OS_LINUX
  const auto hay = [](const char* variable) {
    const char* valor = std::getenv(variable);
    return valor != nullptr && *valor != '\0';
  };
  if (hay("QT_QPA_PLATFORM") || hay("DISPLAY") || hay("WAYLAND_DISPLAY")) return kBien;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    // A script and the help need nobody to look on.
    if (a == "--guion" || a.starts_with("--guion=") || guion::PideTexto(a)) {
      setenv("QT_QPA_PLATFORM", "offscreen", 1);
      return kBien;
    }
  }
  std::cerr << "reservas: no hay pantalla gráfica (DISPLAY y WAYLAND_DISPLAY están vacías). "
               "Ábralo desde una sesión gráfica, o use --guion.\n";
  return kFalla;
#else
  return argc < 0 || argv == nullptr ? kFalla : kBien;
#endif
}

int Programa::Corre() {
  std::vector<std::string> argumentos;
  for (const QString& a : QApplication::arguments().mid(1)) argumentos.push_back(a.toStdString());
  InstalaIdioma(aplicacion_);
  OpcionesPrograma opciones;
  try {
    std::string texto;
    opciones = LeeOpcionesPrograma(argumentos, texto);
    if (!texto.empty()) {
      std::cout << texto;
      return kBien;
    }
  } catch (const MalUso& e) {
    std::cerr << "reservas: " << e.motivo << "\n\n" << kUso;
    return kMalUso;
  } catch (const com::Error& e) {
    AplicaEstilo(aplicacion_);
    MuestraFalla(e.Descripcion());
    return kFalla;
  }
  Viste(opciones);
  return CorreAnotando(opciones);
}

void Programa::Viste(const OpcionesPrograma& opciones) {
  const QScreen* pantalla = QApplication::primaryScreen();
  // A script's windows are as designed whatever the screen.
  const int ancho = pantalla == nullptr || opciones.guion ? 0 : pantalla->availableGeometry().width();
  const double letra = FijaAmpliacion(pantalla == nullptr ? 96.0 : pantalla->logicalDotsPerInchY(), ancho);
  AplicaEstilo(aplicacion_, opciones.tema, letra);
}

int Programa::CorreAnotando(const OpcionesPrograma& opciones) {
  autonomo::registro::Sesion sesion;
  try {
    sesion.Comienza("reservas", opciones.anfitrion.base.Nombre(), opciones.registro);
    if (opciones.guion) return CorreGuion(opciones);
    return CorreSesiones(opciones);
  } catch (const SinAcceso&) {
    return kBien;
  } catch (const std::exception& e) {
    autonomo::registro::AnotaFalla(e);
    const autonomo::OpcionesConexion& base = opciones.anfitrion.base;
    const std::string texto = e.what() + (base.EnMemoria() ? std::string() : " (" + base.Nombre() + ")");
    if (opciones.guion) {
      std::cerr << "reservas: " << texto << '\n';
    } else {
      MuestraFalla(texto);
    }
    return kFalla;
  }
}

// A hotel that cannot be opened, that its clerk does not enter, or that is not made leaves the one before it.
int Programa::CorreSesiones(const OpcionesPrograma& opciones) {
  OpcionesPrograma actuales = opciones;
  std::optional<OpcionesPrograma> anteriores;
  for (;;) {
    try {
      const int estado = CorreVentana(actuales);
      if (estado != kOtraSesion && estado != kOtroUsuario) return estado;
      anteriores.reset();
    } catch (const SinAcceso&) {
      if (!anteriores) throw;
    } catch (const SinHacer&) {
      if (!anteriores) return kBien;
    } catch (const com::Error& e) {
      if (!anteriores) throw;
      autonomo::registro::AnotaFalla(e);
      MuestraFalla(actuales.anfitrion.base.Nombre() + ": " + e.Descripcion());
      otroHotel_.reset();
    }
    if (anteriores) {
      actuales = *std::exchange(anteriores, std::nullopt);
    } else if (otroHotel_) {
      anteriores = actuales;
      FijaHotel(actuales.anfitrion.base, *std::exchange(otroHotel_, std::nullopt));
      actuales.anfitrion.demo = false;
      actuales.elegido = true;
      autonomo::registro::Anota("otro hotel: " + actuales.anfitrion.base.Nombre());
    }
  }
}

void Programa::VaAOtroHotel(bool nuevo, const std::string& abierto, EscritorioQt& escritorio) {
  controles::Formulario* principal = escritorio.Principal();
  if (principal == nullptr || !escritorio.PermiteSalir(*principal)) return escritorio.VuelveAlFrente();
  const auto hotel = PreguntaHotel(nuevo, abierto, escritorio.Frente());
  escritorio.VuelveAlFrente();
  if (!hotel) return;
  otroHotel_ = *hotel;
  QApplication::exit(kOtraSesion);
}

void Programa::AmpliaMenu(autonomo::Anfitrion& anfitrion, EscritorioQt& escritorio, Guia& guia) {
  auto& menu = escritorio.contexto().menu;
  const auto otro = [this, &anfitrion, &escritorio](bool nuevo) {
    return [this, &anfitrion, &escritorio, nuevo] { VaAOtroHotel(nuevo, anfitrion.base(), escritorio); };
  };
  menu.push_back({QStringLiteral("&Nuevo hotel…"), otro(true), 0});
  menu.push_back({QStringLiteral("Abr&ir otro hotel…"), otro(false), 0});
  if (escritorio.contexto().demo) {
    menu.push_back({QStringLiteral("&Recorrido para empezar"), [&guia] { guia.Empieza(); }, 0, kAyuda});
  }
}

int Programa::CorreVentana(OpcionesPrograma opciones) {
  FirmaVentanas(false);
  std::optional<std::string> contrasena;  // as typed last
  autonomo::OpcionesConexion& base = opciones.anfitrion.base;
  base.pideContrasena = [&contrasena](const std::string& pregunta) { return contrasena = PideContrasena(pregunta); };
  opciones.anfitrion.identifica = [usuario = opciones.anfitrion.usuario](autonomo::Conexion& conexion) {
    return PideAcceso(conexion, usuario);
  };
  autonomo::Anfitrion anfitrion(opciones.anfitrion);
  const bool recien = AtiendeHotelNuevo(anfitrion, opciones.elegido);
  RecuerdaHotel(anfitrion, opciones);
  anfitrion.RegistraClases();
  const Olvido olvido;  // after the screens, before the host
  EscritorioQt escritorio;
  Mostrador mostrador(escritorio);
  Guia guia(escritorio);
  ConectaAnfitrion(escritorio, anfitrion, mostrador);
  FirmaVentanas(escritorio.contexto().demo);
  AmpliaMenu(anfitrion, escritorio, guia);
  controles::FijaEscritorio(&escritorio);
  guion::Componente componente;
  QApplication::setQuitOnLastWindowClosed(false);
  escritorio.alTerminar = [] { QApplication::quit(); };
  CorrigeParametros(anfitrion);
  // A further connection asks nobody: it knows what was typed here.
  autonomo::OpcionesConexion aparte = base;
  aparte.pideContrasena = [contrasena](const std::string&) { return contrasena; };
  const Reparto reparto(anfitrion, aparte);
  const auto bloqueo = PoneBloqueo(anfitrion, aparte, escritorio);  // before the windows, which take its menu
  componente.Abre(anfitrion.Padre());
  mostrador.Vigila(componente.formulario());
  std::optional<CuidaCaptura> cuida;
  if (!base.EnMemoria()) {
    cuida.emplace(escritorio, anfitrion, mostrador.quitados(), autonomo::registro::CarpetaDeEstado());
  }
  QObject vida;  // no signal is attended to after the screen's end
  AtiendeSenales(&vida, [&] {
    if (escritorio.PermiteSalir(componente.formulario())) QApplication::exit(kBien);
  });
  std::optional<autonomo::RespaldoDiario> diario;
  if (base.conexion.empty() && !base.EnMemoria()) diario.emplace(anfitrion.base());
  const Vigia vigia([&] { return TomaNoticias(anfitrion, diario); },
                    [&] { return QApplication::activeModalWidget() != nullptr || EnCaptura(componente.formulario()); },
                    [&](const std::string& noticia) { Avisa(noticia, caja::kAviso, escritorio.Frente()); });
  QTimer::singleShot(0, &vida, [&] {
    vista::Corre([&] {
      if (!cuida || !cuida->Ofrece()) Comienza(anfitrion, escritorio, mostrador, guia, recien);
    });
  });
  const int estado = QApplication::exec();
  if (cuida) DejaCaptura(*cuida, estado);
  return estado;
}

// The scripted clerk works the windows: its answers come from the script, its hands act on the widgets.
int Programa::CorreGuion(const OpcionesPrograma& opciones) {
  const bool deArchivo = *opciones.guion != "-";
  std::ifstream archivo;
  if (deArchivo) {
    archivo.open(*opciones.guion, std::ios::binary);
    if (!archivo || QFileInfo(Q(*opciones.guion)).isDir()) {
      std::cerr << "reservas: no se puede leer " << *opciones.guion << '\n';
      return kFalla;
    }
  }
  autonomo::Anfitrion anfitrion(opciones.anfitrion);
  guion::DiceAvisos("reservas", *anfitrion.conexion());
  anfitrion.RegistraClases();
  guion::Vigilancia vigilancia(anfitrion);
  guion::Respuestas respuestas;
  EscritorioQt escritorio;
  DiceDelAnfitrion(escritorio, anfitrion);
  ManosQt manos(escritorio);
  controles::FijaEscritorio(&escritorio);
  guion::Componente componente;
  guion::Interprete interprete({anfitrion, vigilancia, respuestas, manos, componente}, std::cout, std::cerr);
  EscritorioQt::Piloto piloto;
  piloto.mensaje = [&](const controles::CajaMensaje& caja) { return respuestas.Decide(caja); };
  piloto.mensajeVisto = [&](const controles::CajaMensaje& caja, int respuesta) { respuestas.Anota(caja, respuesta); };
  piloto.notas = [&](const std::string& texto) { return respuestas.Notas(texto); };
  piloto.catalogo = [&] { return respuestas.Catalogo(); };
  piloto.modal = [&](controles::Formulario& formulario) { interprete.AtiendeModal(formulario); };
  escritorio.FijaPiloto(std::move(piloto));
  QApplication::setQuitOnLastWindowClosed(false);
  // Where there is no mouse, its pointer must not lie on a button.
  if (QApplication::platformName() == QLatin1String("offscreen")) {
    QCursor::setPos(QApplication::primaryScreen()->geometry().bottomRight());
  }
  std::istream& entrada = deArchivo ? static_cast<std::istream&>(archivo) : std::cin;
  return interprete.Corre(entrada, deArchivo ? *opciones.guion : "(entrada)") == 0 ? kBien : kFalla;
}

}  // namespace vista
