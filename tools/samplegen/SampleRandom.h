#pragma once
// Fixed-algorithm random numbers (SplitMix64), so that one seed draws the same page on every
// machine and with every standard library; the standard distributions are not portable.
#include <cstdint>
#include <vector>

namespace samplegen {

class SampleRandom {
  public:
    explicit SampleRandom(uint64_t seed) : state_(seed) {}

    uint64_t Next() {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    // A whole number from lo to hi inclusive.
    int Between(int lo, int hi) {
        return lo + static_cast<int>(Next() % static_cast<uint64_t>(hi - lo + 1));
    }

    template <typename T> const T& Pick(const std::vector<T>& items) {
        return items[static_cast<std::size_t>(Next() % items.size())];
    }

  private:
    uint64_t state_;
};

// Noise of one pixel from its position alone, so that no drawing order can change the page.
inline uint32_t PixelHash(uint32_t x, uint32_t y, uint32_t seed) {
    uint32_t h = x * 0x8DA6B343U ^ y * 0xD8163841U ^ seed * 0xCB1AB31FU;
    h ^= h >> 15;
    h *= 0x2C1B3C6DU;
    h ^= h >> 12;
    h *= 0x297A2D39U;
    return h ^ (h >> 15);
}

} // namespace samplegen
