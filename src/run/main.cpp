#include "run/conversion_run.h"

// Deliberate: what the run does not catch (a bad command line, say) ends the process abnormally.
int main(int argc, char* argv[]) {  // NOLINT(bugprone-exception-escape)
    return orbconv::convert(argc, argv);
}
