// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/programsetting.h"

#include "core/store/store.h"
#include "platform/ado/session.h"

using namespace Qt::StringLiterals;

namespace {

const QString folderSetting = u"SurveyFolder"_s;

struct KnownFolder {
    std::weak_ptr<ado::Session> readFrom;
    QString folder;
};
KnownFolder known;

QString selectSetting(const QString& name) {
    return u"select * from programsetting where name='"_s + name + u'\'';
}

} // namespace

QString readProgramSetting(const QString& name) {
    if (!cnnMain->session()->isTable(u"programsetting"_s))
        return {}; // a store of version 1
    ado::Recordset setting(selectSetting(name), *cnnMain);
    return setting.Eof() ? QString() : setting["content"].Text();
}

void writeProgramSetting(const QString& name, const QString& content) {
    if (content.isEmpty()) {
        cnnMain->Execute(u"delete * from programsetting where name='"_s + name + u'\'');
        return;
    }
    ado::Recordset setting(selectSetting(name), *cnnMain, ado::Recordset::Lock::Optimistic);
    if (setting.Eof()) {
        setting.AddNew();
        setting["name"] = name;
    }
    setting["content"] = content;
    setting.Update();
}

QString surveyFolder() {
    if (cnnMain && cnnMain->State() == ado::StateOpen && known.readFrom.lock() != cnnMain->session())
        known = {cnnMain->session(), readSurveyFolderSetting()};
    return known.folder.isEmpty() ? homeDirectory() : known.folder;
}

QString readSurveyFolderSetting() {
    return readProgramSetting(folderSetting);
}

void writeSurveyFolderSetting(const QString& folder) {
    writeProgramSetting(folderSetting, folder);
    known = {};
}
