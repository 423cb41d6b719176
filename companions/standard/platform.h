// What the standard library does not have and each system names otherwise.
#pragma once

#include <cstdint>
#include <cstdio>

namespace orbconv::standard {

// Moves to a place of a file of any size; false if that cannot be.
bool seekTo(std::FILE* file, std::uint64_t offset);

// Whether the error stream goes to a terminal.
bool errorStreamIsTerminal();

}  // namespace orbconv::standard
