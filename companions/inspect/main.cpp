#include <iostream>

#include "inspect/inspect_run.h"
#include "inspect/progress.h"

int main(int argc, char* argv[]) {
    return orbconv::inspect::inspect(argc, argv, std::cout, std::cerr,
                                     orbconv::inspect::errorStreamIsTerminal());
}
