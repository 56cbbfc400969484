#include "TableSupport.h"
#include "WidgetsSupport.h"
#include "tests/support/Listener.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "oribund/host/toolkit/lists/TablePainter.h"

#include <gtest/gtest.h>

namespace oribund::test
{
namespace
{

constexpr XY<int> kNone = TableLayout::kNoCell;

/** A table of 300 by 146 with a header and room for five rows of 24, and an entry beside it. */
class Tables : public testing::Test
{
protected:
    Tables()
    {
        TableWidget::InitArgs args(300, 146);
        args.emptyText = L"Nothing here";
        table = desk.add<TableWidget>(args);
        other = desk.add<TextBox>(0, 200);
        table->setAdaptor(&list);
    }

    /** The middle of a cell. */
    XY<int> at(int column, int row) const { return table->layout().cellBox({column, row}).centre(); }

    void edit(int column, int row)
    {
        table->takeFocus();
        ASSERT_TRUE(table->edit().begin({column, row}));
    }

    TableList list{{L"one", L"1"}, {L"two", L"2"}, {L"three", L"3"}};
    Desk desk;
    TableWidget* table = nullptr;
    TextBox* other = nullptr;
};

TEST_F(Tables, ArrowsAndPagesMoveTheCurrentCellAndStopAtTheEdges)
{
    list.fill(100);
    table->takeFocus();
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 0})) << "the first that can be edited";
    const auto press = [&](Key key) {
        EXPECT_TRUE(desk.key(key));
        return table->getCurrentCell();
    };
    EXPECT_EQ(press(Key::Up), (XY<int>{1, 0}));
    EXPECT_EQ(press(Key::Left), (XY<int>{0, 0}));
    EXPECT_EQ(press(Key::Left), (XY<int>{0, 0}));
    EXPECT_EQ(press(Key::Down), (XY<int>{0, 1}));
    EXPECT_EQ(press(Key::PageDown), (XY<int>{0, 6}));
    EXPECT_EQ(press(Key::End), (XY<int>{0, 99}));
    EXPECT_EQ(table->layout().getScroll(), table->layout().getMaxScroll());
    EXPECT_EQ(press(Key::PageUp), (XY<int>{0, 94}));
    EXPECT_EQ(press(Key::Home), (XY<int>{0, 0}));
    EXPECT_FALSE(desk.canvas.inject(Event::keyPress(Key::Down, Event::kCtrl))) << "a command of the window";
    EXPECT_EQ(table->layout().getScroll(), 0);
}

TEST_F(Tables, OnlyWhatTheUserSelectsIsTold)
{
    const Listener told(table->selections());
    table->setCurrentCell({0, 1});
    desk.click(at(0, 1));
    desk.click(at(1, 2));
    desk.key(Key::Up);
    ASSERT_EQ(told.count(), 2u);
    EXPECT_EQ(told.heard[0].cell, (XY<int>{1, 2}));
    table->setEnabled(false);
    desk.click(at(0, 0));
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 1}));
}

TEST_F(Tables, EnterF2ADoubleClickAndTypingOpenTheEntry)
{
    table->setCurrentCell({0, 1});
    table->takeFocus();
    for (const Key key : {Key::Enter, Key::F2}) {
        EXPECT_TRUE(desk.key(key));
        ASSERT_EQ(table->edit().cell(), (XY<int>{1, 1})) << "the first column is not to be edited";
        EXPECT_EQ(table->edit().box()->getShownText(), L"2");
        EXPECT_TRUE(desk.key(Key::Escape));
        EXPECT_FALSE(table->edit().isOpen());
        EXPECT_TRUE(table->hasFocus());
    }
    desk.type(L"new");
    EXPECT_EQ(table->edit().box()->getShownText(), L"new");
    desk.key(Key::Enter);
    EXPECT_EQ(list.stored(), "1,1=new ");
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 2})) << "Enter goes down";
    desk.pressAgain(at(1, 0));
    EXPECT_EQ(table->edit().cell(), (XY<int>{1, 0}));
    EXPECT_TRUE(desk.key(Key::Escape));
    list.locked = true;
    EXPECT_FALSE(desk.key(Key::F2));
    EXPECT_FALSE(desk.canvas.inject(Event::character(L'x')));
    EXPECT_EQ(list.stored(), "1,1=new ");
}

TEST_F(Tables, TabGoesThroughTheEditableCellsAndThenOn)
{
    edit(1, 0);
    desk.type(L"a");
    desk.key(Key::Tab);
    EXPECT_EQ(table->edit().cell(), (XY<int>{1, 1}));
    desk.type(L"b");
    desk.key(Key::Tab, Event::kShift);
    EXPECT_EQ(table->edit().cell(), (XY<int>{1, 0}));
    desk.key(Key::Tab);
    desk.key(Key::Tab);
    desk.type(L"c");
    desk.key(Key::Tab);
    EXPECT_FALSE(table->edit().isOpen());
    EXPECT_TRUE(other->hasFocus());
    EXPECT_EQ(list.stored(), "1,0=a 1,1=b 1,2=c ") << "and no cell that was only passed";
}

TEST_F(Tables, AClickElsewhereStoresAndOutOfUseItDoesNot)
{
    edit(1, 0);
    desk.type(L"a");
    desk.click(at(0, 2));
    EXPECT_FALSE(table->edit().isOpen());
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{0, 2}));
    edit(1, 1);
    desk.type(L"b");
    other->takeFocus();
    edit(1, 2);
    desk.type(L"d");
    table->setEnabled(false);
    EXPECT_FALSE(table->edit().isOpen());
    EXPECT_EQ(list.stored(), "1,0=a 1,1=b ");
}

TEST_F(Tables, ARefusedTextStaysToBeMended)
{
    list.refuses = L"bad";
    edit(1, 0);
    desk.type(L"bad");
    desk.key(Key::Enter);
    ASSERT_TRUE(table->edit().isOpen());
    EXPECT_EQ(table->edit().box()->getShownText(), L"bad");
    other->takeFocus();
    EXPECT_FALSE(table->edit().isOpen());
    EXPECT_EQ(list.stored(), "");
}

TEST_F(Tables, AnEditStaysWithItsRowWhereverThatGoes)
{
    edit(1, 1);
    desk.type(L"typed");
    list.insert(0, L"zero", L"0");
    EXPECT_EQ(table->edit().cell(), (XY<int>{1, 2}));
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 2}));
    EXPECT_TRUE(table->layout().cellBox({1, 2}).contains(table->edit().box()->box()));
    list.rows[2].second = L"changed";
    list.tableChanged();
    EXPECT_EQ(table->edit().box()->getShownText(), L"typed");
    desk.key(Key::Enter);
    EXPECT_EQ(list.stored(), "1,2=typed ");
}

TEST_F(Tables, AnEditWhoseCellIsGoneIsDropped)
{
    const std::function<void()> ways[] = {[&] { list.remove(1); }, [&] { list.locked = true, list.tableChanged(); },
                                          [&] { list.locked = false, list.fill(0); }};
    for (const auto& lose : ways) {
        edit(1, list.getNumRows() - 2);
        desk.type(L"typed");
        lose();
        list.locked = false;
        EXPECT_FALSE(table->edit().isOpen());
        EXPECT_TRUE(table->hasFocus());
    }
    EXPECT_EQ(table->getCurrentCell(), kNone);
    EXPECT_EQ(list.stored(), "");
}

TEST_F(Tables, AnEditOutOfViewEnds)
{
    list.fill(100);
    edit(1, 0);
    desk.type(L"a");
    desk.canvas.inject(Event::mouseWheel(at(0, 2), -10.0));
    EXPECT_FALSE(table->edit().isOpen());
    EXPECT_GT(table->layout().getScroll(), 0);
    EXPECT_EQ(list.stored(), "1,0=a ");
    table->userScroll(0);
    const int right = table->getWidth() - 5;
    desk.press({right, 5});
    desk.drag({right, 400});
    desk.release({right, 400});
    EXPECT_EQ(table->layout().getScroll(), table->layout().getMaxScroll()) << "by the bar";
    desk.canvas.inject(Event::mouseWheel({10, 50}, 100.0));
    EXPECT_EQ(table->layout().getScroll(), 0);
    EXPECT_FALSE(desk.canvas.inject(Event::mouseWheel({10, 50}, 1.0))) << "for what is around it";
}

TEST_F(Tables, TheAdaptorAndTheTableMayGoWhileATextIsStored)
{
    auto own = std::make_unique<TableList>(TableList::Rows{{L"a", L"b"}});
    table->setAdaptor(own.get());
    edit(1, 0);
    desk.type(L"c");
    own.reset();
    EXPECT_FALSE(table->edit().isOpen());
    EXPECT_EQ(table->getAdaptor(), nullptr);
    EXPECT_TRUE(Desk::drawn(*table).findText(L"Nothing here"));
    EXPECT_FALSE(desk.key(Key::Down));

    table->setAdaptor(&list);
    edit(1, 0);
    desk.type(L"last");
    list.onStore = [&] { desk.panel->destroyWidget(*table); };
    desk.key(Key::Enter);
    EXPECT_EQ(list.stored(), "1,0=last ");
    EXPECT_TRUE(Drawable::redrawsEnabled());
}

TEST_F(Tables, AnEdgeOfTheHeaderIsDraggedAndEscapePutsItBack)
{
    const int width = table->layout().getColumnWidth(0);
    const XY<int> edge{table->layout().headerCellBox(0).right, 10};
    EXPECT_EQ(table->contextCursor(edge), MouseCursor::ResizeHorizontal);
    EXPECT_NE(table->contextCursor({edge.x - 20, edge.y}), MouseCursor::ResizeHorizontal);
    desk.press(edge);
    desk.drag({edge.x + 30, 60});
    EXPECT_EQ(table->layout().getColumnWidth(0), width + 30);
    desk.key(Key::Escape);
    EXPECT_EQ(table->layout().getColumnWidth(0), width);
    desk.release(edge);
    desk.press(edge);
    desk.drag({edge.x - 500, 60});
    desk.release({edge.x - 500, 60});
    EXPECT_EQ(table->layout().getColumnWidth(0), 40) << "the minimum";
}

TEST_F(Tables, OnlyWhatIsInViewIsReadAndDrawn)
{
    list.fill(100000);
    list.reads = 0;
    const RecordingRenderer top = Desk::drawn(*table);
    EXPECT_TRUE(top.findText(L"row 4"));
    EXPECT_FALSE(top.findText(L"row 6"));
    EXPECT_TRUE(top.findText(L"Name")) << "the header";
    EXPECT_EQ(top.depth(), 0u);
    EXPECT_LE(list.reads, 12);
    table->setCurrentCell({0, 99999});
    EXPECT_TRUE(Desk::drawn(*table).findText(L"row 99999"));
    list.hidden = true;
    EXPECT_FALSE(Desk::drawn(*table).findText(L"row 99999"));
    for (const XY<int> size : {XY<int>{0, 0}, XY<int>{1, 200}, XY<int>{200, 3}}) {
        table->resize(size);
        EXPECT_EQ(Desk::drawn(*table).depth(), 0u);
        EXPECT_EQ(table->layout().cellAt({0, 0}), kNone);
        desk.key(Key::Down);
    }
}

TEST_F(Tables, TitlesAndCellsArePartsOfItForThoseWhoDoNotSeeIt)
{
    list.fill(100);
    table->setCurrentCell({1, 99});
    table->takeFocus();
    ASSERT_EQ(table->accessiblePartCount(), 2 + 200);
    EXPECT_EQ(table->accessible(1).role, AccessibleRole::ColumnHeader);
    EXPECT_EQ(table->accessible(1).name, UIString(L"Text"));
    const AccessibleDescription current = table->accessible(table->currentAccessiblePart());
    EXPECT_EQ(current.cell, (XY<int>{1, 99}));
    EXPECT_EQ(current.help, UIString(L"row 99, Text"));
    EXPECT_TRUE(current.focused && current.selected && current.editable && current.visible);
    const AccessibleDescription first = table->accessible(2);
    EXPECT_EQ(first.value, L"row 0");
    EXPECT_FALSE(first.visible || first.selected || first.editable);
    EXPECT_EQ(table->accessiblePartAt(at(1, 99)), 2 + 199);
    EXPECT_TRUE(table->accessibleSetText(L"said", 2 + 199));
    EXPECT_FALSE(table->accessibleSetText(L"said", 2 + 198)) << "not to be edited";
    EXPECT_EQ(list.stored(), "1,99=said ");
    EXPECT_TRUE(table->accessibleActivate(3));
    EXPECT_EQ(table->edit().cell(), (XY<int>{1, 0}));
}

} // namespace
} // namespace oribund::test
