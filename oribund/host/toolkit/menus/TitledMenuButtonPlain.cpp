#include "oribund/host/toolkit/menus/TitledMenuButtonPlain.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/menus/ValMenuButton.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <algorithm>

namespace oribund
{

namespace
{

std::unique_ptr<Label> makeTitle(const TitledMenuButtonPlain::InitArgs& args)
{
    Label::InitArgs label;
    label.canvas = args.canvas;
    label.palette = args.palette;
    label.text = args.title;
    label.width = args.titleWidth;
    return std::make_unique<Label>(label);
}

std::unique_ptr<ValMenuButton> makeButton(const TitledMenuButtonPlain::InitArgs& args)
{
    DropDownMenuButton::InitArgs button;
    button.canvas = args.canvas;
    button.palette = args.palette;
    button.items = args.items;
    button.selected = args.selected;
    auto made = std::make_unique<ValMenuButton>(button);
    made->setAccessibleName(args.title);
    return made;
}

} // namespace

TitledMenuButtonPlain::TitledMenuButtonPlain(const InitArgs& args)
    : StandardPanel(args)
{
    title_ = addWidget(makeTitle(args), UserTopLeft(0, 0));
    titleWidth_ = title_->getWidth();
    button_ = addWidget(makeButton(args), WidgetPosition::rightOf(*title_));
    const int natural = titleWidth_ + UifStd::getWidgetGap() + button_->getWidth();
    resize({args.width ? args.width : natural, args.height ? args.height : UifStd::getRowHeight()});
    relayout();
}

void TitledMenuButtonPlain::setTitleResize(TitleResize behaviour)
{
    titleResize_ = behaviour;
    relayout();
}

void TitledMenuButtonPlain::setTitleWidth(int width)
{
    titleWidth_ = std::max(0, width);
    relayout();
}

void TitledMenuButtonPlain::autoSize()
{
    autoSized_ = true;
    relayout();
}

void TitledMenuButtonPlain::layoutChildren()
{
    // The panel lays itself out while it is being made, before both are there.
    if (!title_ || !button_)
        return;
    const Kt::Box<int> area = getUserArea();
    const int gap = UifStd::getWidgetGap();
    const int wanted = button_->calcNaturalSize().x;
    int titleWidth = std::min(titleWidth_, area.width());
    if (titleResize_ == TitleResize::Shrinks)
        titleWidth = std::clamp(area.width() - gap - wanted, 0, titleWidth);
    const int left = area.left + titleWidth + (titleWidth > 0 ? gap : 0);
    const int room = std::max(0, area.right - left);
    title_->setPosition(area.topLeft());
    title_->resize({titleWidth, area.height()});
    button_->setPosition({left, area.top});
    button_->resize({autoSized_ ? std::min(wanted, room) : room, area.height()});
}

} // namespace oribund
