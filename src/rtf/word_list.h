#pragma once

#include <span>
#include <string_view>

#include "rtf/vocabulary.h"

namespace tolva::rtf {

/// The words that the reader itself acts on.
std::span<const Word> meant_words();
/// Words without a meaning here that a save writes back.
std::span<const std::string_view> kept_document_words();
std::span<const std::string_view> kept_section_words();
/// Words that say again what others say, or that only the program which wrote them cares about.
std::span<const std::string_view> silent_words();

} // namespace tolva::rtf
