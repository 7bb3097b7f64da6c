#include "platform/com/objeto.h"

#include <dlfcn.h>

#include <algorithm>
#include <cassert>
#include <thread>

#include "platform/com/cifras.h"
#include "platform/com/error.h"

namespace com {
namespace {

struct Biblioteca {
  std::string ruta;
  void* asa = nullptr;
};

struct Clase {
  std::uint64_t numero = 0;
  Guid id;
  Fabrica fabrica;
};

struct Registro {
  std::vector<RegistroServidor> servidores;
  std::vector<Clase> clases;
  std::uint64_t ultima = 0;
  std::vector<Biblioteca> bibliotecas;
};

// Lives as long as the process, whatever unloads at its end.
Registro& ElRegistro() {
  static Registro& registro = *new Registro;
  return registro;
}

[[noreturn]] void FallaClase(const Guid& clase, const std::string& motivo) {
  throw Error(error::kClase, "No se puede crear el objeto " + ATexto(clase) + ": " + motivo);
}

template <class Funcion>
Funcion Entrada(const Biblioteca& biblioteca, const char* nombre) {
  return reinterpret_cast<Funcion>(dlsym(biblioteca.asa, nombre));
}

Biblioteca Abre(const RegistroServidor& servidor) {
  auto& abiertas = ElRegistro().bibliotecas;
  const auto ya =
      std::find_if(abiertas.begin(), abiertas.end(), [&](const Biblioteca& b) { return b.ruta == servidor.ruta; });
  if (ya != abiertas.end()) return *ya;
  void* asa = dlopen(servidor.ruta.c_str(), RTLD_NOW | RTLD_GLOBAL);
  if (asa == nullptr) {
    const char* detalle = dlerror();
    FallaClase(servidor.clase, "no se pudo cargar la biblioteca " + servidor.ruta +
                                   (detalle == nullptr ? std::string() : std::string(" (") + detalle + ")"));
  }
  abiertas.push_back({servidor.ruta, asa});
  return abiertas.back();
}

}  // namespace

#ifndef NDEBUG
void AfirmaApartamento() {
  static const std::thread::id apartamento = std::this_thread::get_id();
  assert(std::this_thread::get_id() == apartamento);
}
#endif

std::string ATexto(const Guid& id) {
  std::string texto = "{";
  AgregaCifras(texto, id.d1, 8, 16);
  AgregaCifras(texto += '-', id.d2, 4, 16);
  AgregaCifras(texto += '-', id.d3, 4, 16);
  texto += '-';
  for (std::size_t i = 0; i < id.d4.size(); ++i) {
    if (i == 2) texto += '-';
    AgregaCifras(texto, id.d4[i], 2, 16);
  }
  return texto + '}';
}

void RegistraServidor(RegistroServidor registro) {
  AfirmaApartamento();
  QuitaServidor(registro.clase);
  ElRegistro().servidores.push_back(std::move(registro));
}

void QuitaServidor(const Guid& clase) {
  AfirmaApartamento();
  std::erase_if(ElRegistro().servidores, [&](const RegistroServidor& s) { return s.clase == clase; });
}

std::vector<RegistroServidor> ServidoresRegistrados() {
  AfirmaApartamento();
  return ElRegistro().servidores;
}

Inscripcion RegistraClase(const Guid& clase, Fabrica fabrica) {
  AfirmaApartamento();
  Registro& r = ElRegistro();
  r.clases.push_back({++r.ultima, clase, std::move(fabrica)});
  return Inscripcion(r.ultima);
}

Inscripcion::~Inscripcion() {
  if (numero_ == 0) return;
  AfirmaApartamento();
  std::erase_if(ElRegistro().clases, [this](const Clase& c) { return c.numero == numero_; });
}

Ptr<FabricaClase> ObjetoDeClase(const Guid& clase) {
  AfirmaApartamento();
  const auto& servidores = ElRegistro().servidores;
  const auto servidor =
      std::find_if(servidores.begin(), servidores.end(), [&](const RegistroServidor& s) { return s.clase == clase; });
  if (servidor == servidores.end()) FallaClase(clase, "la clase no está registrada");
  const Biblioteca biblioteca = Abre(*servidor);
  const auto entrada = Entrada<HResult (*)(const Guid*, const Guid*, void**)>(biblioteca, "DllGetClassObject");
  if (entrada == nullptr) FallaClase(clase, biblioteca.ruta + " no es un servidor de componentes");
  void* salida = nullptr;
  const HResult resultado = entrada(&clase, &FabricaClase::kId, &salida);
  if (resultado != kOk || salida == nullptr) {
    std::string motivo = biblioteca.ruta + " no ofrece la clase (0x";
    AgregaCifras(motivo, static_cast<std::uint32_t>(resultado), 8, 16);
    FallaClase(clase, motivo + ")");
  }
  return Ptr<FabricaClase>::Toma(static_cast<FabricaClase*>(salida));
}

Ptr<Desconocido> CreaInstancia(const Guid& clase) {
  AfirmaApartamento();
  const auto& clases = ElRegistro().clases;
  const auto propia = std::find_if(clases.rbegin(), clases.rend(), [&](const Clase& c) { return c.id == clase; });
  if (propia != clases.rend()) {
    const Fabrica fabrica = propia->fabrica;
    auto objeto = fabrica ? fabrica() : Ptr<Desconocido>();
    if (!objeto) FallaClase(clase, "la clase no dio ningún objeto");
    return objeto;
  }
  void* salida = nullptr;
  const HResult resultado = ObjetoDeClase(clase)->CreateInstance(nullptr, Desconocido::kId, &salida);
  if (resultado != kOk || salida == nullptr) FallaClase(clase, "la biblioteca no dio ningún objeto");
  return Ptr<Desconocido>::Toma(static_cast<Desconocido*>(salida));
}

void LiberaBibliotecas() {
  AfirmaApartamento();
  std::erase_if(ElRegistro().bibliotecas, [](const Biblioteca& b) {
    const auto puede = Entrada<HResult (*)()>(b, "DllCanUnloadNow");
    if (puede == nullptr || puede() != kOk) return false;
    dlclose(b.asa);
    return true;
  });
}

}  // namespace com
