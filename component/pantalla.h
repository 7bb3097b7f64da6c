// The component's one public class and its entry points as an in-process server.
#pragma once

#include "platform/com/objeto.h"
#include "platform/com/variant.h"
#include "platform/controls/formulario.h"

namespace kv207 {

inline constexpr com::Guid kClasePantalla{0x5A1B2001, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x01}};
inline constexpr const char* kProgIdPantalla = "KV207.Pantalla";

// The public object. Late-bound members, both read only: GetPantalla (the reservation screen, the same object at every
// call; an object reference that holds nothing after a failure) and Modulo (Empty). Other names raise Error kMiembro,
// on the screen's object too.
class Pantalla : public com::Despacho {
 public:
  static constexpr com::Guid kId{0x5A1B2002, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x02}};
  virtual com::Variant GetPantalla() = 0;
  virtual com::Variant Modulo() = 0;
};

// The reservation screen as the host gets it. Late-bound members: Padre (object that is reached by name, or nothing;
// Error kTipos for anything else), Transaccion (text, read only; Error kSinObjeto without Padre), Show and Unload
// (methods without arguments, Error kArgumento with some; the load's own errors). formulario and tablero are how a view
// reaches the models of the two screens, reservation and board; they live as long as the object.
class PantallaReservacion : public com::Despacho {
 public:
  static constexpr com::Guid kId{0x5A1B2003, 0x7A11, 0x4C0E, {0x9B, 0x20, 0x4B, 0x56, 0x32, 0x30, 0x37, 0x03}};
  virtual void Padre(com::Ptr<com::Despacho> padre) = 0;
  virtual com::Ptr<com::Despacho> Padre() = 0;
  virtual std::string Transaccion() = 0;
  virtual controles::Formulario& formulario() = 0;
  virtual controles::Formulario& tablero() = 0;
};

}  // namespace kv207

// Exports of the shared library; none raises.
extern "C" {
// The class object of Pantalla. kPuntero for a missing argument, kClaseNoDisponible for another class, kFallo when the
// host's services are not there.
com::HResult DllGetClassObject(const com::Guid* clase, const com::Guid* interfaz, void** salida);
// kOk when nobody holds an object or a lock, else kFalso: once the screen was given, which is kept for good.
com::HResult DllCanUnloadNow();
// Enters the class in the process's registry with this library's path, and takes it out.
com::HResult DllRegisterServer();
com::HResult DllUnregisterServer();
}
