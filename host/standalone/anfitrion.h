// The stand-alone host: a database with the services that the screens ask for, so that they run without a back office.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/contract/servicios.h"
#include "host/standalone/conexion.h"
#include "host/standalone/novedades.h"

namespace autonomo {

struct Opciones {
  OpcionesConexion base;
  bool demo = false;           // fill an empty database with the demo hotel
  bool sinSobreventa = false;  // an empty database becomes a hotel that sells no room twice
  std::string usuario = "RECEPCION";
  // Asks who works here, where users have passwords (usuarios.h): gives the login once the password was right, or
  // raises. Without it such a database is not opened.
  std::function<std::string(Conexion&)> identifica;
  std::optional<com::Fecha> ahora;
};

// What the host recorded, oldest first.
struct EntradaBitacora {
  std::string modulo, clave, texto;
};
struct Correo {
  std::string clave, plantilla, consulta, para, asunto, estado, cuerpo;
};
struct Impreso {
  std::string formato, clave;
  std::string texto;  // plain text rendering
};
struct RegistroVisto {
  std::string tabla, columna, clave;
};
struct PantallaAbierta {
  std::string pantalla;
  std::vector<com::Variant> argumentos;
};

class Anfitrion {
 public:
  // Opens (and with demo fills) the database; the errors of AbreConexion and of identifica, kArgumento for a user whose
  // login cannot stand in a statement or a key column, or who does not say who he is.
  explicit Anfitrion(const Opciones& opciones);
  ~Anfitrion();

  Anfitrion(const Anfitrion&) = delete;
  Anfitrion& operator=(const Anfitrion&) = delete;

  // Registers the service classes of the contract, all served by this host, until it ends or withdraws them. The
  // objects (fabricas.h) hold on to the host, which must outlive them.
  void RegistraClases();
  void QuitaClases() { inscripciones_.clear(); }
  // The object that owns the screen: Transaccion (text) and Ejecutar(code), which opens a host screen.
  com::Ptr<com::Despacho> Padre();

  std::shared_ptr<Conexion> conexion() { return conexion_; }
  // Replaces the connection that the services hand out (a wrapper that records statements or injects faults).
  void conexion(ado::ConnectionPtr envoltura) { entregada_ = std::move(envoltura); }
  ado::ConnectionPtr Entregada() const { return entregada_ ? entregada_ : conexion_; }
  // What the clerk is to know about the database, each notice once: of the connection (ConexionDeMotor::TomaAvisos),
  // and what others leave here that are gone when she can be told. Avisa from any thread.
  std::vector<std::string> TomaAvisos();
  void Avisa(const std::string& aviso);
  Reloj& reloj() { return reloj_; }
  // What each new day asks for, and the opening: codes of cards that no stay needs any more are forgotten. Not in an
  // open transaction; nothing more on the same day.
  void CambiaElDia();
  const std::string& usuario() const { return usuario_; }
  void usuario(const std::string& usuario) { usuario_ = usuario; }
  const std::string& base() const { return base_; }  // path or address of the database

  // --- set-up ----------------------------------------------------------------------------------------------------
  // Each write happens whole or not at all, in the open transaction when there is one. Error kArgumento for a value
  // that makes no sense (rate not above 0, negative price or tax, unknown client).
  void Parametro(const std::string& clave, const std::string& valor);
  void Permiso(const std::string& opcion, bool concedido);  // screen "KV207", current user
  void Cambio(const std::string& moneda, double tasa);      // from any date on; replaces all rates of the currency
  void Impuesto(const std::string& sucursal, const std::string& producto, double factor);
  // One night of a room type, tax included, in local currency; up to the persons included, then each further one.
  // Replaces the type's rate for any date and weekday.
  void Tarifa(const std::string& tipo, double precio, double adultoExtra, double menorExtra);
  // formato: print format attached to the mail as a PDF; "" none.
  void Plantilla(const std::string& codigo, const std::string& asunto, const std::string& cuerpo,
                 const std::string& formato = "");
  void Direccion(const std::string& cliente, const std::string& correo);

  // --- records ---------------------------------------------------------------------------------------------------
  std::vector<EntradaBitacora> Bitacora();
  std::vector<Correo> Correos();
  std::vector<Impreso> Impresiones();
  std::vector<RegistroVisto> Vistos() const { return vistos_; }
  std::vector<PantallaAbierta> Pantallas() const { return pantallas_; }
  // What was done last to a reservation.
  Novedades& novedades() { return *novedades_; }
  void AnotaVisto(RegistroVisto v) { vistos_.push_back(std::move(v)); }
  void AnotaPantalla(PantallaAbierta p) { pantallas_.push_back(std::move(p)); }

  // Makes the next mail fail with that ErrorCorreo text.
  void FallaCorreo(std::string texto);
  // Takes that order, once.
  std::optional<std::string> TomaFallaCorreo() { return std::exchange(fallaCorreo_, std::nullopt); }

 private:
  // By the server's clock, where there is one; tells of a desk that is a day or more off.
  void PoneEnHora();
  void EmpiezaElDia();

  Reloj reloj_;
  std::shared_ptr<Conexion> conexion_;
  std::unique_ptr<Novedades> novedades_;
  ado::ConnectionPtr entregada_;
  std::mutex candado_;
  std::vector<std::string> avisos_;  // left by others
  std::set<std::string> dichos_;
  std::string usuario_;
  std::string base_;
  std::optional<com::Fecha> dia_;  // that was begun
  std::optional<std::string> fallaCorreo_;
  std::vector<RegistroVisto> vistos_;
  std::vector<PantallaAbierta> pantallas_;
  std::vector<com::Inscripcion> inscripciones_;
};

}  // namespace autonomo
