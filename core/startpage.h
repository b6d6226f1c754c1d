// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/firststeps.h"

#include <QWidget>

class QMdiArea;
class QToolButton;
class QVBoxLayout;

/// What the main window shows while no form is open: the first steps of a new user, those done with a tick,
/// and the last surveys and survey files.
class StartPage : public QWidget {
    Q_OBJECT

public:
    explicit StartPage(QMdiArea* area);

    /// Reads the steps again. While the store cannot be read, none has a tick and nothing is listed; the form
    /// that is opened next reports why.
    void refresh();

Q_SIGNALS:
    void entryAsked(const QString& menuEntry);
    void surveyAsked(const FirstSteps::Survey& survey);
    void fileAsked(const QString& fileName);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const FirstSteps& steps);
    void addSteps(QVBoxLayout& column, const FirstSteps& steps);
    void addLast(QVBoxLayout& column, const FirstSteps& steps);
    QToolButton* addButton(QVBoxLayout& column, const QString& text);
    void addHeading(QVBoxLayout& column, const QString& text);
    void follow();
    void place();

    QMdiArea* area;
    QWidget* content = nullptr;
};
