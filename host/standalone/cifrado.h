// Between the engine and whoever asks it: card numbers and codes rest sealed, and are read in clear.
//
// What a statement writes into a card column is sealed on its way in; the marks that come back in any text are opened,
// or masked for a user who may not see card data. A masked text that is written back stands for what it hides: the card
// that the row showed, or where it is another row's the one card that was shown like that. Where that may be several
// the data must be typed (com::Error kArgumento).
#pragma once

#include <memory>

#include "host/standalone/conexion.h"

namespace autonomo {

// The key is read when it is first needed, from the usual place (llave.h), and made when neither it nor a sealed card
// exists. A database in memory has a key of its own. Without its key a card cannot be read or written (com::Error
// kSoloLectura, kBaseDatos); everything else can.
std::shared_ptr<ConexionDeMotor> CifraTarjetas(std::shared_ptr<ConexionDeMotor> motor, const OpcionesConexion& opciones,
                                               const Reloj& reloj);

// Empties the security codes of cards that no stay to come needs: of a reservation that was cancelled or whose
// departure has passed, and of a client whose reservations are all like that. folio: of one reservation; "" of all. A
// cancellation does so by itself. By a clock that cannot be relied upon no departure has passed.
void OlvidaCodigos(ConexionDeMotor& conexion, const std::string& folio, const Reloj& reloj);

// Seals the cards that an earlier version of the program left in clear; one that changes meanwhile stays as it changed.
void SellaTarjetas(ConexionDeMotor& conexion);

}  // namespace autonomo
