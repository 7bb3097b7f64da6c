#include "desktop/visor.h"

#include <QHeaderView>
#include <QTabWidget>
#include <algorithm>

#include "desktop/dialogos.h"
#include "desktop/estilo.h"
#include "desktop/tablas.h"
#include "desktop/vista.h"
#include "host/standalone/documento.h"
#include "host/standalone/tarjetas_sql.h"
#include "platform/ado/celda.h"
#include "platform/com/error.h"
#include "schema/esquema.h"

namespace vista {

namespace {

// A column as it is read: its name, and the catalogue that its key is of.
struct Palabra {
  std::string_view columna, titulo, tabla = {}, llave = {}, nombre = {};
};
constexpr Palabra kPalabras[] = {
    {"Rs_Folio", "Folio"},
    {"Rs_Fecha", "Fecha de captura"},
    {"Rs_Llegada", "Llegada"},
    {"Rs_Salida", "Salida"},
    {"Sc_Cve_Sucursal", "Sucursal", "Sucursal", "Sc_Cve_Sucursal", "Sc_Descripcion"},
    {"Cl_Cve_Cliente", "Cliente", "Cliente", "Cl_Cve_Cliente", "Cl_Razon_Social_1"},
    {"Rs_Huesped", "Huésped", "Cliente", "Cl_Cve_Cliente", "Cl_Razon_Social_1"},
    {"Mn_Cve_Moneda", "Moneda", "Moneda", "Mn_Cve_Moneda", "Mn_Descripcion"},
    {"Rs_Tipo_Cambio", "Tipo de cambio"},
    {"Fp_Cve_Forma_Pago", "Forma de pago", "Forma_Pago", "Fp_Cve_Forma_Pago", "Fp_Descripcion"},
    {"Rs_Referencia", "Referencia"},
    {"Rs_Comentario", "Comentario"},
    {"Rs_Notas", "Notas"},
    {"Es_Cve_Estado", "Estado"},
    {"Oper_Ult_Modif", "Último cambio de"},
    {"Fecha_Ult_Modif", "Fecha del último cambio"},
    {"Oper_Baja", "Cancelada por"},
    {"Fecha_Baja", "Fecha de la cancelación"},
};

QString Legible(autonomo::Conexion& conexion, const Palabra& palabra, const std::string& valor) {
  if (palabra.columna == "Es_Cve_Estado") return Q(autonomo::EstadoLegible(valor));
  if (palabra.tabla.empty() || valor.empty()) return Q(valor);
  const auto rs = conexion.Consulta("SELECT " + std::string(palabra.nombre) + " FROM " + std::string(palabra.tabla) +
                                        " WHERE " + std::string(palabra.llave) + " = ?",
                                    {valor});
  return rs->Eof() ? Q(valor) : Q(valor + "  " + ado::Celda(*rs, 0));
}

// Rows as high as their texts, which begin at the top.
QTableWidget* TablaDeTextos(const QStringList& titulos, const QString& nombre, QWidget* padre) {
  QTableWidget* tabla = CreaTabla(titulos, padre);
  tabla->setAccessibleName(nombre);
  tabla->setWordWrap(true);
  tabla->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  return tabla;
}

void AlzaTextos(QTableWidget* tabla) {
  for (int f = 0; f < tabla->rowCount(); ++f) {
    for (int c = 0; c < tabla->columnCount(); ++c) tabla->item(f, c)->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
  }
  for (int c = 0; c + 1 < tabla->columnCount(); ++c) tabla->resizeColumnToContents(c);
}

QTableWidget* Cambios(autonomo::Conexion& conexion, const std::string& clave, QWidget* padre) {
  QTableWidget* tabla = TablaDeTextos({QStringLiteral("Fecha"), QStringLiteral("Usuario"), QStringLiteral("Cambio")},
                                      QStringLiteral("Bitácora del registro"), padre);
  const auto rs = conexion.Consulta(
      "SELECT Bt_Fecha, Bt_Usuario, Bt_Texto FROM Bitacora WHERE Bt_Clave = ? ORDER BY Bt_Id DESC", {clave});
  for (; !rs->Eof(); rs->MoveNext()) {
    QStringList lineas;
    for (const QString& linea : Q(ado::Celda(*rs, 2)).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
      const QString limpia = linea.simplified().replace(QStringLiteral("->"), QStringLiteral("→"));
      if (!limpia.isEmpty()) lineas << limpia;
    }
    AgregaFila(tabla, {Q(ado::Celda(*rs, 0)), Q(ado::Celda(*rs, 1)), lineas.join(QLatin1Char('\n'))});
  }
  AlzaTextos(tabla);
  return tabla;
}

}  // namespace

std::vector<std::pair<QString, QString>> DatosDeRegistro(autonomo::Conexion& conexion, const std::string& tabla,
                                                         const std::string& columna, const std::string& clave) {
  const esquema::Tabla* definida = esquema::BuscaTabla(tabla);
  const esquema::Columna* llave = esquema::BuscaColumna(columna);
  if (definida == nullptr || llave == nullptr)
    throw com::Error(com::error::kArgumento, "No existe la tabla " + tabla + " con la columna " + columna);
  std::vector<std::pair<QString, QString>> datos;
  const auto rs = conexion.Consulta(
      "SELECT * FROM " + std::string(definida->nombre) + " WHERE " + std::string(llave->nombre) + " = ?", {clave});
  if (rs->Eof()) return datos;
  for (std::size_t i = 0; i < rs->Nombres().size(); ++i) {
    const std::string& nombre = rs->Nombres()[i];
    const auto* p = std::find_if(std::begin(kPalabras), std::end(kPalabras),
                                 [&](const Palabra& k) { return com::IgualSinCaja(k.columna, nombre); });
    if (const auto tarjeta = autonomo::ClaseDeColumna(nombre)) {  // nobody needs a card to look at a record
      const std::string valor = ado::Celda(*rs, i);
      datos.emplace_back(Q(nombre), Q(valor.empty() ? valor : autonomo::Enmascara(valor, *tarjeta)));
    } else if (p == std::end(kPalabras)) {
      datos.emplace_back(Q(nombre), Q(ado::Celda(*rs, i)));
    } else {
      datos.emplace_back(Q(p->titulo), Legible(conexion, *p, ado::Celda(*rs, i)));
    }
  }
  return datos;
}

void MuestraRegistro(autonomo::Conexion& conexion, const std::string& tabla, const std::string& columna,
                     const std::string& clave, QWidget* padre) {
  const auto filas = DatosDeRegistro(conexion, tabla, columna, clave);
  const QString titulo = com::IgualSinCaja(tabla, "Reservacion") ? QStringLiteral("Reservación") : Q(tabla);
  Ficha ficha(titulo + QLatin1Char(' ') + Q(clave), padre);
  ficha.setObjectName(QStringLiteral("registro"));
  auto* hojas = new QTabWidget(&ficha);
  QTableWidget* datos =
      TablaDeTextos({QStringLiteral("Dato"), QStringLiteral("Valor")}, QStringLiteral("Datos del registro"), hojas);
  for (const auto& [dato, valor] : filas) AgregaFila(datos, {dato, valor});
  AlzaTextos(datos);
  hojas->addTab(datos, QStringLiteral("Datos"));
  hojas->addTab(Cambios(conexion, clave, hojas), QStringLiteral("Bitácora"));
  ficha.caja()->addWidget(hojas);
  ficha.Termina();
  AjustaAPantalla(ficha, {640, 560});
  ficha.exec();
}

}  // namespace vista
