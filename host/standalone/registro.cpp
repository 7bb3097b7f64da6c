#include "host/standalone/registro.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <system_error>

#include "host/standalone/conexion.h"
#include "host/standalone/palabras.h"
#include "host/standalone/version.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"

namespace autonomo::registro {
namespace {

constexpr std::uintmax_t kMayor = 1'000'000;  // bytes
constexpr int kAnteriores = 4;
constexpr auto kLenta = std::chrono::milliseconds(200);

struct Registro {
  std::atomic<int> archivo = -1;  // -1 without a log
  std::string ruta;
  std::uintmax_t escrito = 0;    // bytes since the size was looked at
  std::recursive_mutex candado;  // any thread writes to it
};

Registro& ElRegistro() {
  static Registro registro;
  return registro;
}

void Aparta(const std::string& ruta) {
  std::error_code ec;
  if (std::filesystem::file_size(ruta, ec) < kMayor || ec) return;
  const auto nombre = [&](int n) { return n == 0 ? ruta : ruta + '.' + std::to_string(n); };
  for (int n = kAnteriores - 1; n >= 0; --n) std::filesystem::rename(nombre(n), nombre(n + 1), ec);
}

std::string Ahora() {
  const auto ahora = std::chrono::system_clock::now();
  const std::time_t segundos = std::chrono::system_clock::to_time_t(ahora);
  std::tm local{};
  localtime_r(&segundos, &local);
  std::array<char, 32> dia{};
  const std::size_t largo = std::strftime(dia.data(), dia.size(), "%Y-%m-%d %H:%M:%S", &local);
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(ahora.time_since_epoch()).count() % 1000;
  return std::string(dia.data(), largo) + '.' + std::to_string(1000 + ms).substr(1);
}

std::string Milisegundos(Instante desde) {
  const std::chrono::duration<double, std::milli> duro = std::chrono::steady_clock::now() - desde;
  std::array<char, 32> texto{};
  const int largo = std::snprintf(texto.data(), texto.size(), "%.1f ms", duro.count());
  return {texto.data(), static_cast<std::size_t>(largo)};
}

std::string_view TextoDe(std::string_view sentencia) { return sentencia; }
std::string_view TextoDe(const ado::TextoSQL& sentencia) { return sentencia.Texto(); }

std::string NumeroDe(const std::exception& falla) {
  const auto* error = dynamic_cast<const com::Error*>(&falla);
  return error == nullptr ? std::string("sin número") : std::to_string(error->Numero());
}

}  // namespace

std::string CarpetaDeEstado() {
  const auto valor = [](const char* variable) {
    const char* v = std::getenv(variable);
    return std::string(v == nullptr ? "" : v);
  };
  const std::string estado = valor("XDG_STATE_HOME");
  return (estado.empty() ? valor("HOME") + "/.local/state" : estado) + "/reservas";
}

void Abre(const std::string& ruta) {
  Aparta(ruta);
  const int archivo = open(ruta.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  if (archivo < 0) {
    throw com::Error(com::error::kSoloLectura, "No se puede escribir el registro " + ruta +
                                                   ". Revise los permisos o indique otro con --registro.");
  }
  Registro& registro = ElRegistro();
  const std::lock_guard guarda(registro.candado);
  Cierra();
  registro.archivo = archivo;
  registro.ruta = ruta;
  registro.escrito = 0;
}

void AbreDelUsuario() {
  const std::string carpeta = CarpetaDeEstado();
  std::error_code ec;
  std::filesystem::create_directories(carpeta, ec);
  try {
    Abre(carpeta + "/reservas.log");
  } catch (const com::Error&) {  // a log that nobody asked for must not keep anybody from working
  }
}

void Cierra() {
  const std::lock_guard guarda(ElRegistro().candado);
  if (Abierto()) close(ElRegistro().archivo.exchange(-1));
}

bool Abierto() { return ElRegistro().archivo >= 0; }

void Anota(std::string_view texto) {
  if (!Abierto()) return;
  std::string linea = Ahora() + " [" + std::to_string(getpid()) + "] ";
  for (const char c : texto) linea += c == '\n' || c == '\r' ? ' ' : c;
  linea += '\n';
  Registro& registro = ElRegistro();
  const std::lock_guard guarda(registro.candado);
  // A full disk loses the line, not the clerk's work.
  if (write(registro.archivo, linea.data(), linea.size()) < 0) return;
  registro.escrito += linea.size();
  if (registro.escrito < kMayor) return;
  try {
    Abre(std::string(registro.ruta));
  } catch (const com::Error&) {  // the file in use goes on
    registro.escrito = 0;
  }
}

Operacion::~Operacion() {
  if (std::uncaught_exceptions() > antes_) Anota(std::string("falla la operación ") + nombre_);
}

void Operacion::AnotaRechazo() const { Anota(std::string("rechaza la operación ") + nombre_); }

std::string SinValores(std::string_view sentencia) {
  std::string s;
  for (std::size_t i = 0; i < sentencia.size();) {
    const char c = sentencia[i];
    const bool nuevo = i == 0 || !EsDeNombre(sentencia[i - 1]);
    if (c == '\'' || c == '"') {
      // A doubled quote gives two literals side by side, which hides as much; one that does not end hides the rest.
      i = std::min(sentencia.find(c, i + 1), sentencia.size() - 1) + 1;
      s += '?';
    } else if (sentencia.substr(i).starts_with("--") || sentencia.substr(i).starts_with("/*")) {
      break;
    } else if (nuevo && com::EsDigito(c)) {
      while (i < sentencia.size() && (EsDeNombre(sentencia[i]) || sentencia[i] == '.')) ++i;
      s += '?';
    } else {
      s += c;
      ++i;
    }
  }
  return s;
}

std::string SinValores(const ado::TextoSQL& sentencia) {
  std::string fijo;
  std::size_t hasta = 0;
  for (const ado::Tramo& valor : sentencia.Valores()) {
    fijo.append(sentencia.Texto(), hasta, valor.inicio - hasta).append("?");
    hasta = valor.fin;
  }
  return SinValores(fijo.append(sentencia.Texto(), hasta));
}

Sesion::~Sesion() {
  Anota("fin");
  Cierra();
}

void Sesion::Comienza(const std::string& programa, const std::string& base, const std::optional<std::string>& ruta) {
  if (ruta) {
    Abre(*ruta);
  } else if (base != kEnMemoria) {
    AbreDelUsuario();
  }
  Anota("inicio " + TextoVersion(programa, base));
}

template <class Sentencia>
void AnotaSentencia(const Sentencia& sentencia, Instante desde) {
  const bool lenta = std::chrono::steady_clock::now() - desde >= kLenta;
  if (lenta || !SoloLee(TextoDe(sentencia)))
    Anota(Milisegundos(desde) + (lenta ? ", lenta: " : ": ") + SinValores(sentencia));
}

template <class Sentencia>
void AnotaFalla(const Sentencia& sentencia, Instante desde, const std::exception& falla) {
  Anota("falla " + NumeroDe(falla) + " en " + Milisegundos(desde) + ": " + SinValores(sentencia));
}

template void AnotaSentencia(const std::string_view& sentencia, Instante desde);
template void AnotaSentencia(const ado::TextoSQL& sentencia, Instante desde);
template void AnotaFalla(const std::string_view& sentencia, Instante desde, const std::exception& falla);
template void AnotaFalla(const ado::TextoSQL& sentencia, Instante desde, const std::exception& falla);

void AnotaMotor(std::string_view codigo) { Anota(std::string("el motor dice ").append(codigo)); }

std::string PorLaFalla() {
  const std::exception_ptr falla = std::current_exception();
  if (!falla) return {};
  try {
    std::rethrow_exception(falla);
  } catch (const std::exception& e) {
    return " por la falla " + NumeroDe(e);
  } catch (...) {
    return " por una falla desconocida";
  }
}

void AnotaFalla(const std::exception& falla) { Anota("falla que nadie atendió: " + NumeroDe(falla)); }

}  // namespace autonomo::registro
