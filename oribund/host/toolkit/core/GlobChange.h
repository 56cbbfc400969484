#pragma once

namespace oribund
{

/** What is another about a glob; several may come at once. */
namespace GlobChange
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
inline constexpr unsigned kPart = 1024; ///< a part of what the glob draws itself

/** What an adaptor or the user has changed about a control, which draws it as well. */
inline constexpr unsigned kLook = kState | kContents;
} // namespace GlobChange

} // namespace oribund
