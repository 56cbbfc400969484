#pragma once

#include "oribund/host/effects/params/EffectValParam.h"
#include "workbench/model/EditModel.h"
#include "workbench/model/Editor.h"
#include "workbench/model/EffectCatalogue.h"
#include "workbench/model/Ids.h"

#include <cmath>
#include <string>

namespace sample
{

using namespace workbench;

inline ParamDescription number(const std::string& property, double minimum, double maximum, double value)
{
    ParamDescription d;
    d.property = property;
    d.name = property;
    d.minimum = minimum;
    d.maximum = maximum;
    d.defaultValue = value;
    d.animatable = true;
    return d;
}

inline ParamDescription other(const std::string& property, ParamKind kind)
{
    ParamDescription d;
    d.property = property;
    d.name = property;
    d.kind = kind;
    d.animatable = kind == ParamKind::Colour || kind == ParamKind::Point || kind == ParamKind::Angle;
    d.minimum = -3600;
    d.maximum = 3600;
    d.items = {{"Soft", "10"}, {"Hard", "20"}};
    return d;
}

/** "tint": Level (percent of a raw 0..1), Grey, Colour, Centre, Turn, On, Mode, Whole. "echo": for sound. */
inline const EffectCatalogue& catalogue()
{
    static const EffectCatalogue instance = [] {
        EffectCatalogue made;
        EffectDescription tint;
        tint.service = "tint";
        tint.title = "Tint";
        ParamDescription level = number("Level", 0, 100, 50);
        level.unit = "%";
        level.scale = 100;
        ParamDescription grey = other("Grey", ParamKind::Colour);
        grey.components = {"r", "g", "b"};
        grey.scale = 2;
        ParamDescription whole = number("Whole", 0, 1000, 3);
        whole.integer = true;
        tint.params = {level,
                       grey,
                       other("Colour", ParamKind::Colour),
                       other("Centre", ParamKind::Point),
                       other("Turn", ParamKind::Angle),
                       other("On", ParamKind::Bool),
                       other("Mode", ParamKind::TextList),
                       whole};
        tint.params[3].format = "%1 %2 0 0 1";
        tint.params[5].groups = tint.params[6].groups = {"Options"};
        tint.fixedProperties = {{"quality", "high"}};
        made.add(tint);
        EffectDescription echo;
        echo.service = "echo";
        echo.title = "Echo";
        echo.medium = EffectDescription::Medium::Audio;
        echo.params = {number("Delay", 0, 2, 1)};
        made.add(echo);
        EffectDescription crash;
        crash.service = "crash";
        crash.title = "Crash";
        crash.blockedBecause = "it crashes";
        made.add(crash);
        return made;
    }();
    return instance;
}

inline MediaInfo media(const std::string& path = "/media/cup.mp4", int frames = 1000)
{
    MediaInfo info;
    info.path = path;
    info.frames = frames;
    info.width = 640;
    info.height = 480;
    info.hasVideo = info.hasAudio = true;
    return info;
}

inline oribund::Keyframe key(double time, double value)
{
    oribund::Keyframe made;
    made.time = time;
    made.value = value;
    return made;
}

inline constexpr ObjectId kVideo = 1;
inline constexpr ObjectId kAudio = 2;

/** An empty edit at 25 frames a second and what changes it. */
struct Bench {
    EditModelPtr edit = oribund::Kt::makePtr<EditModel>(emptyEdit("test", {}), catalogue());
    Editor editor{*edit};

    UndoStack& undo() { return edit->undoStack(); }

    const Timeline& timeline() const { return edit->timeline(); }

    /** A picture without sound. */
    ObjectId addPicture(int start, int length, int in = 100)
    {
        return editor.addClip({media(), in, length, kVideo, kNoObject}, start).object;
    }

    const SegmentData& segment(ObjectId id) const { return timeline().findSegment(id)->data; }

    template <class P>
    oribund::Kt::Ptr<oribund::EffectValParam<P>> param(ObjectId effect, int index)
    {
        return oribund::Kt::dynamicCast<oribund::EffectValParam<P>>(timeline().findEffect(effect)->paramAt(index));
    }

    std::string undoTitle() { return std::string(oribund::toUTF8(undo().undoTitle()).view()); }
};

enum TintParam { kLevel, kGrey, kColour, kCentre, kTurn, kOn, kMode, kWhole };

} // namespace sample
