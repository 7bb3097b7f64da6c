// Opening of the SQLite database: creation, check of whose file it is, settings.
#pragma once

#include <QSqlDatabase>
#include <QString>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/standalone/conexion.h"
#include "host/standalone/integridad.h"

struct sqlite3;

namespace autonomo {

// An open database of this system; closes when it goes.
class BaseSqlite {
 public:
  // ruta, crea, esperaMs and errors as AbreConexion takes and gives them.
  explicit BaseSqlite(const OpcionesConexion& opciones);
  ~BaseSqlite();
  BaseSqlite(const BaseSqlite&) = delete;
  BaseSqlite& operator=(const BaseSqlite&) = delete;

  // SQLite's own handle, which belongs to the Qt driver.
  sqlite3* manija() const { return manija_; }

  // com::Error kBaseDatos when the database's file or its log is no longer the one that was opened: what is written
  // then would be lost without a sign. Asked before each write or transaction.
  // Also when a check of its pages has meanwhile found damage.
  void RevisaArchivos() const;

  // ConexionDeMotor::TomaTurno.
  bool TomaTurno(const std::string& trabajo) const;

  // What the clerk is to know about it, each notice once; damage when the check has found it.
  std::vector<std::string> TomaAvisos();

 private:
  void Abre(const QString& ruta, int esperaMs);
  void Prepara(const std::string& ruta, const OpcionesConexion& opciones);
  bool EnSuLugar() const;
  void DejaEntera();
  void Cierra();

  QString nombre_;
  QSqlDatabase base_;
  sqlite3* manija_ = nullptr;
  std::uint64_t bitacora_ = 0;  // inode of the write-ahead log; 0 in memory
  std::vector<std::string> avisos_;
  std::unique_ptr<RevisionDePaginas> paginas_;
  bool dijoDano_ = false;
};

}  // namespace autonomo
