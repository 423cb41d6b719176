# The libraries that come from the system. All of them are imported targets, so that CMake treats their
# headers as system headers.

if(CMAKE_CROSSCOMPILING)
    include(CrossDependencies)
else()
    find_package(argparse 3.1 QUIET CONFIG)
    find_package(nlohmann_json 3.9 QUIET CONFIG)
    if(ORBCONV_BUILD_TESTS)
        find_package(GTest QUIET CONFIG)
    endif()
endif()

# A program for another system is one file. Those for this one use the system's zlib, which every Linux has.
set(ZLIB_USE_STATIC_LIBS ${CMAKE_CROSSCOMPILING})
find_package(ZLIB QUIET)

if(NOT argparse_FOUND)
    set(found "No argparse was found.")
    if(argparse_CONSIDERED_VERSIONS)
        list(JOIN argparse_CONSIDERED_VERSIONS ", " found)
        set(found "Found only version ${found}, which will not do.")
    endif()
    message(FATAL_ERROR
        "orbconv needs the C++ library argparse, 3.1 or later (before 4), with its CMake package. ${found}\n"
        "On Debian and Ubuntu run scripts/setup, which installs it. Elsewhere install argparse and, if it "
        "stands in a place of its own, add -DCMAKE_PREFIX_PATH=<that place>.")
endif()

if(EXISTS ${PROJECT_SOURCE_DIR}/companions/CMakeLists.txt AND NOT nlohmann_json_FOUND)
    message(FATAL_ERROR
        "orbconv-inspect needs the C++ library nlohmann-json, 3.9 or later, with its CMake package. On Debian "
        "and Ubuntu run scripts/setup, which installs it.")
endif()

if(EXISTS ${PROJECT_SOURCE_DIR}/companions/CMakeLists.txt AND NOT ZLIB_FOUND)
    message(FATAL_ERROR
        "orbconv-standard needs zlib with its headers. On Debian and Ubuntu run scripts/setup, which installs it; "
        "for a cross build with --windows or --big-endian.")
endif()

if(ORBCONV_BUILD_TESTS AND NOT TARGET GTest::gmock)
    message(FATAL_ERROR
        "The test suite needs GoogleTest with GoogleMock. On Debian and Ubuntu run "
        "scripts/setup, which installs it, or build without tests: -DORBCONV_BUILD_TESTS=OFF.")
endif()

if(ORBCONV_BUILD_BENCHMARKS AND NOT benchmark_FOUND)
    message(FATAL_ERROR
        "The benchmarks need Google Benchmark. On Debian and Ubuntu run scripts/setup, which installs it, "
        "or build without them: -DORBCONV_BUILD_BENCHMARKS=OFF.")
endif()
