#include "basic/delimited_file.h"

#include <algorithm>
#include <utility>

#include "basic/code_page.h"
#include "basic/run_time_error.h"

namespace tolva::basic {

namespace {

constexpr char end_of_file_mark = '\x1A';
constexpr std::string_view line_end = "\r\n";

} // namespace

DelimitedReader::DelimitedReader(std::string bytes) : bytes_(std::move(bytes)) {
    if (const std::size_t mark = bytes_.find(end_of_file_mark); mark != std::string::npos)
        bytes_.resize(mark);
}

std::string DelimitedReader::read() {
    if (at_end())
        throw RunTimeError(62);
    skip_blanks();
    std::string item;
    if (here() == '"') {
        const std::size_t start = at_ + 1;
        const std::size_t end = std::min(bytes_.find('"', start), bytes_.size());
        item = bytes_.substr(start, end - start);
        at_ = std::min(end + 1, bytes_.size());
        skip_blanks();
    } else {
        const std::size_t end = std::min(bytes_.find_first_of(",\r\n", at_), bytes_.size());
        item = bytes_.substr(at_, end - at_);
        at_ = end;
    }
    skip_delimiter();
    return from_windows_1252(item);
}

void DelimitedReader::skip_blanks() {
    while (here() == ' ' || here() == '\t')
        ++at_;
}

void DelimitedReader::skip_delimiter() {
    if (bytes_.compare(at_, line_end.size(), line_end) == 0)
        at_ += line_end.size();
    else if (here() == ',' || here() == '\r' || here() == '\n')
        ++at_;
}

void DelimitedWriter::write(std::string_view text) {
    bytes_ += '"';
    bytes_ += to_windows_1252(text);
    bytes_ += '"';
    bytes_ += line_end;
}

void DelimitedWriter::print(std::string_view text) {
    bytes_ += to_windows_1252(text);
    bytes_ += line_end;
}

} // namespace tolva::basic
