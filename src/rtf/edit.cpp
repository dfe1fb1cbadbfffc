#include "rtf/edit.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "rtf/table_edit.h"

namespace tolva::rtf {

namespace {

using Paragraphs = std::vector<Paragraph>;

void append(std::vector<Run>& runs, std::vector<Run>&& more) {
    runs.insert(runs.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// An empty document with all that formats refer to.
Document with_tables_of(const Document& document) {
    Document result;
    result.code_page = document.code_page;
    result.fonts = document.fonts;
    result.default_font = document.default_font;
    result.colours = document.colours;
    result.language = document.language;
    result.default_tab = document.default_tab;
    result.page = document.page;
    return result;
}

/// Leaves no mark without its other half.
void mend_marks(Paragraphs& paragraphs) {
    struct Open {
        std::size_t paragraph, run;
    };
    std::vector<Open> open;
    for (std::size_t at = 0; at < paragraphs.size(); ++at) {
        std::vector<Run>& runs = paragraphs[at].runs;
        for (std::size_t run = 0; run < runs.size(); ++run) {
            if (!runs[run].inset)
                continue;
            const Inset::Kind kind = runs[run].inset->kind;
            if (kind == Inset::Kind::field || kind == Inset::Kind::object) {
                open.push_back({at, run});
            } else if (kind == Inset::Kind::end) {
                if (open.empty()) {
                    runs[run].inset = nullptr; // an empty run, which goes when the runs are tidied
                    continue;
                }
                // Behind a field its surroundings' format holds again.
                runs[run].format = paragraphs[open.back().paragraph].runs[open.back().run].format;
                open.pop_back();
            }
        }
    }
    for (const Open& each : open)
        paragraphs[each.paragraph].runs[each.run].inset = nullptr;
    for (Paragraph& paragraph : paragraphs)
        tidy_runs(paragraph.runs);
}

void leave_list(Paragraph& paragraph) {
    paragraph.list_text = {};
    if (paragraph.format->list == 0 && *paragraph.format->numbering == Numbering{})
        return;
    ParagraphFormat& format = paragraph.format.own();
    format.list = 0;
    format.list_level = 0;
    format.numbering = {};
}

/// The section that the paragraph ends goes, and its text joins the next one.
void remove_section_break(Document& document, std::size_t paragraph) {
    if (!document.paragraphs[paragraph].ends_section)
        return;
    document.paragraphs[paragraph].ends_section = false;
    const auto end = document.paragraphs.begin() + static_cast<std::ptrdiff_t>(paragraph);
    const auto section = std::count_if(document.paragraphs.begin(), end,
                                       [](const Paragraph& each) { return each.ends_section; });
    document.sections.erase(document.sections.begin() + section);
}

void erase_paragraphs(Document& document, std::size_t first, std::size_t behind) {
    for (std::size_t at = first; at < behind; ++at)
        remove_section_break(document, at);
    document.paragraphs.erase(document.paragraphs.begin() + static_cast<std::ptrdiff_t>(first),
                              document.paragraphs.begin() + static_cast<std::ptrdiff_t>(behind));
}

void erase_runs(std::vector<Run>& runs, std::size_t from, std::size_t to) {
    if (from >= to)
        return;
    const std::size_t behind = split_runs(runs, to, false);
    const std::size_t count = runs.size();
    const std::size_t first = split_runs(runs, from);
    const std::size_t last = behind + (runs.size() - count);
    runs.erase(runs.begin() + static_cast<std::ptrdiff_t>(first),
               runs.begin() + static_cast<std::ptrdiff_t>(last));
}

/// Makes one paragraph of two neighbours; what ends the second ends both.
void join(Document& document, std::size_t at) {
    remove_section_break(document, at);
    Paragraph& first = document.paragraphs[at];
    Paragraph& second = document.paragraphs[at + 1];
    if (first.runs.empty() && list_length_of(first) == 0) {
        first.format = second.format;
        first.list_text = second.list_text;
    }
    append(first.runs, std::move(second.runs));
    first.mark = second.mark;
    first.end = second.end;
    first.ends_section = second.ends_section;
    document.paragraphs.erase(document.paragraphs.begin() + static_cast<std::ptrdiff_t>(at) + 1);
}

bool can_join(const Document& document, std::size_t at) {
    const Paragraph& first = document.paragraphs[at];
    return first.end == Paragraph::End::paragraph && first.in_table == document.paragraphs[at + 1].in_table;
}

bool is_bullet(const ListText& list) {
    return std::none_of(list.text.begin(), list.text.end(), [](char character) {
        return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
               (character >= 'a' && character <= 'z');
    });
}

} // namespace

void repeat_list_text(Paragraph& paragraph) {
    if (!is_bullet(*paragraph.list_text))
        leave_list(paragraph);
}

Document slice(const Document& document, std::size_t from, std::size_t to) {
    const Place first = place_of(document, from);
    const Place last = place_of(document, std::max(from, to));
    Document result = with_tables_of(document);
    result.paragraphs.assign(document.paragraphs.begin() + static_cast<std::ptrdiff_t>(first.paragraph),
                             document.paragraphs.begin() + static_cast<std::ptrdiff_t>(last.paragraph) + 1);
    const bool to_the_end = last.paragraph + 1 == document.paragraphs.size() && !document.unended &&
                            last.offset == length_of(document.paragraphs.back());
    const bool whole_start = first.offset == 0;
    Paragraph& head = result.paragraphs.front();
    Paragraph& tail = result.paragraphs.back();
    erase_runs(tail.runs, last.offset, length_of(tail));
    erase_runs(head.runs, 0, first.offset);
    if (!whole_start || (list_length_of(head) && !first.before_list_text))
        leave_list(head);
    // A selection that ends at a paragraph's start ends with the line end ahead of it.
    result.unended = true;
    if (result.paragraphs.size() > 1 && last.offset == 0 && shows_nothing(tail) &&
        (last.before_list_text || !list_length_of(tail))) {
        result.paragraphs.pop_back();
        Paragraph& back = result.paragraphs.back();
        result.unended = back.end == Paragraph::End::cell;
        if (result.unended)
            back.runs.push_back({"\t", back.mark, nullptr});
    }
    for (Paragraph& paragraph : result.paragraphs)
        paragraph.ends_section = false;
    const bool end_selected = !result.unended || to_the_end;
    flatten_partial_rows(result.paragraphs, document.paragraphs, first.paragraph, whole_start, end_selected);
    if (result.paragraphs.back().in_table)
        result.unended = false;
    mend_marks(result.paragraphs);
    return result;
}

void erase(Document& document, std::size_t from, std::size_t to) {
    if (from >= to)
        return;
    Place first = place_of(document, from);
    Place last = place_of(document, to);
    for (const RowSpan& row : rows_within(document.paragraphs, first, last)) {
        erase_paragraphs(document, row.first, row.behind);
        const std::size_t count = row.behind - row.first;
        if (last.paragraph >= row.behind)
            last.paragraph -= count;
        else
            last = {row.first, 0, false};
        if (first.paragraph >= row.first && first.paragraph < row.behind)
            first = {row.first, 0, false};
    }
    if (document.paragraphs.empty())
        document.paragraphs.emplace_back();
    if (first.paragraph >= document.paragraphs.size())
        return; // a row at the document's end was all that was selected
    if (last.paragraph >= document.paragraphs.size())
        last = {document.paragraphs.size() - 1, length_of(document.paragraphs.back()), false};
    const bool takes_list_text =
        first.before_list_text && (last.paragraph > first.paragraph || !last.before_list_text);
    for (std::size_t at = first.paragraph; at <= last.paragraph; ++at) {
        std::vector<Run>& runs = document.paragraphs[at].runs;
        const std::size_t end = at == last.paragraph ? last.offset : length_of(document.paragraphs[at]);
        erase_runs(runs, at == first.paragraph ? first.offset : 0, end);
    }
    if (takes_list_text)
        leave_list(document.paragraphs[first.paragraph]);
    for (std::size_t at = last.paragraph; at-- > first.paragraph;)
        if (can_join(document, at))
            join(document, at);
    mend_marks(document.paragraphs);
}

std::size_t insert(Document& document, std::size_t at, Paragraphs paragraphs, bool unended) {
    if (paragraphs.empty())
        return at;
    const Place place = place_of(document, at);
    const std::size_t from_end =
        length_of(document) - position_of(document, {place.paragraph, place.offset, false});
    Paragraph target = std::move(document.paragraphs[place.paragraph]);
    if (target.in_table)
        flatten_rows(paragraphs);
    const std::size_t split = split_runs(target.runs, place.offset);
    std::vector<Run> tail(std::make_move_iterator(target.runs.begin() + static_cast<std::ptrdiff_t>(split)),
                          std::make_move_iterator(target.runs.end()));
    target.runs.resize(split);

    Paragraphs result;
    // What the next piece of text goes on in: first the part of the paragraph ahead of the place.
    Paragraph current = target;
    current.end = Paragraph::End::paragraph;
    current.ends_section = false;
    bool goes_on = !current.runs.empty() || list_length_of(current) > 0;
    bool ahead = true;
    for (Paragraph& paragraph : paragraphs) {
        const bool last = &paragraph == &paragraphs.back();
        if (paragraph.in_table) {
            if (goes_on)
                result.push_back(std::move(current));
            result.push_back(std::move(paragraph));
            current = Paragraph();
            goes_on = ahead = false;
            continue;
        }
        append(current.runs, std::move(paragraph.runs));
        // What goes on keeps its format; else the text that comes in brings its own.
        if (!goes_on && (!last || !unended || tail.empty())) {
            current.format = paragraph.format;
            current.list_text = paragraph.list_text;
        }
        if (!last || !unended) {
            current.mark = paragraph.mark;
            current.in_table = target.in_table;
            current.row = target.row;
            result.push_back(std::move(current));
            current = Paragraph();
            goes_on = ahead = false;
        }
    }
    // The last piece ends as the paragraph did, and looks like it unless nothing of it is left.
    if (!ahead && !(unended && tail.empty() && !current.runs.empty())) {
        current.format = target.format;
        current.list_text = target.list_text;
        repeat_list_text(current);
    }
    append(current.runs, std::move(tail));
    current.mark = target.mark;
    current.end = target.end;
    current.in_table = target.in_table;
    current.row = target.row;
    current.ends_section = target.ends_section;
    result.push_back(std::move(current));

    const auto place_in = document.paragraphs.begin() + static_cast<std::ptrdiff_t>(place.paragraph);
    const auto behind = document.paragraphs.erase(place_in);
    document.paragraphs.insert(behind, std::make_move_iterator(result.begin()),
                               std::make_move_iterator(result.end()));
    mend_marks(document.paragraphs);
    return length_of(document) - from_end;
}

std::size_t insert(Document& document, std::size_t at, const Document& other) {
    Paragraphs paragraphs = other.paragraphs;
    std::vector<int> fonts(other.fonts.size(), -1);
    std::vector<int> colours(other.colours.size(), -1);
    const auto bring_font = [&](std::int16_t& font) {
        int& own = fonts[static_cast<std::size_t>(font)];
        if (own < 0)
            own = document.font_index(other.fonts[static_cast<std::size_t>(font)]);
        font = static_cast<std::int16_t>(own);
    };
    const auto bring_colour = [&](std::int16_t& colour) {
        int& own = colours[static_cast<std::size_t>(colour)];
        if (own < 0)
            own = colour == 0 ? 0 : document.colour_index(other.colours[static_cast<std::size_t>(colour)]);
        colour = static_cast<std::int16_t>(own);
    };
    const auto bring_border = [&](Border& border) { bring_colour(border.colour); };
    const auto bring = [&](CharacterFormat& format) {
        bring_font(format.font);
        bring_colour(format.colour);
        bring_colour(format.highlight);
        bring_colour(format.background);
        format.style = 0;
    };
    for (Paragraph& paragraph : paragraphs) {
        for (Run& run : paragraph.runs)
            bring(run.format);
        bring(paragraph.mark);
        if (!paragraph.list_text->text.empty())
            bring(paragraph.list_text.own().format);
        ParagraphFormat& format = paragraph.format.own();
        format.style = 0;
        format.list = 0;
        format.list_level = 0;
        bring_colour(format.background);
        if (format.numbering->font >= 0)
            bring_font(format.numbering.own().font);
        if (!(*format.borders == ParagraphBorders{})) {
            ParagraphBorders& borders = format.borders.own();
            for (Border* const border : {&borders.top, &borders.bottom, &borders.left, &borders.right,
                                         &borders.between, &borders.bar})
                bring_border(*border);
        }
        if (paragraph.in_table)
            bring_row_colours(paragraph.row.own(), bring_colour);
        paragraph.ends_section = false;
    }
    return insert(document, at, std::move(paragraphs), other.unended);
}

} // namespace tolva::rtf
