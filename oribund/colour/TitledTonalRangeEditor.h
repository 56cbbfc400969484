#pragma once

#include "oribund/controls/binding/EffectValParamAdaptor.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <memory>

namespace oribund
{

class KeyframeButton;
class Label;
class TolerantRangeEditor;

/**
 * A row with a title and a strip on which the extents of shadows, midtones and highlights are set, with a keyframe
 * button where the parameter can be animated. A double click on the title sets the default. User-interface thread only.
 */
class ORIBUND_API TitledTonalRangeEditor : public StandardPanel
{
public:
    /** As high as a strip. */
    TitledTonalRangeEditor(const WString& title, int width, const Palette& palette, Canvas* canvas);
    ~TitledTonalRangeEditor() override;

    /** Bound to a parameter from now on: to its default, limits and keyframes, too. Null for none. */
    void setDataAdaptor(const Kt::Ptr<ColourRangeAdaptor>& adaptor);

    TolerantRangeEditor& editor() const { return *editor_; }

    /** Room for the title; by default what it needs. */
    void setLabelWidth(int width);

protected:
    void layoutChildren() override;

private:
    class TitleLabel;

    KeyframeButton* button_ = nullptr;
    TitleLabel* title_ = nullptr;
    TolerantRangeEditor* editor_ = nullptr;
    int labelWidth_;
};

} // namespace oribund
