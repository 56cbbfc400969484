#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/core/Control.h"

namespace oribund
{

class TextBox;

/** A text that the user has entered. */
struct TextBoxEvent {
    /** Valid when the call begins. */
    TextBox* box = nullptr;
    WString text;
};

/**
 * An entry of one line. It tells apart the text that stands for its value and the text that is being typed: that
 * becomes the value by Enter or when the keyboard goes elsewhere, and is thrown away by Escape. A value set while the
 * user types does not disturb the typing. A text that cannot be the value stays to be mended as long as the box has the
 * keyboard, then the value is shown again; what is wrong with it is said in the tooltip.
 *
 * Caret and selection are those of the native editor that a skin puts over it while it has the keyboard. Without one
 * typing begins with the whole text selected and goes on at its end.
 */
class ORIBUND_API TextBox : public Control
{
public:
    static constexpr std::size_t kDefaultMaxLength = 1024;

    struct InitArgs : GlobCreationInfo {
        using GlobCreationInfo::GlobCreationInfo;

        UIString text;
        /** Shown greyed while there is no text. */
        UIString placeholder;
        TextAlign align = TextAlign::Left;
        std::size_t maxLength = kDefaultMaxLength;
        bool readOnly = false;
    };

    explicit TextBox(const InitArgs& args);

    void setText(const WString& text, eRedrawFlag redrawFlag = eRedrawFlag::Yes);

    /** The value, whatever is being typed. */
    const WString& getText() const { return text_; }

    /** What is to be seen in the box: the text being typed, or the value. */
    const WString& getShownText() const { return typed_ ? typing_ : text_; }

    /** Whether something has been typed that is not the value yet. */
    bool isModified() const { return typed_ && typing_ != text_; }

    /** Whether the user is at work on the text: until Enter, Escape or the loss of the keyboard. */
    bool isEditing() const { return editing_; }

    /** What was wrong with the text that was entered last; empty once the user goes on. */
    const WString& getProblem() const { return problem_; }

    /** Whether undo and redo are for the text alone, even where it has nothing to take back. By default while something
     * has been typed that is not the value yet. */
    virtual bool keepsUndo() const { return isModified(); }

    /** Whether Escape has something to give up here. */
    bool canCancel() const { return editing_ || !problem_.empty(); }

    /** Whether the Up and Down keys and the wheel change the value; by default they do not. */
    virtual bool canStep() const;

    /**
     * Whether a press of the left button means something else now than to set a caret. A native editor then leaves the
     * mouse to the box. By default never.
     */
    virtual bool ownsPress() const;

    void setPlaceholder(const UIString& text);

    const WString& getPlaceholder() const { return placeholder_; }

    void setAlignment(TextAlign align);

    TextAlign getAlignment() const { return align_; }

    std::size_t getMaxLength() const { return maxLength_; }

    bool isReadOnly() const { return readOnly_; }

    void setReadOnly(bool readOnly);

    Notifier<TextBoxEvent>& commits() { return commits_; }

    /** Takes the keyboard, with all of the text selected to be typed over. */
    void userStartEditing();
    /** The user has changed what stands in the box. */
    void userEdit(const WString& text);
    /** The user has finished with this text. Does nothing when it is the value; true unless it was refused. */
    bool userCommit(const WString& text);
    /** Throws away what was typed. */
    void userCancel();
    /** So many steps up or, if negative, down. True when it was used. */
    bool userStep(double steps);

    /** How far the keys held with it make a step go: with Shift ten times as far, with Ctrl a tenth. */
    static double stepScale(const Event& event);

    /** Whether a key press works on the text itself, so that a native editor keeps it; all others are the box's. */
    static bool worksOnText(const Event& press);

    /** What is wrong, if something is. */
    UIString tooltip() const override;
    UIString accessibleName() const override;
    bool usesKey(const Event& press) const override;
    void describe(AccessibleDescription& description) const override;
    bool accessibleSetText(const WString& text, int part = kWhole) override;

    TextBox* textEntry() override { return this; }

    /** Where a native editor stands over it, in its coordinates: within the frame. */
    Kt::Box<int> editorBox() const;
    void draw(CanvasRenderer& renderer) override;

protected:
    /** What is wrong with a text that cannot be the value; by default nothing ever is. */
    virtual WString problemWith(const WString& text) const;

    /** Takes a text as the new value; false when it is refused. By default it tells commits(). May destroy the box.
     */
    virtual bool handleCommit(const WString& text);

    /** The user has changed what is to be seen in the box, whether it becomes the value or not. */
    virtual void handleTyping() {}

    /** Changes the value by steps; called when canStep(). May destroy the box. */
    virtual void handleStep(double steps);

    void setProblem(const WString& problem);

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

private:
    WString cleaned(const WString& text) const;
    void type(const Event& event);
    bool turn(double notches, double scale);
    void refuse(const WString& text, const WString& problem);
    void stopTyping();

    WString text_;
    WString typing_;
    WString placeholder_;
    WString problem_;
    TextAlign align_;
    std::size_t maxLength_;
    bool readOnly_;
    bool typed_ = false;
    bool editing_ = false;
    bool allSelected_ = false;
    double wheelRest_ = 0.0;
    unsigned revision_ = 0; ///< counts setText()
    Notifier<TextBoxEvent> commits_;
};

} // namespace oribund
