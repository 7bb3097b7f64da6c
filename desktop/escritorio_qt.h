// The desktop of real windows: shows the screens, asks the questions, opens the host's own screens.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktop/preguntas.h"
#include "desktop/ventana.h"
#include "platform/controls/formulario.h"

namespace vista {

class EditorNotas;

class EscritorioQt : public controles::Escritorio {
 public:
  EscritorioQt();
  ~EscritorioQt() override;

  // Answers for a program that works the windows instead of a person: each is asked before a dialog would wait.
  struct Piloto {
    std::function<int(const controles::CajaMensaje&)> mensaje;  // the button to click
    std::function<void(const controles::CajaMensaje&, int respuesta)> mensajeVisto;
    std::function<std::string(const std::string& texto)> notas;
    std::function<std::string()> catalogo;
    // Acts on a modal window until it is hidden.
    std::function<void(controles::Formulario&)> modal;
  };
  void FijaPiloto(Piloto piloto);
  // Host screens by name (anfitrion::pantalla); nothing is shown for a name that has none.
  using PantallaAnfitrion = std::function<void(const std::vector<com::Variant>& argumentos, QWidget* padre)>;
  void Registra(const std::string& pantalla, PantallaAnfitrion abre) { pantallas_[pantalla] = std::move(abre); }
  // Keeps a class of the windows' own registered as long as they live.
  void Conserva(com::Inscripcion inscripcion) { inscripciones_.push_back(std::move(inscripcion)); }
  Contexto& contexto() { return contexto_; }

  // Null when the form has no window.
  Ventana* ventana(const controles::Formulario& formulario) const;
  // The window that is in front, for dialogs to belong to; null when there is none.
  QWidget* Frente() const;
  // Gives the keyboard back to the window in front once a dialog over it is gone.
  void VuelveAlFrente() const;
  // The main screen; null when it is not shown.
  controles::Formulario* Principal() const { return abiertas_.empty() ? nullptr : abiertas_.front(); }
  // Presses a button of the main toolbar as the person at the window does, questions included. False when it was not
  // to be.
  bool Pulsa(controles::Accion accion) const;
  // Whether the program may end, with the main screen as it is; a person is asked about an open capture.
  bool PermiteSalir(const controles::Formulario& principal) { return resguardo_.PermiteSalir(principal, Frente()); }
  // Whether a draft of the capture can be kept has changed (Contexto::sinBorrador).
  void DiceDelBorrador() const;
  // The person has entered something in the capture since it began.
  bool HayCaptura() const { return Principal() != nullptr && resguardo_.HayCaptura(*Principal()); }
  // The notes in their editor, as they are typed and not yet taken; nothing while nobody changes any.
  std::optional<std::string> NotasAMedias() const;
  // What is done in the next window that waits for an answer; null for nothing. antes: before it is on the screen,
  // where it does not come at all when these steps end it. abierta: as soon as it is there.
  using Pasos = std::function<void(controles::Formulario&)>;
  void AlAbrirModal(Pasos antes, Pasos abierta) { pasos_ = {std::move(antes), std::move(abierta)}; }
  // The main window is gone.
  std::function<void()> alTerminar;

  // --- Escritorio
  void Muestra(controles::Formulario& formulario) override;
  void MuestraModal(controles::Formulario& formulario) override;
  void Oculta(controles::Formulario& formulario) override;
  void Descarga(controles::Formulario& formulario) override;
  void Enfoca(controles::Control& control) override;
  int AnchoTexto(const controles::Formulario& formulario, std::string_view texto) override;
  void ProcesaPendientes() override;
  int Mensaje(const controles::CajaMensaje& caja) override;
  std::string EditaNotas(const std::string& titulo, const std::string& texto, int ancho) override;
  std::string EligeDeCatalogo(const std::string& titulo,
                              const std::vector<std::pair<std::string, std::string>>& filas) override;
  void AbrePantalla(const std::string& pantalla, const std::vector<com::Variant>& argumentos) override;
  void EnviaTeclas(const std::string& teclas) override;

 private:
  Ventana& VentanaDe(controles::Formulario& formulario, bool modal);
  void AtiendeDialogo(Ventana& ventana);
  void AtiendePrincipal(Ventana& ventana);
  // The window, to be worked by program; not on the screen yet.
  Ventana& Prepara(controles::Formulario& formulario, bool modal);
  void Abre(Ventana& ventana);
  // Asked before a button of the main toolbar and before the main window closes; false leaves everything as it is.
  bool DejaPulsar(const controles::Formulario& formulario, controles::Accion accion);
  void CierraPrincipal(controles::Formulario& formulario);
  QWidget* DuenioDe(int cual) const;

  Contexto contexto_;
  Piloto piloto_;
  Resguardo resguardo_;
  std::map<std::string, PantallaAnfitrion> pantallas_;
  std::map<const controles::Formulario*, std::unique_ptr<Ventana>> ventanas_;
  std::vector<controles::Formulario*> abiertas_;  // the last is the active one
  // What ends the wait of a modal form.
  std::map<const controles::Formulario*, std::function<void()>> esperas_;
  std::vector<com::Inscripcion> inscripciones_;
  const EditorNotas* editorNotas_ = nullptr;  // the one that is open
  struct {
    Pasos antes, abierta;
  } pasos_;
};

}  // namespace vista
