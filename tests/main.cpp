// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    const desktop::Application application(argc, argv);
    desktop::uncaughtHook = [](const std::exception_ptr&) {
        ADD_FAILURE() << "an exception has left an event handler";
    };
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
