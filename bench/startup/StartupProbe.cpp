// The program exactly as tallyview starts it (its own main), ended as soon as its start window
// has painted its first frame: the start-up benchmark's measured child.
#include "ExitWhenShown.h"

#include "app/CommandLine.h"

int main(int argc, char** argv) {
    return tv::RunCommandLine(argc, argv);
}
