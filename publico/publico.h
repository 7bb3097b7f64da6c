// Publico: the process-wide objects of the component and its one text buffer for SQL statements.
#pragma once

#include <string>
#include <string_view>

#include "host/contract/parametros.h"
#include "host/contract/servicios.h"
#include "platform/ado/texto_sql.h"
#include "platform/com/error.h"
#include "platform/com/objeto.h"

namespace publico {

// A new object of one of the host's classes. Error kClase when the host does not offer it under that interface; nombre
// is the class in that error's text.
template <class Servicio>
[[nodiscard]] com::Ptr<Servicio> CreaServicio(const com::Guid& clase, std::string_view nombre) {
  auto servicio = com::CreaInstancia<Servicio>(clase);
  if (!servicio) throw com::Error(com::error::kClase, "El anfitrión no ofrece el servicio " + std::string(nombre));
  return servicio;
}

// Creates Sistema and Utilerias; nothing when they exist. Error kClase when the host has not registered them. Also
// gives the lookup fields their way to the database.
void Arranca();
[[nodiscard]] bool Arrancado();

// Error kSinObjeto before start-up.
anfitrion::Sistema& Sistema();
anfitrion::Utilerias& Utilerias();

// Exists while the reservation screen is loaded; Error kSinObjeto otherwise.
anfitrion::Hotel& Hotel();
// Called by that screen's load and unload. Error kClase when the host does not offer it.
void CreaHotel();
void LiberaHotel();

// Value of a parameter: what the hotel has stored, or the default. The host's errors, as of one that was stored and
// cannot be read as its type.
[[nodiscard]] com::Variant LeeParametro(const anfitrion::Parametro& parametro);
// The same as text.
[[nodiscard]] std::string LeeTexto(const anfitrion::Parametro& parametro);

// The one buffer in which the screens build their statements, emptied for the next one. Nothing else may build one
// before Ejecuta has run it.
ado::TextoSQL& NuevaSentencia();
// Runs the statement in the buffer on the host's connection, which is fetched anew each time; the connection's errors.
ado::RecordsetPtr Ejecuta();

// Forgets the process-wide objects, so that another host can be used: by the next session or the next test.
void Olvida();

}  // namespace publico
