// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Main.h"

int main(int argc, char** argv) {
    return Main(argc, argv);
}
