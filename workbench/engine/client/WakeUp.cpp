#include "workbench/engine/client/WakeUp.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <cstdint>

namespace workbench
{

WakeUp::WakeUp()
    : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

void WakeUp::wake()
{
    eventfd_write(event_.number(), 1);
}

void WakeUp::wait(int descriptor, std::chrono::milliseconds limit)
{
    std::array<pollfd, 2> files{{{event_.number(), POLLIN, 0}, {descriptor, POLLIN, 0}}};
    poll(files.data(), files.size(), static_cast<int>(limit.count()));
    eventfd_t woken = 0;
    eventfd_read(event_.number(), &woken);
}

} // namespace workbench
