// The assistant of a hotel from nothing: a page for each part, all of it written once it is finished.
#pragma once

#include <QLineEdit>
#include <QWizard>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/standalone/hotel_nuevo.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QVBoxLayout;

namespace vista {

class Asistente : public QWizard {
 public:
  Asistente(autonomo::Anfitrion& anfitrion, QWidget* padre);

  // Leaving asks first when something was entered.
  void reject() override;

 protected:
  bool validateCurrentPage() override;
  void initializePage(int pagina) override;

 private:
  // A line of text and whose it is: a member's name of the hotel, or of a type or user with its position.
  using Sitio = std::pair<std::string, int>;
  struct Columna {
    const char *titulo, *campo;
    int ancho;  // pixels
  };

  QVBoxLayout* CreaPagina(const char* titulo, const char* explicacion);
  void CreaPaginaHotel();
  void CreaPaginaTipos();
  void CreaPaginaHabitaciones();
  void CreaPaginaUsuarios();
  void CreaPaginaResumen();
  QLineEdit* Linea(autonomo::ParteHotel parte, const char* campo, int fila, const QString& nombre, const QString& texto,
                   QWidget* padre);
  QGridLayout* Rejilla(QVBoxLayout& caja, const std::vector<Columna>& columnas);
  void AgregaTipo();
  void AgregaUsuario();
  void MuestraHabitaciones();
  void CuentaHabitaciones();
  void Recoge();
  void EnfocaPrimera();
  std::string Texto(autonomo::ParteHotel parte, const char* campo, int fila = -1) const;
  bool Rechaza(const autonomo::Reparo& reparo);
  // "" when the second password of each user is the first.
  std::optional<autonomo::Reparo> ContrasenasDistintas() const;
  bool Crea();
  autonomo::ParteHotel Parte() const { return static_cast<autonomo::ParteHotel>(currentId()); }

  autonomo::Anfitrion& anfitrion_;
  autonomo::HotelNuevo hotel_;
  std::vector<std::map<Sitio, QLineEdit*>> lineas_{std::size(autonomo::kPartesHotel)};
  std::vector<QLabel*> motivos_;  // one a page
  QComboBox *moneda_ = nullptr, *divisa_ = nullptr;
  QCheckBox* conImpuesto_ = nullptr;
  QGridLayout *tipos_ = nullptr, *habitaciones_ = nullptr, *usuarios_ = nullptr;
  std::vector<QLabel*> cuentas_;  // rooms of each type
  QLabel* resumen_ = nullptr;
  int filasTipos_ = 0, filasUsuarios_ = 0;
  std::string vacio_;  // all that stood there at first
  std::string Escrito() const;
};

// Opens it for a hotel that nobody has set up; whether one was made.
[[nodiscard]] bool OfreceHotel(autonomo::Anfitrion& anfitrion, QWidget* padre);

}  // namespace vista
