#pragma once

#include "tests/scenarios/keyframes/Stage.h"
#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"
#include "workbench/model/host/ModelVob.h"

#include "oribund/controls/bars/CompoundEffectTherm.h"
#include "oribund/controls/bars/therm.h"
#include "oribund/controls/keyframes/CompoundEffectKeyframeButtons.h"
#include "oribund/controls/rows/KeyframeFloatCtrlsBase.h"
#include "oribund/cues/CueDescriptionPanel.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace workbench::scenes
{

using oribund::Event;
using oribund::Key;
using oribund::MouseButton;

/** Plays by saying so. */
struct FakeTransport final : iTransport {
    explicit FakeTransport(ModelVob& v)
        : vob(v)
    {
    }

    void startPlay() override { vob.playStateChanged(true); }

    void stopPlay() override
    {
        stoppedAt.push_back(vob.currentFrame());
        vob.playStateChanged(false);
    }

    ModelVob& vob;
    std::vector<int> stoppedAt; ///< frames
};

/**
 * A clip over the frames 50 to 300 with an effect, and all that shows its keyframes: buttons, a bar of a pixel for each
 * frame, rows. "Level" has keyframes 50, 100 and 200 frames into the clip, "Colour" one at 100; "Whole" is
 * constant. Below them the time bar of the edit, a pixel for each frame too, and a table of the cue clicked there.
 */
class KeyframeScene : public testing::TestWithParam<std::unique_ptr<Stage> (*)()>, protected sample::Bench
{
protected:
    static constexpr int kClipStart = 50;

    KeyframeScene();
    ~KeyframeScene() override;

    // What the user does

    void press(const oribund::Glob& glob, int x, MouseButton button = MouseButton::Left, unsigned modifiers = 0);
    void moveTo(std::initializer_list<int> xs, unsigned modifiers = 0);
    void release(int x);
    void click(const oribund::Glob& glob, int x = 8, MouseButton button = MouseButton::Left, unsigned modifiers = 0);

    /** Presses a keyframe with the right button and leads it past pixels of the bar. */
    void grab(int x, std::initializer_list<int> xs);

    /** Enters a text in place of what an entry shows. */
    void enter(oribund::Glob& entry, const char* text);

    // What is there

    /** The frames of the keyframes by parameter, counted from where the clip was at first: "Level 50 100 | ...". */
    std::string keys();

    /** The whole content of the edit. */
    struct Content {
        std::vector<TrackData> tracks;
        std::string keys;

        bool operator==(const Content& other) const { return tracks == other.tracks; }

        friend void PrintTo(const Content& content, std::ostream* out) { *out << content.keys; }
    };

    Content content() { return {edit->snapshot().tracks, keys()}; }

    static std::string shownIn(const oribund::TextBox& entry) { return toUTF8(entry.getShownText()).c_str(); }

    /** Undo steps that are done, besides those that made the scene. */
    int steps() { return static_cast<int>(undo().position() - steps_); }

    void undoAll();
    int selected();

    /** One letter for each keyframe mark on the bar at these pixels: k, s when selected, - when there is none. */
    std::string marks(std::initializer_list<int> xs);

    /** Of the clip. */
    int currentFrame() const { return vob.currentFrame() - kClipStart; }

    void goTo(int frame) { vob.setCurrentTime(vob.timeOf(kClipStart + frame)); }

    double levelAt(int frame) const;

    template <class W>
    static W& in(const oribund::Glob& glob, std::size_t index = 0)
    {
        std::vector<oribund::Glob*> children;
        glob.getChildren(children);
        for (oribund::Glob* const child : children)
            if (auto* const widget = dynamic_cast<W*>(child); widget && index-- == 0)
                return *widget;
        throw std::out_of_range("no such widget");
    }

    /** Makes the panel anew. */
    void showPanel();

    oribund::test::TestHost host;
    ObjectId clip = addPicture(kClipStart, 250);
    ObjectId tint = editor.addEffect(clip, "tint").object;
    ObjectId door = addCue(2.8, L"Door");
    ObjectId window = addCue(6.0, L"Window");
    ModelVob vob;
    FakeTransport transport{vob};
    std::unique_ptr<Stage> stage;

    // Of the panel
    oribund::CompoundEffectKeyframeButtons* buttons = nullptr;
    oribund::CompoundEffectTherm* bar = nullptr;
    oribund::KeyframeFloatCtrlsBase* levelRow = nullptr;
    oribund::KeyframeFloatCtrlsBase* wholeRow = nullptr;
    oribund::therm* timeBar = nullptr;
    oribund::CueDescriptionPanel* cueTable = nullptr;

private:
    class Panel;

    ObjectId addCue(double time, const wchar_t* name);

    oribund::Kt::Ptr<oribund::EffectValParam<double>> level() { return param<double>(tint, sample::kLevel); }

    void animate();

    std::size_t steps_ = 0;
};

/** Both stages. */
std::unique_ptr<Stage> makeHeadless();
std::unique_ptr<Stage> makeWindow();

inline std::string nameOfStage(const testing::TestParamInfo<std::unique_ptr<Stage> (*)()>& info)
{
    return info.param == makeHeadless ? "Headless" : "Qt";
}

} // namespace workbench::scenes

/** Runs the scenarios of a fixture on both stages. */
#define ON_BOTH_STAGES(Fixture)                                                                                        \
    INSTANTIATE_TEST_SUITE_P(, Fixture, testing::Values(&makeHeadless, &makeWindow), nameOfStage)
