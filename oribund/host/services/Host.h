#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

class EditorPreferences;
class Log;
class MessageSink;
class Shutdown;
class TextTable;
class Vob;

/**
 * What a host gives the library: one object, installed before the first panel is opened.
 *
 * The library's static entry points (prefs(), displayText(), Shutdown::addCallback(), Vob::getPlayMachine(), ...)
 * forward to it. The services must outlive every panel. User-interface thread only, but for log().
 */
class ORIBUND_API Host
{
public:
    virtual ~Host();

    virtual EditorPreferences& preferences() = 0;
    virtual TextTable& texts() = 0;
    virtual MessageSink& messages() = 0;
    virtual Shutdown& shutdown() = 0;
    virtual Log& log() = 0;

    /** The viewer with focus; null when there is none. */
    virtual Vob* playMachine() = 0;

    /** Makes the host the one in use, or none with null. Not owned; returns the one before, for tests to restore. */
    static Host* install(Host* host);

    static bool isInstalled();

    /** The installed host. Calling it without one is a programming error: it says so on stderr and aborts. */
    static Host& current();

protected:
    Host() = default;
    Host(const Host&) = default;
    Host& operator=(const Host&) = default;
};

} // namespace oribund
