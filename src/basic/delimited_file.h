#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tolva::basic {

/// Takes the content of a text file apart by the language's delimited input form: an item ends at a comma or
/// at a line end, blanks ahead of it are skipped, and between double quotes a comma or a line end is text.
/// The file is Windows-1252 and ends early at a byte 1A; items are UTF-8.
class DelimitedReader {
  public:
    explicit DelimitedReader(std::string bytes);

    /// Whether nothing is left to read. An empty line still is an (empty) item.
    bool at_end() const { return at_ == bytes_.size(); }

    /// The next item. Error 62 past the end.
    std::string read();

  private:
    char here() const { return at_end() ? '\0' : bytes_[at_]; }
    void skip_blanks();
    /// Skips one comma or line end, if one stands here.
    void skip_delimiter();

    std::string bytes_;
    std::size_t at_ = 0;
};

/// Puts together the content of a text file, in Windows-1252 with CR LF line ends.
class DelimitedWriter {
  public:
    /// The delimited form: the text between double quotes, on a line of its own. A double quote inside it is
    /// written as it is, so such a text does not read back whole.
    void write(std::string_view text);

    /// The plain print form: the text as it is and a line end.
    void print(std::string_view text);

    const std::string& bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

} // namespace tolva::basic
