// A database file, for the tests of opening it.
#pragma once

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <thread>

#include "tests/host/base_prueba.h"

namespace pruebas {

class ArchivoPrueba : public BasePrueba {
 protected:
  // Of the error that opening it raises.
  int Numero(const std::string& archivo) const {
    return ErrorDe([&] { Abre(archivo, 50); }).Numero();
  }
  static std::string Bytes(const std::string& archivo) {
    std::ostringstream bytes;
    bytes << std::ifstream(archivo, std::ios::binary).rdbuf();
    return bytes.str();
  }
  void Escribe(const std::string& bytes) const { std::ofstream(ruta, std::ios::binary) << bytes; }
  // Runs SQL on the file as another program would.
  static void Ajeno(const std::string& archivo, const char* sql) {
    sqlite3* base = nullptr;
    ASSERT_EQ(sqlite3_open(archivo.c_str(), &base), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(base, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(base);
    sqlite3_close(base);
  }
};

// Kills a process that calls `llama` again and again, `ms` milliseconds after it has returned for the first time.
inline void MataEn(int ms, const std::function<void(int)>& llama) {
  std::array<int, 2> tubo{};
  ASSERT_EQ(pipe(tubo.data()), 0);
  const pid_t hijo = fork();
  if (hijo == 0) {
    close(tubo[0]);
    for (int i = 0;; ++i) {
      llama(i);
      if (i == 0) close(tubo[1]);
    }
  }
  close(tubo[1]);
  char nada = 0;
  EXPECT_EQ(read(tubo[0], &nada, 1), 0);  // comes back when the other end is closed
  close(tubo[0]);
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
  kill(hijo, SIGKILL);
  waitpid(hijo, nullptr, 0);
}

}  // namespace pruebas
