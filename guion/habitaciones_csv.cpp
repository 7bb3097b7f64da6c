#include "guion/habitaciones_csv.h"

#include <set>

#include "guion/csv.h"
#include "host/contract/estados.h"
#include "host/standalone/altas.h"
#include "host/standalone/parametros.h"
#include "host/standalone/tecleado.h"
#include "host/standalone/transaccion.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"
#include "platform/com/texto.h"
#include "platform/regional/regional.h"

namespace guion {

namespace parametro = anfitrion::parametro;

namespace {

enum Columna : std::size_t { kHabitacion, kDescripcion, kTipo, kGrupo, kArea };
const std::vector<std::string>& Columnas() {
  static const std::vector<std::string> columnas{"habitacion", "descripcion", "tipo", "grupo", "area"};
  return columnas;
}

[[noreturn]] void Rechaza(const std::string& motivo) { throw com::Error(com::error::kArgumento, motivo); }

// Keys and names of a catalogue that rooms refer to, and those that the file adds.
class Referidas {
 public:
  Referidas(autonomo::Conexion& conexion, const char* sentencia, std::string mascara) : mascara_(std::move(mascara)) {
    for (const auto rs = conexion.Consulta(sentencia); !rs->Eof(); rs->MoveNext()) {
      Fila fila{ado::Celda(*rs, 0), ado::Celda(*rs, 1)};
      const bool deBaja = com::IgualSinCaja(ado::Celda(*rs, 2), anfitrion::estado::kBaja);
      if (deBaja) {
        retiradas_.push_back(std::move(fila));
      } else {
        filas_.push_back(std::move(fila));
      }
    }
  }

  // By key, else by name; "" for none.
  std::string Clave(const std::string& texto) const {
    const std::string clave = regional::ConMascara(texto, mascara_);
    for (const Fila& f : filas_) {
      if (com::IgualSinCaja(f.clave, clave)) return f.clave;
    }
    for (const Fila& f : filas_) {
      if (com::IgualSinCaja(f.nombre, texto)) return f.clave;
    }
    return {};
  }
  // The same; what is not there becomes new, with the next number as its key.
  std::string ClaveONueva(const std::string& texto, std::vector<AltaHabitaciones::Nueva>& nuevas) {
    if (std::string clave = Clave(texto); !clave.empty()) return clave;
    int numero = 1;
    while (Ocupada(regional::ConMascara(std::to_string(numero), mascara_))) ++numero;
    Fila nueva{regional::ConMascara(std::to_string(numero), mascara_), texto};
    nuevas.push_back({nueva.clave, nueva.nombre});
    filas_.push_back(nueva);
    return nueva.clave;
  }

 private:
  struct Fila {
    std::string clave, nombre;
  };
  bool Ocupada(const std::string& clave) const {
    for (const auto* filas : {&filas_, &retiradas_}) {
      for (const Fila& f : *filas) {
        if (com::IgualSinCaja(f.clave, clave)) return true;
      }
    }
    return false;
  }

  std::string mascara_;
  std::vector<Fila> filas_, retiradas_;
};

class Lector {
 public:
  explicit Lector(autonomo::Conexion& conexion)
      : conexion_(conexion),
        mascara_(autonomo::ValorParametro(conexion, parametro::kFormatoHabitacion.clave)),
        tipos_(conexion, "SELECT Th_Cve_Tipo_Habitacion, Th_Descripcion, Es_Cve_Estado FROM Tipo_Habitacion",
               autonomo::ValorParametro(conexion, parametro::kFormatoTipo.clave)),
        grupos_(conexion, "SELECT Ghb_Cve_Grupo_Habitacion, Ghb_Descripcion, Es_Cve_Estado FROM Grupo_Habitacion",
                autonomo::ValorParametro(conexion, parametro::kFormatoGrupo.clave)),
        areas_(conexion, "SELECT Ah_Cve_Area_Habitacion, Ah_Descripcion, Es_Cve_Estado FROM Area_Habitacion",
               autonomo::ValorParametro(conexion, parametro::kFormatoArea.clave)) {}

  void Agrega(const RegistroCsv& registro, AltaHabitaciones& alta) {
    if (!registro.defecto.empty()) Rechaza(registro.defecto);
    const auto campo = [&](Columna c) { return com::Recorta(registro.campos[c]); };
    AltaHabitaciones::Fila fila;
    fila.clave = Clave(campo(kHabitacion));
    fila.descripcion = Nombre("descripcion", campo(kDescripcion), campo(kHabitacion));
    if (campo(kTipo).empty()) Rechaza("falta tipo");
    fila.tipo = tipos_.Clave(campo(kTipo));
    if (fila.tipo.empty()) Rechaza("no existe el tipo «" + campo(kTipo) + "»");
    // Looked at before either becomes a new one: a bad line makes none.
    const std::string grupo = Nombre("grupo", campo(kGrupo), "General"), area = Nombre("area", campo(kArea), "General");
    fila.grupo = grupos_.ClaveONueva(grupo, alta.grupos);
    fila.area = areas_.ClaveONueva(area, alta.areas);
    alta.filas.push_back(std::move(fila));
  }

 private:
  std::string Clave(const std::string& texto) {
    if (texto.empty()) Rechaza("falta habitacion");
    std::string clave = regional::ConMascara(com::Mayusculas(texto), mascara_);
    if (const std::string motivo = autonomo::MotivoHabitacion(clave); !motivo.empty()) Rechaza(motivo);
    if (!vistas_.insert(clave).second) Rechaza("la habitación " + clave + " se repite en el archivo");
    if (autonomo::Hay(conexion_, "SELECT Hb_Cve_Habitacion FROM Habitacion WHERE Hb_Cve_Habitacion = ?", {clave})) {
      Rechaza("la habitación " + clave + " ya existe");
    }
    return clave;
  }

  static std::string Nombre(const char* columna, const std::string& texto, const std::string& vacio) {
    if (const std::string motivo = autonomo::MotivoNombre(columna, texto); !motivo.empty()) Rechaza(motivo);
    return texto.empty() ? vacio : texto;
  }

  autonomo::Conexion& conexion_;
  std::string mascara_;
  Referidas tipos_, grupos_, areas_;
  std::set<std::string> vistas_;
};

std::string Nuevas(const char* titulo, const std::vector<AltaHabitaciones::Nueva>& nuevas) {
  std::string texto;
  for (const auto& nueva : nuevas) texto += (texto.empty() ? titulo : ", ") + nueva.nombre;
  return texto;
}

}  // namespace

AltaHabitaciones RevisaHabitaciones(autonomo::Conexion& conexion, const std::string& ruta) {
  AltaHabitaciones alta;
  Lector lector(conexion);
  for (const RegistroCsv& registro : LeeCsv(ruta, Columnas())) {
    try {
      lector.Agrega(registro, alta);
    } catch (const com::Error& e) {
      if (e.Numero() != com::error::kArgumento) throw;
      alta.malas.push_back({registro.linea, e.Descripcion()});
    }
  }
  if (alta.filas.empty() && alta.malas.empty()) RechazaLinea(ruta, 1, "el archivo no tiene habitaciones");
  return alta;
}

void GuardaHabitaciones(autonomo::Conexion& conexion, const AltaHabitaciones& alta) {
  if (!alta.malas.empty()) Rechaza(Dice(alta));
  autonomo::Transaccion transaccion(conexion);
  for (const auto& grupo : alta.grupos) DaDeAlta(conexion, autonomo::alta::kGrupo, {grupo.clave, grupo.nombre});
  for (const auto& area : alta.areas) DaDeAlta(conexion, autonomo::alta::kArea, {area.clave, area.nombre});
  for (const auto& f : alta.filas) {
    DaDeAlta(conexion, autonomo::alta::kHabitacion, {f.clave, f.descripcion, f.tipo, f.grupo, f.area});
  }
  transaccion.Concluye();
}

std::string Dice(const AltaHabitaciones& alta) {
  std::string texto;
  if (!alta.malas.empty()) {
    for (const LineaMala& mala : alta.malas) {
      texto += (texto.empty() ? "línea " : "\nlínea ") + std::to_string(mala.linea) + ": " + mala.motivo;
    }
    return texto;
  }
  texto = alta.filas.size() == 1 ? "1 habitación" : std::to_string(alta.filas.size()) + " habitaciones";
  for (const std::string& mas : {Nuevas("Grupos nuevos: ", alta.grupos), Nuevas("Áreas nuevas: ", alta.areas)}) {
    if (!mas.empty()) texto += ". " + mas;
  }
  return texto;
}

}  // namespace guion
