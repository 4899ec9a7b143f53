# Installation and the Debian packages: the program, the Python module and the MPI program.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME kestrel)

set(KESTREL_ID fr.kestrel.Kestrel)
set(PAQUET ${PROJECT_SOURCE_DIR}/data/paquet)

# The program lives in a folder of its own, because its working folder is its own folder where it can be written
# to; the command is a link.
install(TARGETS kestrel RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/kestrel)
install(CODE "
  set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
  file(MAKE_DIRECTORY \"\${bin}\")
  file(CREATE_LINK \"../${CMAKE_INSTALL_LIBDIR}/kestrel/kestrel\" \"\${bin}/kestrel\" SYMBOLIC)"
  COMPONENT kestrel)
install(TARGETS kestrel_batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES data/flux_solaire.txt data/densite.txt data/igrf14.txt data/stations.txt data/land110m.geojson
        DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel/data)
install(DIRECTORY data/exemples data/composants DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel/data)
install(FILES docs/guide.md DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel/data/guide OPTIONAL)
install(DIRECTORY docs/images DESTINATION ${CMAKE_INSTALL_DATADIR}/kestrel/data/guide OPTIONAL)
install(FILES ${PAQUET}/${KESTREL_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PAQUET}/${KESTREL_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PAQUET}/${KESTREL_ID}.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES data/icones/kestrel.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        RENAME ${KESTREL_ID}.svg OPTIONAL)
install(FILES ${PAQUET}/application-x-kestrel-etude.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes)
install(FILES ${PAQUET}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kestrel)

find_program(GZIP gzip REQUIRED)
foreach(page kestrel.1 kestrel_batch.1 changelog)
  set(compresse ${CMAKE_CURRENT_BINARY_DIR}/${page}.gz)
  add_custom_command(OUTPUT ${compresse} DEPENDS ${PAQUET}/${page}
                     COMMAND ${GZIP} -9 -n -c ${PAQUET}/${page} > ${compresse})
  list(APPEND pages ${compresse})
endforeach()
add_custom_target(pages_compressees ALL DEPENDS ${pages})
list(POP_BACK pages journal)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${journal} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kestrel)

if(TARGET kestrel_batch_mpi)
  install(TARGETS kestrel_batch_mpi RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT kestrel-mpi)
  install(FILES ${PAQUET}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kestrel-mpi COMPONENT kestrel-mpi)
  install(FILES ${journal} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kestrel-mpi COMPONENT kestrel-mpi)
endif()
if(TARGET kestrel_python)
  set(python lib/python3/dist-packages)
  install(TARGETS kestrel_python LIBRARY DESTINATION ${python} COMPONENT python3-kestrel)
  install(FILES ${PROJECT_BINARY_DIR}/python/kestrel.pyi DESTINATION ${python}/kestrel-stubs RENAME __init__.pyi
          COMPONENT python3-kestrel)
  install(FILES ${PAQUET}/copyright docs/python.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-kestrel
          COMPONENT python3-kestrel)
  install(FILES ${journal} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-kestrel COMPONENT python3-kestrel)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kestrel)
set(CPACK_PACKAGE_CONTACT "The KESTREL developers <kestrel@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "simulator of a small Earth-orbiting satellite")
set(CPACK_DEBIAN_KESTREL_DESCRIPTION
"KESTREL simulates a small satellite for teaching and early
engineering: orbit and environment, solar panels, thermal model,
battery and power management, disturbance torques and attitude.
The user interface is in French. A batch program runs the same
models without a window and writes CSV.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Plugins and translations that no library dependency shows.
set(CPACK_DEBIAN_KESTREL_PACKAGE_NAME kestrel)
set(CPACK_DEBIAN_KESTREL_PACKAGE_DEPENDS "libqt6svg6, qt6-translations-l10n")
set(CPACK_DEBIAN_KESTREL_PACKAGE_RECOMMENDS "qt6-wayland")
# The other two read the data files of the first.
set(CPACK_DEBIAN_KESTREL-MPI_DESCRIPTION
"This package has the batch program for clusters, whose sweeps are
shared out by Open MPI.")
set(CPACK_DEBIAN_KESTREL-MPI_PACKAGE_NAME kestrel-mpi)
set(CPACK_DEBIAN_KESTREL-MPI_PACKAGE_SECTION science)
set(CPACK_DEBIAN_KESTREL-MPI_PACKAGE_DEPENDS "kestrel (= ${PROJECT_VERSION}), openmpi-bin")
set(CPACK_DEBIAN_PYTHON3-KESTREL_DESCRIPTION
"This package has the Python module: runs, budgets, passes and sweeps
as numpy columns.")
set(CPACK_DEBIAN_PYTHON3-KESTREL_PACKAGE_NAME python3-kestrel)
set(CPACK_DEBIAN_PYTHON3-KESTREL_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON3-KESTREL_PACKAGE_DEPENDS
    "kestrel (= ${PROJECT_VERSION}), ${PYTHON_KESTREL_PAQUETS}, python3-numpy")
# Read when cpack runs.
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/paquet_entier.cmake)
include(CPack)
