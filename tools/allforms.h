// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/frmCompareGroups.h"
#include "analysis/frmDateToDate.h"
#include "analysis/frmDtoDActionPlan.h"
#include "analysis/frmDtoDSatisfactionOverview.h"
#include "analysis/frmPerformanceMatrix.h"
#include "analysis/frmSatisfactionIndex.h"
#include "analysis/frmTargets.h"
#include "core/base/gblGlobal.h"
#include "core/frmAboutUs.h"
#include "core/frmBackups.h"
#include "core/frmCleanUp.h"
#include "core/frmCompanyName.h"
#include "core/frmErase.h"
#include "core/frmPerson.h"
#include "core/frmStore.h"
#include "exchange/frmCheckFiles.h"
#include "exchange/frmExportAnswers.h"
#include "exchange/frmHandOver.h"
#include "exchange/frmLogDetails.h"
#include "exchange/frmMessage.h"
#include "exchange/frmReading.h"
#include "exchange/frmReadingRuns.h"
#include "exchange/frmResponseSettings.h"
#include "exchange/frmResponses.h"
#include "exchange/frmSetting.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "reference/frmSegments.h"
#include "search/frmSearch.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmPasteSurvey.h"
#include "survey/frmSelectSurvey.h"

#include <vector>

/// A form that can be opened by name.
struct AnyForm {
    const char* name;
    forms::Form& (*open)(); ///< opens its owner form first, if it has one
    void (*close)();        ///< closes the owner form too
};

template <class FormClass> AnyForm plainForm(const char* name) {
    return {name,
            []() -> forms::Form& {
                FormClass::instance().Show();
                return FormClass::instance();
            },
            [] { FormClass::unload(); }};
}

/// A form that needs its owner form.
template <class FormClass, class Owner> AnyForm ownedForm(const char* name) {
    return {name,
            []() -> forms::Form& {
                Owner::instance().Show();
                FormClass::instance().Show();
                return FormClass::instance();
            },
            [] {
                FormClass::unload();
                Owner::unload();
            }};
}

/// All forms except the splash form.
inline std::vector<AnyForm> allForms() {
    return {plainForm<frmAboutUs>("frmAboutUs"),
            plainForm<frmCustomer>("frmCustomer"),
            plainForm<frmParameter>("frmParameter"),
            plainForm<frmSelectSurvey>("frmSelectSurvey"),
            ownedForm<frmNewSurvey, frmSelectSurvey>("frmNewSurvey"),
            plainForm<frmEditExistingSurvey>("frmEditExistingSurvey"),
            plainForm<frmPasteSurvey>("frmPasteSurvey"),
            plainForm<frmSetting>("frmSetting"),
            plainForm<frmFeedBackObj>("frmFeedBackObj"),
            plainForm<frmReading>("frmReading"),
            plainForm<frmCheckFiles>("frmCheckFiles"),
            plainForm<frmReadingRuns>("frmReadingRuns"),
            plainForm<frmExportAnswers>("frmExportAnswers"),
            plainForm<frmTargets>("frmTargets"),
            plainForm<frmResponses>("frmResponses"),
            ownedForm<frmHandOver, frmResponses>("frmHandOver"),
            ownedForm<frmResponseSettings, frmResponses>("frmResponseSettings"),
            plainForm<frmSegments>("frmSegments"),
            plainForm<frmCompareGroups>("frmCompareGroups"),
            plainForm<frmCompanyName>("frmCompanyName"),
            plainForm<frmPerson>("frmPerson"),
            ownedForm<frmErase, frmPerson>("frmErase"),
            plainForm<frmCleanUp>("frmCleanUp"),
            plainForm<frmBackups>("frmBackups"),
            plainForm<frmStore>("frmStore"),
            plainForm<frmLogDetails>("frmLogDetails"),
            ownedForm<frmMessage, frmLogDetails>("frmMessage"),
            plainForm<frmSatisfactionIndex>("frmSatisfactionIndex"),
            plainForm<frmPerformanceMatrix>("frmPerformanceMatrix"),
            plainForm<frmDateToDate>("frmDateToDate"),
            plainForm<frmDtoDSatisfactionOverview>("frmDtoDSatisfactionOverview"),
            plainForm<frmDtoDActionPlan>("frmDtoDActionPlan"),
            plainForm<frmImprovementPlan>("frmImprovementPlan"),
            plainForm<frmSearch>("frmSearch")};
}
