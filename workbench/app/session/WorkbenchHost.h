#pragma once

#include "oribund/host/services/Host.h"
#include "oribund/host/services/Log.h"
#include "oribund/host/services/MessageSink.h"
#include "oribund/host/services/Shutdown.h"
#include "oribund/host/services/TextTable.h"

#include <functional>

namespace workbench
{

/**
 * The host that the library's panels find: installed while it lives, and shut down before it goes. User-interface
 * thread, but for the log.
 */
class WorkbenchHost final : public oribund::Host,
                            private oribund::TextTable,
                            private oribund::MessageSink,
                            private oribund::Log
{
public:
    using ShowMessage = std::function<void(const oribund::WString&, oribund::MessageSink::Severity)>;

    /** The preferences outlive the host. */
    explicit WorkbenchHost(oribund::EditorPreferences& preferences);
    ~WorkbenchHost() override;

    WorkbenchHost(const WorkbenchHost&) = delete;
    WorkbenchHost& operator=(const WorkbenchHost&) = delete;

    /** Who shows messages; without anybody they go to stderr. */
    void setMessageDisplay(ShowMessage show) { show_ = std::move(show); }

    /** The viewer with focus; outlives the host or is taken off again with null. */
    void setPlayMachine(oribund::Vob* vob) { vob_ = vob; }

    oribund::EditorPreferences& preferences() override { return preferences_; }

    oribund::TextTable& texts() override { return *this; }

    oribund::MessageSink& messages() override { return *this; }

    oribund::Shutdown& shutdown() override { return shutdown_; }

    oribund::Log& log() override { return *this; }

    oribund::Vob* playMachine() override { return vob_; }

private:
    /** The library's own English is what the workbench speaks. */
    std::optional<oribund::WString> find(int, int) const override { return std::nullopt; }

    void show(const oribund::UIString& message, Severity severity) override;
    void write(const char* text) override;

    oribund::EditorPreferences& preferences_;
    oribund::ShutdownSequence shutdown_;
    ShowMessage show_;
    oribund::Vob* vob_ = nullptr;
    oribund::Host* before_;
};

} // namespace workbench
