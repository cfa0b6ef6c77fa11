# The description of the Windows installer's package, made of the interface definition: the same
# registry values as the component's own registration writes, in the installer's own tables.
include(${CMAKE_CURRENT_LIST_DIR}/component_manifest.cmake)

# registry_values(IDL BITNESS RESULT): sets a variable of the caller's to the values of a bitness.
# The installer puts them into the part of the registry that is for it.
function(registry_values idl bitness result)
  read_interface_definition(${idl})
  set(dll "[#dll_${bitness}]")
  set(values "")
  function(value key text)
    set(values "${values}
              <RegistryValue Root=\"HKLM\" Key=\"Software\\Classes\\${key}\" ${ARGN}
                             Type=\"string\" Value=\"${text}\"/>" PARENT_SCOPE)
  endfunction()

  foreach(class IN LISTS classes)
    set(name ${library_name}.${class})
    set(id "{${class_${class}_id}}")
    value("CLSID\\${id}" ${name})
    value("CLSID\\${id}\\InprocServer32" ${dll})
    value("CLSID\\${id}\\InprocServer32" "Apartment" "Name=\"ThreadingModel\"")
    value("CLSID\\${id}\\ProgID" ${name})
    value("CLSID\\${id}\\Programmable" "")
    value("CLSID\\${id}\\TypeLib" "{${library_id}}")
    value("CLSID\\${id}\\Version" ${library_version})
    value("${name}" "${class_${class}_help}")
    value("${name}\\CLSID" "${id}")
  endforeach()

  set(key "TypeLib\\{${library_id}}\\${library_version}")
  string(REPLACE x86 win32 system ${bitness})
  string(REPLACE x64 win64 system ${system})
  value("${key}" "${library_help}")
  value("${key}\\0\\${system}" ${dll})
  value("${key}\\FLAGS" "8")  # LIBFLAG_FHASDISKIMAGE
  value("${key}\\HELPDIR" "[folder_${bitness}]")

  foreach(interface IN LISTS interfaces)
    set(key "Interface\\{${interface_${interface}_id}}")
    value("${key}" ${interface})
    value("${key}\\ProxyStubClsid" "${AUTOMATION_MARSHALLER}")
    value("${key}\\ProxyStubClsid32" "${AUTOMATION_MARSHALLER}")
    value("${key}\\TypeLib" "{${library_id}}")
    value("${key}\\TypeLib" ${library_version} "Name=\"Version\"")
  endforeach()
  set(${result} "${values}" PARENT_SCOPE)
endfunction()

# stable_id(NAME RESULT): an identifier that belongs to this component and a name for good.
function(stable_id name result)
  string(UUID id NAMESPACE ${library_id} NAME "${name}" TYPE SHA1 UPPER)
  set(${result} ${id} PARENT_SCOPE)
endfunction()

# configure_installer_source(IDL TEMPLATE SOURCE)
function(configure_installer_source idl template source)
  read_interface_definition(${idl})
  registry_values(${idl} x64 registry_x64)
  registry_values(${idl} x86 registry_x86)
  set(event_source "SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\${library_name}")
  stable_id(upgrade upgrade_code)
  foreach(component x64 x86 help pages)
    stable_id(${component} component_${component})
  endforeach()
  configure_file(${template} ${source} @ONLY)
endfunction()
