#pragma once

#include "letters/frm_document.h"
#include "module/module.h"
#include "platform/tool_bar.h"

namespace tolva::letters {

/// The word processor: a frame with any number of documents, in which the agent writes letters. It works on
/// the document in front. Nothing asks before a document is closed or replaced.
class frmMain : public platform::DocumentFrame {
  public:
    explicit frmMain(module::Module& module);

    platform::CommonDialog dlgCommonDialog{*this, "dlgCommonDialog"};
    platform::ToolBar tbToolBar{*this, "tbToolBar", buttons()};
    platform::StatusBar sbStatusBar{*this, "sbStatusBar", "Status"};

    platform::MenuEntry mnuFile{*this, "mnuFile", "&File"};
    platform::MenuEntry mnuFileNew{mnuFile, "mnuFileNew", "&New"};
    platform::MenuEntry mnuFileOpen{mnuFile, "mnuFileOpen", "&Open..."};
    platform::MenuEntry mnuFileBar0{mnuFile, "mnuFileBar0", "-"};
    platform::MenuEntry mnuFileSave{mnuFile, "mnuFileSave", "&Save"};
    platform::MenuEntry mnuFileSaveAs{mnuFile, "mnuFileSaveAs", "Save &As..."};
    platform::MenuEntry mnuFileBar1{mnuFile, "mnuFileBar1", "-"};
    platform::MenuEntry mnuFilePrint{mnuFile, "mnuFilePrint", "&Print..."};
    platform::MenuEntry mnuFileExit{mnuFile, "mnuFileExit", "E&xit"};

    platform::MenuEntry mnuEdit{*this, "mnuEdit", "&Edit"};
    platform::MenuEntry mnuEditBar0{mnuEdit, "mnuEditBar0", "-"};
    platform::MenuEntry mnuEditCut{mnuEdit, "mnuEditCut", "Cu&t"};
    platform::MenuEntry mnuEditCopy{mnuEdit, "mnuEditCopy", "&Copy"};
    platform::MenuEntry mnuEditPaste{mnuEdit, "mnuEditPaste", "&Paste"};

    platform::MenuEntry add_tag{*this, "add_tag", "&Add Tag"};
    platform::MenuEntry first_name{add_tag, "first_name", "&First Name"};
    platform::MenuEntry last_name{add_tag, "last_name", "&Last Name"};
    platform::MenuEntry address{add_tag, "address", "&Address"};
    platform::MenuEntry m_both{add_tag, "m_both", "&Both First Names if they Exist, First Name if Not"};
    platform::MenuEntry city{add_tag, "city", "&City"};
    platform::MenuEntry state{add_tag, "state", "&State"};
    platform::MenuEntry zip_code{add_tag, "zip_code", "&Zip Code"};
    platform::MenuEntry add_date{add_tag, "add_date", "&Date"};
    platform::MenuEntry vehicle_make{add_tag, "vehicle_make", "&Make"};
    platform::MenuEntry vehicle_model{add_tag, "vehicle_model", "M&odel"};
    platform::MenuEntry vehicle_year{add_tag, "vehicle_year", "&Year"};
    platform::MenuEntry m_businessname{add_tag, "m_businessname", "&Business Name"};
    platform::MenuEntry m_salesperson{add_tag, "m_salesperson", "&Salesperson Name"};

    void on_load() override;
    void on_unload() override;

    /// Begins a document under the next number.
    void LoadNewDoc();
    /// Brings the tool bar in step with what is selected.
    void show_formats(const frmDocument& document);

    // --- Commands that no menu leads to ---

    void add_cofirstname() { append_tag("<cofirstname>"); }
    void add_colastname() { append_tag("<colastname>"); }
    void mnuEditUndo_Click();
    void mnuFileSaveAll_Click();
    void mnuFileClose_Click();

  private:
    static std::vector<platform::ToolBar::Button> buttons();

    /// The document in front, or null.
    frmDocument* active() const;
    /// Error 91 when there is none.
    frmDocument& active_or_fail() const;

    void open();
    void save();
    void save_as();
    void print();
    void cut();
    void copy();
    void paste();
    void press(const std::string& key);
    void toggle(rtf::RichText::Setting (rtf::RichText::*get)() const, void (rtf::RichText::*set)(bool));
    void align(int alignment);
    enum class Caret { at_start, at_end };
    /// Adds the tag at the end of the document, which thereby loses its formatting: meant.
    void append_tag(const std::string& tag, Caret caret = Caret::at_end);

    /// The path that a file box gives, empty when cancelled.
    std::string ask(const char* title, void (platform::CommonDialog::*box)());
    /// Asks where a save would lose something.
    bool may_save(const frmDocument& document);
    void write(const frmDocument& document, const std::string& path);

    module::Module& module_;
};

} // namespace tolva::letters
