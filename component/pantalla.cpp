#include "component/pantalla.h"

#include <dlfcn.h>

#include <memory>
#include <string>

#include "availability/frmDisponibilidad.h"
#include "platform/com/error.h"
#include "publico/publico.h"
#include "reservation/frmKV207.h"

namespace kv207 {
namespace {

// Reasons to keep the library loaded: live objects, and locks of the class object.
int objetos = 0, bloqueos = 0;

struct CuentaObjeto {
  CuentaObjeto() { ++objetos; }
  ~CuentaObjeto() { --objetos; }
  CuentaObjeto(const CuentaObjeto&) = delete;
  CuentaObjeto& operator=(const CuentaObjeto&) = delete;
};

[[noreturn]] void FallaMiembro(std::string_view nombre) {
  throw com::Error(com::error::kMiembro, "El objeto no admite esta propiedad o método: «" + std::string(nombre) + "»");
}

// An object whose interface is reached by name too.
template <class Interfaz>
class ConDespacho : public com::Objeto<Interfaz> {
 public:
  com::HResult QueryInterface(const com::Guid& id, void** salida) override {
    if (salida == nullptr || id != com::Despacho::kId) return com::Objeto<Interfaz>::QueryInterface(id, salida);
    *salida = static_cast<com::Despacho*>(this);
    this->AddRef();
    return com::kOk;
  }
};

// A screen object and the two forms behind it.
class PantallaReservacionImpl final : public ConDespacho<PantallaReservacion> {
 public:
  com::Variant Lee(std::string_view propiedad) override {
    if (com::IgualSinCaja(propiedad, "Padre")) return com::Variant(com::Ptr<com::Desconocido>(Padre()));
    if (com::IgualSinCaja(propiedad, "Transaccion")) return Transaccion();
    FallaMiembro(propiedad);
  }

  void Pone(std::string_view propiedad, const com::Variant& valor) override {
    if (!com::IgualSinCaja(propiedad, "Padre")) FallaMiembro(propiedad);
    const auto objeto = valor.Objeto();
    auto padre = objeto.Como<com::Despacho>();
    if (!valor.EsObjeto() || (objeto && !padre)) {
      throw com::Error(com::error::kTipos, "No coinciden los tipos: Padre es una referencia a un objeto");
    }
    Padre(std::move(padre));
  }

  com::Variant Llama(std::string_view metodo, std::span<const com::Variant> argumentos) override {
    const bool muestra = com::IgualSinCaja(metodo, "Show");
    if (!muestra && !com::IgualSinCaja(metodo, "Unload")) FallaMiembro(metodo);
    if (!argumentos.empty()) {
      throw com::Error(com::error::kArgumento, "Argumento o llamada a procedimiento no válidos");
    }
    if (muestra) {
      reservacion_.Muestra();
    } else {
      reservacion_.Descarga();
    }
    return {};
  }

  void Padre(com::Ptr<com::Despacho> padre) override { reservacion_.Padre = std::move(padre); }
  com::Ptr<com::Despacho> Padre() override { return reservacion_.Padre; }
  std::string Transaccion() override { return reservacion_.Transaccion(); }
  controles::Formulario& formulario() override { return reservacion_; }
  controles::Formulario& tablero() override { return tablero_; }

 private:
  CuentaObjeto cuenta_;
  frmDisponibilidad tablero_;
  frmKV207 reservacion_{tablero_};
};

// The single screen object: made by the first request, kept for the life of the process.
com::Ptr<PantallaReservacion>& LaPantalla() {
  static com::Ptr<PantallaReservacion>& pantalla = *new com::Ptr<PantallaReservacion>;
  return pantalla;
}

class PantallaImpl final : public ConDespacho<Pantalla> {
 public:
  com::Variant GetPantalla() override {
    com::Ptr<com::Desconocido> pantalla;
    try {
      publico::Arranca();
      if (!LaPantalla()) LaPantalla() = com::Crea<PantallaReservacionImpl>();
      pantalla = LaPantalla();
    } catch (...) {
      // The host gets an object reference that holds nothing.
      pantalla = nullptr;
    }
    return com::Variant(pantalla);
  }

  com::Variant Modulo() override { return {}; }

  com::Variant Lee(std::string_view propiedad) override {
    if (com::IgualSinCaja(propiedad, "GetPantalla")) return GetPantalla();
    if (com::IgualSinCaja(propiedad, "Modulo")) return Modulo();
    FallaMiembro(propiedad);
  }

  // Both members are read only.
  void Pone(std::string_view propiedad, const com::Variant&) override { FallaMiembro(propiedad); }
  com::Variant Llama(std::string_view metodo, std::span<const com::Variant>) override { FallaMiembro(metodo); }

 private:
  CuentaObjeto cuenta_;
};

class FabricaPantalla final : public com::Objeto<com::FabricaClase> {
 public:
  com::HResult CreateInstance(com::Desconocido* externo, const com::Guid& interfaz, void** salida) override {
    if (salida == nullptr) return com::kPuntero;
    *salida = nullptr;
    if (externo != nullptr) return com::kSinAgregacion;
    try {
      return com::Crea<PantallaImpl>()->QueryInterface(interfaz, salida);
    } catch (...) {
      return com::kFallo;
    }
  }

  com::HResult LockServer(bool bloquea) override {
    if (!bloquea && bloqueos == 0) return com::kFallo;
    bloqueos += bloquea ? 1 : -1;
    return com::kOk;
  }

 private:
  CuentaObjeto cuenta_;
};

// Path of the library that holds this code.
std::string RutaPropia() {
  Dl_info datos{};
  if (dladdr(reinterpret_cast<const void*>(&DllGetClassObject), &datos) == 0 || datos.dli_fname == nullptr) return {};
  return datos.dli_fname;
}

}  // namespace
}  // namespace kv207

com::HResult DllGetClassObject(const com::Guid* clase, const com::Guid* interfaz, void** salida) {
  if (salida == nullptr) return com::kPuntero;
  *salida = nullptr;
  if (clase == nullptr || interfaz == nullptr) return com::kPuntero;
  if (*clase != kv207::kClasePantalla) return com::kClaseNoDisponible;
  try {
    publico::Arranca();
    return com::Crea<kv207::FabricaPantalla>()->QueryInterface(*interfaz, salida);
  } catch (...) {
    return com::kFallo;
  }
}

com::HResult DllCanUnloadNow() { return kv207::objetos == 0 && kv207::bloqueos == 0 ? com::kOk : com::kFalso; }

com::HResult DllRegisterServer() {
  try {
    const std::string ruta = kv207::RutaPropia();
    if (ruta.empty()) return com::kFallo;
    com::RegistraServidor({kv207::kClasePantalla, kv207::kProgIdPantalla, "Apartment", ruta});
    return com::kOk;
  } catch (...) {
    return com::kFallo;
  }
}

com::HResult DllUnregisterServer() {
  com::QuitaServidor(kv207::kClasePantalla);
  return com::kOk;
}
