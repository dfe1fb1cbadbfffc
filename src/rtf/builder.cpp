#include "rtf/builder.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "rtf/limits.h"
#include "rtf/table_words.h"

namespace tolva::rtf {

std::string& Builder::text(const CharacterFormat& format) {
    if (!current_.runs.empty() && !current_.runs.back().inset) {
        Run& last = current_.runs.back();
        if (last.format == format || runs_ >= limits::runs)
            return last.text;
    }
    ++runs_;
    current_.runs.push_back({{}, format, nullptr});
    return current_.runs.back().text;
}

void Builder::add_inset(std::shared_ptr<const Inset> inset, const CharacterFormat& format) {
    ++runs_;
    current_.runs.push_back({{}, format, std::move(inset)});
}

void Builder::set_list_text(ListText text) {
    if (!has_list_text() && !text.text.empty())
        current_.list_text = Shared<ListText>(std::move(text));
}

const CharacterFormat& Builder::first_format(const CharacterFormat& otherwise) const {
    const auto run =
        std::find_if(current_.runs.begin(), current_.runs.end(), [](const Run& each) { return !each.inset; });
    return run == current_.runs.end() ? otherwise : run->format;
}

bool Builder::full() const {
    return document_.paragraphs.size() >= limits::paragraphs;
}

void Builder::push(const Shared<ParagraphFormat>& format, const CharacterFormat& mark, Paragraph::End end) {
    current_.format = format;
    current_.mark = mark;
    current_.end = end;
    document_.paragraphs.push_back(std::move(current_));
    current_ = Paragraph();
}

void Builder::end_paragraph(const Shared<ParagraphFormat>& format, const CharacterFormat& mark, bool in_table,
                            const Shared<RowFormat>& row) {
    if (full()) {
        text(mark) += '\v';
        return;
    }
    if (!in_table)
        close_row(row, true);
    else if (row_start_ == none)
        row_start_ = document_.paragraphs.size();
    push(format, mark, Paragraph::End::paragraph);
}

void Builder::end_cell(const Shared<ParagraphFormat>& format, const CharacterFormat& mark) {
    if (full()) {
        text(mark) += '\t';
        return;
    }
    if (row_start_ == none)
        row_start_ = document_.paragraphs.size();
    // The last cell that a row may have takes in all that follow.
    const bool ends = cells_ + 1 < limits::cells;
    push(format, mark, ends ? Paragraph::End::cell : Paragraph::End::paragraph);
    if (ends)
        ++cells_;
}

void Builder::end_row(const Shared<ParagraphFormat>& format, const CharacterFormat& mark,
                      const Shared<RowFormat>& row) {
    if (!shows_nothing(current_))
        end_cell(format, mark);
    else
        fold_back();
    close_row(row, false);
}

void Builder::close_row(Shared<RowFormat> row, bool needs_cells) {
    const std::size_t start = std::exchange(row_start_, none);
    std::size_t cells = std::exchange(cells_, 0);
    if (start == none || (needs_cells && cells == 0))
        return;
    Paragraph& last = document_.paragraphs.back();
    if (last.end == Paragraph::End::paragraph)
        ++cells;
    last.end = Paragraph::End::row;
    if (row->cells.size() < cells)
        add_missing_cells(row.own(), cells);
    for (std::size_t at = start; at < document_.paragraphs.size(); ++at) {
        document_.paragraphs[at].in_table = true;
        document_.paragraphs[at].row = row;
    }
}

void Builder::end_section(const Shared<ParagraphFormat>& format, const CharacterFormat& mark,
                          const Shared<RowFormat>& row) {
    if (!shows_nothing(current_))
        end_paragraph(format, mark, false, row);
    else
        fold_back();
    close_row(row, true);
    if (document_.paragraphs.empty() || document_.paragraphs.back().ends_section ||
        document_.sections.size() + 1 >= limits::sections)
        return;
    document_.paragraphs.back().ends_section = true;
    document_.sections.push_back(section_);
    section_.groups.clear();
}

void Builder::fold_back() {
    if (document_.paragraphs.empty())
        return;
    std::vector<Run>& last = document_.paragraphs.back().runs;
    last.insert(last.end(), std::make_move_iterator(current_.runs.begin()),
                std::make_move_iterator(current_.runs.end()));
    current_ = Paragraph();
}

void Builder::finish(const Shared<ParagraphFormat>& format, const CharacterFormat& plain, bool in_table,
                     const Shared<RowFormat>& row) {
    const bool needed = document_.paragraphs.empty() || !shows_nothing(current_);
    if (!in_table)
        close_row(row, true);
    if (needed) {
        if (in_table && row_start_ == none)
            row_start_ = document_.paragraphs.size();
        const CharacterFormat mark = current_.runs.empty() ? plain : current_.runs.back().format;
        push(format, mark, Paragraph::End::paragraph);
    } else {
        fold_back();
    }
    close_row(row, true);
    document_.unended = needed && !document_.paragraphs.back().in_table;
    document_.sections.push_back(std::move(section_));
}

} // namespace tolva::rtf
