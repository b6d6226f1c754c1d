// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace forms {

/// The style of a message is the sum of its buttons, its icon and its alignment.
namespace style {
inline constexpr int okOnly = 0;
inline constexpr int okCancel = 1;
inline constexpr int yesNo = 4;
inline constexpr int retryCancel = 5;
inline constexpr int critical = 16;
inline constexpr int information = 64;
inline constexpr int noIcon = 80; ///< not a valid icon: the message shows none
/// Enter presses the second button: for a question whose first one loses something.
inline constexpr int secondButton = 256;
inline constexpr int rightAligned = 524288;
} // namespace style

enum class Answer { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7 };

struct Message {
    QString text;
    int style = style::okOnly;
    QString title; ///< empty: the application's own title
};

/// Shows a message and waits for its answer. Esc answers Cancel, or No where there is no Cancel.
Answer msgBox(const QString& text, int style = style::okOnly, const QString& title = {});

/// The title of messages without one of their own.
extern QString applicationTitle;

/// Shows the messages; a test replaces it.
extern std::function<Answer(const Message&)> messageHook;

} // namespace forms
