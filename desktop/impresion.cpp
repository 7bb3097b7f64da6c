#include "desktop/impresion.h"

#include <utility>

#include "desktop/vista.h"
#include "host/standalone/fabricas.h"

namespace vista {

namespace {

class ServicioImpresion : public com::Objeto<anfitrion::Impresion> {
 public:
  ServicioImpresion(autonomo::Anfitrion& host, std::function<QWidget*()> frente)
      : host_(host), propio_(autonomo::CreaImpresion(host)), frente_(std::move(frente)) {}

  void ImprimeFormato(const std::string& formato, const std::string& clave, const std::string& e1, int c1, int c2,
                      const std::string& e2) override {
    propio_->ImprimeFormato(formato, clave, e1, c1, c2, e2);
    const auto documento = autonomo::LeeDocumento(*host_.conexion(), clave);
    if (!documento) return;
    const QString html = LlenaPlantilla(PlantillaDe(*host_.conexion(), formato), *documento);
    const QStringList avisos = ProblemasDePlantilla(*host_.conexion(), formato);
    const QString nombre = Q(autonomo::CartaDe(documento->estado).nombre + " " + documento->folio);
    CreaVistaPrevia(html, nombre, avisos, frente_())->exec();
    if (QWidget* frente = frente_()) frente->activateWindow();
  }

 private:
  autonomo::Anfitrion& host_;
  com::Ptr<anfitrion::Impresion> propio_;
  std::function<QWidget*()> frente_;
};

}  // namespace

com::Inscripcion InstalaImpresion(autonomo::Anfitrion& anfitrion, const std::function<QWidget*()>& frente) {
  return com::RegistraClase(anfitrion::kClaseImpresion, [&anfitrion, frente] {
    return com::Ptr<com::Desconocido>(new ServicioImpresion(anfitrion, frente));
  });
}

}  // namespace vista
