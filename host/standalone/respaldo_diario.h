// The desktop's daily copy of the hotel: at start and when the day changes, behind the clerk's back.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace autonomo {

class RespaldoDiario {
 public:
  // hotel: the file's path. Works from now on in a thread of its own, with connections of its own. A day whose copy
  // failed is tried again after an hour.
  explicit RespaldoDiario(std::string hotel);
  // Ends at once; a copy that was under way leaves nothing.
  ~RespaldoDiario();
  RespaldoDiario(const RespaldoDiario&) = delete;
  RespaldoDiario& operator=(const RespaldoDiario&) = delete;

  struct Noticia {
    bool falla = false;
    std::string texto;  // Spanish: for the log, and for the clerk when it is a failure
  };
  // What was done since the last call.
  std::vector<Noticia> TomaNoticias();

 private:
  void Trabaja();
  bool Hace(const std::string& dia);

  std::string hotel_;
  std::atomic<bool> termina_ = false;
  std::mutex mutex_;  // of what follows
  std::condition_variable despierta_;
  std::vector<Noticia> noticias_;
  std::thread hilo_;
};

}  // namespace autonomo
