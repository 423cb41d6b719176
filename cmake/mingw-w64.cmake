# Toolchain file of the preset windows: cross-compiles for 64-bit Windows with MinGW-w64 in its posix threads
# variant, as Debian and Ubuntu package it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix) # for GoogleTest's build, which asks for it
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

# A program is one file: it needs no library but the system's.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# Programs come from this machine; headers, libraries and packages of this machine are not for Windows.
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
