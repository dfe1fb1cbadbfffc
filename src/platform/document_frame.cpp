#include "platform/document_frame.h"

#include "platform/runtime.h"

namespace tolva::platform {

void DocumentFrame::bring_to_front(DocumentScreen& document) {
    take_out(document);
    documents_.push_back(&document);
}

void DocumentFrame::take_out(const DocumentScreen& document) {
    std::erase(documents_, &document);
}

void DocumentFrame::unload() {
    for (DocumentScreen* const document : std::vector(documents_))
        document->unload();
    Screen::unload();
}

DocumentScreen::DocumentScreen(DocumentFrame& frame, std::string name, std::string caption_)
    : Screen(frame.runtime(), std::move(name), std::move(caption_)), frame_(frame) {}

void DocumentScreen::show(ShowMode mode) {
    frame_.bring_to_front(*this);
    Screen::show(mode);
}

void DocumentScreen::hide() {
    frame_.take_out(*this);
    Screen::hide();
}

} // namespace tolva::platform
