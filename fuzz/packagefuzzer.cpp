// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/refusal.h"
#include "platform/excel/valuebook.h"
#include "platform/excel/zippackage.h"
#include "platform/failure/failure.h"

#include <zip.h>

#include <algorithm>

using Bytes = unsigned char;

namespace {

/// The parts that the readers look at.
const char* const partNames[] = {"xl/worksheets/sheet1.xml",
                                 "xl/sharedStrings.xml",
                                 "xl/styles.xml",
                                 "xl/workbook.xml",
                                 "content.xml",
                                 "META-INF/manifest.xml",
                                 "xl/_rels/workbook.xml.rels",
                                 "_rels/.rels"};

/// The zip file with one part replaced; empty when that fails.
QByteArray withPart(const QByteArray& file, const QByteArray& name, const QByteArray& part) {
    zip_source_t* source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    if (zip_source_begin_write(source) != 0 ||
        zip_source_write(source, file.constData(), zip_uint64_t(file.size())) < 0 ||
        zip_source_commit_write(source) != 0) {
        zip_source_free(source);
        return {};
    }
    zip_source_keep(source);
    zip_t* archive = zip_open_from_source(source, 0, nullptr);
    if (!archive) {
        zip_source_free(source);
        zip_source_free(source);
        return {};
    }
    zip_source_t* content = zip_source_buffer(archive, part.constData(), zip_uint64_t(part.size()), 0);
    if (zip_file_add(archive, name.constData(), content, ZIP_FL_OVERWRITE) < 0)
        zip_source_free(content);
    QByteArray result;
    if (zip_close(archive) != 0) {
        zip_discard(archive);
    } else if (zip_source_open(source) == 0) {
        zip_stat_t about;
        zip_stat_init(&about);
        zip_source_stat(source, &about);
        result.resize(qsizetype(about.size));
        zip_source_read(source, result.data(), about.size);
        zip_source_close(source);
    }
    zip_source_free(source);
    return result;
}

} // namespace

// Whatever the content, it is refused or gives values within the sheets' bounds.
extern "C" int LLVMFuzzerTestOneInput(const Bytes* data, size_t size) {
    try {
        const auto book = excel::readPackage(
            QStringLiteral("mutant.xlsx"), QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
        for (const excel::ValueSheet& sheet : book->sheets)
            for (const auto& [place, value] : sheet.cells)
                if (place.row < 0 || place.row >= excel::biff::maxRows || place.column < 0 ||
                    place.column >= excel::biff::maxColumns || value.text().isEmpty())
                    std::abort();
    } catch (const Failure&) {
        return 0;
    }
    return 0;
}

extern "C" size_t LLVMFuzzerMutate(Bytes* data, size_t size, size_t maxSize);

// Mostly mutates one part inside a valid zip file, so that the readers of the parts are reached.
extern "C" size_t LLVMFuzzerCustomMutator(Bytes* data, size_t size, size_t maxSize, unsigned int seed) {
    constexpr int growth = 64;
    const QByteArray file(reinterpret_cast<const char*>(data), qsizetype(size));
    const QByteArray name = partNames[seed / 8 % std::size(partNames)];
    try {
        if (seed % 8 != 0) {
            QByteArray part = excel::ZipPackage(file).read(QString::fromLatin1(name));
            const auto length = size_t(part.size());
            part.resize(part.size() + growth);
            part.truncate(
                qsizetype(LLVMFuzzerMutate(reinterpret_cast<Bytes*>(part.data()), length, length + growth)));
            const QByteArray mutant = withPart(file, name, part);
            if (!mutant.isEmpty() && size_t(mutant.size()) <= maxSize) {
                std::copy(mutant.begin(), mutant.end(), data);
                return size_t(mutant.size());
            }
        }
    } catch (const excel::biff::Refusal&) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    return LLVMFuzzerMutate(data, size, maxSize);
}
