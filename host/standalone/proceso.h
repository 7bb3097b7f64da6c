// The process that the host runs in.
#pragma once

namespace autonomo {

// A process that holds card data leaves no picture of its memory behind when it dies, nor lets another process of the
// same account read it. Called at the start of each program.
void ProtegeMemoria();

// Variables of the environment that hold passwords. A program that shows a document gets none of them.
inline constexpr const char* kVariablesSecretas[] = {"PGPASSWORD", "RESERVAS_CONTRASENA", "RESERVAS_CORREO_CONTRASENA"};

}  // namespace autonomo
