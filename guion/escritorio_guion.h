// The scripted clerk's desktop: windows without a display. Message boxes, notes and catalogue searches are answered
// from the script; a modal form hands control to whoever reads the orders.
#pragma once

#include <functional>
#include <vector>

#include "guion/manos.h"
#include "guion/respuestas.h"
#include "platform/controls/formulario.h"

namespace guion {

class EscritorioGuion : public controles::Escritorio {
 public:
  // Acts on the shown modal form until it is hidden.
  using AtiendeModal = std::function<void(controles::Formulario& formulario)>;

  // In use from its construction to its end.
  EscritorioGuion(Respuestas& respuestas, Manos& manos);
  ~EscritorioGuion() override { controles::FijaEscritorio(nullptr); }
  EscritorioGuion(const EscritorioGuion&) = delete;
  EscritorioGuion& operator=(const EscritorioGuion&) = delete;
  void AlAbrirModal(AtiendeModal atiende) { atiende_ = std::move(atiende); }

  void Muestra(controles::Formulario& formulario) override;
  void MuestraModal(controles::Formulario& formulario) override;
  void Oculta(controles::Formulario& formulario) override;
  void Descarga(controles::Formulario& formulario) override { Oculta(formulario); }
  void Enfoca(controles::Control& control) override;
  int AnchoTexto(const controles::Formulario& formulario, std::string_view texto) override;
  void ProcesaPendientes() override {}
  int Mensaje(const controles::CajaMensaje& caja) override;
  std::string EditaNotas(const std::string& titulo, const std::string& texto, int ancho) override;
  std::string EligeDeCatalogo(const std::string& titulo,
                              const std::vector<std::pair<std::string, std::string>>& filas) override;
  void AbrePantalla(const std::string& pantalla, const std::vector<com::Variant>& argumentos) override;
  void EnviaTeclas(const std::string& teclas) override;

 private:
  Respuestas& respuestas_;
  Manos& manos_;
  AtiendeModal atiende_;
  std::vector<controles::Formulario*> abiertas_;  // the last is the active one
};

}  // namespace guion
