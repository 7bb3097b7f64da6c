// Another hotel: a new one, or one that is there, in a file or on a server.
#pragma once

#include <QDialog>
#include <QString>
#include <optional>
#include <string>

class QLabel;
class QLineEdit;
class QListWidget;

namespace vista {

class DialogoHotel : public QDialog {
 public:
  // abierto: the hotel that is open now.
  DialogoHotel(bool nuevo, std::string abierto, QWidget* padre);
  // File (whole path) or address.
  std::string Hotel() const;

 private:
  void CreaRecientes();
  void Examina();
  void Acepta();
  std::string Motivo() const;

  bool nuevo_;
  std::string abierto_;
  QListWidget* recientes_ = nullptr;
  QLineEdit* hotel_;
  QLabel* motivo_;
};

// The hotel that the person wants; nothing when she wants none.
[[nodiscard]] std::optional<std::string> PreguntaHotel(bool nuevo, const std::string& abierto, QWidget* padre);

// The path that a file goes by in lists, whole; an address as it is.
std::string NombreEntero(const std::string& hotel);

}  // namespace vista
