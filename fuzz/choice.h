// Random choices that are the same with every standard library.
#ifndef FUZZ_CHOICE_H
#define FUZZ_CHOICE_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

class Choice {
  public:
    /** The sequence depends on both numbers alone. */
    Choice(std::uint64_t seed, std::uint64_t index) : engine_(seed * 1000003 + index) {}

    /** A number below the limit; 0 for a limit of 0. */
    std::size_t below(std::size_t limit) {
        return limit == 0 ? 0 : static_cast<std::size_t>(engine_() % limit);
    }

    bool one_in(std::size_t times) { return below(times) == 0; }

    /** One of the elements; there must be one. */
    template <typename Container>
    const auto &of(const Container &container) {
        return *(std::begin(container) + static_cast<std::ptrdiff_t>(below(std::size(container))));
    }

  private:
    std::mt19937_64 engine_;
};

#endif
