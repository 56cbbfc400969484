#pragma once

class QAccessibleInterface;

namespace workbench
{

class TextEntry;

/** Numeric entries to assistive tools: spin boxes whose text can be read. */
namespace NumberAccessible
{

/** What they know of an entry, which they own; null when it is none for numbers. */
QAccessibleInterface* make(TextEntry& entry);

/** Tells them that the number in it has changed; does nothing for other entries. */
void tellChange(TextEntry& entry);

} // namespace NumberAccessible

} // namespace workbench
