#include "guion/componente.h"

#include <dlfcn.h>

#include "platform/com/error.h"

namespace guion {

namespace {

constexpr const char* kBiblioteca = "libkv207.so";

[[noreturn]] void FallaClase(const std::string& motivo) { throw com::Error(com::error::kClase, motivo); }

void RegistraComponente() {
  void* asa = dlopen(kBiblioteca, RTLD_NOW | RTLD_GLOBAL);
  if (asa == nullptr) FallaClase(std::string("No se pudo cargar el componente: ") + dlerror());
  using Registro = com::HResult (*)();
  const auto registra = reinterpret_cast<Registro>(dlsym(asa, "DllRegisterServer"));
  if (registra == nullptr || registra() != com::kOk) {
    FallaClase(std::string(kBiblioteca) + " no se pudo registrar como servidor de componentes");
  }
}

com::Ptr<com::Despacho> CreaPantalla() {
  void* salida = nullptr;
  const auto fabrica = com::ObjetoDeClase(kv207::kClasePantalla);
  if (fabrica->CreateInstance(nullptr, com::Despacho::kId, &salida) != com::kOk) {
    FallaClase("El componente no pudo crear Pantalla");
  }
  return com::Ptr<com::Despacho>::Toma(static_cast<com::Despacho*>(salida));
}

}  // namespace

Componente::Componente() { RegistraComponente(); }

Componente::~Componente() {
  try {
    Cierra();
  } catch (const std::exception&) {  // the process ends; there is nobody left to tell
  }
}

void Componente::Abre(const com::Ptr<com::Despacho>& padre) {
  if (!objeto_) objeto_ = CreaPantalla();
  auto pantalla = objeto_->Lee("GetPantalla").Objeto().Como<kv207::PantallaReservacion>();
  if (!pantalla) FallaClase("El componente no entregó su pantalla");
  pantalla_ = std::move(pantalla);
  pantalla_->Pone("Padre", com::Variant(com::Ptr<com::Desconocido>(padre)));
  pantalla_->Llama("Show", {});
}

void Componente::Cierra() {
  if (Creada()) pantalla_->Llama("Unload", {});
}

kv207::PantallaReservacion& Componente::pantalla() const {
  if (!Creada()) throw com::Error(com::error::kSinObjeto, "La pantalla no está abierta; use la orden «abre»");
  return *pantalla_;
}

controles::Formulario* Componente::Activo() const {
  if (!Creada()) return nullptr;
  if (tablero().visible()) return &tablero();
  return formulario().visible() ? &formulario() : nullptr;
}

bool Componente::MismaPantalla() const {
  const auto otra = objeto_->Lee("GetPantalla").Objeto().Como<kv207::PantallaReservacion>();
  return otra == pantalla_;
}

com::Variant Componente::Modulo() const { return objeto_->Lee("Modulo"); }

std::string Componente::Transaccion() const { return com::CStr(pantalla_->Lee("Transaccion")); }

}  // namespace guion
