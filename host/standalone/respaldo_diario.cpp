#include "host/standalone/respaldo_diario.h"

#include <chrono>
#include <exception>

#include "host/standalone/respaldo.h"
#include "platform/com/error.h"

namespace autonomo {
namespace {

constexpr auto kMirada = std::chrono::seconds(30), kOtraVez = std::chrono::seconds(3600);

}  // namespace

RespaldoDiario::RespaldoDiario(std::string hotel) : hotel_(std::move(hotel)) {
  hilo_ = std::thread([this] { Trabaja(); });
}

RespaldoDiario::~RespaldoDiario() {
  {
    const std::lock_guard candado(mutex_);
    termina_ = true;
  }
  despierta_.notify_all();
  hilo_.join();
}

std::vector<RespaldoDiario::Noticia> RespaldoDiario::TomaNoticias() {
  const std::lock_guard candado(mutex_);
  return std::exchange(noticias_, {});
}

void RespaldoDiario::Trabaja() {
  std::string hecho;
  while (!termina_) {
    const std::string hoy = Momento().substr(0, 10);
    const bool bien = hoy == hecho || Hace(hoy);
    if (bien) hecho = hoy;
    std::unique_lock candado(mutex_);
    despierta_.wait_for(candado, bien ? kMirada : kOtraVez, [this] { return termina_.load(); });
  }
}

// False when it is to be tried again.
bool RespaldoDiario::Hace(const std::string& dia) {
  Noticia noticia;
  try {
    const auto respaldo = RespaldaDia(hotel_, dia, {.despacio = true, .termina = &termina_});
    if (!respaldo) return true;
    noticia.texto = "copia de respaldo " + respaldo->ruta + ", " + std::to_string(respaldo->reservaciones) +
                    " reservaciones, " + std::to_string(respaldo->filas) + " renglones";
  } catch (const com::Error& e) {
    noticia = {true, e.Descripcion()};
  } catch (const std::exception& e) {  // no failure of this thread ends the clerk's program
    noticia = {true, std::string("Falló la copia de respaldo: ") + e.what()};
  }
  if (termina_) return true;
  const std::lock_guard candado(mutex_);
  noticias_.push_back(noticia);
  return !noticia.falla;
}

}  // namespace autonomo
