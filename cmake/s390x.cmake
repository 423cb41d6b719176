# Toolchain file of the preset s390x: cross-compiles for a machine that puts the highest byte first, with
# Debian's and Ubuntu's packaged compiler. QEMU's user emulation runs what comes out.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR s390x)

set(triple s390x-linux-gnu)
set(CMAKE_C_COMPILER ${triple}-gcc) # for GoogleTest's build, which asks for it
set(CMAKE_CXX_COMPILER ${triple}-g++)

# A program is one file, so that the emulator needs no library of that machine.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-s390x)

# Programs come from this machine; headers, libraries and packages of this machine are not for that one.
# What the compiler does not bring of that machine, scripts/setup unpacks into a place of its own.
set(CMAKE_FIND_ROOT_PATH /usr/${triple} /usr/local/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
