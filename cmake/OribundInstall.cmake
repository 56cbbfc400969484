# Installing the library: the shared object, every header, and a package that find_package(oribund) finds.
include(CMakePackageConfigHelpers)

install(TARGETS oribund EXPORT oribundTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/oribund DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT library
        FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT library)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/oribund)
install(EXPORT oribundTargets NAMESPACE oribund:: DESTINATION ${package_dir} COMPONENT library)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/oribundConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/oribundConfig.cmake INSTALL_DESTINATION ${package_dir})
# Before 1.0 a minor version may break what the one before it promised.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/oribundConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/oribundConfig.cmake ${PROJECT_BINARY_DIR}/oribundConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT library)
