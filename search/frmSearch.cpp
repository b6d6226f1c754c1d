// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/frmSearch.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "ui_frmSearch.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 13;
constexpr QStringView actionTable = u"Improvement Plan";

// Columns of the list.
constexpr int dateColumn = 0;
constexpr int customerColumn = 2;
constexpr int tableColumn = 3;
constexpr int idColumn = 4;

} // namespace

frmSearch::frmSearch() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmSearch>()) {
    ui->setupUi(this);
    ui->lsvDtls->setSelectionMode(QAbstractItemView::SingleSelection);
    ui->lsvDtls->setColumns({{u"Date"_s, 0.12},
                             {u"Description"_s, 0.5},
                             {u"Customer Name"_s, 0.2},
                             {u"Found In"_s, 0.18},
                             {u"Id"_s, 0}});
    connectEvents();
}

frmSearch::~frmSearch() = default;

void frmSearch::connectEvents() {
    const auto isEnter = [](int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; };
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmSearch::cmdOK_Click);
    connect(ui->txtKeyword, &QLineEdit::returnPressed, this, &frmSearch::cmdOK_Click);
    connect(ui->txtKeyword, &QLineEdit::textChanged, this, &frmSearch::txtKeyword_Change);
    connect(ui->lsvDtls, &forms::ListView::DblClick, this, &frmSearch::jump);
    connect(ui->lsvDtls, &forms::ListView::KeyDown, this, [this, isEnter](int key) {
        if (isEnter(key))
            jump();
    });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

void frmSearch::onLoad() {
    toCenterForm(*this);
    blnSearchToFeedback = false;
    blnSearchToImprovement = false;
    blnSearchOpen = false;
    strSearchKeywords.clear();
    toAddFiledsForSearch();
}

void frmSearch::onQueryUnload(bool&) {
    blnSearchOpen = false;
}

void frmSearch::toAddFiledsForSearch() {
    for (const QString& field : {u"Survey"_s, u"Perception"_s, u"Action"_s})
        ui->lstFields->AddItem(field);
}

bool frmSearch::hasKeywords() const {
    return !ui->txtKeyword->text().trimmed().isEmpty();
}

void frmSearch::txtKeyword_Change() {
    if (!hasKeywords())
        ui->lsvDtls->Clear();
}

void frmSearch::cmdOK_Click() {
    if (!hasKeywords())
        return;
    const Busy busy(*this);
    toSplitKeywords();
    toFillListView();
}

void frmSearch::toSplitKeywords() {
    guarded([this] {
        fillWorkTable([this] {
            cnnMain->Execute(u"delete * from search"_s);
            for (const SearchPass pass :
                 {SearchPass::Objective, SearchPass::Descriptive, SearchPass::Action}) {
                const QStringList keywords = keywordsOf(toStoredText(ui->txtKeyword->text().trimmed()));
                cnnMain->Execute(hitInsertion(pass, keywords));
            }
        });
    });
}

void frmSearch::toFillListView() {
    guarded(u"Error :"_s, [this] {
        ui->lsvDtls->Clear();
        ado::Recordset search(u"select * from search"_s, *cnnMain);
        const ado::Field fields[] = {search["sdate"], search["Desc"], search["custname"], search["tablename"],
                                     search["Id"]};
        std::vector<QStringList> hits;
        for (; !search.Eof(); search.MoveNext()) {
            QStringList& hit = hits.emplace_back();
            for (const ado::Field& field : fields)
                hit << field.Text();
        }
        showDone(counted(qsizetype(hits.size()), u"hit"_s));
        ui->lsvDtls->setItems(std::move(hits));
    });
}

void frmSearch::jump() {
    const std::vector<int> chosen = ui->lsvDtls->SelectedRows();
    if (chosen.empty())
        return;
    const int row = chosen.front();
    const QString id = ui->lsvDtls->Text(row, idColumn);
    const QString tablename = ui->lsvDtls->Text(row, tableColumn);
    intSearchIndex = row + 1;
    blnSearchOpen = true;
    strSearchKeywords = id;
    blnSearchToImprovement = tablename == actionTable;
    blnSearchToFeedback = !blnSearchToImprovement;
    toOpenSearchHit(id, tablename);
}

void frmSearch::toOpenSearchHit(const QString& id, const QString& tablename) {
    bool isThere = false;
    const bool opened = guarded(u"Error :"_s, [&] {
        ado::Recordset search(u"select * from search where tablename='"_s + tablename + u"' and ID=" + id,
                              *cnnMain);
        isThere = !search.Eof();
        if (!isThere)
            return;
        search.Close();
        const int row = intSearchIndex - 1;
        Shell::current()->showHit({.customer = ui->lsvDtls->Text(row, customerColumn),
                                   .date = ui->lsvDtls->Text(row, dateColumn),
                                   .isAction = tablename == actionTable});
    });
    if (!opened || !isThere) // so that no form opened later jumps to it
        blnSearchToFeedback = blnSearchToImprovement = false;
}
