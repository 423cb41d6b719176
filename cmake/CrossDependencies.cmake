# The libraries when the compiler builds for another system: made out of what this machine's packages hold
# in source form. Nothing is copied; links and objects stand in the build folder.

# argparse is a header alone. Its folder holds the headers of this machine's own system too, which a compiler
# for another system must not see: it is given a folder that links to that library's headers and no others.
file(GLOB packageFolders
    /usr/local/lib*/cmake/argparse /usr/local/lib/*/cmake/argparse /usr/local/share/cmake/argparse
    /usr/lib*/cmake/argparse /usr/lib/*/cmake/argparse /usr/share/cmake/argparse)
find_package(argparse 3.1 QUIET CONFIG NO_CMAKE_FIND_ROOT_PATH PATHS ${packageFolders})
if(argparse_FOUND)
    get_target_property(includeFolder argparse::argparse INTERFACE_INCLUDE_DIRECTORIES)
    set(hostHeaders ${PROJECT_BINARY_DIR}/host-headers)
    file(MAKE_DIRECTORY ${hostHeaders})
    file(CREATE_LINK ${includeFolder}/argparse ${hostHeaders}/argparse SYMBOLIC)
    set_target_properties(argparse::argparse PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${hostHeaders})
endif()

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
