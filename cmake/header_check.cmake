# Every header compiles by itself: the target `header_check`, which is built only when asked for,
# includes each header of the library that belongs to this home in a source of its own. The compiler
# only reads them, so that there is nothing to keep and each build looks again.
function(quendal_add_header_check)
  if(WIN32)
    set(other_home posix)
  else()
    set(other_home windows)
  endif()
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/src/*.h ${PROJECT_SOURCE_DIR}/include/*.h)
  list(FILTER headers EXCLUDE REGEX "/src/.*/${other_home}/")
  foreach(header ${headers})
    file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${header})
    string(MAKE_C_IDENTIFIER ${name} name)
    set(source ${PROJECT_BINARY_DIR}/generated/header_check/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n")
    list(APPEND sources ${source})
  endforeach()
  add_library(header_check OBJECT EXCLUDE_FROM_ALL ${sources})
  target_compile_options(header_check PRIVATE -fsyntax-only)
  target_link_libraries(header_check PRIVATE quendal_objects)
endfunction()
