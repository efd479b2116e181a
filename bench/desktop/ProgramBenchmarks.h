#pragma once
// The benchmarks of the program as a whole: start-up and reading a long transcription.

namespace bench {

void RegisterProgramBenchmarks();

} // namespace bench
