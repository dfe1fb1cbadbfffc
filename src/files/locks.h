#pragma once

#include <chrono>
#include <cstdint>
#include <thread>

namespace tolva::files {

// The bytes that stand for a file's two locks, on every system: far beyond any end, because a locked byte
// cannot be read on some systems, and readers are welcome.
constexpr std::uint64_t claim_byte = 0x7fff'ffff'0000'0000;
constexpr std::uint64_t content_byte = claim_byte + 1;

/// Tries for a lock that others hold for moments only, and gives up after many moments.
template <class Attempt>
bool keep_trying(Attempt&& attempt) {
    constexpr auto patience = std::chrono::seconds(20);
    constexpr auto pause = std::chrono::milliseconds(2);
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!attempt()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

} // namespace tolva::files
