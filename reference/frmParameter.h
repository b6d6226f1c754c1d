// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "reference/grideditor.h"

#include <memory>
#include <optional>

namespace Ui {
class frmParameter;
}

/// Keeps the parameters and, for the parameter under the cursor, its questions of the type Score or
/// Descriptive. Typing changes the grids only; the add and save commands write a whole grid in one
/// transaction.
class frmParameter : public forms::DefaultForm<frmParameter> {
    Q_OBJECT

public:
    ~frmParameter() override;
    QLineEdit* txtParameterDtls() const;
    /// Shows the box of the current parameter and gives it the focus.
    void toFocusParameter();

    void toSetWidthForParamGrid();
    void toSetWidthForQuestionGrid();
    void toRefreshPrameterDetails();
    void toSaveParameterDtls();
    void toDeleteparameter();
    void toRefreshQuestionDtls();
    void toSaveQuestionDetails();
    void toDeleteQuestionDetails();
    void SetEditParameterTextBox(int ColPos, int RowPos);
    void SetEditQuestionTextBox(int ColPos, int RowPos);

private:
    friend class DefaultForm<frmParameter>;
    frmParameter();
    void onLoad() override;
    void connectEvents();

    void cmdAddParameter();
    void cmdSaveParameter();
    void cmdDeleteParameter();
    void cmdAddQuestion();
    void cmdSaveQuestion();
    void cmdDeleteQuestion();
    void grdParameterDtls_Click();
    void txtQuestionDtls_Change(const QString& text);
    bool toCheckParameters(const QString& message);
    bool toCheckQuestions(const QString& message);
    // They return the key of the stored row; empty when the row was passed over.
    QString toSaveParameterRow(int row);
    QString toSaveQuestionRow(int row);
    bool toConfirmDeletion(const QString& paramid);
    QString currentParamID() const;

    std::unique_ptr<Ui::frmParameter> ui;
    GridEditor* parameters = nullptr;
    GridEditor* questions = nullptr;
    /// The paramid whose questions the lower grid shows, empty for a parameter that is not stored; nothing
    /// when they could not be read.
    std::optional<QString> questionsOf;
};
