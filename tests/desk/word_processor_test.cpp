#include <gtest/gtest.h>

#include "support/customers.h"
#include "support/desk.h"
#include "support/paper.h"

namespace tolva {
namespace {

using platform::PrintScope;
using support::Desk;
using support::file_content;
using support::letter_of;
using Texts = std::vector<std::string>;

class WordProcessor : public testing::Test {
  protected:
    WordProcessor() {
        desk.start();
        desk.click(desk.menu().Command5);
    }

    letters::frmMain& frame() { return static_cast<letters::frmMain&>(desk.module().frmMain()); }
    letters::frmDocument& document() {
        return static_cast<letters::frmDocument&>(*frame().active_document());
    }
    const rtf::RichText& text() { return document().rtfText.content(); }
    void press(const std::string& key) { desk.runtime().click(frame().tbToolBar, key); }
    bool pressed(const std::string& key) {
        for (const auto& button : frame().tbToolBar.buttons())
            if (button.key == key)
                return button.pressed;
        ADD_FAILURE() << "no button " << key;
        return false;
    }
    void select(std::size_t start, std::size_t length) {
        desk.runtime().select(document().rtfText, start, length);
    }
    void open(const std::string& name, const std::string& source) {
        desk.host.file_to_open = desk.write_letter(name, source);
        desk.choose(frame().mnuFileOpen);
    }
    std::string letter(const std::string& name) { return desk.folder.file("letters/" + name); }
    void close_all() {
        while (frame().active_document())
            desk.close(*frame().active_document());
    }

    Desk desk;
};

// --- The frame ---

TEST_F(WordProcessor, OpensAtItsUsualPlaceWithOneDocument) {
    EXPECT_EQ(frame().caption, "Word Processor");
    EXPECT_TRUE(frame().visible());
    EXPECT_EQ(frame().place, (platform::WindowPlace{1000, 1000, 6500, 6500}));
    ASSERT_EQ(frame().documents().size(), 1u);
    EXPECT_EQ(document().caption, "Document 1");
    EXPECT_EQ(text().text(), "Enter Text");
    EXPECT_TRUE(document().visible());
}

TEST_F(WordProcessor, IsOneHoweverOftenItIsCalled) {
    auto* const first = &frame();
    desk.click(desk.menu().Command5);
    EXPECT_EQ(&frame(), first);
    EXPECT_EQ(frame().documents().size(), 1u);
}

TEST_F(WordProcessor, RemembersItsPlaceUnlessItIsMinimised) {
    frame().place = platform::WindowPlace{10, 20, 3000, 4000};
    desk.choose(frame().mnuFileExit);
    EXPECT_FALSE(desk.module().frmMain.loaded());
    EXPECT_EQ(desk.host.user_settings["Settings/MainLeft"], "10");
    EXPECT_EQ(desk.host.user_settings["Settings/MainTop"], "20");
    EXPECT_EQ(desk.host.user_settings["Settings/MainWidth"], "3000");
    EXPECT_EQ(desk.host.user_settings["Settings/MainHeight"], "4000");

    desk.click(desk.menu().Command5);
    EXPECT_EQ(frame().place, (platform::WindowPlace{10, 20, 3000, 4000}));
    frame().place = platform::WindowPlace{1, 2, 3, 4};
    frame().minimised = true;
    desk.close(frame());
    EXPECT_EQ(desk.host.user_settings["Settings/MainLeft"], "10");
}

TEST_F(WordProcessor, ShowsTheMainMenuOnEveryWayOut) {
    desk.menu().hide();
    desk.close(frame());
    EXPECT_TRUE(desk.menu().visible());
    desk.click(desk.menu().Command5);
    desk.menu().hide();
    desk.choose(frame().mnuFileExit);
    EXPECT_TRUE(desk.menu().visible());
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(WordProcessor, TheProgramsEndAsksNothingAndSavesNothing) {
    open("letter.rtf", letter_of("Hello"));
    desk.runtime().edit(document().rtfText, [](rtf::RichText& content) { content.set_sel_text("more "); });
    frame().place = platform::WindowPlace{10, 20, 3000, 4000};
    desk.click(desk.menu().Command8);
    EXPECT_TRUE(desk.host.ended);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_EQ(file_content(letter("letter.rtf")), letter_of("Hello"));
    EXPECT_TRUE(desk.host.user_settings.empty());
}

TEST_F(WordProcessor, NeverGivesANumberTwice) {
    desk.choose(frame().mnuFileNew);
    EXPECT_EQ(document().caption, "Document 2");
    desk.close(document());
    EXPECT_EQ(document().caption, "Document 1");
    desk.choose(frame().mnuFileNew);
    EXPECT_EQ(document().caption, "Document 3");
    desk.choose(frame().mnuFileExit);
    desk.click(desk.menu().Command5);
    EXPECT_EQ(document().caption, "Document 4");
}

TEST_F(WordProcessor, HasItsToolsInOrderWithFourGaps) {
    Texts tools;
    for (const auto& button : frame().tbToolBar.buttons()) {
        tools.push_back(button.key);
        if (button.separator_behind)
            tools.push_back("|");
    }
    EXPECT_EQ(tools, (Texts{"New", "Open", "Save", "|", "Print", "|", "Cut", "Copy", "Paste", "|", "Bold",
                            "Italic", "Underline", "|", "Align Left", "Center", "Align Right"}));
}

// --- Tags ---

TEST_F(WordProcessor, EachTagGoesToTheEndAndTheCaretBehindIt) {
    const std::pair<platform::MenuEntry*, const char*> tags[] = {
        {&frame().first_name, "<firstname>"},
        {&frame().last_name, "<lastname>"},
        {&frame().address, "<address>"},
        {&frame().m_both, "<bothnames>"},
        {&frame().city, "<city>"},
        {&frame().zip_code, "<zip>"},
        {&frame().add_date, "<date>"},
        {&frame().vehicle_make, "<make>"},
        {&frame().vehicle_model, "<model>"},
        {&frame().vehicle_year, "<year>"},
        {&frame().m_businessname, "<businessname>"},
    };
    std::string expected = "Enter Text";
    for (const auto& [entry, tag] : tags) {
        select(2, 3);
        desk.choose(*entry);
        expected += tag;
        EXPECT_EQ(text().text(), expected);
        EXPECT_EQ(text().sel_start(), expected.size());
        EXPECT_EQ(text().sel_length(), 0u);
    }
}

TEST_F(WordProcessor, TheStateLeavesTheCaretAtTheStart) {
    select(5, 0);
    desk.choose(frame().state);
    EXPECT_EQ(text().text(), "Enter Text<state>");
    EXPECT_EQ(text().sel_start(), 0u);
}

TEST_F(WordProcessor, ATagTakesTheFormattingWithIt) {
    open("formatted.rtf", letter_of("plain \\b bold\\b0\\par\\qc centred"));
    desk.choose(frame().first_name);
    EXPECT_EQ(text().text(), "plain bold\r\ncentred<firstname>");
    select(0, text().length());
    EXPECT_EQ(text().sel_bold(), rtf::RichText::Setting::no);
    EXPECT_EQ(text().sel_alignment(), rtf::RichText::align_left);
}

TEST_F(WordProcessor, TheSalespersonIsThereAndDoesNothing) {
    EXPECT_TRUE(frame().m_salesperson.available());
    desk.choose(frame().m_salesperson);
    EXPECT_EQ(text().text(), "Enter Text");
}

TEST_F(WordProcessor, WithoutADocumentATagFails) {
    close_all();
    desk.choose(frame().city);
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 91);
}

// --- Files ---

TEST_F(WordProcessor, SaveAsksForANameEachTimeUntilSaveAsHasGivenOne) {
    desk.host.file_to_save = letter("first.rtf");
    desk.choose(frame().mnuFileSave);
    EXPECT_EQ(document().caption, "Document 1");
    desk.choose(frame().mnuFileSave);
    ASSERT_EQ(desk.host.files_asked.size(), 2u);
    EXPECT_EQ(desk.host.files_asked[0].title, "Save");
    EXPECT_EQ(desk.host.files_asked[0].folder, desk.module().appfolder + "\\letters");
    EXPECT_EQ(desk.host.files_asked[0].filter, "All Files (*.*)");

    desk.host.file_to_save = letter("second.rtf");
    desk.choose(frame().mnuFileSaveAs);
    EXPECT_EQ(desk.host.files_asked.back().title, "Save As");
    EXPECT_EQ(document().caption, letter("second.rtf"));
    desk.runtime().edit(document().rtfText, [](rtf::RichText& content) { content.set_sel_text("Please "); });
    desk.choose(frame().mnuFileSave);
    EXPECT_EQ(desk.host.files_asked.size(), 3u);

    rtf::RichText first, second;
    first.load(file_content(letter("first.rtf")));
    second.load(file_content(letter("second.rtf")));
    EXPECT_EQ(first.text(), "Enter Text");
    EXPECT_EQ(second.text(), "Please Enter Text");
}

TEST_F(WordProcessor, CancelledFileBoxesChangeNothing) {
    desk.choose(frame().mnuFileSave);
    desk.choose(frame().mnuFileSaveAs);
    desk.choose(frame().mnuFileOpen);
    EXPECT_EQ(document().caption, "Document 1");
    EXPECT_EQ(text().text(), "Enter Text");
    EXPECT_TRUE(std::filesystem::is_empty(desk.folder.path() / "letters"));
}

TEST_F(WordProcessor, OpenReplacesTheDocumentInFrontWithoutAQuestion) {
    desk.choose(frame().mnuFileNew);
    open("hello.rtf", letter_of("Hello"));
    EXPECT_EQ(desk.host.files_asked.at(0).title, "Open");
    EXPECT_EQ(frame().documents().size(), 2u);
    EXPECT_EQ(text().text(), "Hello");
    EXPECT_EQ(document().caption, letter("hello.rtf"));
    EXPECT_TRUE(desk.host.boxes.empty());
}

TEST_F(WordProcessor, OpenBeginsADocumentWhereThereIsNone) {
    close_all();
    open("hello.rtf", letter_of("Hello"));
    ASSERT_EQ(frame().documents().size(), 1u);
    EXPECT_EQ(text().text(), "Hello");
}

TEST_F(WordProcessor, CommandsWorkOnTheDocumentInFront) {
    auto& first = document();
    desk.choose(frame().mnuFileNew);
    desk.runtime().turn_to(first);
    desk.choose(frame().city);
    EXPECT_EQ(first.rtfText.content().text(), "Enter Text<city>");
}

TEST_F(WordProcessor, WithoutADocumentSaveFailsAndSaveAsAndPrintDoNothing) {
    close_all();
    desk.choose(frame().mnuFileSaveAs);
    desk.choose(frame().mnuFilePrint);
    EXPECT_TRUE(desk.host.files_asked.empty());
    EXPECT_TRUE(desk.host.prints_asked.empty());
    EXPECT_FALSE(desk.host.error.has_value());
    desk.choose(frame().mnuFileSave);
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 91);
}

TEST_F(WordProcessor, AFileThatIsNoRichTextEndsTheProgram) {
    open("plain.txt", "just text");
    ASSERT_TRUE(desk.host.error.has_value());
    EXPECT_EQ(desk.host.error->number, 321);
}

TEST_F(WordProcessor, AFileThatCannotBeWrittenEndsTheProgram) {
    desk.host.file_to_save = desk.folder.file("no such folder/letter.rtf");
    desk.choose(frame().mnuFileSaveAs);
    EXPECT_TRUE(desk.host.error.has_value());
    EXPECT_TRUE(desk.host.ended);
}

TEST_F(WordProcessor, WhatASaveWouldLoseIsSaidFirst) {
    const std::string foreign = letter_of("\\frobnicate Hello");
    open("foreign.rtf", foreign);
    desk.host.answers = {2};
    desk.choose(frame().mnuFileSave);
    EXPECT_EQ(desk.host.box_texts(),
              Texts{"Saving this document would lose some of it:\r\nthe unknown word \\frobnicate"});
    EXPECT_EQ(file_content(letter("foreign.rtf")), foreign);
    desk.host.answers = {1};
    desk.choose(frame().mnuFileSave);
    EXPECT_EQ(file_content(letter("foreign.rtf")).find("frobnicate"), std::string::npos);

    desk.host.file_to_save = letter("other.rtf");
    open("foreign.rtf", foreign);
    desk.host.answers = {2};
    desk.choose(frame().mnuFileSaveAs);
    EXPECT_EQ(document().caption, letter("foreign.rtf")) << "a name that nothing was saved under";
    EXPECT_FALSE(std::filesystem::exists(letter("other.rtf")));

    std::string words;
    for (int word = 0; word < 20; ++word)
        words += "\\frobnicate" + std::string(1, static_cast<char>('a' + word));
    open("worse.rtf", letter_of(words + " Hello"));
    desk.host.answers = {2};
    desk.choose(frame().mnuFileSave);
    const std::string last_line = "and 12 more";
    const std::string text = desk.host.boxes.back().text;
    EXPECT_EQ(text.substr(text.size() - last_line.size()), last_line);
}

TEST_F(WordProcessor, APlaceThatNoDeskHasIsCutShort) {
    desk.choose(frame().mnuFileExit);
    desk.host.user_settings["Settings/MainLeft"] = "-1e300";
    desk.host.user_settings["Settings/MainWidth"] = "wide";
    desk.click(desk.menu().Command5);
    EXPECT_EQ(frame().place, (platform::WindowPlace{-1000000, 1000, 0, 6500}));
}

TEST_F(WordProcessor, ALetterSavedHereCanBeMergedAndPrinted) {
    desk.choose(frame().first_name);
    desk.host.file_to_save = letter("mine.rtf");
    desk.choose(frame().mnuFileSave);
    Desk::add(*desk.module().listingdb,
              support::customer({{"first", "Ann"}}, {{"datelisted", basic::make_date(2026, 11, 1)}}));
    desk.click(desk.menu().Command9);
    desk.choose(desk.listings().m_printletter);
    auto& screen = static_cast<letters::letter&>(desk.module().letter());
    desk.host.file_to_open = letter("mine.rtf");
    desk.click(screen.Command1);
    desk.host.answers = {1};
    desk.click(screen.Command2);
    EXPECT_EQ(desk.host.recorded_printer.jobs.at(0).pages.at(0).rich_text, "Enter TextAnn");
}

// --- Printing ---

TEST_F(WordProcessor, PrintsAllOrTheSelection) {
    desk.choose(frame().mnuFilePrint);
    EXPECT_EQ(desk.host.prints_asked.at(0).title, "Print");
    EXPECT_FALSE(desk.host.prints_asked.at(0).has_selection);
    select(6, 4);
    desk.host.print_scope = PrintScope::selection;
    press("Print");
    EXPECT_TRUE(desk.host.prints_asked.at(1).has_selection);
    const auto& jobs = desk.host.recorded_printer.jobs;
    ASSERT_EQ(jobs.size(), 2u);
    EXPECT_EQ(jobs[0].pages.at(0).rich_text, "Enter Text");
    EXPECT_EQ(jobs[0].name, "Document 1");
    EXPECT_EQ(jobs[1].pages.at(0).rich_text, "Text");
}

TEST_F(WordProcessor, PrintsNothingOnCancelAndSaysNothingOnFailure) {
    desk.host.print_scope = PrintScope::cancelled;
    desk.choose(frame().mnuFilePrint);
    EXPECT_TRUE(desk.host.recorded_printer.jobs.empty());
    desk.host.print_scope = PrintScope::all;
    desk.host.recorded_printer.failing_jobs = {1};
    desk.choose(frame().mnuFilePrint);
    EXPECT_TRUE(desk.host.boxes.empty());
    EXPECT_FALSE(desk.host.error.has_value());
}

// --- Editing ---

TEST_F(WordProcessor, TheClipboardCarriesSource) {
    open("formatted.rtf", letter_of("plain \\b bold\\b0"));
    select(6, 4);
    desk.choose(frame().mnuEditCopy);
    EXPECT_EQ(desk.host.clipboard.substr(0, 6), "{\\rtf1");
    EXPECT_EQ(text().text(), "plain bold");
    desk.choose(frame().mnuEditCut);
    EXPECT_EQ(text().text(), "plain ");
    select(0, 0);
    desk.choose(frame().mnuEditPaste);
    EXPECT_EQ(text().text(), "boldplain ");
    select(0, 4);
    EXPECT_EQ(text().sel_bold(), rtf::RichText::Setting::yes);
}

TEST_F(WordProcessor, TextThatIsNoSourceIsNotPasted) {
    select(0, 5);
    for (const char* elsewhere : {"plain words", ""}) {
        desk.host.clipboard = elsewhere;
        desk.choose(frame().mnuEditPaste);
        EXPECT_EQ(text().text(), "Enter Text");
    }
    EXPECT_FALSE(desk.host.error.has_value());
}

TEST_F(WordProcessor, ToolsSetFormatsAndShowThem) {
    select(0, 5);
    for (const char* key : {"Bold", "Italic", "Underline"}) {
        EXPECT_FALSE(pressed(key));
        press(key);
        EXPECT_TRUE(pressed(key));
    }
    select(6, 4);
    EXPECT_FALSE(pressed("Bold"));
    select(0, 5);
    EXPECT_TRUE(pressed("Bold"));
    EXPECT_TRUE(pressed("Italic"));
    EXPECT_TRUE(pressed("Underline"));
    press("Bold");
    EXPECT_FALSE(pressed("Bold"));
    EXPECT_EQ(text().sel_bold(), rtf::RichText::Setting::no);
}

TEST_F(WordProcessor, WhereOnlySomeIsBoldAllBecomesBold) {
    open("formatted.rtf", letter_of("plain \\b bold\\b0"));
    select(0, 10);
    EXPECT_FALSE(pressed("Bold"));
    press("Bold");
    EXPECT_EQ(text().sel_bold(), rtf::RichText::Setting::yes);
}

TEST_F(WordProcessor, ToolsAlignAndShowTheAlignment) {
    EXPECT_TRUE(pressed("Align Left"));
    press("Center");
    EXPECT_EQ(text().sel_alignment(), 2);
    EXPECT_TRUE(pressed("Center"));
    EXPECT_FALSE(pressed("Align Left"));
    press("Align Right");
    EXPECT_EQ(text().sel_alignment(), 1);
    EXPECT_TRUE(pressed("Align Right"));
    press("Align Left");
    EXPECT_EQ(text().sel_alignment(), 0);
}

TEST_F(WordProcessor, ToolsWithoutADocumentDoNothingButNewAndOpen) {
    close_all();
    for (const char* key : {"Save", "Print", "Cut", "Copy", "Paste", "Bold", "Italic", "Underline",
                            "Align Left", "Center", "Align Right"})
        press(key);
    EXPECT_FALSE(desk.host.error.has_value());
    EXPECT_TRUE(desk.host.boxes.empty());
    press("New");
    EXPECT_EQ(frame().documents().size(), 1u);
}

TEST_F(WordProcessor, AToolIgnoresAFileThatFails) {
    desk.host.file_to_open = desk.write_letter("plain.txt", "just text");
    press("Open");
    EXPECT_FALSE(desk.host.error.has_value());
    EXPECT_EQ(text().text(), "Enter Text");
}

TEST_F(WordProcessor, CommandsThatNoMenuLeadsToSayWhatTheySay) {
    frame().mnuEditUndo_Click();
    frame().mnuFileSaveAll_Click();
    frame().mnuFileClose_Click();
    EXPECT_EQ(desk.host.box_texts(),
              (Texts{"Add 'mnuEditUndo_Click' code.", "Add 'mnuFileSaveAll_Click' code.",
                     "Add 'mnuFileClose_Click' code."}));
    frame().add_cofirstname();
    frame().add_colastname();
    EXPECT_EQ(text().text(), "Enter Text<cofirstname><colastname>");
}

} // namespace
} // namespace tolva
