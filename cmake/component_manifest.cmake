# The entries of the component's manifest, made of the interface definition.
include(${CMAKE_CURRENT_LIST_DIR}/interface_definition.cmake)

# The system's marshaller of interfaces that a type library describes.
set(AUTOMATION_MARSHALLER "{00020424-0000-0000-C000-000000000046}")

# read_manifest_entries(IDL CLASSES TYPE_LIBRARY INTERFACES): sets three variables of the caller's
# to the elements for the classes that clients can create, for the type library, and for the
# interfaces that the system marshals between apartments by the type library.
function(read_manifest_entries idl classes_name type_library_name interfaces_name)
  read_interface_definition(${idl})
  set(${type_library_name} "<typelib tlbid=\"{${library_id}}\" version=\"${library_version}\" helpdir=\"\"
             resourceid=\"1\" flags=\"HASDISKIMAGE\"/>" PARENT_SCOPE)

  set(class_entries "")
  foreach(class IN LISTS classes)
    string(APPEND class_entries "
    <comClass clsid=\"{${class_${class}_id}}\" progid=\"${library_name}.${class}\"
              threadingModel=\"Apartment\" tlbid=\"{${library_id}}\"
              description=\"${class_${class}_help}\"/>")
  endforeach()
  set(${classes_name} "${class_entries}" PARENT_SCOPE)

  set(interface_entries "")
  foreach(interface IN LISTS interfaces)
    string(APPEND interface_entries "
  <comInterfaceExternalProxyStub name=\"${interface}\" iid=\"{${interface_${interface}_id}}\"
                                 tlbid=\"{${library_id}}\"
                                 proxyStubClsid32=\"${AUTOMATION_MARSHALLER}\"/>")
  endforeach()
  set(${interfaces_name} "${interface_entries}" PARENT_SCOPE)
endfunction()
