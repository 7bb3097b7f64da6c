// Number of the com::Error that a call raises, 0 when it raises none. Every error must say something to the clerk.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/com/error.h"

namespace pruebas {

template <class Llamada>
int ErrorDe(Llamada llamada) {
  try {
    llamada();
  } catch (const com::Error& e) {
    EXPECT_FALSE(e.Descripcion().empty());
    return e.Numero();
  }
  return 0;
}

// Its text, "" when it raises none.
template <class Llamada>
std::string TextoDeError(Llamada llamada) {
  try {
    llamada();
  } catch (const com::Error& e) {
    return e.Descripcion();
  }
  return {};
}

}  // namespace pruebas
