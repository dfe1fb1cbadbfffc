#include "rtf/word_list.h"

#include <iterator>

namespace tolva::rtf {

namespace {

constexpr std::string_view phrases[] = {
    "letter widths",
    "borders, patterns and animation of characters",
    "tracked changes (the text stays)",
    "text frames (their text stays)",
    "column breaks",
    "patterns behind paragraphs and cells",
    "nested tables (kept as text)",
    "page borders",
};

enum Phrase { widths, decoration, changes, frames, columns, patterns, nested, page_borders };

constexpr Word symbol(std::string_view name, char32_t character) {
    return {name, Topic::symbol, static_cast<std::int32_t>(character)};
}

constexpr Word word(std::string_view name, Structure value) {
    return {name, Topic::structure, static_cast<std::int32_t>(value)};
}

constexpr Word word(std::string_view name, Header value) {
    return {name, Topic::header, static_cast<std::int32_t>(value)};
}

constexpr Word word(std::string_view name, Destination value) {
    return {name, Topic::destination, static_cast<std::int32_t>(value)};
}

constexpr Word word(std::string_view name, FontWord value) {
    return {name, Topic::font, static_cast<std::int32_t>(value)};
}

constexpr Word word(std::string_view name, ColourWord value) {
    return {name, Topic::colour, static_cast<std::int32_t>(value)};
}

constexpr Word word(std::string_view name, PictureWord value) {
    return {name, Topic::picture, static_cast<std::int32_t>(value)};
}

constexpr Word word(std::string_view name, PageWord value) {
    return {name, Topic::page, static_cast<std::int32_t>(value)};
}

constexpr Word kept(std::string_view name) {
    return {name, Topic::inline_word, 0};
}

constexpr Word noted(std::string_view name, Phrase phrase) {
    return {name, Topic::noted, phrase};
}

constexpr Word words[] = {
    symbol("tab", U'\t'),
    symbol("line", U'\v'),
    symbol("page", U'\f'),
    symbol("emdash", 0x2014),
    symbol("endash", 0x2013),
    symbol("emspace", 0x2003),
    symbol("enspace", 0x2002),
    symbol("qmspace", 0x2005),
    symbol("bullet", 0x2022),
    symbol("lquote", 0x2018),
    symbol("rquote", 0x2019),
    symbol("ldblquote", 0x201C),
    symbol("rdblquote", 0x201D),
    symbol("zwj", 0x200D),
    symbol("zwnj", 0x200C),
    symbol("zwbo", 0x200B),
    symbol("zwnbo", 0x2060),
    symbol("ltrmark", 0x200E),
    symbol("rtlmark", 0x200F),

    word("plain", Structure::plain),
    word("pard", Structure::paragraph_defaults),
    word("par", Structure::paragraph),
    word("intbl", Structure::in_table),
    word("itap", Structure::nesting),
    word("box", Structure::box),
    word("cell", Structure::cell),
    word("row", Structure::row),
    word("nestcell", Structure::nested_cell),
    word("nestrow", Structure::nested_row),
    word("sectd", Structure::section_defaults),
    word("sect", Structure::section),

    word("rtf", Header::rtf),
    word("ansi", Header::ansi),
    word("mac", Header::mac),
    word("pc", Header::pc),
    word("pca", Header::pca),
    word("ansicpg", Header::code_page),
    word("deff", Header::default_font),
    word("deflang", Header::default_language),
    word("deftab", Header::default_tab),
    word("uc", Header::unicode_skip),
    word("u", Header::unicode),
    word("bin", Header::binary),

    word("fonttbl", Destination::fonts),
    word("falt", Destination::font_alternative),
    word("colortbl", Destination::colours),
    word("pict", Destination::picture),
    word("shppict", Destination::shape_picture),
    word("nonshppict", Destination::fallback_picture),
    word("listtext", Destination::list_text),
    word("pntext", Destination::list_text),
    word("pn", Destination::numbering),
    word("pntxtb", Destination::number_before),
    word("pntxta", Destination::number_after),
    word("field", Destination::field),
    word("fldinst", Destination::inline_group),
    word("fldrslt", Destination::result),
    word("object", Destination::object),
    word("result", Destination::result),
    word("upr", Destination::alternatives),
    word("ud", Destination::unicode_alternative),
    word("shp", Destination::shape),
    word("shpgrp", Destination::container),
    word("shpinst", Destination::container),
    word("shptxt", Destination::shape_text),
    word("do", Destination::shape),
    word("dptxbxtext", Destination::shape_text),
    word("nesttableprops", Destination::nested_row),
    word("nonesttables", Destination::skipped),
    word("listtable", Destination::list_table),
    word("listoverridetable", Destination::list_overrides),
    word("stylesheet", Destination::document_group),
    word("info", Destination::document_group),
    word("userprops", Destination::document_group),
    word("filetbl", Destination::document_group),
    word("revtbl", Destination::document_group),
    word("template", Destination::document_group),
    word("docvar", Destination::document_group),
    word("nextfile", Destination::document_group),
    word("defchp", Destination::document_group),
    word("defpap", Destination::document_group),
    word("listpicture", Destination::document_group),
    word("pgptbl", Destination::document_group),
    word("protusertbl", Destination::document_group),
    word("ftnsep", Destination::document_group),
    word("ftnsepc", Destination::document_group),
    word("ftncn", Destination::document_group),
    word("aftnsep", Destination::document_group),
    word("aftnsepc", Destination::document_group),
    word("aftncn", Destination::document_group),
    word("header", Destination::section_group),
    word("headerl", Destination::section_group),
    word("headerr", Destination::section_group),
    word("headerf", Destination::section_group),
    word("footer", Destination::section_group),
    word("footerl", Destination::section_group),
    word("footerr", Destination::section_group),
    word("footerf", Destination::section_group),
    word("pnseclvl", Destination::section_group),
    word("footnote", Destination::inline_group),
    word("bkmkstart", Destination::inline_group),
    word("bkmkend", Destination::inline_group),
    word("annotation", Destination::inline_group),
    word("atnid", Destination::inline_group),
    word("atnauthor", Destination::inline_group),
    word("atrfstart", Destination::inline_group),
    word("atrfend", Destination::inline_group),
    word("atnref", Destination::inline_group),
    word("atndate", Destination::inline_group),
    word("atntime", Destination::inline_group),
    word("atnparent", Destination::inline_group),
    word("atnicn", Destination::inline_group),
    word("xe", Destination::inline_group),
    word("tc", Destination::inline_group),
    word("tcn", Destination::inline_group),
    word("datafield", Destination::inline_group),
    word("generator", Destination::skipped),
    word("rsidtbl", Destination::skipped),
    word("latentstyles", Destination::skipped),
    word("xmlnstbl", Destination::skipped),
    word("wgrffmtfilter", Destination::skipped),
    word("panose", Destination::skipped),
    word("fname", Destination::skipped),
    word("fontemb", Destination::skipped),
    word("fontfile", Destination::skipped),
    word("blipuid", Destination::skipped),
    word("bliptag", Destination::skipped),
    word("picprop", Destination::skipped),
    word("sp", Destination::skipped),
    word("shprslt", Destination::skipped),
    word("mmathPr", Destination::skipped),
    word("expandedcolortbl", Destination::skipped),
    word("cocoascreenfonts", Destination::skipped),
    word("hyphen", Destination::skipped),
    word("pgdsctbl", Destination::skipped),
    word("nisuswindow", Destination::skipped),
    word("themedata", Destination::note_theme),
    word("colorschememapping", Destination::note_theme),
    word("datastore", Destination::note_data),
    word("mmath", Destination::note_maths),
    word("moMath", Destination::note_maths),
    word("moMathPara", Destination::note_maths),
    word("background", Destination::note_drawing),

    word("fnil", FontWord::unknown),
    word("froman", FontWord::roman),
    word("fswiss", FontWord::swiss),
    word("fmodern", FontWord::modern),
    word("fscript", FontWord::script),
    word("fdecor", FontWord::decor),
    word("ftech", FontWord::technical),
    word("fbidi", FontWord::bidi),
    word("fcharset", FontWord::charset),
    word("fprq", FontWord::pitch),
    word("cpg", FontWord::code_page),

    word("red", ColourWord::red),
    word("green", ColourWord::green),
    word("blue", ColourWord::blue),

    word("pngblip", PictureWord::png),
    word("jpegblip", PictureWord::jpeg),
    word("emfblip", PictureWord::enhanced_metafile),
    word("wmetafile", PictureWord::metafile),
    word("pmmetafile", PictureWord::os2_metafile),
    word("macpict", PictureWord::mac),
    word("dibitmap", PictureWord::dib),
    word("wbitmap", PictureWord::bitmap),
    word("picw", PictureWord::width),
    word("pich", PictureWord::height),
    word("picwgoal", PictureWord::goal_width),
    word("pichgoal", PictureWord::goal_height),
    word("picscalex", PictureWord::scale_x),
    word("picscaley", PictureWord::scale_y),
    word("piccropl", PictureWord::crop_left),
    word("piccropr", PictureWord::crop_right),
    word("piccropt", PictureWord::crop_top),
    word("piccropb", PictureWord::crop_bottom),
    word("wbmbitspixel", PictureWord::bits_per_pixel),
    word("wbmplanes", PictureWord::planes),
    word("wbmwidthbytes", PictureWord::bytes_per_line),

    word("paperw", PageWord::width),
    word("paperh", PageWord::height),
    word("margl", PageWord::left),
    word("margr", PageWord::right),
    word("margt", PageWord::top),
    word("margb", PageWord::bottom),
    word("gutter", PageWord::gutter),
    word("landscape", PageWord::landscape),

    kept("chftn"),
    kept("chatn"),
    kept("chpgn"),
    kept("chdate"),
    kept("chtime"),
    kept("chdpl"),
    kept("chdpa"),
    kept("sectnum"),
    kept("chftnsep"),
    kept("chftnsepc"),

    {"chbrdr", Topic::other_border, decoration},
    {"pgbrdrt", Topic::other_border, page_borders},
    {"pgbrdrb", Topic::other_border, page_borders},
    {"pgbrdrl", Topic::other_border, page_borders},
    {"pgbrdrr", Topic::other_border, page_borders},
    noted("charscalex", widths),
    noted("chshdng", decoration),
    noted("chcfpat", decoration),
    noted("animtext", decoration),
    noted("revised", changes),
    noted("phmrg", frames),
    noted("phpg", frames),
    noted("pvmrg", frames),
    noted("pvpg", frames),
    noted("absw", frames),
    noted("absh", frames),
    noted("posx", frames),
    noted("posy", frames),
    noted("column", columns),
    noted("cfpat", patterns),
    noted("clcfpat", patterns),
    noted("bghoriz", patterns),
    noted("bgvert", patterns),
    noted("bgcross", patterns),
    noted("bgdcross", patterns),
    noted("bgfdiag", patterns),
    noted("bgbdiag", patterns),
};

} // namespace

std::span<const Word> meant_words() {
    return words;
}

std::string_view noted_phrase(std::int32_t value) {
    return phrases[static_cast<std::size_t>(value) % std::size(phrases)];
}

std::string_view noted_phrase(Destination destination) {
    switch (destination) {
    case Destination::note_theme:
        return "theme data";
    case Destination::note_data:
        return "attached data stores";
    case Destination::note_maths:
        return "formulas";
    case Destination::note_drawing:
    case Destination::shape:
        return "drawings (the text in them stays)";
    case Destination::fallback_picture:
        return "second copies of pictures for old readers";
    case Destination::nested_row:
        return phrases[nested];
    default:
        return {};
    }
}

} // namespace tolva::rtf
