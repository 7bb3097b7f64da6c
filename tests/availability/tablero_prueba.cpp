#include "tests/availability/tablero_prueba.h"

#include <ostream>

namespace pruebas {

void PrintTo(const FilaVista& fila, std::ostream* salida) {
  *salida << '\n' << fila.clave << " \"" << fila.nombre << '"';
  for (const CeldaVista& c : fila.celdas) *salida << " | " << c.texto << ' ' << c.estilo << ' ' << c.estado;
}

TableroPrueba::TableroPrueba()
    : host(autonomo::Opciones{}), conexion(std::make_shared<ConexionVigilada>(host.conexion())) {
  host.conexion(conexion);
  host.RegistraClases();
  publico::Arranca();
  publico::CreaHotel();
}

TableroPrueba::~TableroPrueba() {
  publico::LiberaHotel();
  publico::Olvida();
  host.QuitaClases();
}

void TableroPrueba::Tipo(const std::string& clave, const std::string& descripcion) {
  Sql("INSERT INTO Producto (Pr_Cve_Producto, Pr_Descripcion) VALUES ('" + clave + "', 'Hospedaje')");
  Sql("INSERT INTO Producto_Precio (Pr_Cve_Producto, Pp_Precio_1) VALUES ('" + clave + "', 1000)");
  Sql("INSERT INTO Tipo_Habitacion (Th_Cve_Tipo_Habitacion, Th_Descripcion, Pr_Cve_Producto) VALUES ('" + clave +
      "', '" + descripcion + "', '" + clave + "')");
}

void TableroPrueba::Habitacion(const std::string& clave, const std::string& tipo, const std::string& grupo,
                               const std::string& area, const std::string& estado) {
  Sql("INSERT INTO Habitacion (Hb_Cve_Habitacion, Hb_Descripcion, Th_Cve_Tipo_Habitacion, Ghb_Cve_Grupo_Habitacion, "
      "Ah_Cve_Area_Habitacion, Es_Cve_Estado) VALUES ('" +
      clave + "', 'Cuarto " + clave + "', '" + tipo + "', '" + grupo + "', '" + area + "', '" + estado + "')");
}

void TableroPrueba::Reserva(const std::string& folio, const std::string& habitacion, const std::string& inicio,
                            const std::string& fin, const std::string& estado) {
  Sql("INSERT INTO Reservacion (Rs_Folio, Es_Cve_Estado) VALUES ('" + folio + "', '" + estado + "')");
  Sql("INSERT INTO Reservacion_Detalle (Rs_Folio, Hb_Cve_Habitacion, Rsd_Fecha_Inicio, Rsd_Fecha_Fin) VALUES ('" +
      folio + "', '" + habitacion + "', '" + inicio + "', '" + fin + "')");
}

void TableroPrueba::Estancia(const std::string& folio, const std::string& habitacion, const std::string& llegada,
                             const std::string& salida, const std::string& estado) {
  Sql("INSERT INTO Check_In (Ci_Folio, Ci_Llegada, Ci_Salida, Es_Cve_Estado) VALUES ('" + folio + "', '" + llegada +
      "', '" + salida + "', '" + estado + "')");
  Sql("INSERT INTO Check_In_Detalle (Ci_Folio, Hb_Cve_Habitacion) VALUES ('" + folio + "', '" + habitacion + "')");
}

void TableroPrueba::Bloqueo(const std::string& habitacion, const std::string& inicio, const std::string& fin,
                            const std::string& estado) {
  Sql("INSERT INTO Habitacion_Bloqueo (Hb_Cve_Habitacion, Hbb_Fecha_Inicio, Hbb_Fecha_Fin, Es_Cve_Estado) VALUES ('" +
      habitacion + "', '" + inicio + "', '" + fin + "', '" + estado + "')");
}

bool TableroPrueba::Abre(com::Fecha desde, int noches) {
  tablero.Muestra();
  tablero.txtDEL.text(com::Variant(desde));
  tablero.txtAL.text(com::Variant(com::MasDias(desde, noches)));
  return tablero.Agregar_Columnas(noches) && tablero.CargarDatos();
}

std::vector<FilaVista> TableroPrueba::Vista() const {
  const controles::Grid& grid = tablero.ssDisponibilidad;
  std::vector<FilaVista> filas;
  for (int r = 0; r < grid.Filas(); ++r) {
    FilaVista fila{grid.Texto(r, "Clave"), grid.Texto(r, "Nombre"), {}};
    for (int c = kv207::kColumnasFijas; c < grid.NumColumnas(); ++c) {
      const int estilo = grid.estilo(r, c), dia = c - kv207::kColumnasFijas;
      fila.celdas.push_back({grid.Texto(r, c),
                             estilo < 0 ? "" : grid.Estilos()[static_cast<std::size_t>(estilo)].nombre,
                             tablero.Estados.Tiene(dia, r) ? static_cast<int>(tablero.Estados(dia, r)) : -1});
    }
    filas.push_back(std::move(fila));
  }
  return filas;
}

CeldaVista TableroPrueba::Celda(const std::string& clave, int noche) const {
  for (const FilaVista& fila : Vista()) {
    if (fila.clave == clave) return fila.celdas.at(static_cast<std::size_t>(noche));
  }
  return {};
}

}  // namespace pruebas
