# What an installed copy holds: the libraries, the tool, the public headers,
# and a description of them for CMake and for pkg-config.
include(CMakePackageConfigHelpers)

set(zol_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zol)
file(RELATIVE_PATH zol_bin_to_lib
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})

# No version in the file names: the libraries find each other by exact name, in
# their own folder, so that one of them can be replaced without relinking.
set_target_properties(zol PROPERTIES INSTALL_RPATH "$ORIGIN/${zol_bin_to_lib}")
target_include_directories(zolExportedApi_ReadOnly INTERFACE
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

install(TARGETS
    zolExportedApi_ReadOnly
    zolBlockExport zolDesignExport zolTriangulationExport zolGridExport zolGeometryExport
    ZelmarDevAExport
    EXPORT zolTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
# Loaded by the grid library when a raster is opened.
install(TARGETS zolGridRasters LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS zol RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES api/zolExportedApi_ReadOnly.h api/zolExportedApi_ReadOnly.hpp
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

# find_package(zol) gives the target zol::zolExportedApi_ReadOnly.
install(EXPORT zolTargets NAMESPACE zol:: DESTINATION ${zol_package_dir})
configure_package_config_file(cmake/zolConfig.cmake.in ${PROJECT_BINARY_DIR}/zolConfig.cmake
    INSTALL_DESTINATION ${zol_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zolConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zolConfig.cmake ${PROJECT_BINARY_DIR}/zolConfigVersion.cmake
    DESTINATION ${zol_package_dir})

# The prefix is found from where zol.pc lies, so an installed copy can be moved.
file(RELATIVE_PATH zol_pc_to_prefix
    ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/+$" "" zol_pc_to_prefix "${zol_pc_to_prefix}")
configure_file(cmake/zol.pc.in ${PROJECT_BINARY_DIR}/zol.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zol.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
