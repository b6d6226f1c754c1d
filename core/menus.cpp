// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/menus.h"

#include "analysis/frmCompareGroups.h"
#include "analysis/frmDateToDate.h"
#include "analysis/frmDtoDActionPlan.h"
#include "analysis/frmDtoDSatisfactionOverview.h"
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "analysis/frmTargets.h"
#include "core/MDIMain.h"
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/frmAboutUs.h"
#include "core/frmBackups.h"
#include "core/frmCleanUp.h"
#include "core/frmCompanyName.h"
#include "core/frmPerson.h"
#include "core/frmStore.h"
#include "exchange/frmExportAnswers.h"
#include "exchange/frmLogDetails.h"
#include "exchange/frmReading.h"
#include "exchange/frmReadingRuns.h"
#include "exchange/frmResponses.h"
#include "exchange/frmSetting.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/desktop/opener.h"
#include "platform/forms/msgbox.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "reference/frmSegments.h"
#include "search/frmSearch.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmSelectSurvey.h"

using namespace Qt::StringLiterals;

namespace {

// Commands of the menu entries.

template <class FormClass> void show() {
    FormClass::instance().Show();
}

template <void (*open)()> void underHourglass() {
    const Busy opening;
    open();
}

template <void (*open)()> void withWord() {
    const Busy opening(u"Opening Form..."_s);
    open();
}

void showCustomer() {
    frmCustomer& form = frmCustomer::instance();
    form.Show();
    if (form.txtCustomerDtls()->isVisible())
        form.txtCustomerDtls()->setFocus();
}

void showParameter() {
    frmParameter& form = frmParameter::instance();
    form.Show();
    form.focusParameter();
}

void showCustomerAlone() {
    frmParameter::unload();
    showCustomer();
}

void showParameterAlone() {
    frmCustomer::unload();
    showParameter();
}

void showFeedback() {
    frmFeedBackObj& form = frmFeedBackObj::instance();
    form.Show();
    if (form.txtDtls()->isVisible())
        form.txtDtls()->setFocus();
}

void showReading() {
    blnExistingSurvey = false;
    frmReading::instance().Show();
}

void pressCustomer() {
    underHourglass<showCustomer>();
    showStatus({});
}

void closeForms() {
    frmCustomer::unload();
    frmParameter::unload();
    frmFeedBackObj::unload();
    frmImprovementPlan::unload();
}

void closeMainWindow() {
    MDIMain::instance().close();
}

void showSlides() {
    const QString slides = homeDirectory() + u"/gettingstarted.pps";
    if (desktop::openFile(slides) < desktop::SmallestSuccess)
        forms::msgBox(u"Error running "_s + slides +
                          u"...\r\nPlease ensure that you have MS PowerPoint installed.",
                      forms::style::information, u"Gaugwell"_s);
}

void showContents() {
    MDIMain::instance().showHelp(forms::HelpContents, 0);
}

void deleteActions() {
    frmImprovementPlan& form = frmImprovementPlan::instance();
    if (forms::msgBox(u"Do you want to delete"_s, forms::style::yesNo + forms::style::secondButton,
                      titleWithVersion) == forms::Answer::Yes) {
        form.toDeleteActionForSelectedCustomer();
        form.toFillListView();
    }
}

template <int status> void updateStatus() {
    frmImprovementPlan& form = frmImprovementPlan::instance();
    form.intStatus = status;
    form.toupdateStatus();
}

using enum MenuEntry::State;

constexpr MenuEntry entries[]{
    {.name = "mnuFile", .caption = "&File", .state = Menu},
    {.name = "mnuCusAndResp",
     .parent = "mnuFile",
     .caption = "&Customer And Respondent",
     .shortcut = "Ctrl+U",
     .run = withWord<showCustomerAlone>},
    {.name = "mnuPrameter",
     .parent = "mnuFile",
     .caption = "&Parameter",
     .shortcut = "Ctrl+P",
     .run = withWord<showParameterAlone>},
    {.name = "mnuSettings",
     .parent = "mnuFile",
     .caption = "&Settings",
     .run = underHourglass<show<frmSetting>>},
    {.name = "mnuDash", .parent = "mnuFile", .caption = "-"},
    {.name = "mnuExit",
     .parent = "mnuFile",
     .caption = "E&xit",
     .shortcut = "Ctrl+Q",
     .run = closeMainWindow},
    {.name = "mnuSurveyDefine", .caption = "&Define Survey", .state = Menu},
    {.name = "mnuNewSurvey",
     .parent = "mnuSurveyDefine",
     .caption = "&New Survey",
     .shortcut = "Ctrl+N",
     .run = withWord<show<frmSelectSurvey>>},
    {.name = "mnuEditSurvey",
     .parent = "mnuSurveyDefine",
     .caption = "&Edit Survey",
     .shortcut = "Ctrl+E",
     .run = withWord<show<frmEditExistingSurvey>>},
    {.name = "mnuEmailSurveys",
     .parent = "mnuSurveyDefine",
     .caption = "Email &Surveys",
     .shortcut = "Ctrl+M",
     .run = withWord<show<frmLogDetails>>},
    {.name = "mnuFeedBack", .caption = "FeedBac&k", .state = Menu},
    {.name = "mnuObjective",
     .parent = "mnuFeedBack",
     .caption = "&Survey",
     .shortcut = "Ctrl+O",
     .run = withWord<showFeedback>},
    {.name = "mnuReadMultipleFiles",
     .parent = "mnuFeedBack",
     .caption = "&Read Multiple Files",
     .shortcut = "Ctrl+R",
     .run = underHourglass<showReading>},
    {.name = "mnuAnalysis", .caption = "&Analysis", .state = Menu},
    {.name = "mnuSurveyResponseAnalysis",
     .parent = "mnuAnalysis",
     .caption = "&Survey Response Analysis",
     .run = withWord<show<frmDateToDate>>},
    {.name = "mnuSatisfactionOverviewAnalysis",
     .parent = "mnuAnalysis",
     .caption = "Satisfaction &Overview Analysis",
     .state = Hidden,
     .run = withWord<show<frmDtoDSatisfactionOverview>>},
    {.name = "mnuImprovementPlanAnalysis",
     .parent = "mnuAnalysis",
     .caption = "Improvement Plan &Analysis",
     .run = underHourglass<show<frmDtoDActionPlan>>},
    {.name = "mnuSatisfactionIndex",
     .parent = "mnuAnalysis",
     .caption = "Satisfaction &Index",
     .run = withWord<show<frmSatisfactionIndex>>},
    {.name = "mnuPerformanceMatrix",
     .parent = "mnuAnalysis",
     .caption = "&Performance Matrix",
     .run = withWord<show<frmPerformanceMatrix>>},
    {.name = "mnuImprovementPlan",
     .caption = "&Improvement Tracking",
     .run = withWord<show<frmImprovementPlan>>},
    {.name = "mnuSearch", .caption = "&Search", .run = withWord<show<frmSearch>>},
    {.name = "mnuTools", .caption = "&Tools", .state = Menu},
    {.name = "mnuReadings",
     .parent = "mnuTools",
     .caption = "&Readings...",
     .run = underHourglass<show<frmReadingRuns>>},
    {.name = "mnuResponses",
     .parent = "mnuTools",
     .caption = "R&esponses...",
     .run = underHourglass<show<frmResponses>>},
    {.name = "mnuExportAnswers",
     .parent = "mnuTools",
     .caption = "Export &Answers...",
     .run = underHourglass<show<frmExportAnswers>>},
    {.name = "mnuTargets",
     .parent = "mnuTools",
     .caption = "&Targets...",
     .run = underHourglass<show<frmTargets>>},
    {.name = "mnuSegments",
     .parent = "mnuTools",
     .caption = "Se&gments...",
     .run = underHourglass<show<frmSegments>>},
    {.name = "mnuCompareGroups",
     .parent = "mnuTools",
     .caption = "&Compare Groups...",
     .run = underHourglass<show<frmCompareGroups>>},
    {.name = "mnuPerson",
     .parent = "mnuTools",
     .caption = "&Person...",
     .run = underHourglass<show<frmPerson>>},
    {.name = "mnuCleanUp",
     .parent = "mnuTools",
     .caption = "Clean &Up...",
     .run = underHourglass<show<frmCleanUp>>},
    {.name = "mnuBackups",
     .parent = "mnuTools",
     .caption = "&Backups...",
     .run = underHourglass<show<frmBackups>>},
    {.name = "mnuCompanyName",
     .parent = "mnuTools",
     .caption = "Company &Name...",
     .run = underHourglass<show<frmCompanyName>>},
    {.name = "mnuStore", .parent = "mnuTools", .caption = "&Store...", .run = underHourglass<show<frmStore>>},
    {.name = "mnuWindows", .parent = "mnuTools", .caption = "&Windows", .state = Menu},
    {.name = "mnuHelp", .caption = "&Help", .state = Menu},
    {.name = "mnuGettingStarted", .parent = "mnuHelp", .caption = "&Getting Started", .run = showSlides},
    {.name = "mnuGWLHelp",
     .parent = "mnuHelp",
     .caption = "&Contents",
     .shortcut = "F1",
     .run = showContents},
    {.name = "mnuDash5", .parent = "mnuHelp", .caption = "-"},
    {.name = "mnuAbout",
     .parent = "mnuHelp",
     .caption = "Abo&ut",
     .shortcut = "Ctrl+D",
     .run = underHourglass<show<frmAboutUs>>},
    {.name = "mnuEdit", .caption = "&Edit", .state = HiddenMenu},
    {.name = "mnuDelete", .parent = "mnuEdit", .caption = "&Delete", .run = deleteActions},
    {.name = "mnuUpdateStatus", .parent = "mnuEdit", .caption = "&Update Status", .state = Menu},
    {.name = "mnucomplete", .parent = "mnuUpdateStatus", .caption = "Complete", .run = updateStatus<1>},
    {.name = "mnunotcomplete",
     .parent = "mnuUpdateStatus",
     .caption = "Not Complete",
     .run = updateStatus<2>},
};

constexpr MenuEntry customerDropDown[]{
    {.name = "tlbCustomer", .caption = "&Customer And Respondent", .run = withWord<showCustomer>},
    {.name = "tlbParameter", .caption = "&Parameter", .run = withWord<showParameter>},
    {.name = "tlbQuestion", .caption = "&New/Edit Survey", .run = withWord<[] {}>}, // opens no form
    {.name = "tlb", .caption = "-"},
    {.name = "tlbObjAndDesc", .caption = "&Survey", .run = withWord<show<frmFeedBackObj>>},
    {.name = "tlbImprovement", .caption = "&Improvement Plan", .run = withWord<show<frmImprovementPlan>>},
};

constexpr ToolbarButton buttons[]{
    {.name = "Customer",
     .toolTip = "Open Form",
     .picture = "form",
     .run = pressCustomer,
     .dropDown = customerDropDown},
    {.name = "Close", .toolTip = "Close Form", .picture = "close", .run = closeForms},
    {.name = "terminate", .toolTip = "End Project", .picture = "terminate", .run = endProgram},
};

} // namespace

std::span<const MenuEntry> menuEntries() {
    return entries;
}

std::span<const ToolbarButton> toolbarButtons() {
    return buttons;
}
