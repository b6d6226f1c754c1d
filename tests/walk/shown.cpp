// SPDX-License-Identifier: GPL-3.0-or-later
// Compares the forms with the rows that the oracle has read.
#include "tests/walk/oracle.h"

#include <algorithm>

namespace walk {
QString textOf(const QWidget& form, const char* name) {
    const QWidget* found = child<QWidget>(form, name);
    if (const auto* label = qobject_cast<const QLabel*>(found))
        return label->text();
    if (const auto* box = qobject_cast<const QLineEdit*>(found))
        return box->text();
    if (const auto* list = qobject_cast<const forms::ListBox*>(found))
        return list->Text();
    const auto* combo = qobject_cast<const forms::ComboBox*>(found);
    return combo ? combo->Text() : QString();
}

QString currentCell(const QWidget& form, const char* grid, int column) {
    const auto* found = child<forms::MSHFlexGrid>(form, grid);
    return found->TextMatrix(found->Row(), column);
}

QWidget* activeForm() {
    const QMdiSubWindow* active = MDIMain::instance().findChild<QMdiArea*>()->activeSubWindow();
    return active ? active->widget() : nullptr;
}

QWidgetList loadedForms() {
    QWidgetList result;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (qobject_cast<forms::Form*>(widget) && widget->isVisible())
            result << widget;
    }
    return result;
}

/// The stored rows of the lower grid must belong to the current row of the upper grid.
QString Oracle::faultOfPairedGrids(const QWidget& form, const char* upper, int upperKey, const char* lower,
                                   int lowerKey, const QString& table) const {
    const int ownerField = table == u"respondent" ? 1 : 3;
    const QString ownerId = currentCell(form, upper, upperKey);
    const auto* grid = child<forms::MSHFlexGrid>(form, lower);
    for (int row = 1; row < grid->Rows(); ++row) {
        const auto stored = rows.find(table + u'|' + grid->TextMatrix(row, lowerKey));
        if (stored != rows.end() && stored->second.value(ownerField) != ownerId)
            return u"%1 shows a row of %2 under %3"_s.arg(QLatin1StringView(lower),
                                                          stored->second.value(ownerField), ownerId);
    }
    return {};
}

/// The respondents that are typed and not stored, if there are several.
QStringList Oracle::newRowsOf(const QWidget& form) {
    QStringList result;
    const auto* grid = child<forms::MSHFlexGrid>(form, "grdRespondentDtls");
    for (int row = 1; grid && row < grid->Rows(); ++row) {
        if (grid->TextMatrix(row, 4).isEmpty())
            result << grid->TextMatrix(row, 1) + u'|' + grid->TextMatrix(row, 2);
    }
    return result.size() > 1 ? result.replaceInStrings(u"'"_s, u"\u2019"_s) : QStringList();
}

/// A save without a message must have stored every new row.
QString Oracle::faultOfNewRows() const {
    if (messageShown || writers.hasOthers() || !commands.contains(u"clicked cmdSaveRespondent") ||
        owner.customers.contains(QString()))
        return {};
    for (const QString& texts : entered) {
        const bool isStored = std::any_of(rows.begin(), rows.end(), [&](const auto& entry) {
            const QString mine = entry.second.value(2) + u'|' + entry.second.value(3);
            return entry.first.startsWith(u"respondent|") && owner.customers.contains(entry.second[1]) &&
                   mine.compare(texts, Qt::CaseInsensitive) == 0;
        });
        if (!isStored)
            return u"the new respondent \"%1\" has not been saved"_s.arg(texts);
    }
    return {};
}

QString Oracle::faultOfForms() const {
    for (const QWidget* form : loadedForms()) {
        for (const auto* list : form->findChildren<forms::ListBox*>()) {
            const auto clicked = clickedTexts.find(list);
            if (list->SelCount() == 1 && clicked != clickedTexts.end() && clicked->second != list->Text() &&
                !list->signalsBlocked())
                return u"%1 chose \"%2\" without a Click"_s.arg(list->objectName(), list->Text());
        }
        for (const auto* grid : form->findChildren<forms::MSHFlexGrid*>()) {
            const QModelIndex current = grid->currentIndex();
            if (grid->selectionMode() != QAbstractItemView::NoSelection && grid->Row() >= 1 &&
                current.isValid() &&
                (current.row() + 1 != grid->Row() || !grid->selectionModel()->isSelected(current)))
                return u"%1 does not mark its current row %2"_s.arg(grid->objectName()).arg(grid->Row());
        }
        for (const auto* box : form->findChildren<QLineEdit*>()) {
            const auto* grid =
                qobject_cast<forms::MSHFlexGrid*>(box->parent() ? box->parent()->parent() : nullptr);
            if (!grid || !box->isVisible())
                continue;
            if (box->text() != grid->Text())
                return u"%1 shows \"%2\" over \"%3\""_s.arg(box->objectName(), box->text(), grid->Text());
            const QRect view = grid->viewport()->rect();
            if (box->hasFocus() && view.height() >= box->height() && !view.intersects(box->geometry()))
                return box->objectName() + u" takes typing out of sight"_s;
        }
        QString found;
        if (form->objectName() == u"frmCustomer")
            found = faultOfPairedGrids(*form, "grdCustomerDtls", 5, "grdRespondentDtls", 4, u"respondent"_s);
        else if (form->objectName() == u"frmParameter")
            found = faultOfPairedGrids(*form, "grdParameterDtls", 2, "grdQuestionDtls", 3, u"questions"_s);
        if (!found.isEmpty())
            return found;
    }
    return {};
}

/// The active form must show the stored rows of its owner.
QString Oracle::faultOfActiveForm() {
    const QWidget* form = activeForm();
    if (!form)
        return {};
    const Owner shown = ownerOf(form, Names::Stored);
    if (shown.form == u"frmNewSurvey")
        return faultOfQuestionnaire(*form, shown, textOf(*form, "lblSurveyDate"));
    if (shown.form == u"frmEditExistingSurvey")
        return faultOfQuestionnaire(*form, shown, textOf(*form, "lstSurvetDates"));
    if (shown.form == u"frmImprovementPlan")
        return faultOfActions(*form, shown);
    if (shown.form == u"frmFeedBackObj" && !currentCell(*form, "grdDtls", 1).isEmpty() &&
        textOf(*form, "lblSDate") != textOf(*form, "lstSurveyDates"))
        return u"frmFeedBackObj shows another date than is chosen"_s;
    return {};
}

QString Oracle::faultOfQuestionnaire(const QWidget& form, const Owner& shown, const QString& date) {
    QStringList onShow;
    const auto* grid = child<forms::MSHFlexGrid>(form, "grdParamAndQuest");
    for (int row = 1; row < grid->Rows() - 1; ++row)
        onShow << grid->TextMatrix(row, 1) + u": " + grid->TextMatrix(row, 2);
    QStringList stored;
    const auto fieldsOf = [&](const char16_t* table, const QString& id) {
        const auto found = rows.find(QString::fromUtf16(table) + u'|' + id);
        return found == rows.end() ? QStringList() : found->second;
    };
    for (const auto& [key, asked] : rows) {
        if (!key.startsWith(u"responquesindex|") || !shown.respondents.contains(asked[0]))
            continue;
        const QStringList survey = fieldsOf(u"survey", asked[2]);
        const QStringList question = fieldsOf(u"questions", asked[1]);
        if (survey.value(1) == date && shown.customers.contains(survey.value(2)) && !question.isEmpty())
            stored << fieldsOf(u"parameter", question[3]).value(1) + u": " + question[1];
    }
    onShow.sort();
    stored.sort();
    const QString which = date + shown.respondents.values().join(u'|');
    if (onShow == stored)
        maybeUnread.remove(shown.form);
    if (onShow == stored || writers.hasOthers())
        lastRead[shown.form] = which;
    const bool isAsItWas =
        maybeUnread.contains(shown.form) && (onShow.isEmpty() || which == lastRead[shown.form]);
    if (onShow == stored || isAsItWas || shown.respondents.size() != 1)
        return {};
    return u"%1 shows [%2] where [%3] is stored"_s.arg(shown.form, onShow.join(u", "_s),
                                                       stored.join(u", "_s));
}

QString Oracle::faultOfActions(const QWidget& form, const Owner& shown) const {
    const auto* list = child<forms::ListView>(form, "lsvDtls");
    if (shown.customers.size() != 1 || child<forms::ListBox>(form, "lstCusName")->SelCount() != 1)
        return {};
    for (int row = 0; row < list->ListCount(); ++row) {
        const auto isListed = [&](const auto& entry) {
            return entry.first.startsWith(u"actionplan") && shown.customers.contains(entry.second[1]) &&
                   entry.second[2] == list->Text(row, 1);
        };
        if (std::none_of(rows.begin(), rows.end(), isListed) &&
            std::none_of(former.begin(), former.end(), isListed))
            return u"frmImprovementPlan lists an action of %1 that the chosen customer does not have"_s.arg(
                list->Text(row, 1));
    }
    return {};
}

QString Oracle::faultWhenIdle() {
    if (cnnMain && cnnMain->InTransaction())
        return u"a transaction is open"_s;
    if (QGuiApplication::overrideCursor())
        return u"the hourglass is left behind"_s;
    const QString word = MDIMain::instance().stsBar->Panels(1).Text();
    if (!word.isEmpty() && word != u"Removing....") // stays if there is no date to remove from
        return u"the status bar still says \"%1\""_s.arg(word);
    return {};
}
} // namespace walk
