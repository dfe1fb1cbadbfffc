#include "letters/frm_main.h"

#include <algorithm>
#include <utility>

#include "basic/number.h"
#include "basic/run_time_error.h"
#include "files/path.h"
#include "printing/page.h"

namespace tolva::letters {

using platform::WindowPlace;
using rtf::RichText;

namespace {

constexpr int object_not_set = 91;
constexpr const char* section = "Settings";
/// Beyond any desk, in twips: what a setting says is not to be trusted with more.
constexpr double farthest = 1e6;

/// The frame's place in the user's settings, in twips, and where it is the first time.
struct PlaceSetting {
    const char* key;
    const char* otherwise;
    int WindowPlace::*member;
};
constexpr PlaceSetting place_settings[] = {
    {"MainLeft", "1000", &WindowPlace::left},
    {"MainTop", "1000", &WindowPlace::top},
    {"MainWidth", "6500", &WindowPlace::width},
    {"MainHeight", "6500", &WindowPlace::height},
};

/// What a save would lose, a line for each kind, as far as a box has room; empty for most documents.
std::string loss_lines(const rtf::Document& document) {
    constexpr std::size_t room = 8;
    const std::vector<std::string> losses = rtf::losses(document);
    std::string lines;
    for (std::size_t at = 0; at < losses.size() && at < room; ++at)
        lines += "\r\n" + losses[at];
    if (losses.size() > room)
        lines += "\r\nand " + std::to_string(losses.size() - room) + " more";
    return lines;
}

/// Runs a command that goes on whatever fails in it.
template <class Command>
void ignoring_errors(Command command) {
    try {
        command();
    } catch (const basic::RunTimeError&) {
    }
}

} // namespace

std::vector<platform::ToolBar::Button> frmMain::buttons() {
    constexpr bool holds = true, separator_behind = true;
    return {
        {"New"},
        {"Open"},
        {"Save", !holds, separator_behind},
        {"Print", !holds, separator_behind},
        {"Cut"},
        {"Copy"},
        {"Paste", !holds, separator_behind},
        {"Bold", holds},
        {"Italic", holds},
        {"Underline", holds, separator_behind},
        {"Align Left", holds},
        {"Center", holds},
        {"Align Right", holds},
    };
}

frmMain::frmMain(module::Module& module)
    : DocumentFrame(module.runtime, "frmMain", "Word Processor"), module_(module) {
    mnuFileNew.on_click = [this] { LoadNewDoc(); };
    mnuFileOpen.on_click = [this] { open(); };
    mnuFileSave.on_click = [this] { save(); };
    mnuFileSaveAs.on_click = [this] { save_as(); };
    mnuFilePrint.on_click = [this] { print(); };
    mnuFileExit.on_click = [this] {
        unload();
        module_.Form1().show();
    };
    mnuEditCut.on_click = [this] { cut(); };
    mnuEditCopy.on_click = [this] { copy(); };
    mnuEditPaste.on_click = [this] { paste(); };

    const std::pair<platform::MenuEntry*, const char*> tags[] = {
        {&first_name, "<firstname>"},
        {&last_name, "<lastname>"},
        {&address, "<address>"},
        {&m_both, "<bothnames>"},
        {&city, "<city>"},
        {&zip_code, "<zip>"},
        {&add_date, "<date>"},
        {&vehicle_make, "<make>"},
        {&vehicle_model, "<model>"},
        {&vehicle_year, "<year>"},
        {&m_businessname, "<businessname>"},
    };
    for (const auto& [entry, tag] : tags)
        entry->on_click = [this, text = std::string(tag)] { append_tag(text); };
    // Alone among the tags it leaves the caret at the start: meant.
    state.on_click = [this] { append_tag("<state>", Caret::at_start); };
    // Nothing stands behind this entry.
    m_salesperson.on_click = [] {};

    tbToolBar.on_click = [this](const std::string& key) { ignoring_errors([&] { press(key); }); };
}

void frmMain::on_load() {
    place.emplace();
    for (const PlaceSetting& setting : place_settings) {
        const double twips =
            basic::leading_number(runtime().host().user_setting(section, setting.key, setting.otherwise));
        (*place).*setting.member = static_cast<int>(std::clamp(twips, -farthest, farthest));
    }
    LoadNewDoc();
}

void frmMain::on_unload() {
    if (!minimised)
        for (const PlaceSetting& setting : place_settings)
            runtime().host().save_user_setting(section, setting.key,
                                               std::to_string((*place).*setting.member));
    module_.Form1().show();
}

frmDocument* frmMain::active() const {
    return static_cast<frmDocument*>(active_document());
}

frmDocument& frmMain::active_or_fail() const {
    if (frmDocument* const document = active())
        return *document;
    throw basic::RunTimeError(object_not_set);
}

void frmMain::LoadNewDoc() {
    auto screen = std::make_unique<frmDocument>(*this, "Document " + std::to_string(++module_.documentcount));
    frmDocument& document = *screen;
    runtime().load(std::move(screen), [] {});
    document.show();
    show_formats(document);
}

// --- Files ---

std::string frmMain::ask(const char* title, void (platform::CommonDialog::*box)()) {
    dlgCommonDialog.initial_folder = module_.appfolder + "\\letters";
    dlgCommonDialog.filter = "All Files (*.*)";
    dlgCommonDialog.title = title;
    (dlgCommonDialog.*box)();
    return dlgCommonDialog.file_name;
}

void frmMain::open() {
    if (!active())
        LoadNewDoc();
    const std::string path = ask("Open", &platform::CommonDialog::show_open);
    if (path.empty())
        return;
    frmDocument& document = active_or_fail();
    document.rtfText.change().load(module_.read_document(path));
    document.caption = path;
    show_formats(document);
}

void frmMain::save() {
    frmDocument& document = active_or_fail();
    // A name that is asked for doesn't become the caption, so the next Save asks again: meant.
    const std::string path =
        document.has_file_name() ? document.caption : ask("Save", &platform::CommonDialog::show_save);
    if (!path.empty() && may_save(document))
        write(document, path);
}

void frmMain::save_as() {
    frmDocument* const document = active();
    if (!document)
        return;
    const std::string path = ask("Save As", &platform::CommonDialog::show_save);
    if (path.empty() || !may_save(*document))
        return;
    document->caption = path;
    write(*document, path);
}

/// What another program put into the document and a save would lose is not lost without a word.
bool frmMain::may_save(const frmDocument& document) {
    const std::string lost = loss_lines(document.rtfText.content().document());
    return lost.empty() || module_.confirm("Saving this document would lose some of it:" + lost) == 1;
}

void frmMain::write(const frmDocument& document, const std::string& path) {
    const std::string source = document.rtfText.content().save();
    files::replace_whole(module_.disk, path, files::Bytes(source.begin(), source.end()));
}

void frmMain::print() {
    frmDocument* const document = active();
    if (!document)
        return;
    ignoring_errors([&] {
        const RichText& content = document->rtfText.content();
        dlgCommonDialog.title = "Print";
        const platform::PrintScope scope = dlgCommonDialog.show_print(content.sel_length() != 0);
        if (scope == platform::PrintScope::cancelled)
            return;
        module_.printer().job_name = files::name_of(files::with_slashes(document->caption));
        printing::print_selection(module_.printer(), content, scope);
    });
}

// --- Editing ---

/// The clipboard carries the rich text source as text.
void frmMain::copy() {
    if (frmDocument* const document = active())
        ignoring_errors([&] { runtime().host().put_on_clipboard(document->rtfText.content().sel_rtf()); });
}

void frmMain::cut() {
    copy();
    if (frmDocument* const document = active()) {
        ignoring_errors([&] { document->rtfText.change().set_sel_text(""); });
        show_formats(*document);
    }
}

/// Text that is no rich text source is not pasted.
void frmMain::paste() {
    if (frmDocument* const document = active()) {
        ignoring_errors([&] { document->rtfText.change().set_sel_rtf(runtime().host().clipboard_text()); });
        show_formats(*document);
    }
}

void frmMain::append_tag(const std::string& tag, Caret caret) {
    frmDocument& document = active_or_fail();
    RichText& text = document.rtfText.change();
    text.set_text(text.text() + tag);
    if (caret == Caret::at_end)
        text.select(text.length(), 0);
    show_formats(document);
}

// --- The tool bar ---

void frmMain::press(const std::string& key) {
    if (key == "New")
        LoadNewDoc();
    else if (key == "Open")
        open();
    else if (key == "Save")
        save();
    else if (key == "Print")
        print();
    else if (key == "Cut")
        cut();
    else if (key == "Copy")
        copy();
    else if (key == "Paste")
        paste();
    else if (key == "Bold")
        toggle(&RichText::sel_bold, &RichText::set_sel_bold);
    else if (key == "Italic")
        toggle(&RichText::sel_italic, &RichText::set_sel_italic);
    else if (key == "Underline")
        toggle(&RichText::sel_underline, &RichText::set_sel_underline);
    else if (key == "Align Left")
        align(RichText::align_left);
    else if (key == "Center")
        align(RichText::align_centre);
    else if (key == "Align Right")
        align(RichText::align_right);
}

/// Where only some of the selection has the format, all gets it.
void frmMain::toggle(RichText::Setting (RichText::*get)() const, void (RichText::*set)(bool)) {
    frmDocument& document = active_or_fail();
    RichText& text = document.rtfText.change();
    (text.*set)((text.*get)() != RichText::Setting::yes);
    show_formats(document);
}

void frmMain::align(int alignment) {
    frmDocument& document = active_or_fail();
    document.rtfText.change().set_sel_alignment(alignment);
    show_formats(document);
}

void frmMain::show_formats(const frmDocument& document) {
    const RichText& text = document.rtfText.content();
    tbToolBar.press("Bold", text.sel_bold() == RichText::Setting::yes);
    tbToolBar.press("Italic", text.sel_italic() == RichText::Setting::yes);
    tbToolBar.press("Underline", text.sel_underline() == RichText::Setting::yes);
    const std::optional<int> alignment = text.sel_alignment();
    tbToolBar.press("Align Left", alignment == RichText::align_left);
    tbToolBar.press("Center", alignment == RichText::align_centre);
    tbToolBar.press("Align Right", alignment == RichText::align_right);
}

// --- Commands that no menu leads to ---

void frmMain::mnuEditUndo_Click() {
    runtime().message("Add 'mnuEditUndo_Click' code.", "");
}

void frmMain::mnuFileSaveAll_Click() {
    runtime().message("Add 'mnuFileSaveAll_Click' code.", "");
}

void frmMain::mnuFileClose_Click() {
    runtime().message("Add 'mnuFileClose_Click' code.", "");
}

} // namespace tolva::letters
