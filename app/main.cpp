// SPDX-License-Identifier: MIT

#include "app/start_up.h"

int main(int argc, char** argv) {
    return app::run(argc, argv);
}
