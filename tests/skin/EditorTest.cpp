#include "tests/skin/SkinSupport.h"

#include "tests/toolkit/TableSupport.h"
#include "tests/toolkit/WidgetsSupport.h"

#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ValTextBox.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"

#include <gtest/gtest.h>

#include <QInputMethodEvent>
#include <QMenu>
#include <QShortcut>

namespace oribund::qt::test
{
namespace
{

using namespace oribund;
using oribund::test::StoreAdaptor;
using oribund::test::TableList;

/** Two entries bound to one text, and two numbers bound to another. */
class EditorOverEntry : public testing::Test
{
protected:
    EditorOverEntry()
    {
        box = stage.add<ValTextBox>(10, 10);
        other = stage.add<ValTextBox>(10, 60);
        box->setDataAdaptor(text);
        other->setDataAdaptor(text);
        TextBox::InitArgs args(90, 22);
        args.align = TextAlign::Right;
        entry = stage.add<NumericEntry>(args, 200, 10);
        entry->setStep(0.5);
        entry->setDataAdaptor(number);
    }

    Kt::Ptr<StoreAdaptor<WString>> text = Kt::makePtr<StoreAdaptor<WString>>(L"one");
    Kt::Ptr<StoreAdaptor<WString>> number = Kt::makePtr<StoreAdaptor<WString>>(L"12");
    Stage stage;
    ValTextBox* box;
    ValTextBox* other;
    NumericEntry* entry;
};

TEST_F(EditorOverEntry, IsThereWhileTheEntryHasTheKeyboard)
{
    EXPECT_EQ(stage.surface->findChild<QLineEdit*>(), nullptr);
    stage.click(*box, {40, 10});
    ASSERT_TRUE(stage.editor());
    EXPECT_EQ(stage.editor()->selectedText(), "one") << "the first click picks up the old text";
    Stage::type("new");
    EXPECT_EQ(stage.editor()->text(), "new");
    EXPECT_TRUE(box->isModified());
    EXPECT_TRUE(text->requests.empty());
    EXPECT_EQ(other->getShownText(), L"one");
    stage.click(*other, {40, 10});
    EXPECT_EQ(text->value, L"new");
    EXPECT_EQ(stage.focused(), other);
    Stage::type("pressed beside it");
    stage.click(stage.panel(), {300, 200});
    EXPECT_EQ(text->value, L"pressed beside it");
    settle();
    EXPECT_EQ(stage.surface->findChild<QLineEdit*>(), nullptr);
}

TEST_F(EditorOverEntry, TheTextStaysWhereItWas)
{
    const auto inkOf = [](const Glob& glob) {
        const QImage picture = Stage::picture(glob);
        const QRgb ground = picture.pixel(picture.width() / 2, 4);
        QRect ink;
        for (int y = 3; y < picture.height() - 3; ++y) {
            for (int x = 3; x < picture.width() - 3; ++x) {
                if (picture.pixel(x, y) != ground)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        return ink;
    };
    TextBox::InitArgs args(120, 24);
    for (const TextAlign align : {TextAlign::Left, TextAlign::Centre, TextAlign::Right}) {
        args.align = align;
        args.text = L"123.5 %";
        TextBox* const entered = stage.add<TextBox>(args, 10, 120);
        const QRect before = inkOf(*entered);
        ASSERT_FALSE(before.isEmpty());
        entered->takeFocus();
        stage.editor()->deselect();
        stage.editor()->setReadOnly(true); // no caret
        EXPECT_EQ(inkOf(*entered), before) << static_cast<int>(align);
        stage.panel().destroyWidget(*entered);
        settle();
    }
}

TEST_F(EditorOverEntry, AClickSetsTheCaretAndADragSelects)
{
    box->setText(L"several words to select from");
    box->resize(300, 22);
    stage.press(*box, {20, 10});
    stage.moveTo({120, 10});
    stage.release({120, 10});
    const QString selected = stage.editor()->selectedText();
    EXPECT_FALSE(selected.isEmpty());
    EXPECT_LT(selected.size(), 20);
    stage.click(*box, {60, 10});
    EXPECT_FALSE(stage.editor()->hasSelectedText());
    EXPECT_GT(stage.editor()->cursorPosition(), 2);
}

TEST_F(EditorOverEntry, AValueThatComesMeanwhileDoesNotDisturbTyping)
{
    box->takeFocus();
    Stage::type("half");
    text->value = L"from elsewhere";
    text->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(stage.editor()->text(), "half");
    Stage::key(Qt::Key_Left);
    Stage::type("-");
    EXPECT_EQ(stage.editor()->text(), "hal-f");
    EXPECT_EQ(stage.editor()->cursorPosition(), 4);
}

TEST_F(EditorOverEntry, UndoIsTheTextsWhileSomethingIsTyped)
{
    int undone = 0;
    QShortcut undo(QKeySequence(QKeySequence::Undo), &stage.window);
    QObject::connect(&undo, &QShortcut::activated, [&] { ++undone; });
    entry->takeFocus();
    Stage::key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 1);
    Stage::type("2+");
    Stage::key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 1);
    ASSERT_EQ(stage.editor()->text(), "12");
    number->value = L"1"; // as by the window's undo
    number->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(stage.editor()->text(), "1") << "what is taken back to the value follows it again";
    Stage::type("15");
    EXPECT_EQ(entry->getShownText(), L"15") << "a beginning like the value is not the end";
    Stage::key(Qt::Key_Return);
    entry->takeFocus();
    Stage::key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 2) << "what was entered is the window's to undo";
    EXPECT_EQ(number->kinds(), ".");
}

TEST_F(EditorOverEntry, TheBoxDecidesWhatCanBeTyped)
{
    TextBox::InitArgs args;
    args.maxLength = 4;
    TextBox* const four = stage.add<TextBox>(args, 10, 120);
    four->takeFocus();
    Stage::type("abcdef");
    EXPECT_EQ(four->getShownText(), L"abcd");
    EXPECT_EQ(stage.editor()->text(), "abcd");
    four->setReadOnly(true);
    EXPECT_TRUE(stage.editor()->isReadOnly());
}

TEST_F(EditorOverEntry, ANumberIsDraggedUntilItIsClicked)
{
    stage.hover(*entry, {40, 10});
    EXPECT_EQ(stage.surface->cursor().shape(), Qt::SizeHorCursor);
    stage.press(*entry, {40, 10});
    stage.moveTo({50, 10});
    stage.release({50, 10});
    EXPECT_EQ(number->value, L"13.5");
    EXPECT_EQ(stage.focused(), nullptr);

    stage.click(*entry, {40, 10});
    ASSERT_EQ(stage.focused(), entry);
    EXPECT_EQ(stage.editor()->selectedText(), "13.5");
    stage.press(*entry, {40, 10});
    stage.moveTo({70, 10});
    stage.release({70, 10});
    EXPECT_EQ(number->requests.size(), 1u) << "now the mouse is for the text";
    stage.editor()->selectAll();
    Stage::key(Qt::Key_Up);
    stage.wheel(*entry, {5, 5}, -120);
    stage.wheel(*entry, {5, 5}, -120);
    EXPECT_EQ(stage.editor()->selectedText(), "13");
    Stage::type("1/0");
    Stage::key(Qt::Key_Return);
    EXPECT_EQ(stage.editor()->accessibleDescription(), "Division by zero");
    Stage::key(Qt::Key_Backspace);
    EXPECT_EQ(stage.editor()->text(), "1/") << "to be mended";
    EXPECT_TRUE(stage.editor()->accessibleDescription().isEmpty());

    stage.click(stage.panel(), {300, 200});
    stage.click(*entry, {40, 10}, Qt::RightButton);
    EXPECT_EQ(stage.focused(), entry) << "as a menu that pastes expects";
    ASSERT_TRUE(QApplication::activePopupWidget());
    QApplication::activePopupWidget()->close();
    settle();
}

TEST_F(EditorOverEntry, GoesWithItsEntryAndMovesWithIt)
{
    box->takeFocus();
    const QPoint before = stage.editor()->pos();
    box->setPosition({30, 14});
    settle();
    EXPECT_EQ(stage.editor()->pos(), before + QPoint(20, 4));
    text->onRequest = [&] { stage.panel().destroyWidget(*box); };
    Stage::type("x");
    Stage::key(Qt::Key_Return);
    settle();
    EXPECT_EQ(stage.surface->findChild<QLineEdit*>(), nullptr);
    EXPECT_TRUE(stage.surface->hasFocus());
    text->onRequest = nullptr;
    other->takeFocus();
    Stage::type("lost");
    stage.panel().setVisible(false);
    settle();
    EXPECT_EQ(stage.surface->findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(text->value, L"x") << "what can take no input any more enters none";
}

/** A table with a header and three rows, and an entry below it. */
class EditorInTable : public testing::Test
{
protected:
    EditorInTable()
    {
        table = stage.add<TableWidget>(TableWidget::InitArgs(320, 170), 10, 10);
        table->setAdaptor(&list);
        other = stage.add<TextBox>(10, 200);
    }

    QPoint at(int column, int row) const
    {
        const Kt::Box<int> box = table->layout().cellBox({column, row});
        return {(box.left + box.right) / 2, (box.top + box.bottom) / 2};
    }

    TableList list{{L"Name", L"Door"}, {L"Description", L"opens too late"}, {L"Colour", L"#d98032"}};
    Stage stage;
    TableWidget* table;
    TextBox* other;
};

TEST_F(EditorInTable, TypingADoubleClickAndTabEditInPlace)
{
    stage.click(*table, at(1, 0));
    EXPECT_EQ(stage.focused(), table);
    Stage::type("Gate");
    ASSERT_TRUE(stage.editor());
    EXPECT_EQ(stage.editor()->text(), "Gate") << "what was there is typed over";
    Stage::key(Qt::Key_Return);
    EXPECT_EQ(stage.focused(), table);
    stage.doubleClick(*table, at(1, 1));
    ASSERT_TRUE(stage.editor());
    EXPECT_EQ(stage.editor()->selectedText(), "opens too late");
    Stage::key(Qt::Key_Backtab);
    ASSERT_EQ(table->edit().cell(), (XY<int>{1, 0}));
    Stage::key(Qt::Key_Tab);
    Stage::key(Qt::Key_Tab);
    Stage::type("b");
    Stage::key(Qt::Key_Tab);
    EXPECT_EQ(stage.focused(), other) << "after the last cell";
    EXPECT_EQ(list.stored(), "1,0=Gate 1,2=b ");
    settle();
    EXPECT_EQ(stage.surface->findChildren<QLineEdit*>().size(), 1);
}

TEST_F(EditorInTable, UndoIsTheCellsAloneFromTheFirstLetterOn)
{
    int undone = 0;
    QShortcut undo(QKeySequence(QKeySequence::Undo), &stage.window);
    QObject::connect(&undo, &QShortcut::activated, [&] { ++undone; });
    stage.click(*table, at(1, 0));
    Stage::type("xyz");
    for (int i = 0; i < 2; ++i)
        Stage::key(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(table->edit().isOpen());
    EXPECT_EQ(stage.editor()->text(), "Door");
    EXPECT_EQ(undone, 0);
    Stage::key(Qt::Key_Escape);
    Stage::key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(undone, 1) << "with the cell closed it is the window's";
    EXPECT_EQ(list.stored(), "");
}

TEST_F(EditorInTable, WhatIsComposedOpensTheEntryToo)
{
    stage.click(*table, at(1, 0));
    QInputMethodEvent composing(QString::fromUtf8("か"), {});
    QApplication::sendEvent(stage.surface, &composing);
    ASSERT_TRUE(stage.editor());
    QInputMethodEvent chosen;
    chosen.setCommitString(QString::fromUtf8("蚊"));
    QApplication::sendEvent(stage.editor(), &chosen);
    EXPECT_EQ(stage.editor()->text(), QString::fromUtf8("蚊"));
    Stage::key(Qt::Key_Escape);
    QInputMethodEvent accent;
    accent.setCommitString(QString::fromUtf8("é"));
    QApplication::sendEvent(stage.surface, &accent);
    EXPECT_EQ(table->edit().box()->getShownText(), L"\u00e9");
}

} // namespace
} // namespace oribund::qt::test
