// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmErase.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "core/base/progress.h"
#include "core/base/shell.h"
#include "exchange/fewlines.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmErase.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 222;

} // namespace

frmErase::frmErase() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmErase>()) {
    ui->setupUi(this);
    ui->lsvSteps->setColumns({{u"Rows"_s, 0.12}, {u"What"_s, 0.88}});
    connect(ui->opnKeep, &QRadioButton::toggled, this, &frmErase::showPlan);
    connect(ui->chkRename, &QCheckBox::toggled, this, &frmErase::showPlan);
    connect(ui->cmdErase, &QPushButton::clicked, this, &frmErase::cmdErase_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

frmErase::~frmErase() = default;

void frmErase::onLoad() {
    toCenterForm(*this);
    ui->cmdCancel->setFocus();
}

std::optional<ErasureOutcome> frmErase::erase(const Person& person) {
    done.reset();
    frmErase& form = instance();
    form.show(person);
    form.ShowModal();
    return std::exchange(done, std::nullopt);
}

void frmErase::show(const Person& erased) {
    person = erased;
    showPlan();
    showCopies();
    ui->chkRename->setChecked(!plan.hasNamesake);
    if (plan.hasNamesake)
        ui->chkRename->setText(ui->chkRename->text() + u" (another respondent has it too)");
    ui->lblWhat->setText(
        u"%1 is erased. The new name is \"%2\". No copy of the store is made before, and erasing cannot be "
        "undone."_s.arg(person.title(), plan.newName));
}

ErasureChoice frmErase::choice() const {
    return {.keepsMarks = ui->opnKeep->isChecked(), .renamesIn = ui->chkRename->isChecked()};
}

void frmErase::showPlan() {
    std::vector<QStringList> rows;
    guarded([this] {
        plan = planErasure(person, choice());
        files = findPersonFiles(person);
    });
    for (const ErasureStep& step : plan.steps)
        rows.push_back({QString::number(step.rows), step.what});
    for (const PersonFile& file : files)
        rows.push_back({file.isOwn ? u"File"_s : u"-"_s,
                        QFileInfo(file.path).fileName() +
                            (file.isOwn ? u" is deleted"_s
                                        : u" stays: another respondent has a file of this name, or it is no "
                                          "survey file"_s)});
    ui->lsvSteps->setItems(std::move(rows));
}

void frmErase::showCopies() {
    const Busy searching(*this, u"Searching the copies of the store......"_s);
    for (const PersonCopy& copy : findPersonCopies(person, plan.newName, listBackups(strDatabasePath))) {
        auto* item = new QListWidgetItem(QFileInfo(copy.path).fileName() +
                                             (copy.isReadable ? QString() : u" (cannot be read)"_s),
                                         ui->lstCopies);
        item->setData(Qt::UserRole, copy.path);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    if (ui->lstCopies->count() > 0)
        return;
    ui->lblCopies->setText(u"No copy of the store in its folder of copies holds the person."_s);
    ui->lstCopies->setEnabled(false);
}

QStringList frmErase::copies(bool isTicked) const {
    QStringList paths;
    for (int i = 0; i < ui->lstCopies->count(); ++i) {
        const QListWidgetItem* item = ui->lstCopies->item(i);
        if ((item->checkState() == Qt::Checked) == isTicked)
            paths << item->data(Qt::UserRole).toString();
    }
    return paths;
}

QStringList frmErase::effects() const {
    QStringList lines;
    for (const ErasureStep& step : plan.steps)
        lines << step.line();
    for (const PersonFile& file : files) {
        if (file.isOwn)
            lines << u"Deleted: "_s + QFileInfo(file.path).fileName();
    }
    for (const QString& copy : copies(true))
        lines << u"Removed: "_s + QFileInfo(copy).fileName();
    return lines;
}

void frmErase::cmdErase_Click() {
    showPlan();
    if (forms::msgBox(u"Erase "_s + person.title() + u"? This cannot be undone.\r\n\r\n" + fewOf(effects()),
                      style::yesNo + style::critical + style::secondButton,
                      titleWithVersion) != forms::Answer::Yes)
        return;
    ErasureOutcome outcome;
    outcome.respondentid = person.respondentid;
    outcome.isOnServer = !cnnMain->IsFile();
    const Busy erasing(*this, u"Erasing......"_s);
    if (!guarded([&] { outcome.plan = erasePerson(person, choice(), forms::nowHook()); }))
        return;
    for (const PersonFile& file : files) {
        if (file.isOwn)
            outcome.remove(file.path, outcome.deletedFiles);
        else
            outcome.faults << QDir::toNativeSeparators(file.path) +
                                  u": another respondent has a file of this name, or it is no survey file";
    }
    for (const QString& copy : copies(true))
        outcome.remove(copy, outcome.removedCopies);
    outcome.keptCopies = copies(false);
    try {
        Progress progress(*this, 0);
        progress.step(u"Writing the file anew"_s);
        if (!rewriteStore([&] { return progress.goOn(); }))
            outcome.rewriteFault = u"cancelled"_s;
    } catch (const Failure& failure) {
        outcome.rewriteFault = failure.text();
        cnnMain->Errors().Clear(); // said in the protocol
    }
    done = outcome;
    Unload();
}
