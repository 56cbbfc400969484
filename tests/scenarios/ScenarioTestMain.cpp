#include "skin/SkinApplication.h"
#include "tests/scenarios/ProgramTest.h"
#include "workbench/app/session/PlainTexts.h"
#include "workbench/app/window/KeyPolicy.h"
#include "workbench/engine/worker/EffectProbe.h"
#include "workbench/engine/worker/graph/MltSession.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

int main(int argc, char** argv)
{
    using namespace workbench;
    if (argc > 1 && argv[1] == kEffectProbeArgument)
        return runEffectProbe({argv + 2, argv + argc});
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc > 2 && std::string_view(argv[1]) == kAsProgram)
        return runAsProgram(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    oribund::qt::SkinApplication application(argc, argv);
    application.installEventFilter(new KeyPolicy(&application));
    application.installEventFilter(new PlainTexts(&application));
    const int status = RUN_ALL_TESTS();
    if (MltSession::hasAbandonedThread())
        std::_Exit(status);
    return status;
}
