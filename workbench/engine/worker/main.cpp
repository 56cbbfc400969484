#include "workbench/engine/protocol/WorkerDescriptors.h"
#include "workbench/engine/worker/EngineServer.h"
#include "workbench/engine/worker/graph/EffectFolders.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{

using namespace workbench;

TraceMarks* marks = nullptr;

/** Tells whose fault it is, and lets the signal end the process as it would have. */
void noteFault(int signal)
{
    marks->noteFault();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watchFaults()
{
    struct sigaction action {
    };

    action.sa_handler = noteFault;
    action.sa_flags = SA_NODEFER;
    for (const int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGSYS, SIGTRAP})
        sigaction(signal, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

int main()
{
    auto mapped = TraceMarks::map(Descriptor(kMarksDescriptor));
    auto slots = FrameSlots::map(Descriptor(kSlotsDescriptor));
    if (!mapped || !slots) {
        std::fputs("The workbench starts this program when it needs it.\n", stderr);
        return 2;
    }
    marks = mapped.get();
    watchFaults();
    addEffectFolder(ownEffectFolder());
    EngineServer server(Descriptor(kSocketDescriptor), std::move(slots), *marks);
    server.run();
    // A thread may still be at work, or stuck: nothing is to be saved here.
    std::_Exit(0);
}
