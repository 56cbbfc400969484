#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/canvas/CanvasRenderer.h"
#include "oribund/host/notify/Notifier.h"
#include "oribund/host/toolkit/Control.h"

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
 * user types does not disturb the typing.
 *
 * Caret and selection are the skin's; without one typing begins with the whole text selected and goes on at its end.
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

    void setPlaceholder(const UIString& text);

    const WString& getPlaceholder() const { return placeholder_; }

    void setAlignment(TextAlign align);

    TextAlign getAlignment() const { return align_; }

    std::size_t getMaxLength() const { return maxLength_; }

    bool isReadOnly() const { return readOnly_; }

    void setReadOnly(bool readOnly);

    Notifier<TextBoxEvent>& commits() { return commits_; }

    /** The user has changed what stands in the box. */
    void userEdit(const WString& text);
    /** The user has finished with this text. Does nothing when it is the value; true unless it was refused. */
    bool userCommit(const WString& text);
    /** Throws away what was typed. */
    void userCancel();
    /** The Up or Down key: so many steps up or, if negative, down. True when it was used. */
    bool userStep(int steps);

    UIString accessibleName() const override;
    void draw(CanvasRenderer& renderer) override;
    std::unique_ptr<GlobPeer> makePeer(Skin& skin) override;

protected:
    /** Takes a text as the new value; false when it is refused. As it stands it tells commits(). May destroy the box.
     */
    virtual bool handleCommit(const WString& text);

    /** Changes the value by steps; as it stands there are none. */
    virtual bool handleStep(int steps);

    bool handleMouseEvent(const Event& event) override;
    bool handleKeyEvent(const Event& event) override;
    void handleFocusEvent(bool gained) override;

private:
    WString cleaned(const WString& text) const;
    void type(const Event& event);
    void stopTyping();

    WString text_;
    WString typing_;
    WString placeholder_;
    TextAlign align_;
    std::size_t maxLength_;
    bool readOnly_;
    bool typed_ = false;
    bool allSelected_ = false;
    unsigned revision_ = 0; ///< counts setText()
    Notifier<TextBoxEvent> commits_;
};

} // namespace oribund
