# Read by CPack once for each kind of package: which components go into it, and where they stand.
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_COMPONENTS_ALL orbconv debian)
else()
    set(CPACK_COMPONENTS_ALL orbconv archive)
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
