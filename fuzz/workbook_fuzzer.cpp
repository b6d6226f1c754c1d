// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/exercise_workbook.h"

#include <algorithm>
#include <cstdlib>

// A readable workbook saves to one that is readable too, and that saves to the same bytes again.
static void checkSaving(const QByteArray& content) {
    using excel::biff::BookFile;
    const QByteArray saved = BookFile(QStringLiteral("mutant.xls"), content).content();
    if (BookFile(QStringLiteral("saved.xls"), saved).content() != saved)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QByteArray content(reinterpret_cast<const char*>(data), qsizetype(size));
    const QByteArray edited = exerciseWorkbook(content);
    if (edited.isEmpty())
        return 0;
    if (exerciseWorkbook(edited).isEmpty())
        std::abort();
    checkSaving(content);
    return 0;
}

extern "C" size_t LLVMFuzzerMutate(unsigned char* data, size_t size, size_t maxSize);

// Mostly changes the workbook stream and wraps it into a whole container, so that the records are reached.
extern "C" size_t LLVMFuzzerCustomMutator(unsigned char* data, size_t size, size_t maxSize,
                                          unsigned int seed) {
    using excel::biff::CompoundFile;
    constexpr int growth = 64;
    try {
        CompoundFile file =
            CompoundFile::parse(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
        const int workbook = file.findStream(u"Workbook");
        const int entry = workbook >= 0 ? workbook : file.findStream(u"Book");
        if (seed % 4 != 0 && entry >= 0) {
            QByteArray stream = file.data(entry);
            const auto length = size_t(stream.size());
            stream.resize(stream.size() + growth);
            stream.truncate(qsizetype(
                LLVMFuzzerMutate(reinterpret_cast<unsigned char*>(stream.data()), length, length + growth)));
            file.setData(entry, stream);
            const QByteArray content = file.serialize();
            if (size_t(content.size()) <= maxSize) {
                std::copy(content.begin(), content.end(), data);
                return size_t(content.size());
            }
        }
    } catch (const excel::biff::Refusal&) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}
