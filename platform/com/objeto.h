// A COM-shaped object layer: interface ids, reference counts, late-bound members, class objects and the process's
// class registry. Only what the component and its hosts use of it.
//
// One thread, the apartment: the first that uses the registry. It alone registers, creates, references and releases
// objects; counts and registry take no locks. A build with assertions stops where another thread enters.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace com {

class Variant;

struct Guid {
  std::uint32_t d1 = 0;
  std::uint16_t d2 = 0, d3 = 0;
  std::array<std::uint8_t, 8> d4{};
  auto operator<=>(const Guid&) const = default;
};
// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper-case.
std::string ATexto(const Guid& id);

// Result codes of the entry points; negative means failure.
using HResult = std::int32_t;
inline constexpr HResult kOk = 0;
inline constexpr HResult kFalso = 1;
inline constexpr HResult kSinInterfaz = static_cast<HResult>(0x80004002);
inline constexpr HResult kPuntero = static_cast<HResult>(0x80004003);
inline constexpr HResult kFallo = static_cast<HResult>(0x80004005);
inline constexpr HResult kSinAgregacion = static_cast<HResult>(0x80040110);
inline constexpr HResult kClaseNoDisponible = static_cast<HResult>(0x80040111);

// Stops a build with assertions when the caller is not the apartment's thread; nothing in others.
#ifdef NDEBUG
inline void AfirmaApartamento() {}
#else
void AfirmaApartamento();
#endif

// Root of all objects. QueryInterface gives the pointer with one reference added, or kSinInterfaz and a null pointer.
class Desconocido {
 public:
  static constexpr Guid kId{0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  virtual HResult QueryInterface(const Guid& id, void** salida) = 0;
  virtual std::uint32_t AddRef() = 0;
  virtual std::uint32_t Release() = 0;

 protected:
  virtual ~Desconocido() = default;
};

// Counted reference.
template <class T>
class Ptr {
 public:
  Ptr() = default;
  Ptr(std::nullptr_t) {}
  // Adds a reference.
  explicit Ptr(T* p) : p_(p) {
    if (p_ != nullptr) p_->AddRef();
  }
  Ptr(const Ptr& otro) : Ptr(otro.p_) {}
  Ptr(Ptr&& otro) noexcept : p_(std::exchange(otro.p_, nullptr)) {}
  // From an object to one of its bases; the other way goes through Como.
  template <std::derived_from<T> U>
  Ptr(const Ptr<U>& otro) : Ptr(static_cast<T*>(otro.get())) {}
  ~Ptr() {
    if (p_ != nullptr) p_->Release();
  }
  Ptr& operator=(Ptr otro) noexcept {
    std::swap(p_, otro.p_);
    return *this;
  }
  // Takes over a reference that the caller already holds.
  static Ptr Toma(T* p) {
    Ptr r;
    r.p_ = p;
    return r;
  }
  T* get() const { return p_; }
  T* operator->() const { return p_; }
  T& operator*() const { return *p_; }
  explicit operator bool() const { return p_ != nullptr; }
  bool operator==(const Ptr& otro) const { return p_ == otro.p_; }

  // The same object through another interface; null when it does not offer it.
  template <class U>
  Ptr<U> Como() const {
    void* salida = nullptr;
    if (p_ == nullptr || p_->QueryInterface(U::kId, &salida) != kOk) return {};
    return Ptr<U>::Toma(static_cast<U*>(salida));
  }

 private:
  T* p_ = nullptr;
};

// Implementation of the root members for a class with one interface of its own. Objects live on the heap and delete
// themselves with the last reference.
template <class Interfaz>
class Objeto : public Interfaz {
 public:
  HResult QueryInterface(const Guid& id, void** salida) override {
    if (salida == nullptr) return kPuntero;
    *salida = nullptr;
    if (id != Desconocido::kId && id != Interfaz::kId) return kSinInterfaz;
    *salida = static_cast<Interfaz*>(this);
    AddRef();
    return kOk;
  }
  std::uint32_t AddRef() override {
    AfirmaApartamento();
    return ++cuenta_;
  }
  std::uint32_t Release() override {
    AfirmaApartamento();
    const std::uint32_t queda = --cuenta_;
    if (queda == 0) delete this;
    return queda;
  }

 private:
  std::uint32_t cuenta_ = 0;
};

template <class T, class... Args>
Ptr<T> Crea(Args&&... args) {
  return Ptr<T>(new T(std::forward<Args>(args)...));
}

// Late-bound object: members asked by name (case-blind). An unknown member raises Error kMiembro.
class Despacho : public Desconocido {
 public:
  static constexpr Guid kId{0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  virtual Variant Lee(std::string_view propiedad) = 0;
  virtual void Pone(std::string_view propiedad, const Variant& valor) = 0;
  virtual Variant Llama(std::string_view metodo, std::span<const Variant> argumentos) = 0;
};

// Class object: creates instances of one class.
class FabricaClase : public Desconocido {
 public:
  static constexpr Guid kId{0x00000001, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  virtual HResult CreateInstance(Desconocido* externo, const Guid& interfaz, void** salida) = 0;
  // Keeps the server loaded while locked.
  virtual HResult LockServer(bool bloquea) = 0;
};

// Registration of an in-process server, as DllRegisterServer writes it.
struct RegistroServidor {
  Guid clase;
  std::string progId;
  std::string modelo;  // threading model, "Apartment"
  std::string ruta;    // path of the shared library
};

// The process's class registry.
void RegistraServidor(RegistroServidor registro);
void QuitaServidor(const Guid& clase);
std::vector<RegistroServidor> ServidoresRegistrados();
// A class's entry in the registry of the process; it withdraws itself at its end.
class Inscripcion {
 public:
  Inscripcion() = default;
  Inscripcion(Inscripcion&& otra) noexcept : numero_(std::exchange(otra.numero_, 0)) {}
  Inscripcion& operator=(Inscripcion&& otra) noexcept {
    std::swap(numero_, otra.numero_);
    return *this;
  }
  ~Inscripcion();
  Inscripcion(const Inscripcion&) = delete;
  Inscripcion& operator=(const Inscripcion&) = delete;

 private:
  friend Inscripcion RegistraClase(const Guid& clase, std::function<Ptr<Desconocido>()> fabrica);
  explicit Inscripcion(std::uint64_t numero) : numero_(numero) {}
  std::uint64_t numero_ = 0;  // 0: no entry
};

// Classes that the process itself offers (the host's services). The newest entry of a class serves; the one before it
// serves again when it goes.
using Fabrica = std::function<Ptr<Desconocido>()>;
[[nodiscard]] Inscripcion RegistraClase(const Guid& clase, Fabrica fabrica);
// Class object of a registered in-process server: loads its library and asks its DllGetClassObject. Error kClase when
// the class is not registered, its library cannot be loaded, or it has no such class.
Ptr<FabricaClase> ObjetoDeClase(const Guid& clase);
// New instance of a class of the process or of an in-process server; Error kClase when that is not possible.
Ptr<Desconocido> CreaInstancia(const Guid& clase);
template <class Interfaz>
Ptr<Interfaz> CreaInstancia(const Guid& clase) {
  return CreaInstancia(clase).Como<Interfaz>();
}
// Unloads the libraries whose DllCanUnloadNow agrees.
void LiberaBibliotecas();

}  // namespace com
