#pragma once

#include <string>
#include <string_view>

#include "rtf/code_page.h"

namespace tolva::rtf {

/// Text as source, appended in ASCII: what is special to the format behind a backslash, what the code page
/// has as \'xx, the rest as \uN with "?" for readers that don't know it (so \uc1 must be in force). Tabs and
/// breaks become their words. A word ahead of it in the output must already be closed by a blank.
void write_escaped(std::string& out, std::string_view utf8, const CodePage& page);

/// A byte as \'xx.
void write_raw_byte(std::string& out, char byte);

/// Bytes as pairs of hexadecimal digits, in lines of 128.
void write_hex(std::string& out, std::string_view bytes);

} // namespace tolva::rtf
