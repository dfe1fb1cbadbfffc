#pragma once

#include <cstdint>

namespace tolva::messages {

/// The `messagetype` of a row. At or below 4 it is raised on the screen, above it is a letter; the queries
/// rest on that border. The table that `customerid` points into follows from it.
using MessageKind = std::uint8_t;

inline constexpr MessageKind listing_reminder = 1;
inline constexpr MessageKind prospect_reminder = 2;
inline constexpr MessageKind sold_reminder = 3;
inline constexpr MessageKind general_reminder = 4;
inline constexpr MessageKind listing_letter = 5;
inline constexpr MessageKind prospect_letter = 6;
inline constexpr MessageKind sold_letter = 7;
/// Prepared for, but nothing asks for it.
inline constexpr MessageKind last_letter = 8;

} // namespace tolva::messages
