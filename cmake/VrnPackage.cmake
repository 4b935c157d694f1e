# Installs the CMake package: find_package(vrn_qt2 CONFIG) gives vrn::qt2,
# vrn::units and the companions, which need the version of Qt that they were built
# with, and vrn_qt2_DATA_DIR, the folder of the icons.

include(CMakePackageConfigHelpers)

set(vrn_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vrn_qt2")
set(vrn_data_dir "${CMAKE_INSTALL_DATADIR}/vrn_qt2")
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/vrn_qt2Config.cmake.in"
    "${CMAKE_CURRENT_BINARY_DIR}/vrn_qt2Config.cmake"
    INSTALL_DESTINATION "${vrn_package_dir}"
    PATH_VARS vrn_data_dir
)
write_basic_package_version_file(
    "${CMAKE_CURRENT_BINARY_DIR}/vrn_qt2ConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion
)
install(EXPORT vrn_qt2Targets NAMESPACE vrn:: DESTINATION "${vrn_package_dir}")
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/vrn_qt2Config.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/vrn_qt2ConfigVersion.cmake"
    DESTINATION "${vrn_package_dir}"
)
