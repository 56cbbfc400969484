#include "workbench/app/overlay/PickArea.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace workbench
{

using namespace oribund;

namespace
{
/** A hand that clicks does not hold quite still. */
constexpr int kPointSlack = 3;

constexpr double kCrossStep = 0.01; // of the frame
constexpr double kCrossCoarse = 10.0;
constexpr double kCrossReach = 9.0;

constexpr Colour kInk{1.0, 1.0, 1.0, 0.95};
constexpr Colour kShade{0.0, 0.0, 0.0, 0.6};

/** Where an arrow key leads; nothing for another key. */
Vector2d wayOf(const Event& press)
{
    switch (press.key) {
    case Key::Left:
        return {-1.0, 0.0};
    case Key::Right:
        return {1.0, 0.0};
    case Key::Up:
        return {0.0, -1.0};
    case Key::Down:
        return {0.0, 1.0};
    default:
        return {};
    }
}

/** Shift and Alt say what becomes of a pick, and so are no reason to leave the key to others. */
bool picksByKey(const Event& press)
{
    return press.code == EventCode::KeyPress && (press.key == Key::Enter || press.key == Key::Space) &&
           !press.has(Event::kCtrl | Event::kMeta);
}
} // namespace

PickArea::PickArea(const InitArgs& args)
    : Control(args)
{
    setCursor(MouseCursor::Cross);
    setAccessibleName(UIString(L"Picture to pick from"));
}

PickArea::~PickArea() = default;

void PickArea::setMapping(const PictureMapping& mapping)
{
    mapping_ = mapping;
    changed(GlobChange::kContents);
}

void PickArea::setPicture(const Image& picture)
{
    picture_ = picture;
    changed(GlobChange::kState | GlobChange::kContents);
}

bool PickArea::showsPicture() const
{
    // Away from the picture the user looks at what came of the pick.
    return !picture_.empty() && (isHot() || drag_ || cross_);
}

WString PickArea::hint() const
{
    const WString what = picture_.empty() ? L"The picture as shown."
                         : showsPicture() ? L"The picture before the effect."
                                          : L"The picture with the effect.";
    return what + L" Click or drag to pick a colour; Shift adds, Alt takes away, Escape ends.";
}

Vector2d PickArea::partsAt(const XY<int>& local) const
{
    const Vector2d parts = mapping_.fromView({local.x + 0.5, local.y + 0.5});
    return {std::clamp(parts.x, 0.0, 1.0), std::clamp(parts.y, 0.0, 1.0)};
}

bool PickArea::isArea() const
{
    return drag_ &&
           std::max(std::abs(drag_->to.x - drag_->from.x), std::abs(drag_->to.y - drag_->from.y)) > kPointSlack;
}

void PickArea::pickDragged(unsigned modifiers)
{
    const Vector2d from = partsAt(drag_->from);
    const Vector2d to = isArea() ? partsAt(drag_->to) : from;
    drag_.reset();
    changed(GlobChange::kContents);
    if (picked)
        picked({std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x), std::max(from.y, to.y)},
               modifiers);
}

bool PickArea::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left)) {
        drag_ = Drag{event.position, event.position};
        cross_.reset();
        changed(GlobChange::kContents);
        return true;
    }
    if (!drag_)
        return Control::handleMouseEvent(event) || event.isPress(MouseButton::Right);
    if (event.code == EventCode::MouseMove) {
        drag_->to = event.position;
        changed(GlobChange::kContents);
    } else if (event.code == EventCode::MouseRelease && event.button == MouseButton::Left) {
        pickDragged(event.modifiers);
    } else if (event.code == EventCode::MouseCancel) {
        drag_.reset();
        changed(GlobChange::kContents);
    }
    return true;
}

bool PickArea::usesKey(const Event& press) const
{
    const bool moves = press.isPlainKeyPress() && wayOf(press) != Vector2d();
    return press.isKeyPress(Key::Escape) || moves || picksByKey(press) || Control::usesKey(press);
}

bool PickArea::handleKeyEvent(const Event& event)
{
    if (event.isKeyPress(Key::Escape)) {
        if (drag_) {
            drag_.reset();
            changed(GlobChange::kContents);
        } else if (ended) {
            ended();
        }
        return true;
    }
    if (picksByKey(event)) {
        const Vector2d at = cross_.value_or(Vector2d{0.5, 0.5});
        if (picked)
            picked({at.x, at.y, at.x, at.y}, event.modifiers);
        return true;
    }
    if (!event.isPlainKeyPress() || wayOf(event) == Vector2d())
        return Control::handleKeyEvent(event);
    moveCross(event);
    return true;
}

void PickArea::moveCross(const Event& press)
{
    const double step = kCrossStep * (press.has(Event::kShift) ? kCrossCoarse : 1.0);
    const Vector2d moved = cross_.value_or(Vector2d{0.5, 0.5}) + wayOf(press) * step;
    cross_ = Vector2d{std::clamp(moved.x, 0.0, 1.0), std::clamp(moved.y, 0.0, 1.0)};
    changed(GlobChange::kContents);
}

void PickArea::describe(AccessibleDescription& description) const
{
    description.help = UIString(hint());
}

void PickArea::draw(CanvasRenderer& renderer)
{
    if (showsPicture())
        renderer.image(mapping_.area, picture_, CanvasRenderer::kNone);
    const Kt::Box<double> line{mapping_.area.left, mapping_.area.top, mapping_.area.right,
                               mapping_.area.top + UifStd::getRowHeight()};
    renderer.fillRect(line, kShade);
    renderer.text(line, hint(), font(), kInk, TextAlign::Centre);
    if (isArea()) {
        const auto [from, to] = *drag_;
        const Kt::Box<double> box = CanvasRenderer::toDouble(
            {std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x) + 1, std::max(from.y, to.y) + 1});
        renderer.frameRect(box.inset(-1.0), kShade);
        renderer.frameRect(box, kInk);
    }
    if (cross_) {
        const XY<double> at = mapping_.toView(*cross_);
        for (const auto& [colour, width] : {std::pair(kShade, 3.0), std::pair(kInk, 1.0)}) {
            renderer.line({at.x - kCrossReach, at.y}, {at.x + kCrossReach, at.y}, colour, width);
            renderer.line({at.x, at.y - kCrossReach}, {at.x, at.y + kCrossReach}, colour, width);
        }
    }
}

} // namespace workbench
