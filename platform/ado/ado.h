// The database interface that the screens see. Record sets are read whole when opened: no cursor ever blocks another
// statement.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ado/texto_sql.h"
#include "platform/com/variant.h"

namespace ado {

// One column of the current row.
class Field {
 public:
  Field(const std::string& nombre, const com::Variant& valor) : nombre_(nombre), valor_(valor) {}
  const std::string& Name() const { return nombre_; }
  const com::Variant& Value() const { return valor_; }

 private:
  const std::string& nombre_;
  const com::Variant& valor_;
};

// Forward-only reading of rows that are all in memory. Column names are found case-blind; of two columns of one name
// the first is found. Every member but Close raises Error kCerrado after Close; reading a column past the last row
// raises kSubindice, a column that does not exist kElemento.
class Recordset {
 public:
  using Columnas = std::vector<std::string>;
  // celdas: row by row, columnas->size() values a row.
  Recordset(std::shared_ptr<const Columnas> columnas, std::vector<com::Variant> celdas);

  bool Eof() const;
  void MoveFirst();
  void MoveNext();
  // Number of rows.
  int RecordCount() const;
  void Close();
  Field Fields(std::string_view nombre) const;
  Field Fields(std::size_t indice) const;
  const Columnas& Nombres() const;
  // Position of a column; Error kElemento when there is none. For loops over many rows.
  std::size_t Indice(std::string_view nombre) const;

 private:
  void RevisaAbierto() const;

  std::shared_ptr<const Columnas> columnas_;
  std::vector<com::Variant> celdas_;
  std::size_t filas_ = 0;
  std::size_t actual_ = 0;
  bool abierto_ = true;
};
using RecordsetPtr = std::shared_ptr<Recordset>;

// An open connection. Statements are SQL Server text.
class Connection {
 public:
  virtual ~Connection() = default;
  // Runs one statement; writes give a record set without rows. The text's values are verified first
  // (TextoSQL::Verifica). Database failures raise com::Error with the statement.
  virtual RecordsetPtr Execute(const TextoSQL& sentencia) = 0;
  RecordsetPtr Execute(std::string_view sentencia) { return Execute(TextoSQL(sentencia)); }
  // Transactions do not nest: Error kTransaccion for a second begin, and for a commit or roll-back without begin.
  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;
  // True when one statement for many rows is served better than many small ones; the board then reads whole sets.
  virtual bool LeeConjuntos() const { return false; }
};
using ConnectionPtr = std::shared_ptr<Connection>;

}  // namespace ado
