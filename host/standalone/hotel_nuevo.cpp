#include "host/standalone/hotel_nuevo.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <set>

#include "host/contract/estados.h"
#include "host/standalone/altas.h"
#include "host/standalone/impuestos.h"
#include "host/standalone/parametros.h"
#include "host/standalone/permisos.h"
#include "host/standalone/transaccion.h"
#include "host/standalone/usuarios.h"
#include "platform/com/error.h"
#include "platform/com/variant.h"
#include "platform/regional/regional.h"
#include "schema/esquema.h"
#include "schema/textos.h"

namespace autonomo {

namespace parametro = anfitrion::parametro;

namespace {

constexpr int kPersonasMaximas = 99;

[[noreturn]] void Error(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// --- rooms

// "A01" is the prefix "A" and the digits "01".
struct Numerada {
  std::string_view prefijo, cifras;
};
Numerada Divide(std::string_view clave) {
  std::size_t i = clave.size();
  while (i > 0 && com::EsDigito(clave[i - 1])) --i;
  return {clave.substr(0, i), clave.substr(i)};
}

std::string Reemplaza(const std::string& texto, std::string_view que, std::string_view por) {
  std::string otro;
  std::size_t desde = 0;
  for (std::size_t i = texto.find(que); i != std::string::npos; i = texto.find(que, desde)) {
    otro.append(texto, desde, i - desde).append(por);
    desde = i + que.size();
  }
  return otro.append(texto, desde);
}

// The words between commas, semicolons and blanks; a range is one word however it is written.
std::vector<std::string> Palabras(std::string_view texto) {
  std::string todo = com::Mayusculas(std::string(texto));
  for (const char* espacio : {"\n", "\r", "\t"}) todo = Reemplaza(todo, espacio, " ");
  for (const char* raya : {"–", "—", " A ", " AL "}) todo = Reemplaza(todo, raya, "-");
  while (todo.find(" -") != std::string::npos) todo = Reemplaza(todo, " -", "-");
  while (todo.find("- ") != std::string::npos) todo = Reemplaza(todo, "- ", "-");
  std::vector<std::string> palabras;
  for (std::size_t i = 0; i < todo.size();) {
    const std::size_t fin = std::min(todo.find_first_of(" ,;", i), todo.size());
    if (fin > i) palabras.push_back(todo.substr(i, fin - i));
    i = fin + 1;
  }
  return palabras;
}

void AgregaRango(const std::string& palabra, std::size_t raya, std::vector<std::string>& claves) {
  const std::string de = palabra.substr(0, raya), a = palabra.substr(raya + 1);
  const Numerada primera = Divide(de), ultima = Divide(a);
  constexpr std::size_t kCifras = 8;
  // "A1-9" goes on with the prefix of the first.
  const bool bien = !primera.cifras.empty() && !ultima.cifras.empty() && primera.cifras.size() <= kCifras &&
                    ultima.cifras.size() <= kCifras && (ultima.prefijo.empty() || ultima.prefijo == primera.prefijo);
  if (!bien) Error("«" + palabra + "» no es un rango de habitaciones; se escribe 101-125");
  int desde = 0, hasta = 0;
  std::from_chars(primera.cifras.data(), primera.cifras.data() + primera.cifras.size(), desde);
  std::from_chars(ultima.cifras.data(), ultima.cifras.data() + ultima.cifras.size(), hasta);
  if (hasta < desde) Error("El rango " + palabra + " va al revés: escriba primero la menor");
  if (hasta - desde >= kHabitacionesMaximas) Error("El rango " + palabra + " tiene demasiadas habitaciones");
  for (int n = desde; n <= hasta; ++n) {
    std::string cifras = std::to_string(n);
    if (cifras.size() < primera.cifras.size()) cifras.insert(0, primera.cifras.size() - cifras.size(), '0');
    claves.push_back(std::string(primera.prefijo) + cifras);
  }
}

// --- what was typed

std::string Texto(const std::string& texto) { return com::Recorta(texto); }

std::string Obligado(const char* titulo, const std::string& texto) {
  std::string recortado = Texto(texto);
  if (recortado.empty()) Error("Falta «" + std::string(titulo) + "»");
  if (const std::string motivo = MotivoNombre(titulo, recortado); !motivo.empty()) Error(motivo);
  return recortado;
}

std::string ClaveMoneda(const char* titulo, const std::string& texto) {
  std::string clave = com::Mayusculas(Obligado(titulo, texto));
  if (clave.size() > esquema::kLargoClave || clave.find_first_of("'% ") != std::string::npos) {
    Error("«" + std::string(titulo) + "» es una clave corta, como MXN o USD");
  }
  return clave;
}

double Importe(const char* titulo, const std::string& texto) {
  double importe = 0;
  try {
    importe = com::CDbl(Texto(texto));
  } catch (const com::Error&) {
    Error("«" + std::string(titulo) + "» no admite «" + texto + "»: escriba una cantidad");
  }
  if (!std::isfinite(importe) || importe < 0) Error("«" + std::string(titulo) + "» no puede ser negativo");
  if (importe > kImporteMaximo) Error("«" + std::string(titulo) + "» es demasiado grande");
  return importe;
}

// vacio holds where nothing was typed.
double ImporteO(const char* titulo, const std::string& texto, double vacio) {
  return Texto(texto).empty() ? vacio : Importe(titulo, texto);
}

int Personas(const char* titulo, const std::string& texto) {
  const std::string cifras = Obligado(titulo, texto);
  int personas = 0;
  const auto [fin, error] = std::from_chars(cifras.data(), cifras.data() + cifras.size(), personas);
  const bool entero = error == std::errc{} && fin == cifras.data() + cifras.size();
  if (!entero || personas < 1 || personas > kPersonasMaximas) {
    Error("«" + std::string(titulo) + "» lleva un número entero de 1 a " + std::to_string(kPersonasMaximas));
  }
  return personas;
}

bool SinTexto(const TipoNuevo& t) {
  // The number of persons alone is a proposal.
  const auto textos = {&t.nombre, &t.precio, &t.adultoExtra, &t.menorExtra, &t.habitaciones};
  return std::ranges::all_of(textos, [](const std::string* texto) { return Texto(*texto).empty(); });
}
bool SinTexto(const UsuarioNuevo& u) {
  return Texto(u.clave).empty() && Texto(u.nombre).empty() && u.contrasena.empty();
}

struct TipoLeido {
  std::string nombre;
  int incluidas = 0, maximo = 0;
  std::optional<double> precio;  // nothing: to be said later
  double adultoExtra = 0, menorExtra = 0;
};

// Where an error belongs: set before each step, so that whoever traps it knows the field.
struct Sitio {
  const char* campo = "";
  int fila = -1;
};

TipoLeido LeeTipo(const TipoNuevo& t, Sitio& sitio) {
  TipoLeido leido;
  sitio.campo = "nombre";
  leido.nombre = Obligado("Tipo", t.nombre);
  sitio.campo = "incluidas";
  leido.incluidas = Personas("Personas incluidas", t.incluidas);
  sitio.campo = "maximo";
  leido.maximo = Personas("Máximo de personas", t.maximo);
  if (leido.incluidas > leido.maximo) Error("«Personas incluidas» es mayor que «Máximo de personas»");
  sitio.campo = "precio";
  if (!Texto(t.precio).empty()) leido.precio = Importe("Precio por noche", t.precio);
  sitio.campo = "adultoExtra";
  leido.adultoExtra = ImporteO("Adulto extra", t.adultoExtra, 0);
  sitio.campo = "menorExtra";
  leido.menorExtra = ImporteO("Menor extra", t.menorExtra, 0);
  if (!leido.precio && (leido.adultoExtra > 0 || leido.menorExtra > 0)) {
    sitio.campo = "precio";
    Error("Falta «Precio por noche»: lo que paga una persona extra se suma a él");
  }
  return leido;
}

void RevisaHotel(const HotelNuevo& hotel, Sitio& sitio) {
  sitio.campo = "nombre";
  Obligado("Nombre del hotel", hotel.nombre);
  sitio.campo = "sucursal";
  Obligado("Sucursal", hotel.sucursal);
  sitio.campo = "moneda";
  const std::string moneda = ClaveMoneda("Moneda", hotel.moneda);
  sitio.campo = "nombreMoneda";
  Obligado("Nombre de la moneda", hotel.nombreMoneda);
  sitio.campo = "impuesto";
  LeePorCiento("Impuesto", hotel.impuesto);
  if (Texto(hotel.divisa).empty() && Texto(hotel.nombreDivisa).empty() && Texto(hotel.tipoCambio).empty()) return;
  sitio.campo = "divisa";
  if (com::IgualSinCaja(ClaveMoneda("Otra moneda", hotel.divisa), moneda)) {
    Error("La otra moneda es la misma que la del hotel");
  }
  sitio.campo = "nombreDivisa";
  Obligado("Nombre de la otra moneda", hotel.nombreDivisa);
  sitio.campo = "tipoCambio";
  if (Importe("Tipo de cambio", Obligado("Tipo de cambio", hotel.tipoCambio)) <= 0) {
    Error("«Tipo de cambio» debe ser mayor que cero");
  }
}

void RevisaTipos(const HotelNuevo& hotel, Sitio& sitio) {
  std::set<std::string> nombres;
  for (std::size_t i = 0; i < hotel.tipos.size(); ++i) {
    if (SinTexto(hotel.tipos[i])) continue;
    sitio.fila = static_cast<int>(i);
    const TipoLeido tipo = LeeTipo(hotel.tipos[i], sitio);
    sitio.campo = "nombre";
    if (!nombres.insert(com::Mayusculas(tipo.nombre)).second) Error("El tipo «" + tipo.nombre + "» se repite");
  }
  if (!nombres.empty()) return;
  sitio = {"nombre", 0};
  Error("Escriba al menos un tipo de habitación, como Sencilla o Doble");
}

// Keys as on the doors; where numbers have more digits than others, with the zeros that keep them in order.
std::string MascaraDeHabitacion(const HotelNuevo& hotel) {
  std::set<std::size_t> largos;
  for (const TipoNuevo& tipo : hotel.tipos) {
    for (const std::string& clave : HabitacionesDe(tipo.habitaciones)) {
      if (com::SoloDigitos(clave)) largos.insert(clave.size());
    }
  }
  return largos.size() > 1 ? std::string(*largos.rbegin(), '0') : "";
}

void RevisaHabitaciones(const HotelNuevo& hotel, Sitio& sitio) {
  struct Escrita {
    std::string clave, tipo;
  };
  const auto todas = [&](const auto& con) {
    for (std::size_t i = 0; i < hotel.tipos.size(); ++i) {
      sitio = {"habitaciones", static_cast<int>(i)};
      for (const std::string& clave : HabitacionesDe(hotel.tipos[i].habitaciones)) {
        con(Escrita{clave, Texto(hotel.tipos[i].nombre)});
      }
    }
  };
  std::size_t cuantas = 0;
  todas([&](const Escrita&) { ++cuantas; });
  if (cuantas > static_cast<std::size_t>(kHabitacionesMaximas)) {
    Error("Son más de " + std::to_string(kHabitacionesMaximas) + " habitaciones");
  }
  const std::string mascara = MascaraDeHabitacion(hotel);
  std::map<std::string, Escrita> guardadas;
  todas([&](const Escrita& e) {
    const auto [antes, nueva] = guardadas.emplace(regional::ConMascara(e.clave, mascara), e);
    if (nueva) return;
    const auto& [guardada, otra] = *antes;
    if (otra.clave == e.clave) Error("La habitación " + e.clave + " ya está en «" + otra.tipo + "»");
    Error("Las habitaciones " + otra.clave + " y " + e.clave + " serían la misma, la " + guardada +
          ": los números se igualan con ceros");
  });
}

void RevisaUsuarios(const HotelNuevo& hotel, Sitio& sitio) {
  std::set<std::string> claves;
  for (std::size_t i = 0; i < hotel.usuarios.size(); ++i) {
    const UsuarioNuevo& u = hotel.usuarios[i];
    if (SinTexto(u)) continue;
    sitio = {"clave", static_cast<int>(i)};
    if (claves.empty() && i > 0) Error("Escriba primero quién administra el hotel");
    if (const std::string motivo = MotivoUsuario(u.clave); !motivo.empty()) {
      Error("El usuario no se puede guardar: " + motivo);
    }
    if (!claves.insert(com::Mayusculas(Texto(u.clave))).second) Error("El usuario " + Texto(u.clave) + " se repite");
    sitio.campo = "contrasena";
    if (u.contrasena.empty()) Error("Falta la contraseña");
    if (const std::string motivo = MotivoContrasena(u.contrasena); !motivo.empty()) Error(motivo);
  }
}

// --- writing

constexpr Alta kAltaDeSucursal{
    "INSERT INTO Sucursal (Sc_Cve_Sucursal, Sc_Descripcion, Es_Cve_Estado) VALUES (?, ?, 'AC')",
    "SELECT Sc_Cve_Sucursal FROM Sucursal WHERE Sc_Cve_Sucursal = ?"};
constexpr Alta kAltaDeFormato{
    "INSERT INTO Formato (Fm_Cve_Formato, Fm_Descripcion, Fm_Contenido) VALUES (?, 'Carta de la reservación', ?)",
    "SELECT Fm_Cve_Formato FROM Formato WHERE Fm_Cve_Formato = ?"};

class Escritura {
 public:
  Escritura(Anfitrion& anfitrion, const HotelNuevo& hotel)
      : anfitrion_(anfitrion), base_(*anfitrion.conexion()), hotel_(hotel) {}

  void Escribe() {
    impuesto_ = LeePorCiento("Impuesto", hotel_.impuesto);
    Parametros();
    Monedas();
    DaDeAltaSiFalta(base_, kAltaDeSucursal, {kSucursal, Texto(hotel_.sucursal)});
    FormasDePago();
    Textos();
    int numero = 0;
    for (const TipoNuevo& tipo : hotel_.tipos) {
      if (!SinTexto(tipo)) Tipo(tipo, ++numero);
    }
    Usuarios();
  }

 private:
  static constexpr const char* kSucursal = "0001";
  static constexpr const char* kGrupo = "0001";

  void Parametros() {
    anfitrion_.Parametro(parametro::kNombreHotel.clave, Texto(hotel_.nombre));
    anfitrion_.Parametro(parametro::kMonedaLocal.clave, com::Mayusculas(Texto(hotel_.moneda)));
    anfitrion_.Parametro(parametro::kSucursal.clave, kSucursal);
    anfitrion_.Parametro(parametro::kSobreventa.clave, "0");
    anfitrion_.Parametro(parametro::kFormatoHabitacion.clave, MascaraDeHabitacion(hotel_));
    anfitrion_.Parametro(parametro::kMayusculas.clave, "0");
  }

  void Moneda(const std::string& clave, const std::string& nombre) {
    DaDeAltaSiFalta(base_, alta::kMoneda, {clave, nombre});
  }
  void Monedas() {
    Moneda(com::Mayusculas(Texto(hotel_.moneda)), Texto(hotel_.nombreMoneda));
    const std::string divisa = com::Mayusculas(Texto(hotel_.divisa));
    if (divisa.empty()) return;
    Moneda(divisa, Texto(hotel_.nombreDivisa));
    anfitrion_.Cambio(divisa, Importe("Tipo de cambio", hotel_.tipoCambio));
  }

  void FormasDePago() {
    constexpr const char* kFormas[][3] = {{"0001", "Efectivo", "01"},
                                          {"0002", "Transferencia electrónica", "03"},
                                          {"0003", "Tarjeta de crédito", anfitrion::tipo_pago::kTarjeta}};
    for (const auto& [clave, nombre, tipo] : kFormas) {
      DaDeAltaSiFalta(base_, alta::kFormaPago, {clave, nombre, tipo});
    }
  }

  void Textos() {
    const std::string formato = parametro::kFormatoImpresion.defecto;
    const auto plantilla = [&](const char* codigo, const char* asunto, const char* cuerpo) {
      if (!Hay(base_, "SELECT Pt_Cve_Plantilla FROM Plantilla WHERE Pt_Cve_Plantilla = ?", {codigo})) {
        anfitrion_.Plantilla(codigo, asunto, cuerpo, formato);
      }
    };
    plantilla(parametro::kPlantillaReservacion.defecto, esquema::kAsuntoReservacion, esquema::kCuerpoReservacion);
    plantilla(parametro::kPlantillaConfirmada.defecto, esquema::kAsuntoConfirmada, esquema::kCuerpoConfirmada);
    DaDeAltaSiFalta(base_, kAltaDeFormato, {formato, esquema::kCarta});
  }

  // A product that nobody has yet.
  std::string Producto(int numero) {
    for (;; ++numero) {
      std::string clave = "HAB" + regional::ConMascara(std::to_string(numero), "000");
      if (!Hay(base_, "SELECT Pr_Cve_Producto FROM Producto WHERE Pr_Cve_Producto = ?", {clave})) return clave;
    }
  }

  // What the guest pays, in whole cents.
  double ConImpuesto(double importe) const {
    return hotel_.conImpuesto ? importe : com::Redondea(importe * (1 + impuesto_), 2);
  }

  void Tipo(const TipoNuevo& nuevo, int numero) {
    Sitio sitio;
    const TipoLeido t = LeeTipo(nuevo, sitio);
    const std::string clave = regional::ConMascara(std::to_string(numero), parametro::kFormatoTipo.defecto);
    const std::string producto = Producto(numero);
    base_.Consulta(
        "INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion, Pr_Unidad_Venta, Pr_Unidad_Control_1, "
        "Pr_Unidad_Control_2, Pr_Unidad_Costo) VALUES (?, ?, 'NOCHE', 'NOCHE', 'NOCHE', 'NOCHE')",
        {producto, "Hospedaje en habitación " + t.nombre});
    anfitrion_.Impuesto("", producto, impuesto_);
    DaDeAlta(base_, alta::kTipo, {clave, t.nombre, t.incluidas, t.maximo, producto});
    // The screens read rooms through their list price: without a row of it they would not be there.
    DaDeAlta(base_, alta::kPrecio, {producto, ConImpuesto(t.precio.value_or(0))});
    if (t.precio) {
      anfitrion_.Tarifa(clave, ConImpuesto(*t.precio), ConImpuesto(t.adultoExtra), ConImpuesto(t.menorExtra));
    }
    for (const std::string& habitacion : HabitacionesDe(nuevo.habitaciones)) Habitacion(habitacion, clave);
  }

  void Habitacion(const std::string& habitacion, const std::string& tipo) {
    DaDeAltaSiFalta(base_, alta::kGrupo, {kGrupo, "General"});
    DaDeAlta(base_, alta::kHabitacion,
             {regional::ConMascara(habitacion, ValorParametro(base_, parametro::kFormatoHabitacion.clave)), habitacion,
              tipo, kGrupo, Area(PisoDe(habitacion))});
  }

  // Key of the area with that name, made when it is the first room there.
  std::string Area(const std::string& nombre) {
    const auto conocida = areas_.find(nombre);
    if (conocida != areas_.end()) return conocida->second;
    std::string clave;
    for (std::size_t numero = areas_.size() + 1; clave.empty(); ++numero) {
      clave = regional::ConMascara(std::to_string(numero), parametro::kFormatoArea.defecto);
      if (Hay(base_, alta::kArea.busca, {clave})) clave.clear();
    }
    DaDeAlta(base_, alta::kArea, {clave, nombre});
    areas_[nombre] = clave;
    return clave;
  }

  void Usuarios() {
    bool administra = true;
    for (const UsuarioNuevo& u : hotel_.usuarios) {
      if (SinTexto(u)) continue;
      std::vector<std::string> derechos;
      for (const Derecho& d : Derechos()) {
        // It takes a right away.
        if (administra && std::string_view(d.opcion) != anfitrion::permiso::kTipoCambio) {
          derechos.emplace_back(d.opcion);
        }
      }
      GuardaUsuario(base_, {Texto(u.clave), Texto(u.nombre)}, u.contrasena, derechos);
      administra = false;
    }
  }

  Anfitrion& anfitrion_;
  Conexion& base_;
  const HotelNuevo& hotel_;
  double impuesto_ = 0;
  std::map<std::string, std::string> areas_;
};

std::string Cuantas(std::size_t n) { return n == 1 ? "1 habitación" : std::to_string(n) + " habitaciones"; }

}  // namespace

std::vector<std::string> HabitacionesDe(std::string_view texto) {
  std::vector<std::string> claves;
  for (const std::string& palabra : Palabras(texto)) {
    if (const std::size_t raya = palabra.find('-'); raya != std::string::npos) {
      AgregaRango(palabra, raya, claves);
    } else {
      claves.push_back(palabra);
    }
    if (claves.size() > static_cast<std::size_t>(kHabitacionesMaximas)) {
      Error("Son más de " + std::to_string(kHabitacionesMaximas) + " habitaciones");
    }
  }
  std::set<std::string> vistas;
  for (const std::string& clave : claves) {
    if (const std::string motivo = MotivoHabitacion(clave); !motivo.empty()) Error(motivo);
    if (!vistas.insert(clave).second) Error("La habitación " + clave + " se repite");
  }
  return claves;
}

std::string MotivoHabitacion(const std::string& clave) {
  if (com::LargoUtf8(clave) > esquema::kLargoClave) {
    return "La habitación «" + clave + "» lleva más de " + std::to_string(esquema::kLargoClave) + " caracteres";
  }
  if (clave.find_first_of("'%\"") == std::string::npos) return {};
  return "La habitación «" + clave + "» no puede llevar comillas ni el signo %";
}

std::string MotivoNombre(std::string_view titulo, const std::string& texto) {
  if (com::LargoUtf8(texto) <= esquema::kLargoTexto) return {};
  return "«" + std::string(titulo) + "» admite " + std::to_string(esquema::kLargoTexto) + " caracteres";
}

std::string PisoDe(std::string_view habitacion) {
  constexpr std::size_t kDeHabitacion = 2;  // digits that number a room on its floor
  const Numerada n = Divide(habitacion);
  // "301A" is on the third floor too.
  std::string_view cifras = n.cifras;
  if (cifras.empty()) {
    const std::size_t fin = habitacion.find_last_of("0123456789");
    cifras = fin == std::string_view::npos ? cifras : Divide(habitacion.substr(0, fin + 1)).cifras;
  }
  if (cifras.size() <= kDeHabitacion) return "General";
  std::string piso(cifras.substr(0, cifras.size() - kDeHabitacion));
  piso.erase(0, std::min(piso.find_first_not_of('0'), piso.size()));
  return piso.empty() ? "Planta baja" : "Piso " + piso;
}

double LeePorCiento(std::string_view titulo, std::string_view texto) {
  const std::string campo = "«" + std::string(titulo) + "»";
  std::string numero = com::Recorta(texto);
  if (numero.empty()) Error("Falta " + campo);
  const bool conSigno = numero.ends_with('%');
  if (conSigno) numero = com::Recorta(std::string_view(numero).substr(0, numero.size() - 1));
  double porciento = 0;
  try {
    porciento = com::CDbl(numero);
  } catch (const com::Error&) {
    Error(campo + " no admite «" + std::string(texto) + "»");
  }
  if (!conSigno && porciento > 0 && porciento < 1) {
    Error(campo + " va en por ciento: 16 es 16 %; si es menor que uno, escríbalo con el signo: " + numero + " %");
  }
  if (porciento < 0) Error(campo + " no puede ser negativo");
  if (!(porciento < 100)) Error(campo + " debe ser menor que 100");
  return porciento / 100;
}

std::optional<Reparo> Revisa(const HotelNuevo& hotel, ParteHotel parte) {
  Sitio sitio;
  try {
    switch (parte) {
      case ParteHotel::Hotel:
        RevisaHotel(hotel, sitio);
        break;
      case ParteHotel::Tipos:
        RevisaTipos(hotel, sitio);
        break;
      case ParteHotel::Habitaciones:
        RevisaHabitaciones(hotel, sitio);
        break;
      case ParteHotel::Usuarios:
        RevisaUsuarios(hotel, sitio);
        break;
    }
  } catch (const com::Error& e) {
    return Reparo{e.Descripcion(), sitio.campo, sitio.fila};
  }
  return std::nullopt;
}

bool SinHotel(Conexion& conexion) {
  constexpr std::string_view kTablas[] = {
      "SELECT TOP 1 Hb_Cve_Habitacion FROM Habitacion",
      "SELECT TOP 1 Th_Cve_Tipo_Habitacion FROM Tipo_Habitacion",
      "SELECT TOP 1 Sc_Cve_Sucursal FROM Sucursal",
      "SELECT TOP 1 Rs_Folio FROM Reservacion",
  };
  return std::ranges::none_of(kTablas, [&](std::string_view sentencia) { return Hay(conexion, sentencia, {}); });
}

void CreaHotel(Anfitrion& anfitrion, const HotelNuevo& hotel) {
  for (const ParteHotel parte : kPartesHotel) {
    if (const auto reparo = Revisa(hotel, parte)) Error(reparo->motivo);
  }
  Conexion& conexion = *anfitrion.conexion();
  Transaccion transaccion(conexion);
  conexion.EsperaTurno("demo");
  if (!SinHotel(conexion)) {
    throw com::Error(com::error::kRestriccion, "Esta base ya tiene un hotel: mientras tanto alguien lo hizo");
  }
  Escritura(anfitrion, hotel).Escribe();
  transaccion.Concluye();
  if (!hotel.usuarios.empty() && !SinTexto(hotel.usuarios.front())) {
    anfitrion.usuario(Texto(hotel.usuarios.front().clave));
  }
}

std::vector<std::string> ResumenDe(const HotelNuevo& hotel) {
  std::vector<std::string> lineas{Texto(hotel.nombre) + ", sucursal " + Texto(hotel.sucursal)};
  std::string monedas = "Precios en " + Texto(hotel.nombreMoneda) + " (" + com::Mayusculas(Texto(hotel.moneda)) + ")";
  if (const std::string divisa = com::Mayusculas(Texto(hotel.divisa)); !divisa.empty()) {
    monedas += "; 1 " + divisa + " = " + Texto(hotel.tipoCambio) + " " + com::Mayusculas(Texto(hotel.moneda));
  }
  lineas.push_back(monedas);
  const std::string impuesto = Texto(hotel.impuesto);
  lineas.push_back("Impuesto: " + impuesto + (impuesto.ends_with('%') ? "" : " %") +
                   (hotel.conImpuesto ? ", ya incluido en los precios" : ", se suma a los precios escritos"));
  std::size_t todas = 0, usuarios = 0;
  for (const TipoNuevo& tipo : hotel.tipos) {
    if (SinTexto(tipo)) continue;
    const auto claves = HabitacionesDe(tipo.habitaciones);
    todas += claves.size();
    std::string linea = Texto(tipo.nombre) + ": " + Cuantas(claves.size());
    if (!claves.empty()) linea += " (" + claves.front() + (claves.size() > 1 ? " … " + claves.back() : "") + ")";
    linea += Texto(tipo.precio).empty()
                 ? ", sin precio"
                 : ", " + regional::Moneda(Importe("Precio por noche", tipo.precio)) + " la noche";
    lineas.push_back(linea);
  }
  lineas.push_back("En total " + Cuantas(todas));
  for (const UsuarioNuevo& u : hotel.usuarios) usuarios += SinTexto(u) ? 0 : 1;
  lineas.push_back(usuarios == 0   ? "Sin contraseñas"
                   : usuarios == 1 ? "1 usuario con contraseña; administra el hotel"
                                   : std::to_string(usuarios) + " usuarios con contraseña; " +
                                         Texto(hotel.usuarios.front().clave) + " administra el hotel");
  lineas.emplace_back("Formas de pago: efectivo, transferencia y tarjeta de crédito. Ninguna noche se vende dos veces");
  return lineas;
}

}  // namespace autonomo
