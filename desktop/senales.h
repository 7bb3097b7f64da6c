// Signals by which a closing session asks the program to end.
#pragma once

#include <functional>

class QObject;

namespace vista {

// From now on SIGTERM, SIGHUP and SIGINT call alPedirFin from the event loop of the owner's thread. While it runs a
// second signal of the same kind ends the program at once, as it would have without this; when it returns the program
// has stayed.
void AtiendeSenales(QObject* dueno, std::function<void()> alPedirFin);

}  // namespace vista
