#include "standard/platform.h"

#ifdef _WIN32
#include <conio.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <iostream>
#else
#include <sys/types.h>
#include <unistd.h>
#endif

namespace orbconv::standard {

#ifdef _WIN32

bool seekTo(std::FILE* file, std::uint64_t offset) {
    return _fseeki64(file, static_cast<long long>(offset), SEEK_SET) == 0;
}

bool errorStreamIsTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

void makeStandardOutputBinary() {
    _setmode(_fileno(stdout), _O_BINARY);
}

void keepOwnWindowOpen() {
    // A window that was there before the program has another process on its list.
    DWORD process = 0;
    if (GetConsoleProcessList(&process, 1) == 1 && errorStreamIsTerminal() && _isatty(_fileno(stdin)) != 0) {
        std::cerr << "Press a key to close this window." << std::endl;
        _getch();
    }
}

#else

bool seekTo(std::FILE* file, std::uint64_t offset) {
    return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool errorStreamIsTerminal() {
    return isatty(fileno(stderr)) != 0;
}

void makeStandardOutputBinary() {}

void keepOwnWindowOpen() {}

#endif

}  // namespace orbconv::standard
