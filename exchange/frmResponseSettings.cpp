// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/frmResponseSettings.h"

#include "core/base/changedrow.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/programsetting.h"
#include "core/store/transaction.h"
#include "ui_frmResponseSettings.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 219;
const QString rowName = u"Response settings"_s;

/// A setting as its text; empty for the default, so that a later default counts where nothing was set.
struct SettingText {
    QString name;
    QString shown; ///< what the form calls it
    QString content;
};

std::vector<SettingText> textsOf(const ResponseSettings& settings) {
    const ResponseSettings defaults;
    const auto number = [](int value, int standard) {
        return value == standard ? QString() : QString::number(value);
    };
    const auto text = [](const QString& value, const QString& standard) {
        return value.trimmed().isEmpty() || value == standard ? QString() : value;
    };
    return {{responsesetting::days.toString(), u"Due"_s, number(settings.days, defaults.days)},
            {responsesetting::target.toString(), u"Target"_s, number(settings.target, defaults.target)},
            {responsesetting::subject.toString(), u"Subject of reminders"_s,
             text(settings.subject, defaults.subject)},
            {responsesetting::text.toString(), u"Text of reminders"_s, text(settings.text, defaults.text)}};
}

/// What the user has changed and someone else as well.
ChangedRow changedMeanwhile(const ResponseSettings& read, const ResponseSettings& mine) {
    ChangedRow changed{rowName, {}};
    const std::vector<SettingText> before = textsOf(read), stored = textsOf(readResponseSettings());
    for (std::size_t i = 0; const SettingText& setting : textsOf(mine)) {
        addIfChanged(changed, {setting.shown, before[i].content, stored[i].content, setting.content});
        ++i;
    }
    return changed;
}

void write(const ResponseSettings& read, const ResponseSettings& mine, const Settlement& settlement) {
    const std::vector<SettingText> before = textsOf(read);
    Transaction transaction;
    settlement.require(rowName, changedMeanwhile(read, mine));
    for (std::size_t i = 0; const SettingText& setting : textsOf(mine)) {
        if (setting.content != before[i++].content && !settlement.isLeft(rowName, setting.shown))
            writeProgramSetting(setting.name, setting.content);
    }
    transaction.Commit();
}

} // namespace

frmResponseSettings::frmResponseSettings()
    : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmResponseSettings>()) {
    ui->setupUi(this);
    ui->lblFields->setText(u"Fields: {"_s + reminderFields().join(u"}, {"_s) + u'}');
    connect(ui->cmdRestore, &QPushButton::clicked, this, &frmResponseSettings::cmdRestore_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmResponseSettings::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmResponseSettings::~frmResponseSettings() = default;

void frmResponseSettings::onLoad() {
    toCenterForm(*this);
    ui->cmdOK->setEnabled(guarded([this] { asRead = readResponseSettings(); }));
    ui->spnDays->setValue(asRead.days);
    ui->spnTarget->setValue(asRead.target);
    ui->txtSubject->setText(asRead.subject);
    ui->txtText->setPlainText(asRead.text);
}

bool frmResponseSettings::onKeyDown(int key) {
    return (!ui->txtText->hasFocus() && pressOnEnter(key, *ui->cmdOK)) || DefaultForm::onKeyDown(key);
}

void frmResponseSettings::cmdRestore_Click() {
    ui->txtSubject->setText(ResponseSettings::defaultSubject());
    ui->txtText->setPlainText(ResponseSettings::defaultText());
}

ResponseSettings frmResponseSettings::shownSettings() const {
    return {.days = ui->spnDays->value(),
            .target = ui->spnTarget->value(),
            .subject = ui->txtSubject->text(),
            .text = ui->txtText->toPlainText()};
}

void frmResponseSettings::cmdOK_Click() {
    const ResponseSettings mine = shownSettings();
    Settlement settlement;
    if (!guarded([&] { settlement.note(rowName, changedMeanwhile(asRead, mine)); }) || !settlement.ask())
        return;
    if (!guarded([&] { write(asRead, mine, settlement); }))
        return;
    showDone(u"Settings saved"_s);
    Unload();
}
