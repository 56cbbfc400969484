#include "workbench/app/effects/PanelFilter.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/EffectValParamBase.h"
#include "oribund/host/effects/params/ParamText.h"
#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"

#include <algorithm>
#include <string>
#include <utility>

namespace workbench
{

using namespace oribund;

namespace
{

std::wstring folded(const WString& text)
{
    std::wstring all(text.view());
    std::transform(all.begin(), all.end(), all.begin(), foldCase);
    return all;
}

bool isChanged(const EffectValParamBase& param)
{
    return param.functionType() == EffectValParamFnType::Keyframed || param.constantValue() != param.defaultValue();
}

} // namespace

/** Is at work with every key. */
class PanelFilter::SearchBox final : public TextBox
{
public:
    SearchBox(const InitArgs& args, const std::function<void()>& changed)
        : TextBox(args)
        , changed_(changed)
    {
    }

protected:
    void handleTyping() override { changed_(); }

private:
    const std::function<void()>& changed_;
};

PanelFilter::PanelFilter(const InitArgs& args, std::function<void()> changed)
    : WidgetGroup(args)
    , changed_(std::move(changed))
{
    const auto height = static_cast<unsigned short>(UifStd::getRowHeight());
    TextBox::InitArgs search(1, height, args.canvas);
    search.placeholder = UIString(L"Search in this panel");
    search_ = addWidget(std::make_unique<SearchBox>(search, changed_), UserTopLeft(0, 0));
    search_->setAccessibleName(UIString(L"Search in this panel"));
    Checkbox::InitArgs box(0, height, args.canvas);
    box.text = UIString(L"Changed only");
    changedOnly_ = addWidget(std::make_unique<Checkbox>(box), UserTopRight(0, 0));
    changedOnly_->setTooltip(UIString(L"Show what is animated or not at its default"));
    toggle_.attach(changedOnly_->events());
    placeWidgets();
}

bool PanelFilter::isActive() const
{
    return !search_->getShownText().empty() || changedOnly_->isChecked();
}

bool PanelFilter::wants(const EffectValParamBase& param) const
{
    const bool isFound = folded(rowNameOf(param)).find(folded(search_->getShownText())) != std::wstring::npos;
    return isFound && (!changedOnly_->isChecked() || isChanged(param));
}

int PanelFilter::handleToggle(const CheckboxEvent&)
{
    changed_();
    return 0;
}

void PanelFilter::resize(double width, double height)
{
    WidgetGroup::resize(width, height);
    placeWidgets();
}

void PanelFilter::placeWidgets()
{
    if (!changedOnly_)
        return; // it is being made
    const int width = getUserArea().width() - changedOnly_->getWidth() - UifStd::getWidgetGap();
    search_->resize({std::max(width, 0), search_->getHeight()});
}

} // namespace workbench
