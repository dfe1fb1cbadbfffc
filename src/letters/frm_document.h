#pragma once

#include "platform/document_frame.h"
#include "platform/rich_text_box.h"

namespace tolva::letters {

class frmMain;

/// One document of the word processor. Its caption is its file state: one that begins with "Document" has no
/// file name yet; any other is the file's full path.
class frmDocument : public platform::DocumentScreen {
  public:
    frmDocument(frmMain& frame, const std::string& caption);

    platform::RichTextBox rtfText{*this, "rtfText", platform::RichTextBox::Kind::editable};

    bool has_file_name() const;
};

} // namespace tolva::letters
