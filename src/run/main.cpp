#include <iostream>

#include "run/conversion_run.h"

// Deliberate: what the run does not catch (a bad command line, say) ends the process abnormally. It is caught
// here only to be thrown on: so the files on the way are closed with all that was written to them.
int main(int argc, char* argv[]) {  // NOLINT(bugprone-exception-escape)
    try {
        return orbconv::convert(argc, argv);
    } catch (...) {
        std::cout.flush();
        throw;
    }
}
