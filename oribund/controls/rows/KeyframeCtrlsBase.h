#pragma once

#include "oribund/controls/binding/ParamFinder.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/edit/monitor/FXVobClient.h"
#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"
#include "oribund/host/toolkit/values/ValAdaptorBase.h"

#include <memory>
#include <vector>

namespace oribund
{

class KeyframeButton;
class NumericEntry;
class Slider;
struct NumberDisplay;

/**
 * The row of one parameter in an effect's panel: a keyframe button, the parameter's name, and the editors that derived
 * rows add. All rows are laid out by the same rule, so that those of a panel stand in columns.
 *
 * A double click on the name sets the default, a drag on it changes the number. A row follows its parameter when that
 * is replaced, and is disabled, with what it shows, while the effect has no such parameter. User-interface thread only.
 */
class ORIBUND_API KeyframeCtrlsBase : public StandardPanel, public FXVobClient
{
public:
    /** `labelWidth` is the room for the name. Sizes in logical pixels. */
    KeyframeCtrlsBase(const FXViewHandle& handle, const IdStamp& paramId, unsigned short width,
                      unsigned short labelWidth, unsigned short rowHeight, Canvas* canvas);
    ~KeyframeCtrlsBase() override;

    const WString& getParamName() const { return paramName_; }

    void setParamName(const WString& name);

    /** Without it there is no keyframe button, but its room stays. */
    void setParamIsKeyframable(bool keyframable);

    bool isParamKeyframable() const { return keyframable_; }

    /** Null while the effect has no such parameter. */
    Kt::Ptr<EffectValParamBase> getEffectParam() const;

    /** Where names begin, from the row's left edge: behind the keyframe button. */
    static int nameOffset();

    /** The room that a parameter's name needs. */
    static int calcLabelWidth(const EffectValParamBase& param);

    void setLabelWidth(int width);

    /** The width of every numeric entry, whatever its value. */
    int calcValEntryWidth() const;

    /** The user wants the default back: one step, at the current time if animated. False when it was refused. */
    bool userReset();

    void setFontSize(int size) override;

protected:
    /** Whom the keyframe button asks; null for none. */
    void setKeyframeAdaptor(const Kt::Ptr<ValAdaptorBase<String>>& adaptor);

    /** Adds a widget, which layoutEditors() places: the row owns it. */
    template <class W>
    W* addToRow(std::unique_ptr<W> widget)
    {
        W* const added = widget.get();
        addChild(std::move(widget));
        return added;
    }

    /** Adds an editor, which a screen reader calls by the name of the parameter and `part`. */
    template <class W>
    W* addEditor(std::unique_ptr<W> editor, const WString& part = {})
    {
        W* const added = addToRow(std::move(editor));
        editors_.push_back({added, part, &abandonEdit<W>});
        return added;
    }

    /** Adds an entry for numbers. The name, too, takes hold of it, unless it stands for another one. */
    NumericEntry* addEntry(const WString& part = {}, bool isNamed = true);

    /** Called once by the constructor of a derived row, after its last editor. */
    void finishRow();

    /** Places the editors in what the name leaves of the row. */
    virtual void layoutEditors(const Kt::Box<int>&) {}

    /** The parameter is another object than before: its limits and default may be others. */
    virtual void handleParamReplaced(EffectValParamBase&) {}

    /** Puts an editor into a cell of the row, as high as a control; one without room is hidden. */
    static void putInto(Glob& editor, const Kt::Box<int>& cell);

    /** An entry at the right end, and a slider in what is left of it. */
    void putSliderAndEntry(const Kt::Box<int>& area, Glob& slider, Glob& entry) const;

    static void applyTo(Slider& slider, const NumberDisplay& display, double standard);
    static void applyTo(NumericEntry& entry, const NumberDisplay& display, double standard);

    /** The row is for another parameter of the effect from now on. */
    void setParamId(const IdStamp& paramId);

    /** Of keyframe button and name together, without gaps. */
    int calcNameWidth() const;

    void layoutChildren() override;
    void handleFXModifications(const CompoundEffectMonitorClient::ChangeDescription& change) override;

private:
    class NameLabel;

    struct Editor {
        Glob* glob;
        WString part;
        void (*abandon)(Glob&);
    };

    /** Drops what the user has begun to do with a widget: it was meant for another parameter. */
    template <class W>
    static void abandonEdit(Glob& glob)
    {
        if constexpr (requires(W & widget) {
                          widget.userCancel();
                          widget.getDataAdaptor();
                      }) {
            W& widget = static_cast<W&>(glob);
            const auto adaptor = widget.getDataAdaptor();
            widget.setAdaptor({}); // so that nothing is written
            if constexpr (requires { widget.userScrubCancel(); })
                widget.userScrubCancel();
            widget.userCancel();
            widget.setDataAdaptor(adaptor);
        }
    }

    int handleVobGone(const FXVob&);
    void followParam();
    void nameWidgets();

    mutable ParamFinder finder_;
    Kt::Ptr<EffectValParamBase> shownParam_;
    WString paramName_;
    int labelWidth_;
    bool keyframable_ = false;
    KeyframeButton* button_ = nullptr;
    NameLabel* label_ = nullptr;
    std::vector<Editor> editors_;
    MethodCallback<KeyframeCtrlsBase, FXVob> goneCallback_{this, &KeyframeCtrlsBase::handleVobGone};
};

} // namespace oribund
