#include "rtf/border_words.h"

#include <algorithm>

namespace tolva::rtf {

namespace {

template <BorderStyle style>
void styled(Border& border, Parameter) {
    border.style = style;
}

template <std::int16_t Border::*member>
void number(Border& border, Parameter parameter) {
    border.*member = static_cast<std::int16_t>(std::clamp(parameter.value, 0, 32000));
}

constexpr BorderWord words[] = {
    {"brdrw", false, number<&Border::width>},
    {"brsp", false, number<&Border::space>},
    {"brdrcf", true, number<&Border::colour>},
    {"brdrsh", false, [](Border& border, Parameter) { border.shadow = true; }},
    {"brdrnone", false, styled<BorderStyle::none>},
    {"brdrnil", false, styled<BorderStyle::none>},
    {"brdrs", false, styled<BorderStyle::single>},
    {"brdrth", false, styled<BorderStyle::thick>},
    {"brdrdb", false, styled<BorderStyle::double_line>},
    {"brdrtriple", false, styled<BorderStyle::triple>},
    {"brdrdot", false, styled<BorderStyle::dotted>},
    {"brdrdash", false, styled<BorderStyle::dashed>},
    {"brdrdashsm", false, styled<BorderStyle::small_dashes>},
    {"brdrdashd", false, styled<BorderStyle::dash_dot>},
    {"brdrdashdd", false, styled<BorderStyle::dash_dot_dot>},
    {"brdrdashdotstr", false, styled<BorderStyle::dash_dot>},
    {"brdrhair", false, styled<BorderStyle::hairline>},
    {"brdrwavy", false, styled<BorderStyle::wave>},
    {"brdrwavydb", false, styled<BorderStyle::double_wave>},
    {"brdremboss", false, styled<BorderStyle::embossed>},
    {"brdrengrave", false, styled<BorderStyle::engraved>},
    {"brdrinset", false, styled<BorderStyle::inset>},
    {"brdroutset", false, styled<BorderStyle::outset>},
    // Lines of unlike strength side by side: the nearest that is drawn.
    {"brdrtnthsg", false, styled<BorderStyle::double_line>},
    {"brdrthtnsg", false, styled<BorderStyle::double_line>},
    {"brdrtnthtnsg", false, styled<BorderStyle::triple>},
    {"brdrtnthmg", false, styled<BorderStyle::double_line>},
    {"brdrthtnmg", false, styled<BorderStyle::double_line>},
    {"brdrtnthtnmg", false, styled<BorderStyle::triple>},
    {"brdrtnthlg", false, styled<BorderStyle::double_line>},
    {"brdrthtnlg", false, styled<BorderStyle::double_line>},
    {"brdrtnthtnlg", false, styled<BorderStyle::triple>},
};

constexpr std::string_view styles[] = {
    "brdrnone",   "brdrs",      "brdrth",      "brdrdb",     "brdrtriple", "brdrdot",
    "brdrdash",   "brdrdashsm", "brdrdashd",   "brdrdashdd", "brdrhair",   "brdrwavy",
    "brdrwavydb", "brdremboss", "brdrengrave", "brdrinset",  "brdroutset",
};

} // namespace

std::span<const BorderWord> border_words() {
    return words;
}

void write_border(std::string& out, std::string_view side, const Border& border) {
    if (border == Border{})
        return;
    const auto word = [&out](std::string_view name, int value) {
        if (value) {
            out += '\\';
            out += name;
            out += std::to_string(value);
        }
    };
    out += '\\';
    out += side;
    if (border.shadow)
        out += "\\brdrsh";
    out += '\\';
    out += styles[static_cast<std::size_t>(border.style)];
    word("brdrw", border.width);
    word("brsp", border.space);
    word("brdrcf", border.colour);
}

} // namespace tolva::rtf
