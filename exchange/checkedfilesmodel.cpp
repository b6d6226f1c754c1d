// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/checkedfilesmodel.h"

#include "exchange/checkmarks.h"
#include "platform/ado/value.h"

#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Counts stand at the right.
QVariant alignmentOf(int column) {
    const bool isCount = column >= CheckedFilesModel::New && column <= CheckedFilesModel::LeftOut;
    return QVariant::fromValue(Qt::Alignment((isCount ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
}

} // namespace

void CheckedFilesModel::put(std::vector<CheckedFile> checked) {
    beginResetModel();
    for (CheckedFile& file : checked) {
        const auto found = std::find_if(files.begin(), files.end(),
                                        [&](const CheckedFile& other) { return other.path == file.path; });
        if (found != files.end()) {
            ticks[std::size_t(found - files.begin())] = file.alone >= Verdict::Identical;
            *found = std::move(file);
        } else {
            ticks.push_back(file.alone >= Verdict::Identical);
            files.push_back(std::move(file));
        }
    }
    judge();
    endResetModel();
}

void CheckedFilesModel::remove(const std::vector<int>& rows) {
    beginResetModel();
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        files.erase(files.begin() + *row);
        ticks.erase(ticks.begin() + *row);
    }
    judge();
    endResetModel();
}

/// A file whose verdict changes with the others gets the tick of a new one.
void CheckedFilesModel::judge() {
    std::vector<Verdict> before;
    for (const CheckedFile& file : files)
        before.push_back(file.verdict);
    judgeTogether(files);
    for (std::size_t row = 0; row < files.size(); ++row) {
        if (files[row].verdict != before[row])
            ticks[row] = files[row].verdict >= Verdict::Identical;
    }
}

std::vector<CheckedFile> CheckedFilesModel::ticked() const {
    std::vector<CheckedFile> result;
    for (std::size_t row = 0; row < files.size(); ++row) {
        if (ticks[row])
            result.push_back(files[row]);
    }
    return result;
}

QString CheckedFilesModel::summary() const {
    const auto count = [this](const auto& has) { return std::count_if(files.begin(), files.end(), has); };
    const auto are = [&](Verdict verdict) {
        return count([verdict](const CheckedFile& file) { return file.verdict == verdict; });
    };
    return u"%1: %2 ready, %3 identical, %4 changing, %5 faulty. %6 ticked."_s
        .arg(files.size() == 1 ? u"1 file"_s : u"%1 files"_s.arg(files.size()))
        .arg(are(Verdict::Ready))
        .arg(are(Verdict::Identical))
        .arg(are(Verdict::ChangesAnswers))
        .arg(count([](const CheckedFile& file) { return !isFaultless(file.verdict); }))
        .arg(std::count(ticks.begin(), ticks.end(), true));
}

int CheckedFilesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(files.size());
}

int CheckedFilesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

QVariant CheckedFilesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) // copying asks for the current cell even if there is none
        return {};
    const CheckedFile& shown = file(index.row());
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return textOf(shown, column);
    case Qt::CheckStateRole:
        return column == Tick ? tickOf(index.row()) : QVariant();
    case Qt::DecorationRole:
        return column == Judgement ? QVariant(markOf(shown.verdict)) : QVariant();
    case Qt::ToolTipRole:
        return Qt::convertFromPlainText(column == File ? shown.path : textOf(shown, column));
    case Qt::TextAlignmentRole:
        return alignmentOf(column);
    case sortRole:
        return column == Tick ? tickOf(index.row()) : valueOf(shown, column);
    default:
        return {};
    }
}

/// Nothing for a file that cannot be ticked: its row has no box.
QVariant CheckedFilesModel::tickOf(int row) const {
    if (!isFaultless(file(row).verdict))
        return {};
    return static_cast<int>(ticks[std::size_t(row)] ? Qt::Checked : Qt::Unchecked);
}

QVariant CheckedFilesModel::valueOf(const CheckedFile& file, int column) const {
    if (column == Date)
        return file.date;
    if (column == Judgement)
        return static_cast<int>(file.verdict);
    if (column >= New && column <= LeftOut)
        return file.answers.empty() ? -1 : file.counts[std::size_t(column - New)];
    return textOf(file, column);
}

QString CheckedFilesModel::textOf(const CheckedFile& file, int column) const {
    switch (column) {
    case File:
        return file.title();
    case Customer:
        return file.customer;
    case Respondent:
        return file.respondent;
    case Date:
        return file.date.toString(ado::dateTextFormat);
    case Judgement:
        return wordOf(file.verdict);
    case Remark:
        return file.remark.simplified();
    case Tick:
        return {};
    default:
        return file.answers.empty() ? QString() : QString::number(file.counts[std::size_t(column - New)]);
    }
}

bool CheckedFilesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable))
        return false;
    ticks[std::size_t(index.row())] = value.toInt() == Qt::Checked;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    Q_EMIT ticksChanged();
    return true;
}

Qt::ItemFlags CheckedFilesModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return index.column() == Tick && isFaultless(file(index.row()).verdict) ? usual | Qt::ItemIsUserCheckable
                                                                            : usual;
}

QVariant CheckedFilesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const QStringList heads{u""_s,        u"File"_s,     u"Customer"_s, u"Respondent"_s,
                                   u"Date"_s,    u"Verdict"_s,  u"New"_s,      u"Same"_s,
                                   u"Changed"_s, u"Left Out"_s, u"Remark"_s};
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    if (role == Qt::AccessibleTextRole && section == Tick)
        return u"Ticked"_s;
    return role == Qt::DisplayRole ? QVariant(heads.value(section)) : QVariant();
}
