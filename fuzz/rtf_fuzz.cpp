#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "rtf/plain_text.h"
#include "rtf/read.h"
#include "rtf/rich_text.h"
#include "rtf/text_place.h"
#include "rtf/write.h"

namespace {

using namespace tolva::rtf;

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// What every document guarantees.
void check(const Document& document) {
    std::size_t sections = 1;
    std::size_t open = 0;
    bool in_row = false;
    require(!document.paragraphs.empty() && !document.fonts.empty() && !document.colours.empty());
    for (const Paragraph& paragraph : document.paragraphs) {
        sections += paragraph.ends_section;
        require(paragraph.in_table || (!in_row && paragraph.end == Paragraph::End::paragraph));
        in_row = paragraph.in_table && paragraph.end != Paragraph::End::row;
        for (const Run& run : paragraph.runs) {
            require(static_cast<std::size_t>(run.format.font) < document.fonts.size());
            require(static_cast<std::size_t>(run.format.colour) < document.colours.size());
            require(run.inset || !run.text.empty());
            if (!run.inset)
                continue;
            if (run.inset->kind == Inset::Kind::field || run.inset->kind == Inset::Kind::object)
                ++open;
            if (run.inset->kind == Inset::Kind::end)
                require(open-- > 0);
        }
    }
    require(!in_row && open == 0 && sections == document.sections.size());
}

/// A document that has been written reads back equal.
void check_round_trip(const Document& document) {
    require(read(write(document)) == document);
}

void edit(const Document& document, std::string_view bytes) {
    RichText box;
    box.set_document(document);
    const std::size_t length = box.length();
    const auto number = [&bytes](std::size_t at) {
        return bytes.empty() ? std::size_t{0} : static_cast<unsigned char>(bytes[at % bytes.size()]);
    };
    for (std::size_t step = 0; step < 6; ++step) {
        const std::size_t at = bytes.size() - 1 - 3 * step;
        box.select(length ? number(at) * 7 % length : 0, number(at + 1) % 40);
        switch (number(at + 2) % 6) {
        case 0:
            box.set_sel_text("x\r\ny");
            break;
        case 1:
            box.set_sel_text("");
            break;
        case 2:
            box.set_sel_bold(box.sel_bold() != RichText::Setting::yes);
            break;
        case 3:
            box.set_sel_alignment(RichText::align_centre);
            break;
        case 4: {
            const std::string copy = box.sel_rtf();
            box.select(number(at + 1), 3);
            box.set_sel_rtf(copy);
            break;
        }
        default:
            box.set_sel_rtf("{\\rtf1 {\\b new}\\par line}");
            break;
        }
        check(box.document());
        require(box.length() == length_of(box.document()));
    }
    check(read(box.save()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view source(reinterpret_cast<const char*>(data), size);
    if (!is_rich_text(source))
        return 0;
    const Document document = read(source);
    check(document);
    require(tolva::rtf::plain_text(document).size() >= length_of(document));
    check_round_trip(document);
    const Document as_text = read(source, RawBytes::utf8);
    check(as_text);
    edit(document, source);
    return 0;
}
