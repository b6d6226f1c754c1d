// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") // has a small square screen by itself
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" GAUGEWELL_SOURCE "/tests/data/screen.json");
    const desktop::Application application(argc, argv);
    desktop::uncaughtHook = [](const std::exception_ptr&) {
        ADD_FAILURE() << "an exception has left an event handler";
    };
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
