// Keeps what is captured from being lost: a draft of it is written every few seconds, and one that a program left
// behind which was ended by force is offered.
#pragma once

#include <QObject>
#include <string>

#include "desktop/escritorio_qt.h"
#include "host/standalone/anfitrion.h"
#include "host/standalone/borradores.h"
#include "recepcion/borrador.h"

namespace vista {

class CuidaCaptura : public QObject {
 public:
  // Where a draft cannot be written the main window says so as long as it cannot (Contexto::sinBorrador).
  // quitados: what a change of nights took away goes with the draft. carpeta: where drafts are kept. All must outlive
  // it.
  CuidaCaptura(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion, recepcion::RenglonesQuitados& quitados,
               const std::string& carpeta, int cadaMs = 2000);
  ~CuidaCaptura() override;
  // Offers the drafts that were left behind, until one is brought back; true when one was.
  bool Ofrece();
  // What is captured now, when it differs from the draft; without a capture the draft goes.
  void Guarda();
  // The person leaves, asked about what is captured: nothing is kept.
  void Olvida();

 private:
  enum class Respuesta { Si, No, Despues };
  Respuesta Pregunta(const recepcion::Borrador& borrador, const autonomo::BorradorHallado& hallado);
  // False when the draft is left, told why.
  bool Repone(const recepcion::Borrador& borrador, const autonomo::BorradorHallado& hallado);
  void Impedido(const std::string& motivo);

  EscritorioQt& escritorio_;
  autonomo::Anfitrion& anfitrion_;
  recepcion::RenglonesQuitados& quitados_;
  autonomo::Borradores borradores_;
  std::string escrito_;   // the draft as it was written last, "" none
  std::string motivo_;    // why it cannot be written, "" it can
  bool ocupada_ = false;  // a draft is being offered or brought back
};

}  // namespace vista
