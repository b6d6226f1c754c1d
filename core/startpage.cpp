// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/startpage.h"

#include "core/base/pictures.h"
#include "core/store/store.h"
#include "platform/desktop/windowstate.h"
#include "platform/failure/failure.h"
#include "platform/spoken/adopted.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 24; // pixels
constexpr int spacing = 6;
constexpr double headingSize = 1.3;

FirstSteps readQuietly() {
    if (!cnnMain || cnnMain->State() != ado::StateOpen || cnnMain->InTransaction())
        return {};
    try {
        return readFirstSteps();
    } catch (const Failure&) {
        cnnMain->Errors().Clear();
        return {};
    }
}

} // namespace

StartPage::StartPage(QMdiArea* mdiArea) : QWidget(mdiArea->viewport()), area(mdiArea) {
    setObjectName(u"startPage"_s);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    hide();
    // Qt's own interface of the area knows its windows only, and a screen reader would not find the page.
    spoken::adopt(*area, [](QWidget& all) { return new QAccessibleWidget(&all, QAccessible::LayeredPane); });
    area->viewport()->installEventFilter(this);
    // A form closes at the end of its event.
    connect(area, &QMdiArea::subWindowActivated, this, &StartPage::follow, Qt::QueuedConnection);
}

bool StartPage::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Resize)
        place();
    else if (event->type() == QEvent::Show)
        QTimer::singleShot(0, this, &StartPage::follow);
    else if (event->type() == QEvent::ChildAdded) // a form
        hide();
    return false;
}

bool StartPage::event(QEvent* event) {
    const bool isTaken = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest)
        place();
    return isTaken;
}

void StartPage::follow() {
    const QList<QMdiSubWindow*> windows = area->subWindowList();
    const bool isCovered = std::any_of(windows.begin(), windows.end(),
                                       [](const QMdiSubWindow* window) { return window->isVisible(); });
    if (isCovered == isHidden())
        return;
    if (!isCovered)
        refresh();
    setVisible(!isCovered);
    place();
}

void StartPage::refresh() {
    show(readQuietly());
}

void StartPage::show(const FirstSteps& steps) {
    delete content;
    content = new QWidget(this);
    auto* columns = new QHBoxLayout(content);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setSpacing(2 * margin);
    const auto addColumn = [&](void (StartPage::*fill)(QVBoxLayout&, const FirstSteps&)) {
        auto* column = new QVBoxLayout;
        column->setSpacing(spacing);
        (this->*fill)(*column, steps);
        column->addStretch();
        columns->addLayout(column);
    };
    addColumn(&StartPage::addSteps);
    if (!steps.surveys.empty() || !steps.files.empty())
        addColumn(&StartPage::addLast);
    layout()->addWidget(content);
    content->show();
}

void StartPage::addHeading(QVBoxLayout& column, const QString& text) {
    auto* heading = new QLabel(text, content);
    QFont font = heading->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * headingSize);
    heading->setFont(font);
    column.addWidget(heading);
}

QToolButton* StartPage::addButton(QVBoxLayout& column, const QString& text) {
    constexpr int longest = 340; // pixels
    auto* button = new QToolButton(content);
    button->setText(button->fontMetrics().elidedText(text, Qt::ElideMiddle, longest).replace(u'&', u"&&"_s));
    button->setAccessibleName(text);
    button->setToolTip(text);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setCursor(Qt::PointingHandCursor);
    column.addWidget(button);
    return button;
}

void StartPage::addSteps(QVBoxLayout& column, const FirstSteps& steps) {
    const struct {
        QString text;
        QString menuEntry;
        bool isDone;
    } all[] = {
        {u"Enter your customers and their respondents"_s, u"mnuCusAndResp"_s, steps.hasRespondents},
        {u"Enter parameters and their questions"_s, u"mnuPrameter"_s, steps.hasQuestions},
        {u"Compose a survey and export its file"_s, u"mnuNewSurvey"_s, steps.hasQuestionnaires},
        {u"Mail the survey file"_s, u"mnuEmailSurveys"_s, steps.hasFiles},
        {u"Enter the answers, or read the returned file"_s, u"mnuObjective"_s, steps.hasAnswers},
        {u"Look at the chart of the Satisfaction Index"_s, u"mnuSatisfactionIndex"_s,
         steps.hasAnswers && desktop::isSwitchedOn("start/chart")},
    };
    addHeading(column, u"First steps"_s);
    int number = 0;
    for (const auto& step : all) {
        QToolButton* button = addButton(column, QString::number(++number) + u". " + step.text);
        button->setObjectName(u"step"_s + QString::number(number));
        button->setIcon(picture(step.isDone ? u"step-done"_s : u"step-open"_s));
        if (step.isDone)
            button->setAccessibleName(button->accessibleName() + u", done");
        connect(button, &QToolButton::clicked, this,
                [this, entry = step.menuEntry] { Q_EMIT entryAsked(entry); });
    }
}

void StartPage::addLast(QVBoxLayout& column, const FirstSteps& steps) {
    if (!steps.surveys.empty())
        addHeading(column, u"Last surveys"_s);
    for (const FirstSteps::Survey& survey : steps.surveys) {
        QToolButton* button =
            addButton(column, survey.date.toString(ado::dateTextFormat) + u"  " + survey.customer);
        button->setObjectName(u"survey"_s);
        connect(button, &QToolButton::clicked, this, [this, survey] { Q_EMIT surveyAsked(survey); });
    }
    if (!steps.files.empty()) {
        column.addSpacing(spacing);
        addHeading(column, u"Last survey files"_s);
    }
    for (const FirstSteps::File& file : steps.files) {
        QToolButton* button = addButton(column, file.name + u"  " + file.respondent);
        button->setObjectName(u"file"_s);
        connect(button, &QToolButton::clicked, this, [this, name = file.name] { Q_EMIT fileAsked(name); });
    }
}

void StartPage::place() {
    const QSize wanted = sizeHint().boundedTo(area->viewport()->size());
    const QSize room = area->viewport()->size() - wanted;
    setGeometry(room.width() / 2, room.height() / 3, wanted.width(), wanted.height());
}
