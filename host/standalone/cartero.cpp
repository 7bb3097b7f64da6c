#include "host/standalone/cartero.h"

#include <unistd.h>

#include <QByteArray>
#include <QRandomGenerator>
#include <chrono>
#include <utility>

#include "host/standalone/mensaje.h"
#include "host/standalone/pliego.h"
#include "host/standalone/registro.h"
#include "host/standalone/servidor_correo.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace autonomo {

namespace {

constexpr auto kEntreVueltas = std::chrono::seconds(5), kTrasFalla = std::chrono::seconds(3600);

// A mark that no other try has.
std::string MarcaDeIntento() {
  return std::to_string(getpid()) + "-" + std::to_string(QRandomGenerator::system()->generate64());
}

// What became of a mail is worth some patience with a busy database: without it nobody knows.
void Insiste(const std::function<void()>& anota) {
  constexpr int kVeces = 10;
  for (int vez = 1;; ++vez) {
    try {
      return anota();
    } catch (const com::Error& e) {
      if ((e.Numero() != com::error::kOcupada && e.Numero() != kChoque) || vez == kVeces) throw;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100 * vez));
  }
}

// Letters, digits and "-" of a text.
std::string Llano(const std::string& texto) {
  std::string s;
  for (const char c : texto) {
    if (com::EsDigito(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-') s += c;
  }
  return s;
}

// By the folio, or of a mail that concerns no reservation by its subject's first word and its day.
std::string NombreDeAdjunto(const CorreoTomado& correo) {
  if (!correo.folio.empty()) return "reservacion-" + Llano(correo.folio) + ".pdf";
  return Llano(correo.asunto.substr(0, correo.asunto.find(' '))) + "-" + com::AIso(com::SoloFecha(correo.fecha)) +
         ".pdf";
}

std::string MensajeDe(const CorreoTomado& correo, const ServidorCorreo& servidor) {
  Mensaje m;
  m.remitente = servidor.remitente;
  m.nombreRemitente = servidor.nombre;
  m.para = correo.para;
  m.asunto = correo.asunto;
  m.cuerpo = correo.cuerpo;
  m.fecha = correo.fecha;
  // The same in each try, so that a mailbox which got it twice can tell.
  m.identidad =
      "reservas." + std::to_string(correo.id) + "." + Llano(correo.folio) + "." + Llano(com::AIso(correo.fecha));
  if (!correo.adjunto.empty()) {
    m.adjunto = Pdf(QString::fromStdString(correo.adjunto), QString::fromStdString(correo.asunto)).toStdString();
    m.nombreAdjunto = NombreDeAdjunto(correo);
  }
  return ArmaMensaje(m);
}

// One try with a mail that was taken. Whatever keeps it from beginning is told as its end: a taken mail that nothing is
// written down of is one that nobody sends again.
ResultadoEnvio Intenta(const CorreoTomado& correo, const ServidorCorreo& servidor) {
  std::string mensaje;
  try {
    mensaje = MensajeDe(correo, servidor);
  } catch (const std::exception& e) {
    return {Desenlace::Luego, std::string("No se pudo armar el correo: ") + e.what()};
  }
  return EntregaCorreo(servidor, correo.para, mensaje);
}

// A mail that nobody tries again.
void Falla(Ronda& ronda, const std::string& asunto, const std::string& para, const std::string& que) {
  if (ronda.fallidos++ == 0) ronda.falla = "El correo «" + asunto + "» a " + para + " " + que;
}

}  // namespace

Ronda Reparte(Conexion& conexion, const Reloj& reloj, const ServidorCorreo& servidor,
              const std::function<bool()>& sigue) {
  Ronda ronda;
  std::string sinServidor;  // why no other mail can leave now
  const PorEnviarAhora correos = PorEnviar(conexion, MarcaDeIntento(), reloj.Ahora());
  for (const CorreoVencido& vencido : correos.vencidos) {
    Falla(ronda, vencido.asunto, vencido.para,
          "no salió: esperó más de tres días" + (vencido.error.empty() ? "" : ". " + vencido.error));
  }
  for (const std::int32_t id : correos.ids) {
    if (!sigue()) break;
    if (!sinServidor.empty()) {
      Aplaza(conexion, id, sinServidor, reloj.Ahora());
      ++ronda.pendientes;
      continue;
    }
    const std::string quien = MarcaDeIntento();
    const std::optional<CorreoTomado> correo = Toma(conexion, id, quien, reloj.Ahora());
    if (!correo) continue;
    const ResultadoEnvio resultado = Intenta(*correo, servidor);
    Insiste([&] { Anota(conexion, *correo, quien, resultado, reloj.Ahora()); });
    switch (resultado.desenlace) {
      case Desenlace::Enviado:
        ++ronda.enviados;
        break;
      case Desenlace::SinServidor:
        sinServidor = resultado.error;
        [[fallthrough]];
      case Desenlace::Luego:
        ++ronda.pendientes;
        break;
      default:
        Falla(ronda, correo->asunto, correo->para,
              (resultado.desenlace == Desenlace::Nunca ? "no salió: " : "no se sabe si salió: ") + resultado.error);
    }
  }
  return ronda;
}

// A mail service makes no hotel.
Cartero::Cartero(Opciones opciones) : opciones_(std::move(opciones)) {
  opciones_.base.crea = false;
  hilo_ = std::thread([this] { Trabaja(); });
}

Cartero::~Cartero() {
  {
    const std::lock_guard guarda(candado_);
    termina_ = true;
  }
  aviso_.notify_all();
  hilo_.join();
}

std::string Cartero::Impedimento() const {
  const std::lock_guard guarda(candado_);
  return impedimento_;
}

void Cartero::Apunta(const std::string& impedimento) {
  const std::lock_guard guarda(candado_);
  if (impedimento_ == impedimento) return;
  impedimento_ = impedimento;
  registro::Anota(impedimento.empty() ? "correo: se entrega" : "correo: no se entrega nada");
}

bool Cartero::Espera() {
  std::unique_lock espera(candado_);
  return !aviso_.wait_for(espera, kEntreVueltas, [this] { return termina_; });
}

void Cartero::Vuelta(std::shared_ptr<Conexion>& conexion) {
  if (conexion == nullptr) conexion = AbreConexion(opciones_.base, opciones_.reloj);
  for (const std::string& aviso : conexion->TomaAvisos()) {
    if (opciones_.avisa) opciones_.avisa(aviso);
  }
  const std::optional<ServidorCorreo> servidor = LeeServidor(*conexion, LeeContrasenaDeCorreo(opciones_.contrasena));
  if (!servidor) return Apunta("Falta el parámetro CORREO_SERVIDOR: no sale ningún correo");
  Apunta("");
  EncolaAntes(conexion);
  const Ronda ronda = Reparte(*conexion, opciones_.reloj, *servidor, [this] {
    const std::lock_guard guarda(candado_);
    return !termina_;
  });
  if (ronda.fallidos == 0 || !opciones_.avisa) return;
  opciones_.avisa((ronda.fallidos == 1 ? "" : "No salieron " + std::to_string(ronda.fallidos) + " correos. ") +
                  ronda.falla + ". Está en Hotel · Correos, de donde se puede enviar otra vez");
}

void Cartero::EncolaAntes(const std::shared_ptr<Conexion>& conexion) {
  const auto ahora = std::chrono::steady_clock::now();
  if (!opciones_.antes || ahora < antesDeNuevo_) return;
  try {
    opciones_.antes(conexion, opciones_.reloj.Ahora());
  } catch (const std::exception& e) {
    registro::AnotaFalla(e);
    antesDeNuevo_ = ahora + kTrasFalla;
  }
}

// The connection belongs to this thread.
void Cartero::Trabaja() {
  std::shared_ptr<Conexion> conexion;
  do {
    try {
      Vuelta(conexion);
    } catch (const com::Error& e) {
      // What the database cannot do now it may do over another connection.
      if (e.Numero() != com::error::kArgumento) conexion.reset();
      Apunta(e.Descripcion());
    } catch (const std::exception& e) {  // it must not end the program that a clerk is working in
      registro::AnotaFalla(e);
      conexion.reset();
      Apunta(std::string("Falló la entrega de correos: ") + e.what());
    }
  } while (Espera());
}

}  // namespace autonomo
