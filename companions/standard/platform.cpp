#include "standard/platform.h"

#ifdef _WIN32
#include <io.h>
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

#else

bool seekTo(std::FILE* file, std::uint64_t offset) {
    return fseeko(file, static_cast<off_t>(offset), SEEK_SET) == 0;
}

bool errorStreamIsTerminal() {
    return isatty(fileno(stderr)) != 0;
}

#endif

}  // namespace orbconv::standard
