#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/Kt.h"
#include "oribund/host/base/LightweightString.h"

#include <vector>

namespace oribund
{

/**
 * A text for a person's eyes: literal, or the place of a text in the host's tables, which displayText() looks up.
 * Placeholders are written "$NAME$" in the text and are replaced when it is displayed.
 */
class ORIBUND_API UIString
{
public:
    /** The resource id of a literal text. */
    static constexpr int kNoResource = 999999;

    struct Placeholder {
        WString name;
        WString value;

        bool operator==(const Placeholder&) const = default;
    };

    UIString() = default;
    UIString(const WString& text);
    UIString(const wchar_t* text);
    explicit UIString(int resourceId, int subId = 0);

    bool isLiteral() const noexcept { return resourceId_ == kNoResource; }

    /** Whether it is a literal text without characters. */
    bool empty() const noexcept { return isLiteral() && text_.empty(); }

    int resourceId() const noexcept { return resourceId_; }

    int subId() const noexcept { return subId_; }

    /** The literal text as written, placeholders unreplaced; empty for a text of the host's tables. */
    const WString& text() const noexcept { return text_; }

    /** A copy in which "$name$" stands for `value`; a second value for the same name replaces the first. */
    UIString withPlaceholder(const WString& name, const WString& value) const;

    /**
     * `text` with this text's placeholders replaced. Values are inserted as they are: a '$' in them means nothing.
     * Names that have no value stay visible, so that a mistake is seen.
     */
    WString expand(const WString& text) const;

    bool operator==(const UIString& other) const;

private:
    /** Shared by copies, and most texts have none. */
    struct Placeholders final : Kt::InternalRefCount {
        std::vector<Placeholder> list;
    };

    const Placeholder* findPlaceholder(std::wstring_view name) const noexcept;

    WString text_;
    int resourceId_ = kNoResource;
    int subId_ = 0;
    Kt::Ptr<const Placeholders> placeholders_; ///< empty for none
};

} // namespace oribund
