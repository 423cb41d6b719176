// What the standard library does not have and each system names otherwise.
#pragma once

#include <cstdint>
#include <cstdio>

namespace orbconv::standard {

// Moves to a place of a file of any size; false if that cannot be.
bool seekTo(std::FILE* file, std::uint64_t offset);

// Whether the error stream goes to a terminal.
bool errorStreamIsTerminal();

// No line end of standard output is changed from here on.
void makeStandardOutputBinary();

// Waits for a key if the program has a window that ends with it: Windows opens one for a program that is
// started by a double click, or by files that are dropped on it.
void keepOwnWindowOpen();

}  // namespace orbconv::standard
