#pragma once

namespace Mlt
{
class Service;
}

namespace workbench
{

// Which services have complained of an error. An effect of the FFmpeg module that cannot be set up as it is told frees
// what it is made of; the next change of a setting would reach for that and end the process. Any thread.

/** From now on every service is listened to, for the life of the process. */
void listenForFaults();

bool hasFault(Mlt::Service& service);

/** For a new one, which may stand in the memory of one that is gone. */
void forgetFault(Mlt::Service& service);

} // namespace workbench
