#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/CanvasClient.h"
#include "oribund/host/toolkit/core/GlobRef.h"

#include <memory>
#include <vector>

namespace oribund
{

class Canvas;
class Glob;

/**
 * What stands between a canvas and the globs open on it: which roots there are, who has the pointer and the keyboard,
 * who gets an event.
 */
class ORIBUND_API EventRouter final : public CanvasClient
{
public:
    /** The router is the canvas's own. */
    explicit EventRouter(Canvas& canvas);
    ~EventRouter() override;

    /** The canvas's router, made when it has none. */
    static EventRouter& of(Canvas& canvas);

    /** The same, but null when it has none. */
    static EventRouter* find(const Canvas* canvas);

    void addRoot(Glob& root);
    void removeRoot(Glob& root);

    bool handleEvent(const Event& event) override;
    void drawContents(CanvasRenderer& renderer) override;
    void regionChanged(const Kt::Box<int>& region) override;

    Glob* focusOwner() const override { return focus_.get(); }

    /** The glob that took the press of a mouse button that is still held. */
    Glob* grabOwner() const { return grab_.get(); }

    /** The innermost visible glob at a point of the canvas; null where there is none. */
    Glob* globAt(const XY<int>& onCanvas) const;

    /** Moves the keyboard to a glob, which must be able to take it, or to none. Tells both. */
    void setFocus(Glob* glob);

    /** Who has the keyboard is done with it: none has it, and Tab goes on from there. */
    void handBackFocus();

    /**
     * To the next or previous tab stop; false when there is none. Past the last one it goes on with the first, or,
     * without `wrap`, moves nothing and returns false, so that a host can take the keyboard elsewhere.
     */
    bool moveFocus(bool forward, bool wrap = true);

    /** As Tab does: past the last stop the keyboard leaves the canvas, where its skin can take it elsewhere. */
    bool moveByTab(bool forward);

    /**
     * Whether a press of a key means something to the globs: to the one that holds the pointer, to the one that has the
     * keyboard or what that is in, or, for Tab, to the tab order. A host asks before it takes a key for a command of
     * its own.
     */
    bool usesKey(const Event& press) const;

    /** The glob and what is in it cannot take input any more: a drag is cancelled, the keyboard given up. */
    void release(Glob& glob);

private:
    bool routeMouse(Glob* target, const Event& event);
    bool routePress(Glob* target, const Event& event);
    bool routeRelease(Glob* target, const Event& event);
    Glob* nextStop(bool forward, bool wrap) const;
    bool routeKey(const Event& event);
    void cancelGrab();
    void hover(Glob* target, const Event& event);
    void focusForPress(Glob& target, const Event& event);
    bool deliver(Glob& glob, Event event);
    bool bubble(Glob& target, Event event, GlobRef<Glob>* taker = nullptr);

    Canvas& canvas_;
    std::vector<Glob*> roots_;
    GlobRef<Glob> focus_;
    GlobRef<Glob> handedBack_; ///< from where Tab goes on while nobody has the keyboard
    GlobRef<Glob> grab_;
    GlobRef<Glob> hovered_;
};

} // namespace oribund
