#include <QMdiArea>

#include "desktop/field_block.h"
#include "desktop/forms.h"
#include "desktop/rich_text_edit.h"

namespace tolva::desktop {

namespace {

const std::vector<Row> margin_rows = {
    {{"Top:", {fixed("top_margin", 6)}}, {"Left:", {fixed("left_margin", 6)}}},
    {{"Bottom:", {fixed("bottom_margin", 6)}}, {"Right:", {fixed("right_margin", 6)}}},
};

RichTextEdit* page(FormBuilder& builder, const char* name, const QString& said, int characters, int lines) {
    builder.say(name, said);
    auto* const edit = static_cast<RichTextEdit*>(builder(name));
    edit->set_room(characters, lines);
    return edit;
}

} // namespace

void build_letter(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    auto* const top = new QHBoxLayout;
    auto* const line = new QHBoxLayout;
    line->addWidget(builder.label(QStringLiteral("P.S."), "ps"));
    line->addWidget(builder.box("ps", 40, true), 1);
    auto* const left = new QVBoxLayout;
    left->addLayout(line);
    left->addStretch(1);
    top->addLayout(left, 1);
    QGroupBox* const margins = builder.frame("Frame1");
    fill_block(builder, *margins, margin_rows);
    top->addWidget(margins);
    whole->addLayout(top);
    whole->addWidget(page(builder, "rtf1", QStringLiteral("Letter"), 80, 24), 1);

    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(builder("Command1"));
    buttons->addWidget(builder("Command2"));
    buttons->addStretch(1);
    buttons->addWidget(builder("Command4"));
    whole->addLayout(buttons);
    builder.form().set_first(builder.control("ps"));
}

void build_instructions(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->addWidget(page(builder, "rtf1", QStringLiteral("Guide"), 90, 32), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(builder("Command1"));
    buttons->addWidget(builder("Command2"));
    whole->addLayout(buttons);
    builder.form().set_first(builder.control("rtf1"));
}

void build_followupletters(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->addWidget(page(builder, "rtf1", QStringLiteral("Letter"), 80, 24), 1);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(builder("Command1"));
    buttons->addWidget(builder("Command2"));
    whole->addLayout(buttons);
    builder.form().set_first(builder.control("Command1"));
}

void build_frmmain(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->setMenuBar(builder.menu_bar());
    builder.say("tbToolBar", QStringLiteral("Tools"));
    whole->addWidget(builder("tbToolBar"));
    auto* const documents = new QMdiArea(&builder.form());
    documents->setObjectName(QStringLiteral("documents"));
    documents->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    documents->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    whole->addWidget(documents, 1);
    builder.say("sbStatusBar", QStringLiteral("Status"));
    whole->addWidget(builder("sbStatusBar"));
    builder.form().set_documents(documents);
}

void build_frmdocument(FormBuilder& builder) {
    auto* const whole = new QVBoxLayout(&builder.form());
    // A hundred twips on each side.
    const int edge = builder.form().logicalDpiX() * 100 / 1440;
    whole->setContentsMargins(edge, edge, edge, edge);
    whole->addWidget(page(builder, "rtfText", QStringLiteral("Document"), 72, 32));
    builder.form().set_first(builder.control("rtfText"));
}

} // namespace tolva::desktop
