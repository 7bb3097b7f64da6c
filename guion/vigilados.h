// Wrappers around the host's connection and services: they record what the screens ask for, and make calls fail on
// order.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "guion/json.h"
#include "host/standalone/anfitrion.h"

namespace guion {

enum class PasoTransaccion { Begin, Commit, Rollback };

inline constexpr const char* kFallaInyectada = "falla inyectada";

class Vigilancia {
 public:
  // Takes the place of the host's service classes, and of the connection that they give, until it ends. The host must
  // outlive it, and it must outlive every service object that was created meanwhile.
  explicit Vigilancia(autonomo::Anfitrion& host);
  Vigilancia(const Vigilancia&) = delete;
  Vigilancia& operator=(const Vigilancia&) = delete;

  // --- records, oldest first; taking them empties them
  // Each {"operacion","argumentos","resultado"}, with "error" instead of the result when the call failed; those of a
  // Hotel with "objeto", which of the session's Hotel objects it is.
  Json TomaLlamadas() { return Json::Arreglo(std::exchange(llamadas_, {})); }
  // SQL texts as given, "BeginTrans", "CommitTrans" and "RollbackTrans".
  Json TomaSentencias() { return Json::Arreglo(std::exchange(sentencias_, {})); }

  // --- faults, each strikes once
  // The n-th later statement that contains the text fails.
  void FallaSentencia(std::string texto, int n = 1);
  // The next call of that operation ("Utilerias.FechaServidor") fails. Error kArgumento for one that does not exist.
  void FallaOperacion(const std::string& operacion, std::string texto);
  // The next call of GuardaReservacion or GuardaDetalle refuses with that text; PrecioHabitacion leaves it after
  // pricing. Error kArgumento for another operation.
  void FallaTienda(const std::string& operacion, std::string texto);
  void FallaTransaccion(PasoTransaccion paso) { pasos_.push_back(paso); }

  // --- for the wrappers
  int NumeraHotel() { return ++hoteles_; }
  void Anota(std::string_view operacion, int objeto, Json::Lista argumentos, std::optional<Json> resultado,
             const std::string& error = {});
  // Raises what was ordered for the operation.
  void Revisa(std::string_view operacion);
  std::optional<std::string> TomaFallaTienda(std::string_view operacion);
  void AnotaSentencia(std::string_view texto) { sentencias_.emplace_back(texto); }
  void RevisaSentencia(std::string_view texto);
  bool TomaFalla(PasoTransaccion paso);

 private:
  struct FallaDeSentencia {
    std::string texto;
    int faltan = 1;
  };

  Json::Lista llamadas_, sentencias_;
  int hoteles_ = 0;
  std::vector<FallaDeSentencia> fallasSentencia_;
  std::vector<std::pair<std::string, std::string>> fallasOperacion_;
  std::vector<std::pair<std::string, std::string>> fallasTienda_;
  std::vector<PasoTransaccion> pasos_;
  std::array<com::Inscripcion, 6> clases_;
};

}  // namespace guion
