#include "oribund/cues/CueDescriptionPanel.h"
#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/lists/TableCellBox.h"
#include "tests/support/FakeView.h"
#include "tests/support/TestHost.h"

#include <gtest/gtest.h>

#include <memory>

namespace oribund::test
{
namespace
{

constexpr IdStamp kDoor{1, 0, 0};
constexpr IdStamp kWindow{2, 0, 0};

/** Rows of the panel with all attributes. */
enum Row { kTime, kName, kDescription, kColour };

/** A panel about the first of two cues that have the same time. */
class CuePanel : public testing::Test
{
protected:
    CuePanel()
        : vob(std::make_unique<FakeVob>())
    {
        addCue(kDoor, L"Door", L"opens too late");
        addCue(kWindow, L"Window", L"");
        CueDescriptionPanel::InitArgs args(300, 120, &canvas);
        args.vob = vob.get();
        args.cue = kDoor;
        panel = std::make_unique<CueDescriptionPanel>(args);
        panel->open();
        panel->enableEditing("Describe cue");
    }

    void addCue(const IdStamp& id, const wchar_t* name, const wchar_t* description)
    {
        Cue cue;
        cue.id = id;
        cue.time = 2.0;
        cue.name = name;
        cue.description = description;
        cue.colour = Colour::fromRGB(0x336699);
        vob->edit->cues.add(cue);
    }

    const Cue& cue(const IdStamp& id) const { return *vob->edit->cues.find(id); }

    void type(int row, const wchar_t* text)
    {
        panel->takeFocus();
        ASSERT_TRUE(panel->edit().begin({1, row}));
        for (; *text; ++text)
            canvas.inject(Event::character(*text));
    }

    void enter(int row, const wchar_t* text)
    {
        type(row, text);
        canvas.inject(Event::keyPress(Key::Enter));
    }

    bool draws(const wchar_t* text) const
    {
        RecordingRenderer renderer;
        panel->draw(renderer);
        return renderer.findText(text);
    }

    WString field(int row) const { return panel->getFields().at(static_cast<std::size_t>(row)).second; }

    TestHost host;
    Canvas canvas{{400, 300}};
    std::unique_ptr<FakeVob> vob;
    std::unique_ptr<CueDescriptionPanel> panel;
};

TEST_F(CuePanel, ShowsTheFieldsThatAreAskedFor)
{
    ASSERT_EQ(panel->getFields().size(), 4u);
    EXPECT_EQ(field(kTime), L"00:00:02:00");
    EXPECT_EQ(field(kColour), L"#336699");
    for (const wchar_t* text : {L"Timecode", L"00:00:02:00", L"Door", L"opens too late", L"#336699"})
        EXPECT_TRUE(draws(text)) << toUTF8(text).c_str();
    panel->setAttributes({LogAttribute::Description, LogAttribute::Name, LogAttribute::Description});
    ASSERT_EQ(panel->getFields().size(), 2u);
    EXPECT_EQ(panel->getFields()[1].first, LogAttribute::Name);
    EXPECT_FALSE(draws(L"Timecode"));
    EXPECT_LE(panel->calcNameColumnWidth(), panel->calcMaxNameColumnWidth());
    panel->resize(100, 120);
    EXPECT_EQ(panel->calcMaxNameColumnWidth(), 50);
    EXPECT_EQ(panel->layout().getColumnWidth(0), std::min(50, panel->calcNameColumnWidth()));
}

TEST_F(CuePanel, WhatIsNotUnderstoodIsSaidAndStaysToBeMended)
{
    enter(kTime, L"soon");
    EXPECT_EQ(host.shown, (std::vector<std::string>{"\"soon\" is not understood as Timecode."}));
    ASSERT_TRUE(panel->edit().isOpen());
    EXPECT_EQ(panel->edit().box()->getShownText(), L"soon");
    canvas.inject(Event::keyPress(Key::Escape));
    enter(kColour, L"#12345");
    canvas.inject(Event::keyPress(Key::Escape));
    EXPECT_EQ(host.shown.size(), 2u);
    EXPECT_EQ(cue(kDoor).time, 2.0);
    EXPECT_EQ(field(kColour), L"#336699");
    EXPECT_EQ(vob->edit->steps, 0);
}

TEST_F(CuePanel, AnEditThatIsLockedTakesNothing)
{
    type(kName, L"Gate");
    vob->edit->readOnly = true;
    canvas.inject(Event::keyPress(Key::Enter));
    EXPECT_EQ(cue(kDoor).name, L"Door");
    vob->edit->addModification({});
    EXPECT_FALSE(panel->edit().isOpen());
    EXPECT_FALSE(panel->isEditingEnabled());
    EXPECT_FALSE(panel->edit().begin({1, kName}));
    EXPECT_FALSE(panel->storeFieldText(L"Gate", {1, kName}));
    vob->edit->readOnly = false;
    panel->enableEditing("");
    EXPECT_FALSE(panel->storeFieldText(L"Gate", {1, kName}));
    EXPECT_EQ(vob->edit->steps, 0);
    EXPECT_EQ(cue(kDoor).name, L"Door");
}

TEST_F(CuePanel, IsEmptyOnceTheViewerIsGone)
{
    ASSERT_FALSE(panel->getFields().empty());
    vob.reset();
    EXPECT_TRUE(panel->getFields().empty());
    EXPECT_EQ(panel->getNumRows(), 0);
}

TEST_F(CuePanel, WhatIsTypedForOneCueIsNeverStoredInAnother)
{
    type(kName, L"Gate");
    panel->setCue(kWindow);
    EXPECT_EQ(cue(kDoor).name, L"Gate") << "stored where it was meant for";
    EXPECT_EQ(cue(kWindow).name, L"Window");
    EXPECT_FALSE(panel->edit().isOpen());
    type(kDescription, L"half a wo");
    panel->setAttributes({LogAttribute::Name});
    EXPECT_FALSE(panel->edit().isOpen());
    EXPECT_TRUE(cue(kWindow).description.empty());
    EXPECT_EQ(cue(kWindow).name, L"Window");
}

} // namespace
} // namespace oribund::test
