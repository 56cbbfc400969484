#include "oribund/colour/RangeEntry.h"

#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/host/base/Numeric.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/widgets/Button.h"

#include <algorithm>

namespace oribund
{

/** Has the strip set one component. The entry is a child of the strip, and the adaptor goes with the entry. */
class RangeEntry::ComponentAdaptor final : public ValAdaptorBase<WString>
{
public:
    ComponentAdaptor(TolerantRangeEditor& editor, std::size_t component)
        : editor_(editor)
        , component_(component)
    {
    }

    WString getDataValue() override { return NumberFormat::plain(editor_.componentNumber(component_)); }

    bool requestSetValue(const WString& text, ChangeKind) override
    {
        const std::optional<double> number = reinterpretValType<double>(text);
        if (!number || !editor_.canInteract())
            return false;
        editor_.userSetComponent(component_, *number);
        return true;
    }

private:
    TolerantRangeEditor& editor_;
    std::size_t component_;
};

RangeEntry::RangeEntry(const InitArgs& args, TolerantRangeEditor& editor)
    : NumericEntry(args)
    , editor_(editor)
{
    setVisible(false);
}

RangeEntry::~RangeEntry() = default;

void RangeEntry::open(std::size_t component)
{
    component_ = component;
    const int width = std::min(Button::calcSizeFor(L"-0000.00 %", font()).x, editor_.getWidth());
    const int height = UifStd::getControlHeight();
    const int middle = static_cast<int>(editor_.getNobbleArea(component).centre().x);
    resize({width, height});
    setPosition({std::clamp(middle - width / 2, 0, editor_.getWidth() - width), (editor_.getHeight() - height) / 2});
    setFormat(editor_.getFormat());
    setStep(editor_.getStep());
    setAccessibleName(editor_.componentName(component));
    setDataAdaptor(Kt::makePtr<ComponentAdaptor>(editor_, component));
    setVisible(true);
    userStartEditing();
}

bool RangeEntry::goesOn(const Event& press) const
{
    const bool forward = !press.has(Event::kShift);
    return press.isPlainKeyPress() && press.key == Key::Tab &&
           (forward ? component_ + 1 < ColourData::size() : component_ > 0);
}

bool RangeEntry::usesKey(const Event& press) const
{
    return goesOn(press) || NumericEntry::usesKey(press);
}

bool RangeEntry::handleKeyEvent(const Event& event)
{
    const GlobRef<RangeEntry> self(this);
    if (goesOn(event)) {
        const std::size_t next = event.has(Event::kShift) ? component_ - 1 : component_ + 1;
        if (userCommit(getShownText()) && self)
            open(next);
        return true;
    }
    const bool ends = event.isKeyPress(Key::Enter) || event.isKeyPress(Key::Escape);
    const bool taken = NumericEntry::handleKeyEvent(event);
    if (self && ends && !isVisible())
        editor_.userGoTo(component_);
    return taken;
}

void RangeEntry::handleFocusEvent(bool gained)
{
    const GlobRef<RangeEntry> self(this);
    NumericEntry::handleFocusEvent(gained);
    if (self && !gained)
        setVisible(false);
}

} // namespace oribund
