#include "oribund/host/toolkit/core/Glob.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/DirtyRegion.h"
#include "oribund/host/toolkit/core/BringTogether.h"
#include "oribund/host/toolkit/core/EventRouter.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/Skin.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace oribund
{

namespace
{

/** Changes after which all of it has to be drawn again. */
constexpr unsigned kSeen = GlobChange::kGeometry | GlobChange::kVisible | GlobChange::kContents;

} // namespace

Glob::Glob(const GlobCreationInfo& info)
    : GlobLook(info.palette)
    , id_(info.id)
    , canvas_(info.canvas)
    , size_{info.width, info.height}
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
    inRows_ = false;
    added.changed(GlobChange::kAll);
    handleChildrenChanged(&added);
    return added;
}

std::unique_ptr<Glob> Glob::detach(Glob& child)
{
    // From the end: what is taken apart mostly goes the other way round than it came.
    const auto found =
        std::find_if(children_.rbegin(), children_.rend(), [&](const auto& owned) { return owned.get() == &child; });
    if (found == children_.rend())
        return nullptr;
    std::unique_ptr<Glob> owned = std::move(*found);
    children_.erase(std::next(found).base());
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
    std::unique_ptr<Glob> owned = detach(child);
    child.parent_ = nullptr;
    handleChildRemoved(&child);
    return owned;
}

void Glob::reorderChildren(const std::vector<Glob*>& order)
{
    bringTogether(children_, order, [](const std::unique_ptr<Glob>& child) { return child.get(); });
    inRows_ = false;
    redraw();
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
    changed(GlobChange::kAll);
    return true;
}

void Glob::close()
{
    if (!open_)
        return;
    GlobRef<Glob> self(this);
    releaseInput();
    if (self)
        tellHidden();
    if (!self || !open_)
        return;
    invalidateBox();
    open_ = false;
    if (EventRouter* router = EventRouter::find(canvas_))
        router->removeRoot(*this);
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
    if (!isVisible()) {
        releaseInput();
        if (self)
            tellHidden();
    }
    if (!self)
        return;
    changed(GlobChange::kVisible | GlobChange::kContents, redrawFlag);
    if (parent_)
        parent_->handleChildrenChanged(this);
}

void Glob::tellHidden()
{
    const GlobRef<Glob> self(this);
    handleHidden();
    if (self)
        forEachChild([](Glob& child) { child.tellHidden(); });
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
        inside[i]->changed(GlobChange::kEnabled | GlobChange::kContents, redrawFlag);
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

void Glob::setPalette(const Palette& palette, eRedrawFlag redrawFlag)
{
    RedrawHold hold;
    applyPalette(palette, redrawFlag);
    forEachChild([&](Glob& child) { child.setPalette(palette, redrawFlag); });
}

void Glob::setFontSize(int size)
{
    RedrawHold hold;
    Glib::FontDesc resized = font();
    resized.size = size;
    setFont(resized);
    forEachChild([size](Glob& child) { child.setFontSize(size); });
}

void Glob::handleChildResize(const Glob*, const XY<int>&) {}

void Glob::handleChildrenChanged(Glob*) {}

void Glob::handleChildRemoved(const Glob*) {}

// Drawing

void Glob::draw(CanvasRenderer&) {}

void Glob::drawTree(CanvasRenderer& renderer)
{
    if (!isVisible() || !renderer.clipBox().intersects(CanvasRenderer::toDouble(box())))
        return;
    const OriginGuard origin(renderer, {double(position_.x), double(position_.y)});
    const ClipGuard clip(renderer, CanvasRenderer::toDouble(localBox()));
    draw(renderer);
    const Kt::Box<double> seen = renderer.clipBox();
    const auto top = static_cast<int>(std::floor(std::max(seen.top, 0.0)));
    const auto bottom = static_cast<int>(std::ceil(std::clamp(seen.bottom, 0.0, double(getHeight()))));
    for (std::size_t i = firstChildBelow(top); i < children_.size() && !rowsEndAbove(*children_[i], bottom); ++i)
        children_[i]->drawTree(renderer);
}

void Glob::redraw()
{
    changed(GlobChange::kContents);
}

void Glob::redraw(const Kt::Box<int>& part)
{
    const Kt::Box<int> seen = part.intersect(localBox());
    if (seen.empty())
        return;
    if (!dirtyParts_)
        dirtyParts_ = std::make_unique<DirtyRegion>();
    dirtyParts_->add(seen);
    changed(GlobChange::kPart);
}

void Glob::performRedraw(unsigned changes)
{
    const std::unique_ptr<DirtyRegion> parts = std::move(dirtyParts_);
    if (!isOpen())
        return;
    if ((changes & (kSeen | GlobChange::kPart)) != 0 && isShown()) {
        ++repaints_;
        const bool whole = (changes & kSeen) != 0 || !parts;
        canvas()->repainted(whole ? seenOnCanvas(localBox()) : Kt::Box<int>());
        for (std::size_t i = 0; !whole && i < parts->boxes().size(); ++i)
            canvas()->invalidate(seenOnCanvas(parts->boxes()[i]));
    }
    if (Skin* skin = canvas()->skin())
        skin->globChanged(*this, changes);
}

} // namespace oribund
