#include "rtf/rich_text.h"

#include <algorithm>
#include <utility>

#include "basic/text.h"
#include "rtf/edit.h"
#include "rtf/plain_text.h"
#include "rtf/read.h"
#include "rtf/write.h"

namespace tolva::rtf {

namespace {

/// Lines apart at CR LF, CR or LF; of control characters only those that a run may hold, and no stand-ins for
/// pictures.
std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines(1);
    bool after_return = false;
    for (const char32_t character : basic::to_code_points(text)) {
        if (character == U'\n' && std::exchange(after_return, false))
            continue;
        after_return = character == U'\r';
        if (character == U'\r' || character == U'\n')
            lines.emplace_back();
        else if (character >= 0x20 ? character != 0xFFFC
                                   : character == U'\t' || character == U'\v' || character == U'\f')
            lines.back() += basic::from_code_points(std::u32string_view(&character, 1));
    }
    return lines;
}

} // namespace

RichText::RichText(Font font, int half_points) : font_(std::move(font)), half_points_(half_points) {
    set_text({});
}

void RichText::set_document(Document document) {
    document_ = std::move(document);
    // A box always has the mark of its last paragraph.
    document_.unended = false;
    select(0, 0);
}

std::string RichText::text() const {
    return plain_text(document_);
}

void RichText::set_text(std::string_view text) {
    Document document;
    document.fonts.assign(1, font_);
    CharacterFormat format;
    format.half_points = static_cast<std::int16_t>(half_points_);
    document.paragraphs.clear();
    for (std::string& line : lines_of(text)) {
        Paragraph paragraph;
        paragraph.mark = format;
        if (!line.empty())
            paragraph.runs.push_back({std::move(line), format, nullptr});
        document.paragraphs.push_back(std::move(paragraph));
    }
    set_document(std::move(document));
}

std::string RichText::text_rtf() const {
    return write(document_);
}

void RichText::set_text_rtf(std::string_view source) {
    if (source.empty())
        set_text({});
    else
        set_document(read(source, RawBytes::utf8));
}

void RichText::load(std::string_view bytes) {
    set_document(read(bytes));
}

std::string RichText::save() const {
    return write(document_);
}

std::size_t RichText::length() const {
    return length_of(document_);
}

void RichText::select(std::size_t start, std::size_t length) {
    const std::size_t all = this->length();
    start_ = std::min(start, all);
    length_ = std::min(length, all - start_);
    typing_.reset();
}

std::string RichText::sel_text() const {
    const std::u32string all = basic::to_code_points(text());
    return basic::from_code_points(std::u32string_view(all).substr(start_, length_));
}

CharacterFormat RichText::typing_format() const {
    if (typing_)
        return *typing_;
    const Place place = place_of(document_, start_);
    const Paragraph& paragraph = document_.paragraphs[place.paragraph];
    const CharacterFormat* format = nullptr;
    std::size_t at = 0;
    for (const Run& run : paragraph.runs) {
        const std::size_t length = length_of(run);
        if (length == 0)
            continue;
        // With a selection the format of its first character, else of the one ahead of the caret.
        const bool ahead = length_ ? at <= place.offset : at < place.offset;
        if (!format || ahead)
            format = &run.format;
        at += length;
    }
    return format ? *format : paragraph.mark;
}

std::vector<Paragraph> RichText::paragraphs_of(std::string_view text, const CharacterFormat& format) const {
    const Paragraph& target = document_.paragraphs[place_of(document_, start_).paragraph];
    Paragraph pattern;
    pattern.format = target.format;
    pattern.mark = format;
    pattern.list_text = target.list_text;
    repeat_list_text(pattern);
    std::vector<Paragraph> paragraphs;
    for (std::string& line : lines_of(text)) {
        paragraphs.push_back(pattern);
        if (!line.empty())
            paragraphs.back().runs.push_back({std::move(line), format, nullptr});
    }
    return paragraphs;
}

void RichText::set_sel_text(std::string_view text) {
    std::vector<Paragraph> paragraphs = paragraphs_of(text, typing_format());
    erase(document_, start_, start_ + length_);
    select(insert(document_, start_, std::move(paragraphs), true), 0);
}

std::string RichText::sel_rtf() const {
    return write(slice(document_, start_, start_ + length_));
}

void RichText::set_sel_rtf(std::string_view source) {
    const Document fragment = read(source, RawBytes::utf8);
    erase(document_, start_, start_ + length_);
    select(insert(document_, start_, fragment), 0);
}

template <class Test>
RichText::Setting RichText::setting_of(Test test) const {
    if (length_ == 0)
        return test(typing_format()) ? Setting::yes : Setting::no;
    bool any = false;
    bool all = true;
    for (const Paragraph& paragraph : slice(document_, start_, start_ + length_).paragraphs)
        for (const Run& run : paragraph.runs)
            if (length_of(run) > 0) {
                any = any || test(run.format);
                all = all && test(run.format);
            }
    return !any ? Setting::no : all ? Setting::yes : Setting::mixed;
}

RichText::Setting RichText::setting(bool CharacterFormat::*member) const {
    return setting_of([member](const CharacterFormat& format) { return format.*member; });
}

RichText::Setting RichText::sel_underline() const {
    return setting_of([](const CharacterFormat& format) { return format.underline != Underline::none; });
}

template <class Change>
void RichText::change_characters(Change change) {
    if (length_ == 0) {
        CharacterFormat format = typing_format();
        change(format);
        typing_ = format;
        return;
    }
    const Place first = place_of(document_, start_);
    const Place last = place_of(document_, start_ + length_);
    for (std::size_t at = first.paragraph; at <= last.paragraph; ++at) {
        Paragraph& paragraph = document_.paragraphs[at];
        const std::size_t from = at == first.paragraph ? first.offset : 0;
        const std::size_t to = at == last.paragraph ? last.offset : length_of(paragraph);
        const std::size_t behind = split_runs(paragraph.runs, to);
        const std::size_t count = paragraph.runs.size();
        const std::size_t begin = split_runs(paragraph.runs, from);
        const std::size_t end = behind + paragraph.runs.size() - count;
        for (std::size_t run = begin; run < end; ++run)
            if (length_of(paragraph.runs[run]) > 0)
                change(paragraph.runs[run].format);
        if (at < last.paragraph)
            change(paragraph.mark);
        tidy_runs(paragraph.runs);
    }
}

void RichText::set_sel_bold(bool on) {
    change_characters([on](CharacterFormat& format) { format.bold = on; });
}

void RichText::set_sel_italic(bool on) {
    change_characters([on](CharacterFormat& format) { format.italic = on; });
}

void RichText::set_sel_underline(bool on) {
    change_characters(
        [on](CharacterFormat& format) { format.underline = on ? Underline::single : Underline::none; });
}

std::size_t RichText::last_paragraph() const {
    // A selection that ends at a paragraph's start has nothing of that paragraph.
    return place_of(document_, start_ + length_ - (length_ ? 1 : 0)).paragraph;
}

std::optional<int> RichText::sel_alignment() const {
    const std::size_t first = place_of(document_, start_).paragraph;
    const Alignment alignment = document_.paragraphs[first].format->alignment;
    for (std::size_t at = first; at <= last_paragraph(); ++at)
        if (document_.paragraphs[at].format->alignment != alignment)
            return std::nullopt;
    return alignment == Alignment::distributed ? align_justified : static_cast<int>(alignment);
}

void RichText::set_sel_alignment(int alignment) {
    if (alignment < align_left || alignment > align_justified)
        return;
    for (std::size_t at = place_of(document_, start_).paragraph; at <= last_paragraph(); ++at)
        document_.paragraphs[at].format.own().alignment = static_cast<Alignment>(alignment);
}

} // namespace tolva::rtf
