#pragma once

#include <memory>
#include <string_view>

#include "rtf/document.h"
#include "rtf/lexer.h"
#include "rtf/vocabulary.h"

namespace tolva::rtf {

/// Collects one picture: its words, and its bytes as hexadecimal digits or as they are.
class PictureReader {
  public:
    void begin();
    void word(PictureWord word, Parameter parameter);
    void digits(std::string_view text);
    void bytes(std::string_view bytes);

    /// The picture; null when there are no bytes. The reader is empty afterwards.
    std::shared_ptr<Inset> finish();

  private:
    Picture picture_;
    int half_byte_ = -1;
};

} // namespace tolva::rtf
