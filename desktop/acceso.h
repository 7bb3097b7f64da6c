// Who works here, where users have passwords: the login, the locked screen.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/standalone/anfitrion.h"

class QLabel;
class QLineEdit;

namespace vista {

// The clerk did not say who she is.
struct SinAcceso {};

// Asks for user and password until they are taken.
class DialogoAcceso : public QDialog {
 public:
  DialogoAcceso(const QString& explicacion, const std::string& usuario, QWidget* padre);
  // Why not, "" is taken. A com::Error is told in the same way.
  std::function<std::string(const std::string& usuario, const std::string& contrasena)> revisa;
  // There is no way out but the password.
  void Encierra();
  std::string Usuario() const;

 protected:
  void reject() override;

 private:
  void Acepta();

  QLineEdit *usuario_, *contrasena_;
  QLabel* motivo_;
  bool encerrado_ = false;
};

// The login when the program opens; usuario: what stands there first. SinAcceso when it is refused.
[[nodiscard]] std::string PideAcceso(autonomo::Conexion& conexion, const std::string& usuario);

// Covers the windows after a time without work and asks for the password; what is being captured stays as it is.
class Bloqueo : public QObject {
 public:
  // base: the host's database, opened anew for each password, so that a try is no part of what a question has left
  // half done; not one in memory, of which there is but the host's. ms: time without work, 0 never by itself.
  // otraSesion: somebody who administers the hotel has ended this session.
  Bloqueo(autonomo::Anfitrion& anfitrion, autonomo::OpcionesConexion base, int ms, std::function<void()> otraSesion);
  void Bloquea();

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  // What the password of a user leads to: "" to go on or to another session, else why not.
  std::string Revisa(const std::string& usuario, const std::string& contrasena);

  // For passwords alone.
  std::shared_ptr<autonomo::Conexion> ConexionPropia() const;

  autonomo::Anfitrion& anfitrion_;
  autonomo::OpcionesConexion base_;
  std::function<void()> otraSesion_;
  QTimer reloj_;
  QPointer<DialogoAcceso> dialogo_;
  bool termina_ = false;
};

}  // namespace vista
