#pragma once

#include <oribund/host/base/UIString.h>
#include <oribund/host/services/EditorPreferences.h>
#include <oribund/host/services/Host.h>
#include <oribund/host/services/Log.h>
#include <oribund/host/services/MessageSink.h>
#include <oribund/host/services/Shutdown.h>
#include <oribund/host/services/TextTable.h>

#include <cstdio>
#include <map>
#include <string>

/** Preferences that last as long as the program: an editor keeps its own on disk. */
class Preferences : public oribund::EditorPreferences
{
    std::optional<oribund::PreferenceValue> read(const oribund::String& key) const override
    {
        const auto found = values_.find(key.c_str());
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    bool write(const oribund::String& key, const oribund::PreferenceValue& value) override
    {
        values_.insert_or_assign(key.c_str(), value);
        return true;
    }

    std::map<std::string, oribund::PreferenceValue> values_;
};

/** No texts of its own: what the library asks for by id shows as its number. */
class Texts : public oribund::TextTable
{
    std::optional<oribund::WString> find(int, int) const override { return std::nullopt; }
};

class Messages : public oribund::MessageSink
{
    void show(const oribund::UIString& message, Severity) override
    {
        std::printf("message: %s\n", toUTF8(displayText(message)).c_str());
    }
};

class DebugLog : public oribund::Log
{
    void write(const char* text) override { std::fputs(text, stderr); }
};

/** All that the library needs of the program it lives in. */
class EmbeddingHost : public oribund::Host
{
public:
    EmbeddingHost() { install(this); }

    ~EmbeddingHost() override
    {
        shutdown_.run(oribund::Shutdown::eExitType::Normal);
        install(nullptr);
    }

    oribund::EditorPreferences& preferences() override { return preferences_; }

    oribund::TextTable& texts() override { return texts_; }

    oribund::MessageSink& messages() override { return messages_; }

    oribund::Shutdown& shutdown() override { return shutdown_; }

    oribund::Log& log() override { return log_; }

    oribund::Vob* playMachine() override { return nullptr; }

private:
    Preferences preferences_;
    Texts texts_;
    Messages messages_;
    oribund::ShutdownSequence shutdown_;
    DebugLog log_;
};
