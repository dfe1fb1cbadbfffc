#pragma once

#include <cstddef>

namespace tolva::rtf {

/// What a reader takes at most of anything that a few bytes of source could otherwise multiply. What lies
/// beyond is left out or clamped; the text is always kept.
namespace limits {

/// Groups whose state is kept; deeper ones are counted and share the deepest state.
constexpr std::size_t group_depth = 4096;
constexpr std::size_t fonts = 4096;
constexpr std::size_t colours = 16384;
constexpr std::size_t name_bytes = 256;
constexpr std::size_t tabs = 64;
constexpr std::size_t cells = 64;
constexpr std::size_t lists = 2048;
constexpr std::size_t list_overrides = 4096;
constexpr std::size_t list_levels = 9;
constexpr std::size_t list_text_bytes = 64;
constexpr std::size_t sections = 10000;
constexpr std::size_t paragraphs = 1000000;
constexpr std::size_t runs = 4000000;
constexpr std::size_t dropped_notes = 64;
/// Twips: 22 inches, the largest measure of a page.
constexpr int measure = 31680;
constexpr int half_points = 3276;

} // namespace limits

} // namespace tolva::rtf
