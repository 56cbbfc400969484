#pragma once

#include "oribund/panels/EffectComponentPanel.h"

#include <functional>
#include <memory>
#include <typeindex>
#include <vector>

namespace oribund
{
class KeyframeCtrlsBase;
}

namespace workbench
{

class PanelNotice;

/** An effect's panel: one row for each parameter in the effect's order of presentation, with headings for its groups.
 */
class SimplePanel : public oribund::EffectComponentPanel
{
public:
    explicit SimplePanel(const oribund::FXPanelCreationOptions& options);
    ~SimplePanel() override;

    void resize(double width, double height) override;
    using oribund::Glob::resize;

    /** The room that the longest name of a row takes. */
    int widestLabel() const;

    /** Gives all names at least so much room, as far as there is any: controls of several panels then line up. */
    void setLabelWidth(int width);

    /** Shows a line above the rows, with a button that does something about what it says. */
    void showNotice(const oribund::UIString& text, const oribund::UIString& button, std::function<void()> act);

    void hideNotice();

protected:
    void handleFXModifications(const ChangeDescription& change) override;

private:
    /** What is shown, in order; the type of a parameter decides on its row. */
    struct Shown {
        oribund::IdStamp id;
        std::type_index type = typeid(void); ///< of a parameter; void for a heading
        oribund::UIString title;

        bool operator==(const Shown&) const = default;
    };

    std::vector<Shown> whatToShow() const;
    void rebuild();
    void add(const Shown& entry, const oribund::EffectInstance& effect);
    void addBelow(std::unique_ptr<oribund::Glob> widget);
    int calcLabelWidth() const;
    void placeLabels();

    PanelNotice* notice_ = nullptr;
    int leastLabelWidth_ = 0;
    std::vector<Shown> shown_;
    std::vector<oribund::Glob*> contents_;
    std::vector<oribund::KeyframeCtrlsBase*> rows_;
};

} // namespace workbench
