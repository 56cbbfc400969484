#include "tests/skin/SkinSupport.h"

#include "tests/toolkit/WidgetsSupport.h"

#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"

#include "skin/QtConversions.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

namespace workbench::test
{
namespace
{

using namespace oribund;
using oribund::test::StoreAdaptor;

NumericEntry* addEntry(Stage& stage, int x, int y)
{
    TextBox::InitArgs args(90, 22);
    args.align = TextAlign::Right;
    NumericEntry* entry = stage.add<NumericEntry>(args, x, y);
    entry->setStep(0.5);
    return entry;
}

/** A number, its name to the left of it, and another number below, in a panel that is higher than its window. */
class NumericEntryPeer : public testing::Test
{
protected:
    NumericEntryPeer()
    {
        box = addEntry(stage, 100, 10);
        other = addEntry(stage, 100, 60);
        Label::InitArgs args(80, 22);
        args.text = L"Saturation";
        label = stage.add<ScrubLabel>(args, 10, 10);
        label->setEntry(box);
        box->setDataAdaptor(store);
        other->setDataAdaptor(store);
        native = dynamic_cast<QLineEdit*>(Stage::nativeOf(*box));
        stage.panel().resize(400, 900);
    }

    static void move(QWidget* widget, const QPoint& to, Qt::MouseButtons held = Qt::LeftButton,
                     Qt::KeyboardModifiers modifiers = {})
    {
        QMouseEvent event(QEvent::MouseMove, to, widget->mapToGlobal(to), Qt::NoButton, held, modifiers);
        QApplication::sendEvent(widget, &event);
    }

    static void press(QWidget* widget) { QTest::mousePress(widget, Qt::LeftButton, {}, kStart); }

    static void release(QWidget* widget, const QPoint& at) { QTest::mouseRelease(widget, Qt::LeftButton, {}, at); }

    void wheel() const
    {
        QWheelEvent turned(QPointF(5, 5), native->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                           Qt::NoScrollPhase, false);
        QApplication::sendEvent(native, &turned);
    }

    static constexpr QPoint kStart{40, 10};

    Kt::Ptr<StoreAdaptor<WString>> store = Kt::makePtr<StoreAdaptor<WString>>(L"12");
    Stage stage;
    NumericEntry* box;
    NumericEntry* other;
    ScrubLabel* label;
    QLineEdit* native;
};

TEST_F(NumericEntryPeer, ADragScrubsInsteadOfSelectingText)
{
    other->takeFocus();
    EXPECT_EQ(native->cursor().shape(), Qt::SizeHorCursor);
    press(native);
    move(native, {50, 10});
    EXPECT_EQ(native->text(), "13.5");
    move(native, {54, 10}, Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(native->text(), "23.5");
    move(native, {58, 10}, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(native->text(), "23.6");
    move(native, {1000, -500});
    release(native, {1000, -500});
    EXPECT_EQ(store->kinds(), "SCCC");
    EXPECT_EQ(store->seriesEnds, 1);
    EXPECT_FALSE(native->hasSelectedText());
    EXPECT_FALSE(native->hasFocus());
    EXPECT_EQ(stage.focused(), nullptr);

    store->restoresTo = L"3";
    press(native);
    move(native, {60, 10});
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(native->text(), "3");
    move(native, {70, 10});
    release(native, {70, 10});
    EXPECT_EQ(store->value, L"3");
    EXPECT_FALSE(box->isEditing());
}

TEST_F(NumericEntryPeer, AClickGoesToTypingWithAllSelected)
{
    QTest::mouseClick(native, Qt::LeftButton, {}, kStart);
    EXPECT_EQ(stage.focused(), box);
    EXPECT_EQ(native->selectedText(), "12");
    EXPECT_EQ(native->cursor().shape(), Qt::IBeamCursor);
    QTest::keyClicks(native, "2*(3+)");
    QTest::keyClick(native, Qt::Key_Left);
    QTest::keyClicks(native, "4");
    EXPECT_EQ(native->cursorPosition(), 6);
    press(native);
    move(native, {70, 10});
    release(native, {70, 10});
    EXPECT_TRUE(store->requests.empty()) << "now the mouse is for the text";
    QTest::keyClick(native, Qt::Key_Return);
    EXPECT_EQ(store->value, L"14");
    EXPECT_EQ(native->selectedText(), "14");
    press(native);
    move(native, {50, 10});
    release(native, {50, 10});
    EXPECT_EQ(store->value, L"15.5");

    QTest::mouseClick(native, Qt::RightButton, {}, kStart);
    EXPECT_EQ(stage.focused(), box) << "as a menu that pastes expects";
}

TEST_F(NumericEntryPeer, AMistakeIsFramedAndExplained)
{
    const QColor red = toQt(UifStd::getColourScheme().error);
    QTest::mouseClick(native, Qt::LeftButton, {}, kStart);
    QTest::keyClicks(native, "1/0");
    QTest::keyClick(native, Qt::Key_Return);
    EXPECT_EQ(native->text(), "1/0");
    EXPECT_EQ(native->cursorPosition(), 3) << "to be mended";
    EXPECT_EQ(native->accessibleDescription(), "Division by zero");
    EXPECT_EQ(native->grab().toImage().pixelColor(30, 0), red);
    QTest::keyClick(native, Qt::Key_Backspace);
    EXPECT_TRUE(native->accessibleDescription().isEmpty());
    EXPECT_NE(native->grab().toImage().pixelColor(30, 0), red);
    QTest::mouseClick(Stage::nativeOf(*other), Qt::LeftButton);
    EXPECT_EQ(native->text(), "12");
    EXPECT_EQ(native->accessibleDescription(), "Failed to parse string");
    QTest::mouseClick(native, Qt::LeftButton, {}, kStart);
    QTest::keyClick(native, Qt::Key_Escape);
    EXPECT_TRUE(native->accessibleDescription().isEmpty());
    EXPECT_TRUE(store->requests.empty());
}

TEST_F(NumericEntryPeer, KeysAndTheWheelStepOnlyWithTheKeyboard)
{
    QScrollBar* bar = stage.view->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    wheel();
    EXPECT_EQ(store->value, L"12");
    EXPECT_GT(bar->value(), 0);
    bar->setValue(0);
    box->takeFocus();
    wheel();
    EXPECT_EQ(store->value, L"11.5");
    EXPECT_EQ(bar->value(), 0);
    QTest::keyClick(native, Qt::Key_Up);
    QTest::keyClick(native, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(store->value, L"7");
    QTest::keyClick(native, Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(native->text(), "7.05");
    EXPECT_EQ(native->selectedText(), "7.05");
    EXPECT_EQ(store->kinds(), "....");
}

TEST_F(NumericEntryPeer, TheLabelIsAHandleOfItsEntry)
{
    QWidget* name = Stage::nativeOf(*label);
    box->setResetValue(50.0);
    move(name, kStart, Qt::NoButton);
    EXPECT_EQ(name->cursor().shape(), Qt::SizeHorCursor);
    press(name);
    move(name, {50, 10});
    EXPECT_EQ(native->text(), "13.5");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(native->text(), "12");
    release(name, {50, 10});
    QTest::mouseClick(name, Qt::LeftButton, {}, kStart);
    EXPECT_EQ(stage.focused(), box);
    QTest::mouseDClick(name, Qt::LeftButton, {}, kStart);
    EXPECT_EQ(native->text(), "50");
}

TEST_F(NumericEntryPeer, ADragEndsWithItsEntryOrItsButton)
{
    press(native);
    move(native, {60, 10});
    move(native, {80, 10}, Qt::NoButton);
    EXPECT_EQ(store->seriesEnds, 1) << "the release never came";
    const WString stands = store->value;
    move(native, {90, 10}, Qt::NoButton);
    EXPECT_EQ(store->value, stands);

    press(native);
    move(native, {60, 10});
    store->onRequest = [&] { stage.panel().destroyWidget(*box); };
    const QPointer<QWidget> widget(native);
    move(native, {70, 10});
    move(native, {80, 10});
    release(native, {80, 10});
    settle();
    EXPECT_TRUE(widget.isNull());
}

TEST_F(NumericEntryPeer, IsASpinBoxToThoseWhoDoNotSeeIt)
{
    QAccessibleInterface* spin = QAccessible::queryAccessibleInterface(native);
    ASSERT_TRUE(spin && spin->valueInterface() && spin->textInterface());
    box->setFormat(NumberFormat::percentage(0));
    box->setAccessibleName(L"Saturation");
    EXPECT_EQ(spin->role(), QAccessible::SpinBox);
    EXPECT_EQ(spin->text(QAccessible::Name), "Saturation");
    EXPECT_EQ(spin->text(QAccessible::Value), "1200 %");
    EXPECT_TRUE(spin->state().focusable && spin->state().editable);
    EXPECT_EQ(spin->valueInterface()->currentValue(), 12.0);
    EXPECT_EQ(spin->valueInterface()->minimumStepSize(), 0.5);
    spin->valueInterface()->setCurrentValue(0.25);
    EXPECT_EQ(store->value, L"0.25");
    spin->setText(QAccessible::Value, "25 + 50%");
    EXPECT_EQ(store->value, L"0.75");
    EXPECT_EQ(spin->textInterface()->text(0, 2), "75");
    spin->setText(QAccessible::Value, "much");
    EXPECT_EQ(spin->text(QAccessible::Description), "Failed to parse string");
    stage.panel().destroyWidget(*box);
    EXPECT_FALSE(spin->valueInterface()->currentValue().isValid());
}

/** For a person to look at, at both scales: normal, with the keyboard, wrong, disabled, a percentage, being dragged. */
TEST(NumericEntryPicture, ShowsItsStates)
{
    Stage stage(320, 190);
    const auto store = Kt::makePtr<StoreAdaptor<WString>>(L"0.12345");
    std::vector<NumericEntry*> all;
    const wchar_t* const names[] = {L"Normal", L"Keyboard", L"Wrong", L"Disabled", L"Per cent", L"Pixels"};
    for (const wchar_t* name : names) {
        const int y = 6 + 30 * static_cast<int>(all.size());
        Label::InitArgs args(100, 22);
        args.text = name;
        ScrubLabel* label = stage.add<ScrubLabel>(args, 10, y);
        all.push_back(addEntry(stage, 120, y));
        all.back()->setDataAdaptor(store);
        label->setEntry(all.back());
    }
    all[4]->setFormat(NumberFormat::percentage(1));
    all[5]->setFormat({.decimals = 2, .factor = 1.0, .unit = L" px"});
    all[3]->setEnabled(false);
    all[2]->takeFocus();
    all[2]->userCommit(L"12..5");
    all[1]->userStartEditing();
    EXPECT_EQ(dynamic_cast<QLineEdit*>(Stage::nativeOf(*all[4]))->text(), "12.3 %");
    EXPECT_FALSE(all[2]->getProblem().empty());
    for (const int scale : {1, 2}) {
        QImage picture(stage.view->size() * scale, QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        stage.view->render(&picture);
        keepPicture(picture, QString("numeric-entry-%1x").arg(scale));
    }
}

} // namespace
} // namespace workbench::test
