// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/bookfile.h"

#include "platform/excel/refusal.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace excel::biff {

namespace {

bool looksLikeText(const QByteArray& file) {
    const QByteArrayView start = QByteArrayView(file).first(std::min<qsizetype>(file.size(), 4096));
    return std::none_of(start.begin(), start.end(), [](char c) {
        return quint8(c) < 0x20 && c != '\t' && c != '\r' && c != '\n' && c != '\f';
    });
}

/// Workbooks of Excel 4 and older are bare record streams that begin with the record 09.
bool isBareRecordStream(const QByteArray& file) {
    return file.size() >= 4 && file[0] == 0x09 && (file[1] == 0 || file[1] == 2 || file[1] == 4) &&
           file[3] == 0;
}

constexpr auto utf8Mark = "\xEF\xBB\xBF";

} // namespace

QString describeForeignFile(const QByteArray& file) {
    if (CompoundFile::isCompoundFile(file))
        return {};
    if (file.isEmpty())
        return u"is empty and no Excel workbook"_s;
    if (isBareRecordStream(file))
        return u"is a workbook of Excel 95 or older, which cannot be read"_s;
    const QByteArray start = (file.startsWith(utf8Mark) ? file.mid(3, 256) : file.left(256)).trimmed();
    if (start.startsWith('<'))
        return u"is a web page or XML text (HTML) and no Excel workbook, whatever its name says"_s;
    if (looksLikeText(file))
        return u"is a text or CSV file and no Excel workbook, whatever its name says"_s;
    return u"is no Excel workbook"_s;
}

BookFile::BookFile(const QString& path, const FileContent& content) : filePath(path), onDisk(content.state) {
    parse(content.bytes);
}

QString BookFile::name() const {
    return QFileInfo(filePath).fileName();
}

void BookFile::parse(const QByteArray& content) {
    try {
        const QString foreign = describeForeignFile(content);
        if (!foreign.isEmpty())
            throw Refusal(foreign);
        compound = CompoundFile::parse(content);
        bookStream = compound.findStream(u"Workbook");
        if (bookStream < 0)
            bookStream = compound.findStream(u"Book"); // the name of Excel 95, used by other programs too
        const bool encrypted = compound.findStream(u"EncryptedPackage") >= 0;
        if (bookStream < 0 && encrypted)
            throw Refusal(u"is a newer Excel workbook (.xlsx) that is encrypted with a password"_s);
        if (bookStream < 0)
            throw Refusal(u"holds no workbook; it belongs to another program"_s);
        workbook = std::make_unique<Book>(compound.data(bookStream));
    } catch (const Refusal& refusal) {
        refuse(filePath, refusal.reason());
    }
}

QByteArray BookFile::content() {
    compound.setData(bookStream, workbook->stream());
    // A second copy of the workbook for Excel 95 would now be out of date.
    const int old = compound.findStream(u"Book");
    if (old >= 0 && old != bookStream)
        compound.setData(old, {});
    QByteArray file = compound.serialize();
    if (file.size() > CompoundFile::maxFileSize)
        throw Refusal(u"would become larger than 64 MB, which cannot be read"_s);
    return file;
}

void BookFile::refuseIfChangedOnDisk() const {
    const DiskState now(filePath);
    if (now.size >= 0 && now != onDisk)
        refuse(filePath, u"was changed by another program in the meantime and is not overwritten"_s);
}

void BookFile::save(const QString& path) {
    if (path == filePath)
        refuseIfChangedOnDisk();
    // Checked by the permissions, since root may write anything.
    constexpr auto writable = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    if (QFile::exists(path) && !(QFile::permissions(path) & writable))
        refuse(path, u"is read-only and cannot be overwritten"_s);
    QByteArray bytes;
    try {
        bytes = content();
    } catch (const Refusal& refusal) {
        refuse(path, refusal.reason());
    }
    QSaveFile file(path);
    // A full disk is detected only by flush(); commit() alone would replace the old file by a truncated one.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
        !file.commit())
        refuse(path, u"could not be saved, what was there before is unchanged: %1"_s.arg(file.errorString()));
    filePath = path;
    onDisk = DiskState(path);
}

} // namespace excel::biff
