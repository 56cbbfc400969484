#include "tests/scenarios/keyframes/KeyframeScene.h"

#include "tests/scenarios/keyframes/HeadlessStage.h"
#include "tests/scenarios/keyframes/QtStage.h"

#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/edit/monitor/FXVob.h"

#include <cmath>
#include <cstdint>
#include <utility>

namespace workbench::scenes
{

using namespace oribund;

namespace
{

constexpr unsigned short kWidth = 400;
constexpr unsigned short kLabelWidth = 80;
constexpr int kBarHeight = 18;
constexpr int kClipLength = 250;

} // namespace

std::unique_ptr<Stage> makeHeadless()
{
    return std::make_unique<HeadlessStage>();
}

std::unique_ptr<Stage> makeWindow()
{
    return std::make_unique<QtStage>();
}

/** The owner of it all: shows the cue that was clicked. */
class KeyframeScene::Panel : public StandardPanel
{
public:
    Panel(KeyframeScene& scene, const GlobCreationInfo& info)
        : StandardPanel(info)
        , scene_(scene)
    {
    }

protected:
    bool handleMessageEvent(const String& message, Glob* sender) override
    {
        if (message != therm::showCueMsg)
            return StandardPanel::handleMessageEvent(message, sender);
        scene_.cueTable->setCue(scene_.timeBar->shownCue().id);
        return true;
    }

private:
    KeyframeScene& scene_;
};

namespace
{

/** Shows cues in the panel instead of a pop-up. */
class PlainTherm final : public therm
{
public:
    using therm::therm;

protected:
    std::unique_ptr<Glob> makePopup(const oribund::Cue&) override { return nullptr; }
};

} // namespace

KeyframeScene::KeyframeScene()
    : stage(GetParam()())
{
    animate();
    undo().endGesture();
    steps_ = undo().position();
    vob.setTransport(&transport);
    vob.setEdit(edit);
    vob.setSelectedSegment(clip);
    goTo(0);
    showPanel();
}

KeyframeScene::~KeyframeScene()
{
    stage->show(nullptr);
    EXPECT_EQ(findFault(edit->snapshot()), "");
    EXPECT_TRUE(host.shown.empty()) << "no dialogue";
}

ObjectId KeyframeScene::addCue(double time, const wchar_t* name)
{
    Cue cue;
    cue.time = time;
    cue.name = name;
    return editor.addCue(cue).object;
}

void KeyframeScene::animate()
{
    const auto number = level();
    number->setFunctionType(EffectValParamFnType::Keyframed, 0.2);
    number->setKeyframeValueAt(0, 20.0);
    number->addKeyframeAt(0.4, 60.0);
    number->addKeyframeAt(0.8, 40.0);
    param<ColourData>(tint, sample::kColour)->setFunctionType(EffectValParamFnType::Keyframed, 0.4);
}

void KeyframeScene::showPanel()
{
    Canvas* const canvas = &stage->canvas();
    auto panel = std::make_unique<Panel>(*this, GlobCreationInfo(kWidth, kWidth, canvas));
    panel->setBorder({});
    int y = 0;
    const auto put = [&](auto widget) {
        auto* const added = panel->addWidget(std::move(widget), Glob::UserTopLeft(0, y));
        y += added->getHeight() + 4;
        return added;
    };
    CompoundEffectKeyframeButtons::InitArgs forButtons;
    forButtons.vob = &vob;
    forButtons.track = stampOf(sample::kVideo);
    buttons = put(std::make_unique<CompoundEffectKeyframeButtons>(forButtons));
    CompoundEffectTherm::InitArgs forBar(kClipLength, kBarHeight);
    forBar.vob = &vob;
    forBar.track = stampOf(sample::kVideo);
    bar = put(std::make_unique<CompoundEffectTherm>(forBar));

    const FXViewHandle effect(vob.getEffectMonitor()->getFXVob(edit->timeline().findEffect(tint)));
    const auto floatRow = [&](int index) {
        return put(std::make_unique<KeyframeFloatCtrlsBase>(effect, param<double>(tint, index), kWidth, kLabelWidth, 0,
                                                            canvas));
    };
    levelRow = floatRow(sample::kLevel);
    wholeRow = floatRow(sample::kWhole);
    therm::InitArgs forTime(kClipStart + kClipLength, kBarHeight);
    forTime.vob = &vob;
    forTime.end = edit->getEndTime();
    timeBar = put(std::make_unique<PlainTherm>(forTime));
    CueDescriptionPanel::InitArgs forCue(300, 120);
    forCue.vob = &vob;
    cueTable = put(std::make_unique<CueDescriptionPanel>(forCue));
    cueTable->enableEditing("Describe cue");
    stage->show(std::move(panel));
}

void KeyframeScene::press(const Glob& glob, int x, MouseButton button, unsigned modifiers)
{
    stage->press(glob, {x, glob.getHeight() / 2}, button, modifiers);
}

void KeyframeScene::moveTo(std::initializer_list<int> xs, unsigned modifiers)
{
    for (const int x : xs)
        stage->moveTo({x, kBarHeight / 2}, modifiers);
}

void KeyframeScene::release(int x)
{
    stage->release({x, kBarHeight / 2});
    stage->settle();
}

void KeyframeScene::click(const Glob& glob, int x, MouseButton button, unsigned modifiers)
{
    press(glob, x, button, modifiers);
    release(x);
}

void KeyframeScene::grab(int x, std::initializer_list<int> xs)
{
    press(*bar, x, MouseButton::Right);
    moveTo(xs);
}

void KeyframeScene::enter(Glob& entry, const char* text)
{
    if (!entry.hasFocus())
        click(entry);
    stage->type(text);
    stage->key(Key::Enter);
}

std::string KeyframeScene::keys()
{
    const auto effect = edit->timeline().findEffect(tint);
    const Segment* const segment = edit->timeline().segmentOfEffect(tint);
    std::string all;
    for (int i = 0; effect && i < effect->paramCount(); ++i) {
        const auto param = effect->paramAt(i);
        if (param->functionType() != EffectValParamFnType::Keyframed)
            continue;
        all += (all.empty() ? "" : " | ") + std::string(param->name().c_str());
        for (int key = 0; key < param->graph()->size(); ++key) {
            const double frame = segment->data.start + param->graph()->timeAt(key) * segment->data.length;
            EXPECT_NEAR(frame, std::round(frame), 1e-6) << "off its frame";
            all += ' ' + std::to_string(std::lround(frame) - kClipStart);
        }
    }
    return all;
}

void KeyframeScene::undoAll()
{
    while (steps() > 0 && undo().undo()) {
    }
}

int KeyframeScene::selected()
{
    return vob.getEffectMonitor()->getNumKeyframesSelected(IdStamp::wildcard(), {});
}

std::string KeyframeScene::marks(std::initializer_list<int> xs)
{
    std::string all;
    // Beside the middle, over which the line of the current time goes.
    for (const int x : xs) {
        const std::uint32_t colour = stage->colourAt(*bar, {x + 2, bar->getHeight() / 2}).toRGB();
        all += colour == Colour{0.4, 0.1, 0.4}.toRGB() ? 'k' : colour == Colour{1.0, 1.0, 0.0}.toRGB() ? 's' : '-';
    }
    return all;
}

double KeyframeScene::levelAt(int frame) const
{
    const Segment* const segment = edit->timeline().segmentAt(sample::kVideo, kClipStart + frame);
    const auto number = Kt::dynamicCast<EffectValParam<double>>(segment->effects.at(0)->paramAt(sample::kLevel));
    return number->getValue((kClipStart + frame - segment->data.start) / static_cast<double>(segment->data.length));
}

} // namespace workbench::scenes
