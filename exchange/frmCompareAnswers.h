// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/surveycheck.h"
#include "platform/forms/form.h"

#include <QTimer>

#include <memory>

namespace Ui {
class frmCompareAnswers;
}

/// Shows the stored answers beside those of a checked file, question by question.
class frmCompareAnswers : public forms::DefaultForm<frmCompareAnswers> {
    Q_OBJECT

public:
    ~frmCompareAnswers() override;

    /// The cursor stands on the first answer that would change, if one would.
    void compare(const CheckedFile& file);

private:
    friend class DefaultForm<frmCompareAnswers>;
    frmCompareAnswers();
    void onLoad() override;
    void fillRow(int row, const CheckedAnswer& answer);

    std::unique_ptr<Ui::frmCompareAnswers> ui;
    QTimer rowHeights; ///< fits the rows to their texts once the columns have their widths
};
