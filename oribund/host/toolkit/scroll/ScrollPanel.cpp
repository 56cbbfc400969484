#include "oribund/host/toolkit/scroll/ScrollPanel.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

constexpr int kScrolledRowsPerNotch = 3;

ScrollBar::InitArgs scrollBarArgs(const GlobCreationInfo& info)
{
    ScrollBar::InitArgs args;
    args.palette = info.palette;
    args.focusable = false; // the panel has the keys
    return args;
}

} // namespace

ScrollPanel::ScrollPanel(const GlobCreationInfo& info)
    : Glob(info)
    , bar_(static_cast<ScrollBar*>(&addChild(std::make_unique<ScrollBar>(scrollBarArgs(info)))))
{
    barCallback_.attach(bar_->events());
    layOut();
}

void ScrollPanel::setContent(std::unique_ptr<Glob> content)
{
    const RedrawHold hold;
    if (Glob* const old = std::exchange(content_, nullptr))
        removeChild(*old).reset();
    if (content) {
        content_ = content.get();
        content_->setPosition({0, 0});
        addChild(std::move(content));
    }
    layOut();
}

int ScrollPanel::contentHeight() const
{
    return content_ && content_->isVisible() ? content_->getHeight() : 0;
}

int ScrollPanel::getScroll() const
{
    return content_ ? -content_->getPosition().y : 0;
}

int ScrollPanel::getMaxScroll() const
{
    return std::max(0, contentHeight() - getHeight());
}

bool ScrollPanel::setScroll(int offset)
{
    const int wanted = std::clamp(offset, 0, getMaxScroll());
    if (!content_ || wanted == getScroll())
        return false;
    const RedrawHold hold;
    content_->setPosition({0, -wanted});
    showThumb();
    return true;
}

void ScrollPanel::showThumb()
{
    const double all = std::max(1, contentHeight());
    bar_->setThumb(getScroll() / all, getHeight() / all);
    bar_->setStep(UifStd::getRowHeight() / all);
}

/** Whether the content is too high beside the bar, or without it. */
bool ScrollPanel::overflows(bool besideBar)
{
    if (!content_)
        return false;
    const GlobRef<ScrollPanel> self(this);
    const int width = getWidth() - (besideBar ? bar_->getWidth() : 0);
    content_->resize({std::max(0, width), content_->getHeight()});
    return self && getMaxScroll() > 0;
}

void ScrollPanel::layOut()
{
    if (layingOut_)
        return;
    const RedrawHold hold;
    const GlobRef<ScrollPanel> self(this);
    layingOut_ = true;
    // What is narrower may be higher: the bar goes only where there is no need for it without it. What it is now is
    // tried first, so that a change of the height alone lays the content out once.
    const bool needsBar = bar_->isVisible() ? overflows(true) || overflows(false) : overflows(false);
    if (self && needsBar)
        overflows(true);
    if (!self)
        return;
    layingOut_ = false;
    bar_->setPosition({getWidth() - bar_->getWidth(), 0});
    bar_->resize(bar_->getWidth(), getHeight());
    bar_->setVisible(needsBar);
    if (content_)
        content_->setPosition({0, -std::clamp(getScroll(), 0, getMaxScroll())});
    showThumb();
}

void ScrollPanel::resize(double width, double height)
{
    const RedrawHold hold;
    const XY<int> old = getSize();
    if (!applySize(width, height))
        return;
    const GlobRef<ScrollPanel> self(this);
    layOut();
    if (self)
        tellParentOfResize(old);
}

void ScrollPanel::handleChildResize(const Glob* child, const XY<int>& oldSize)
{
    Glob::handleChildResize(child, oldSize);
    if (child == content_)
        layOut();
}

void ScrollPanel::handleChildrenChanged(Glob* child)
{
    Glob::handleChildrenChanged(child);
    if (child == content_)
        layOut();
}

void ScrollPanel::handleChildRemoved(const Glob* child)
{
    Glob::handleChildRemoved(child);
    if (child != content_)
        return;
    content_ = nullptr;
    layOut();
}

void ScrollPanel::reveal(const Kt::Box<int>& part)
{
    const GlobRef<ScrollPanel> self(this);
    int by = std::max(0, part.bottom - getHeight());
    // Of what is too high the upper end is the one to see.
    if (part.top - by < 0)
        by = part.top;
    const int before = getScroll();
    setScroll(before + by);
    if (!self)
        return;
    const int moved = getScroll() - before;
    Glob::reveal(part.movedBy({0, -moved}));
}

// Input

int ScrollPanel::handleBar(const ScrollBarEvent& event)
{
    setScroll(static_cast<int>(std::lround(event.position * contentHeight())));
    return 0;
}

bool ScrollPanel::handleMouseEvent(const Event& event)
{
    if (event.code != EventCode::MouseWheel || event.has(Event::kCtrl | Event::kAlt))
        return Glob::handleMouseEvent(event);
    wheelRest_ += event.wheel * kScrolledRowsPerNotch * UifStd::getRowHeight();
    const double whole = std::trunc(wheelRest_);
    wheelRest_ -= whole;
    // At its end what is around it scrolls on.
    return whole == 0.0 ? getMaxScroll() > 0 : setScroll(getScroll() - static_cast<int>(std::clamp(whole, -1e6, 1e6)));
}

bool ScrollPanel::usesKey(const Event& press) const
{
    const bool scrolls =
        press.key == Key::PageUp || press.key == Key::PageDown || press.key == Key::Home || press.key == Key::End;
    return (scrolls && press.isPlainKeyPress() && getMaxScroll() > 0) || Glob::usesKey(press);
}

bool ScrollPanel::handleKeyEvent(const Event& event)
{
    const int page = std::max(1, getHeight() - UifStd::getRowHeight());
    switch (event.isKeyPress(event.key) ? event.key : Key::None) {
    case Key::PageUp:
    case Key::PageDown:
        setScroll(getScroll() + (event.key == Key::PageUp ? -page : page));
        return true;
    case Key::Home:
    case Key::End:
        setScroll(event.key == Key::Home ? 0 : getMaxScroll());
        return true;
    default:
        return Glob::handleKeyEvent(event);
    }
}

// Look

void ScrollPanel::describe(AccessibleDescription& description) const
{
    description.role = AccessibleRole::Group;
}

void ScrollPanel::draw(CanvasRenderer& renderer)
{
    renderer.fillRect(CanvasRenderer::toDouble(localBox()), getPalette().window());
}

} // namespace oribund
