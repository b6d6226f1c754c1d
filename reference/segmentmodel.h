// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reference/segmentedits.h"

#include <QAbstractTableModel>

/// The customers, each followed by its respondents, with their groups of one kind. A respondent without a
/// group of its own shows its customer's in brackets; changes that are not saved are bold. Only rows whose
/// customer or respondent has the text searched for are shown.
class SegmentModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Customer, Respondent, Group };

    SegmentModel(SegmentEdits& changes, QObject* parent) : QAbstractTableModel(parent), edits(changes) {}

    /// The rows as they are stored. The same rows of any kind keep what is chosen of them.
    void put(const QString& kind, std::vector<SegmentRow> rows);
    void search(const QString& text);
    const QString& kind() const { return kindShown; }
    /// Of the rows shown.
    void setGroup(const std::vector<int>& shownRows, const QString& group);
    /// Gives all that are in a group themselves, shown or not, another one.
    void renameGroup(const QString& from, const QString& to);
    /// The own group of a row shown, else its customer's.
    QString groupAt(int shownRow) const;
    /// The names in use, sorted.
    QStringList groups() const;
    /// "2 customers and 5 respondents shown".
    QString summary() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const SegmentRow& at(int shownRow) const { return rows[std::size_t(shown.at(std::size_t(shownRow)))]; }
    const SegmentRow& customerOf(int shownRow) const;
    QString groupText(int shownRow) const;
    void filter();
    void changed();

    SegmentEdits& edits;
    QString kindShown;
    QString searched;
    std::vector<SegmentRow> rows;
    std::vector<int> shown; ///< indexes of rows
};
