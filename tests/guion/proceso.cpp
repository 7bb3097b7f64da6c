#include "proceso.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string_view>
#include <thread>

namespace pruebas {

namespace {

// They point into the texts.
std::vector<char*> Punteros(std::vector<std::string>& argumentos) {
  std::vector<char*> punteros;
  punteros.reserve(argumentos.size() + 1);
  for (std::string& a : argumentos) punteros.push_back(a.data());
  punteros.push_back(nullptr);
  return punteros;
}

// Starts a program with the given files as its standard ones.
pid_t Arranca(std::vector<std::string> argumentos, int entrada, int salida, int errores) {
  const auto punteros = Punteros(argumentos);
  const pid_t pid = fork();
  if (pid != 0) return pid;
  dup2(entrada, STDIN_FILENO);
  dup2(salida, STDOUT_FILENO);
  dup2(errores, STDERR_FILENO);
  execv(punteros[0], punteros.data());
  _exit(127);
}

int Estado(pid_t pid) {
  int estado = 0;
  waitpid(pid, &estado, 0);
  return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

int Abre(const std::string& ruta, int modo) { return open(ruta.c_str(), modo | O_CLOEXEC, 0600); }

}  // namespace

Carpeta::Carpeta() {
  std::string plantilla = (std::filesystem::temp_directory_path() / "kv207-guion-XXXXXX").string();
  if (mkdtemp(plantilla.data()) == nullptr) throw std::runtime_error("no temporary folder");
  ruta_ = plantilla;
}

Carpeta::~Carpeta() {
  std::error_code ignorado;
  std::filesystem::remove_all(ruta_, ignorado);
}

std::string Carpeta::Escribe(const std::string& nombre, const std::string& contenido) const {
  std::ofstream(Ruta(nombre), std::ios::binary) << contenido;
  return Ruta(nombre);
}

Salida Corre(const std::vector<std::string>& argumentos, const std::string& entrada, int matarMs) {
  const Carpeta carpeta;
  const int in = Abre(carpeta.Escribe("entrada", entrada), O_RDONLY);
  const int out = Abre(carpeta.Ruta("salida"), O_WRONLY | O_CREAT);
  const int err = Abre(carpeta.Ruta("errores"), O_WRONLY | O_CREAT);
  const pid_t pid = Arranca(argumentos, in, out, err);
  if (matarMs >= 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(matarMs));
    kill(pid, SIGKILL);
  }
  Salida salida;
  salida.estado = Estado(pid);
  for (const int archivo : {in, out, err}) close(archivo);
  salida.texto = Lee(carpeta.Ruta("salida"));
  salida.errores = Lee(carpeta.Ruta("errores"));
  return salida;
}

Dialogo::Dialogo(const std::vector<std::string>& argumentos) {
  int ida[2], vuelta[2];
  if (pipe2(ida, O_CLOEXEC) != 0 || pipe2(vuelta, O_CLOEXEC) != 0) throw std::runtime_error("no pipes");
  pid_ = Arranca(argumentos, ida[0], vuelta[1], STDERR_FILENO);
  close(ida[0]);
  close(vuelta[1]);
  haciaEl_ = ida[1];
  desdeEl_ = vuelta[0];
}

Dialogo::~Dialogo() {
  if (pid_ > 0) Termina();
  close(desdeEl_);
}

void Dialogo::Di(const std::string& linea) {
  const std::string completa = linea + "\n";
  ASSERT_EQ(write(haciaEl_, completa.data(), completa.size()), static_cast<ssize_t>(completa.size()));
}

std::string Dialogo::Oye() {
  while (sobrante_.find('\n') == std::string::npos) {
    pollfd espera{desdeEl_, POLLIN, 0};
    char bloque[4096];
    if (poll(&espera, 1, 10000) <= 0) return {};
    const ssize_t n = read(desdeEl_, bloque, sizeof bloque);
    if (n <= 0) return {};
    sobrante_.append(bloque, static_cast<std::size_t>(n));
  }
  const std::size_t fin = sobrante_.find('\n');
  std::string linea = sobrante_.substr(0, fin);
  sobrante_.erase(0, fin + 1);
  return linea;
}

int Dialogo::Termina() {
  close(haciaEl_);
  const int estado = Estado(pid_);
  pid_ = -1;
  return estado;
}

namespace {

class Base {
 public:
  explicit Base(const std::string& ruta) {
    if (sqlite3_open(ruta.c_str(), &base_) != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(base_));
    // The tables' own collations are not needed to read them whole; any order serves.
    sqlite3_collation_needed(base_, nullptr, [](void*, sqlite3* base, int, const char* nombre) {
      sqlite3_create_collation(base, nombre, SQLITE_UTF8, nullptr, Compara);
    });
  }
  ~Base() { sqlite3_close(base_); }
  Base(const Base&) = delete;
  Base& operator=(const Base&) = delete;

  std::vector<std::vector<std::string>> Filas(const std::string& sentencia) {
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(base_, sentencia.c_str(), -1, &st, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sentencia + ": " + sqlite3_errmsg(base_));
    }
    std::vector<std::vector<std::string>> filas;
    while (sqlite3_step(st) == SQLITE_ROW) {
      auto& fila = filas.emplace_back();
      for (int c = 0; c < sqlite3_column_count(st); ++c) {
        const auto* texto = sqlite3_column_text(st, c);
        fila.emplace_back(texto == nullptr ? "NULL" : reinterpret_cast<const char*>(texto));
      }
    }
    if (sqlite3_finalize(st) != SQLITE_OK) throw std::runtime_error(sentencia + ": " + sqlite3_errmsg(base_));
    return filas;
  }

 private:
  static int Compara(void*, int na, const void* a, int nb, const void* b) {
    const std::string_view x(static_cast<const char*>(a), static_cast<std::size_t>(na));
    return x.compare(std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(nb)));
  }

  sqlite3* base_ = nullptr;
};

}  // namespace

std::map<std::string, std::vector<std::string>> Tablas(const std::string& ruta) {
  Base base(ruta);
  std::map<std::string, std::vector<std::string>> tablas;
  for (const auto& nombre : base.Filas("SELECT name FROM sqlite_master WHERE type = 'table'")) {
    auto& renglones = tablas[nombre[0]];
    for (const auto& fila : base.Filas("SELECT * FROM \"" + nombre[0] + "\"")) {
      std::string renglon;
      for (const std::string& valor : fila) renglon += valor + "|";
      renglones.push_back(renglon);
    }
    std::ranges::sort(renglones);
  }
  return tablas;
}

std::vector<std::string> Sql(const std::string& ruta, const std::string& sentencia) {
  std::vector<std::string> valores;
  for (const auto& fila : Base(ruta).Filas(sentencia)) valores.push_back(fila[0]);
  return valores;
}

std::string Lee(const std::string& ruta) {
  std::ifstream archivo(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(archivo), std::istreambuf_iterator<char>()};
}

}  // namespace pruebas
