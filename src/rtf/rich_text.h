#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rtf/document.h"

namespace tolva::rtf {

/// What a rich text box holds: a document, and a selection in it. Text and sources that come and go as text
/// are UTF-8. Positions count characters of `text()`, where a line end counts two; a position past the end is
/// the end.
class RichText {
  public:
    /// A setting of the selected text: none of it has it, all of it, or some.
    enum class Setting : std::uint8_t { no, yes, mixed };

    /// The paragraph alignments by their numbers in a rich text box.
    static constexpr int align_left = 0;
    static constexpr int align_right = 1;
    static constexpr int align_centre = 2;
    static constexpr int align_justified = 3;

    /// Empty, in the font that text without formatting has.
    explicit RichText(Font font = {}, int half_points = 24);

    const Document& document() const { return document_; }
    /// Replaces all; the selection goes to the start.
    void set_document(Document document);

    std::string text() const;
    /// Replaces all and drops all formatting; the selection goes to the start.
    void set_text(std::string_view text);

    /// The whole as source, and from source. Characters above U+007F in it are themselves, whatever font
    /// they stand in; an empty source empties the box. Error 321, with nothing changed, for a source that is
    /// no rich text.
    std::string text_rtf() const;
    void set_text_rtf(std::string_view source);

    /// The same as the bytes of a file, where a byte above 7F is one of its font's code page. No bytes at all
    /// are error 321 too.
    void load(std::string_view bytes);
    std::string save() const;

    std::size_t length() const;
    std::size_t sel_start() const { return start_; }
    std::size_t sel_length() const { return length_; }
    void select(std::size_t start, std::size_t length);

    /// Reading gives the selection alone. Setting replaces it and leaves the caret behind what came in: text
    /// in the format of what it replaces, source in its own. Error 321, with nothing changed, for a source
    /// that is no rich text.
    std::string sel_text() const;
    void set_sel_text(std::string_view text);
    std::string sel_rtf() const;
    void set_sel_rtf(std::string_view source);

    /// With nothing selected: of the text that would be put in here.
    Setting sel_bold() const { return setting(&CharacterFormat::bold); }
    Setting sel_italic() const { return setting(&CharacterFormat::italic); }
    Setting sel_underline() const;
    void set_sel_bold(bool on);
    void set_sel_italic(bool on);
    void set_sel_underline(bool on);

    /// Of the selected paragraphs; nothing when they differ.
    std::optional<int> sel_alignment() const;
    void set_sel_alignment(int alignment);

  private:
    Setting setting(bool CharacterFormat::*member) const;
    template <class Test>
    Setting setting_of(Test test) const;
    template <class Change>
    void change_characters(Change change);
    /// The format that text put in at the selection's start gets.
    CharacterFormat typing_format() const;
    std::vector<Paragraph> paragraphs_of(std::string_view text, const CharacterFormat& format) const;
    /// The last paragraph that the selection touches.
    std::size_t last_paragraph() const;

    Document document_;
    Font font_;
    int half_points_;
    std::size_t start_ = 0;
    std::size_t length_ = 0;
    /// Set ahead of typing with nothing selected; forgotten when the selection moves.
    std::optional<CharacterFormat> typing_;
};

} // namespace tolva::rtf
