#pragma once

#include <vector>

#include "rtf/code_page.h"
#include "rtf/document.h"

namespace tolva::rtf {

/// How the bytes of a font's text become characters: by its own code page, its character set, or the
/// document's code page, in this order.
CodePage page_of(const Font& font, int document_code_page);
/// The same for the font's own name: that of a symbol font is no symbols.
CodePage page_of_name(const Font& font, int document_code_page);

/// A document's fonts as its source has them: number and code page by index.
class SourceFonts {
  public:
    explicit SourceFonts(const Document& document);

    int number(int index) const { return numbers_.at(static_cast<std::size_t>(index)); }
    const CodePage& page(int index) const { return pages_.at(static_cast<std::size_t>(index)); }
    const CodePage& document_page() const { return document_page_; }

  private:
    std::vector<int> numbers_;
    std::vector<CodePage> pages_;
    CodePage document_page_;
};

} // namespace tolva::rtf
