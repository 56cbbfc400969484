#include "oribund/controls/rows/TitledVector2dControl.h"

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/controls/rows/GraphColManager.h"
#include "oribund/controls/rows/KeyframeButtonAdaptor.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/effects/params/NumberDisplay.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/entries/ScrubLabel.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <algorithm>

namespace oribund
{

namespace
{

constexpr std::array<const wchar_t*, 2> kLetters{L"X", L"Y"};
constexpr int kStripeWidth = 2;

} // namespace

TitledVector2dControl::TitledVector2dControl(const FXViewHandle& handle, const EffectValParam<Vector2d>& param,
                                             unsigned short width, unsigned short labelWidth, Canvas* canvas)
    : KeyframeCtrlsBase(handle, param.id(), width, labelWidth, 0, canvas)
    , colour_(GraphColManager::getColourFor(param.id()))
{
    for (unsigned i = 0; i < coordinates_.size(); ++i)
        addCoordinate(i, param);
    applyDisplay(param);
    setKeyframeAdaptor(Kt::makePtr<KeyframeButtonAdaptor<PosAccessor>>(handle, PosAccessor(param, 0)));
    finishRow();
}

void TitledVector2dControl::addCoordinate(unsigned index, const EffectValParam<Vector2d>& param)
{
    Coordinate& coordinate = coordinates_[index];
    const WString letter = kLetters[index];
    Label::InitArgs label(0, 0, canvas());
    label.text = UIString(letter);
    coordinate.letter = addToRow(std::make_unique<ScrubLabel>(label));
    coordinate.slider = addEditor(std::make_unique<ValSlider>(Slider::InitArgs(0, 0, canvas())), letter);
    coordinate.entry = addEntry(letter, false);
    coordinate.letter->setEntry(coordinate.entry);
    coordinate.slider->setDataAdaptor(Kt::makePtr<PositionAdaptor>(getViewHandle(), PosAccessor(param, index)));
    coordinate.entry->setDataAdaptor(Kt::makePtr<PositionTextAdaptor>(getViewHandle(), PosTextAccessor(param, index)));
}

void TitledVector2dControl::applyDisplay(const EffectValParam<Vector2d>& param)
{
    for (std::size_t i = 0; i < coordinates_.size(); ++i) {
        const double standard = param.getDefault()[i];
        const NumberDisplay display = NumberDisplay::of(param, i);
        applyTo(*coordinates_[i].slider, display, standard);
        applyTo(*coordinates_[i].entry, display, standard);
    }
}

void TitledVector2dControl::handleParamReplaced(EffectValParamBase& param)
{
    if (const auto* point = dynamic_cast<const EffectValParam<Vector2d>*>(&param))
        applyDisplay(*point);
}

void TitledVector2dControl::draw(CanvasRenderer& renderer)
{
    KeyframeCtrlsBase::draw(renderer);
    if (!coordinates_[0].letter)
        return;
    // In the gap before the letters.
    const double right = coordinates_[0].letter->box().left - 2;
    const double margin = (getHeight() - UifStd::getControlHeight()) / 2.0;
    renderer.fillRect({right - kStripeWidth, margin, right, getHeight() - margin},
                      canInteract() ? colour_ : getPalette().disabledText());
}

void TitledVector2dControl::layoutEditors(const Kt::Box<int>& area)
{
    const int gap = UifStd::getWidgetGap();
    const int half = std::max(0, (area.width() - gap) / 2);
    layoutCoordinate(coordinates_[0], {area.left, area.top, area.left + half, area.bottom});
    layoutCoordinate(coordinates_[1], {area.right - half, area.top, area.right, area.bottom});
}

void TitledVector2dControl::layoutCoordinate(Coordinate& coordinate, const Kt::Box<int>& area)
{
    coordinate.letter->setPosition(area.topLeft());
    coordinate.letter->resize({UifStd::measure(L"X", font()), area.height()});
    const int left = std::min(coordinate.letter->box().right + UifStd::getWidgetGap(), area.right);
    const Kt::Box<int> rest{left, area.top, area.right, area.bottom};
    // A slider of a few pixels is of no use; the letter is there to drag on.
    const bool hasSlider = rest.width() > calcValEntryWidth() + 3 * UifStd::getRowHeight();
    if (hasSlider) {
        putSliderAndEntry(rest, *coordinate.slider, *coordinate.entry);
        return;
    }
    putInto(*coordinate.entry, rest);
    coordinate.slider->setVisible(false);
}

} // namespace oribund
