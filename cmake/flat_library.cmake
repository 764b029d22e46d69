# The flat library: the frame and the families, as one shared object that exports the
# flat functions and nothing else.
add_library(zolExportedApi_ReadOnly SHARED)
target_link_libraries(zolExportedApi_ReadOnly PRIVATE
    zol_api zol_api_tick
    zol_block_family zolBlockExport
    zol_design_family zolDesignExport
    zol_tri_family zolTriangulationExport zol_support_ground
    zol_grid_family zolGridExport
    zolGeometryExport)
target_include_directories(zolExportedApi_ReadOnly INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/api>)
set(export_map ${PROJECT_SOURCE_DIR}/api/exports.map)
target_link_options(zolExportedApi_ReadOnly PRIVATE -Wl,--version-script=${export_map})
set_target_properties(zolExportedApi_ReadOnly PROPERTIES
    LINK_DEPENDS ${export_map}
    LINKER_LANGUAGE CXX
    INSTALL_RPATH "$ORIGIN")
