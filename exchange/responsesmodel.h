// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/responselist.h"

#include <QAbstractTableModel>

#include <set>

/// Responses, one row each, with a tick for those that a command is for. The texts are made when they are
/// shown, so that filling does not depend on them.
class ResponsesModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Tick, Customer, Respondent, Date, HandedOver, Due, State, Reminders, LastReminder };
    static constexpr int columns = LastReminder + 1;

    using QAbstractTableModel::QAbstractTableModel;

    /// Replaces the rows, in the order of the last sort. Those that were ticked before stay so. False when
    /// they are the same rows again: nothing changes then, and the list is not scrolled back.
    bool put(std::vector<Response> shown, const QDate& day);
    std::vector<Response> ticked() const;
    /// The survey and the respondent of a row, and the row of these; none is {0, 0} and -1.
    std::pair<int, int> keyAt(int row) const;
    int rowOf(const std::pair<int, int>& key) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Dates and counts go by their value, states in the order of allResponseStates.
    void sort(int column, Qt::SortOrder order) override;

private:
    void sortRows(std::vector<Response>& rows) const;
    int compare(const Response& one, const Response& other) const;
    QString textOf(const Response& response, int column) const;

    std::vector<Response> responses;
    std::set<std::pair<int, int>> ticks; ///< surveyid and respondentid
    QDate today;
    int sortColumn = -1; ///< -1: as they were put
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
};
