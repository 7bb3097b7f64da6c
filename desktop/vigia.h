// What happens behind the clerk's back and she is to know (a daily copy that failed, damage that was found), told at a
// quiet moment: not in a capture, nor over a dialog.
#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

namespace vista {

class Vigia : public QObject {
 public:
  // toma: what is new, each notice once; ocupada: whether she is at something; dice: shows one notice. Asked at once
  // when the event loop runs, then every few seconds.
  Vigia(std::function<std::vector<std::string>()> toma, std::function<bool()> ocupada,
        std::function<void(const std::string&)> dice, int cadaMs = 3000);

 private:
  void Mira();

  std::function<std::vector<std::string>()> toma_;
  std::function<bool()> ocupada_;
  std::function<void(const std::string&)> dice_;
  std::vector<std::string> pendientes_;
};

}  // namespace vista
