#pragma once

#include "oribund/host/base/Colour.h"
#include "oribund/host/base/Export.h"
#include "oribund/host/base/UIString.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"

namespace oribund
{

/** A group with a title row above its widgets and, if wanted, a line that sets it off from what stands above. */
class ORIBUND_API WidgetGroupEx : public WidgetGroup
{
public:
    enum SeparatorStyle { eNoSeparator = 0, eSeparatorLine = 1 };

    struct InitArgs : WidgetGroup::InitArgs {
        using WidgetGroup::InitArgs::InitArgs;
        /** Without a title there is no title row, unless it is asked for. */
        UIString title;
    };

    explicit WidgetGroupEx(const InitArgs& args);

    /** How far the widgets of a group stand to the right of its own left edge. */
    static int childXOffset();

    /** The height of a group of which nothing but the title row shows. */
    int calcMinHeight() const;

    const UIString& getTitle() const { return title_; }

    void setTitle(const UIString& title);

    /** Whether the user may change the title: with F2, or by a click on it that is not needed for folding. */
    void setTitleEditable(bool editable);

    bool isTitleEditable() const { return titleEditable_; }

    /** Shows an entry in the title row and gives it the keyboard; false when the title cannot be edited now. */
    bool beginTitleEdit();

    /** The user gives the group another title; false when that is not allowed. */
    bool userSetTitle(const WString& title);

    /** Whether there is a title row; at first when there is a title. */
    void setTitleRowShown(bool shown);

    bool isTitleRowShown() const { return titleRowShown_; }

    /** SeparatorStyle; what it does not know counts as none. */
    void setSeparatorStyle(int style);

    /** What a pointer resting on the title tells. */
    void setTitleContext(const UIString& context) { titleContext_ = context; }

    void setTitlePalette(const Palette& palette);

    void setTitleColour(const Colour& colour);

    const Palette& getTitlePalette() const { return titlePalette_; }

    /** Shows the title as active or greyed, whatever the group is. */
    void setTitleActive(bool active, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    bool isTitleActive() const { return titleActive_; }

    void setTitleCursor(MouseCursor cursor);

    int getTitleHeight() const;

    /** The title row, in the group's coordinates; empty without one. */
    Kt::Box<int> getTitleArea() const;

    /** Puts a widget into the title row, centred upright, its right edge `fromRight` left of the row's end. */
    template <std::derived_from<Glob> T>
    T* addTitleWidget(std::unique_ptr<T> widget, int fromRight)
    {
        T* raw = widget.get();
        placeInTitle(std::move(widget), fromRight);
        return raw;
    }

    Kt::Box<int> getUserArea() const override;
    UIString tooltip() const override;
    UIString accessibleName() const override;
    MouseCursor contextCursor(const XY<int>& local) const override;
    bool widgetVisibilityCanChange(const Glob* widget) const override;
    bool wantsFocus() const override;
    bool focusOnPress(const XY<int>& local) const override;
    Kt::Box<int> focusArea() const override;
    bool usesKey(const Event& press) const override;
    void draw(CanvasRenderer& renderer) override;
    void setPalette(const Palette& palette, eRedrawFlag redrawFlag = eRedrawFlag::Yes) override;

protected:
    /** The user has given the title another text. */
    virtual void handleTitleChange();

    /** The user wants no title: gives the group the one that it has without him. By default that is refused. */
    virtual bool handleTitleCleared();

    /** Where the title's text starts, from the row's left edge. */
    virtual int titleTextOffset() const { return 0; }

    void layoutChildren() override;
    void handleChildRemoved(const Glob* child) override;
    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;

    int separatorHeight() const;

private:
    struct TitleWidget {
        Glob* widget;
        int fromRight;
    };

    bool canEditTitle() const;
    void placeInTitle(std::unique_ptr<Glob> widget, int fromRight);
    void drawTitle(CanvasRenderer& renderer);
    Kt::Box<int> titleTextArea() const;

    UIString title_;
    UIString titleContext_;
    Palette titlePalette_;
    MouseCursor titleCursor_ = MouseCursor::Inherit;
    std::vector<TitleWidget> titleWidgets_;
    GlobRef<Glob> titleBox_;
    int separatorStyle_ = eNoSeparator;
    bool titleActive_ = true;
    bool titleRowShown_ = false;
    bool titleEditable_ = false;
};

} // namespace oribund
