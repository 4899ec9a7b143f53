# The lines of the house: each folder is a target that sees the headers of the targets it links, and no others.
#
# Headers are included by their place in the tree ("power/power.h"). Each target gets a folder of links to its own
# headers as its only include folder, so that including a layer above one's own does not compile.
function(kestrel_entetes name)
  set(racine ${PROJECT_BINARY_DIR}/include/${name})
  file(REMOVE_RECURSE ${racine})
  file(RELATIVE_PATH dossier ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  file(MAKE_DIRECTORY ${racine}/${dossier})
  foreach(entete ${ARGN})
    get_filename_component(fichier ${entete} NAME)
    file(CREATE_LINK ${entete} ${racine}/${dossier}/${fichier} SYMBOLIC)
  endforeach()
  target_include_directories(${name} PUBLIC ${racine})
endfunction()

# kestrel_library(NAME target... [FICHIERS stem...]): a static library of the sources and headers that stand
# directly in this folder, or of the named ones (stems without ending). It links the targets.
function(kestrel_library name)
  cmake_parse_arguments(PARSE_ARGV 1 A "" "" "FICHIERS")
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  file(GLOB entetes CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(A_FICHIERS)
    string(REPLACE ";" "|" tiges "${A_FICHIERS}")
    list(FILTER sources INCLUDE REGEX "/(${tiges})\\.cpp$")
    list(FILTER entetes INCLUDE REGEX "/(${tiges})\\.h$")
  endif()
  add_library(${name} STATIC ${sources} ${entetes})
  # The Python module is a shared object that holds the models.
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${name} PRIVATE -fno-semantic-interposition)
  kestrel_entetes(${name} ${entetes})
  target_link_libraries(${name} PUBLIC ${A_UNPARSED_ARGUMENTS})
endfunction()

# The windows of a folder: the toolkit and all models below, but no window of another folder.
function(kestrel_windows_library name)
  set(CMAKE_AUTOMOC ON)
  kestrel_library(${name} kestrel_widgets kestrel_session ${ARGN})
endfunction()
