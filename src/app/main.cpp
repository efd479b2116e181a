#include "app/CommandLine.h"

int main(int argc, char** argv) {
    return tv::RunCommandLine(argc, argv);
}
