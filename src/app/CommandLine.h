#pragma once

namespace tv {

// Runs the program for its command line; returns the exit status.
int RunCommandLine(int argc, char** argv);

} // namespace tv
