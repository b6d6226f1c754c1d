// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Whether the user names the survey files; otherwise the program makes their names. A failure is shown and
/// returns false.
bool toGetSetting();
