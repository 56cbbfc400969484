#include "tests/skin/SkinSupport.h"

#include "tests/toolkit/TableSupport.h"

#include "skin/QtConversions.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

namespace workbench::test
{
namespace
{

using namespace oribund;
using oribund::test::TableList;

/** A table with a header and three rows, and an entry below it. */
class TableView : public testing::Test
{
protected:
    TableView()
    {
        TableWidget::InitArgs args(320, 170);
        args.emptyText = L"Nothing here";
        table = stage.add<TableWidget>(args, 10, 10);
        table->setAdaptor(&list);
        other = stage.add<TextBox>(10, 200);
        view = dynamic_cast<QTableView*>(Stage::nativeOf(*table));
    }

    QPoint at(int column, int row) const { return view->visualRect(view->model()->index(row, column)).center(); }

    /** The entry that is open; null for none. */
    QLineEdit* entry() const
    {
        TextBox* box = table->edit().box();
        return box ? dynamic_cast<QLineEdit*>(Stage::nativeOf(*box)) : nullptr;
    }

    TableList list{{L"Name", L"Door"}, {L"Description", L"opens too late"}, {L"Colour", L"#d98032"}};
    Stage stage;
    TableWidget* table;
    TextBox* other;
    QTableView* view;
};

TEST_F(TableView, ShowsTheTableAndIsWhereTheTableSaysItIs)
{
    ASSERT_TRUE(view);
    EXPECT_EQ(view->model()->rowCount(), 3);
    EXPECT_EQ(view->model()->index(1, 1).data().toString(), "opens too late");
    const auto same = [&](int column, int row) {
        const QPoint topLeft = view->viewport()->pos() + view->visualRect(view->model()->index(row, column)).topLeft();
        const Kt::Box<int> box = table->layout().cellBox({column, row});
        EXPECT_EQ(topLeft, QPoint(box.left, box.top)) << column << "," << row;
    };
    same(0, 0);
    same(1, 2);
    list.fill(100000);
    EXPECT_EQ(view->model()->rowCount(), 100000);
    EXPECT_EQ(view->verticalScrollBar()->maximum(), table->layout().getMaxScroll());
    table->setCurrentCell({1, 70000});
    same(1, 70000);
    view->verticalScrollBar()->setValue(7);
    EXPECT_EQ(table->layout().getScroll(), 7);
    same(1, 2);
    list.fill(0);
    EXPECT_EQ(view->model()->rowCount(), 0);
    EXPECT_FALSE(view->currentIndex().isValid());
}

TEST_F(TableView, MouseAndKeysMoveTheCurrentCell)
{
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(1, 1));
    EXPECT_EQ(stage.focused(), table);
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 1}));
    QTest::keyClick(view, Qt::Key_Down);
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 2}));
    EXPECT_EQ(view->currentIndex(), view->model()->index(2, 1));
    QTest::keyClick(view, Qt::Key_Tab);
    EXPECT_EQ(stage.focused(), other);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(stage.focused(), table);
}

TEST_F(TableView, TypingADoubleClickAndEnterEditInPlace)
{
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(1, 0));
    QTest::keyClicks(view, "G");
    ASSERT_TRUE(entry());
    EXPECT_EQ(QApplication::focusWidget(), entry());
    QTest::keyClicks(entry(), "ate");
    EXPECT_EQ(entry()->text(), "Gate") << "what was there is typed over";
    QTest::keyClick(entry(), Qt::Key_Return);
    EXPECT_EQ(list.stored(), "1,0=Gate ");
    EXPECT_EQ(stage.focused(), table);
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{1, 1}));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at(1, 2));
    ASSERT_TRUE(entry());
    EXPECT_EQ(entry()->selectedText(), "#d98032");
    QTest::keyClicks(entry(), "x");
    QTest::keyClick(entry(), Qt::Key_Escape);
    EXPECT_EQ(entry(), nullptr);
    EXPECT_EQ(stage.focused(), table);
    EXPECT_EQ(list.stored(), "1,0=Gate ");
    settle();
}

TEST_F(TableView, TabGoesOnToTheNextCellAndAClickElsewhereStores)
{
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at(1, 0));
    QTest::keyClicks(entry(), "a");
    QTest::keyClick(entry(), Qt::Key_Tab);
    ASSERT_EQ(table->edit().cell(), (XY<int>{1, 1}));
    QTest::keyClick(entry(), Qt::Key_Backtab);
    ASSERT_EQ(table->edit().cell(), (XY<int>{1, 0}));
    QTest::keyClicks(entry(), "b");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(0, 2));
    EXPECT_EQ(entry(), nullptr);
    EXPECT_EQ(table->getCurrentCell(), (XY<int>{0, 2}));
    EXPECT_EQ(list.stored(), "1,0=a 1,0=b ");
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at(1, 2));
    QTest::keyClicks(entry(), "c");
    QTest::keyClick(entry(), Qt::Key_Tab);
    EXPECT_EQ(list.stored(), "1,0=a 1,0=b 1,2=c ");
    EXPECT_EQ(stage.focused(), other) << "after the last cell";
    settle();
}

TEST_F(TableView, TheHeaderGivesColumnsTheirWidths)
{
    QHeaderView* header = view->horizontalHeader();
    const QPoint edge(header->sectionPosition(0) + header->sectionSize(0) - 1, header->height() / 2);
    const int before = header->sectionSize(0);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
    QTest::mouseMove(header->viewport(), edge + QPoint(40, 0));
    QMouseEvent move(QEvent::MouseMove, edge + QPoint(40, 0), header->viewport()->mapToGlobal(edge + QPoint(40, 0)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(header->viewport(), &move);
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(40, 0));
    EXPECT_EQ(table->layout().getColumnWidth(0), before + 40);
    EXPECT_EQ(header->sectionSize(0), before + 40);
    EXPECT_EQ(header->sectionSize(1), table->layout().getColumnWidth(1));
    EXPECT_EQ(header->length(), view->viewport()->width());
    header->resizeSection(0, 5000);
    EXPECT_EQ(header->sectionSize(0), table->layout().getColumnWidth(0)) << "not further than there is room";
}

TEST_F(TableView, AssistiveToolsHearColumnRowAndTextAndMayChangeIt)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(view);
    ASSERT_TRUE(accessible && accessible->tableInterface());
    QAccessibleTableInterface* cells = accessible->tableInterface();
    EXPECT_EQ(cells->rowCount(), 3);
    QAccessibleInterface* cell = cells->cellAt(1, 1);
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->text(QAccessible::Name), "opens too late");
    EXPECT_EQ(cell->text(QAccessible::Description), "Description, Text");
    EXPECT_EQ(cells->columnDescription(1), "Text");
    cell->setText(QAccessible::Value, "in time");
    EXPECT_EQ(list.stored(), "1,1=in time ");
    list.locked = true;
    cell->setText(QAccessible::Value, "never");
    EXPECT_EQ(list.stored(), "1,1=in time ");
    table->takeFocus();
    list.locked = false;
    table->edit().begin({1, 0});
    EXPECT_EQ(QAccessible::queryAccessibleInterface(entry())->text(QAccessible::Name), "Name, Text");
}

TEST_F(TableView, TheTableMayGoInItsOwnCommitAndTheViewBeforeTheTable)
{
    list.onStore = [&] { stage.panel().destroyWidget(*table); };
    QPointer<QWidget> gone = view;
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at(1, 0));
    QTest::keyClicks(entry(), "x");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(list.stored(), "1,0=x ");
    settle();
    EXPECT_TRUE(gone.isNull());
    list.onStore = nullptr;
    table = stage.add<TableWidget>(TableWidget::InitArgs(320, 170), 10, 10);
    table->setAdaptor(&list);
    delete Stage::nativeOf(*table);
    list.fill(7);
    EXPECT_EQ(Stage::nativeOf(*table), nullptr);
}

TEST_F(TableView, IsPaintedAtBothScales)
{
    table->takeFocus();
    table->setCurrentCell({1, 1});
    const QPoint inMark = view->mapTo(stage.view, view->viewport()->pos() + at(1, 1)) + QPoint(80, 6);
    const auto keep = [&](const char* name) {
        QColor mark;
        for (const int scale : {1, 2}) {
            QImage picture(stage.view->size() * scale, QImage::Format_RGB32);
            picture.setDevicePixelRatio(scale);
            stage.view->render(&picture);
            keepPicture(picture, QString("table-%1-%2x").arg(name).arg(scale));
            EXPECT_TRUE(scale == 1 || mark == picture.pixelColor(inMark * scale)) << name;
            mark = picture.pixelColor(inMark * scale);
        }
        return toQt(fromQt(mark));
    };
    EXPECT_EQ(keep("cells"), toQt(table->getPalette().accent()));
    table->edit().begin({1, 1});
    keep("edit");
    list.fill(100);
    other->takeFocus();
    table->userScroll(60);
    EXPECT_NE(keep("scrolled"), toQt(table->getPalette().accent()));
    table->setEnabled(false);
    keep("disabled");
    list.fill(0);
    keep("empty");
}

} // namespace
} // namespace workbench::test
