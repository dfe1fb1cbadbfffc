#pragma once

#include <cstddef>
#include <random>

namespace tolva::sample {

/// Chance that falls the same way on every machine and in every run. (The library's engine is prescribed to
/// the bit, its distributions are not.)
class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed) {}

    /// Both ends included.
    int between(int least, int most) {
        return least + static_cast<int>(engine_() % static_cast<unsigned long>(most - least + 1));
    }

    bool one_in(int chances) { return between(1, chances) == 1; }

    template <typename T, std::size_t N>
    const T& pick(const T (&from)[N]) {
        return from[static_cast<std::size_t>(between(0, static_cast<int>(N) - 1))];
    }

  private:
    std::mt19937 engine_;
};

} // namespace tolva::sample
