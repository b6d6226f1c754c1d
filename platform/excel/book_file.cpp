// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/book_file.h"

#include "platform/excel/error.h"
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

// Workbooks of Excel 4 and older are bare record streams that begin with the record 09.
bool isBareRecordStream(const QByteArray& file) {
    return file.size() >= 4 && file[0] == 0x09 && (file[1] == 0 || file[1] == 2 || file[1] == 4) &&
           file[3] == 0;
}

constexpr auto utf8Mark = "\xEF\xBB\xBF";

[[noreturn]] void refuse(const QString& path, const QString& rest) {
    throw Error(u"The file \"%1\" %2."_s.arg(QFileInfo(path).fileName(), rest));
}

QByteArray readWhole(const QString& path) {
    QFile file(path);
    if (!file.exists())
        throw Error(u"The file \"%1\" was not found."_s.arg(path));
    if (QFileInfo(path).isDir())
        refuse(path, u"is a folder and no workbook"_s);
    if (!file.open(QIODevice::ReadOnly))
        refuse(path, u"cannot be opened: %1"_s.arg(file.errorString()));
    if (file.size() > CompoundFile::maxFileSize)
        refuse(path, u"is larger than 64 MB"_s);
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        refuse(path, u"cannot be read: %1"_s.arg(file.errorString()));
    return content;
}

} // namespace

QString describeForeignFile(const QByteArray& file) {
    if (CompoundFile::isCompoundFile(file))
        return {};
    if (file.isEmpty())
        return u"is empty and no Excel workbook"_s;
    if (file.startsWith("PK\x03\x04"))
        return file.left(128).contains("vnd.oasis")
                   ? u"is an OpenDocument spreadsheet (.ods) and no Excel 97-2003 workbook (.xls)"_s
                   : u"is a newer Excel workbook (.xlsx) and no Excel 97-2003 workbook (.xls)"_s;
    if (isBareRecordStream(file))
        return u"is a workbook of Excel 95 or older, which cannot be read"_s;
    const QByteArray start = (file.startsWith(utf8Mark) ? file.mid(3, 256) : file.left(256)).trimmed();
    if (start.startsWith('<'))
        return u"is a web page or XML text (HTML) and no Excel workbook, whatever its name says"_s;
    if (looksLikeText(file))
        return u"is a text or CSV file and no Excel workbook, whatever its name says"_s;
    return u"is no Excel workbook"_s;
}

BookFile::BookFile(const QString& path) : path_(path) {
    noteDiskState();
    parse(readWhole(path));
}

BookFile::BookFile(const QString& path, const QByteArray& content) : path_(path) {
    parse(content);
}

QString BookFile::name() const {
    return QFileInfo(path_).fileName();
}

void BookFile::parse(const QByteArray& content) {
    try {
        const QString foreign = describeForeignFile(content);
        if (!foreign.isEmpty())
            throw Refusal(foreign);
        container_ = CompoundFile::parse(content);
        stream_ = container_.findStream(u"Workbook");
        if (stream_ < 0)
            stream_ = container_.findStream(u"Book"); // the name of Excel 95, used by other programs too
        const bool encrypted = container_.findStream(u"EncryptedPackage") >= 0;
        if (stream_ < 0 && encrypted)
            throw Refusal(u"is a newer Excel workbook (.xlsx) that is encrypted with a password"_s);
        if (stream_ < 0)
            throw Refusal(u"holds no workbook; it belongs to another program"_s);
        book_ = std::make_unique<Book>(container_.data(stream_));
    } catch (const Refusal& refusal) {
        refuse(path_, refusal.reason());
    }
}

QByteArray BookFile::content() {
    container_.setData(stream_, book_->stream());
    // A second copy of the workbook for Excel 95 would now be out of date.
    const int old = container_.findStream(u"Book");
    if (old >= 0 && old != stream_)
        container_.setData(old, {});
    QByteArray file = container_.serialize();
    if (file.size() > CompoundFile::maxFileSize)
        throw Refusal(u"would become larger than 64 MB, which cannot be read"_s);
    return file;
}

void BookFile::noteDiskState() {
    const QFileInfo info(path_);
    diskTime_ = info.lastModified();
    diskSize_ = info.exists() ? info.size() : -1;
}

void BookFile::refuseIfChangedOnDisk() const {
    const QFileInfo info(path_);
    if (info.exists() && (info.lastModified() != diskTime_ || info.size() != diskSize_))
        refuse(path_, u"was changed by another program in the meantime and is not overwritten"_s);
}

void BookFile::save(const QString& path) {
    if (path == path_)
        refuseIfChangedOnDisk();
    // Asked of the marks, since the superuser may write anything.
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
    // A full disk shows at flush() only; commit() alone would put a cut-off file in the old one's place.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
        !file.commit())
        refuse(path, u"could not be saved, what was there before is unchanged: %1"_s.arg(file.errorString()));
    path_ = path;
    noteDiskState();
}

} // namespace excel::biff
