#include "host/standalone/borradores.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "schema/esquema.h"

namespace autonomo {

namespace {

// First line of the file; another one is another format's.
constexpr std::string_view kFormato = "borrador de reservas 1";
constexpr int kLugares = 50;

std::uint64_t Suma(std::string_view texto) {
  std::uint64_t suma = 14695981039346656037ULL;
  for (const char c : texto) suma = (suma ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
  return suma;
}

std::string EnHexadecimal(std::uint64_t numero) {
  std::array<char, 17> texto{};
  const int largo = std::snprintf(texto.data(), texto.size(), "%016llx", static_cast<unsigned long long>(numero));
  return {texto.data(), static_cast<std::size_t>(largo)};
}

// Takes the line off the text; nothing when it does not end.
std::optional<std::string_view> Linea(std::string_view& texto) {
  const std::size_t fin = texto.find('\n');
  if (fin == std::string_view::npos) return std::nullopt;
  const std::string_view linea = texto.substr(0, fin);
  texto.remove_prefix(fin + 1);
  return linea;
}

std::string LeeArchivo(const std::string& ruta) {
  std::ifstream archivo(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(archivo), std::istreambuf_iterator<char>()};
}

// Fills contenido, or motivo. duenos: the lines that name the database and the user.
void Lee(std::string_view texto, std::string_view duenos, BorradorHallado& hallado) {
  const auto formato = Linea(texto);
  if (!formato || !formato->starts_with("borrador de reservas ")) {
    hallado.motivo = "no es un borrador o está dañado";
    return;
  }
  if (*formato != kFormato) {
    hallado.motivo = "lo escribió otra versión del programa";
    return;
  }
  const auto suma = Linea(texto);
  if (!suma || *suma != EnHexadecimal(Suma(texto))) {
    hallado.motivo = "está dañado";
    return;
  }
  const auto esquema = Linea(texto), cuando = Linea(texto);
  const auto fecha = cuando ? com::DeIso(*cuando) : std::nullopt;
  if (!fecha || !texto.starts_with(duenos)) {
    hallado.motivo = "es de otra base o de otro usuario";
    return;
  }
  texto.remove_prefix(duenos.size());
  std::from_chars(esquema->data(), esquema->data() + esquema->size(), hallado.esquema);
  hallado.cuando = *fecha;
  hallado.contenido = texto;
}

[[noreturn]] void Falla(const std::string& ruta) {
  const bool llena = errno == ENOSPC || errno == EDQUOT;
  throw com::Error(llena ? com::error::kLlena : com::error::kSoloLectura,
                   "No se puede guardar el borrador de lo capturado en " + ruta +
                       (llena ? ": el disco está lleno" : ": revise los permisos"));
}

// Whole and on the disk, or not at all.
void Escribe(const std::string& ruta, const std::string& carpeta, const std::string& texto) {
  const std::string nueva = ruta + ".nuevo";
  const int archivo = open(nueva.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (archivo < 0) Falla(ruta);
  const bool escrito =
      write(archivo, texto.data(), texto.size()) == static_cast<ssize_t>(texto.size()) && fsync(archivo) == 0;
  const int error = errno;
  close(archivo);
  if (!escrito || std::rename(nueva.c_str(), ruta.c_str()) != 0) {
    if (!escrito) errno = error;
    const int motivo = errno;
    unlink(nueva.c_str());
    errno = motivo;
    Falla(ruta);
  }
  const int c = open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (c < 0) return;
  fsync(c);
  close(c);
}

}  // namespace

Borradores::Borradores(std::string base, std::string usuario, std::string carpeta)
    : base_(std::move(base)), usuario_(std::move(usuario)), carpeta_(std::move(carpeta)) {
  nombre_ = "captura-" + EnHexadecimal(Suma(Duenos()));
}

Borradores::~Borradores() { Suelta(); }

std::string Borradores::Duenos() const { return base_ + '\n' + com::Mayusculas(usuario_) + '\n'; }

std::string Borradores::Ruta(int numero) const {
  return carpeta_ + "/" + nombre_ + "-" + std::to_string(numero) + ".borrador";
}

bool Borradores::Ocupa(int numero) {
  std::error_code ec;
  std::filesystem::create_directories(carpeta_, ec);
  const std::string ruta = Ruta(numero) + ".candado";
  const int archivo = open(ruta.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (archivo < 0) Falla(Ruta(numero));
  if (flock(archivo, LOCK_EX | LOCK_NB) != 0) {
    close(archivo);
    return false;
  }
  candado_ = archivo;
  numero_ = numero;
  return true;
}

void Borradores::Suelta() {
  if (candado_ >= 0) close(candado_);
  candado_ = -1;
  numero_ = 0;
}

void Borradores::Guarda(std::string_view contenido, com::Fecha cuando) {
  // A place with a draft in it is somebody's, or was left for another session.
  for (int n = 1; numero_ == 0 && n <= kLugares; ++n) {
    if (access(Ruta(n).c_str(), F_OK) == 0 || !Ocupa(n)) continue;
    if (access(Ruta(n).c_str(), F_OK) == 0) Suelta();
  }
  if (numero_ == 0) {
    errno = EACCES;
    Falla(carpeta_);
  }
  std::string cuerpo = std::to_string(esquema::kVersion) + '\n' + com::AIso(cuando) + '\n' + Duenos();
  cuerpo += contenido;
  Escribe(Ruta(numero_), carpeta_, std::string(kFormato) + '\n' + EnHexadecimal(Suma(cuerpo)) + '\n' + cuerpo);
}

void Borradores::Olvida() {
  if (numero_ != 0) unlink(Ruta(numero_).c_str());
}

std::string Borradores::ApartaIlegible() {
  const std::string ruta = Ruta(numero_);
  std::string aparte = ruta;
  for (int k = 1; access(aparte.c_str(), F_OK) == 0; ++k) {
    aparte = carpeta_ + "/" + nombre_ + "-" + std::to_string(numero_) + ".ilegible" + std::to_string(k);
  }
  const bool apartado = std::rename(ruta.c_str(), aparte.c_str()) == 0;
  Suelta();
  return apartado ? aparte : ruta;
}

std::optional<BorradorHallado> Borradores::Toma() {
  Suelta();
  while (siguiente_ <= kLugares) {
    const int n = siguiente_++;
    if (access(Ruta(n).c_str(), F_OK) != 0 || !Ocupa(n)) continue;
    BorradorHallado hallado;
    hallado.ruta = Ruta(n);
    const std::string texto = LeeArchivo(hallado.ruta);
    Lee(texto, Duenos(), hallado);
    if (hallado.motivo.empty()) return hallado;
    hallado.ruta = ApartaIlegible();
    return hallado;
  }
  return std::nullopt;
}

}  // namespace autonomo
