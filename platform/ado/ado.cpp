#include "platform/ado/ado.h"

#include "platform/com/error.h"

namespace ado {

Recordset::Recordset(std::shared_ptr<const Columnas> columnas, std::vector<com::Variant> celdas)
    : columnas_(std::move(columnas)), celdas_(std::move(celdas)) {
  const std::size_t ancho = columnas_->size();
  if (ancho == 0 ? !celdas_.empty() : celdas_.size() % ancho != 0) {
    throw com::Error(com::error::kArgumento, "El conjunto de registros no tiene filas completas");
  }
  filas_ = ancho == 0 ? 0 : celdas_.size() / ancho;
}

void Recordset::RevisaAbierto() const {
  if (!abierto_) {
    throw com::Error(com::error::kCerrado, "La operación no está permitida si el objeto está cerrado");
  }
}

bool Recordset::Eof() const {
  RevisaAbierto();
  return actual_ >= filas_;
}

void Recordset::MoveFirst() {
  RevisaAbierto();
  actual_ = 0;
}

void Recordset::MoveNext() {
  RevisaAbierto();
  if (actual_ < filas_) ++actual_;
}

int Recordset::RecordCount() const {
  RevisaAbierto();
  return static_cast<int>(filas_);
}

void Recordset::Close() {
  abierto_ = false;
  celdas_.clear();
}

Field Recordset::Fields(std::string_view nombre) const { return Fields(Indice(nombre)); }

Field Recordset::Fields(std::size_t indice) const {
  RevisaAbierto();
  if (indice >= columnas_->size()) {
    throw com::Error(com::error::kElemento,
                     "No se encontró la columna " + std::to_string(indice) + " en el conjunto de registros");
  }
  if (actual_ >= filas_) throw com::Error(com::error::kSubindice, "No hay registro actual");
  return {(*columnas_)[indice], celdas_[actual_ * columnas_->size() + indice]};
}

const Recordset::Columnas& Recordset::Nombres() const {
  RevisaAbierto();
  return *columnas_;
}

std::size_t Recordset::Indice(std::string_view nombre) const {
  RevisaAbierto();
  for (std::size_t i = 0; i < columnas_->size(); ++i) {
    if (com::IgualSinCaja((*columnas_)[i], nombre)) return i;
  }
  throw com::Error(com::error::kElemento,
                   "No se encontró la columna «" + std::string(nombre) + "» en el conjunto de registros");
}

}  // namespace ado
