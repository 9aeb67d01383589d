// The demo's random numbers: the same on every machine and every standard library.
#pragma once

#include <cstdint>
#include <span>

namespace records {

/// splitmix64. The standard distributions differ between library versions, so the demo
/// draws all its numbers from this and integer arithmetic.
class DemoRandom {
public:
    explicit DemoRandom(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    /// A whole number from lo to hi, both included.
    long between(long lo, long hi) {
        return lo + static_cast<long>(next() % static_cast<std::uint64_t>(hi - lo + 1));
    }

    /// True in about `percent` cases out of a hundred.
    bool chance(int percent) { return between(1, 100) <= percent; }

    template <typename T> const T &pick(std::span<const T> from) {
        return from[static_cast<std::size_t>(between(0, static_cast<long>(from.size()) - 1))];
    }

private:
    std::uint64_t state_;
};

} // namespace records
