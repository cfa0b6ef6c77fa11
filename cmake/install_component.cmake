# `cmake --install` of the Windows home: a folder for the bitness with the DLL, the type library and
# the manifests, and beside it the commands, the documentation and the examples. Both bitnesses
# install into the same folder; x64 adds the page host, and describes the installer's package.
include(${CMAKE_CURRENT_LIST_DIR}/component_manifest.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/installer_source.cmake)

if(QUENDAL_BITS EQUAL 64)
  set(folder x64)
  set(manifest_architecture amd64)
else()
  set(folder x86)
  set(manifest_architecture x86)
endif()

set(QUENDAL_ASSEMBLY Quendal.ClassicAsp)
set(manifest_version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}.0.${PROJECT_VERSION_PATCH})
read_manifest_entries(${idl} manifest_classes manifest_type_library manifest_interfaces)
set(assembly_manifest ${CMAKE_CURRENT_BINARY_DIR}/generated/${QUENDAL_ASSEMBLY}.manifest)
set(client_manifest ${CMAKE_CURRENT_BINARY_DIR}/generated/client.exe.manifest)
configure_file(packaging/assembly.manifest.in ${assembly_manifest} @ONLY)
configure_file(packaging/client.exe.manifest.in ${client_manifest} @ONLY)

install(TARGETS QUENDAL_CLASSIC_ASP RUNTIME DESTINATION ${folder})
install(FILES ${typelib} ${assembly_manifest} ${client_manifest} DESTINATION ${folder})
install(PROGRAMS packaging/register.cmd packaging/unregister.cmd packaging/verify.cmd
  packaging/system_folders.cmd DESTINATION .)
install(DIRECTORY packaging/verify DESTINATION .)
if(QUENDAL_BITS EQUAL 64)
  # The page host takes the classes from the DLL beside it.
  install(PROGRAMS ${CMAKE_CURRENT_BINARY_DIR}/tools/asp_host/asp_host.exe DESTINATION ${folder})
  install(FILES ${client_manifest} DESTINATION ${folder} RENAME asp_host.exe.manifest)
  install(PROGRAMS packaging/try.cmd DESTINATION .)
  configure_installer_source(${idl} packaging/installer.wxs.in
    ${CMAKE_CURRENT_BINARY_DIR}/generated/installer.wxs)
endif()

set(readme ${CMAKE_CURRENT_BINARY_DIR}/generated/README.md)
configure_file(packaging/README.md.in ${readme} @ONLY)
install(FILES ${readme} CHANGELOG.md DESTINATION .)
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)
install(FILES docs/installing.md docs/reference.md docs/behaviour.md DESTINATION docs)
install(DIRECTORY examples/ DESTINATION examples
  PATTERN LOGS EXCLUDE
  PATTERN .gitignore EXCLUDE
  PATTERN native_host.cpp EXCLUDE
  PATTERN cmake_consumer EXCLUDE)

# Shows and tests the use without registration; not installed itself, its source is.
add_executable(registration_free_client EXCLUDE_FROM_ALL examples/registration_free/client.cpp)
set_target_properties(registration_free_client PROPERTIES OUTPUT_NAME client SUFFIX ".exe")
target_compile_definitions(registration_free_client PRIVATE UNICODE _UNICODE)
target_link_libraries(registration_free_client PRIVATE oleaut32 ole32 uuid)
target_link_options(registration_free_client PRIVATE -static)
