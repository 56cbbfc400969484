#pragma once

#include "oribund/panels/EffectComponentPanel.h"

#include <memory>
#include <vector>

namespace workbench
{

/** An effect's panel: one row for each parameter in the effect's order of presentation, with headings for its groups.
 */
class SimplePanel : public oribund::EffectComponentPanel
{
public:
    explicit SimplePanel(const oribund::FXPanelCreationOptions& options);
    ~SimplePanel() override;

    void resize(double width, double height) override;
    using oribund::Glob::resize;

protected:
    void handleFXModifications(const ChangeDescription& change) override;

private:
    void rebuild();
    int calcNameWidth(const oribund::EffectInstance& effect) const;
    void addBelow(std::unique_ptr<oribund::Glob> widget);

    std::vector<oribund::Glob*> contents_;
    int builtWidth_ = 0;
    bool building_ = false;
};

} // namespace workbench
