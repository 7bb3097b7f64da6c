#include "host/standalone/sumas.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "host/standalone/integridad.h"

namespace autonomo {
namespace {

constexpr std::uint32_t kFirma = 0x4B565332, kFirmaDanada = 0x4B565344;
constexpr const char* kCola = "-suma";
constexpr std::size_t kCabecera = 100;  // of the first page: marks and counters

std::uint32_t Palabra(const unsigned char* p) {
  return std::uint32_t{p[0]} << 24U | std::uint32_t{p[1]} << 16U | std::uint32_t{p[2]} << 8U | p[3];
}

// Bytes of the open file as they are on the disk, read through the engine's own descriptor: closing another one would
// drop its locks.
sqlite3_file* Abierto(sqlite3* base) {
  sqlite3_file* archivo = nullptr;
  sqlite3_file_control(base, "main", SQLITE_FCNTL_FILE_POINTER, &archivo);
  return archivo != nullptr && archivo->pMethods != nullptr ? archivo : nullptr;
}

bool LeeBytes(sqlite3* base, std::uint64_t lugar, std::vector<unsigned char>& bytes) {
  sqlite3_file* archivo = Abierto(base);
  return archivo != nullptr && archivo->pMethods->xRead(archivo, bytes.data(), static_cast<int>(bytes.size()),
                                                        static_cast<sqlite3_int64>(lugar)) == SQLITE_OK;
}

std::uint64_t Tamanio(sqlite3* base) {
  sqlite3_file* archivo = Abierto(base);
  sqlite3_int64 bytes = 0;
  if (archivo == nullptr || archivo->pMethods->xFileSize(archivo, &bytes) != SQLITE_OK) return 0;
  return static_cast<std::uint64_t>(bytes);
}

// Any change of one byte gives another sum.
std::uint64_t Suma(const unsigned char* p, std::size_t bytes) {
  std::uint64_t a = 1, b = 0;
  for (std::size_t i = 0; i + 4 <= bytes; i += 4) {
    a += Palabra(p + i);
    b += a;
  }
  return (a % 0xFFFFFFFBU) << 32U | b % 0xFFFFFFFBU;
}

std::string Ruta(sqlite3* base) {
  const char* ruta = sqlite3_db_filename(base, "main");
  return ruta == nullptr || *ruta == '\0' ? std::string() : std::string(ruta) + kCola;
}

void Agrega(std::vector<unsigned char>& bytes, std::uint64_t valor, int ancho) {
  for (int i = ancho - 1; i >= 0; --i) bytes.push_back(static_cast<unsigned char>(valor >> (8 * i)));
}

std::uint64_t Lee64(const unsigned char* p) { return std::uint64_t{Palabra(p)} << 32U | Palabra(p + 4); }

std::vector<unsigned char> LeeArchivo(const std::string& ruta) {
  std::ifstream archivo(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(archivo), {}};
}

bool EsNota(const std::vector<unsigned char>& bytes) {
  return bytes.size() == 4 && Palabra(bytes.data()) == kFirmaDanada;
}

// The new ones take the place of the old ones whole.
void Escribe(const std::string& ruta, const std::vector<unsigned char>& bytes, mode_t modo) {
  const std::string nueva = ruta + ".nueva";
  const int archivo = open(nueva.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (archivo < 0) return;
  const bool bien = write(archivo, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  const bool suya = fchmod(archivo, modo) == 0;
  close(archivo);
  if (!bien || !suya || rename(nueva.c_str(), ruta.c_str()) != 0) unlink(nueva.c_str());
}

}  // namespace

// The file's own numbers and the sums of its pages.
bool Sumas::Calcula(sqlite3* base) {
  std::vector<unsigned char> bytes(kCabecera);
  if (!LeeBytes(base, 0, bytes)) return false;
  tamanio_ = std::uint32_t{bytes[16]} << 8U | bytes[17];
  if (tamanio_ == 1) tamanio_ = 65536;
  cambios_ = Palabra(bytes.data() + 24);
  marca_ = Palabra(bytes.data() + 68);
  const std::uint64_t cuantas = Palabra(bytes.data() + 28);
  if (tamanio_ < 512 || cuantas * tamanio_ != Tamanio(base)) return false;
  paginas_.resize(cuantas);
  return true;
}

bool AnotadaDanada(sqlite3* base) { return EsNota(LeeArchivo(Ruta(base))); }

void AnotaDano(sqlite3* base) {
  const std::string ruta = Ruta(base);
  struct stat datos {};
  if (ruta.empty() || stat(sqlite3_db_filename(base, "main"), &datos) != 0) return;
  std::vector<unsigned char> bytes;
  Agrega(bytes, kFirmaDanada, 4);
  Escribe(ruta, bytes, datos.st_mode & 0777U);
}

void OlvidaSumas(const std::string& archivo) { unlink((archivo + kCola).c_str()); }

void GuardaSumas(sqlite3* base) {
  const std::string ruta = Ruta(base);
  struct stat datos {};
  Sumas s;
  if (ruta.empty() || stat(sqlite3_db_filename(base, "main"), &datos) != 0) return;
  // Nobody writes meanwhile.
  if (sqlite3_exec(base, "BEGIN; SELECT COUNT(*) FROM sqlite_master", nullptr, nullptr, nullptr) != SQLITE_OK) return;
  bool bien = s.Calcula(base) && (s.marca_ == kMarca || s.marca_ == kMarcaCopia);
  std::vector<unsigned char> pagina(s.tamanio_), bytes;
  for (const std::uint32_t n : {kFirma, s.tamanio_, s.cambios_, s.marca_}) Agrega(bytes, n, 4);
  for (std::size_t i = 0; bien && i < s.paginas_.size(); ++i) {
    bien = LeeBytes(base, i * s.tamanio_, pagina);
    Agrega(bytes, Suma(pagina.data(), pagina.size()), 8);
  }
  sqlite3_exec(base, "ROLLBACK", nullptr, nullptr, nullptr);
  Agrega(bytes, Suma(bytes.data(), bytes.size()), 8);
  if (bien) Escribe(ruta, bytes, datos.st_mode & 0777U);
}

Sumas Sumas::Lee(sqlite3* base) {
  const std::vector<unsigned char> bytes = LeeArchivo(Ruta(base));
  constexpr std::size_t kInicio = 16;
  Sumas s;
  s.danada_ = EsNota(bytes);
  if (s.danada_) return s;
  if (bytes.size() < kInicio + 8 || !s.Calcula(base)) return {};
  const unsigned char* p = bytes.data();
  const bool suyas = bytes.size() == kInicio + 8 * s.paginas_.size() + 8 && Palabra(p) == kFirma &&
                     Palabra(p + 4) == s.tamanio_ && Palabra(p + 8) == s.cambios_ && Palabra(p + 12) == s.marca_ &&
                     (s.marca_ == kMarca || s.marca_ == kMarcaCopia) &&
                     Lee64(p + bytes.size() - 8) == Suma(p, bytes.size() - 8);
  if (!suyas) return {};
  for (std::size_t i = 0; i < s.paginas_.size(); ++i) s.paginas_[i] = Lee64(p + kInicio + 8 * i);
  return s;
}

std::string Sumas::Dano(sqlite3* base) const {
  if (danada_) return "Ya se encontró dañada antes, y así quedó anotado en " + Ruta(base);
  std::vector<unsigned char> pagina(tamanio_);
  for (std::size_t i = 0; i < paginas_.size(); ++i) {
    if (!LeeBytes(base, i * tamanio_, pagina) || Suma(pagina.data(), pagina.size()) != paginas_[i])
      return "La página " + std::to_string(i + 1) + " no es la que se dejó al cerrar";
  }
  return {};
}

}  // namespace autonomo
