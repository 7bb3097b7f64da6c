#include "publico/publico.h"

#include <optional>
#include <utility>

namespace publico {
namespace {

struct Objetos {
  com::Ptr<anfitrion::Sistema> sistema;
  com::Ptr<anfitrion::Utilerias> utilerias;
  com::Ptr<anfitrion::Hotel> hotel;
  ado::TextoSQL sql;
};

// Lives as long as the process: the host's objects are never released while others go away at its end.
Objetos& LosObjetos() {
  static Objetos& objetos = *new Objetos;
  return objetos;
}

template <class Servicio>
Servicio& Exige(const com::Ptr<Servicio>& servicio, const char* nombre) {
  if (!servicio) {
    throw com::Error(com::error::kSinObjeto, std::string("La variable de objeto no está establecida: ") + nombre);
  }
  return *servicio;
}

// First column of the first row.
std::optional<std::string> Busca(const ado::TextoSQL& sentencia) {
  const ado::RecordsetPtr filas = Sistema().ObtenConexion()->Execute(sentencia);
  if (filas->Eof()) return std::nullopt;
  return com::TextoDe(filas->Fields(std::size_t{0}).Value());
}

}  // namespace

void Arranca() {
  if (Arrancado()) return;
  Objetos& o = LosObjetos();
  auto sistema = CreaServicio<anfitrion::Sistema>(anfitrion::kClaseSistema, "Sistema");
  o.utilerias = CreaServicio<anfitrion::Utilerias>(anfitrion::kClaseUtilerias, "Utilerias");
  o.sistema = std::move(sistema);
  controles::FijaBuscador(Busca);
}

bool Arrancado() { return static_cast<bool>(LosObjetos().sistema); }

anfitrion::Sistema& Sistema() { return Exige(LosObjetos().sistema, "Sistema"); }
anfitrion::Utilerias& Utilerias() { return Exige(LosObjetos().utilerias, "Utilerias"); }
anfitrion::Hotel& Hotel() { return Exige(LosObjetos().hotel, "Hotel"); }

void CreaHotel() { LosObjetos().hotel = CreaServicio<anfitrion::Hotel>(anfitrion::kClaseHotel, "Hotel"); }
void LiberaHotel() { LosObjetos().hotel = nullptr; }

com::Variant LeeParametro(const anfitrion::Parametro& parametro) {
  return Sistema().LeeParametro(parametro.clave, 0, parametro.tipo, parametro.defecto);
}

std::string LeeTexto(const anfitrion::Parametro& parametro) { return com::CStr(LeeParametro(parametro)); }

ado::TextoSQL& NuevaSentencia() {
  ado::TextoSQL& sql = LosObjetos().sql;
  sql.Limpia();
  return sql;
}

ado::RecordsetPtr Ejecuta() { return Sistema().ObtenConexion()->Execute(LosObjetos().sql); }

void Olvida() {
  Objetos& o = LosObjetos();
  o.hotel = nullptr;
  o.utilerias = nullptr;
  o.sistema = nullptr;
  o.sql.Limpia();
  controles::FijaBuscador({});
}

}  // namespace publico
