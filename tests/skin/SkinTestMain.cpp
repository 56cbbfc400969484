#include "skin/SkinApplication.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const oribund::qt::SkinApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
