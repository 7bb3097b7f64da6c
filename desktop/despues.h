// What is to be done once what runs now is over.
#pragma once

#include <functional>

class QObject;

namespace vista {

// Runs when the event loop is reached, in the order of the calls; never when the object is gone by then.
void Despues(QObject& de, std::function<void()> accion);

}  // namespace vista
