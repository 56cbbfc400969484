#pragma once

#include "oribund/panels/EffectComponentPanel.h"
#include "oribund/panels/FXPanelGenerator.h"

#include <functional>

namespace oribund
{
class Label;
}

namespace workbench
{

class PanelFilter;
class PanelNotice;

/** An effect's panel, with the controls that the library generates from the effect's description. */
class GenericEffectPanel : public oribund::EffectComponentPanel, public oribund::FXPanelGenerator
{
public:
    explicit GenericEffectPanel(const oribund::FXPanelCreationOptions& options);
    ~GenericEffectPanel() override;

    void resize(double width, double height) override;
    using oribund::Glob::resize;

    /** The room that the longest name of a parameter takes. */
    int widestLabel() const { return calcInitialLabelWidth(); }

    /** Gives all names at least so much room, as far as there is any: controls of several panels then line up. */
    void setLeastLabelWidth(int width);

    /** Shows a line above the rows, with a button that does something about what it says. */
    void showNotice(const oribund::UIString& text, const oribund::UIString& button, std::function<void()> act);

    void hideNotice();

    const oribund::EffectInstance::ParamPresentationDetails*
    findParamDescription(const oribund::Glob* widget) const override;

protected:
    void handleFXModifications(const ChangeDescription& change) override;

private:
    void showParams();
    void filterParams();
    void placeLabels();

    PanelNotice* notice_ = nullptr;
    PanelFilter* filter_ = nullptr; ///< to be seen in a long panel
    oribund::WidgetGroup* body_ = nullptr;
    oribund::Label* nothing_ = nullptr; ///< what an effect without parameters says
    int leastLabelWidth_ = 0;
    bool isFiltered_ = false;
};

/** Registers the builder of these panels with FXPanelFactory, for effects of every type. Once, when a host is
    installed. */
void registerGenericPanels();

} // namespace workbench
