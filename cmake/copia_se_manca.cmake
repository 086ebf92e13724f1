# Copia SORGENTE in DESTINAZIONE solo se DESTINAZIONE non esiste ancora.
if(NOT EXISTS "${DESTINAZIONE}")
  get_filename_component(_dir "${DESTINAZIONE}" DIRECTORY)
  file(MAKE_DIRECTORY "${_dir}")
  file(COPY_FILE "${SORGENTE}" "${DESTINAZIONE}")
  message(STATUS "Database consegnato copiato in ${DESTINAZIONE}")
endif()
