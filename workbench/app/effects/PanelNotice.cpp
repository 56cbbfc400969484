#include "workbench/app/effects/PanelNotice.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/widgets/Label.h"

#include <algorithm>
#include <utility>

namespace workbench
{

using namespace oribund;

PanelNotice::PanelNotice(const InitArgs& args)
    : WidgetGroup(args)
    , click_(this, &PanelNotice::handleClick)
{
    text_ = addWidget(std::make_unique<Label>(Label::InitArgs(1, 0, args.canvas)), UserTopLeft(0, 0));
    const auto height = static_cast<unsigned short>(UifStd::getControlHeight());
    button_ = addWidget(std::make_unique<Button>(Button::InitArgs(1, height, args.canvas)), UserTopRight(0, 0));
    click_.attach(button_->clicks());
    setVisible(false);
}

void PanelNotice::show(const UIString& text, const UIString& button, const UIString& description,
                       std::function<void()> act)
{
    act_ = std::move(act);
    text_->setText(text);
    button_->setText(button);
    button_->setAccessibleName(description);
    placeWidgets();
    setVisible(true);
}

void PanelNotice::resize(double width, double height)
{
    WidgetGroup::resize(width, height);
    placeWidgets();
}

void PanelNotice::placeWidgets()
{
    if (!button_)
        return; // it is being made
    const RedrawHold hold;
    const int width = getUserArea().width();
    const XY<int> button = Button::calcSizeFor(button_->getText());
    button_->resize(button);
    text_->resize({std::max(width - button.x - UifStd::getWidgetGap(), 0), button.y});
}

int PanelNotice::handleClick(const ButtonEvent&)
{
    const std::function<void()> act = act_; // the click may end this object
    act();
    return 0;
}

} // namespace workbench
