# The entries of the component's manifest, read from its interface definition, so that every
# identifier is written once.

# read_manifest_entries(IDL CLASSES TYPE_LIBRARY INTERFACES): sets three variables of the caller's
# to the elements for the classes that clients can create, for the type library, and for the
# interfaces that the system marshals between apartments by the type library.
function(read_manifest_entries idl classes_name type_library_name interfaces_name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl})
  file(READ ${idl} text)
  # Brackets and semicolons have a meaning in lists.
  string(REGEX REPLACE "[][;]" "|" text "${text}")
  set(uuid "uuid\\(([-0-9A-F]+)\\)")

  string(REGEX MATCH "${uuid}, version\\(([0-9.]+)\\)[^|]*\\|[ \n]*library ([A-Z_]+)" found "${text}")
  set(library_id ${CMAKE_MATCH_1})
  set(library_version ${CMAKE_MATCH_2})
  set(library_name ${CMAKE_MATCH_3})
  set(type_library "<typelib tlbid=\"{${library_id}}\" version=\"${library_version}\" helpdir=\"\"
             resourceid=\"1\" flags=\"HASDISKIMAGE\"/>")

  # A class that clients cannot create has one attribute more.
  set(creatable "${uuid}, helpstring\\(\"([^\"]*)\"\\)\\|[ \n]*coclass ([A-Za-z]+)")
  set(classes "")
  string(REGEX MATCHALL "${creatable}" found "${text}")
  foreach(class IN LISTS found)
    string(REGEX MATCH "${creatable}" class "${class}")
    string(APPEND classes "
    <comClass clsid=\"{${CMAKE_MATCH_1}}\" progid=\"${library_name}.${CMAKE_MATCH_3}\"
              threadingModel=\"Apartment\" tlbid=\"{${library_id}}\"
              description=\"${CMAKE_MATCH_2}\"/>")
  endforeach()

  set(dual "${uuid}[^|]*\\|[ \n]*interface (_[A-Za-z]+) : IDispatch")
  set(interfaces "")
  string(REGEX MATCHALL "${dual}" found "${text}")
  foreach(interface IN LISTS found)
    string(REGEX MATCH "${dual}" interface "${interface}")
    string(APPEND interfaces "
  <comInterfaceExternalProxyStub name=\"${CMAKE_MATCH_2}\" iid=\"{${CMAKE_MATCH_1}}\"
                                 tlbid=\"{${library_id}}\"
                                 proxyStubClsid32=\"{00020424-0000-0000-C000-000000000046}\"/>")
  endforeach()

  if(NOT library_id OR NOT classes OR NOT interfaces)
    message(FATAL_ERROR "${idl}: the library, its classes or its interfaces were not found")
  endif()
  set(${classes_name} "${classes}" PARENT_SCOPE)
  set(${type_library_name} "${type_library}" PARENT_SCOPE)
  set(${interfaces_name} "${interfaces}" PARENT_SCOPE)
endfunction()
