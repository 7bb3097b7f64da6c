// What the host and the front desk give to the windows: names, searches, catalogues, printed confirmations, the menu.
#pragma once

namespace autonomo {
class Anfitrion;
}

namespace vista {

class EscritorioQt;
class Mostrador;

// Exit statuses of a session after which another one begins: at another hotel, what was in capture having been asked
// about; or another user's, who came to a locked screen.
inline constexpr int kOtraSesion = 64, kOtroUsuario = 65;

inline constexpr const char* kAyuda = "Ay&uda";  // part of the menu

// What the windows tell of the host: names of keys, states, the server's day, how prices came about. Also in a script's
// pictures.
void DiceDelAnfitrion(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion);

// That, and all that a person reaches beside the screens.
void ConectaAnfitrion(EscritorioQt& escritorio, autonomo::Anfitrion& anfitrion, Mostrador& mostrador);

// What the hotel lacks to sell its first night, with the way to each; a further session where the hotel was changed.
void MuestraPendientes(autonomo::Anfitrion& anfitrion, EscritorioQt& escritorio);

}  // namespace vista
