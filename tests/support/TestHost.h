#pragma once

#include "oribund/host/base/UIString.h"
#include "oribund/host/services/EditorPreferences.h"
#include "oribund/host/services/Host.h"
#include "oribund/host/services/Log.h"
#include "oribund/host/services/MessageSink.h"
#include "oribund/host/services/Shutdown.h"
#include "oribund/host/services/TextTable.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace oribund::test
{

/** Preferences in memory. */
class MemoryPreferences : public EditorPreferences
{
public:
    std::map<std::string, PreferenceValue> values;

private:
    std::optional<PreferenceValue> read(const String& key) const override
    {
        const auto found = values.find(key.c_str());
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    bool write(const String& key, const PreferenceValue& value) override
    {
        values.insert_or_assign(key.c_str(), value);
        return true;
    }
};

/** A host in memory, installed for as long as it lives; records what it is told. */
class TestHost : public Host, private TextTable, private MessageSink, private Log
{
public:
    TestHost()
        : before_(Host::install(this))
    {
    }

    ~TestHost() override
    {
        shutdownSequence.run(Shutdown::eExitType::Normal);
        Host::install(before_);
    }

    EditorPreferences& preferences() override { return memoryPreferences; }

    TextTable& texts() override { return *this; }

    MessageSink& messages() override { return *this; }

    Shutdown& shutdown() override { return shutdownSequence; }

    Log& log() override { return *this; }

    Vob* playMachine() override { return focusedVob; }

    MemoryPreferences memoryPreferences;
    ShutdownSequence shutdownSequence;
    std::map<std::pair<int, int>, WString> textOf;
    std::vector<std::string> shown; ///< messages, as UTF-8
    std::vector<std::string> logged;
    Vob* focusedVob = nullptr;

private:
    std::optional<WString> find(int resourceId, int subId) const override
    {
        const auto found = textOf.find({resourceId, subId});
        return found == textOf.end() ? std::nullopt : std::optional(found->second);
    }

    void show(const UIString& message, Severity) override { shown.emplace_back(toUTF8(displayText(message)).c_str()); }

    void write(const char* text) override { logged.emplace_back(text); }

    Host* before_;
};

} // namespace oribund::test
