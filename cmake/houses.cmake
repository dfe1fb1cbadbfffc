# One folder of src/ is one library. Its headers are reached as "folder/header.h" through a link of its
# own, so that a file can include only what its folder says it stands on: a wrong include finds no header.
#
#   tolva_library(dao STANDS_ON sql)
#
# takes every .cpp of the current folder into the library tolva_dao.
function(tolva_library folder)
  cmake_parse_arguments(ARG "" "" "STANDS_ON" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  set(room ${CMAKE_BINARY_DIR}/houses/${folder})
  file(MAKE_DIRECTORY ${room})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${room}/${folder} SYMBOLIC)
  set(kind STATIC)
  set(scope PUBLIC)
  if(NOT sources MATCHES "cpp")
    set(kind INTERFACE)
    set(scope INTERFACE)
  endif()
  add_library(tolva_${folder} ${kind} ${sources})
  target_include_directories(tolva_${folder} ${scope} ${room})
  foreach(below IN LISTS ARG_STANDS_ON)
    target_link_libraries(tolva_${folder} ${scope} tolva_${below})
  endforeach()
endfunction()
