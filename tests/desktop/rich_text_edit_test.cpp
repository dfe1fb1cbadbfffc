#include <gtest/gtest.h>

#include <QClipboard>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QToolButton>

#include "desktop/document_bindings.h"
#include "platform/document_frame.h"
#include "small_screen.h"

namespace tolva::desktop {
namespace {

using Setting = rtf::RichText::Setting;

constexpr const char* formatted = "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs20 plain {\\b bold} end\\par "
                                  "\\qc second\\par third}";

/// A window with a rich text that is edited and one that is only read.
class Desk : public platform::Screen {
  public:
    explicit Desk(platform::Runtime& runtime) : Screen(runtime, "desk", "Desk") {
        edited.change().set_text_rtf(formatted);
        read.change().set_text_rtf(formatted);
        edited.on_selection_change = [this] { ++selections; };
    }
    platform::RichTextBox edited{*this, "edited", platform::RichTextBox::Kind::editable};
    platform::RichTextBox read{*this, "read", platform::RichTextBox::Kind::read_only};
    int selections = 0;
};

class RichTextEditing : public testing::Test {
  protected:
    RichTextEditing() {
        forget_an_earlier_end();
        host.form_maker = [](platform::Screen& screen, EventState& state) {
            auto form = std::make_unique<Form>(screen, state);
            FormBuilder builder(*form, screen);
            auto* const whole = new QVBoxLayout(form.get());
            whole->addWidget(builder("edited"));
            whole->addWidget(builder("read"));
            form->set_first(builder.control("edited"));
            form->resize(500, 500);
            return form;
        };
        slot.make = [this] { return std::make_unique<Desk>(runtime); };
        runtime.run([this] { slot().show(); });
        settle();
    }

    Desk& desk() { return slot(); }
    rtf::RichText& text() { return desk().edited.change(); }
    const rtf::RichText& content() { return desk().edited.content(); }
    RichTextEdit* edit(const char* name = "edited") {
        return host.form_of(desk())->findChild<RichTextEdit*>(QString::fromUtf8(name));
    }
    void select(std::size_t start, std::size_t length) {
        runtime.run([&] { text().select(start, length); });
    }
    /// What the toolkit's document shows, paragraph by paragraph.
    QString shown() { return edit()->toPlainText(); }

    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    support::FixedClock clock{{2026, 11, 20, 10, 0, 0}};
    QtHost host{*disk};
    platform::Runtime runtime{host, clock};
    platform::Slot<Desk> slot{runtime};
};

TEST_F(RichTextEditing, ShowsTheText) {
    EXPECT_EQ(shown(), QStringLiteral("plain bold end\nsecond\nthird"));
    QTextCursor cursor(edit()->document());
    cursor.setPosition(8);
    EXPECT_EQ(cursor.charFormat().fontWeight(), static_cast<int>(QFont::Bold));
    cursor.setPosition(3);
    EXPECT_EQ(cursor.charFormat().fontWeight(), static_cast<int>(QFont::Normal));
}

TEST_F(RichTextEditing, TypesIntoTheTextInTheFormatThere) {
    select(8, 0);
    type(QStringLiteral("XY"));
    EXPECT_EQ(content().text(), "plain boXYld end\r\nsecond\r\nthird");
    EXPECT_EQ(shown(), QStringLiteral("plain boXYld end\nsecond\nthird"));
    EXPECT_EQ(content().sel_start(), 10U);
    runtime.run([&] { text().select(6, 6); });
    EXPECT_EQ(content().sel_bold(), Setting::yes);
}

TEST_F(RichTextEditing, LeavesTheRestOfTheDocumentAsItWas) {
    rtf::RichText expected;
    expected.set_text_rtf(formatted);
    expected.select(expected.length(), 0);
    expected.set_sel_text("!");
    select(content().length(), 0);
    type(QStringLiteral("!"));
    EXPECT_EQ(content().document(), expected.document());
}

TEST_F(RichTextEditing, PartsAndJoinsParagraphs) {
    select(5, 0);
    press(Qt::Key_Return);
    EXPECT_EQ(content().text(), "plain\r\n bold end\r\nsecond\r\nthird");
    EXPECT_EQ(shown(), QStringLiteral("plain\n bold end\nsecond\nthird"));
    press(Qt::Key_Backspace);
    EXPECT_EQ(content().text(), "plain bold end\r\nsecond\r\nthird");
    press(Qt::Key_End);
    press(Qt::Key_Delete);
    EXPECT_EQ(content().text(), "plain bold endsecond\r\nthird");
    EXPECT_EQ(shown(), QStringLiteral("plain bold endsecond\nthird"));
    press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(content().text(), "plain bold end\vsecond\r\nthird");
}

TEST_F(RichTextEditing, ErasesWordsAndSelections) {
    select(10, 0);
    press(Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "plain  end\r\nsecond\r\nthird");
    select(0, 12);
    press(Qt::Key_Delete);
    EXPECT_EQ(content().text(), "second\r\nthird");
}

TEST_F(RichTextEditing, FormatsByKeys) {
    select(0, 5);
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(content().sel_bold(), Setting::yes);
    press(Qt::Key_I, Qt::ControlModifier);
    press(Qt::Key_U, Qt::ControlModifier);
    EXPECT_EQ(content().sel_italic(), Setting::yes);
    EXPECT_EQ(content().sel_underline(), Setting::yes);
    QTextCursor cursor(edit()->document());
    cursor.setPosition(2);
    EXPECT_TRUE(cursor.charFormat().fontUnderline());
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(content().sel_bold(), Setting::no);
}

TEST_F(RichTextEditing, TakesBackAndDoesAgain) {
    select(5, 0);
    type(QStringLiteral("123"));
    press(Qt::Key_Backspace);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "plain123 bold end\r\nsecond\r\nthird");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "plain bold end\r\nsecond\r\nthird") << "typed in one go, undone in one";
    EXPECT_EQ(content().sel_start(), 5U);
    QTest::keyClick(window_with_focus(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(content().text(), "plain123 bold end\r\nsecond\r\nthird");
    // What a command did can be taken back too.
    runtime.run([&] { text().set_text("all gone"); });
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "plain123 bold end\r\nsecond\r\nthird");
}

TEST_F(RichTextEditing, CarriesFormatsOverTheClipboard) {
    select(6, 4);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("bold"));
    select(content().length(), 0);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "plain bold end\r\nsecond\r\nthirdbold");
    runtime.run([&] { text().select(content().length() - 4, 4); });
    EXPECT_EQ(content().sel_bold(), Setting::yes);
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "plain bold end\r\nsecond\r\nthird");
}

TEST_F(RichTextEditing, TakesPlainTextFromElsewhereAndRichSourceAsSuch) {
    select(0, 5);
    QGuiApplication::clipboard()->setText(QStringLiteral("two\nlines"));
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "two\r\nlines bold end\r\nsecond\r\nthird");
    host.put_on_clipboard("{\\rtf1 {\\i slanted}}");
    EXPECT_EQ(host.clipboard_text(), "{\\rtf1 {\\i slanted}}");
    select(0, 3);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(content().text(), "slanted\r\nlines bold end\r\nsecond\r\nthird");
}

TEST_F(RichTextEditing, TellsOfTheCaretAndOfSelections) {
    edit()->setFocus();
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Right);
    EXPECT_EQ(content().sel_start(), 1U);
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(content().sel_start(), 1U);
    EXPECT_GE(content().sel_length(), 15U);
    press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(content().sel_length(), 0U) << "the end that moves is still the moving one";
    EXPECT_GE(desk().selections, 3);
    click(edit()->viewport(), QPoint(8, 10));
    EXPECT_EQ(content().sel_start(), 0U);
}

TEST_F(RichTextEditing, ClicksFindTheirCharacter) {
    QTextCursor cursor(edit()->document());
    cursor.setPosition(11); // ahead of "end"
    const QRect there = edit()->cursorRect(cursor);
    click(edit()->viewport(), there.center());
    EXPECT_EQ(content().sel_start(), 11U);
    cursor.setPosition(18); // within the centred line
    EXPECT_GT(edit()->cursorRect(cursor).left(), 150);
    click(edit()->viewport(), edit()->cursorRect(cursor).center());
    EXPECT_EQ(content().sel_start(), 19U) << "a line end counts two";
}

TEST_F(RichTextEditing, ReadOnlyTextIsSelectedButNotChanged) {
    edit("read")->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    type(QStringLiteral("x"));
    press(Qt::Key_Delete);
    EXPECT_EQ(desk().read.content().text(), "plain bold end\r\nsecond\r\nthird");
    EXPECT_EQ(desk().read.content().sel_length(), desk().read.content().length());
}

TEST_F(RichTextEditing, TablesAndPicturesAreShownAndLivedWith) {
    runtime.run([&] {
        text().set_text_rtf(
            "{\\rtf1 top\\par\\trowd\\cellx3000\\cellx6000\\intbl one\\cell two\\cell\\row\\pard "
            "{\\pict\\pngblip\\picwgoal600\\pichgoal600 89504e47}end}");
    });
    const auto& box = *edit()->document();
    const QRectF one = box.documentLayout()->blockBoundingRect(box.findBlockByNumber(1));
    const QRectF two = box.documentLayout()->blockBoundingRect(box.findBlockByNumber(2));
    EXPECT_LT(one.right(), two.left() + 1);
    EXPECT_NEAR(one.top(), two.top(), 1);
    const QRectF end = box.documentLayout()->blockBoundingRect(box.findBlockByNumber(3));
    EXPECT_GT(end.height(), 35) << "the picture's place is kept";
    select(content().length(), 0);
    type(QStringLiteral("!"));
    EXPECT_EQ(content().text(), "top\r\none\ttwo\r\n\uFFFC"
                                "end!");
}

// --- Documents in a frame ---

class Page : public platform::DocumentScreen {
  public:
    Page(platform::DocumentFrame& frame, std::string caption_)
        : DocumentScreen(frame, "frmDocument", std::move(caption_)) {
        rtfText.change().set_text("Enter Text");
    }
    platform::RichTextBox rtfText{*this, "rtfText", platform::RichTextBox::Kind::editable};
};

class Frame : public platform::DocumentFrame {
  public:
    explicit Frame(platform::Runtime& runtime) : DocumentFrame(runtime, "frmMain", "Word Processor") {
        tbToolBar.on_click = [this](const std::string& key) {
            clicked += key + ".";
            if (key == "Bold")
                tbToolBar.press(key, bold);
        };
    }
    void on_load() override {
        place = platform::WindowPlace{1000, 1000, 9000, 9000};
        begin();
    }
    Page& begin() {
        auto made = std::make_unique<Page>(*this, "Document " + std::to_string(++count));
        Page& page = *made;
        runtime().load(std::move(made), [] {});
        page.show();
        return page;
    }
    platform::MenuEntry mnuFile{*this, "mnuFile", "&File"};
    platform::MenuEntry mnuFileBar0{mnuFile, "mnuFileBar0", "-"};
    platform::ToolBar tbToolBar{*this, "tbToolBar", {{"New", false, true}, {"Bold", true}, {"Center", true}}};
    platform::StatusBar sbStatusBar{*this, "sbStatusBar", "Status"};
    int count = 0;
    bool bold = true;
    std::string clicked;
};

class Documents : public testing::Test {
  protected:
    Documents() {
        forget_an_earlier_end();
        slot.make = [this] { return std::make_unique<Frame>(runtime); };
        runtime.run([this] { slot().show(); });
        settle();
    }
    Form& window() { return *host.form_of(slot()); }
    QMdiArea& area() { return *window().documents(); }
    QToolButton* button(const char* key) {
        for (auto* one : window().findChildren<QToolButton*>())
            if (one->toolTip() == QString::fromUtf8(key))
                return one;
        return nullptr;
    }

    std::unique_ptr<files::FileSystem> disk = files::make_memory_disk();
    support::FixedClock clock{{2026, 11, 20, 14, 5, 0}};
    QtHost host{*disk};
    platform::Runtime runtime{host, clock};
    platform::Slot<Frame> slot{runtime};
};

TEST_F(Documents, LiveInTheirFrame) {
    ASSERT_EQ(area().subWindowList().size(), 1);
    EXPECT_EQ(area().subWindowList().at(0)->windowTitle(), QStringLiteral("Document 1"));
    type(QStringLiteral("Dear "));
    EXPECT_EQ(dynamic_cast<Page*>(slot().active_document())->rtfText.content().text(), "Dear Enter Text");
}

TEST_F(Documents, TheOneTurnedToIsTheActiveOne) {
    platform::DocumentScreen* const first = slot().active_document();
    runtime.run([&] { slot().begin(); });
    settle();
    EXPECT_NE(slot().active_document(), first);
    area().setActiveSubWindow(area().subWindowList().at(0));
    EXPECT_EQ(slot().active_document(), first);
}

TEST_F(Documents, CloseByTheirOwnBoxAndByTheirFrame) {
    runtime.run([&] { slot().begin(); });
    settle();
    area().activeSubWindow()->close();
    settle();
    EXPECT_EQ(slot().documents().size(), 1U);
    EXPECT_EQ(area().subWindowList().size(), 1);
    window().close();
    settle();
    EXPECT_FALSE(slot.loaded());
    EXPECT_TRUE(runtime.screens().empty()) << "the documents go with their frame";
}

TEST_F(Documents, TheToolBarTellsItsKeysAndShowsWhatIsPressed) {
    click(button("New"));
    click(button("Bold"));
    EXPECT_EQ(slot().clicked, "New.Bold.");
    EXPECT_TRUE(button("Bold")->isChecked());
    click(button("Center"));
    EXPECT_FALSE(button("Center")->isChecked()) << "pressed only where the screen says so";
    runtime.run([&] { slot().tbToolBar.press("Center", true); });
    EXPECT_TRUE(button("Center")->isChecked());
}

TEST_F(Documents, TheStatusBarKeepsDateAndTime) {
    QStringList texts;
    for (const auto* label : window().findChild<QStatusBar*>()->findChildren<QLabel*>())
        texts << label->text();
    EXPECT_EQ(texts, (QStringList{QStringLiteral("Status"), QStringLiteral("11/20/2026"),
                                  QStringLiteral("2:05 PM")}));
}

TEST_F(Documents, TheFrameComesUpWhereItWasAndTellsWhereItGoes) {
    const double twip = window().pixels_a_twip();
    EXPECT_NEAR(window().pos().x(), 1000 * twip, 1);
    EXPECT_NEAR(window().width(), 9000 * twip, 1);
    window().resize(700, 650);
    settle();
    EXPECT_NEAR(slot().place->width, 700 / twip, 20);
    EXPECT_NEAR(slot().place->height, 650 / twip, 20);
}

} // namespace
} // namespace tolva::desktop
