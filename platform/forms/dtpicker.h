// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateEdit>
#include <QWheelEvent>

namespace forms {

/// A date as dd/mm/yyyy with a calendar. Change is told when the value changes, by the user or by code.
class DTPicker : public QDateEdit {
    Q_OBJECT

public:
    explicit DTPicker(QWidget* parent = nullptr);
    QDate Value() const { return date(); }
    void setValue(const QDate& value) { setDate(value); }

Q_SIGNALS:
    void Change();

protected:
    /// The wheel changes nothing: a date changed by accident would drop what was typed for the one before.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

} // namespace forms
