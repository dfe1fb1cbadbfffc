#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace tolva::jet {

/// Has the processor fetch bytes that will be read soon, so that a walk doesn't wait for the memory at each
/// step. Nothing but a hint: right or wrong, it changes nothing.
inline void prefetch(std::span<const std::uint8_t> bytes) {
    constexpr std::size_t cache_line = 64;
    for (std::size_t at = 0; at < bytes.size(); at += cache_line)
        __builtin_prefetch(bytes.data() + at);
}

} // namespace tolva::jet
