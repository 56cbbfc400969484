#pragma once

#include "tests/support/SampleEdit.h"
#include "workbench/model/MaskDescription.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

namespace sample
{

/** Makes edits that are valid and otherwise as odd as can be. */
class AnyEdit
{
public:
    explicit AnyEdit(unsigned seed)
        : random_(seed)
    {
    }

    EditData make()
    {
        EditData edit;
        edit.name = text();
        edit.format = {1 + below(4000), 1 + below(3000), 30000, 1001, 1 + below(99), 1 + below(99), 601};
        for (int i = 0; i < 3; ++i)
            edit.media.push_back({id(), media("/media/" + text() + (below(4) ? "" : "%41\xff\xc3") + std::to_string(i),
                                              below(2) * 900)});
        for (int i = below(4); i >= 0; --i)
            edit.tracks.push_back(track(edit));
        double time = 0.0;
        for (int i = below(4); i > 0; --i) {
            time += std::abs(number(0.0, 10.0));
            const auto channel = [this] { return number(0.0, 1.0); };
            edit.cues.push_back({stampOf(id()),
                                 time,
                                 oribund::toWide(text()),
                                 oribund::toWide(text()),
                                 {channel(), channel(), channel(), channel()},
                                 static_cast<unsigned>(random_())});
        }
        edit.original = below(2) ? text() : "";
        return edit;
    }

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    std::string text()
    {
        static const char* const pieces[] = {
            "a",  "Z 9", "\xc3\xbc", "\xe2\x9c\x93", "\xf0\x9f\x8e\xac", "<&>", "\"'", "]]>", "\\u0041",
            "\t", "\n",  "\x01",     "\r\n",         "\xef\xbf\xbf",     "{$}", ""};
        std::string made;
        for (int i = below(4); i >= 0; --i)
            made += pieces[below(std::size(pieces))];
        return made;
    }

private:
    ObjectId id() { return lastId_ += 1 + below(3); }

    /** Mostly any number in the range, to its last bit. */
    double number(double from, double to)
    {
        switch (below(5)) {
        case 0:
            return from;
        case 1:
            return std::nextafter(to, from);
        case 2:
            return from + (to - from) * 5e-324;
        default:
            return from + (to - from) * std::ldexp(static_cast<double>(random_()), -32);
        }
    }

    TrackData track(const EditData& edit)
    {
        TrackData track{id(), below(2) ? TrackKind::Video : TrackKind::Audio, text(), below(2) == 0, {}, {}};
        int at = below(2) * below(100);
        for (int i = below(5); i > 0; --i) {
            SegmentData segment{id(),
                                edit.media[static_cast<std::size_t>(below(3))].id,
                                below(2) ? id() : kNoObject,
                                text(),
                                at,
                                100 + below(100),
                                20 + below(80),
                                {}};
            for (int k = below(3); k > 0; --k)
                segment.effects.push_back(effect());
            at = segment.end() + below(2) * below(30);
            track.segments.push_back(std::move(segment));
        }
        for (std::size_t i = 1; i < track.segments.size(); ++i)
            if (track.segments[i - 1].end() == track.segments[i].start)
                track.transitions.push_back({id(), track.segments[i - 1].id, track.segments[i].id, 2 + below(15),
                                             below(2) ? "%luma04.pgm" : "", below(2) == 0, number(0.0, 1.0)});
        return track;
    }

    EffectData effect()
    {
        EffectData effect{id(), below(3) ? "tint" : "gone" + text(), below(3) > 0, {}, {}};
        effect.params = {curve("Level", 1, 0, 100), curve("Grey", 4, 0, 1), curve("Centre", 2, -3600, 3600),
                         curve("Turn", 1, -3600, 3600)};
        effect.params.push_back({"On", below(2) == 0, false, {}});
        effect.params.push_back({"Mode", std::string("20"), false, {}});
        effect.params.push_back({"unheard of" + text(), text(), false, {}});
        for (int i = below(3); i > 0; --i)
            effect.rest.emplace_back(text(), text());
        if (below(3) == 0)
            effect.first = below(150);
        if (below(3) == 0)
            effect.name = text();
        if (below(3) == 0) {
            EffectData& mask = effect.mask.emplace_back(newMask(id()));
            mask.enabled = below(3) > 0;
            mask.params = {curve("width", 1, 0, 200), curve("centre", 2, -1, 2), {"invert", below(2) == 0, false, {}}};
        }
        return effect;
    }

    ParamData curve(const char* property, int channels, double from, double to)
    {
        ParamData param{property, number(from, to), below(2) == 0, {}};
        if (channels == 4)
            param.constant = std::array<double, 4>{number(from, to), 0.5, 1.0, number(from, to)};
        else if (channels == 2)
            param.constant = std::array<double, 2>{number(from, to), number(from, to)};
        if (!param.keyframed)
            return param;
        param.channels.resize(static_cast<std::size_t>(channels));
        double time = number(-0.5, 0.2);
        for (int k = below(6); k >= 0; --k, time += 1e-3 + number(0.0, 0.4))
            for (ChannelData& channel : param.channels)
                channel.push_back(keyframe(time, number(from, to)));
        return param;
    }

    oribund::Keyframe keyframe(double time, double value)
    {
        oribund::Keyframe made = key(time, value);
        made.type = below(2) ? oribund::KeyframeType::Smooth : oribund::KeyframeType::Linear;
        if (below(3) == 0)
            made.in = {-number(0.0, 1.0), number(-5.0, 5.0), false};
        if (below(3) == 0)
            made.out = {number(0.0, 1.0), number(-5.0, 5.0), false};
        return made;
    }

    std::mt19937 random_;
    ObjectId lastId_ = 0;
};

} // namespace sample
