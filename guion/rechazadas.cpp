#include "guion/rechazadas.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>

#include "guion/archivos.h"
#include "guion/csv.h"
#include "guion/reservas_csv.h"
#include "host/standalone/motivo_archivo.h"
#include "platform/com/error.h"

namespace guion {

namespace {

const std::vector<std::string>& Columnas() {
  static const std::vector<std::string> columnas = [] {
    std::vector<std::string> c = ColumnasReservas();
    c.insert(c.end(), {"motivo", "mensajes", "linea"});
    return c;
  }();
  return columnas;
}

std::string Fila(const std::vector<std::string>& campos, const std::string& linea) {
  std::vector<std::string> fila(campos.begin(),
                                campos.begin() + static_cast<std::ptrdiff_t>(ColumnasReservas().size()));
  fila.push_back(linea);
  return LineaCsv(fila);
}

}  // namespace

Rechazadas::Rechazadas(std::string ruta) : ruta_(std::move(ruta)) {
  if (std::filesystem::exists(ruta_)) LeeExistente();
}

void Rechazadas::NoSeEscribe() const {
  throw com::Error(com::error::kBaseDatos, ruta_ + ": no se puede escribir (" + autonomo::MotivoDeArchivo(errno) + ")");
}

void Rechazadas::Abre() {
  archivo_ = open(ruta_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
  if (archivo_ < 0) NoSeEscribe();
  if (ftruncate(archivo_, static_cast<off_t>(entero_)) != 0 && errno != EINVAL) NoSeEscribe();
  if (entero_ == 0) Escribe(LineaCsv(Columnas()));
}

Rechazadas::~Rechazadas() {
  if (archivo_ >= 0) close(archivo_);
}

void Rechazadas::LeeExistente() {
  const std::string contenido = LeeArchivo(ruta_);
  const std::string encabezado = LineaCsv(Columnas());
  if (!encabezado.starts_with(contenido.substr(0, encabezado.size()))) {
    throw com::Error(com::error::kArgumento, ruta_ + ":1: no es un archivo de reservas rechazadas");
  }
  entero_ = contenido.rfind('\n') + 1;  // 0 when there is no whole line
  if (entero_ == 0) return;
  for (const RegistroCsv& r : SinDefectos(ruta_, DivideCsv(ruta_, contenido.substr(0, entero_), Columnas()))) {
    filas_.insert(Fila(r.campos, r.campos.back()));
  }
}

void Rechazadas::Escribe(const std::string& texto) {
  std::size_t escrito = 0;
  while (escrito < texto.size()) {
    const ssize_t n = write(archivo_, texto.data() + escrito, texto.size() - escrito);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) NoSeEscribe();
    escrito += static_cast<std::size_t>(n);
  }
  // Not every kind of file can be flushed (a pipe cannot).
  if (fsync(archivo_) != 0 && errno != EINVAL && errno != EROFS) NoSeEscribe();
}

bool Rechazadas::Agrega(int linea, const std::vector<std::string>& campos, const std::string& motivo,
                        const std::string& mensajes) {
  const std::string numero = std::to_string(linea);
  if (!filas_.insert(Fila(campos, numero)).second) return false;
  std::vector<std::string> todos = campos;
  todos.insert(todos.end(), {motivo, mensajes, numero});
  Escribe(LineaCsv(todos));
  return true;
}

}  // namespace guion
