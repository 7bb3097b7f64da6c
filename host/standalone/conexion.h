// The stand-alone host's database connection: runs the screens' SQL Server text on SQLite through QtSql.
//
// Each statement is split into a template and its literals; the template is translated and prepared once and run again
// by binding. Record sets are read whole. Failures raise com::Error with a Spanish description by category and the
// statement.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/ado.h"
#include "platform/com/fecha.h"
#include "schema/esquema.h"

namespace autonomo {

// The server's clock: the real one, or fixed by a test.
class Reloj {
 public:
  // Local date and time, whole seconds.
  com::Fecha Ahora() const;
  void Fija(com::Fecha ahora) { fijo_ = ahora; }
  void Libera() { fijo_.reset(); }

 private:
  std::optional<com::Fecha> fijo_;
};

struct OpcionesConexion {
  std::string ruta = ":memory:";  // SQLite file, created with the empty schema when it is missing
  std::string conexion;           // connection string of another engine; "" SQLite
  bool leeConjuntos = true;       // what LeeConjuntos answers
  int esperaMs = 5000;            // how long a statement waits for another program's lock
};

class Conexion : public ado::Connection {
 public:
  // Parameters of the host's own statements, bound to "?" in order.
  using Parametros = std::vector<com::Variant>;

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override = 0;
  using ado::Connection::Execute;
  // The host's own statement: SQL Server text with "?" parameters, translated as the screens' text is.
  virtual ado::RecordsetPtr Consulta(std::string_view sentencia, const Parametros& parametros = {}) = 0;
  // A tester's statement: translated when the translator knows it, as it stands otherwise.
  virtual ado::RecordsetPtr Directa(std::string_view sentencia) = 0;
  virtual bool EnTransaccion() const = 0;
  // Called after a transaction has ended: committed or rolled back. Must not raise.
  std::function<void(bool confirmada)> alTerminarTransaccion;
  virtual esquema::Motor Motor() const = 0;
};

// Opens the database. A missing SQLite file is created with the empty schema, whole or not at all. com::Error kAjena
// for a file that is not this system's, kSoloLectura, kOcupada, kLlena, kBaseDatos otherwise; nothing half-written.
std::shared_ptr<Conexion> AbreConexion(const OpcionesConexion& opciones, const Reloj& reloj);

}  // namespace autonomo
