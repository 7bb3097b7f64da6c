// reservas-guion as a program: command line, pipes, files that are not what they should be.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "proceso.h"

namespace {

using pruebas::Carpeta;
using pruebas::Corre;
using Argumentos = std::vector<std::string>;

Argumentos Guion(Argumentos mas) {
  mas.insert(mas.begin(), RESERVAS_GUION);
  return mas;
}

TEST(Programa, ElUsoErroneoDa2YExplica) {
  const std::vector<Argumentos> malos = {{"--nada"},     {"--base"},        {"--ahora", "ayer"},
                                         {"a", "b"},     {"--usuario"},     {"--base", "x", "--conexion", "y"},
                                         {"--base", ""}, {"--conexion", ""}};
  for (const Argumentos& argumentos : malos) {
    const auto salida = Corre(Guion(argumentos));
    EXPECT_EQ(salida.estado, 2) << argumentos[0];
    EXPECT_NE(salida.errores.find("Uso: reservas-guion"), std::string::npos);
    EXPECT_EQ(salida.texto, "");
  }
}

TEST(Programa, LaAyudaSePideDeTresFormas) {
  for (const char* ayuda : {"--ayuda", "--help", "-h"}) {
    for (const char* programa : {RESERVAS_GUION, RESERVAS_IMPORTA}) {
      const auto salida = Corre({programa, ayuda});
      EXPECT_EQ(salida.estado, 0) << programa << ' ' << ayuda;
      EXPECT_NE(salida.texto.find("--help"), std::string::npos) << programa << ' ' << ayuda;
      EXPECT_EQ(salida.errores, "");
    }
  }
}

TEST(Programa, UnGuionIlegibleNoTocaLaBase) {
  const Carpeta carpeta;
  for (const std::string& guion : {carpeta.Ruta("no_existe.guion"), carpeta.Ruta("")}) {
    const auto salida = Corre(Guion({"--base", carpeta.Ruta("hotel.db"), guion}));
    EXPECT_EQ(salida.estado, 1);
    EXPECT_NE(salida.errores.find("no se puede leer"), std::string::npos) << salida.errores;
    EXPECT_FALSE(std::filesystem::exists(carpeta.Ruta("hotel.db")));
  }
}

TEST(Programa, UnaBaseAjenaODeSoloLecturaSeDiceYQuedaIgual) {
  const Carpeta carpeta;
  const std::string ajena = carpeta.Escribe("ajena.db", "esto no es una base de datos, sino un texto cualquiera\n");
  const auto salida = Corre(Guion({"--base", ajena}), "abre\n");
  EXPECT_EQ(salida.estado, 1);
  EXPECT_TRUE(salida.errores.starts_with("reservas-guion: ")) << salida.errores;
  EXPECT_EQ(salida.texto, "");
  EXPECT_EQ(pruebas::Lee(ajena), "esto no es una base de datos, sino un texto cualquiera\n");
  const auto sinCarpeta = Corre(Guion({"--base", carpeta.Ruta("no/hay/hotel.db")}), "abre\n");
  EXPECT_EQ(sinCarpeta.estado, 1);
  EXPECT_FALSE(sinCarpeta.errores.empty());
}

TEST(Programa, UnaOrdenMalaNoDetieneALasDemas) {
  const Carpeta carpeta;
  const std::string guion = carpeta.Escribe("malo.guion", "abre\nvuela\ncierra\n");
  const auto salida = Corre(Guion({guion}));
  EXPECT_EQ(salida.estado, 1);
  EXPECT_EQ(salida.errores, guion + ":2: No existe la orden «vuela»\n");
  EXPECT_EQ(std::count(salida.texto.begin(), salida.texto.end(), '\n'), 3);
}

TEST(Programa, ContestaCadaOrdenEnCuantoLlega) {
  pruebas::Dialogo dialogo(Guion({"--demo", "--ahora", "2026-03-09T10:00"}));
  dialogo.Di("# nada");
  dialogo.Di("abre");
  EXPECT_EQ(
      dialogo.Oye(),
      R"({"linea":2,"orden":"abre","ok":true,"mensajes":[],"foco":"txtFolio","ventana":"frmKV207","celda":null})");
  dialogo.Di("accion nuevo");
  EXPECT_NE(dialogo.Oye().find(R"("foco":"dpFecha")"), std::string::npos);
  // The board is answered while it is open, not when it closes.
  dialogo.Di("tecla F6");
  EXPECT_NE(dialogo.Oye().find(R"("ventana":"frmDisponibilidad")"), std::string::npos);
  dialogo.Di("accion cancelar");
  EXPECT_NE(dialogo.Oye().find(R"("ventana":"frmKV207")"), std::string::npos);
  dialogo.Di("tecla F6");
  EXPECT_NE(dialogo.Oye().find(R"("ok":true)"), std::string::npos);
  EXPECT_EQ(dialogo.Termina(), 0);  // with the board open
}

TEST(Programa, LaBaseQueSeNombraSeCreaYSeConserva) {
  const Carpeta carpeta;
  const std::string base = carpeta.Ruta("hotel.db");
  EXPECT_EQ(Corre(Guion({"--base", base, "--demo", "--ahora", "2026-03-09T10:00"}), "parametro HT_PRUEBA x\n").estado,
            0);
  const auto segunda = Corre(Guion({"--base", base, "--usuario", "NOCHE"}),
                             "\xEF\xBB\xBFsql SELECT Pm_Valor FROM Parametro WHERE Pm_Clave = 'HT_PRUEBA'\r\n");
  EXPECT_EQ(segunda.estado, 0);
  EXPECT_NE(segunda.texto.find(R"("valor":[{"Pm_Valor":"x"}])"), std::string::npos) << segunda.texto;
}

TEST(Programa, UnaSalidaLlenaNoPasaPorBuena) {
  if (access("/dev/full", W_OK) != 0) GTEST_SKIP() << "no /dev/full here";
  const Carpeta carpeta;
  const std::string guion = carpeta.Escribe("bueno.guion", "abre\n");
  EXPECT_NE(Corre({"/bin/sh", "-c", std::string(RESERVAS_GUION) + " " + guion + " > /dev/full"}).estado, 0);
}

}  // namespace
