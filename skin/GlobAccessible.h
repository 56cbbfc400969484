#pragma once

namespace workbench
{

/** Lets screen readers read and work painted globs as if they were native controls. May be called more than once. */
void installGlobAccessibility();

} // namespace workbench
