# The libraries when the compiler builds for another system: made out of what this machine's packages hold
# in source form. Nothing is copied; links and objects stand in the build folder.

# Some are headers alone. Their folder holds the headers of this machine's own system too, which a compiler for
# another system must not see: it is given a folder that links to those libraries' headers and no others.
function(orbconv_host_headers package version folder)
    set(places "")
    foreach(place IN ITEMS /usr/local/lib* /usr/local/lib/* /usr/local/share /usr/lib* /usr/lib/* /usr/share)
        file(GLOB found ${place}/cmake/${package})
        list(APPEND places ${found})
    endforeach()
    find_package(${package} ${version} QUIET CONFIG GLOBAL NO_CMAKE_FIND_ROOT_PATH PATHS ${places})
    if(${package}_FOUND)
        get_target_property(includeFolders ${package}::${package} INTERFACE_INCLUDE_DIRECTORIES)
        list(GET includeFolders 0 includeFolder)
        set(hostHeaders ${PROJECT_BINARY_DIR}/host-headers)
        file(MAKE_DIRECTORY ${hostHeaders})
        file(CREATE_LINK ${includeFolder}/${folder} ${hostHeaders}/${folder} SYMBOLIC)
        set_target_properties(${package}::${package} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${hostHeaders})
    endif()
    foreach(result IN ITEMS FOUND CONSIDERED_VERSIONS)
        set(${package}_${result} "${${package}_${result}}" PARENT_SCOPE)
    endforeach()
endfunction()
orbconv_host_headers(argparse 3.1 argparse)
orbconv_host_headers(nlohmann_json 3.9 nlohmann)

# GoogleTest is built from the sources that Debian's libgtest-dev brings along.
set(ORBCONV_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's sources, for a cross build")
function(orbconv_add_googletest)
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    set(INSTALL_GTEST OFF)
    string(APPEND CMAKE_CXX_FLAGS_RELEASE " -O1")
    add_subdirectory(${ORBCONV_GOOGLETEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endfunction()
if(ORBCONV_BUILD_TESTS AND EXISTS ${ORBCONV_GOOGLETEST_SOURCE}/CMakeLists.txt)
    orbconv_add_googletest()
endif()
