# Runs one script in a folder of its own and compares its transcript byte for byte. A transcript that is missing is a
# failure; nothing here ever writes one.
cmake_minimum_required(VERSION 3.25)
if(NOT EXISTS "${ESPERADA}")
  message(FATAL_ERROR "There is no transcript ${ESPERADA}")
endif()

file(STRINGS "${GUION}" primera LIMIT_COUNT 1 ENCODING UTF-8)
set(opciones)
if(primera MATCHES "^# opciones: (.*)$")
  separate_arguments(opciones UNIX_COMMAND "${CMAKE_MATCH_1}")
endif()

if(POSTGRES)
  get_filename_component(base ${GUION} NAME_WE)
  string(REGEX MATCH "[0-9]+$" puerto ${POSTGRES})
  foreach(sentencia "DROP DATABASE IF EXISTS guion_${base}" "CREATE DATABASE guion_${base}")
    execute_process(COMMAND psql -q -h ${POSTGRES} -p ${puerto} -U hotel postgres -c ${sentencia} ERROR_VARIABLE errores RESULT_VARIABLE mal)
    if(mal)
      message(FATAL_ERROR "${errores}")
    endif()
  endforeach()
  list(APPEND opciones --conexion "postgresql://hotel@/guion_${base}?port=${puerto}&host=${POSTGRES}")
endif()

file(REMOVE_RECURSE "${TRABAJO}")
file(MAKE_DIRECTORY "${TRABAJO}")
execute_process(
  COMMAND ${CON} "${PROGRAMA}" ${opciones} ${ANTES} "${GUION}"
  WORKING_DIRECTORY "${TRABAJO}"
  OUTPUT_FILE "${TRABAJO}/salida"
  ERROR_FILE "${TRABAJO}/errores"
  RESULT_VARIABLE resultado)

execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${TRABAJO}/salida" "${ESPERADA}" RESULT_VARIABLE distinta
                ERROR_QUIET OUTPUT_QUIET)
if(distinta)
  execute_process(COMMAND diff -u "${ESPERADA}" "${TRABAJO}/salida" OUTPUT_VARIABLE diferencia)
  file(READ "${TRABAJO}/errores" errores)
  message(FATAL_ERROR "The transcript differs (exit status ${resultado}):\n${diferencia}\n${errores}")
endif()

# 1 when an order was not ok, else 0.
set(debida 0)
file(STRINGS "${ESPERADA}" fallidas REGEX "\"ok\":false" ENCODING UTF-8)
if(fallidas)
  set(debida 1)
endif()
if(NOT resultado STREQUAL debida)
  file(READ "${TRABAJO}/errores" errores)
  message(FATAL_ERROR "Exit status ${resultado} instead of ${debida}\n${errores}")
endif()
