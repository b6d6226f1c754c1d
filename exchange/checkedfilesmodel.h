// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/surveycheck.h"

#include <QAbstractTableModel>

/// The checked files, one row each, with a tick for those that are to be read. Ready and identical files are
/// ticked at first, faulty ones cannot be. Sorted by sortRole, so that counts and dates go by their value.
class CheckedFilesModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Tick, File, Customer, Respondent, Date, Judgement, New, Same, Changed, LeftOut, Remark };
    static constexpr int columns = Remark + 1;
    static constexpr int sortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    /// Adds the files at the end; a file of a path that is in the list takes its row. All are judged anew.
    void put(std::vector<CheckedFile> checked);
    /// The rows in ascending order.
    void remove(const std::vector<int>& rows);
    const CheckedFile& file(int row) const { return files.at(std::size_t(row)); }
    std::vector<CheckedFile> ticked() const;
    /// How many files there are of each kind, and how many are ticked.
    QString summary() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void ticksChanged();

private:
    void judge();
    QVariant tickOf(int row) const;
    QVariant valueOf(const CheckedFile& file, int column) const;
    QString textOf(const CheckedFile& file, int column) const;

    std::vector<CheckedFile> files;
    std::vector<bool> ticks; // of each file
};
