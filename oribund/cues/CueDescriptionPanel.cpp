#include "oribund/cues/CueDescriptionPanel.h"

#include "oribund/cues/CueSearch.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/edit/EditGesture.h"
#include "oribund/host/services/MessageSink.h"
#include "oribund/host/services/TextIds.h"
#include "oribund/host/services/TextTable.h"

#include <algorithm>

namespace oribund
{

namespace
{

constexpr int kTextColumn = 1;

TableWidget::InitArgs tableArgs(const CueDescriptionPanel::InitArgs& args)
{
    TableWidget::InitArgs table;
    static_cast<GlobCreationInfo&>(table) = args;
    table.headerShown = false;
    table.emptyText = UIString(TextIds::kNoCue);
    return table;
}

std::size_t indexOf(int row)
{
    return static_cast<std::size_t>(row);
}

} // namespace

CueDescriptionPanel::CueDescriptionPanel(const InitArgs& args)
    : TableWidget(tableArgs(args))
    , VobClient(args.vob)
    , cueID_(args.cue)
{
    setAttributes(args.attributes);
    setAdaptor(this);
}

CueDescriptionPanel::~CueDescriptionPanel()
{
    // The table is not to ask for cells when the half of this that knows them is gone.
    setAdaptor(nullptr);
}

void CueDescriptionPanel::setVob(Vob* vob)
{
    const GlobRef<TableWidget> self(this);
    edit().cancel();
    if (!self)
        return;
    VobClient::setVob(vob);
    refresh();
}

void CueDescriptionPanel::setCue(const IdStamp& cue)
{
    if (cue == cueID_)
        return;
    // What was typed was meant for the cue that is shown now, or for none.
    const GlobRef<TableWidget> self(this);
    if (!edit().commit() && self)
        edit().cancel();
    if (!self)
        return;
    cueID_ = cue;
    refresh();
}

Cue CueDescriptionPanel::getCue() const
{
    const EditPtr edit = getEdit();
    const Cue* cue = edit && cueID_.valid() ? edit->getCues().find(cueID_) : nullptr;
    return cue ? *cue : Cue();
}

void CueDescriptionPanel::setAttributes(const std::vector<LogAttribute>& attributes)
{
    attributes_.clear();
    for (const LogAttribute attribute : attributes) {
        if (std::find(attributes_.begin(), attributes_.end(), attribute) == attributes_.end())
            attributes_.push_back(attribute);
    }
    refresh();
}

void CueDescriptionPanel::enableEditing(const String& undoTitle)
{
    undoTitle_ = undoTitle;
    refresh();
}

bool CueDescriptionPanel::isEditingEnabled() const
{
    const EditPtr edit = getEdit();
    return !undoTitle_.empty() && edit && !edit->isReadOnly();
}

void CueDescriptionPanel::refresh()
{
    fillCueFields();
    TableWidget::refresh();
}

void CueDescriptionPanel::fillCueFields()
{
    const Cue cue = getCue();
    const EditPtr edit = getEdit();
    fields_.clear();
    for (const LogAttribute attribute : attributes_) {
        if (cue.valid())
            fields_.emplace_back(attribute, getLogAttributeText(attribute, cue, edit));
    }
}

void CueDescriptionPanel::handleModifications(const EditModification& modification)
{
    using Type = EditModification::Type;
    const bool concerns = modification.type == Type::Wholesale || modification.type == Type::Cues;
    if (concerns && (!modification.object.valid() || modification.object == cueID_))
        refresh();
}

void CueDescriptionPanel::handleVobGone()
{
    setVob(nullptr);
}

// Storing

bool CueDescriptionPanel::storeFieldText(const WString& text, const XY<int>& cell)
{
    const Cue before = getCue();
    if (!isEditingEnabled() || !before.valid() || cell.x != kTextColumn || cell.y < 0 || cell.y >= getNumRows())
        return false;
    const LogAttribute attribute = fields_[indexOf(cell.y)].first;
    Cue after = before;
    if (!setLogAttributeText(attribute, after, text, getEdit())) {
        showMessage(UIString(TextIds::kNotUnderstood)
                        .withPlaceholder(L"TEXT", text)
                        .withPlaceholder(L"FIELD", displayText(getLogAttributeName(attribute))));
        return false;
    }
    if (saveChanges(before, after))
        return true;
    showMessage(UIString(TextIds::kCueRefused));
    return false;
}

bool CueDescriptionPanel::saveChanges(const Cue& before, Cue& after)
{
    if (after == before)
        return true;
    const EditPtr edit = getEdit();
    if (!edit || !isEditingEnabled() || after.id != before.id)
        return false;
    const EditModifier modifier(edit, UIString(toWide(undoTitle_)));
    if (!edit->setCue(after))
        return false;
    if (const Cue* stored = edit->getCues().find(after.id))
        after = *stored;
    return true;
}

WString CueDescriptionPanel::getCueTimecode(const Cue& cue) const
{
    return getCueTimecode(cue.time, getEdit());
}

WString CueDescriptionPanel::getCueTimecode(double editTime, const EditPtr& edit)
{
    return oribund::getCueTimecode(editTime, edit);
}

// The table

int CueDescriptionPanel::calcSeparatorSize()
{
    return UifStd::getWidgetGap();
}

int CueDescriptionPanel::calcMaxNameColumnWidth() const
{
    return getSize().x / 2;
}

int CueDescriptionPanel::calcNameColumnWidth() const
{
    int longest = 0;
    for (const LogAttribute attribute : attributes_)
        longest = std::max(longest, UifStd::measure(displayText(getLogAttributeName(attribute)), font()));
    return std::min(longest + 2 * kPadding + calcSeparatorSize(), calcMaxNameColumnWidth());
}

std::vector<TableColumn> CueDescriptionPanel::getColumnDefinitions() const
{
    return {{"name", UIString(TextIds::kCueField), std::max(calcNameColumnWidth(), 1), 0, false},
            {"text", UIString(TextIds::kCueText), 0, 2 * UifStd::getRowHeight(), true}};
}

int CueDescriptionPanel::getNumRows() const
{
    return static_cast<int>(fields_.size());
}

TableCell CueDescriptionPanel::getCellData(const XY<int>& cell) const
{
    const auto& [attribute, text] = fields_[indexOf(cell.y)];
    if (cell.x != kTextColumn)
        return {displayText(getLogAttributeName(attribute)), false, PaletteRole::WindowText};
    return {text, isEditingEnabled(), PaletteRole::FieldText};
}

bool CueDescriptionPanel::drawField(CanvasRenderer& renderer, const XY<int>& cell, const Kt::Box<int>& box,
                                    const Colour& ink)
{
    const auto& [attribute, text] = fields_[indexOf(cell.y)];
    if (cell.x != kTextColumn || attribute != LogAttribute::Colour)
        return false;
    const int side = std::min(UifStd::getDefaultFontSize(), box.height());
    const int top = box.top + (box.height() - side) / 2;
    const Kt::Box<double> swatch = CanvasRenderer::toDouble(Kt::Box<int>::fromSize({box.left, top}, {2 * side, side}));
    renderer.fillRect(swatch, parseColourText(text).value_or(Colour()));
    renderer.frameRect(swatch, getPalette().border());
    Kt::Box<double> rest = CanvasRenderer::toDouble(box);
    rest.left = swatch.right + UifStd::getWidgetGap();
    if (!rest.empty())
        renderer.text(rest, text, font(), ink);
    return true;
}

IdStamp CueDescriptionPanel::getRowId(int row) const
{
    return {1 + static_cast<int>(fields_[indexOf(row)].first), 0, 0};
}

int CueDescriptionPanel::getRowHeight() const
{
    return UifStd::getRowHeight();
}

void CueDescriptionPanel::resize(double width, double height)
{
    const GlobRef<TableWidget> self(this);
    const XY<int> before = getSize();
    TableWidget::resize(width, height);
    // How wide the names may be follows from the panel's width.
    if (self && getSize().x != before.x)
        refresh();
}

} // namespace oribund
