#include "host/standalone/novedades.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/contract/servicios.h"

namespace autonomo {

namespace {

// Only told: what was done is done without it.
std::string HuespedDe(Conexion& conexion, const std::string& folio) {
  try {
    const ado::RecordsetPtr rs = conexion.Consulta(
        "SELECT C.Cl_Razon_Social_1 FROM Reservacion R INNER JOIN Cliente C ON C.Cl_Cve_Cliente = R.Rs_Huesped "
        "WHERE R.Rs_Folio = ?",
        {folio});
    return rs->Eof() ? std::string() : com::TextoDe(rs->Fields(0).Value());
  } catch (const com::Error&) {
    return {};
  }
}

const char* PalabraDe(Novedad::Hecho hecho) {
  switch (hecho) {
    case Novedad::Hecho::Guardada:
      return "Guardada";
    case Novedad::Hecho::Modificada:
      return "Cambios guardados";
    case Novedad::Hecho::Confirmada:
      return "Confirmada";
    case Novedad::Hecho::Cancelada:
      return "Cancelada";
    case Novedad::Hecho::Reactivada:
      return "Reactivada";
    case Novedad::Hecho::CorreoEnCola:
      return "Correo en cola";
  }
  return "";
}

}  // namespace

std::string Novedad::Texto() const {
  std::string texto = std::string(PalabraDe(hecho)) + " " + folio;
  if (!huesped.empty()) texto += " · " + huesped;
  if (conCorreo) texto += " · correo en cola";
  return texto;
}

Novedades::Novedades(Conexion& conexion) : conexion_(conexion) {
  conexion_.alTerminarTransaccion = [this](bool confirmada) {
    std::optional<Novedad> hecha = std::exchange(enTransaccion_, std::nullopt);
    if (confirmada && hecha) ultima_ = std::move(hecha);
  };
}

Novedades::~Novedades() { conexion_.alTerminarTransaccion = nullptr; }

void Novedades::Anota(Novedad::Hecho hecho, const std::string& folio) {
  // A mail that goes with what was done just before is told with that.
  if (hecho == Novedad::Hecho::CorreoEnCola) {
    std::optional<Novedad>& suya = conexion_.EnTransaccion() ? enTransaccion_ : ultima_;
    if (suya && suya->folio == folio && suya->hecho != Novedad::Hecho::CorreoEnCola) {
      suya->conCorreo = true;
      return;
    }
  }
  (conexion_.EnTransaccion() ? enTransaccion_ : ultima_) = Novedad{hecho, folio, HuespedDe(conexion_, folio)};
}

std::optional<Novedad::Hecho> Novedades::HechoDe(const std::string& textoDeBitacora) {
  using Hecho = Novedad::Hecho;
  constexpr std::pair<const char*, Hecho> kTextos[] = {{anfitrion::kBitacoraConfirma, Hecho::Confirmada},
                                                       {anfitrion::kBitacoraCancela, Hecho::Cancelada},
                                                       {anfitrion::kBitacoraReactiva, Hecho::Reactivada}};
  const auto* texto = std::ranges::find_if(kTextos, [&](const auto& t) { return t.first == textoDeBitacora; });
  return texto == std::end(kTextos) ? std::nullopt : std::optional(texto->second);
}

}  // namespace autonomo
