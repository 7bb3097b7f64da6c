#include "guion/ordenes_captura.h"

#include <utility>

#include "guion/muestra_recepcion.h"
#include "recepcion/explicacion.h"

namespace guion {

namespace {

// What was not as before, for the answer.
Json ListaDe(const std::vector<std::string>& textos) {
  Json lista = Json::Arreglo();
  for (const std::string& texto : textos) lista.Agrega(texto);
  return lista;
}

}  // namespace

std::vector<Orden> OrdenesCaptura::Ordenes() {
  static constexpr DatosOrden<OrdenesCaptura> kOrdenes[] = {
      {"borrador", 1, 1, "borrador guarda|repone|olvida", &OrdenesCaptura::Borrador},
      {"repone", 0, 0, "repone", &OrdenesCaptura::Repone},
  };
  return Enlaza(*this, kOrdenes);
}

std::optional<Json> OrdenesCaptura::Muestra(const std::string& que) {
  if (que == "borrador") return borrador_.empty() ? Json() : MuestraBorrador(recepcion::DeTexto(borrador_));
  if (que == "quitados") return MuestraLineas(quitados_.renglones());
  if (que == "aviso") return recepcion::AvisoDePrecio(piezas_.componente.formulario());
  return std::nullopt;
}

// The draft that the desktop takes by itself, here when the script says so; it is kept while the program runs.
void OrdenesCaptura::Borrador(const Palabras& p) {
  alcance_.ExigePantalla();
  controles::Formulario& pantalla = piezas_.componente.formulario();
  if (p[1] == "guarda") {
    recepcion::Borrador borrador = recepcion::TomaBorrador(pantalla);
    borrador.visto = piezas_.anfitrion.conexion()->LoVisto(borrador.folio);
    borrador.quitados = quitados_.renglones();
    borrador_ = recepcion::EnTexto(borrador);
    return;
  }
  if (p[1] != "repone" && p[1] != "olvida") Error("No existe «borrador " + p[1] + "»");
  if (borrador_.empty()) Error("No hay un borrador");
  if (p[1] == "olvida") return borrador_.clear();
  const recepcion::Borrador borrador = recepcion::DeTexto(borrador_);
  const auto pulsa = [this](controles::Accion accion) { return alcance_.Pulsa(accion); };
  const auto retoma = [&](const std::string& folio, const std::string& visto) {
    piezas_.anfitrion.conexion()->RetomaLoVisto(folio, visto);
  };
  std::vector<std::string> faltan = recepcion::ReponeBorrador(pantalla, borrador, {pulsa, retoma});
  if (std::string tarjeta = recepcion::FaltaTarjeta(borrador); !tarjeta.empty()) faltan.push_back(std::move(tarjeta));
  alcance_.actual.valor = ListaDe(faltan);
  quitados_.Fija(borrador.quitados);
}

// The lines that a change of nights took away.
void OrdenesCaptura::Repone(const Palabras&) {
  alcance_.ExigePantalla();
  alcance_.actual.valor = ListaDe(quitados_.Repone(piezas_.componente.formulario()));
}

}  // namespace guion
