// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/matrixaids.h"

#include <QGroupBox>

#include <memory>

namespace Ui {
class AidPanel;
}

/// Where the user chooses what helps to read the Performance Matrix. The choice is remembered, except for the
/// date compared with; at first there is no aid, and the cross-hair is in the middle.
class AidPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit AidPanel(QWidget* parent = nullptr);
    ~AidPanel() override;

    AidChoice choice() const;
    /// Offers the other dates to compare the shown one with (dd/mm/yyyy); the chosen one stays if it is among
    /// them.
    void setDates(const QStringList& dates, const QString& shown);

Q_SIGNALS:
    /// By the user.
    void Changed();

private:
    void restore();
    void change();

    std::unique_ptr<Ui::AidPanel> ui;
};
