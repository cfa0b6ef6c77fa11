# `cmake --install` of the Linux home: the library, its headers, a CMake package, a pkg-config file,
# the documentation and the examples.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set_target_properties(quendal_classic_asp PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME classic_asp)
target_compile_features(quendal_classic_asp INTERFACE cxx_std_20)
add_library(quendal::classic_asp ALIAS quendal_classic_asp)

set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/quendal_classic_asp)
install(TARGETS quendal_classic_asp EXPORT quendal_classic_asp
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/quendal src/automation/posix/include/quendal
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# The targets are the whole package: a consumer needs nothing else.
install(EXPORT quendal_classic_asp NAMESPACE quendal:: DESTINATION ${cmake_folder}
  FILE quendal_classic_asp-config.cmake)
set(version_file ${CMAKE_CURRENT_BINARY_DIR}/generated/quendal_classic_asp-config-version.cmake)
write_basic_package_version_file(${version_file} COMPATIBILITY SameMajorVersion)
install(FILES ${version_file} DESTINATION ${cmake_folder})

# The pkg-config file finds the folders from its own place, so that the tree can be moved.
file(RELATIVE_PATH prefix_from_pkgconfig
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig ${prefix_from_pkgconfig})
set(pkgconfig_file ${CMAKE_CURRENT_BINARY_DIR}/generated/quendal_classic_asp.pc)
configure_file(packaging/quendal_classic_asp.pc.in ${pkgconfig_file} @ONLY)
install(FILES ${pkgconfig_file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

file(GLOB pages CONFIGURE_DEPENDS docs/*.md)
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY docs/images DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(FILES examples/native_host.cpp DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(DIRECTORY examples/cmake_consumer DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
