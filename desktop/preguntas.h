// What a person alone gets: a question before a capture is thrown away or what looks wrong is stored, a refusal outside
// a capture. Every key, button and window that leads there asks here; a script is never asked.
#pragma once

#include <string>

#include "platform/controls/barra.h"
#include "platform/controls/formulario.h"

class QWidget;

namespace vista {

// A reservation is being captured: rooms may be added and marked, notes written.
[[nodiscard]] bool EnCaptura(const controles::Formulario& principal);

// Watches over what is captured on the main screen.
class Resguardo {
 public:
  // New or Edit has done its work: what stands there now is not the person's.
  void Comienza(const controles::Formulario& principal);
  // Whether a button of the toolbar may go on. New, Clear and Close ask when the capture holds something that was
  // entered since it began; Cancel reservation always asks; Accept asks about an exchange rate more than a tenth off
  // the hotel's, or of a currency that has none.
  [[nodiscard]] bool Permite(const controles::Formulario& principal, controles::Accion accion, QWidget* padre) const;
  // Whether the program may end (the window is closed, the session ends): asks as Close does.
  [[nodiscard]] bool PermiteSalir(const controles::Formulario& principal, QWidget* padre) const;
  // A capture holds something that was entered since it began.
  [[nodiscard]] bool HayCaptura(const controles::Formulario& principal) const;

 private:
  std::string inicio_;  // all that the inputs and room lines held when the capture began
};

// Whether what was marked on the board may become room lines: only in a capture; says so otherwise.
[[nodiscard]] bool PermiteMarcas(const controles::Formulario& principal, QWidget* padre);

}  // namespace vista
