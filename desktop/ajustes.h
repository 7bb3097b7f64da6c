// What the program remembers of this account, beside any hotel: a file in the user's folder of settings. Where it
// cannot be written nothing is remembered.
#pragma once

#include <string>
#include <vector>

namespace vista::ajustes {

// Files (whole paths) and addresses of hotels that were opened, the last one first.
inline constexpr int kRecientes = 8;
std::vector<std::string> Recientes();
void AnotaReciente(const std::string& hotel);

// The hotel that opens where the command line names none: the one that was chosen last in the menu; "" none was.
std::string HotelPropio();
void FijaHotelPropio(const std::string& hotel);

// Whether this account was offered the tour of the demo hotel.
bool OfrecidoRecorrido();
void AnotaRecorrido();

}  // namespace vista::ajustes
