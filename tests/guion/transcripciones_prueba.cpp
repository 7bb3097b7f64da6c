// What the transcripts of all scripts show together.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "host/contract/mensajes.h"

namespace {

namespace fs = std::filesystem;

std::vector<QJsonObject> Respuestas(const fs::path& transcripcion) {
  std::vector<QJsonObject> respuestas;
  std::ifstream archivo(transcripcion);
  for (std::string linea; std::getline(archivo, linea);) {
    const QJsonDocument json = QJsonDocument::fromJson(QByteArray::fromStdString(linea));
    EXPECT_TRUE(json.isObject()) << transcripcion << ": " << linea;
    respuestas.push_back(json.object());
  }
  return respuestas;
}

std::vector<fs::path> Transcripciones() {
  std::vector<fs::path> rutas;
  for (const auto& entrada : fs::directory_iterator(CARPETA_GUIONES)) {
    if (entrada.path().extension() == ".salida") rutas.push_back(entrada.path());
  }
  return rutas;
}

TEST(Transcripciones, CadaUnaTieneSuGuionYCadaGuionLaSuya) {
  for (const auto& entrada : fs::directory_iterator(CARPETA_GUIONES)) {
    fs::path pareja = entrada.path();
    if (pareja.extension() != ".guion" && pareja.extension() != ".salida") continue;
    pareja.replace_extension(pareja.extension() == ".guion" ? ".salida" : ".guion");
    // The script of the documents has its transcript here.
    EXPECT_TRUE(fs::exists(pareja) || fs::exists(fs::path(CARPETA_DOCUMENTOS) / pareja.filename())) << entrada.path();
  }
}

// 7500011 cannot come up: a grid without rows is refused by the availability validation before.
TEST(Transcripciones, MuestranTodosLosMensajesAlcanzables) {
  std::set<std::string> vistos, debidos;
  for (const fs::path& ruta : Transcripciones()) {
    for (const QJsonObject& respuesta : Respuestas(ruta)) {
      for (const auto& mensaje : respuesta["mensajes"].toArray()) {
        vistos.insert(mensaje.toObject()["id"].toString().toStdString());
      }
    }
  }
  for (const auto& mensaje : anfitrion::mensaje::Todos()) debidos.emplace(mensaje.id);
  EXPECT_EQ(debidos.erase("ERR-ID:7500011"), 1U);
  EXPECT_EQ(vistos, debidos);
}

TEST(Transcripciones, CadaMensajeLlevaSuEstiloTituloYTexto) {
  for (const fs::path& ruta : Transcripciones()) {
    for (const QJsonObject& respuesta : Respuestas(ruta)) {
      for (const auto& valor : respuesta["mensajes"].toArray()) {
        const QJsonObject m = valor.toObject();
        const std::string id = m["id"].toString().toStdString();
        const auto& todos = anfitrion::mensaje::Todos();
        const auto debido = std::ranges::find_if(todos, [&](const auto& d) { return d.id == id; });
        ASSERT_NE(debido, todos.end()) << ruta << ' ' << id;
        EXPECT_EQ(m["estilo"].toInt(), debido->estilo) << ruta << ' ' << id;
        EXPECT_EQ(m["titulo"].toString().toStdString(), debido->titulo) << ruta << ' ' << id;
        EXPECT_EQ(m["pantalla"].toString().toStdString(), "KV207") << ruta << ' ' << id;
        const std::string texto = m["texto"].toString().toStdString();
        EXPECT_TRUE(texto.starts_with(debido->texto) && !texto.empty()) << ruta << ' ' << id << ": " << texto;
      }
    }
  }
}

}  // namespace
