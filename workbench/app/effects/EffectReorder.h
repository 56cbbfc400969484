#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/core/GlobRef.h"
#include "oribund/panels/EffectComponentPanel.h"

#include <QTimer>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace workbench
{

/**
 * Has the user drag the panels of a stack into another order by their titles. A line shows where a panel would land;
 * near an end of what is in view the stack scrolls.
 */
class EffectReorder
{
public:
    /** Called at the end of a drag that would change something: the panel at `from` is to stand at `to`. */
    using Drop = std::function<void(std::size_t from, std::size_t to)>;

    /** The stack is what the panels stand on; it outlives this. */
    EffectReorder(oribund::Glob& stack, Drop drop);
    ~EffectReorder();

    /** These can be dragged from now on; what is being dragged goes back to where it was. From the top down. */
    void follow(const std::vector<oribund::EffectComponentPanel*>& panels);

    bool isDragging() const { return static_cast<bool>(dragged_); }

private:
    using Event = oribund::TitleDragEvent;
    using Callback = oribund::MethodCallback<EffectReorder, Event>;

    int handleDrag(const Event& event);
    void begin(oribund::EffectComponentPanel& panel);
    void drop();
    void end();
    void scroll();
    void showLine();
    int pointerY() const;
    std::size_t gapAtPointer() const;
    int edgeOf(std::size_t gap) const;

    oribund::Glob& stack_;
    Drop drop_;
    std::vector<oribund::EffectComponentPanel*> panels_;
    std::vector<std::unique_ptr<Callback>> callbacks_;
    oribund::GlobRef<oribund::EffectComponentPanel> dragged_;
    oribund::GlobRef<oribund::Glob> line_;
    oribund::XY<int> pointer_; ///< on the canvas
    QTimer scrolling_;
};

} // namespace workbench
