#pragma once

#include "workbench/engine/protocol/Messages.h"

#include <memory>
#include <string>

namespace workbench
{

class MltSession;

/**
 * Reads how the sound of files swings. The file that was read last stays open, so that stretch after stretch of it is
 * read in one go. Used by one thread at a time.
 */
class WaveformReader
{
public:
    explicit WaveformReader(std::shared_ptr<MltSession> session);
    ~WaveformReader();

    WaveformReader(const WaveformReader&) = delete;
    WaveformReader& operator=(const WaveformReader&) = delete;

    event::WaveformMade read(const request::MakeWaveform& wanted);

private:
    struct Sound;

    bool open(const std::string& path, int stream);

    const std::shared_ptr<MltSession> session_;
    std::unique_ptr<Sound> sound_; // null before a file is open
};

} // namespace workbench
