#include "standard/run.h"

int main(int argc, char* argv[]) {
    return orbconv::standard::run(argc, argv);
}
