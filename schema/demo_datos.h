// What the demo hotel has: room types with their prices, floors, clients, rates. How its bookings lie around a day is
// demo.cpp's.
#pragma once

#include <string_view>

namespace esquema::demo {

struct TipoDemo {
  const char* clave;
  const char* nombre;
  const char* producto;
  int incluidas, maximo;
  // Whole pesos a night, tax included.
  int lista, normal, finDeSemana, alta, adultoExtra, menorExtra;
};
inline constexpr TipoDemo kTipos[] = {
    {"0001", "Sencilla", "HAB001", 1, 2, 990, 890, 1040, 1240, 200, 100},
    {"0002", "Doble", "HAB002", 2, 4, 1390, 1250, 1450, 1690, 250, 125},
    {"0003", "King", "HAB003", 2, 3, 1550, 1390, 1620, 1890, 280, 140},
    {"0004", "Familiar", "HAB004", 4, 6, 2150, 1940, 2240, 2590, 280, 140},
    {"0005", "Junior suite", "HAB005", 2, 4, 2490, 2240, 2590, 2990, 350, 175},
    {"0006", "Suite master", "HAB006", 2, 5, 4200, 3780, 4380, 4990, 400, 200},
};

// Type of each room, floor by floor: digits are positions in kTipos, from 1.
inline constexpr std::string_view kPisos[] = {"11111222223344", "11122222333445", "112223335566"};
inline constexpr const char* kAreas[] = {"Primer piso", "Segundo piso", "Tercer piso"};
inline constexpr const char* kGrupos[] = {"Jardín", "Alberca", "Mar"};

struct ClienteDemo {
  const char* nombre;
  const char* correo;
};
inline constexpr ClienteDemo kClientes[] = {
    {"María Fernanda Hernández López", "mfernanda.hernandez@example.com"},
    {"José Luis Martínez García", "jl.martinez@example.com"},
    {"Ana Sofía Ramírez Torres", "anasofia.ramirez@example.com"},
    {"Carlos Eduardo Sánchez Flores", "ce.sanchez@example.com"},
    {"Guadalupe Rivera Castillo", "lupita.rivera@example.com"},
    {"Juan Manuel González Ortiz", "jm.gonzalez@example.com"},
    {"Laura Patricia Mendoza Cruz", "laura.mendoza@example.com"},
    {"Ricardo Alberto Vargas Luna", "ricardo.vargas@example.com"},
    {"Gabriela Reyes Domínguez", "gabriela.reyes@example.com"},
    {"Miguel Ángel Pérez Salazar", ""},
    {"Verónica Jiménez Aguilar", "vero.jimenez@example.com"},
    {"Francisco Morales Ríos", "f.morales@example.com"},
    {"Daniela Ruiz Navarro", "daniela.ruiz@example.com"},
    {"Roberto Gutiérrez Campos", "roberto.gutierrez@example.com"},
    {"Alejandra Chávez Medina", "ale.chavez@example.com"},
    {"Fernando Romero Delgado", "fernando.romero@example.com"},
    {"Claudia Ivonne Herrera Soto", "claudia.herrera@example.com"},
    {"Jorge Arturo Álvarez Peña", "jorge.alvarez@example.com"},
    {"Mónica Vázquez Ibarra", "monica.vazquez@example.com"},
    {"Luis Enrique Castañeda Mora", ""},
    {"Patricia Núñez Carrillo", "paty.nunez@example.com"},
    {"Héctor Manuel Silva Ochoa", "hector.silva@example.com"},
    {"Rosa Elena Cervantes Mejía", "rosa.cervantes@example.com"},
    {"Viajes Colibrí Azul, S.A. de C.V.", "grupos@colibriazul.example.com"},
    {"Reservaciones por Internet", "web@hotel.example.com"},
};
inline constexpr int kPersonas = 23;  // the clients that are people come first
inline constexpr int kAgencia = 24;
inline constexpr int kClienteWeb = 25;

inline constexpr double kImpuesto = 0.16;
inline constexpr double kImpuestoFrontera = 0.08;
inline constexpr double kDolar = 18.5;
inline constexpr double kEuro = 20.1;

}  // namespace esquema::demo
