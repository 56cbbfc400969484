#include "workbench/app/effects/EffectReorder.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace workbench
{

using namespace oribund;

namespace
{
constexpr int kLineHeight = 3;
constexpr int kScrollInterval = 30; ///< milliseconds

/** Shows where a panel would land. */
class DropLine final : public Glob
{
public:
    using Glob::Glob;

    bool hitTest(const XY<int>&) const override { return false; }

    void draw(CanvasRenderer& renderer) override
    {
        renderer.fillRect(CanvasRenderer::toDouble(localBox()), getPalette().accent());
    }
};
} // namespace

EffectReorder::EffectReorder(Glob& stack, Drop drop)
    : stack_(stack)
    , drop_(std::move(drop))
{
    scrolling_.setInterval(kScrollInterval);
    QObject::connect(&scrolling_, &QTimer::timeout, &scrolling_, [this] { scroll(); });
}

EffectReorder::~EffectReorder() = default;

void EffectReorder::follow(const std::vector<EffectComponentPanel*>& panels)
{
    end();
    panels_ = panels;
    callbacks_.clear();
    for (EffectComponentPanel* const panel : panels) {
        callbacks_.push_back(std::make_unique<Callback>(this, &EffectReorder::handleDrag));
        callbacks_.back()->attach(panel->titleDrags());
    }
}

int EffectReorder::handleDrag(const Event& event)
{
    pointer_ = event.canvasPosition;
    switch (event.kind) {
    case Event::Kind::Begun:
        begin(*event.panel);
        break;
    case Event::Kind::Moved:
        showLine();
        break;
    case Event::Kind::Dropped:
        drop();
        break;
    case Event::Kind::Cancelled:
        end();
        break;
    }
    return 0;
}

void EffectReorder::begin(EffectComponentPanel& panel)
{
    dragged_ = GlobRef(&panel);
    panel.setTitleActive(false);
    auto line = std::make_unique<DropLine>(GlobCreationInfo(1, kLineHeight));
    line_ = GlobRef<Glob>(line.get());
    stack_.addChild(std::move(line));
    showLine();
    scrolling_.start();
}

void EffectReorder::drop()
{
    const auto from = std::ranges::find(panels_, dragged_.get());
    const bool isHere = dragged_ && from != panels_.end();
    const auto index = static_cast<std::size_t>(from - panels_.begin());
    const std::size_t gap = gapAtPointer();
    end();
    // The gaps above and below it are where it is.
    if (isHere && gap != index && gap != index + 1)
        drop_(index, gap > index ? gap - 1 : gap);
}

void EffectReorder::end()
{
    scrolling_.stop();
    if (dragged_)
        dragged_->setTitleActive(true);
    dragged_.reset();
    if (line_)
        stack_.removeChild(*line_);
}

void EffectReorder::scroll()
{
    const int y = pointerY();
    const int margin = UifStd::getRowHeight();
    stack_.reveal({0, std::max(0, y - margin), 1, std::min(stack_.getHeight(), y + margin)});
    showLine();
}

void EffectReorder::showLine()
{
    if (!line_)
        return;
    const int edge = edgeOf(gapAtPointer());
    line_->resize({stack_.getWidth(), kLineHeight});
    line_->setPosition({0, std::clamp(edge - kLineHeight / 2, 0, std::max(0, stack_.getHeight() - kLineHeight))});
}

int EffectReorder::pointerY() const
{
    return stack_.fromCanvas(pointer_).y;
}

/** Above the panel of that number; the number of panels for the gap below the last. */
std::size_t EffectReorder::gapAtPointer() const
{
    const int y = pointerY();
    std::size_t best = 0;
    for (std::size_t gap = 1; gap <= panels_.size(); ++gap)
        if (std::abs(edgeOf(gap) - y) < std::abs(edgeOf(best) - y))
            best = gap;
    return best;
}

int EffectReorder::edgeOf(std::size_t gap) const
{
    if (panels_.empty())
        return 0;
    return gap < panels_.size() ? panels_[gap]->box().top - 1 : panels_.back()->box().bottom;
}

} // namespace workbench
