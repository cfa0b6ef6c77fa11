# What the interface definition says of the component, so that every identifier is written once.

# read_interface_definition(IDL): sets in the caller
#   library_id, library_version, library_name, library_help   the type library
#   classes      those that clients can create: class_ID_id, class_ID_help for each name ID
#   interfaces   those that the system marshals by the type library: interface_NAME_id for each
function(read_interface_definition idl)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl})
  file(READ ${idl} text)
  # Brackets and semicolons have a meaning in lists.
  string(REGEX REPLACE "[][;]" "|" text "${text}")
  set(uuid "uuid\\(([-0-9A-F]+)\\)")
  set(help "helpstring\\(\"([^\"]*)\"\\)")

  string(REGEX MATCH "${uuid}, version\\(([0-9.]+)\\), ${help}\\|[ \n]*library ([A-Z_]+)" found "${text}")
  set(library_id ${CMAKE_MATCH_1} PARENT_SCOPE)
  set(library_version ${CMAKE_MATCH_2} PARENT_SCOPE)
  set(library_help "${CMAKE_MATCH_3}" PARENT_SCOPE)
  set(library_name ${CMAKE_MATCH_4} PARENT_SCOPE)
  set(complete ${CMAKE_MATCH_4})

  # A class that clients cannot create has one attribute more.
  set(creatable "${uuid}, ${help}\\|[ \n]*coclass ([A-Za-z]+)")
  set(classes "")
  string(REGEX MATCHALL "${creatable}" found "${text}")
  foreach(class IN LISTS found)
    string(REGEX MATCH "${creatable}" class "${class}")
    list(APPEND classes ${CMAKE_MATCH_3})
    set(class_${CMAKE_MATCH_3}_id ${CMAKE_MATCH_1} PARENT_SCOPE)
    set(class_${CMAKE_MATCH_3}_help "${CMAKE_MATCH_2}" PARENT_SCOPE)
  endforeach()
  set(classes ${classes} PARENT_SCOPE)

  set(dual "${uuid}[^|]*\\|[ \n]*interface (_[A-Za-z]+) : IDispatch")
  set(interfaces "")
  string(REGEX MATCHALL "${dual}" found "${text}")
  foreach(interface IN LISTS found)
    string(REGEX MATCH "${dual}" interface "${interface}")
    list(APPEND interfaces ${CMAKE_MATCH_2})
    set(interface_${CMAKE_MATCH_2}_id ${CMAKE_MATCH_1} PARENT_SCOPE)
  endforeach()
  set(interfaces ${interfaces} PARENT_SCOPE)

  if(NOT complete OR NOT classes OR NOT interfaces)
    message(FATAL_ERROR "${idl}: the library, its classes or its interfaces were not found")
  endif()
endfunction()
