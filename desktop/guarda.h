// Where the toolkit calls into the models: a failure that no handler trapped must not travel through the event loop.
#pragma once

#include <QString>
#include <exception>
#include <functional>

namespace vista {

// Runs what a widget's event asks of a model. A failure is reported in a critical box, or kept for the caller of
// ConFallas when the event was made by a program.
void Corre(const std::function<void()>& accion);

// Runs a piece of program that sends events to widgets; the first failure that Corre caught meanwhile is raised again.
void ConFallas(const std::function<void()>& accion);

// How Corre reports: the failure's description. Set by the desktop.
void FijaAvisadorDeFallas(std::function<void(const QString& descripcion)> avisador);

}  // namespace vista
