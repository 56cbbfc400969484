#include "oribund/host/toolkit/Glob.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/Event.h"
#include "oribund/host/toolkit/EventRouter.h"
#include "oribund/host/toolkit/GlobPeer.h"
#include "oribund/host/toolkit/Skin.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

constexpr int kLargestSize = 65535;

/** Changes that are seen on the screen. */
constexpr unsigned kSeen = PeerChange::kAll & ~(PeerChange::kTooltip | PeerChange::kCursor);

int toPixels(double length)
{
    return std::isfinite(length) ? static_cast<int>(std::lround(std::clamp(length, 0.0, double(kLargestSize)))) : 0;
}

} // namespace

Glob::Glob(const GlobCreationInfo& info)
    : id_(info.id)
    , canvas_(info.canvas)
    , size_{info.width, info.height}
    , palette_(info.palette)
{
}

Glob::~Glob()
{
    if (token_)
        *token_ = false;
    if (parent_) {
        invalidateBox();
        Glob* parent = std::exchange(parent_, nullptr);
        static_cast<void>(parent->detach(*this).release());
        parent->handleChildRemoved(this);
    }
    while (!children_.empty()) {
        const std::unique_ptr<Glob> child = std::move(children_.back());
        children_.pop_back();
        child->parent_ = nullptr;
    }
    if (open_) {
        if (EventRouter* router = EventRouter::find(canvas_))
            router->removeRoot(*this);
    }
}

std::shared_ptr<const bool> Glob::token() const
{
    if (!token_)
        token_ = std::make_shared<bool>(true);
    return token_;
}

// The tree

void Glob::getChildren(std::vector<Glob*>& children) const
{
    for (const auto& child : children_)
        children.push_back(child.get());
}

Glob& Glob::addChild(std::unique_ptr<Glob> child)
{
    RedrawHold hold;
    Glob& added = *child;
    added.close();
    added.parent_ = this;
    children_.push_back(std::move(child));
    if (isOpen())
        added.createPeers();
    added.changed(PeerChange::kAll);
    handleChildrenChanged(&added);
    return added;
}

std::unique_ptr<Glob> Glob::detach(Glob& child)
{
    const auto found =
        std::find_if(children_.begin(), children_.end(), [&](const auto& owned) { return owned.get() == &child; });
    if (found == children_.end())
        return nullptr;
    std::unique_ptr<Glob> owned = std::move(*found);
    children_.erase(found);
    return owned;
}

std::unique_ptr<Glob> Glob::removeChild(Glob& child)
{
    if (child.parent_ != this)
        return nullptr;
    GlobRef<Glob> self(this);
    GlobRef<Glob> removed(&child);
    child.releaseInput();
    if (!self || !removed || child.parent_ != this)
        return nullptr; // the loss of the keyboard has led to its removal
    child.invalidateBox();
    child.destroyPeers();
    std::unique_ptr<Glob> owned = detach(child);
    child.parent_ = nullptr;
    handleChildRemoved(&child);
    return owned;
}

bool Glob::isAncestorOf(const Glob* other) const
{
    for (; other; other = other->parent_) {
        if (other == this)
            return true;
    }
    return false;
}

const Glob& Glob::root() const
{
    const Glob* glob = this;
    while (glob->parent_)
        glob = glob->parent_;
    return *glob;
}

Canvas* Glob::canvas() const
{
    Canvas* inherited = parent_ ? parent_->canvas() : nullptr;
    return inherited ? inherited : canvas_;
}

bool Glob::open()
{
    if (parent_ || !canvas_)
        return false;
    if (open_)
        return true;
    open_ = true;
    EventRouter::of(*canvas_).addRoot(*this);
    createPeers();
    changed(PeerChange::kAll);
    return true;
}

void Glob::close()
{
    if (!open_)
        return;
    GlobRef<Glob> self(this);
    releaseInput();
    if (!self || !open_)
        return;
    invalidateBox();
    open_ = false;
    if (EventRouter* router = EventRouter::find(canvas_))
        router->removeRoot(*this);
    destroyPeers();
}

bool Glob::isOpen() const
{
    return root().open_;
}

void Glob::forgetCanvas()
{
    canvas_ = nullptr;
    open_ = false;
    for (const auto& child : children_)
        child->forgetCanvas();
}

// Geometry

void Glob::setPosition(const XY<int>& position)
{
    if (position == position_)
        return;
    invalidateBox();
    position_ = position;
    changed(PeerChange::kGeometry);
}

void Glob::resize(double width, double height)
{
    const XY<int> old = size_;
    if (applySize(width, height))
        tellParentOfResize(old);
}

bool Glob::applySize(double width, double height)
{
    const XY<int> taken{std::max(toPixels(width), minSize_.x), std::max(toPixels(height), minSize_.y)};
    if (taken == size_)
        return false;
    invalidateBox();
    size_ = taken;
    changed(PeerChange::kGeometry | PeerChange::kContents);
    return true;
}

void Glob::tellParentOfResize(const XY<int>& oldSize)
{
    if (parent_)
        parent_->handleChildResize(this, oldSize);
}

XY<int> Glob::toCanvas(const XY<int>& local) const
{
    XY<int> p = local;
    for (const Glob* glob = this; glob; glob = glob->parent_)
        p += glob->position_;
    return p;
}

XY<int> Glob::fromCanvas(const XY<int>& onCanvas) const
{
    return onCanvas - toCanvas({});
}

bool Glob::hitTest(const XY<int>& local) const
{
    return localBox().contains(local);
}

Glob* Glob::globAt(const XY<int>& local)
{
    if (!isVisible() || !hitTest(local))
        return nullptr;
    for (auto child = children_.rbegin(); child != children_.rend(); ++child) {
        if (Glob* found = (*child)->globAt(local - (*child)->position_))
            return found;
    }
    return this;
}

void Glob::invalidateBox()
{
    if (Canvas* where = canvas(); where && isShown())
        where->invalidate(Kt::Box<int>::fromSize(toCanvas({}), size_));
}

// State

void Glob::setVisible(bool visible, eRedrawFlag redrawFlag)
{
    if (visible == visible_)
        return;
    invalidateBox();
    visible_ = visible;
    visibilityChanged(redrawFlag);
}

void Glob::setFolded(bool folded)
{
    if (folded == folded_)
        return;
    invalidateBox();
    folded_ = folded;
    visibilityChanged(eRedrawFlag::Yes);
}

void Glob::visibilityChanged(eRedrawFlag redrawFlag)
{
    RedrawHold hold;
    GlobRef<Glob> self(this);
    if (!isVisible())
        releaseInput();
    if (!self)
        return;
    changed(PeerChange::kVisible | PeerChange::kContents, redrawFlag);
    if (parent_)
        parent_->handleChildrenChanged(this);
}

bool Glob::isShown() const
{
    const Glob* glob = this;
    for (; glob->parent_ && glob->isVisible(); glob = glob->parent_)
        ;
    return glob->isVisible() && glob->open_;
}

void Glob::setEnabled(bool enabled, eRedrawFlag redrawFlag)
{
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    interactivityChanged(redrawFlag);
}

void Glob::setActive(bool active, eRedrawFlag redrawFlag)
{
    if (active == active_)
        return;
    active_ = active;
    interactivityChanged(redrawFlag);
}

void Glob::interactivityChanged(eRedrawFlag redrawFlag)
{
    RedrawHold hold;
    GlobRef<Glob> self(this);
    if (!canInteract())
        releaseInput();
    if (!self)
        return;
    std::vector<Glob*> inside{this};
    for (std::size_t i = 0; i < inside.size(); ++i) {
        inside[i]->changed(PeerChange::kEnabled | PeerChange::kContents, redrawFlag);
        for (const auto& child : inside[i]->children_)
            inside.push_back(child.get());
    }
}

bool Glob::canInteract() const
{
    for (const Glob* glob = this; glob; glob = glob->parent_) {
        if (!glob->isVisible() || !glob->enabled_ || !glob->active_)
            return false;
    }
    return true;
}

void Glob::releaseInput()
{
    if (EventRouter* router = EventRouter::find(canvas()))
        router->release(*this);
}

void Glob::setPalette(const Palette& palette, eRedrawFlag redrawFlag)
{
    RedrawHold hold;
    if (palette != palette_) {
        palette_ = palette;
        changed(PeerChange::kPalette | PeerChange::kContents, redrawFlag);
    }
    forEachChild([&](Glob& child) { child.setPalette(palette, redrawFlag); });
}

Glib::FontDesc Glob::font() const
{
    Glib::FontDesc complete = font_;
    if (complete.size <= 0)
        complete.size = UifStd::getDefaultFontSize();
    return complete;
}

void Glob::setFont(const Glib::FontDesc& font)
{
    if (font == font_)
        return;
    font_ = font;
    changed(PeerChange::kFont | PeerChange::kContents);
}

void Glob::setFontSize(int size)
{
    RedrawHold hold;
    Glib::FontDesc resized = font_;
    resized.size = size;
    setFont(resized);
    forEachChild([size](Glob& child) { child.setFontSize(size); });
}

void Glob::setTooltip(const UIString& tooltip)
{
    if (tooltip == tooltip_)
        return;
    tooltip_ = tooltip;
    changed(PeerChange::kTooltip);
}

void Glob::setAccessibleName(const UIString& name)
{
    if (name == accessibleName_)
        return;
    accessibleName_ = name;
    changed(PeerChange::kTooltip);
}

void Glob::setCursor(MouseCursor cursor)
{
    if (cursor == cursor_)
        return;
    cursor_ = cursor;
    changed(PeerChange::kCursor);
}

MouseCursor Glob::contextCursor(const XY<int>&) const
{
    return cursor_;
}

MouseCursor Glob::cursorAt(const XY<int>& local) const
{
    XY<int> p = local;
    for (const Glob* glob = this; glob; p += glob->position_, glob = glob->parent_) {
        if (const MouseCursor cursor = glob->contextCursor(p); cursor != MouseCursor::Inherit)
            return cursor;
    }
    return MouseCursor::Arrow;
}

// Focus

bool Glob::focusOnPress(const XY<int>&) const
{
    return true;
}

bool Glob::hasFocus() const
{
    const Canvas* where = canvas();
    return where && where->focusOwner() == this;
}

bool Glob::takeFocus()
{
    if (!canTakeFocus())
        return false;
    GlobRef<Glob> self(this);
    EventRouter::of(*canvas()).setFocus(this);
    return self && hasFocus();
}

void Glob::dropFocus()
{
    if (hasFocus())
        EventRouter::of(*canvas()).setFocus(nullptr);
}

void Glob::userFocus(bool gained)
{
    if (gained)
        takeFocus();
    else
        dropFocus();
}

// Events

bool Glob::react(const Event& event)
{
    if (event.isMouse())
        return handleMouseEvent(event);
    if (event.isKey())
        return handleKeyEvent(event);
    switch (event.code) {
    case EventCode::FocusIn:
    case EventCode::FocusOut:
        handleFocusEvent(event.code == EventCode::FocusIn);
        return true;
    case EventCode::Message:
        return handleMessageEvent(event.message, event.sender);
    default:
        return false;
    }
}

bool Glob::userEvent(const Event& event)
{
    EventRouter* router = isShown() ? EventRouter::find(canvas()) : nullptr;
    return router && router->route(*this, event);
}

bool Glob::sendMsg(const String& message)
{
    Event event = Event::messageFrom(this, message);
    const GlobRef<Glob> self(this);
    GlobRef<Glob> receiver(this);
    while (receiver) {
        event.sender = self.get(); // a receiver may have destroyed it
        const GlobRef<Glob> next(receiver->parent_);
        if (receiver->react(event))
            return true;
        receiver = next;
    }
    return false;
}

bool Glob::handleMouseEvent(const Event&)
{
    return false;
}

bool Glob::handleKeyEvent(const Event&)
{
    return false;
}

void Glob::handleFocusEvent(bool) {}

bool Glob::handleMessageEvent(const String&, Glob*)
{
    return false;
}

void Glob::handleChildResize(const Glob*, const XY<int>&) {}

void Glob::handleChildrenChanged(Glob*) {}

void Glob::handleChildRemoved(const Glob*) {}

// Drawing

void Glob::draw(CanvasRenderer&) {}

void Glob::drawTree(CanvasRenderer& renderer)
{
    if (!isVisible())
        return;
    const OriginGuard origin(renderer, {double(position_.x), double(position_.y)});
    const ClipGuard clip(renderer, CanvasRenderer::toDouble(localBox()));
    draw(renderer);
    for (const auto& child : children_)
        child->drawTree(renderer);
}

void Glob::redraw()
{
    changed(PeerChange::kContents);
}

void Glob::changed(unsigned changes, eRedrawFlag redrawFlag)
{
    deferredChanges_ |= changes;
    if (redrawFlag == eRedrawFlag::Yes)
        requestRedraw(std::exchange(deferredChanges_, 0u));
}

void Glob::performRedraw(unsigned changes)
{
    if (!isOpen())
        return;
    if ((changes & kSeen) != 0 && isShown()) {
        ++repaints_;
        canvas()->repainted(Kt::Box<int>::fromSize(toCanvas({}), size_));
    }
    if (peer_)
        peer_->refresh(changes);
}

std::unique_ptr<GlobPeer> Glob::makePeer(Skin& skin)
{
    return skin.makePaintPeer(*this);
}

void Glob::createPeers()
{
    Skin* skin = canvas() ? canvas()->skin() : nullptr;
    if (!skin)
        return;
    if (!peer_) {
        peer_ = makePeer(*skin);
        if (peer_)
            peer_->refresh(PeerChange::kAll);
    }
    forEachChild([](Glob& child) { child.createPeers(); });
}

void Glob::destroyPeers()
{
    for (const auto& child : children_)
        child->destroyPeers();
    peer_.reset();
}

} // namespace oribund
