#pragma once

#include <string>
#include <vector>

#include "platform/screen.h"

namespace tolva::platform {

class DocumentScreen;

/// A screen with room for documents: windows that live inside its own, of which one is in front.
class DocumentFrame : public Screen {
  public:
    using Screen::Screen;

    /// The document in front, or null when none is shown.
    DocumentScreen* active_document() const { return documents_.empty() ? nullptr : documents_.back(); }
    /// Those on show, the one in front last.
    const std::vector<DocumentScreen*>& documents() const { return documents_; }

    /// The documents go first.
    void unload() override;

  private:
    friend class DocumentScreen;
    friend class Runtime;

    void bring_to_front(DocumentScreen& document);
    void take_out(const DocumentScreen& document);

    std::vector<DocumentScreen*> documents_;
};

/// A document's window. Showing it brings it to the front of its frame.
class DocumentScreen : public Screen {
  public:
    DocumentScreen(DocumentFrame& frame, std::string name, std::string caption);

    DocumentFrame& frame() const { return frame_; }

    void show(ShowMode mode = ShowMode::activate) override;
    void hide() override;

  private:
    DocumentFrame& frame_;
};

} // namespace tolva::platform
