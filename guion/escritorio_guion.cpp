#include "guion/escritorio_guion.h"

#include "guion/lineas.h"
#include "platform/com/error.h"
#include "platform/controls/metrica.h"

namespace guion {

EscritorioGuion::EscritorioGuion(Respuestas& respuestas, Manos& manos) : respuestas_(respuestas), manos_(manos) {
  controles::FijaEscritorio(this);
}

void EscritorioGuion::Muestra(controles::Formulario& formulario) {
  std::erase(abiertas_, &formulario);
  abiertas_.push_back(&formulario);
  formulario.Activa();
}

void EscritorioGuion::MuestraModal(controles::Formulario& formulario) {
  if (!atiende_) throw com::Error(com::error::kArgumento, "Nadie atiende la ventana «" + formulario.nombre() + "»");
  Muestra(formulario);
  atiende_(formulario);
  Oculta(formulario);
  if (!abiertas_.empty()) abiertas_.back()->Activa();
}

void EscritorioGuion::Oculta(controles::Formulario& formulario) { std::erase(abiertas_, &formulario); }

void EscritorioGuion::Enfoca(controles::Control&) {}

int EscritorioGuion::AnchoTexto(const controles::Formulario&, std::string_view texto) {
  return controles::AnchoTextoEstandar(texto);
}

int EscritorioGuion::Mensaje(const controles::CajaMensaje& caja) {
  const int respuesta = respuestas_.Decide(caja);
  respuestas_.Anota(caja, respuesta);
  return respuesta;
}

std::string EscritorioGuion::EditaNotas(const std::string&, const std::string& texto, int) {
  return respuestas_.Notas(texto);
}

std::string EscritorioGuion::EligeDeCatalogo(const std::string&,
                                             const std::vector<std::pair<std::string, std::string>>&) {
  return respuestas_.Catalogo();
}

// The host keeps the record of the screens that were opened; there is nothing to do in them.
void EscritorioGuion::AbrePantalla(const std::string&, const std::vector<com::Variant>&) {}

void EscritorioGuion::EnviaTeclas(const std::string& teclas) {
  if (abiertas_.empty()) return;
  for (const char32_t c : CodigosDe(teclas)) {
    if (c == U'\t') {
      manos_.Tecla(*abiertas_.back(), controles::tecla::kTab, 0);
    } else {
      manos_.Caracter(*abiertas_.back(), c);
    }
  }
}

}  // namespace guion
