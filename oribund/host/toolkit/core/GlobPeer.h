#pragma once

#include "oribund/host/base/Export.h"

namespace oribund
{

/** What a peer is told has changed; several may come at once. */
namespace PeerChange
{
inline constexpr unsigned kGeometry = 1;  ///< position or size
inline constexpr unsigned kVisible = 2;   ///< Glob::isVisible()
inline constexpr unsigned kEnabled = 4;   ///< Glob::canInteract()
inline constexpr unsigned kState = 8;     ///< value, text, items: what the widget shows
inline constexpr unsigned kContents = 16; ///< what the glob draws itself
inline constexpr unsigned kPalette = 32;
inline constexpr unsigned kFont = 64;
inline constexpr unsigned kTooltip = 128; ///< and accessible name
inline constexpr unsigned kFocus = 256;   ///< Glob::hasFocus()
inline constexpr unsigned kCursor = 512;
inline constexpr unsigned kAll = 1023;

/** What an adaptor or the user has changed about a control, which draws it as well. */
inline constexpr unsigned kLook = kState | kContents;
} // namespace PeerChange

/**
 * What a skin shows of one glob.
 *
 * Owned by its glob, made after the peer of the glob's parent and destroyed before it. It reads the glob when it is
 * refreshed, and answers the user by calling the glob's user...() methods; a refresh that follows from such a call, or
 * that tells it nothing new, must not come back as user input.
 *
 * Any of those calls may destroy the glob and with it the peer, which therefore touches nothing of its own after one
 * and leaves the end of its native widget to the native event loop.
 */
class ORIBUND_API GlobPeer
{
public:
    /** The glob is being destroyed or taken off its canvas: it must not be called any more. */
    virtual ~GlobPeer();

    GlobPeer() = default;
    GlobPeer(const GlobPeer&) = delete;
    GlobPeer& operator=(const GlobPeer&) = delete;

    /** `changes` are bits of PeerChange; the first refresh comes right after creation, with all of them. */
    virtual void refresh(unsigned changes) = 0;
};

} // namespace oribund
