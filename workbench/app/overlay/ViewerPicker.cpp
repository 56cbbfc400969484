#include "workbench/app/overlay/ViewerPicker.h"

#include "skin/PanelSurface.h"
#include "workbench/app/overlay/ColourCount.h"
#include "workbench/app/overlay/PickArea.h"

#include <QApplication>
#include <QKeySequence>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace workbench
{

using oribund::ColourPickEvent;

namespace
{
/** The picture from which is picked: enough to tell a thing in it from what is beside it. */
constexpr int kPickWidth = 960;
constexpr int kPickHeight = 960;

/** Colours of an area, along each side: together some two thousand. */
constexpr int kMostAcross = 48;

oribund::Image imageOf(const FrameImage& picture)
{
    oribund::Image::Pixels pixels;
    pixels.reserve(picture.rgba.size() / 4);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const std::uint8_t* const p = picture.pixel(x, y);
            pixels.push_back(std::uint32_t{p[3]} << 24 | std::uint32_t{p[0]} << 16 | std::uint32_t{p[1]} << 8 | p[2]);
        }
    return oribund::Image::fromPixels({picture.width, picture.height}, std::move(pixels));
}

/** The pixels between two places along one side, spread evenly: all of them, where they are few. */
std::vector<int> pixelsBetween(double from, double to, int side)
{
    const int first = std::clamp(static_cast<int>(std::floor(from * side)), 0, side - 1);
    const int last = std::clamp(static_cast<int>(std::ceil(to * side)) - 1, first, side - 1);
    const int count = std::min(last - first + 1, kMostAcross);
    std::vector<int> pixels;
    for (int i = 0; i < count; ++i)
        pixels.push_back(count == 1 ? first : first + (last - first) * i / (count - 1));
    return pixels;
}

std::vector<oribund::Colour> coloursIn(const FrameImage& picture, const oribund::Kt::Box<double>& area)
{
    std::vector<oribund::Colour> colours;
    for (const int y : pixelsBetween(area.top, area.bottom, picture.height))
        for (const int x : pixelsBetween(area.left, area.right, picture.width))
            colours.push_back(colourAt(picture, x, y).withAlpha(1.0));
    return colours;
}
} // namespace

ViewerPicker::ViewerPicker(Workspace& workspace, oribund::qt::PanelSurface& surface, PickArea& area,
                           std::function<FrameImagePtr()> shown)
    : workspace_(workspace)
    , surface_(surface)
    , area_(area)
    , shown_(std::move(shown))
    , escape_(QKeySequence(Qt::Key_Escape), &surface)
    , time_(this, &ViewerPicker::handleTime)
    , replaced_(this, &ViewerPicker::handleReplaced)
{
    area_.picked = [this](const oribund::Kt::Box<double>& box, unsigned modifiers) { pick(box, modifiers); };
    area_.ended = [this] { end(pick_); };
    // Wherever the keyboard is meanwhile, unless something there has a use for the key.
    escape_.setEnabled(false);
    QObject::connect(&escape_, &QShortcut::activated, [this] { end(pick_); });
    askTimer_.setSingleShot(true);
    QObject::connect(&askTimer_, &QTimer::timeout, [this] { ask(); });
    time_.attach(workspace_.vob().getCurrentTimeServer().notifier());
    replaced_.attach(workspace_.replaced());
    workspace_.vob().setColourPicker(this);
}

ViewerPicker::~ViewerPicker()
{
    end(pick_);
    workspace_.vob().setColourPicker(nullptr);
}

oribund::iColourPicker::Number ViewerPicker::begin(const oribund::FXViewHandle& effect)
{
    end(pick_);
    if (!shown_())
        return kNone;
    pick_ = ++count_;
    effect_ = effect.getViewEffectID();
    input_ = std::make_unique<InputPicture>(workspace_.vob(), workspace_.pictures(),
                                            [this](const FrameImagePtr& picture) { show(picture); });
    show(nullptr);
    area_.setVisible(true);
    escape_.setEnabled(true);
    if (changed)
        changed();
    keyboardBefore_ = QApplication::focusWidget();
    surface_.setFocus(Qt::MenuBarFocusReason); // borrowed: who had it takes it up again where he was
    area_.takeFocus();
    askTimer_.start(0); // whoever begins may be in the middle of something
    return pick_;
}

void ViewerPicker::end(Number pick)
{
    if (pick == kNone || pick != pick_)
        return;
    pick_ = kNone;
    askTimer_.stop();
    escape_.setEnabled(false);
    inputPicture_ = nullptr;
    giveKeyboardBack();
    area_.setVisible(false);
    area_.setPicture({});
    if (changed)
        changed();
    picks_.notify({ColourPickEvent::Kind::Ended, pick, {}, 0});
}

void ViewerPicker::giveKeyboardBack()
{
    if (area_.hasFocus() && keyboardBefore_ && keyboardBefore_->isVisible() && keyboardBefore_ != &surface_)
        keyboardBefore_->setFocus(Qt::MenuBarFocusReason);
}

void ViewerPicker::ask()
{
    if (isPicking() && input_)
        input_->ask(effect_, kPickWidth, kPickHeight);
}

void ViewerPicker::show(const FrameImagePtr& input)
{
    inputPicture_ = input;
    area_.setPicture(input ? imageOf(*input) : oribund::Image());
}

void ViewerPicker::pick(const oribund::Kt::Box<double>& area, unsigned modifiers)
{
    const FrameImagePtr picture = inputPicture_ ? inputPicture_ : shown_();
    if (!isPicking() || !picture)
        return;
    const std::vector<oribund::Colour> colours = coloursIn(*picture, area);
    picks_.notify({ColourPickEvent::Kind::Picked, pick_, colours, modifiers});
}

int ViewerPicker::handleTime(const oribund::ValServerEvent<double>& event)
{
    if (event.kind != oribund::ValEventKind::Changed || !isPicking())
        return 0;
    // What is shown is another frame now.
    if (inputPicture_)
        show(nullptr);
    if (!workspace_.vob().isPlaying())
        askTimer_.start(100);
    return 0;
}

int ViewerPicker::handleReplaced(const EditReplaced&)
{
    end(pick_);
    return 0;
}

} // namespace workbench
