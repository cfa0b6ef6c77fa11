# The COM component: one DLL that needs no runtime beside it, with its type library and version
# resource inside.

set(QUENDAL_WINE_INCLUDE /usr/include/wine/wine/windows
  CACHE PATH "Where the interface definitions (*.idl) are that the type library imports")
set(QUENDAL_WINE_LIBRARY /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
  CACHE PATH "Where stdole2.tlb is")

set(idl ${CMAKE_CURRENT_SOURCE_DIR}/src/component/QUENDAL_REPORTS_ASP.idl)
set(typelib ${CMAKE_CURRENT_BINARY_DIR}/QUENDAL_REPORTS_ASP.tlb)
add_custom_command(OUTPUT ${typelib}
  COMMAND ${QUENDAL_WIDL} -m${QUENDAL_BITS} -t -I${QUENDAL_WINE_INCLUDE} -L${QUENDAL_WINE_LIBRARY}
          -o ${typelib} ${idl}
  COMMAND perl ${CMAKE_CURRENT_LIST_DIR}/undate_typelib.pl ${typelib}
  DEPENDS ${idl} ${CMAKE_CURRENT_LIST_DIR}/undate_typelib.pl
  VERBATIM)

enable_language(RC)
configure_file(src/component/windows/component.rc.in generated/component.rc @ONLY)
set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/generated/component.rc
  PROPERTIES OBJECT_DEPENDS ${typelib})

file(GLOB component_sources CONFIGURE_DEPENDS src/component/windows/*.cpp)
add_library(QUENDAL_CLASSIC_ASP SHARED ${component_sources}
  src/component/windows/exports.def ${CMAKE_CURRENT_BINARY_DIR}/generated/component.rc)
set_target_properties(QUENDAL_CLASSIC_ASP PROPERTIES PREFIX "" SUFFIX ".DLL")
target_link_libraries(QUENDAL_CLASSIC_ASP PRIVATE quendal_objects)
target_link_options(QUENDAL_CLASSIC_ASP PRIVATE -static -s -Wl,--no-insert-timestamp)
if(QUENDAL_BITS EQUAL 32)
  # The file says why.
  target_sources(QUENDAL_CLASSIC_ASP PRIVATE src/component/windows/x86/own_unwinder.cpp)
  target_link_options(QUENDAL_CLASSIC_ASP PRIVATE "LINKER:--wrap=_imp__GetModuleHandleA@4")
endif()
