// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/exerciseworkbook.h"

#include <algorithm>
#include <cstdlib>

// A saved workbook must be readable and save to the same bytes again.
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

// Mostly mutates the workbook stream inside a valid container, so that the record parser is reached.
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
