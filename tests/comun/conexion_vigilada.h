// A connection that tells what is asked of it, and fails where a test wants it to.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/ado/ado.h"
#include "platform/com/error.h"

namespace pruebas {

// Passes everything on; notes the statements as given (BeginTrans, CommitTrans, RollbackTrans among them).
class ConexionVigilada : public ado::Connection {
 public:
  explicit ConexionVigilada(ado::ConnectionPtr real) : real_(std::move(real)) {}

  ado::RecordsetPtr Execute(const ado::TextoSQL& sentencia) override {
    Anota(sentencia.Texto());
    return real_->Execute(sentencia);
  }
  using ado::Connection::Execute;
  void BeginTrans() override {
    Anota("BeginTrans");
    real_->BeginTrans();
  }
  void CommitTrans() override {
    Anota("CommitTrans");
    real_->CommitTrans();
  }
  void RollbackTrans() override {
    Anota("RollbackTrans");
    real_->RollbackTrans();
  }
  bool LeeConjuntos() const override { return conjuntos.value_or(real_->LeeConjuntos()); }

  // The next statement with that text, or a later one (vez), fails once, with the description "falla inyectada".
  void Falla(std::string texto, int numero = com::error::kInyectada, int vez = 1) {
    falla_ = std::move(texto);
    numero_ = numero;
    faltan_ = vez;
  }
  std::vector<std::string> sentencias;
  std::optional<bool> conjuntos;  // what LeeConjuntos answers; nothing: as the real one

 private:
  void Anota(const std::string& texto) {
    sentencias.push_back(texto);
    if (falla_.empty() || texto.find(falla_) == std::string::npos || --faltan_ > 0) return;
    falla_.clear();
    throw com::Error(numero_, "falla inyectada", texto);
  }

  ado::ConnectionPtr real_;
  std::string falla_;
  int numero_ = com::error::kInyectada, faltan_ = 0;
};

}  // namespace pruebas
