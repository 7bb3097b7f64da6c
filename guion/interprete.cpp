#include "guion/interprete.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "guion/lineas.h"
#include "platform/com/error.h"

namespace guion {

Interprete::Interprete(const Piezas& piezas, std::ostream& salida, std::ostream& errores)
    : alcance_{piezas}, salida_(salida), errores_(errores) {
  pantalla_.alAbrir = [this](controles::Formulario& pantalla) { captura_.Vigila(pantalla); };
  alcance_.piezas.respuestas.enTransaccion = [this] { return alcance_.piezas.anfitrion.conexion()->EnTransaccion(); };
  const auto agrega = [this](std::vector<Orden> ordenes) { std::ranges::move(ordenes, std::back_inserter(ordenes_)); };
  agrega(anfitrion_.Ordenes());
  agrega(hotel_.Ordenes());
  agrega(pantalla_.Ordenes());
  agrega(captura_.Ordenes());
  agrega(recepcion_.Ordenes());
  ordenes_.push_back({"muestra", 1, 1, "muestra CONTROL | Controles | campos | renglones | tablero | columnas | …",
                      [this](const Palabras& p) { alcance_.actual.valor = ValorDe(p[1]); }});
}

Json Interprete::ValorDe(const std::string& que) {
  if (auto valor = anfitrion_.Muestra(que)) return *std::move(valor);
  if (auto valor = hotel_.Muestra(que)) return *std::move(valor);
  if (auto valor = recepcion_.Muestra(que)) return *std::move(valor);
  if (auto valor = captura_.Muestra(que)) return *std::move(valor);
  return pantalla_.Muestra(que);
}

int Interprete::Corre(std::istream& entrada, const std::string& nombre) {
  entrada_ = &entrada;
  nombre_ = nombre;
  linea_ = fallidas_ = 0;
  Bucle([] { return true; });
  return fallidas_;
}

void Interprete::AtiendeModal(controles::Formulario& formulario) {
  if (recepcion_.MarcaLoPedido(formulario) && !formulario.visible()) return;
  Contesta();
  ++alcance_.modales;
  Bucle([&] { return formulario.visible(); });
  --alcance_.modales;
  if (!formulario.visible()) return;
  alcance_.piezas.manos.Tecla(formulario, controles::tecla::kEsc, 0);
  if (formulario.visible()) formulario.Oculta();
}

// sigue: whether the loop goes on after the order just carried out. When it does not, that order is still to be
// answered, by the loop that is waiting for this one.
void Interprete::Bucle(const std::function<bool()>& sigue) {
  while (LeeOrden()) {
    Atiende();
    if (!sigue()) return;
    Contesta();
  }
}

bool Interprete::LeeOrden() {
  std::string linea;
  while (std::getline(*entrada_, linea)) {
    ++linea_;
    if (linea_ == 1 && linea.starts_with("\xEF\xBB\xBF")) linea.erase(0, 3);
    alcance_.actual = Respuesta{};
    alcance_.actual.linea = linea_;
    partes_ = Linea{};
    try {
      if (!EsUtf8(linea)) Error("La línea no es UTF-8 válido");
      partes_ = DivideLinea(linea);
      if (partes_.palabras.empty()) continue;
      alcance_.actual.orden = partes_.texto;
    } catch (const com::Error& e) {
      while (!linea.empty() && (linea.back() == '\r' || linea.back() == ' ')) linea.pop_back();
      alcance_.actual.orden = linea;
      Rechaza(e.Descripcion());
    }
    return true;
  }
  return false;
}

void Interprete::Atiende() {
  if (!alcance_.actual.ok) return;
  const Palabras palabras = partes_.palabras;
  try {
    Ejecuta(palabras);
  } catch (const std::exception& e) {
    Rechaza(e.what());
  }
}

void Interprete::Ejecuta(const Palabras& p) {
  const auto orden = std::ranges::find_if(ordenes_, [&](const Orden& o) { return o.nombre == p[0]; });
  if (orden == ordenes_.end()) Error("No existe la orden «" + p[0] + "»");
  const std::size_t argumentos = p.size() - 1;
  if (argumentos < orden->minimo || argumentos > orden->maximo) Error("Se escribe: " + std::string(orden->uso));
  orden->hace(p);
}

// What happens after a modal form is hidden belongs to the order that hid it, which is then the current one.
void Interprete::Rechaza(const std::string& motivo) {
  if (!alcance_.actual.ok) return;
  alcance_.actual.ok = false;
  alcance_.actual.error = motivo;
}

// Name of the window that a box belongs to.
Json Interprete::DuenaDe(const controles::CajaMensaje& caja) const {
  if (!alcance_.piezas.componente.Creada()) return {};
  for (const controles::Formulario* f :
       {&alcance_.piezas.componente.formulario(), &alcance_.piezas.componente.tablero()}) {
    if (f->ventana() == caja.ventana) return Json(f->nombre());
  }
  return {};
}

Json Interprete::Mensajes() {
  Json lista = Json::Arreglo();
  for (const MensajeVisto& m : alcance_.piezas.respuestas.TomaVistos()) {
    Json mensaje = Json::Objeto()
                       .Pon("texto", m.caja.texto)
                       .Pon("estilo", m.caja.estilo)
                       .Pon("titulo", m.caja.titulo)
                       .Pon("ventana", DuenaDe(m.caja))
                       .Pon("pantalla", m.caja.pantalla)
                       .Pon("id", m.caja.id)
                       .Pon("respuesta", m.respuesta);
    if (!m.caja.detalle.empty()) mensaje.Pon("detalle", m.caja.detalle);
    if (m.enTransaccion) mensaje.Pon("enTransaccion", true);
    lista.Agrega(std::move(mensaje));
  }
  return lista;
}

void Interprete::Contesta() {
  if (alcance_.actual.contestada) return;
  if (const auto queja = alcance_.piezas.respuestas.TomaQueja()) Rechaza(*queja);
  alcance_.actual.contestada = true;
  Json json = Json::Objeto()
                  .Pon("linea", alcance_.actual.linea)
                  .Pon("orden", alcance_.actual.orden)
                  .Pon("ok", alcance_.actual.ok);
  if (!alcance_.actual.ok) json.Pon("error", alcance_.actual.error);
  if (alcance_.actual.valor) json.Pon("valor", *alcance_.actual.valor);
  if (alcance_.actual.retenida) json.Pon("retenida", *alcance_.actual.retenida);
  json.Pon("mensajes", Mensajes());

  const controles::Formulario* activo = alcance_.piezas.componente.Activo();
  const controles::Control* foco = activo == nullptr ? nullptr : activo->foco();
  json.Pon("foco", foco == nullptr ? Json() : Json(foco->nombre()));
  json.Pon("ventana", activo == nullptr ? Json() : Json(activo->nombre()));
  Json celda;
  if (activo != nullptr) {
    const auto& grid = alcance_.GridDe(*alcance_.piezas.componente.Activo());
    if (grid.fila() >= 0 && grid.columna() >= 0) {
      celda = Json::Objeto().Pon("fila", grid.fila()).Pon("columna", grid.ClaveColumna());
    }
  }
  json.Pon("celda", std::move(celda));

  salida_ << json.Texto() << '\n' << std::flush;
  if (!salida_) throw com::Error(com::error::kBaseDatos, "No se pudo escribir la salida");
  if (!alcance_.actual.ok) {
    ++fallidas_;
    errores_ << nombre_ << ':' << alcance_.actual.linea << ": " << Utf8Saneado(alcance_.actual.error) << '\n'
             << std::flush;
  }
}

}  // namespace guion
