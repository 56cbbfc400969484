#include "workbench/engine/worker/EffectProbe.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    if (argc > 1 && argv[1] == workbench::kEffectProbeArgument)
        return workbench::runEffectProbe({argv + 2, argv + argc});
    testing::InitGoogleTest(&argc, argv);
    const int status = RUN_ALL_TESTS();
    // A test that left a thread stuck on purpose cannot return through the framework's own clean-up.
    if (workbench::MltSession::hasAbandonedThread())
        std::_Exit(status);
    return status;
}
