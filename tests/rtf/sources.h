#pragma once

#include <string>

#include "rtf/plain_text.h"
#include "rtf/read.h"
#include "rtf/write.h"

namespace tolva::rtf {

/// A source with a usual header around `body`: fonts 0 Times New Roman, 1 Arial, 2 Symbol, 3 a Japanese one,
/// 4 a Greek one; colours 1 red, 2 blue.
inline std::string source_of(const std::string& body) {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\froman\\fcharset0 Times New "
           "Roman;}"
           "{\\f1\\fswiss\\fcharset0 Arial;}{\\f2\\ftech\\fcharset2 Symbol;}{\\f3\\fnil\\fcharset128 MS "
           "Gothic;}"
           "{\\f4\\fswiss\\fcharset161 Arial Greek;}}"
           "{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}\\uc1 " +
           body + "}";
}

inline Document document_of(const std::string& body) {
    return read(source_of(body));
}

inline std::string text_of(const std::string& body) {
    return plain_text(document_of(body));
}

/// The format of the first run, after the words of `body` have set it for a letter.
inline CharacterFormat format_of(const std::string& words) {
    return document_of(words + " x").paragraphs.front().runs.front().format;
}

inline ParagraphFormat paragraph_of(const std::string& words) {
    return *document_of(words + " x\\par").paragraphs.front().format;
}

/// Whether what was read of the body reads back equal when it is written.
inline bool survives(const std::string& body) {
    const Document document = document_of(body);
    return read(write(document)) == document;
}

} // namespace tolva::rtf
