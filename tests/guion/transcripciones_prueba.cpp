// What the transcripts of all scripts show together.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
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

// Every match of the expression's first group in the files of a folder.
std::multiset<std::string> EnFuentes(const char* carpeta, const std::regex& expresion) {
  std::multiset<std::string> hallados;
  for (const auto& entrada : fs::directory_iterator(fs::path(CARPETA_DOCUMENTOS).parent_path() / carpeta)) {
    std::ifstream archivo(entrada.path());
    const std::string texto{std::istreambuf_iterator<char>(archivo), {}};
    for (std::sregex_iterator m(texto.begin(), texto.end(), expresion), fin; m != fin; ++m) hallados.insert((*m)[1]);
  }
  return hallados;
}

// What the screens' code names is what there is: the table declares nothing else, its list leaves nothing out, and some
// transcript shows each. 7500011 cannot come up: a grid without rows is refused by the availability validation before.
TEST(Transcripciones, MuestranTodosLosMensajesQueSeUsan) {
  std::set<std::string> usados, declarados, debidos, listados, vistos;
  for (const char* carpeta : {"reservation", "availability"}) {
    usados.merge(EnFuentes(carpeta, std::regex("\\bmensaje::(k\\w+)")));
  }
  const std::regex declaracion("DatosMensaje (k\\w+\\{\"[^\"]+)\"");
  for (const std::string& nombre : EnFuentes("host/contract", declaracion)) {
    const std::size_t llave = nombre.find('{');
    declarados.insert(nombre.substr(0, llave));
    EXPECT_TRUE(debidos.insert(nombre.substr(llave + 2)).second) << nombre << " twice";
  }
  EXPECT_EQ(usados, declarados);
  for (const auto& mensaje : anfitrion::mensaje::Todos()) listados.emplace(mensaje.id);
  EXPECT_EQ(listados, debidos);
  for (const fs::path& ruta : Transcripciones()) {
    for (const QJsonObject& respuesta : Respuestas(ruta)) {
      for (const auto& mensaje : respuesta["mensajes"].toArray()) {
        vistos.insert(mensaje.toObject()["id"].toString().toStdString());
      }
    }
  }
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
        // Only a store that refuses a line without a word leaves a box empty.
        EXPECT_TRUE(texto.starts_with(debido->texto) && (!texto.empty() || id == "ERR-ID:7500017"))
            << ruta << ' ' << id;
      }
    }
  }
}

}  // namespace
