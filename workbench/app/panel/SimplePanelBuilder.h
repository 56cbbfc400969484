#pragma once

namespace workbench
{

/** Registers the builder of simple effect panels with FXPanelFactory, for effects of every type. Once, when a host is
    installed. */
void registerSimplePanels();

} // namespace workbench
