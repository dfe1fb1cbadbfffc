#include "rtf/source_reader.h"

#include <algorithm>
#include <utility>

#include "rtf/escape.h"
#include "rtf/limits.h"

namespace tolva::rtf {

namespace {

/// Source to be kept, with its raw bytes spelled out, so that what we write is ASCII; binary bytes stay.
std::string in_ascii(std::string_view source, RawBytes raw_bytes) {
    const auto is_raw = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
    if (std::none_of(source.begin(), source.end(), is_raw) || source.find("\\bin") != std::string_view::npos)
        return std::string(source);
    static const CodePage utf8(CodePage::utf_8);
    std::string result;
    while (!source.empty()) {
        const std::size_t plain =
            static_cast<std::size_t>(std::find_if(source.begin(), source.end(), is_raw) - source.begin());
        result += source.substr(0, plain);
        source.remove_prefix(plain);
        if (source.empty())
            break;
        const std::string_view sequence =
            source.substr(0, utf8.length(static_cast<unsigned char>(source.front())));
        if (raw_bytes == RawBytes::utf8 && sequence.size() > 1 && utf8.decode(sequence) != 0xFFFD) {
            // In a group of its own, as the skip count around it isn't known.
            result += "{\\uc1 ";
            write_escaped(result, sequence, utf8);
            result += '}';
            source.remove_prefix(sequence.size());
        } else {
            write_raw_byte(result, source.front());
            source.remove_prefix(1);
        }
    }
    return result;
}

} // namespace

void SourceReader::open_group() {
    group_begins_ = true;
    starred_ = false;
    group_start_ = lexer_.token_start();
    if (groups_.size() < limits::group_depth)
        groups_.push_back(Group(groups_.back()));
    else
        ++deeper_;
}

void SourceReader::close_group() {
    group_begins_ = false;
    if (deeper_) {
        --deeper_;
        return;
    }
    if (groups_.size() <= 2) {
        finished_ = true;
        if (groups_.size() < 2)
            return;
    }
    const Group left = std::move(groups_.back());
    groups_.pop_back();
    if (finished_)
        groups_.back() = left; // what the document ends with
    else if (left.destination != groups_.back().destination)
        leave(left);
}

void SourceReader::skip_group() {
    if (lexer_.skip_group() == Lexer::Skip::cut)
        note("what the cut end of the source held");
    close_group();
}

std::string SourceReader::take_group() {
    const std::size_t start = group_start_;
    const std::int32_t unicode_skip = groups_.back().unicode_skip;
    const Lexer::Skip skip = lexer_.skip_group();
    std::string source;
    if (skip == Lexer::Skip::whole) {
        source = in_ascii(lexer_.slice(start, lexer_.position()), raw_bytes_);
        // The source is going to stand where \uc1 is in force.
        if (unicode_skip != 1 && source.find("\\u") != std::string::npos)
            source = "{\\uc" + std::to_string(unicode_skip) + source + "}";
    } else {
        note("what the cut end of the source held");
    }
    close_group();
    return source;
}

bool SourceReader::begin_group(const Token& token, const Word* word) {
    group_begins_ = false;
    const bool is_destination = word && word->topic == Topic::destination;
    const auto destined = is_destination ? static_cast<Destination>(word->value) : Destination::body;
    if (destination() == Destination::field || destination() == Destination::object) {
        begin_group_in_mark(destined);
    } else if (destination() == Destination::alternatives) {
        begin_alternative(destined);
    } else if (is_destination) {
        enter(destined);
    } else if (starred_) {
        if (in_body() && !(word && word->topic == Topic::silent))
            note("the unknown part \\*\\" + std::string(token.text.substr(0, 32)));
        skip_group();
    } else {
        return false;
    }
    return true;
}

void SourceReader::begin_group_in_mark(Destination destined) {
    if (destined == Destination::result) {
        place_mark();
        groups_.back().destination = Destination::body;
    } else {
        std::string& source = marks_.back().inset->source;
        source += take_group();
    }
}

void SourceReader::begin_alternative(Destination destined) {
    if (destined != Destination::unicode_alternative) {
        skip_group();
        return;
    }
    const auto outer = std::find_if(groups_.rbegin(), groups_.rend(), [](const Group& group) {
        return group.destination != Destination::alternatives;
    });
    groups_.back().destination = outer->destination;
}

void SourceReader::place_mark() {
    Mark& mark = marks_.back();
    if (!mark.placed)
        builder_.add_inset(mark.inset, mark.characters);
    mark.placed = true;
}

void SourceReader::enter(Destination destined) {
    // Where the groups lie too deep nothing can be entered; the text in them still counts.
    const bool can_enter = deeper_ == 0;
    const auto enter_if = [this, destined, can_enter](bool allowed) {
        if (allowed && can_enter)
            groups_.back().destination = destined;
        else
            skip_group();
        return allowed && can_enter;
    };
    switch (destined) {
    case Destination::fonts:
        if (enter_if(in_body()) && !builder_.empty())
            fonts_.add_font_of_early_text();
        break;
    case Destination::colours:
    case Destination::list_text:
        enter_if(in_body());
        break;
    case Destination::font_alternative:
        enter_if(destination() == Destination::fonts);
        break;
    case Destination::picture:
        if (enter_if(in_body()))
            picture_.begin();
        break;
    case Destination::shape_picture:
        shape_picture_ = true;
        break;
    case Destination::fallback_picture:
        if (std::exchange(shape_picture_, false)) {
            note(noted_phrase(destined));
            skip_group();
        }
        break;
    case Destination::numbering:
        if (enter_if(in_body()))
            numbering_ = {};
        break;
    case Destination::number_before:
    case Destination::number_after:
        enter_if(destination() == Destination::numbering);
        break;
    case Destination::field:
        enter_field(Inset::Kind::field);
        break;
    case Destination::object:
        enter_field(Inset::Kind::object);
        break;
    case Destination::shape:
        note(noted_phrase(destined));
        [[fallthrough]];
    case Destination::container:
        if (can_enter && in_body())
            groups_.back().destination = Destination::container;
        break;
    case Destination::shape_text:
        if (can_enter && destination() == Destination::container)
            groups_.back().destination = Destination::body;
        break;
    case Destination::alternatives:
        if (can_enter)
            groups_.back().destination = Destination::alternatives;
        break;
    case Destination::nested_row:
        note(noted_phrase(destined));
        apply_structure(Structure::nested_row, {});
        skip_group();
        break;
    case Destination::skipped:
    case Destination::note_theme:
    case Destination::note_data:
    case Destination::note_maths:
    case Destination::note_drawing:
        note(noted_phrase(destined));
        skip_group();
        break;
    case Destination::list_table:
    case Destination::list_overrides:
    case Destination::document_group:
    case Destination::section_group:
    case Destination::inline_group:
        enter_kept(destined);
        break;
    case Destination::body:
    case Destination::result:
    case Destination::unicode_alternative:
        break; // as the group around it
    }
}

void SourceReader::enter_field(Inset::Kind kind) {
    // The parts of it need groups of their own.
    if (deeper_ || groups_.size() >= limits::group_depth)
        return;
    if (!in_body()) {
        skip_group();
        return;
    }
    groups_.back().destination = kind == Inset::Kind::field ? Destination::field : Destination::object;
    marks_.push_back({std::make_shared<Inset>(), groups_.back().characters, false});
    marks_.back().inset->kind = kind;
}

void SourceReader::enter_kept(Destination destined) {
    if (!in_body()) {
        skip_group();
        return;
    }
    const CharacterFormat characters =
        deeper_ ? groups_.back().characters : groups_[groups_.size() - 2].characters;
    std::string source = take_group();
    if (source.empty())
        return;
    switch (destined) {
    case Destination::inline_group: {
        auto inset = std::make_shared<Inset>();
        inset->source = std::move(source);
        builder_.add_inset(std::move(inset), characters);
        return;
    }
    case Destination::section_group:
        builder_.section().groups.push_back(std::move(source));
        return;
    case Destination::list_table:
    case Destination::list_overrides:
        // Text that went ahead of its tables has been shown without them, and stays so.
        if (!builder_.empty()) {
            note("list tables behind the text");
            return;
        }
        if (destined == Destination::list_overrides) {
            lists_.read_overrides(source);
            break;
        }
        lists_.read_lists(source, [this](int number) { return fonts_.page_of_number(number); });
        break;
    default:
        break;
    }
    document_.groups.push_back(std::move(source));
}

void SourceReader::leave(const Group& left) {
    Group& group = groups_.back();
    switch (left.destination) {
    case Destination::fonts:
        fonts_.finish();
        // What stood ahead of the table had no font to name.
        if (!std::exchange(fonts_read_, true))
            for (Group& each : groups_)
                each.characters.font = static_cast<std::int16_t>(document_.default_font);
        break;
    case Destination::colours:
        if (colour_told_)
            add_colour();
        colours_read_ = colours_begun_;
        break;
    case Destination::picture:
        if (std::shared_ptr<Inset> picture = picture_.finish())
            builder_.add_inset(std::move(picture), group.characters);
        break;
    case Destination::list_text:
        builder_.set_list_text(std::exchange(list_text_, {}));
        break;
    case Destination::numbering:
        group.paragraph.own().numbering = Shared<Numbering>(std::move(numbering_));
        break;
    case Destination::field:
    case Destination::object:
        if (!marks_.back().inset->source.empty())
            place_mark();
        if (marks_.back().placed) {
            auto end = std::make_shared<Inset>();
            end->kind = Inset::Kind::end;
            builder_.add_inset(std::move(end), marks_.back().characters);
        }
        marks_.pop_back();
        break;
    default:
        break;
    }
}

} // namespace tolva::rtf
