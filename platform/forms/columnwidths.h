// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace forms {

/// The widths that the user has given to the columns of a view by dragging, as shares of the view's width.
/// They are kept from one opening of its form to the next.
class ColumnWidths {
public:
    explicit ColumnWidths(const QWidget& owner) : view(owner) {}

    /// The share that the user gave the column, else the given one. A hidden column (0) stays hidden.
    double share(int column, double given);
    bool isRemembered(int column) const { return shares && shares->contains(column); }
    void remember(int column, double share);

private:
    void recall();
    QString key() const;

    const QWidget& view;
    std::optional<QHash<int, double>> shares; ///< read at the first use
};

/// Keep and return a text by a key of its own. Nothing is kept at first.
extern std::function<void(const QString& key, const QString& text)> rememberHook;
extern std::function<QString(const QString& key)> recallHook;

} // namespace forms
