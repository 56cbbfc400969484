#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"

#include <vector>

namespace oribund
{

class Label;
class ValMenuButton;

/** A row with a title and a drop-down menu. */
class ORIBUND_API TitledMenuButtonPlain : public StandardPanel
{
public:
    /** What gives way when the row is narrower than both need. */
    enum class TitleResize {
        Fixed,   ///< the menu: the title keeps its width
        Shrinks, ///< the title, down to nothing
    };

    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        UIString title;
        /** 0 for what the title needs. */
        unsigned short titleWidth = 0;
        std::vector<UIString> items;
        unsigned selected = static_cast<unsigned>(-1);
    };

    /** A height of 0 is that of a row. */
    explicit TitledMenuButtonPlain(const InitArgs& args);

    Label& title() { return *title_; }

    ValMenuButton& menuButton() { return *button_; }

    void setTitleResize(TitleResize behaviour);
    void setTitleWidth(int width);

    /** Makes the menu as wide as its items need instead of filling the row. */
    void autoSize();

protected:
    void layoutChildren() override;

private:
    Label* title_ = nullptr;
    ValMenuButton* button_ = nullptr;
    int titleWidth_ = 0;
    TitleResize titleResize_ = TitleResize::Fixed;
    bool autoSized_ = false;
};

} // namespace oribund
