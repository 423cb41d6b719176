# How every target of this project is compiled: link orbconv_build_flags PRIVATE.
add_library(orbconv_build_flags INTERFACE)

if(NOT CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang|AppleClang)$")
    message(FATAL_ERROR "orbconv is built with GCC or Clang, not with ${CMAKE_CXX_COMPILER_ID}.")
endif()
# std::to_chars for floating point is there from GCC's library 11 on.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 11)
    message(FATAL_ERROR "orbconv needs GCC 11 or later; this is ${CMAKE_CXX_COMPILER_VERSION}.")
endif()

# A warning is an error. A compiler newer than those that the project is tried with may know further
# warnings; configuring with --compile-no-warning-as-error lets them pass.
if(NOT DEFINED CMAKE_COMPILE_WARNING_AS_ERROR)
    set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
endif()

target_compile_options(orbconv_build_flags INTERFACE
    # A product and a sum are rounded one after the other, as written: the same bytes on every machine.
    -ffp-contract=off

    -Wall
    -Wextra
    -Wpedantic
    -Wcast-align
    -Wcast-qual
    -Wconversion
    -Wextra-semi
    -Wfloat-conversion
    -Wformat=2
    -Wimplicit-fallthrough
    -Wnon-virtual-dtor
    -Wold-style-cast
    -Woverloaded-virtual
    -Wshadow
    -Wsign-conversion
    -Wundef
    -Wunused)

# Instructions of every 64-bit x86, in the order and choice that suit those of the last ten years: some 5 %.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    target_compile_options(orbconv_build_flags INTERFACE -mtune=haswell)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Clang's -Wdouble-promotion also reports a float handed to a double parameter, and that is how
    # 32-bit values are printed; GCC's reports arithmetic alone.
    target_compile_options(orbconv_build_flags INTERFACE
        -Wdouble-promotion
        -Wduplicated-cond
        -Wlogical-op)
    # The instrumentation of the sanitizers, which see the real thing at run time, makes these two
    # report paths that do not exist.
    if(ORBCONV_SANITIZE)
        target_compile_options(orbconv_build_flags INTERFACE -Wno-maybe-uninitialized -Wno-null-dereference)
    else()
        target_compile_options(orbconv_build_flags INTERFACE -Wnull-dereference)
    endif()
    # Where the optimiser is held back, as for another system, GCC takes an empty std::optional for one that is
    # read. The builds for this system see the paths.
    if(CMAKE_CROSSCOMPILING)
        target_compile_options(orbconv_build_flags INTERFACE -Wno-maybe-uninitialized)
    endif()
    # GCC 12 reports overlapping copies inside its own std::string.
    if(CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12 AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(orbconv_build_flags INTERFACE -Wno-restrict)
    endif()
else()
    target_compile_options(orbconv_build_flags INTERFACE
        -Wnull-dereference
        -Wnewline-eof
        -Wunreachable-code)
endif()

# The checks of the standard library's containers, wherever speed is not the point.
target_compile_definitions(orbconv_build_flags INTERFACE
    $<$<OR:$<CONFIG:Debug>,$<BOOL:${ORBCONV_SANITIZE}>,$<BOOL:${ORBCONV_FUZZ}>>:_GLIBCXX_ASSERTIONS>)

set(sanitizers "")
if(ORBCONV_SANITIZE OR ORBCONV_FUZZ)
    list(APPEND sanitizers address undefined float-cast-overflow)
endif()
if(ORBCONV_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "The fuzz targets need Clang: use the preset fuzz.")
    endif()
    # Coverage for all code; a fuzz target adds -fsanitize=fuzzer, which brings the main function. Comparisons
    # are not traced: that would take half of the time, and the mutators know what is compared.
    list(APPEND sanitizers fuzzer-no-link)
    target_compile_options(orbconv_build_flags INTERFACE -fno-sanitize-coverage=trace-cmp)
endif()
if(sanitizers)
    list(JOIN sanitizers "," sanitizers)
    target_compile_options(orbconv_build_flags INTERFACE
        -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(orbconv_build_flags INTERFACE -fsanitize=${sanitizers})
endif()

set(isProgram $<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>)
if(ORBCONV_SANITIZE)
    target_sources(orbconv_build_flags INTERFACE $<${isProgram}:${CMAKE_CURRENT_LIST_DIR}/sanitizer_options.cpp>)
endif()

if(WIN32)
    # MinGW declares what has a format so that one that is put together at run time is reported even where
    # this is meant, as in tests that print a number in every form.
    target_compile_options(orbconv_build_flags INTERFACE -Wno-format-nonliteral)
    # Every program carries the manifest.
    target_sources(orbconv_build_flags INTERFACE $<${isProgram}:${CMAKE_CURRENT_LIST_DIR}/windows.rc>)
endif()
