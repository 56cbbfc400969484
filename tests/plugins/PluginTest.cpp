#include "tests/plugins/LoadedPlugin.h"

#include "oribund/host/base/HueSatLum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <random>
#include <thread>

namespace workbench
{
namespace
{

using oribund::Colour;
using oribund::HueSatLum;
using Settings = std::vector<double>;
using Bytes = std::array<std::uint8_t, 4>;

constexpr unsigned kWidth = 131; // no multiple of anything that is worked on at once
constexpr unsigned kHeight = 97;

Bytes bytesOf(std::uint32_t pixel)
{
    Bytes bytes;
    std::memcpy(bytes.data(), &pixel, bytes.size());
    return bytes;
}

/** Colours of all kinds: by chance, all greys, hardly coloured ones, and the corners of the cube. */
std::vector<std::uint32_t> manyColours()
{
    std::mt19937 chance(7);
    std::vector<std::uint32_t> pixels(std::size_t{kWidth} * kHeight);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        Bytes bytes = bytesOf(static_cast<std::uint32_t>(chance()));
        if (i < 256)
            bytes[0] = bytes[1] = bytes[2] = static_cast<std::uint8_t>(i);
        else if (i < 1024)
            bytes[1] = bytes[2] = static_cast<std::uint8_t>(std::min(bytes[0] + (i & 1), std::size_t{255}));
        else if (i < 1032)
            bytes = {static_cast<std::uint8_t>(i & 1 ? 255 : 0), static_cast<std::uint8_t>(i & 2 ? 255 : 0),
                     static_cast<std::uint8_t>(i & 4 ? 255 : 0), 128};
        std::memcpy(&pixels[i], bytes.data(), bytes.size());
    }
    return pixels;
}

// What the effects are, in exact numbers.

constexpr double kHardest = 1.0 / 2048.0;

double step(double place, double from, double to)
{
    return std::clamp((place - from) / (to - from), 0.0, 1.0);
}

double within(const double* range, double place)
{
    return std::min(step(place, std::min(range[0], range[1] - kHardest), range[1]),
                    1.0 - step(place, range[2], std::max(range[3], range[2] + kHardest)));
}

double withinHue(const double* range, double turns, bool isGrey)
{
    const double begin = std::min(range[0], range[1] - kHardest);
    const double end = std::max(range[3], range[2] + kHardest);
    if (end - begin >= 1.0)
        return 1.0;
    return isGrey ? 0.0 : within(range, begin + (turns - begin) - std::floor(turns - begin));
}

Colour selectiveColour(const Settings& s, const Colour& from)
{
    const HueSatLum axes = HueSatLum::of(from);
    double share = withinHue(&s[0], axes.hue / 360.0, axes.saturation == 0.0) * within(&s[4], axes.saturation) *
                   within(&s[8], axes.luminance);
    share = s[16] >= 0.5 ? 1.0 - share : share;
    if (s[15] >= 0.5)
        return {share, share, share};
    const double most = std::max({from.r, from.g, from.b});
    const double least = std::min({from.r, from.g, from.b});
    const double lightness = (most + least) / 2.0;
    const double span = 1.0 - std::abs(2.0 * lightness - 1.0);
    const double saturation = span > 0.0 ? std::min((most - least) / span * 2.0 * s[13], 1.0) : 0.0;
    const double lighten = 2.0 * s[14] - 1.0;
    const double light = lighten > 0.0 ? lightness + (1.0 - lightness) * lighten : lightness * (1.0 + lighten);
    const double chroma = saturation * (1.0 - std::abs(2.0 * light - 1.0));
    const double turns = axes.hue / 360.0 + s[12] - 0.5;
    const Colour pure = oribund::colourOfHSV(360.0 * (turns - std::floor(turns)), 1.0, 1.0);
    const auto mixed = [&](double was, double part) {
        return was + share * (light - chroma / 2.0 + chroma * part - was);
    };
    return {mixed(from.r, pure.r), mixed(from.g, pure.g), mixed(from.b, pure.b)};
}

Colour tonalZones(const Settings& s, const Colour& from)
{
    const double luma = from.luma();
    const double middle = step(luma, s[0], std::max(s[1], s[0] + kHardest));
    const double highlights = step(luma, s[2], std::max(s[3], s[2] + kHardest));
    const auto mean = [&](std::size_t at) {
        return (2.0 * s[at] - 1.0) * (1.0 - middle) + (2.0 * s[at + 1] - 1.0) * (middle - highlights) +
               (2.0 * s[at + 2] - 1.0) * highlights;
    };
    const auto changed = [&](double component) {
        const double strong = std::clamp(luma + (component - luma) * (1.0 + mean(7)), 0.0, 1.0);
        return strong + mean(4) * strong * (1.0 - strong);
    };
    return {changed(from.r), changed(from.g), changed(from.b)};
}

/** The largest difference of a component from the exact one, in steps of a byte; alpha has to be the same. */
int worstDifference(const std::vector<std::uint32_t>& from, const std::vector<std::uint32_t>& to,
                    const std::function<Colour(const Colour&)>& exact)
{
    int worst = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        const Bytes before = bytesOf(from[i]);
        const Bytes after = bytesOf(to[i]);
        const Colour wanted = exact({before[0] / 255.0, before[1] / 255.0, before[2] / 255.0});
        const std::array<double, 3> components = {wanted.r, wanted.g, wanted.b};
        for (std::size_t c = 0; c < components.size(); ++c)
            worst = std::max(worst, std::abs(int{after[c]} - static_cast<int>(std::lround(components[c] * 255.0))));
        worst = before[3] == after[3] ? worst : 256;
    }
    return worst;
}

/** Sets of settings by chance: hues anywhere, hard and soft edges, now and then a whole axis. */
Settings settingsByChance(std::mt19937& chance, int ranges, int numbers, bool hueFirst)
{
    const auto number = [&chance](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(chance);
    };
    Settings settings;
    for (int range = 0; range < ranges; ++range) {
        std::array<double, 4> places;
        for (double& place : places)
            place = number(0.0, 1.0);
        std::sort(places.begin(), places.end());
        if (chance() % 3 == 0)
            places[0] = places[1];
        if (chance() % 3 == 0)
            places[3] = places[2];
        if (chance() % 5 == 0)
            places = {0.0, 0.0, 1.0, 1.0};
        const double away = hueFirst && range == 0 ? number(-9.0, 9.0) : 0.0;
        for (const double place : places)
            settings.push_back(place + away);
    }
    for (int i = 0; i < numbers; ++i)
        settings.push_back(chance() % 4 == 0 ? 0.5 : chance() % 8 == 0 ? 1.0 : number(0.0, 1.0));
    return settings;
}

struct Case {
    const char* file;
    Colour (*exact)(const Settings&, const Colour&);
    int ranges;
    int numbers;
    bool hueFirst;
};

constexpr std::array<Case, 2> kCases = {
    {{ORIBUND_SELECTIVE_COLOUR, selectiveColour, 3, 5, true}, {ORIBUND_TONAL_ZONES, tonalZones, 1, 6, false}}};

TEST(Plugins, equalExactNumbersToOneStepOfAByte)
{
    const std::vector<std::uint32_t> pixels = manyColours();
    for (const Case& effect : kCases) {
        const LoadedPlugin plugin(effect.file);
        PluginUse use(plugin, kWidth, kHeight);
        std::mt19937 chance(11);
        std::vector<std::uint32_t> changed(pixels.size());
        for (int round = 0; round < 60; ++round) {
            const Settings settings = settingsByChance(chance, effect.ranges, effect.numbers, effect.hueFirst);
            ASSERT_EQ(static_cast<int>(settings.size()), plugin.info.parameters);
            for (std::size_t i = 0; i < settings.size(); ++i)
                use.set(static_cast<int>(i), settings[i]);
            use.update(pixels, changed);
            ASSERT_LE(worstDifference(pixels, changed, [&](const Colour& c) { return effect.exact(settings, c); }), 1)
                << plugin.info.name << ", round " << round;
        }
    }
}

TEST(Plugins, leaveThePictureAsItIsUntilTheyAreSet)
{
    const std::vector<std::uint32_t> pixels = manyColours();
    for (const Case& effect : kCases) {
        const LoadedPlugin plugin(effect.file);
        PluginUse use(plugin, kWidth, kHeight);
        std::vector<std::uint32_t> changed(pixels.size());
        use.update(pixels, changed);
        EXPECT_EQ(changed, pixels) << plugin.info.name;

        const double before = use.get(4);
        use.set(4, std::numeric_limits<double>::quiet_NaN());
        use.set(-1, 0.7);
        use.set(plugin.info.parameters, 0.7);
        EXPECT_EQ(use.get(4), before);
        std::vector<std::uint32_t> inPlace = pixels;
        use.update(inPlace, inPlace);
        EXPECT_EQ(inPlace, pixels) << plugin.info.name;
    }
}

/** A host may set them for the next frame while threads still work on this one. */
TEST(Plugins, areSetWhileOtherThreadsMakePictures)
{
    const std::vector<std::uint32_t> pixels = manyColours();
    for (const Case& effect : kCases) {
        const LoadedPlugin plugin(effect.file);
        const int number = plugin.info.parameters - 4; // one that shows
        PluginUse use(plugin, kWidth, kHeight);
        std::array<std::vector<std::uint32_t>, 2> either;
        for (const int on : {0, 1}) {
            use.set(number, on);
            either[static_cast<std::size_t>(on)].resize(pixels.size());
            use.update(pixels, either[static_cast<std::size_t>(on)]);
        }
        ASSERT_NE(either[0], either[1]);
        std::vector<std::thread> threads;
        std::array<int, 3> mixtures{};
        for (int& mixed : mixtures)
            threads.emplace_back([&] {
                std::vector<std::uint32_t> changed(pixels.size());
                for (int round = 0; round < 40; ++round) {
                    use.update(pixels, changed);
                    mixed += changed != either[0] && changed != either[1] ? 1 : 0;
                }
            });
        for (int round = 0; round < 200; ++round)
            use.set(number, round & 1);
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(mixtures, (std::array<int, 3>{}));
    }
}

} // namespace
} // namespace workbench
