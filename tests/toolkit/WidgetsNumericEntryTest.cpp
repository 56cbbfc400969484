#include "WidgetsSupport.h"

#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/ColourScheme.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace oribund::test
{
namespace
{

/** A number between 0 and 100, its name to the left of it, and another entry below. */
class NumericEntries : public testing::Test
{
protected:
    NumericEntries()
    {
        entry = desk.add<NumericEntry>(TextBox::InitArgs(80, 22), 100, 0);
        label = desk.add<ScrubLabel>(Label::InitArgs(80, 22), 0, 0);
        other = desk.add<TextBox>(0, 40);
        adaptor->convert = [](const WString& text) {
            return NumberFormat::plain(std::clamp(*reinterpretValType<double>(text), 0.0, 100.0));
        };
        entry->setDataAdaptor(adaptor);
        entry->setStep(0.5);
        label->setEntry(entry);
    }

    void give(const wchar_t* value)
    {
        adaptor->value = value;
        adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
        adaptor->requests.clear();
    }

    void dragTo(int x, unsigned modifiers = 0) { desk.drag({x, 10}, modifiers); }

    static constexpr XY<int> kEntry{140, 10};
    static constexpr XY<int> kLabel{40, 10};

    Kt::Ptr<StoreAdaptor<WString>> adaptor = Kt::makePtr<StoreAdaptor<WString>>(L"12");
    Desk desk;
    NumericEntry* entry = nullptr;
    ScrubLabel* label = nullptr;
    TextBox* other = nullptr;
};

TEST_F(NumericEntries, ARoundedLookCostsNoDigits)
{
    entry->setFormat(NumberFormat::percentage(1));
    give(L"0.1234567");
    EXPECT_EQ(entry->getText(), L"12.3 %");
    entry->takeFocus();
    desk.type(L"1");
    desk.key(Key::Escape);
    entry->userCommit(entry->getText());
    other->takeFocus();
    EXPECT_TRUE(adaptor->requests.empty());
    for (const wchar_t* text : {L"50", L"50%", L"100/2 %", L"0,5e2", L"25 + 25%"}) {
        give(L"0.2");
        EXPECT_TRUE(entry->userCommit(text));
        EXPECT_EQ(adaptor->value, L"0.5");
        EXPECT_EQ(adaptor->kinds(), ".");
        EXPECT_EQ(entry->getShownText(), L"50 %");
    }
    EXPECT_TRUE(entry->userCommit(L"40+10"));
    EXPECT_EQ(adaptor->kinds(), ".") << "the value as it is";

    entry->setFormat({.decimals = 0, .factor = 1.0, .unit = L" px"});
    give(L"30.4");
    EXPECT_EQ(entry->getText(), L"30 px");
    EXPECT_TRUE(entry->userCommit(L"50%"));
    EXPECT_EQ(adaptor->value, L"15.2") << "half of what is there";
    EXPECT_TRUE(entry->userCommit(L"999 px"));
    EXPECT_EQ(entry->getText(), L"100 px") << "limited";
    give(L"several");
    EXPECT_EQ(entry->getText(), L"several");
    EXPECT_FALSE(entry->userStep(1));
}

TEST_F(NumericEntries, AMistakeCanBeReadAfterTheKeyboardHasGone)
{
    entry->takeFocus();
    desk.type(L"2/0");
    desk.key(Key::Enter);
    EXPECT_EQ(entry->getShownText(), L"2/0") << "to be mended";
    EXPECT_EQ(entry->tooltip(), UIString(L"Division by zero"));
    other->takeFocus();
    EXPECT_EQ(entry->getShownText(), L"12");
    EXPECT_EQ(entry->getProblem(), L"Division by zero");
    EXPECT_TRUE(Desk::draws(*entry, UifStd::getColourScheme().error));
    entry->takeFocus();
    EXPECT_TRUE(desk.key(Key::Escape));
    EXPECT_TRUE(entry->getProblem().empty());
    EXPECT_FALSE(entry->hasFocus());
    EXPECT_TRUE(desk.key(Key::Tab));
    EXPECT_TRUE(other->hasFocus()) << "Tab goes on from where the keyboard was";
    adaptor->refuses = true;
    EXPECT_FALSE(entry->userCommit(L"5"));
    EXPECT_FALSE(entry->getProblem().empty());
    give(L"13");
    EXPECT_TRUE(entry->getProblem().empty());
}

TEST_F(NumericEntries, KeysAndTheWheelStepIt)
{
    entry->takeFocus();
    desk.type(L"20+1");
    desk.key(Key::Up);
    EXPECT_EQ(adaptor->value, L"21.5") << "goes on from what is typed";
    desk.type(L"20+");
    desk.key(Key::Up);
    EXPECT_EQ(adaptor->value, L"21.5");
    EXPECT_FALSE(entry->getProblem().empty());
    desk.key(Key::Escape);
    entry->takeFocus();
    entry->setStep(0.1);
    give(L"0.2");
    desk.canvas.inject(Event::mouseWheel(kEntry, 0.5));
    EXPECT_EQ(adaptor->value, L"0.2");
    EXPECT_TRUE(desk.canvas.inject(Event::mouseWheel(kEntry, 0.5)));
    EXPECT_EQ(adaptor->value, L"0.3") << "and not 0.30000000000000004";
}

TEST_F(NumericEntries, ADragIsOneSeriesThatFollowsThePointer)
{
    other->takeFocus();
    desk.press(kEntry);
    dragTo(143);
    EXPECT_TRUE(adaptor->requests.empty()) << "within the slack of a click";
    dragTo(149);
    EXPECT_EQ(adaptor->value, L"13.5");
    dragTo(153, Event::kShift);
    EXPECT_EQ(adaptor->value, L"23.5") << "without a jump";
    dragTo(157, Event::kCtrl);
    EXPECT_EQ(adaptor->value, L"23.6");
    dragTo(2000);
    EXPECT_EQ(adaptor->value, L"100");
    dragTo(157);
    EXPECT_EQ(adaptor->value, L"23.6") << "back where it was";
    EXPECT_FALSE(desk.key(Key::Space)) << "a command, nothing that is typed";
    desk.release({157, 10});
    EXPECT_EQ(adaptor->kinds(), "SCCCC");
    EXPECT_EQ(adaptor->seriesEnds, 1);
    EXPECT_FALSE(entry->hasFocus()) << "the keyboard is free for commands";
    dragTo(190);
    EXPECT_EQ(adaptor->value, L"23.6");
}

TEST_F(NumericEntries, AClickGoesToTypingAndThenTheMouseIsForTheText)
{
    EXPECT_EQ(entry->cursorAt({}), MouseCursor::ResizeHorizontal);
    desk.press(kEntry);
    dragTo(138);
    desk.release({138, 10});
    ASSERT_TRUE(entry->hasFocus() && entry->isEditing());
    EXPECT_EQ(entry->cursorAt({}), MouseCursor::Text);
    desk.press(kEntry);
    dragTo(190);
    desk.release({190, 10});
    EXPECT_TRUE(adaptor->requests.empty());
    desk.type(L"7");
    desk.key(Key::Enter);
    desk.press(kEntry);
    dragTo(145);
    EXPECT_EQ(adaptor->value, L"7.5") << "after Enter a drag is one again";
    desk.release({145, 10});
    for (const auto& lock : {+[](NumericEntry& e) { e.setReadOnly(true); }, +[](NumericEntry& e) { e.setStep(0.0); },
                             +[](NumericEntry& e) { e.setEnabled(false); }}) {
        NumericEntry* locked = desk.add<NumericEntry>(TextBox::InitArgs(80, 22), 200, 100);
        locked->setDataAdaptor(adaptor);
        locked->setStep(1.0);
        lock(*locked);
        EXPECT_FALSE(locked->userScrubStart());
        EXPECT_NE(locked->cursorAt({}), MouseCursor::ResizeHorizontal);
    }
}

TEST_F(NumericEntries, ADragOutlivesWhatHappensMeanwhile)
{
    desk.press(kEntry);
    dragTo(145);
    adaptor->value = L"40";
    adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(entry->getShownText(), L"12.5") << "stays with the user";
    desk.release({145, 10});
    EXPECT_EQ(entry->getShownText(), L"40");

    desk.press(kEntry);
    dragTo(160);
    entry->setEnabled(false);
    EXPECT_EQ(adaptor->seriesEnds, 2);
    entry->setEnabled(true);
    const auto another = Kt::makePtr<StoreAdaptor<WString>>(L"70");
    desk.press(kLabel);
    dragTo(60);
    entry->setDataAdaptor(another);
    dragTo(70);
    desk.key(Key::Escape);
    EXPECT_EQ(adaptor->seriesEnds, 3);
    EXPECT_TRUE(another->requests.empty());
    EXPECT_EQ(entry->getShownText(), L"70");
}

TEST_F(NumericEntries, EntryOrLabelMayGoInTheMiddleOfADrag)
{
    desk.press(kLabel);
    dragTo(60);
    desk.panel->destroyWidget(*label);
    EXPECT_EQ(adaptor->seriesEnds, 1);
    EXPECT_FALSE(entry->isScrubbing());

    label = desk.add<ScrubLabel>(Label::InitArgs(80, 22), 0, 0);
    label->setEntry(entry);
    desk.press(kLabel);
    dragTo(60);
    adaptor->onRequest = [&] { desk.panel->destroyWidget(*entry); };
    dragTo(70);
    EXPECT_EQ(adaptor->seriesEnds, 2);
    EXPECT_EQ(adaptor->getNumWidgets(), 0u);
    EXPECT_TRUE(Drawable::redrawsEnabled());
    desk.release({80, 10});
    EXPECT_NE(label->cursorAt({}), MouseCursor::ResizeHorizontal);
    EXPECT_FALSE(desk.canvas.inject(Event::mousePress(kLabel)));
}

} // namespace
} // namespace oribund::test
