# Without these cpack makes a package that depends on nothing: it installs, and does not start.
foreach(outil dpkg-shlibdeps file)
  find_program(OUTIL_${outil} ${outil})
  if(NOT OUTIL_${outil})
    message(FATAL_ERROR "Il manque ${outil} (paquets dpkg-dev et file) : ./paquet.sh les installe.")
  endif()
endforeach()
