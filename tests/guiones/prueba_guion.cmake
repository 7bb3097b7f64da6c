# A test for one script: PREFIJO.NAME runs PROGRAMA, by the command CON ("" none), with the script's own options, then
# ANTES (what precedes the script on the command line, "" nothing) and the script, and compares what it prints with the
# transcript SALIDA. What follows is the server's folder, for a run on a new PostgreSQL database.
set(PRUEBA_GUION_CORRE ${CMAKE_CURRENT_LIST_DIR}/corre.cmake)

function(prueba_guion prefijo con programa antes guion salida)
  get_filename_component(nombre ${guion} NAME_WE)
  add_test(NAME ${prefijo}.${nombre}
           COMMAND ${CMAKE_COMMAND} -DCON=${con} -DPROGRAMA=${programa} -DANTES=${antes} -DGUION=${guion}
                   -DESPERADA=${salida} -DTRABAJO=${CMAKE_CURRENT_BINARY_DIR}/${prefijo}_${nombre}
                   -DPOSTGRES=${ARGN} -P ${PRUEBA_GUION_CORRE})
  set_tests_properties(${prefijo}.${nombre} PROPERTIES TIMEOUT 300)
  if(ARGN)
    set_tests_properties(${prefijo}.${nombre} PROPERTIES FIXTURES_REQUIRED postgres)
  endif()
endfunction()
