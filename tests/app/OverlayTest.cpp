#include "workbench/app/overlay/ColourCount.h"
#include "workbench/app/overlay/HandleGlob.h"
#include "workbench/app/overlay/MaskShape.h"
#include "workbench/app/overlay/PickArea.h"
#include "workbench/app/overlay/PictureHandles.h"
#include "workbench/model/host/ModelVob.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/edit/monitor/CompoundEffectMonitor.h"
#include "oribund/host/toolkit/core/Event.h"
#include "tests/support/SampleEdit.h"
#include "tests/support/TestHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace sample;
using oribund::Event;
using oribund::Key;
using oribund::Vector2d;

namespace
{
using Grip = PictureHandle::Kind;

ParamDescription overlayPoint(const char* name, double x, double y)
{
    ParamDescription point = other(name, ParamKind::Point);
    point.defaultPoint = {x, y};
    return point;
}

/** "pin": four corners; "move": a place in pixels from the centre, and a pair that is no place; "mask": a shape. */
const EffectCatalogue& overlayCatalogue()
{
    static const EffectCatalogue instance = [] {
        EffectDescription pin;
        pin.service = "pin";
        pin.params = {overlayPoint("a", 0, 0), overlayPoint("b", 1, 0), overlayPoint("c", 1, 1),
                      overlayPoint("d", 0, 1)};
        EffectDescription move;
        move.service = "move";
        move.params = {overlayPoint("position", 0, 0), overlayPoint("scale", 1, 1)};
        move.params[0].unit = "px";
        move.params[1].unit = "%";
        EffectDescription spot;
        spot.service = "frei0r.alphaspot";
        ParamDescription shape = other("0", ParamKind::TextList);
        shape.items = {{"Rectangle", "0"}, {"Ellipse", "1"}, {"Triangle", "2"}, {"Diamond", "3"}};
        spot.params = {shape,
                       overlayPoint("centre", 0.5, 0.5),
                       number("3", 0, 100, 25),
                       number("4", 0, 100, 25),
                       other("5", ParamKind::Angle),
                       number("6", 0, 100, 0)};
        EffectCatalogue made;
        for (const EffectDescription& one : {pin, move, spot})
            made.add(one);
        return made;
    }();
    return instance;
}

/** A viewer of 500 x 300 pixels, in which the frame of 1920 x 1080 takes 400 x 225 from (50, 40). */
class Overlay : public testing::Test
{
protected:
    Overlay()
    {
        vob.setEdit(edit);
        clip = editor.addClip({media(), 0, 100, kVideo, kNoObject}, 0).object;
        handles.resize(500, 300);
        handles.open();
        mapping.area = {50.0, 40.0, 450.0, 265.0};
        handles.setMapping(mapping);
    }

    ObjectId show(const char* service)
    {
        const ObjectId id = editor.addEffect(clip, service).object;
        handles.showEffect(oribund::FXViewHandle(vob.getEffectMonitor()->getFXVob(effect(id))));
        steps = undoSteps();
        return id;
    }

    oribund::Kt::Ptr<ModelEffect> effect(ObjectId id) const { return edit->timeline().findEffect(id); }

    template <class P>
    P value(ObjectId id, int index) const
    {
        const auto param = oribund::Kt::dynamicCast<oribund::EffectValParam<P>>(effect(id)->paramAt(index));
        return param->getValue(vob.getEffectMonitor()->getCurrentFXTime(effect(id)).normalised);
    }

    HandleGlob& handle(Grip kind, std::size_t nth = 0)
    {
        for (HandleGlob* const one : handles.handles())
            if (one->handle().kind == kind && nth-- == 0)
                return *one;
        throw std::out_of_range("handle");
    }

    static oribund::XY<int> centreOf(const HandleGlob& glob) { return glob.box().centre(); }

    void drag(const oribund::XY<int>& from, const oribund::XY<int>& by, unsigned modifiers = 0)
    {
        canvas.inject(Event::mousePress(from));
        canvas.inject(Event::mouseMove(from + by, oribund::MouseButton::Left, modifiers));
        canvas.inject(Event::mouseRelease(from + by));
    }

    /** How many steps can be undone. */
    int undoSteps()
    {
        int count = 0;
        for (; edit->undoStack().canUndo(); ++count)
            edit->undoStack().undo();
        for (int i = 0; i < count; ++i)
            edit->undoStack().redo();
        return count;
    }

    int newSteps() { return undoSteps() - steps; }

    oribund::test::TestHost host;
    EditModelPtr edit = oribund::Kt::makePtr<EditModel>(emptyEdit("test", {}), overlayCatalogue());
    Editor editor{*edit};
    mutable ModelVob vob;
    oribund::Canvas canvas{{500, 300}};
    PictureHandles handles{PictureHandles::InitArgs(500, 300, &canvas)};
    PictureMapping mapping;
    ObjectId clip = kNoObject;
    int steps = 0;
};

TEST_F(Overlay, DragsAPlaceAsOneStepAndLeavesThePictureFree)
{
    const ObjectId pin = show("pin");
    ASSERT_EQ(handles.handles().size(), 4u);
    EXPECT_EQ(centreOf(handle(Grip::Place, 2)), (oribund::XY<int>{450, 265}));
    drag({50, 40}, {40, 45});
    EXPECT_EQ(value<Vector2d>(pin, 0), (Vector2d{0.1, 0.2}));
    EXPECT_EQ(newSteps(), 1);
    EXPECT_EQ(centreOf(handle(Grip::Place)), (oribund::XY<int>{90, 85})) << "the handle has gone with it";
    EXPECT_FALSE(canvas.inject(Event::mousePress({250, 150}))) << "beside the handles";
    drag({90, 85}, {20, 4}, Event::kShift);
    EXPECT_NEAR(value<Vector2d>(pin, 0).x, 0.15, 1e-12);
    EXPECT_EQ(value<Vector2d>(pin, 0).y, 0.2) << "along one axis";
    edit->undoStack().undo();
    edit->undoStack().undo();
    EXPECT_EQ(value<Vector2d>(pin, 0), (Vector2d{}));
    EXPECT_EQ(centreOf(handle(Grip::Place)), (oribund::XY<int>{50, 40})) << "nor does it stay behind in an undo";
}

TEST_F(Overlay, EscapeRestoresAndAnUndoInTheMiddleEndsADrag)
{
    const ObjectId pin = show("pin");
    canvas.inject(Event::mousePress({50, 40}));
    canvas.inject(Event::mouseMove({80, 90}, oribund::MouseButton::Left));
    EXPECT_NE(value<Vector2d>(pin, 0), (Vector2d{}));
    canvas.inject(Event::keyPress(Key::Escape));
    canvas.inject(Event::mouseMove({90, 95}, oribund::MouseButton::Left));
    canvas.inject(Event::mouseRelease({90, 95}));
    EXPECT_EQ(value<Vector2d>(pin, 0), (Vector2d{}));
    EXPECT_EQ(newSteps(), 0);

    canvas.inject(Event::mousePress({50, 40}));
    canvas.inject(Event::mouseMove({80, 90}, oribund::MouseButton::Left));
    edit->undoStack().undo();
    canvas.inject(Event::mouseMove({90, 95}, oribund::MouseButton::Left));
    EXPECT_EQ(value<Vector2d>(pin, 0), (Vector2d{}));

    // The effect goes in the middle of a drag, and comes back.
    canvas.inject(Event::mouseRelease({90, 95}));
    canvas.inject(Event::mousePress({50, 40}));
    canvas.inject(Event::mouseMove({80, 90}, oribund::MouseButton::Left));
    editor.removeEffect(pin);
    EXPECT_TRUE(handles.handles().empty());
    canvas.inject(Event::mouseMove({90, 95}, oribund::MouseButton::Left));
    edit->undoStack().undo();
    EXPECT_EQ(handles.handles().size(), 4u);
}

TEST_F(Overlay, KeysStepByAThousandthOfTheFrameAndWriteOneKeyframe)
{
    const ObjectId pin = show("pin");
    canvas.inject(Event::keyPress(Key::Tab));
    ASSERT_TRUE(handle(Grip::Place).hasFocus());
    canvas.inject(Event::keyPress(Key::Right));
    canvas.inject(Event::keyPress(Key::Down, Event::kShift));
    canvas.inject(Event::keyPress(Key::Right, Event::kCtrl));
    EXPECT_NEAR(value<Vector2d>(pin, 0).x, 0.0011, 1e-12);
    EXPECT_NEAR(value<Vector2d>(pin, 0).y, 0.01, 1e-12);
    canvas.inject(Event::keyPress(Key::Tab));
    EXPECT_TRUE(handle(Grip::Place, 1).hasFocus());

    const auto corner = oribund::Kt::dynamicCast<oribund::EffectValParam<Vector2d>>(effect(pin)->paramAt(2));
    corner->setFunctionType(oribund::EffectValParamFnType::Keyframed, 0.0);
    vob.setCurrentTime(2.0);
    drag({450, 265}, {-40, 0});
    EXPECT_EQ(corner->graph()->keyframes(0).size(), 2u);
    EXPECT_EQ(corner->getValue(0.0), (Vector2d{1.0, 1.0}));
    EXPECT_EQ(value<Vector2d>(pin, 2), (Vector2d{0.9, 1.0}));
}

TEST_F(Overlay, ShowsOnlyPlacesOfWhatIsAtWorkAndMayBeChanged)
{
    const ObjectId move = show("move");
    ASSERT_EQ(handles.handles().size(), 1u) << "a pair in another unit is no place";
    EXPECT_EQ(centreOf(handle(Grip::Place)), (oribund::XY<int>{250, 152})) << "the centre of the frame";
    drag(centreOf(handle(Grip::Place)), {40, 0});
    EXPECT_NEAR(value<Vector2d>(move, 0).x, 192.0, 1e-9) << "in pixels of the frame";

    effect(move)->setEnabled(false);
    EXPECT_TRUE(handles.handles().empty());
    effect(move)->setEnabled(true);
    vob.setCurrentTime(4.0); // its first frame is over
    EXPECT_TRUE(handles.handles().empty());
    vob.setCurrentTime(3.96);
    EXPECT_EQ(handles.handles().size(), 1u);
    edit->setReadOnly(true);
    vob.setCurrentTime(1.0);
    drag(centreOf(handle(Grip::Place)), {40, 0});
    EXPECT_NEAR(value<Vector2d>(move, 0).x, 192.0, 1e-9);
}

TEST_F(Overlay, DragsSizeAngleAndSoftnessOfAShape)
{
    enum { kShape, kPlace, kWidth, kHeight, kAngle, kSoftness };

    const ObjectId spot = show("frei0r.alphaspot");
    ASSERT_EQ(handles.handles().size(), 7u);
    EXPECT_EQ(centreOf(handle(Grip::Right)), (oribund::XY<int>{350, 152}));
    drag(centreOf(handle(Grip::Right)), {40, 30});
    EXPECT_NEAR(value<double>(spot, kWidth), 35.0, 1e-9);
    drag(centreOf(handle(Grip::Top)), {5, -45});
    EXPECT_NEAR(value<double>(spot, kHeight), 45.0, 1e-9);
    // The frame is as wide as high in its pixels of the view: from the top to the right is a quarter turn.
    const oribund::XY<int> from = centreOf(handle(Grip::Angle));
    drag(from, oribund::XY<int>{430, 152} - from);
    EXPECT_NEAR(value<oribund::Angle>(spot, kAngle).degrees, 90.0, 0.5);
    EXPECT_EQ(newSteps(), 3);
    const oribund::XY<int> soft = centreOf(handle(Grip::Softness));
    drag(soft, (centreOf(handle(Grip::Place)) - soft) * 10);
    EXPECT_EQ(value<double>(spot, kSoftness), 100.0) << "and no farther than it goes";
}

TEST(PickAreas, PickPointsAndAreasAndKeepKeysOfAnEndedDrag)
{
    oribund::test::TestHost host;
    oribund::Canvas canvas{{500, 300}};
    PickArea area(PickArea::InitArgs(500, 300, &canvas));
    area.open();
    PictureMapping mapping;
    mapping.area = {50.0, 40.0, 450.0, 265.0};
    area.setMapping(mapping);
    oribund::Kt::Box<double> last;
    std::vector<unsigned> keys;
    int ends = 0;
    area.picked = [&](const oribund::Kt::Box<double>& box, unsigned modifiers) {
        last = box;
        keys.push_back(modifiers);
    };
    area.ended = [&] { ++ends; };
    const auto drag = [&](const oribund::XY<int>& from, const oribund::XY<int>& to) {
        canvas.inject(Event::mousePress(from));
        canvas.inject(Event::mouseMove(to, oribund::MouseButton::Left));
    };
    drag({250, 152}, {251, 153});
    canvas.inject(Event::mouseRelease({251, 153}, oribund::MouseButton::Left, Event::kShift));
    EXPECT_EQ(last.size(), (oribund::XY<double>{})) << "a click";
    EXPECT_NEAR(last.left, 200.5 / 400.0, 1e-12);
    drag({350, 200}, {20, 60}); // upwards, and out of the picture
    canvas.inject(Event::mouseRelease({20, 60}));
    EXPECT_NEAR(last.right, 300.5 / 400.0, 1e-12);
    EXPECT_EQ(last.left, 0.0);
    EXPECT_LT(last.top, last.bottom);
    EXPECT_EQ(keys, (std::vector<unsigned>{Event::kShift, 0}));

    area.takeFocus();
    drag({350, 200}, {100, 60});
    canvas.inject(Event::keyPress(Key::Escape));
    canvas.inject(Event::mouseRelease({100, 60}));
    EXPECT_EQ(keys.size(), 2u);
    EXPECT_EQ(ends, 0) << "it was the drag that was given up";
    canvas.inject(Event::keyPress(Key::Left, Event::kShift));
    canvas.inject(Event::keyPress(Key::Enter, Event::kAlt));
    EXPECT_NEAR(last.left, 0.4, 1e-12);
    EXPECT_EQ(keys.back(), Event::kAlt);
    canvas.inject(Event::keyPress(Key::Escape));
    EXPECT_EQ(ends, 1);
}

TEST(ColourCounts, CountWhatIsSeenOnTheAxesOfTheRanges)
{
    // Pure green, half seen; white; dark grey; nothing.
    const auto bytes = std::make_shared_for_overwrite<std::uint8_t[]>(16);
    const std::uint8_t values[] = {0, 255, 0, 51, 255, 255, 255, 255, 51, 51, 51, 255, 255, 0, 0, 0};
    std::copy(std::begin(values), std::end(values), bytes.get());
    FrameImage picture;
    picture.width = 2;
    picture.height = 2;
    picture.rgba = PixelBytes(bytes, 16);
    const auto [hue, saturation, luminance] = countColours(picture);
    const auto nonZero = [](const oribund::iFrameStatistics::Histogram& histogram) {
        std::map<int, float> found;
        for (int i = 0; i < 256; ++i)
            if (histogram[static_cast<std::size_t>(i)] > 0.0f)
                found[i] = histogram[static_cast<std::size_t>(i)];
        return found;
    };
    const float seen = 51.0f / 255.0f;
    EXPECT_EQ(nonZero(hue), (std::map<int, float>{{85, seen}})) << "120 of 360 degrees; a grey has none";
    EXPECT_EQ(nonZero(saturation), (std::map<int, float>{{0, 2.0f}, {255, seen}}));
    EXPECT_EQ(nonZero(luminance), (std::map<int, float>{{51, 1.0f}, {183, seen}, {255, 1.0f}}));
}

TEST(MaskShapes, PointsOnTheEdgeAreFoundAgain)
{
    for (const auto kind :
         {MaskShape::Kind::Rectangle, MaskShape::Kind::Ellipse, MaskShape::Kind::Triangle, MaskShape::Kind::Diamond}) {
        MaskShape shape{kind, {900.0, 500.0}, {300.0, 200.0}, 33.0, 0.3};
        const auto [from, to] = shape.softnessLine();
        EXPECT_NEAR(shape.softnessAt(from + (to - from) * 0.3), 0.3, 1e-12);
        EXPECT_NEAR(shape.degreesTowards(shape.toFrame({0.0, -250.0})), 33.0, 1e-9);
        const MaskShape::Pixels back = shape.toOwn(shape.toFrame({-120.0, 70.0}));
        EXPECT_NEAR(back.x, -120.0, 1e-9);
        EXPECT_NEAR(back.y, 70.0, 1e-9);
        shape.softness = 1.0;
        EXPECT_TRUE(shape.core().empty());
    }
}

} // namespace
