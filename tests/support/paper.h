#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "support/recorded_printer.h"

namespace tolva::support {

/// A line of text on a recorded page, for comparing whole pages: where it begins in twips, what it says, and
/// whether it is a heading ("b" bold, "u" underlined).
struct Printed {
    float x, y;
    std::string text;
    std::string style;

    friend bool operator==(const Printed&, const Printed&) = default;
};

inline void PrintTo(const Printed& line, std::ostream* out) {
    *out << line.x << ", " << line.y << " " << line.style << " \"" << line.text << "\"";
}

inline std::vector<Printed> printed(const RecordedPrinter::Page& page) {
    std::vector<Printed> lines;
    for (const auto& word : page.words)
        lines.push_back(
            {word.x, word.y, word.text, std::string(word.bold ? "b" : "") + (word.underlined ? "u" : "")});
    return lines;
}

/// Millimetres as the program counts them.
inline float millimetres(double value) {
    return static_cast<float>(value * 56.7);
}

/// The lines of one block, one below the other as the recorded printer's lines follow: the first at (x, y)
/// in millimetres. "#" ahead of a text makes it a heading; an empty text stands at the left edge of the page.
inline std::vector<Printed> block(double x, double y, float font_size,
                                  const std::vector<std::string>& texts) {
    std::vector<Printed> lines;
    float at = millimetres(y);
    for (const std::string& text : texts) {
        const bool heading = !text.empty() && text[0] == '#';
        // "# Rooms:" is a caption.
        const bool caption = heading && text.size() > 1 && text[1] == ' ';
        lines.push_back({text.empty() ? 0 : millimetres(x), at, heading && !caption ? text.substr(1) : text,
                         heading && !caption ? "bu" : ""});
        at += font_size * 20 * 1.15F;
    }
    return lines;
}

} // namespace tolva::support
