#include "standard/stop_request.h"

#include <csignal>

namespace orbconv::standard {

namespace {

// The one thing that a signal may change.
volatile std::sig_atomic_t noted = 0;  // NOLINT(*-avoid-non-const-global-variables)

extern "C" void note(int signal) {
    noted = signal;
}

}  // namespace

void noteStopRequests() {
#ifdef SIGHUP
    // A run that is to outlive its terminal has been told so by its parent.
    if (std::signal(SIGHUP, note) == SIG_IGN) {
        std::signal(SIGHUP, SIG_IGN);
    }
#endif
    std::signal(SIGINT, note);
    std::signal(SIGTERM, note);
}

int stopRequested() {
    return noted;
}

void endIfAsked() {
    if (stopRequested() != 0) {
        throw Stopped{};
    }
}

int endAsRequested() {
    std::signal(noted, SIG_DFL);
    return std::raise(noted);
}

}  // namespace orbconv::standard
