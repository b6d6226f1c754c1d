// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/menus.h"

const std::vector<MenuEntry>& menuEntries() {
    using enum MenuEntry::State;
    static const std::vector<MenuEntry> entries{
        {"mnuFile", "", "&File", "", Menu},
        {"mnuCusAndResp", "mnuFile", "&Customer And Respondent", "Ctrl+U", Open},
        {"mnuPrameter", "mnuFile", "&Parameter", "Ctrl+P", Open},
        {"mnuSettings", "mnuFile", "&Settings", "", Open},
        {"mnuDash", "mnuFile", "-", "", Open},
        {"mnuExit", "mnuFile", "E&xit", "Ctrl+Q", Open},
        {"mnuSurveyDefine", "", "&Define Survey", "", Menu},
        {"mnuNewSurvey", "mnuSurveyDefine", "&New Survey", "Ctrl+N", Open},
        {"mnuEditSurvey", "mnuSurveyDefine", "&Edit Survey", "Ctrl+E", Open},
        {"mnuEmailSurveys", "mnuSurveyDefine", "Email &Surveys", "Ctrl+M", Later},
        {"mnuFeedBack", "", "FeedBac&k", "", Menu},
        {"mnuObjective", "mnuFeedBack", "&Survey", "Ctrl+O", Open},
        {"mnuReadMultipleFiles", "mnuFeedBack", "&Read Multiple Files", "Ctrl+R", Later},
        {"mnuAnalysis", "", "&Analysis", "", Menu},
        {"mnuSurveyResponseAnalysis", "mnuAnalysis", "&Survey Response Analysis", "", Later},
        {"mnuSatisfactionOverviewAnalysis", "mnuAnalysis", "Satisfaction &Overview Analysis", "", Hidden},
        {"mnuImprovementPlanAnalysis", "mnuAnalysis", "Improvement Plan &Analysis", "", Later},
        {"mnuSatisfactionIndex", "mnuAnalysis", "Satisfaction &Index", "", Open},
        {"mnuPerformanceMatrix", "mnuAnalysis", "&Performance Matrix", "", Later},
        {"mnuImprovementPlan", "", "&Improvement Tracking", "", Later},
        {"mnuSearch", "", "&Search", "", Later},
        {"mnuHelp", "", "&Help", "", Menu},
        {"mnuGettingStarted", "mnuHelp", "&Getting Started", "", Open},
        {"mnuGWLHelp", "mnuHelp", "&Contents", "F1", Open},
        {"mnuDash5", "mnuHelp", "-", "", Open},
        {"mnuAbout", "mnuHelp", "Abo&ut", "Ctrl+D", Open},
        {"mnuEdit", "", "&Edit", "", HiddenMenu},
        {"mnuDelete", "mnuEdit", "&Delete", "", Open},
        {"mnuUpdateStatus", "mnuEdit", "&Update Status", "", Menu},
        {"mnucomplete", "mnuUpdateStatus", "Complete", "", Open},
        {"mnunotcomplete", "mnuUpdateStatus", "Not Complete", "", Open},
    };
    return entries;
}

const std::vector<ButtonMenu>& customerButtonMenus() {
    static const std::vector<ButtonMenu> menus{
        {"Customer", "&Customer And Respondent", true},
        {"Parameter", "&Parameter", true},
        {"Question", "&New/Edit Survey", true}, // known, and opens no form
        {"", "-", true},
        {"ObjAndDesc", "&Survey", true},
        {"Improvement", "&Improvement Plan", false},
    };
    return menus;
}
