// SPDX-License-Identifier: GPL-3.0-or-later
#include "search/frmSearch.h"

#include "core/MDIMain.h"
#include "core/failure.h"
#include "core/gblGlobal.h"
#include "core/worktable.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
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

/// Where a pass takes the fields of a hit from.
struct Source {
    SearchPass pass;
    const char* date;
    const char* text;
    const char* id;
    const char* tablename;
};

constexpr Source sources[] = {
    {SearchPass::Objective, "surveydate", "question", "feedbackobjid", "Survey (Objective)"},
    {SearchPass::Descriptive, "surveydate", "question", "feedbackdescid", "Survey (Descriptive)"},
    {SearchPass::Action, "Date", "Action", "actionid", "Improvement Plan"},
};

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
    connect(ui->lsvDtls, &forms::ListView::DblClick, this, &frmSearch::toJump);
    connect(ui->lsvDtls, &forms::ListView::KeyDown, this, [this, isEnter](int key) {
        if (isEnter(key))
            toJump();
    });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { toShowHelpTopic(helpContext); });
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

std::optional<SearchHit> frmSearch::chosenHit() {
    const int row = intSearchIndex - 1;
    if (!loaded() || row < 0 || row >= loaded()->ui->lsvDtls->ListCount())
        return std::nullopt;
    const forms::ListView* list = loaded()->ui->lsvDtls;
    return SearchHit{list->Text(row, customerColumn), list->Text(row, dateColumn)};
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
    setMousePointer(forms::Hourglass);
    toSplitKeywords();
    toFillListView();
    setMousePointer(forms::DefaultPointer);
}

void frmSearch::toSplitKeywords() {
    guarded({.form = this}, [this] {
        toReconnect();
        toFillWorkTable([this] {
            cnnMain->Execute(u"delete * from search"_s);
            for (const Source& source : sources)
                toRunPass(source.pass);
        });
    });
}

void frmSearch::toRunPass(SearchPass pass) {
    const QStringList keywords = toSplit(toStoredText(ui->txtKeyword->text().trimmed()));
    const Source& source = sources[static_cast<std::size_t>(pass)];
    const QString tablename = QString::fromLatin1(source.tablename);
    ado::Recordset found;
    found.Open(toMakeSearchSql(pass, keywords), *cnnMain);
    ado::Recordset search;
    search.Open(u"select * from search"_s, *cnnMain, ado::Recordset::Lock::Optimistic);
    for (; !found.Eof(); found.MoveNext()) {
        search.AddNew();
        search["sdate"] = found[source.date].Value();
        search["Desc"] = found[source.text].Value();
        search["custname"] = found["custname"].Value();
        search["tablename"] = tablename;
        search["Id"] = found[source.id].Value();
        search.Update();
    }
}

void frmSearch::toFillListView() {
    guarded({.prefix = u"Error :"_s, .form = this}, [this] {
        toReconnect();
        ui->lsvDtls->Clear();
        ado::Recordset search;
        search.Open(u"select * from search"_s, *cnnMain);
        std::vector<QStringList> hits;
        for (; !search.Eof(); search.MoveNext()) {
            hits.push_back({search["sdate"].Text(), search["Desc"].Text(), search["custname"].Text(),
                            search["tablename"].Text(), search["Id"].Text()});
        }
        ui->lsvDtls->setItems(std::move(hits));
    });
}

void frmSearch::toJump() {
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
    guarded({.prefix = u"Error :"_s, .form = this}, [&] {
        toReconnect();
        ado::Recordset search;
        search.Open(u"select * from search where tablename='"_s + tablename + u"' and ID=" + id, *cnnMain);
        if (search.Eof())
            return;
        search.Close();
        if (tablename == actionTable)
            frmImprovementPlan::instance().Show();
        else
            frmFeedBackObj::instance().Show();
    });
}
