// SPDX-License-Identifier: MIT

#include "support/waiting.h"
#include "ui/application.h"
#include "ui/fonts.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    Q_INIT_RESOURCE(resources);
    ui::Application application(argc, argv);
    // A test closes many main windows; none of them ends the run.
    ui::Application::setQuitOnLastWindowClosed(false);
    ui::installFontSubstitutes();
    const test::DialogWatch watch;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
