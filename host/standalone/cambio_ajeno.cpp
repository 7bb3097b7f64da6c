#include "host/standalone/cambio_ajeno.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "host/contract/servicios.h"
#include "host/standalone/documento.h"
#include "host/standalone/palabras.h"
#include "platform/regional/regional.h"

namespace autonomo {

namespace {

// Entries of the change log that are told, newest last, and bytes of each.
constexpr std::size_t kEntradas = 5, kLargoEntrada = 600;

// States from which the screens change a reservation, and what the change is called.
struct PasoDeEstado {
  std::string_view a;
  std::vector<std::string_view> desde;
  const char* verbo;
};
const PasoDeEstado kPasos[] = {
    {esquema::kConfirmada, {esquema::kActiva}, "confirmar"},
    {esquema::kCancelada, {esquema::kActiva, esquema::kConfirmada}, "cancelar"},
    {esquema::kActiva, {esquema::kCancelada}, "reactivar"},
};

// "09/03/2026 10:30:15, LUPITA: TEXT"
std::string Entrada(const com::Variant& fecha, const std::string& usuario, std::string texto) {
  while (!texto.empty() && static_cast<unsigned char>(texto.back()) <= ' ') texto.pop_back();
  if (texto.size() > kLargoEntrada) {
    texto = texto.substr(0, BytesEnteros(texto, kLargoEntrada)) + "…";
  }
  const std::string cuando = fecha.EsNulo() ? std::string() : regional::TextoFecha(com::CDate(fecha)) + ", ";
  return cuando + usuario + ": " + texto + "\r\n";
}

// Who wrote it last, where the change log has nothing new.
std::string UltimaMano(ConexionDeMotor& motor, const std::string& folio) {
  const ado::RecordsetPtr sello =
      motor.Consulta("SELECT Fecha_Ult_Modif, Oper_Ult_Modif FROM Reservacion WHERE Rs_Folio = ?", {folio});
  if (sello->Eof()) return "Ya no existe.\r\n";
  const std::string usuario = com::TextoDe(sello->Fields(1).Value());
  return Entrada(sello->Fields(0).Value(), usuario.empty() ? "(sin usuario)" : usuario, "última modificación");
}

// Who changed it since it was seen, when and what.
std::string Historia(ConexionDeMotor& motor, const Vista& vista) {
  std::vector<std::string> entradas;
  const ado::RecordsetPtr log = motor.Consulta(
      "SELECT Bt_Fecha, Bt_Usuario, Bt_Texto FROM Bitacora WHERE Bt_Modulo = ? AND Bt_Clave = ? AND Bt_Id > ? "
      "ORDER BY Bt_Id",
      {anfitrion::kModulo, vista.folio, vista.bitacora});
  for (; !log->Eof(); log->MoveNext()) {
    entradas.push_back(
        Entrada(log->Fields(0).Value(), com::TextoDe(log->Fields(1).Value()), com::TextoDe(log->Fields(2).Value())));
  }
  if (entradas.empty()) return UltimaMano(motor, vista.folio);
  std::string texto;
  const std::size_t desde = entradas.size() > kEntradas ? entradas.size() - kEntradas : 0;
  for (std::size_t i = desde; i < entradas.size(); ++i) texto += entradas[i];
  return texto;
}

}  // namespace

std::string TextoCambioAjeno(ConexionDeMotor& motor, const std::string& folio, const Vista& vista,
                             const Imagen& ahora) {
  return "La reservación " + folio + " cambió después de que usted la abrió.\r\n" + Historia(motor, vista) +
         Diferencias(vista.imagen, ahora);
}

com::Error Vencida(const std::string& sentencia) {
  return {com::error::kOcupada,
          "Otro programa guardó al mismo tiempo. No se guardó nada y lo capturado sigue en la pantalla: vuelva a "
          "intentarlo",
          sentencia};
}

com::Error GuardadoSobreOtro(const std::string& ajeno) {
  return {com::error::kOcupada,
          ajeno +
              "No se guardó nada y lo capturado sigue en la pantalla. Si vuelve a pedirlo, se hará con la "
              "reservación como está ahora"};
}

bool EsPasoDeEstado(std::string_view nuevo) {
  return std::ranges::find(kPasos, nuevo, &PasoDeEstado::a) != std::end(kPasos);
}

void ExigePasoDeEstado(ConexionDeMotor& motor, const std::string& folio, std::string_view nuevo,
                       const std::string& ajeno) {
  const PasoDeEstado& paso = *std::ranges::find(kPasos, nuevo, &PasoDeEstado::a);
  const ado::RecordsetPtr actual = motor.Consulta("SELECT Es_Cve_Estado FROM Reservacion WHERE Rs_Folio = ?", {folio});
  const auto rechaza = [](const std::string& texto) { throw com::Error(com::error::kRestriccion, texto); };
  if (actual->Eof()) rechaza("La reservación " + folio + " ya no existe");
  const std::string estado = com::Recorta(com::TextoDe(actual->Fields(0).Value()));
  const bool permitido =
      std::ranges::any_of(paso.desde, [&](std::string_view desde) { return com::IgualSinCaja(estado, desde); });
  if (!permitido) {
    rechaza(ajeno + "La reservación " + folio + " está " + com::Minusculas(EstadoLegible(estado)) + ": no se puede " +
            paso.verbo);
  }
  if (!ajeno.empty()) {
    rechaza(ajeno + "No se hizo nada. Si vuelve a pedirlo, se hará con la reservación como está ahora");
  }
}

}  // namespace autonomo
