#include "tests/comun/escritorio_prueba.h"

#include <gtest/gtest.h>

#include "platform/controls/metrica.h"

namespace pruebas {

EscritorioPrueba::EscritorioPrueba() { controles::FijaEscritorio(this); }

EscritorioPrueba::~EscritorioPrueba() {
  Termina();
  controles::FijaEscritorio(nullptr);
}

void EscritorioPrueba::Termina() {
  for (const auto& [id, cola] : respuestas_) {
    if (!cola.empty()) ADD_FAILURE() << "Nobody asked " << id << ": " << cola.size() << " answers left";
  }
  for (const auto& texto : notas_) ADD_FAILURE() << "Nobody opened the notes editor for \"" << texto << "\"";
  for (const auto& clave : catalogo_) ADD_FAILURE() << "Nobody opened a catalogue for \"" << clave << "\"";
  respuestas_.clear();
  notas_.clear();
  catalogo_.clear();
}

std::vector<std::string> EscritorioPrueba::Ids() const {
  std::vector<std::string> ids;
  for (const auto& m : mensajes_) ids.push_back(m.id);
  return ids;
}

void EscritorioPrueba::Muestra(controles::Formulario& formulario) {
  std::erase(activos_, &formulario);
  activos_.push_back(&formulario);
  formulario.Activa();
}

void EscritorioPrueba::MuestraModal(controles::Formulario& formulario) {
  modales_.push_back(&formulario);
  Muestra(formulario);
  if (formulario.visible() && alModal) alModal(formulario);
  if (formulario.visible()) formulario.Oculta();
}

void EscritorioPrueba::Oculta(controles::Formulario& formulario) { std::erase(activos_, &formulario); }
void EscritorioPrueba::Descarga(controles::Formulario& formulario) {
  std::erase(activos_, &formulario);
  if (alDescargar) alDescargar(formulario);
}

void EscritorioPrueba::Enfoca(controles::Control& control) {
  EXPECT_EQ(control.formulario().foco(), &control) << control.nombre();
}

int EscritorioPrueba::AnchoTexto(const controles::Formulario&, std::string_view texto) {
  return controles::AnchoTextoEstandar(texto);
}

int EscritorioPrueba::Mensaje(const controles::CajaMensaje& caja) {
  mensajes_.push_back(caja);
  if (alAvisar) alAvisar(caja);
  const bool pregunta = (caja.estilo & 7) != 0;
  if (!pregunta) return controles::kAceptar;
  auto& cola = respuestas_[caja.id];
  if (cola.empty()) {
    ADD_FAILURE() << "Unexpected question " << caja.id << ": " << caja.texto;
    return controles::RespuestaPredeterminada(caja.estilo);
  }
  const int respuesta = cola.front();
  cola.pop_front();
  return respuesta;
}

std::string EscritorioPrueba::EditaNotas(const std::string& titulo, const std::string& texto, int ancho) {
  editadas_.push_back({titulo, texto, ancho});
  if (notas_.empty()) {
    ADD_FAILURE() << "Unexpected notes editor: " << titulo;
    return texto;
  }
  std::string nuevo = std::move(notas_.front());
  notas_.pop_front();
  return nuevo;
}

std::string EscritorioPrueba::EligeDeCatalogo(const std::string& titulo,
                                              const std::vector<std::pair<std::string, std::string>>& filas) {
  filas_ = filas;
  if (catalogo_.empty()) {
    ADD_FAILURE() << "Unexpected catalogue: " << titulo;
    return {};
  }
  std::string clave = std::move(catalogo_.front());
  catalogo_.pop_front();
  return clave;
}

void EscritorioPrueba::AbrePantalla(const std::string& pantalla, const std::vector<com::Variant>& argumentos) {
  pantallas_.push_back({pantalla, argumentos});
}

void EscritorioPrueba::EnviaTeclas(const std::string& teclas) {
  for (const char c : teclas) {
    if (Activo() != nullptr) Activo()->PulsaTecla(static_cast<unsigned char>(c));
  }
}

}  // namespace pruebas
