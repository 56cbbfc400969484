#pragma once

#include "oribund/host/base/Export.h"
#include "oribund/host/base/LightweightString.h"

#include <optional>
#include <variant>

namespace oribund
{

/** What a preference holds. Wide texts are stored as UTF-8. */
using PreferenceValue = std::variant<bool, int, double, String>;

/**
 * The host's store of user choices, reached by prefs().
 *
 * Keys are plain strings of the form area, " : ", item ("Effects Browser : thumb size"). A choice is read with the
 * default that applies when nothing is stored, and written back at once. A stored value of another type is converted
 * where that loses nothing (2 reads as 2.0 and as true), else the default is given.
 *
 * A host implements the two storage operations. User-interface thread only.
 */
class ORIBUND_API EditorPreferences
{
public:
    virtual ~EditorPreferences();

    bool getPreference(const String& key, bool fallback) const;
    int getPreference(const String& key, int fallback) const;
    double getPreference(const String& key, double fallback) const;
    String getPreference(const String& key, const String& fallback) const;
    WString getPreference(const String& key, const WString& fallback) const;

    /** Stores the value at once. False when the host could not keep it; the session then goes on with the old one. */
    bool setPreference(const String& key, bool value) { return write(key, value); }

    bool setPreference(const String& key, int value) { return write(key, value); }

    bool setPreference(const String& key, double value) { return write(key, value); }

    bool setPreference(const String& key, const String& value) { return write(key, value); }

    bool setPreference(const String& key, const WString& value) { return write(key, toUTF8(value)); }

    // A literal would otherwise become a bool.
    bool setPreference(const String& key, const char* value) { return write(key, String(value)); }

    String getPreference(const String& key, const char* fallback) const { return getPreference(key, String(fallback)); }

protected:
    EditorPreferences() = default;
    EditorPreferences(const EditorPreferences&) = default;
    EditorPreferences& operator=(const EditorPreferences&) = default;

private:
    virtual std::optional<PreferenceValue> read(const String& key) const = 0;
    virtual bool write(const String& key, const PreferenceValue& value) = 0;
};

/** The installed host's preferences. */
ORIBUND_API EditorPreferences& prefs();

} // namespace oribund
