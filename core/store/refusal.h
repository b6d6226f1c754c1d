// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

/// Thrown when the stored data do not allow a step; nothing has been written. `guarded` shows the text in a
/// message box.
class Refusal : public Failure {
public:
    using Failure::Failure;
};
