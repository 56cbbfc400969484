#pragma once

#include "oribund/cues/LogAttribute.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/edit/Cue.h"
#include "oribund/host/edit/VobClient.h"
#include "oribund/host/toolkit/lists/TableWidget.h"

#include <utility>
#include <vector>

namespace oribund
{

/**
 * Shows one cue of the viewed edit, a row for each of its fields, and lets the user change them: each field that is
 * edited is one undo step. It follows the edit; a cue that is gone leaves it empty, and what was being typed for it is
 * stored nowhere.
 */
class ORIBUND_API CueDescriptionPanel : public TableWidget, public iTableAdaptor, public VobClient
{
public:
    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        Vob* vob = nullptr; ///< may go before the panel
        IdStamp cue;
        /** By default all of them. */
        std::vector<LogAttribute> attributes = getLogAttributes();
    };

    using Field = std::pair<LogAttribute, WString>;

    explicit CueDescriptionPanel(const InitArgs& args);
    ~CueDescriptionPanel() override;

    /** Shows another viewer's edit, or the one that the viewer has now. */
    void setVob(Vob* vob);

    /** Shows another cue, or with an id that the edit does not have none. What is being typed is stored before. */
    void setCue(const IdStamp& cue);

    /** As the edit has it now; empty when it does not. */
    Cue getCue() const;

    const IdStamp& getCueID() const { return cueID_; }

    /** Which fields are shown, from top to bottom; one that comes twice counts once. */
    void setAttributes(const std::vector<LogAttribute>& attributes);

    /** The fields as shown; empty without a cue. */
    const std::vector<Field>& getFields() const { return fields_; }

    /** Lets the user edit, in undo steps of that title; an empty one switches it off, as it is at first. */
    void enableEditing(const String& undoTitle);

    /** Also false while the edit is read-only. */
    bool isEditingEnabled() const;

    void refresh() override;

    /** Reads the texts of the fields anew. */
    void fillCueFields();

    /** Writes `after` in place of `before` as one undo step; `after` is then as the edit has it. False when the edit
        does not take it. */
    virtual bool saveChanges(const Cue& before, Cue& after);

    WString getCueTimecode(const Cue& cue) const;
    static WString getCueTimecode(double editTime, const EditPtr& edit);

    /** That shows the longest name whole, but not more than calcMaxNameColumnWidth(). Pixels. */
    int calcNameColumnWidth() const;
    /** Half of the panel. */
    int calcMaxNameColumnWidth() const;
    /** The room between a name and its text. */
    static int calcSeparatorSize();

    std::vector<TableColumn> getColumnDefinitions() const override;
    int getNumRows() const override;
    TableCell getCellData(const XY<int>& cell) const override;
    bool storeFieldText(const WString& text, const XY<int>& cell) override;
    bool drawField(CanvasRenderer& renderer, const XY<int>& cell, const Kt::Box<int>& box, const Colour& ink) override;
    IdStamp getRowId(int row) const override;
    int getRowHeight() const override;

    // What these answer as an adaptor is what they answer as a widget.
    XY<int> getSize() const override { return TableWidget::getSize(); }

    bool isVisible() const override { return TableWidget::isVisible(); }

    using TableWidget::resize;
    void resize(double width, double height) override;

protected:
    void handleModifications(const EditModification& modification) override;
    void handleVobGone() override;

private:
    IdStamp cueID_;
    std::vector<LogAttribute> attributes_;
    std::vector<Field> fields_;
    String undoTitle_;
};

} // namespace oribund
