#include "desktop/rich_text_document.h"

#include <QTextCursor>
#include <cassert>

#include "desktop/rich_text_formats.h"
#include "desktop/text.h"
#include "rtf/text_place.h"

namespace tolva::desktop {

namespace {

/// A paragraph's text on its way into a block.
class BlockFiller {
  public:
    BlockFiller(QTextCursor& cursor, const rtf::Document& source, double unit)
        : cursor_(cursor), formats_(source, unit) {}

    void fill(const rtf::Paragraph& paragraph, bool starts_page) {
        auto data = std::make_unique<BlockData>();
        data->format = paragraph.format;
        data->row = paragraph.row;
        data->in_table = paragraph.in_table;
        data->end = paragraph.end;
        data->starts_page = starts_page || paragraph.format->page_break_before;
        const QTextCharFormat mark = formats_.characters(paragraph.mark);
        cursor_.setBlockCharFormat(mark);
        cursor_.setCharFormat(mark);

        if (!paragraph.list_text->text.empty()) {
            const rtf::ListText& list = *paragraph.list_text;
            put(*data, list.text, list.format);
        }
        for (const rtf::Run& run : paragraph.runs) {
            if (!run.inset)
                put(*data, run.text, run.format);
            else if (run.inset->kind == rtf::Inset::Kind::picture)
                put_picture(*data, run);
        }
        cursor_.block().setUserData(data.release());
    }

  private:
    void put(BlockData& data, const std::string& words, const rtf::CharacterFormat& format) {
        QString text = to_qt(words);
        const std::size_t length = static_cast<std::size_t>(text.toUcs4().size());
        data.length += length;
        if (format.hidden) {
            data.hidden.push_back({cursor_.positionInBlock(), length});
            return;
        }
        for (qsizetype at = 0; at < text.size(); ++at) {
            QChar& character = text[at];
            if (character == QChar(0x0C))
                data.page_breaks.push_back(cursor_.positionInBlock() + static_cast<int>(at));
            if (character == QChar(0x0B) || character == QChar(0x0C))
                character = QChar::LineSeparator;
            else if (begins_block(character))
                character = QChar::ReplacementCharacter;
        }
        if (format.small_caps && !format.caps)
            put_small_capitals(text, format);
        else
            cursor_.insertText(text, formats_.characters(format));
    }

    void put_small_capitals(const QString& text, const rtf::CharacterFormat& format) {
        for (qsizetype at = 0; at < text.size();) {
            const bool small = text[at].isLower();
            qsizetype behind = at + 1;
            while (behind < text.size() && text[behind].isLower() == small)
                ++behind;
            cursor_.insertText(text.mid(at, behind - at),
                               small ? formats_.small_capitals(format) : formats_.characters(format));
            at = behind;
        }
    }

    void put_picture(BlockData& data, const rtf::Run& run) {
        ++data.length;
        if (run.format.hidden)
            data.hidden.push_back({cursor_.positionInBlock(), 1});
        else
            cursor_.insertText(QString(QChar::ObjectReplacementCharacter),
                               formats_.picture(run.inset->picture, run.format));
    }

    /// What the toolkit would take for the end of a block or a part of a table of its own.
    static bool begins_block(QChar character) {
        return character == QChar::ParagraphSeparator || character == QChar(0xFDD0) ||
               character == QChar(0xFDD1) || character == QLatin1Char('\n') || character == QLatin1Char('\r');
    }

    QTextCursor& cursor_;
    RichTextFormats formats_;
};

/// Between the block and the next.
std::size_t end_length(const QTextBlock& block) {
    if (!block.next().isValid())
        return 0;
    return BlockData::of(block).end == rtf::Paragraph::End::cell ? 1 : 2;
}

std::size_t characters_in(const QString& text, int from, int to) {
    std::size_t characters = 0;
    for (int at = from; at < to && at < text.size(); ++at)
        characters += text[at].isLowSurrogate() ? 0 : 1;
    return characters;
}

} // namespace

BlockData& BlockData::of(const QTextBlock& block) {
    auto* const data = static_cast<BlockData*>(block.userData());
    assert(data);
    return *data;
}

void show_paragraphs(QTextDocument& target, int first_block, int count, const rtf::Document& source,
                     std::size_t first, std::size_t behind, double unit) {
    assert(count > 0 && behind > first);
    QTextCursor cursor(&target);
    cursor.beginEditBlock();
    cursor.setPosition(target.findBlockByNumber(first_block).position());
    const QTextBlock last = target.findBlockByNumber(first_block + count - 1);
    cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    BlockFiller filler(cursor, source, unit);
    std::size_t section = 0;
    for (std::size_t at = 0; at < behind; ++at) {
        const bool begins_section = at > 0 && source.paragraphs[at - 1].ends_section;
        section += begins_section ? 1 : 0;
        if (at < first)
            continue;
        if (at > first)
            cursor.insertBlock(QTextBlockFormat());
        filler.fill(source.paragraphs[at], begins_section && source.sections.at(section).starts_page());
    }
    cursor.endEditBlock();
}

void show_document(QTextDocument& target, const rtf::Document& source, double unit) {
    show_paragraphs(target, 0, target.blockCount(), source, 0, source.paragraphs.size(), unit);
}

int widget_position(const QTextDocument& document, std::size_t position) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const BlockData& data = BlockData::of(block);
        const std::size_t whole = data.length + end_length(block);
        if (position >= whole && block.next().isValid()) {
            position -= whole;
            continue;
        }
        const QString text = block.text();
        auto hidden = data.hidden.begin();
        int at = 0;
        for (std::size_t passed = 0; at < text.size(); ++at) {
            for (; hidden != data.hidden.end() && hidden->at == at; ++hidden)
                passed += hidden->characters;
            if (passed >= position)
                break;
            passed += text[at].isHighSurrogate() ? 0 : 1;
        }
        return block.position() + at;
    }
    return document.characterCount() - 1;
}

std::size_t text_position(const QTextDocument& document, int position) {
    std::size_t characters = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const BlockData& data = BlockData::of(block);
        if (position >= block.position() + block.length() && block.next().isValid()) {
            characters += data.length + end_length(block);
            continue;
        }
        const int at = std::min(position - block.position(), block.length() - 1);
        for (const BlockData::Hidden& hidden : data.hidden)
            if (hidden.at < at)
                characters += hidden.characters;
        return characters + characters_in(block.text(), 0, at);
    }
    return characters;
}

} // namespace tolva::desktop
