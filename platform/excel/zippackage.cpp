// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/zippackage.h"

#include "platform/excel/bytes.h"
#include "platform/excel/refusal.h"

#include <zip.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace excel {

namespace {

constexpr qsizetype endRecordSize = 22; // without the comment that may follow it
constexpr qsizetype entryCountAt = 10;

struct FileCloser {
    void operator()(zip_file_t* open) const { zip_fclose(open); }
};

[[noreturn]] void refuseEntries() {
    throw biff::Refusal(u"holds more than %1 parts"_s.arg(ZipPackage::maxEntries));
}

/// The archive is opened only when the record at its end announces no more entries than are allowed.
void checkEndRecord(const QByteArray& content) {
    const qsizetype end = content.lastIndexOf("PK\x05\x06");
    if (end < 0 || content.size() - end < endRecordSize)
        biff::damaged(u"the directory at the end of the zip file is missing"_s);
    if (biff::get16(content, end + entryCountAt) > ZipPackage::maxEntries)
        refuseEntries();
}

} // namespace

void ZipPackage::Closer::operator()(zip* open) const {
    zip_discard(open);
}

bool ZipPackage::isZip(const QByteArray& content) {
    return content.startsWith("PK\x03\x04") || content.startsWith("PK\x05\x06");
}

ZipPackage::ZipPackage(const QByteArray& content) : bytes(content) {
    if (bytes.size() > maxFileSize)
        throw biff::Refusal(u"is larger than %1 MB"_s.arg(maxFileSize / 1024 / 1024));
    checkEndRecord(bytes);
    zip_source_t* source =
        zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, nullptr);
    archive.reset(source ? zip_open_from_source(source, ZIP_RDONLY, nullptr) : nullptr);
    if (!archive) {
        zip_source_free(source);
        biff::damaged(u"the directory of the zip file cannot be read"_s);
    }
    if (zip_get_num_entries(archive.get(), 0) > maxEntries)
        refuseEntries();
}

qint64 ZipPackage::find(const QString& part) const {
    const QByteArray name = part.toUtf8();
    const zip_int64_t exact = zip_name_locate(archive.get(), name.constData(), ZIP_FL_ENC_UTF_8);
    return exact >= 0 ? exact : zip_name_locate(archive.get(), name.constData(), ZIP_FL_NOCASE);
}

QByteArray ZipPackage::read(const QString& part) {
    const qint64 index = find(part);
    if (index < 0)
        biff::damaged(u"it has no part \"%1\""_s.arg(part));
    zip_stat_t about;
    zip_stat_init(&about);
    if (zip_stat_index(archive.get(), zip_uint64_t(index), 0, &about) != 0 || !(about.valid & ZIP_STAT_SIZE))
        biff::damaged(u"its part \"%1\" cannot be read"_s.arg(part));
    if ((about.valid & ZIP_STAT_ENCRYPTION_METHOD) && about.encryption_method != ZIP_EM_NONE)
        throw biff::Refusal(u"is encrypted with a password"_s);
    const qsizetype most = std::min(maxPartSize, maxReadSize - readSize);
    const auto refuseSize = [&] {
        throw biff::Refusal(u"is too large: its part \"%1\" unpacks to more than is read"_s.arg(part));
    };
    if (about.size > zip_uint64_t(most))
        refuseSize();
    const std::unique_ptr<zip_file_t, FileCloser> file(
        zip_fopen_index(archive.get(), zip_uint64_t(index), 0));
    QByteArray content;
    std::array<char, 65536> chunk; // NOLINT: filled below
    zip_int64_t got = -1;
    while (file && (got = zip_fread(file.get(), chunk.data(), chunk.size())) > 0) {
        if (got > most - content.size())
            refuseSize();
        content.append(chunk.data(), got);
    }
    if (got < 0)
        biff::damaged(u"its part \"%1\" cannot be unpacked"_s.arg(part));
    readSize += content.size();
    return content;
}

} // namespace excel
