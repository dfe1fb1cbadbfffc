#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "rtf/code_page.h"
#include "rtf/document.h"
#include "rtf/lexer.h"
#include "rtf/vocabulary.h"

namespace tolva::rtf {

/// Reads the font table, grouped or flat, and knows the fonts by their numbers from then on.
class FontTable {
  public:
    explicit FontTable(Document& document) : document_(document) {}

    /// \fN within the table.
    void begin_font(int number);
    void word(FontWord word, Parameter parameter);
    /// Of a font's name, by `page`; a semicolon ends the font.
    void name(std::string_view utf8);
    void alternative(std::string_view utf8);
    /// The code page that the font's own name is written in.
    CodePage page() const;
    /// Ahead of the table: text has gone before it, and needs a font that the table doesn't give a meaning
    /// to.
    void add_font_of_early_text();
    /// At the end of the table, and at the end of a source without one: there always is a font.
    void finish();

    /// The index of a number; the default font's for an unknown one.
    int index_of(int number) const;
    const CodePage& page_of_index(int index) const;
    /// The same by number.
    const CodePage& page_of_number(int number) const { return page_of_index(index_of(number)); }

    void set_default_number(int number) { default_number_ = number; }

    /// The page of bytes that no font tells.
    void set_document_page(int code_page);
    const CodePage& document_page() const { return document_page_; }

  private:
    void add();

    Document& document_;
    CodePage document_page_;
    Font font_;
    bool begun_ = false;
    int default_number_ = 0;
    std::vector<CodePage> pages_;
    std::unordered_map<int, int> indexes_;
};

} // namespace tolva::rtf
