#include "letters/frm_document.h"

#include <string_view>

#include "basic/text.h"
#include "letters/frm_main.h"

namespace tolva::letters {

frmDocument::frmDocument(frmMain& main, const std::string& caption_)
    : DocumentScreen(main, "frmDocument", caption_) {
    rtfText.change().set_text("Enter Text");
    rtfText.on_selection_change = [this, &main] { main.show_formats(*this); };
}

bool frmDocument::has_file_name() const {
    constexpr std::string_view unnamed = "Document";
    return basic::left(caption, unnamed.size()) != unnamed;
}

} // namespace tolva::letters
