# What `cmake --install` puts into a prefix: the library, its header, edicheck, and the two descriptions by which other
# builds find them: pkg-config's ediexit.pc, and a CMake package that gives ediexit::ediexit. Both find the prefix from
# where they lie, so that an installed tree can be moved. `cpack` makes two Debian packages of the same files.
include(CMakePackageConfigHelpers)

install(TARGETS ediexit EXPORT ediexit-targets
  LIBRARY
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
    NAMELINK_COMPONENT dev
)
install(TARGETS edicheck RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(FILES ${PROJECT_SOURCE_DIR}/include/ediexit.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)

# pkg-config
set(PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH PREFIX_FROM_PKGCONFIG /${PKGCONFIG_DIR} /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/ediexit.pc.in ${PROJECT_BINARY_DIR}/ediexit.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ediexit.pc DESTINATION ${PKGCONFIG_DIR} COMPONENT dev)

# CMake package. It depends on nothing, so the list of targets is the whole of its configuration.
set(PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ediexit)
install(EXPORT ediexit-targets
  FILE ediexit-config.cmake NAMESPACE ediexit:: DESTINATION ${PACKAGE_DIR} COMPONENT dev)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ediexit-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ediexit-config-version.cmake DESTINATION ${PACKAGE_DIR} COMPONENT dev)

# Debian packages: ediexit to run, ediexit-dev to build hosts against it.
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "ediexit maintainers <maintainers@ediexit.invalid>")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ediexit)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME ediexit-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "ediexit (= ${PROJECT_VERSION})")
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
if(DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
endif()
include(CPack)
