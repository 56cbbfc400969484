#include "tests/skin/SkinSupport.h"

#include "tests/toolkit/WidgetsSupport.h"

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/entries/ValTextBox.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ValCheckbox.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <gtest/gtest.h>

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

template <class T>
Kt::Ptr<StoreAdaptor<T>> makeStore(T value)
{
    return Kt::makePtr<StoreAdaptor<T>>(std::move(value));
}

/** Two entries bound to one text. */
class EntryPeer : public testing::Test
{
protected:
    EntryPeer()
    {
        box = stage.add<ValTextBox>(10, 10);
        other = stage.add<ValTextBox>(10, 60);
        box->setDataAdaptor(store);
        other->setDataAdaptor(store);
        entry = dynamic_cast<QLineEdit*>(Stage::nativeOf(*box));
        otherEntry = dynamic_cast<QLineEdit*>(Stage::nativeOf(*other));
    }

    void typeOver(const char* text)
    {
        QTest::mouseClick(entry, Qt::LeftButton);
        QTest::keyClicks(entry, text);
    }

    Kt::Ptr<StoreAdaptor<WString>> store = makeStore<WString>(L"one");
    Stage stage;
    ValTextBox* box;
    ValTextBox* other;
    QLineEdit* entry;
    QLineEdit* otherEntry;
};

TEST_F(EntryPeer, ShowsTheValueWithoutAnsweringIt)
{
    ASSERT_TRUE(entry && otherEntry);
    EXPECT_EQ(entry->text(), "one");
    store->value = L"two";
    store->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(entry->text(), "two");
    EXPECT_TRUE(store->requests.empty());
    box->setReadOnly(true);
    EXPECT_TRUE(entry->isReadOnly());
    box->setEnabled(false);
    EXPECT_FALSE(entry->isEnabled());
    EXPECT_TRUE(otherEntry->isEnabled());
}

TEST_F(EntryPeer, ATypedTextIsAskedForOnceByEnter)
{
    typeOver("new"); // the first click has picked up the old text
    EXPECT_EQ(entry->text(), "new");
    EXPECT_TRUE(box->isModified());
    EXPECT_TRUE(store->requests.empty());
    EXPECT_EQ(otherEntry->text(), "one");
    QTest::keyClick(entry, Qt::Key_Return);
    ASSERT_EQ(store->requests.size(), 1u);
    EXPECT_EQ(store->value, L"new");
    EXPECT_EQ(otherEntry->text(), "new");
    QTest::keyClick(entry, Qt::Key_Return);
    QTest::mouseClick(otherEntry, Qt::LeftButton);
    EXPECT_EQ(store->requests.size(), 1u);
}

TEST_F(EntryPeer, ATypedTextIsAskedForWhenTheKeyboardGoes)
{
    typeOver("left");
    QTest::mouseClick(otherEntry, Qt::LeftButton);
    EXPECT_EQ(store->value, L"left");
    EXPECT_EQ(stage.focused(), other);
    typeOver("pressed beside it");
    QTest::mouseClick(Stage::nativeOf(stage.panel()), Qt::LeftButton, {}, {300, 200});
    EXPECT_EQ(store->value, L"pressed beside it");
    EXPECT_EQ(store->requests.size(), 2u);
}

TEST_F(EntryPeer, EscapeThrowsTheTypingAway)
{
    typeOver("wrong");
    QTest::keyClick(entry, Qt::Key_Escape);
    EXPECT_EQ(entry->text(), "one");
    QTest::keyClick(entry, Qt::Key_Return);
    EXPECT_TRUE(store->requests.empty());
}

TEST_F(EntryPeer, ARefusedTextGivesWayToTheOldOne)
{
    store->refuses = true;
    typeOver("twelve");
    QTest::keyClick(entry, Qt::Key_Return);
    EXPECT_EQ(store->requests.size(), 1u);
    EXPECT_EQ(entry->text(), "one");
}

TEST_F(EntryPeer, AValueThatComesMeanwhileDoesNotDisturbTyping)
{
    typeOver("half");
    store->value = L"from elsewhere";
    store->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(entry->text(), "half");
    QTest::keyClicks(entry, "way");
    EXPECT_EQ(entry->text(), "halfway");
    QTest::keyClick(entry, Qt::Key_Escape);
    EXPECT_EQ(entry->text(), "from elsewhere");
}

TEST(EntryPeerLimits, TheBoxDecidesWhatCanBeTyped)
{
    Stage stage;
    TextBox::InitArgs args;
    args.maxLength = 4;
    TextBox* box = stage.add<TextBox>(args, 10, 10);
    auto* entry = dynamic_cast<QLineEdit*>(Stage::nativeOf(*box));
    QTest::mouseClick(entry, Qt::LeftButton);
    QTest::keyClicks(entry, "abcdef");
    EXPECT_EQ(box->getShownText(), L"abcd");
    EXPECT_EQ(entry->text(), "abcd");
}

/** A slider and a check box. */
class ControlPeer : public testing::Test
{
protected:
    ControlPeer()
    {
        Slider::InitArgs args;
        args.width = 210;
        args.max = 100.0;
        slider = stage.add<ValSlider>(args, 10, 10);
        slider->setDataAdaptor(number);
        box = stage.add<ValCheckbox>(10, 60);
        box->setDataAdaptor(flag);
        sliderWidget = Stage::nativeOf(*slider);
        boxWidget = Stage::nativeOf(*box);
    }

    void move(const QPoint& to) const
    {
        QMouseEvent event(QEvent::MouseMove, to, sliderWidget->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(sliderWidget, &event);
    }

    bool wheelOverSlider() const
    {
        QWheelEvent wheel(QPointF(5, 5), sliderWidget->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(sliderWidget, &wheel);
        return number->requests.empty();
    }

    Kt::Ptr<StoreAdaptor<double>> number = makeStore(50.0);
    Kt::Ptr<StoreAdaptor<bool>> flag = makeStore(false);
    Stage stage;
    ValSlider* slider;
    ValCheckbox* box;
    QWidget* sliderWidget;
    QWidget* boxWidget;
};

TEST_F(ControlPeer, ADragIsOneSeriesAndEscapeTakesItBack)
{
    QTest::mousePress(sliderWidget, Qt::LeftButton, {}, {105, 10});
    move({130, 10});
    move({160, 10});
    QTest::mouseRelease(sliderWidget, Qt::LeftButton, {}, {160, 10});
    EXPECT_EQ(number->kinds().front(), 'S');
    EXPECT_EQ(number->kinds().find_last_of("S."), 0u) << number->kinds();
    EXPECT_GT(number->requests.size(), 1u);
    EXPECT_EQ(number->seriesEnds, 1);
    EXPECT_GT(number->value, 60.0);

    const double before = number->value;
    number->requests.clear();
    number->restoresTo = before;
    QTest::mousePress(sliderWidget, Qt::LeftButton, {}, {160, 10});
    move({60, 10});
    EXPECT_LT(number->value, before);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(number->cancels, 1);
    EXPECT_EQ(number->value, before);
    QTest::mouseRelease(sliderWidget, Qt::LeftButton, {}, {60, 10});
    EXPECT_EQ(number->value, before);
}

TEST_F(ControlPeer, TheWheelMovesOnlyTheSliderThatHasTheKeyboard)
{
    EXPECT_TRUE(wheelOverSlider());
    slider->takeFocus();
    EXPECT_FALSE(wheelOverSlider());
    EXPECT_GT(number->value, 50.0);
}

TEST_F(ControlPeer, AClickOrSpaceTogglesOnce)
{
    int told = 0;
    flag->onRequest = [&] { ++told; };
    QTest::mouseClick(boxWidget, Qt::LeftButton);
    EXPECT_TRUE(flag->value);
    QTest::keyClick(boxWidget, Qt::Key_Space);
    EXPECT_FALSE(flag->value);
    EXPECT_EQ(told, 2);
    // From the value to the widget: no request comes back.
    flag->value = true;
    flag->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(told, 2);
    box->setEnabled(false);
    QTest::mouseClick(boxWidget, Qt::LeftButton);
    EXPECT_EQ(told, 2);
}

TEST_F(ControlPeer, FollowsPlaceAndVisibility)
{
    slider->resize(77, 21);
    slider->setPosition({30, 40});
    EXPECT_EQ(sliderWidget->geometry(), QRect(30, 40, 77, 21));
    slider->setVisible(false);
    EXPECT_FALSE(sliderWidget->isVisible());
    slider->setVisible(true);
    EXPECT_TRUE(sliderWidget->isVisible());
}

TEST(PeerLife, AControlMayGoInItsOwnClick)
{
    Stage stage;
    Button* button = stage.add<Button>(10, 10);
    QPointer<QWidget> widget = Stage::nativeOf(*button);

    struct Clicked {
        int destroy(const ButtonEvent& event)
        {
            panel.destroyWidget(*event.button);
            return 0;
        }

        StandardPanel& panel;
    } clicked{stage.panel()};

    MethodCallback<Clicked, ButtonEvent> callback(&clicked, &Clicked::destroy);
    callback.attach(button->clicks());
    QTest::mouseClick(widget, Qt::LeftButton, {}, {5, 5});
    EXPECT_FALSE(widget && widget->isVisible());
    settle();
    EXPECT_TRUE(widget.isNull());
}

TEST(PeerLife, AnEntryMayGoInItsOwnCommit)
{
    Stage stage;
    const auto store = makeStore<WString>(L"");
    ValTextBox* box = stage.add<ValTextBox>(10, 10);
    box->setDataAdaptor(store);
    store->onRequest = [&] { stage.panel().destroyWidget(*box); };
    QPointer<QWidget> widget = Stage::nativeOf(*box);
    QTest::mouseClick(widget, Qt::LeftButton);
    QTest::keyClicks(widget, "x");
    QTest::keyClick(widget, Qt::Key_Return);
    EXPECT_EQ(store->requests.size(), 1u);
    settle();
    EXPECT_TRUE(widget.isNull());
}

TEST(PeerLife, AWindowMayGoBeforeItsPanel)
{
    auto stage = std::make_unique<Stage>();
    Button* button = stage->add<Button>(10, 10);
    delete Stage::nativeOf(*button);
    button->setText(L"still there");
    EXPECT_EQ(Stage::nativeOf(*button), nullptr);
    stage.reset();
}

} // namespace
} // namespace workbench::test
