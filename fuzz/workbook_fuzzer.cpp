// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/exercise_workbook.h"

// What was saved must be readable, and saving that again must change nothing any more.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QByteArray content(reinterpret_cast<const char*>(data), qsizetype(size));
    const QByteArray saved = exerciseWorkbook(content);
    if (saved.isEmpty())
        return 0;
    const QByteArray again = exerciseWorkbook(saved);
    if (again.isEmpty() || exerciseWorkbook(again) != exerciseWorkbook(exerciseWorkbook(again)))
        std::abort();
    return 0;
}
