#pragma once
// Times each iteration of a benchmark on the wall clock and reports their median as the counter
// "MedianMs" (milliseconds), which the table of figures uses. Other programs on the machine
// delay some iterations by whole scheduler time slices; the median is what one open, one key
// press or one rotation typically costs, whatever else the machine was doing.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace bench {

class IterationClock {
  public:
    // A clock named "Read" reports "ReadMedianMs": a baseline timed within the same iterations.
    explicit IterationClock(benchmark::State& state, std::string name = {})
        : state_(state), counter_(std::move(name) + "MedianMs") {}
    ~IterationClock() {
        if (times_.empty()) return;
        const auto middle = times_.begin() + static_cast<std::ptrdiff_t>(times_.size() / 2);
        std::nth_element(times_.begin(), middle, times_.end());
        state_.counters[counter_] = *middle;
    }
    IterationClock(const IterationClock&) = delete;
    IterationClock& operator=(const IterationClock&) = delete;

    void Start() { start_ = Clock::now(); }
    void Stop() {
        times_.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start_).count());
    }

  private:
    using Clock = std::chrono::steady_clock;
    benchmark::State& state_;
    std::string counter_;
    Clock::time_point start_;
    std::vector<double> times_;
};

} // namespace bench
