#include <gtest/gtest.h>

#include <QClipboard>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPrintDialog>
#include <QPushButton>
#include <QToolButton>

#include "desk_by_hand.h"
#include "desktop/rich_text_edit.h"
#include "letters/frm_main.h"
#include "printed_pages.h"
#include "support/customers.h"
#include "support/desk.h"

namespace tolva::desktop {
namespace {

using rtf::RichText;
using support::letter_of;

/// Letters written by hand, on the desk as it is delivered.
class WordProcessorStory : public testing::Test, protected DeskByHand {
  protected:
    void SetUp() override {
        lay_out(support::Desk::delivered());
        shell::start(*module);
        settle();
        open_frame();
        window().resize(1000, 700);
        settle();
    }

    void open_frame() {
        click(widget(module->Form1(), "Command5"));
        settle();
    }
    letters::frmMain& frame() { return static_cast<letters::frmMain&>(module->frmMain()); }
    Form& window() { return form(frame()); }
    letters::frmDocument& document() {
        return static_cast<letters::frmDocument&>(*frame().active_document());
    }
    const RichText& content() { return document().rtfText.content(); }
    QWidget* page() { return widget(document(), "rtfText"); }
    QString title() { return window().documents()->activeSubWindow()->windowTitle(); }
    std::string letter(const std::string& name) { return folder.file("letters/" + name); }
    /// As the program calls it after a file box.
    std::string caption_of(const std::string& name) {
        std::string path = letter(name);
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }

    QToolButton* tool(const char* key) {
        for (auto* one : window().findChildren<QToolButton*>())
            if (one->toolTip() == QString::fromUtf8(key))
                return one;
        throw std::runtime_error(std::string("no tool ") + key);
    }
    void use(const char* key) {
        click(tool(key));
        settle();
    }
    /// Chooses from a menu; the keys go to the page again, as everywhere where a window manager sees to it.
    void choose_and_go_on(const char* entry) {
        choose(frame(), entry);
        window().activateWindow();
        settle();
    }
    void select_all() { press(Qt::Key_A, Qt::ControlModifier); }
    void open_by_name(const std::string& path) {
        pick_file(path);
        choose(frame(), "mnuFileOpen");
    }
    /// Answers the box that asks where and what to print.
    void answer_print_box(const char* button) {
        in_next<QPrintDialog>([button](QPrintDialog& box) {
            for (auto* one : box.findChildren<QPushButton*>())
                if (one->text().remove(QLatin1Char('&')) == QString::fromUtf8(button))
                    return one->click();
            box.reject();
        });
    }
};

TEST_F(WordProcessorStory, OfALetterWrittenSavedAndReadAgain) {
    EXPECT_EQ(title(), QStringLiteral("Document 1"));
    EXPECT_EQ(QApplication::focusWidget(), page());
    select_all();
    type(QStringLiteral("Dear Ann,"));
    press(Qt::Key_Return);
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(tool("Bold")->isChecked());
    type(QStringLiteral("Welcome"));
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_FALSE(tool("Bold")->isChecked());
    type(QStringLiteral(" home"));
    use("Center");
    EXPECT_TRUE(tool("Center")->isChecked());
    press(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
    use("Italic");
    use("Underline");
    EXPECT_EQ(QApplication::focusWidget(), page()) << "the tools leave the keys where they go";
    EXPECT_EQ(content().text(), "Dear Ann,\r\nWelcome home");
    EXPECT_EQ(content().sel_text(), "home");

    // A save of a document without a name asks each time, until Save As has given it one.
    for (const char* name : {"once.rtf", "twice.rtf"}) {
        pick_file(letter(name));
        choose(frame(), "mnuFileSave");
        EXPECT_TRUE(std::filesystem::exists(letter(name)));
        EXPECT_EQ(title(), QStringLiteral("Document 1"));
    }
    pick_file(letter("kept.rtf"));
    choose(frame(), "mnuFileSaveAs");
    EXPECT_EQ(document().caption, caption_of("kept.rtf"));
    EXPECT_EQ(title(), to_qt(caption_of("kept.rtf")));
    press(Qt::Key_End);
    type(QStringLiteral("!"));
    use("Save");
    const rtf::Document written = content().document();

    // A document of its own takes it in again, format by format.
    use("New");
    EXPECT_EQ(title(), QStringLiteral("Document 2"));
    open_by_name(letter("kept.rtf"));
    EXPECT_EQ(frame().documents().size(), 2U);
    EXPECT_EQ(title(), to_qt(caption_of("kept.rtf")));
    EXPECT_EQ(content().text(), "Dear Ann,\r\nWelcome home!");
    EXPECT_EQ(content().document(), written);
    EXPECT_FALSE(tool("Center")->isChecked());
    press(Qt::Key_Down);
    EXPECT_TRUE(tool("Center")->isChecked());
    press(Qt::Key_Right);
    EXPECT_TRUE(tool("Bold")->isChecked());
    press(Qt::Key_End);
    EXPECT_FALSE(tool("Bold")->isChecked());
    EXPECT_TRUE(tool("Italic")->isChecked());
    EXPECT_TRUE(tool("Underline")->isChecked());
}

TEST_F(WordProcessorStory, OfTagsFromTheMenuAndOneTakenBack) {
    select_all();
    use("Bold");
    choose_and_go_on("first_name");
    EXPECT_EQ(content().text(), "Enter Text<firstname>");
    EXPECT_FALSE(tool("Bold")->isChecked()) << "a tag takes the formatting with it";
    type(QStringLiteral(", "));
    EXPECT_EQ(content().text(), "Enter Text<firstname>, ");
    choose_and_go_on("state");
    type(QStringLiteral("> "));
    EXPECT_EQ(content().text(), "> Enter Text<firstname>, <state>") << "the caret went to the start";
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "Enter Text<firstname>, ");

    // By the keys of the menu too.
    press(Qt::Key_A, Qt::AltModifier);
    press(Qt::Key_Z);
    EXPECT_EQ(content().text(), "Enter Text<firstname>, <zip>");
}

TEST_F(WordProcessorStory, OfTextCarriedFromOneDocumentToAnother) {
    auto& first = document();
    select_all();
    use("Bold");
    use("Cut");
    EXPECT_EQ(content().text(), "");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(QLatin1String("{\\rtf1")));
    use("New");
    use("Paste");
    EXPECT_EQ(content().text(), "Enter TextEnter Text");
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    EXPECT_TRUE(tool("Bold")->isChecked());
    press(Qt::Key_End);
    EXPECT_FALSE(tool("Bold")->isChecked());

    // Words from elsewhere that are no rich text: the menu leaves them alone, the keys take them as they are.
    QGuiApplication::clipboard()->setText(QStringLiteral("plain words"));
    choose_and_go_on("mnuEditPaste");
    EXPECT_EQ(content().text(), "Enter TextEnter Text");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "Enter TextEnter Textplain words");

    // The commands follow the window that is turned to, here by its title bar, and a number is given once.
    click(form(first).parentWidget(), QPoint(form(first).width() / 2, 8));
    settle();
    EXPECT_EQ(frame().active_document(), &first);
    EXPECT_EQ(title(), QStringLiteral("Document 1"));
    choose_and_go_on("city");
    EXPECT_EQ(first.rtfText.content().text(), "<city>");
    window().documents()->activeSubWindow()->close();
    settle();
    EXPECT_EQ(title(), QStringLiteral("Document 2"));
    use("New");
    EXPECT_EQ(title(), QStringLiteral("Document 3"));
}

TEST_F(WordProcessorStory, OfTheSelectionOnPaper) {
    if (!support::has_command("pdftotext"))
        GTEST_SKIP() << "pdftotext, which reads the pages back, is not installed";
    const QDir printed(to_qt(folder.file("printed")));
    const auto jobs = [&] {
        return printed.entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Time | QDir::Reversed);
    };
    answer_print_box("Cancel");
    use("Print");
    EXPECT_TRUE(jobs().isEmpty());
    select_all();
    type(QStringLiteral("All of it and a part"));
    press(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(content().sel_text(), "part");
    answer_print_box("Print");
    choose(frame(), "mnuFilePrint");
    ASSERT_EQ(jobs().size(), 1);
    const auto words = [&](const QString& job) {
        std::string all;
        for (const PrintedPage& page : read_pages(from_qt(printed.filePath(job))))
            for (const PrintedWord& word : page.words)
                all += word.text + " ";
        return all;
    };
    const QString part = jobs()[0];
    EXPECT_EQ(words(part), "part ");
    press(Qt::Key_End);
    answer_print_box("Print");
    use("Print");
    QStringList others = jobs();
    others.removeAll(part);
    ASSERT_EQ(others.size(), 1);
    EXPECT_EQ(words(others[0]), "All of it and a part ");
}

TEST_F(WordProcessorStory, OfAFrameThatComesBackWhereItWas) {
    window().move(30, 20);
    window().resize(700, 560);
    settle();
    const QRect there(window().pos(), window().size());
    choose(frame(), "mnuFileExit");
    EXPECT_FALSE(module->frmMain.loaded());
    EXPECT_TRUE(form(module->Form1()).isActiveWindow());
    open_frame();
    EXPECT_EQ(QRect(window().pos(), window().size()), there);
    EXPECT_EQ(title(), QStringLiteral("Document 2")) << "numbers go on";
    const QMdiArea& area = *window().documents();
    EXPECT_TRUE(area.rect().contains(area.activeSubWindow()->geometry())) << "the document lies whole in it";

    window().resize(600, 500);
    window().showMinimized();
    settle();
    window().close();
    settle();
    open_frame();
    EXPECT_FALSE(window().isMinimized());
    EXPECT_EQ(QRect(window().pos(), window().size()), there) << "what is minimised keeps the earlier place";
}

TEST_F(WordProcessorStory, OfALetterThatASaveWouldNotKeepWhole) {
    const std::string foreign = letter_of("\\frobnicate Hello");
    std::ofstream(letter("foreign.rtf"), std::ios::binary) << foreign;
    open_by_name(letter("foreign.rtf"));
    EXPECT_EQ(content().text(), "Hello");
    QString asked;
    answer_with(Qt::Key_Escape, &asked);
    use("Save");
    EXPECT_TRUE(asked.startsWith(QLatin1String("Saving this document would lose some of it:")));
    EXPECT_TRUE(asked.endsWith(QLatin1String("the unknown word \\frobnicate")));
    EXPECT_EQ(support::file_content(letter("foreign.rtf")), foreign);
    // A name that it is not saved under is not its own.
    pick_file(letter("other.rtf"));
    answer_with(Qt::Key_Escape);
    choose(frame(), "mnuFileSaveAs");
    EXPECT_EQ(document().caption, caption_of("foreign.rtf"));
    EXPECT_FALSE(std::filesystem::exists(letter("other.rtf")));
    answer_with(Qt::Key_Return);
    use("Save");
    EXPECT_EQ(support::file_content(letter("foreign.rtf")).find("frobnicate"), std::string::npos);
}

TEST_F(WordProcessorStory, OfAFrameOfTheFirstTimeWithEveryToolInSight) {
    const int side = qRound(6500 * window().pixels_a_twip());
    window().resize(side, side);
    settle();
    for (const char* key : {"New", "Open", "Save", "Print", "Cut", "Copy", "Paste", "Bold", "Italic",
                            "Underline", "Align Left", "Center", "Align Right"})
        EXPECT_FALSE(tool(key)->visibleRegion().isEmpty()) << key;
    EXPECT_FALSE(page()->visibleRegion().isEmpty());
}

} // namespace
} // namespace tolva::desktop
