// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "reference/cataloguetable.h"

#include <memory>

namespace Ui {
class frmParameter;
}

/// Edits the parameters and the questions (type Score or Descriptive) of the current parameter. Typing
/// changes the grids only; the add and save commands write a whole grid in one transaction.
class frmParameter : public forms::DefaultForm<frmParameter> {
    Q_OBJECT

public:
    ~frmParameter() override;
    QLineEdit* txtParameterDtls() const;
    /// Edits the current parameter.
    void focusParameter();

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
    void txtQuestionDtls_Change(const QString& text);
    QString parameterSelect(int row) const;
    QString questionSelect(int row) const;
    void writeQuestion(int row, ado::Recordset& question) const;
    bool confirmDeletion(const QString& paramid);

    std::unique_ptr<Ui::frmParameter> ui;
    CatalogueTable* parameters = nullptr;
    CatalogueTable* questions = nullptr;
};
