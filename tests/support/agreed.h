// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/storetest.h"

inline const QString exported = u"Survey File Exported...Do you want to view the file? "_s;

/// Runs `work` and returns its messages. Answers yes to all but viewing a file.
inline QStringList messagesAgreedTo(const std::function<void()>& work) {
    QStringList result;
    const Replaced<forms::messageHook> agrees([&](const forms::Message& message) {
        expectNoTransaction();
        result << message.text;
        return message.text == exported       ? forms::Answer::No
               : message.style & style::yesNo ? forms::Answer::Yes
                                              : forms::Answer::Ok;
    });
    work();
    return result;
}
