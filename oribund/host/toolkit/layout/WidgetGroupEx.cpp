#include "oribund/host/toolkit/layout/WidgetGroupEx.h"

#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/services/TextTable.h"
#include "oribund/host/toolkit/core/Event.h"
#include "oribund/host/toolkit/core/GlobChange.h"
#include "oribund/host/toolkit/layout/TitleBox.h"

#include <algorithm>

namespace oribund
{

WidgetGroupEx::WidgetGroupEx(const InitArgs& args)
    : WidgetGroup(args)
    , title_(args.title)
    , titlePalette_(args.palette)
    , titleRowShown_(!args.title.empty())
{
    WidgetGroup::resize(args.width, 0);
}

int WidgetGroupEx::childXOffset()
{
    return UifStd::getGroupIndent();
}

int WidgetGroupEx::separatorHeight() const
{
    return separatorStyle_ == eSeparatorLine ? 1 + UifStd::getRowGap() : 0;
}

int WidgetGroupEx::getTitleHeight() const
{
    return titleRowShown_ ? UifStd::getRowHeight() : 0;
}

int WidgetGroupEx::calcMinHeight() const
{
    return getBorder().top + separatorHeight() + getTitleHeight() + getBorder().bottom;
}

Kt::Box<int> WidgetGroupEx::getTitleArea() const
{
    if (!titleRowShown_)
        return {};
    const Kt::Box<int> inside = StandardPanel::getUserArea();
    const int top = getBorder().top + separatorHeight();
    return {inside.left, top, inside.right, top + getTitleHeight()};
}

Kt::Box<int> WidgetGroupEx::getUserArea() const
{
    Kt::Box<int> area = StandardPanel::getUserArea();
    area.top += separatorHeight();
    if (titleRowShown_)
        area.top += getTitleHeight() + UifStd::getRowGap();
    area.left += childXOffset();
    area.right = std::max(area.left, area.right);
    area.bottom = std::max(area.top, area.bottom);
    return area;
}

// The title

void WidgetGroupEx::setTitle(const UIString& title)
{
    if (title == title_)
        return;
    title_ = title;
    changed(GlobChange::kState | GlobChange::kContents | GlobChange::kTooltip);
}

void WidgetGroupEx::setTitleEditable(bool editable)
{
    if (editable == titleEditable_)
        return;
    titleEditable_ = editable;
    if (Glob* box = titleBox_.get(); box && !editable)
        delete box;
}

bool WidgetGroupEx::beginTitleEdit()
{
    if (!canEditTitle())
        return false;
    if (!titleBox_) {
        TextBox::InitArgs args;
        args.palette = getPalette();
        args.text = displayText(title_);
        auto box = std::make_unique<TitleBox>(args, *this);
        box->setAccessibleName(title_);
        titleBox_ = GlobRef<Glob>(box.get());
        addChild(std::move(box));
    }
    return titleBox_ && titleBox_->takeFocus();
}

bool WidgetGroupEx::userSetTitle(const WString& title)
{
    if (!titleEditable_ || !canInteract())
        return false;
    if (title.empty())
        return handleTitleCleared();
    if (UIString(title) == title_)
        return true;
    GlobRef<WidgetGroupEx> self(this);
    setTitle(title);
    if (self)
        handleTitleChange();
    return true;
}

void WidgetGroupEx::handleTitleChange() {}

bool WidgetGroupEx::handleTitleCleared()
{
    return false;
}

void WidgetGroupEx::setTitleRowShown(bool shown)
{
    if (shown == titleRowShown_)
        return;
    titleRowShown_ = shown;
    changed(GlobChange::kContents);
    contentsChanged();
}

void WidgetGroupEx::setSeparatorStyle(int style)
{
    const int known = style == eSeparatorLine ? eSeparatorLine : eNoSeparator;
    if (known == separatorStyle_)
        return;
    separatorStyle_ = known;
    changed(GlobChange::kContents);
    contentsChanged();
}

void WidgetGroupEx::setTitlePalette(const Palette& palette)
{
    if (palette == titlePalette_)
        return;
    titlePalette_ = palette;
    redraw();
}

void WidgetGroupEx::setTitleColour(const Colour& colour)
{
    Palette palette = titlePalette_;
    palette.setColour(PaletteRole::HeadingText, colour);
    setTitlePalette(palette);
}

void WidgetGroupEx::setPalette(const Palette& palette, eRedrawFlag redrawFlag)
{
    RedrawHold hold;
    // A title colour of its own stays as it was chosen.
    if (titlePalette_ == getPalette())
        titlePalette_ = palette;
    WidgetGroup::setPalette(palette, redrawFlag);
}

void WidgetGroupEx::setTitleActive(bool active, eRedrawFlag redrawFlag)
{
    if (active == titleActive_)
        return;
    titleActive_ = active;
    changed(GlobChange::kContents, redrawFlag);
}

void WidgetGroupEx::setTitleCursor(MouseCursor cursor)
{
    if (cursor == titleCursor_)
        return;
    titleCursor_ = cursor;
    changed(GlobChange::kCursor);
}

MouseCursor WidgetGroupEx::contextCursor(const XY<int>& local) const
{
    return getTitleArea().contains(local) && titleCursor_ != MouseCursor::Inherit ? titleCursor_
                                                                                  : WidgetGroup::contextCursor(local);
}

UIString WidgetGroupEx::tooltip() const
{
    return titleContext_.empty() ? WidgetGroup::tooltip() : titleContext_;
}

UIString WidgetGroupEx::accessibleName() const
{
    const UIString own = WidgetGroup::accessibleName();
    return own.empty() ? title_ : own;
}

// Widgets in the title row

void WidgetGroupEx::placeInTitle(std::unique_ptr<Glob> widget, int fromRight)
{
    titleWidgets_.push_back({widget.get(), fromRight});
    addChild(std::move(widget));
}

void WidgetGroupEx::handleChildRemoved(const Glob* child)
{
    titleWidgets_.erase(std::remove_if(titleWidgets_.begin(), titleWidgets_.end(),
                                       [child](const TitleWidget& t) { return t.widget == child; }),
                        titleWidgets_.end());
    WidgetGroup::handleChildRemoved(child);
}

bool WidgetGroupEx::widgetVisibilityCanChange(const Glob* widget) const
{
    return !(titleBox_ == widget) && std::none_of(titleWidgets_.begin(), titleWidgets_.end(),
                                                  [widget](const TitleWidget& t) { return t.widget == widget; });
}

void WidgetGroupEx::layoutChildren()
{
    const Kt::Box<int> title = getTitleArea();
    for (const TitleWidget& t : titleWidgets_) {
        const int y = title.top + (title.height() - t.widget->getHeight()) / 2;
        t.widget->setPosition({title.right - t.fromRight - t.widget->getWidth(), y});
    }
    if (titleBox_) {
        const Kt::Box<int> text = titleTextArea();
        titleBox_->setPosition(text.topLeft());
        titleBox_->resize(text.size());
    }
    WidgetGroup::layoutChildren();
}

Kt::Box<int> WidgetGroupEx::titleTextArea() const
{
    Kt::Box<int> area = getTitleArea();
    area.left += titleTextOffset();
    for (const TitleWidget& t : titleWidgets_) {
        if (t.widget->isVisible())
            area.right = std::min(area.right, t.widget->box().left - UifStd::getWidgetGap());
    }
    area.right = std::max(area.left, area.right);
    return area;
}

// Input

bool WidgetGroupEx::wantsFocus() const
{
    return titleEditable_ && titleRowShown_;
}

bool WidgetGroupEx::focusOnPress(const XY<int>& local) const
{
    return getTitleArea().contains(local);
}

Kt::Box<int> WidgetGroupEx::focusArea() const
{
    return getTitleArea();
}

bool WidgetGroupEx::handleMouseEvent(const Event& event)
{
    if (event.isPress(MouseButton::Left) && titleTextArea().contains(event.position) && beginTitleEdit())
        return true;
    return WidgetGroup::handleMouseEvent(event);
}

bool WidgetGroupEx::canEditTitle() const
{
    return titleEditable_ && titleRowShown_ && isShown() && canInteract();
}

bool WidgetGroupEx::usesKey(const Event& press) const
{
    // Keys that a widget in the group leaves alone arrive here too; they are not meant for the title.
    const bool renames = press.isPlainKeyPress() && press.key == Key::F2 && hasFocus();
    return (renames && canEditTitle()) || WidgetGroup::usesKey(press);
}

bool WidgetGroupEx::handleKeyEvent(const Event& event)
{
    if (!event.isKeyPress(Key::F2))
        return WidgetGroup::handleKeyEvent(event);
    beginTitleEdit();
    return true;
}

// Look

void WidgetGroupEx::draw(CanvasRenderer& renderer)
{
    WidgetGroup::draw(renderer);
    if (separatorStyle_ == eSeparatorLine) {
        const double top = getBorder().top;
        renderer.fillRect({0.0, top, double(getWidth()), top + 1.0}, getPalette().border());
    }
    if (titleRowShown_)
        drawTitle(renderer);
}

void WidgetGroupEx::drawTitle(CanvasRenderer& renderer)
{
    Glib::FontDesc titleFont = font();
    titleFont.bold = true;
    const bool lit = titleActive_ && canInteract();
    if (hasFocus())
        renderer.frameRect(CanvasRenderer::toDouble(getTitleArea()), getPalette().focus());
    renderer.text(CanvasRenderer::toDouble(titleTextArea()), displayText(title_), titleFont,
                  lit ? titlePalette_.headingText() : titlePalette_.disabledText());
}

} // namespace oribund
