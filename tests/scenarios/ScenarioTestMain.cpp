#include "skin/SkinApplication.h"
#include "tests/scenarios/ProgramTest.h"
#include "workbench/app/session/PlainTexts.h"
#include "workbench/app/window/KeyPolicy.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

int main(int argc, char** argv)
{
    using namespace workbench;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc > 2 && std::string_view(argv[1]) == kAsProgram)
        return runAsProgram(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    oribund::qt::SkinApplication application(argc, argv);
    application.installEventFilter(new KeyPolicy(&application));
    application.installEventFilter(new PlainTexts(&application));
    return RUN_ALL_TESTS();
}
