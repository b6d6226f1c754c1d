// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

/// Ends a step that the data at hand do not allow; nothing of it is written. The sentence is shown by guarded
/// under the program's usual title.
class Refusal : public Failure {
public:
    using Failure::Failure;
};
