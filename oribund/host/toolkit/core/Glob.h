#pragma once

#include "oribund/host/base/Box.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/XY.h"
#include "oribund/host/toolkit/core/Accessible.h"
#include "oribund/host/toolkit/core/GlobCreationInfo.h"
#include "oribund/host/toolkit/core/GlobLook.h"
#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/host/toolkit/core/WidgetPosition.h"
#include "oribund/host/toolkit/core/eRedrawFlag.h"

#include <memory>
#include <vector>

namespace oribund
{

class Canvas;
class CanvasRenderer;
class DirtyRegion;
class Event;
class TextBox;

/**
 * A rectangle of a panel: the base of every widget. It holds state, geometry and behaviour, and draws itself.
 *
 * A glob owns its children. It is shown when the root of its tree is open on a canvas and it and all its ancestors are
 * visible. Any glob may be destroyed at any time, also by what it calls: code that goes on after a callback checks with
 * a GlobRef that it is still there. Coordinates are logical pixels, top-down, those of a child from the top left
 * corner of its parent. User-interface thread only.
 */
class ORIBUND_API Glob : public GlobLook, public Accessible
{
public:
    using InitArgs = GlobCreationInfo;

    /** How much of itself a group shows. Kept in preferences as a number. */
    enum eSizeState { eSizeNormal = 0, eSizeMinimised = 1 };

    explicit Glob(const GlobCreationInfo& info);
    ~Glob() override;

    /** The place `x`, `y` inside the container's border. */
    static WidgetPosition UserTopLeft(int x, int y) { return WidgetPosition::userTopLeft(x, y); }

    static WidgetPosition UserTopRight(int x, int y) { return WidgetPosition::userTopRight(x, y); }

    const String& idString() const { return id_; }

    // The tree

    Glob* parent() const { return parent_; }

    /** The children in the order in which they were added, which is also the drawing order. */
    virtual void getChildren(std::vector<Glob*>& children) const;

    Glob& addChild(std::unique_ptr<Glob> child);

    /** Takes a child out of the tree, and off the screen. Null when it is no child of this. */
    std::unique_ptr<Glob> removeChild(Glob& child);

    /** Whether `other` is this or stands somewhere inside it. */
    bool isAncestorOf(const Glob* other) const;

    /** The canvas given at creation or, without one, the parent's; may be null. */
    Canvas* canvas() const;

    /**
     * Shows this tree on its canvas, above what is open there already. Only a glob without a parent can be opened;
     * false when it has one, or no canvas. The owner of the glob stays its owner; destroying it closes it.
     */
    bool open();
    void close();

    /** Whether the tree that this is in is open. */
    bool isOpen() const;

    // Geometry

    const XY<int>& getPosition() const { return position_; }

    const XY<int>& getSize() const { return size_; }

    int getWidth() const { return size_.x; }

    int getHeight() const { return size_.y; }

    /** In coordinates of the parent. */
    Kt::Box<int> box() const { return Kt::Box<int>::fromSize(position_, size_); }

    Kt::Box<int> localBox() const { return Kt::Box<int>::fromSize({}, size_); }

    void setPosition(const XY<int>& position);

    /** Takes the size, rounded and not below the minimum, and tells the parent when it differs. */
    virtual void resize(double width, double height);

    void resize(const XY<int>& size) { resize(size.x, size.y); }

    const XY<int>& getMinSize() const { return minSize_; }

    /** Does not resize. */
    void setMinSize(const XY<int>& size) { minSize_ = size; }

    XY<int> toCanvas(const XY<int>& local) const;
    XY<int> fromCanvas(const XY<int>& onCanvas) const;

    /** Whether a point, in this glob's coordinates, belongs to it. */
    virtual bool hitTest(const XY<int>& local) const;

    /** The innermost visible glob at a point, this included; null when the point is outside. */
    Glob* globAt(const XY<int>& local);

    // State

    /** Whether the glob is to be seen where its parent is: it is visible itself and not folded away by a group. */
    bool isVisible() const { return visible_ && !folded_; }

    void setVisible(bool visible, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    /** Hides what stands in a minimised group, whatever its own visibility is. For groups. */
    void setFolded(bool folded);

    /** Whether it is on the canvas: open, visible, and so all its ancestors. */
    bool isShown() const;

    bool isEnabled() const { return enabled_; }

    virtual void setEnabled(bool enabled, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    bool isActive() const { return active_; }

    /** An inactive panel shows its state greyed and takes no input. Containers pass it on to what is in them. */
    virtual void setActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    /** Visible, enabled and active, and so all its ancestors. */
    bool canInteract() const;

    /** Passed on to all that is inside. */
    virtual void setPalette(const Palette& palette, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    /** Passed on to all that is inside. 0 is the standard size. */
    virtual void setFontSize(int size);

    /** The pointer's shape at a point, with Inherit resolved. */
    MouseCursor cursorAt(const XY<int>& local) const;

    // Focus

    void setFocusable(bool focusable) { focusable_ = focusable; }

    /** Whether it takes the keyboard at all. */
    virtual bool wantsFocus() const { return focusable_; }

    /** Whether a press at this point of it or of what is in it brings it the keyboard. */
    virtual bool focusOnPress(const XY<int>& local) const;

    bool canTakeFocus() const { return wantsFocus() && isShown() && canInteract(); }

    bool hasFocus() const;

    /** False when it cannot have it now. */
    bool takeFocus();

    /** What of it is to be seen while it has the keyboard, in its coordinates; by default all. */
    virtual Kt::Box<int> focusArea() const { return localBox(); }

    /** Brings a part of it, in its coordinates, into view where what it stands in scrolls. */
    virtual void reveal(const Kt::Box<int>& part);

    /** Gives up the keyboard if it has it. */
    void dropFocus();

    /** The entry into which keys type while this has the keyboard; null where they type no text. */
    virtual TextBox* textEntry() { return nullptr; }

    // Events

    /**
     * An event for this glob; true when it was taken. What is not taken is offered to the parent. Sorts events to the
     * four functions below. A press of a key that it has no use for goes past it.
     */
    virtual bool react(const Event& event);

    /**
     * Whether a press of a key means something to this glob now, by itself: not to what is in it or around it. The one
     * truth about its keys: handleKeyEvent() hears of these presses alone, and no shortcut of a window takes them.
     */
    virtual bool usesKey(const Event& press) const;

    /** What it is, or a part of it, to someone who does not see it: what every glob is, and what describe() adds. */
    AccessibleDescription accessible(int part = kWhole) const;

    /** Sends a message to this glob and, until one takes it, to its ancestors; true when it was taken. */
    bool sendMsg(const String& message);

    // Drawing

    /** Draws the glob without its children, in its own coordinates. */
    virtual void draw(CanvasRenderer& renderer);

    /** Draws it and what is in it, in the parent's coordinates, clipped to its box. */
    void drawTree(CanvasRenderer& renderer);

    void redraw();

    /** The same for a part of it, in its own coordinates. */
    void redraw(const Kt::Box<int>& part);

    unsigned repaintCount() const { return repaints_; }

    /** For GlobRef: false once the glob is gone. */
    std::shared_ptr<const bool> token() const;

protected:
    /** For containers, after a layout: finds out whether the children stand one below the other, in their order. Then
        those at a place are found without asking all of them. */
    void noteRows();

    /** Puts some children into this order, to where the first of them stands; they keep the keyboard. */
    void reorderChildren(const std::vector<Glob*>& order);

    virtual bool handleMouseEvent(const Event& event);
    /** A press that usesKey(), or any release. */
    virtual bool handleKeyEvent(const Event& event);
    virtual void handleFocusEvent(bool gained);

    /** It was hidden, or something that it stands in, or its tree was closed. */
    virtual void handleHidden() {}

    virtual bool handleMessageEvent(const String& message, Glob* sender);

    /** A child has another size than `oldSize`, by its own doing or anyone's. */
    virtual void handleChildResize(const Glob* child, const XY<int>& oldSize);

    /** A child was added, shown or hidden. */
    virtual void handleChildrenChanged(Glob* child);

    /** A child was taken out. It may be half destroyed: `child` serves to compare. */
    virtual void handleChildRemoved(const Glob* child);

    /** Stores a size, as resize() takes it, without telling the parent; true when it differs from the present one. */
    bool applySize(double width, double height);

    /** The second half of a resize. */
    void tellParentOfResize(const XY<int>& oldSize);

    /** Calls `fn(Glob&)` for each child; children may be added or destroyed meanwhile, and this glob too. */
    template <class Fn>
    void forEachChild(Fn fn)
    {
        std::vector<GlobRef<Glob>> refs;
        refs.reserve(children_.size());
        for (const auto& child : children_)
            refs.emplace_back(child.get());
        for (const auto& ref : refs) {
            if (Glob* child = ref.get())
                fn(*child);
        }
    }

    void performRedraw(unsigned changes) override;

private:
    friend class EventRouter;

    const Glob& root() const;
    void interactivityChanged(eRedrawFlag redrawFlag);
    void visibilityChanged(eRedrawFlag redrawFlag);
    void releaseInput();
    void tellHidden();
    void forgetCanvas();
    std::unique_ptr<Glob> detach(Glob& child);
    void invalidateBox();
    Kt::Box<int> seenOnCanvas(const Kt::Box<int>& part) const;
    std::size_t firstChildBelow(int y) const;

    bool rowsEndAbove(const Glob& child, int y) const { return inRows_ && child.position_.y >= y; }

    String id_;
    Glob* parent_ = nullptr;
    std::vector<std::unique_ptr<Glob>> children_;
    Canvas* canvas_ = nullptr;
    std::unique_ptr<DirtyRegion> dirtyParts_; ///< that redraw() was asked for and the canvas was not told of yet
    mutable std::shared_ptr<bool> token_;
    XY<int> position_;
    XY<int> size_;
    XY<int> minSize_;
    unsigned repaints_ = 0;
    bool inRows_ = false; ///< see noteRows()
    bool visible_ = true;
    bool folded_ = false;
    bool enabled_ = true;
    bool active_ = true;
    bool focusable_ = false;
    bool open_ = false;
};

} // namespace oribund
