#include "oribund/host/toolkit/core/EventRouter.h"

#include "oribund/host/canvas/Canvas.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/Glob.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/core/Skin.h"
#include "oribund/host/toolkit/layout/TabOrderManager.h"
#include "oribund/host/toolkit/layout/TabOrderable.h"

#include <algorithm>
#include <unordered_set>

namespace oribund
{

namespace
{

/** Collects what Tab visits: a tab order where its first stop is met, everything else in the order of the tree. */
class TabStops
{
public:
    explicit TabStops(Glob& root) { visit(root); }

    /** The stop after or before the one at or around `from`; null when there is none, or only round the end. */
    Glob* next(const Glob* from, bool forward, bool wrap) const
    {
        if (stops_.empty())
            return nullptr;
        const auto at = std::find_if(stops_.begin(), stops_.end(),
                                     [from](const Glob* stop) { return stop == from || stop->isAncestorOf(from); });
        const auto exact = std::find(stops_.begin(), stops_.end(), from);
        const auto here = exact != stops_.end() ? exact : at;
        if (here == stops_.end())
            return forward ? stops_.front() : stops_.back();
        if (!wrap && *here == (forward ? stops_.back() : stops_.front()))
            return nullptr;
        const auto index = static_cast<std::size_t>(here - stops_.begin());
        return stops_[(index + (forward ? 1 : stops_.size() - 1)) % stops_.size()];
    }

private:
    void visit(Glob& glob)
    {
        if (!glob.isVisible())
            return;
        auto* orderable = dynamic_cast<TabOrderable*>(&glob);
        if (TabOrderManager* manager = orderable ? orderable->tabOrderManager() : nullptr)
            visitOrder(*manager);
        else
            add(glob);
        std::vector<Glob*> children;
        glob.getChildren(children);
        for (Glob* child : children)
            visit(*child);
    }

    void visitOrder(TabOrderManager& manager)
    {
        if (!visited_.insert(&manager).second)
            return;
        for (TabOrderable* stop : manager.tabStops())
            add(stop->tabGlob());
    }

    void add(Glob& glob)
    {
        if (glob.canTakeFocus() && visited_.insert(&glob).second)
            stops_.push_back(&glob);
    }

    std::vector<Glob*> stops_;
    std::unordered_set<const void*> visited_; ///< globs and orders, so that none is asked for twice
};

/** Ctrl+Tab and the like are commands of the window. */
bool isTab(const Event& event)
{
    return event.isPlainKeyPress() && event.key == Key::Tab;
}

} // namespace

EventRouter::EventRouter(Canvas& canvas)
    : canvas_(canvas)
{
}

EventRouter::~EventRouter()
{
    for (Glob* root : roots_)
        root->forgetCanvas();
}

EventRouter& EventRouter::of(Canvas& canvas)
{
    if (EventRouter* router = find(&canvas))
        return *router;
    auto made = std::make_unique<EventRouter>(canvas);
    EventRouter& router = *made;
    canvas.setClient(std::move(made));
    return router;
}

EventRouter* EventRouter::find(const Canvas* canvas)
{
    return canvas ? dynamic_cast<EventRouter*>(canvas->client()) : nullptr;
}

void EventRouter::addRoot(Glob& root)
{
    roots_.push_back(&root);
}

void EventRouter::removeRoot(Glob& root)
{
    roots_.erase(std::remove(roots_.begin(), roots_.end(), &root), roots_.end());
}

Glob* EventRouter::globAt(const XY<int>& onCanvas) const
{
    for (auto root = roots_.rbegin(); root != roots_.rend(); ++root) {
        if (Glob* found = (*root)->globAt((*root)->fromCanvas(onCanvas)))
            return found;
    }
    return nullptr;
}

bool EventRouter::handleEvent(const Event& event)
{
    Event placed = event;
    placed.canvasPosition = event.position;
    if (placed.isKey())
        return routeKey(placed);
    return placed.isMouse() && routeMouse(globAt(placed.canvasPosition), placed);
}

void EventRouter::drawContents(CanvasRenderer& renderer)
{
    for (Glob* root : roots_)
        root->drawTree(renderer);
}

void EventRouter::regionChanged(const Kt::Box<int>& region)
{
    if (Skin* skin = canvas_.skin())
        skin->regionChanged(region);
}

bool EventRouter::bubble(Glob& target, Event event, GlobRef<Glob>* taker)
{
    GlobRef<Glob> receiver(&target);
    while (receiver) {
        const GlobRef<Glob> next(receiver->parent());
        if (receiver->canInteract()) {
            event.position = receiver->fromCanvas(event.canvasPosition);
            if (receiver->react(event)) {
                if (taker)
                    *taker = receiver;
                return true;
            }
        }
        receiver = next;
    }
    return false;
}

bool EventRouter::deliver(Glob& glob, Event event)
{
    event.position = glob.fromCanvas(event.canvasPosition);
    return glob.react(event);
}

// The pointer

bool EventRouter::routeMouse(Glob* target, const Event& event)
{
    const GlobRef<Glob> under(target);
    switch (event.code) {
    case EventCode::MousePress:
    case EventCode::MouseDoubleClick:
        return routePress(target, event);
    case EventCode::MouseMove:
        if (grab_)
            return deliver(*grab_, event);
        hover(target, event);
        break;
    case EventCode::MouseRelease:
        return routeRelease(target, event);
    case EventCode::MouseLeave:
        hover(nullptr, event);
        return false;
    case EventCode::MouseCancel:
        cancelGrab();
        return true;
    default:
        break;
    }
    return under && bubble(*under, event);
}

bool EventRouter::routePress(Glob* target, const Event& event)
{
    const bool first = (event.buttons & ~static_cast<unsigned>(event.button)) == 0;
    if (grab_ && !first)
        return deliver(*grab_, event);
    GlobRef<Glob> pressed(target);
    cancelGrab(); // a release that never came
    if (!pressed)
        return false;
    if (!pressed->canInteract() && event.button == MouseButton::Left)
        return true; // a click on what is greyed is no click on what lies behind it
    focusForPress(*pressed, event);
    if (!pressed)
        return true;
    GlobRef<Glob> taker;
    if (!bubble(*pressed, event, &taker))
        return false;
    if (taker && taker->isShown() && taker->canInteract())
        grab_ = taker;
    return true;
}

bool EventRouter::routeRelease(Glob* target, const Event& event)
{
    GlobRef<Glob> under(target);
    bool taken = false;
    if (grab_) {
        const GlobRef<Glob> owner = grab_;
        if (event.buttons == 0)
            grab_.reset();
        taken = deliver(*owner, event);
    } else if (target) {
        taken = bubble(*target, event);
    }
    if (!grab_)
        hover(under.get(), event);
    return taken;
}

void EventRouter::cancelGrab()
{
    if (!grab_)
        return;
    const GlobRef<Glob> owner = grab_;
    grab_.reset();
    deliver(*owner, Event::plain(EventCode::MouseCancel));
}

void EventRouter::hover(Glob* target, const Event& event)
{
    if (hovered_ == target)
        return;
    const GlobRef<Glob> old = hovered_;
    const GlobRef<Glob> entered(target);
    hovered_ = entered;
    Event told = event;
    if (old) {
        told.code = EventCode::MouseLeave;
        deliver(*old, told);
    }
    if (entered && hovered_ == entered.get() && entered->canInteract()) {
        told.code = EventCode::MouseEnter;
        deliver(*entered, told);
    }
}

// The keyboard

void EventRouter::focusForPress(Glob& target, const Event& event)
{
    for (Glob* glob = &target; glob; glob = glob->parent()) {
        if (glob->canTakeFocus() && glob->focusOnPress(glob->fromCanvas(event.canvasPosition))) {
            setFocus(glob);
            return;
        }
    }
    setFocus(nullptr);
}

void EventRouter::setFocus(Glob* glob)
{
    if (focus_ == glob || (glob && !glob->canTakeFocus()))
        return;
    const GlobRef<Glob> old = focus_;
    const GlobRef<Glob> gains(glob);
    focus_ = gains;
    handedBack_.reset();
    if (old) {
        old->react(Event::plain(EventCode::FocusOut));
        if (old)
            old->changed(GlobChange::kFocus | GlobChange::kContents);
    }
    // What lost the keyboard may have given it to another, or destroyed the one that was to have it.
    if (gains && focus_ == gains.get()) {
        gains->react(Event::plain(EventCode::FocusIn));
        if (gains)
            gains->changed(GlobChange::kFocus | GlobChange::kContents);
    }
    if (Skin* skin = canvas_.skin())
        skin->focusChanged(focus_.get());
}

bool EventRouter::usesKey(const Event& press) const
{
    if (press.code != EventCode::KeyPress)
        return false;
    if (grab_ && grab_->usesKey(press))
        return true;
    const Glob* receiver = focus_ ? focus_.get() : roots_.empty() ? nullptr : roots_.back();
    for (; receiver; receiver = receiver->parent()) {
        if (receiver->canInteract() && receiver->usesKey(press))
            return true;
    }
    return isTab(press) && nextStop(!press.has(Event::kShift), true);
}

void EventRouter::handBackFocus()
{
    const GlobRef<Glob> owner = focus_;
    setFocus(nullptr);
    if (!focus_)
        handedBack_ = owner;
}

bool EventRouter::routeKey(const Event& event)
{
    GlobRef<Glob> receiver = focus_;
    if (grab_ && grab_ != receiver.get() && deliver(*grab_, event))
        return true; // Escape during a drag
    if (!receiver && !roots_.empty())
        receiver = GlobRef<Glob>(roots_.back());
    if (receiver && bubble(*receiver, event))
        return true;
    return isTab(event) && moveByTab(!event.has(Event::kShift));
}

bool EventRouter::moveByTab(bool forward)
{
    Skin* skin = canvas_.skin();
    return (skin && (moveFocus(forward, false) || skin->passFocusOn(forward))) || moveFocus(forward);
}

Glob* EventRouter::nextStop(bool forward, bool wrap) const
{
    if (roots_.empty())
        return nullptr;
    const Glob* const from = focus_ ? focus_.get() : handedBack_.get();
    Glob* root = roots_.back();
    for (Glob* candidate : roots_) {
        if (candidate->isAncestorOf(from))
            root = candidate;
    }
    return TabStops(*root).next(from, forward, wrap);
}

bool EventRouter::moveFocus(bool forward, bool wrap)
{
    Glob* const stop = nextStop(forward, wrap);
    if (stop)
        stop->takeFocus();
    return stop != nullptr;
}

void EventRouter::release(Glob& glob)
{
    const GlobRef<Glob> self(&glob);
    if (hovered_ && glob.isAncestorOf(hovered_.get()))
        hovered_.reset();
    if (grab_ && glob.isAncestorOf(grab_.get()))
        cancelGrab();
    if (self && focus_ && glob.isAncestorOf(focus_.get()))
        setFocus(nullptr);
}

} // namespace oribund
