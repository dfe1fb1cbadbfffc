#include "rtf/plain_text.h"

namespace tolva::rtf {

std::string plain_text(const Document& document) {
    std::string text;
    for (const Paragraph& paragraph : document.paragraphs) {
        text += paragraph.list_text->text;
        for (const Run& run : paragraph.runs) {
            if (run.inset && run.inset->kind == Inset::Kind::picture)
                text += "\uFFFC";
            text += run.text;
        }
        if (&paragraph != &document.paragraphs.back())
            text += paragraph.end == Paragraph::End::cell ? "\t" : "\r\n";
    }
    return text;
}

} // namespace tolva::rtf
