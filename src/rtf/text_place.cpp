#include "rtf/text_place.h"

#include <algorithm>
#include <utility>

#include "basic/text.h"

namespace tolva::rtf {

namespace {

std::size_t end_length(const Document& document, std::size_t paragraph) {
    if (paragraph + 1 == document.paragraphs.size())
        return 0;
    return document.paragraphs[paragraph].end == Paragraph::End::cell ? 1 : 2;
}

/// Where in UTF-8 the character of that number begins.
std::size_t byte_of(std::string_view text, std::size_t character) {
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const bool begins = (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80;
        if (begins && character-- == 0)
            break;
    }
    return at;
}

} // namespace

std::size_t length_of(const Run& run) {
    if (run.inset)
        return run.inset->kind == Inset::Kind::picture ? 1 : 0;
    return basic::length(run.text);
}

std::size_t length_of(const Paragraph& paragraph) {
    std::size_t length = 0;
    for (const Run& run : paragraph.runs)
        length += length_of(run);
    return length;
}

std::size_t list_length_of(const Paragraph& paragraph) {
    return basic::length(paragraph.list_text->text);
}

std::size_t length_of(const Document& document) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < document.paragraphs.size(); ++at)
        length += list_length_of(document.paragraphs[at]) + length_of(document.paragraphs[at]) +
                  end_length(document, at);
    return length;
}

Place place_of(const Document& document, std::size_t position) {
    for (std::size_t at = 0; at < document.paragraphs.size(); ++at) {
        const Paragraph& paragraph = document.paragraphs[at];
        const std::size_t list = list_length_of(paragraph);
        const std::size_t own = length_of(paragraph);
        const std::size_t end = end_length(document, at);
        if (position < list + own + end || end == 0)
            return {at, position < list ? 0 : std::min(position - list, own), list > 0 && position == 0};
        position -= list + own + end;
    }
    return {};
}

std::size_t position_of(const Document& document, const Place& place) {
    std::size_t position = 0;
    for (std::size_t at = 0; at < place.paragraph; ++at)
        position += list_length_of(document.paragraphs[at]) + length_of(document.paragraphs[at]) +
                    end_length(document, at);
    if (place.before_list_text)
        return position;
    return position + list_length_of(document.paragraphs[place.paragraph]) + place.offset;
}

std::size_t split_runs(std::vector<Run>& runs, std::size_t offset, bool pass_kept) {
    const auto stays_ahead = [pass_kept](const Run& run) {
        return run.inset &&
               (run.inset->kind == Inset::Kind::end || (pass_kept && run.inset->kind == Inset::Kind::kept));
    };
    std::size_t at = 0;
    for (; at < runs.size(); ++at) {
        const std::size_t length = length_of(runs[at]);
        if (offset == 0 && !stays_ahead(runs[at]))
            return at;
        if (length <= offset) {
            offset -= length;
            continue;
        }
        Run tail = runs[at];
        const std::size_t byte = byte_of(tail.text, offset);
        tail.text.erase(0, byte);
        runs[at].text.resize(byte);
        runs.insert(runs.begin() + static_cast<std::ptrdiff_t>(at) + 1, std::move(tail));
        return at + 1;
    }
    return at;
}

void tidy_runs(std::vector<Run>& runs) {
    std::vector<Run> tidy;
    for (Run& run : runs) {
        if (!run.inset && run.text.empty())
            continue;
        if (!tidy.empty() && !run.inset && !tidy.back().inset && tidy.back().format == run.format)
            tidy.back().text += run.text;
        else
            tidy.push_back(std::move(run));
    }
    runs = std::move(tidy);
}

} // namespace tolva::rtf
