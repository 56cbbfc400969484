#include "tests/scenarios/keyframes/KeyframeScene.h"

namespace workbench::scenes
{
namespace
{

enum Row { kTime, kName };

/** The cues "Door", at frame 70, and "Window", at frame 150. */
class CueScenario : public KeyframeScene
{
protected:
    /** The texts of a cue; empty when the edit has it no more. */
    std::wstring textsOf(ObjectId cue)
    {
        const oribund::Cue* const found = edit->getCues().find(stampOf(cue));
        return found ? std::to_wstring(vob.frameOf(found->time)) + L" " + found->name.c_str() : L"";
    }

    void open(Row row, const char* text)
    {
        cueTable->takeFocus();
        cueTable->setCurrentCell({1, row});
        stage->key(Key::F2);
        ASSERT_TRUE(cueTable->edit().isOpen());
        stage->type(text);
    }
};

TEST_P(CueScenario, AClickNearACueJumpsToItAndShowsIt)
{
    click(*timeBar, 66);
    EXPECT_EQ(vob.currentFrame(), 70);
    EXPECT_EQ(cueTable->getCue().name, L"Door");
    click(*timeBar, 140);
    EXPECT_EQ(vob.currentFrame(), 140) << "too far from any";
    EXPECT_EQ(cueTable->getCue().name, L"Door");
    click(*timeBar, 156);
    EXPECT_EQ(vob.currentFrame(), 150);
    EXPECT_EQ(cueTable->getCue().name, L"Window");
    EXPECT_EQ(steps(), 0);
}

TEST_P(CueScenario, TheTableEditsNameAndTimecodeAndEscapeGivesUp)
{
    click(*timeBar, 70);
    open(kName, "Gate");
    stage->key(Key::Enter);
    EXPECT_EQ(textsOf(door), L"70 Gate");
    EXPECT_EQ(undoTitle(), "Describe cue");
    open(kTime, "8:10");
    stage->key(Key::Enter);
    EXPECT_EQ(textsOf(door), L"210 Gate");
    EXPECT_EQ(textsOf(window), L"150 Window");
    EXPECT_EQ(cueTable->getFields().at(kTime).second, L"00:00:08:10");
    open(kName, "Wall");
    stage->key(Key::Escape);
    EXPECT_FALSE(cueTable->edit().isOpen());
    EXPECT_EQ(textsOf(door), L"210 Gate");
    EXPECT_EQ(steps(), 2);
    undoAll();
    EXPECT_EQ(textsOf(door), L"70 Door");
    EXPECT_EQ(cueTable->getFields().at(kName).second, L"Door");
}

TEST_P(CueScenario, ACueThatGoesInMidEditTakesWhatIsTypedAlong)
{
    click(*timeBar, 70);
    open(kName, "Gate");
    ASSERT_TRUE(editor.removeCue(stampOf(door)));
    EXPECT_FALSE(cueTable->edit().isOpen());
    stage->settle();
    stage->type("x");
    stage->key(Key::Enter);
    EXPECT_EQ(steps(), 1);
    undo().undo();
    EXPECT_EQ(textsOf(door), L"70 Door");
    EXPECT_EQ(textsOf(window), L"150 Window");
    EXPECT_EQ(cueTable->getCue().name, L"Door") << "shown again";
}

ON_BOTH_STAGES(CueScenario);

} // namespace
} // namespace workbench::scenes
