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
  if(NOT sources MATCHES "cpp")
    return()
  endif()
  add_library(tolva_${folder} STATIC ${sources})
  set_target_properties(tolva_${folder} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(tolva_${folder} PUBLIC ${room})
  foreach(below IN LISTS ARG_STANDS_ON)
    if(TARGET tolva_${below})
      target_link_libraries(tolva_${folder} PUBLIC tolva_${below})
    else()
      target_include_directories(tolva_${folder} PUBLIC ${CMAKE_BINARY_DIR}/houses/${below})
    endif()
  endforeach()
endfunction()
