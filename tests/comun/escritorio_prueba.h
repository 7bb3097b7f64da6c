// The tests' desktop: shows nothing, records what the screens ask of it, and answers from a script. A question that no
// one expected and an answer that no one asked for fail the test.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/formulario.h"

namespace pruebas {

struct PantallaAbierta {
  std::string pantalla;
  std::vector<com::Variant> argumentos;
};

struct NotasEditadas {
  std::string titulo, texto;
  int ancho = 0;
};

// In use from its construction to its end.
class EscritorioPrueba : public controles::Escritorio {
 public:
  EscritorioPrueba();
  // Runs Termina.
  ~EscritorioPrueba() override;

  // --- script
  // ---------------------------------------------------------------------------------------------------------- Answer
  // of the next question with that identifier that has none yet.
  void Responde(const std::string& id, int respuesta) { respuestas_[id].push_back(respuesta); }
  // What the next notes editor and the next catalogue dialog give.
  void RespondeNotas(std::string texto) { notas_.push_back(std::move(texto)); }
  void RespondeCatalogo(std::string clave) { catalogo_.push_back(std::move(clave)); }
  // Runs while a form is shown modally; when it returns with the form still visible, the form is hidden.
  std::function<void(controles::Formulario&)> alModal;
  // Run when a box is shown and when a form is unloaded.
  std::function<void(const controles::CajaMensaje&)> alAvisar;
  std::function<void(controles::Formulario&)> alDescargar;
  // Fails the test for every answer that was not asked for, and forgets them.
  void Termina();

  // --- records, oldest first
  const std::vector<controles::CajaMensaje>& Mensajes() const { return mensajes_; }
  // Identifiers of the messages.
  std::vector<std::string> Ids() const;
  void Olvida() { mensajes_.clear(); }
  // Forms shown modally.
  const std::vector<controles::Formulario*>& Modales() const { return modales_; }
  const std::vector<PantallaAbierta>& Pantallas() const { return pantallas_; }
  const std::vector<NotasEditadas>& Notas() const { return editadas_; }
  // Rows that the last catalogue dialog offered.
  const std::vector<std::pair<std::string, std::string>>& Catalogo() const { return filas_; }
  // The form shown last that is still visible; null when there is none.
  controles::Formulario* Activo() const { return activos_.empty() ? nullptr : activos_.back(); }

  // --- Escritorio
  void Muestra(controles::Formulario& formulario) override;
  void MuestraModal(controles::Formulario& formulario) override;
  void Oculta(controles::Formulario& formulario) override;
  void Descarga(controles::Formulario& formulario) override;
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
  std::map<std::string, std::deque<int>> respuestas_;
  std::deque<std::string> notas_, catalogo_;
  std::vector<controles::CajaMensaje> mensajes_;
  std::vector<controles::Formulario*> modales_, activos_;
  std::vector<PantallaAbierta> pantallas_;
  std::vector<NotasEditadas> editadas_;
  std::vector<std::pair<std::string, std::string>> filas_;
};

}  // namespace pruebas
