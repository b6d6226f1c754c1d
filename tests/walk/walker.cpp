// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/walk/walker.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>

namespace walk {
QWidget* eventTarget() {
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* dialog = QApplication::activeModalWidget())
        return dialog;
    return &MDIMain::instance();
}

QString nameOf(const QWidget* widget) {
    QString name;
    for (const QWidget* outer = widget; outer && name.count(u'/') < 2; outer = outer->parentWidget()) {
        if (!outer->objectName().isEmpty() && !outer->objectName().startsWith(u"qt_"))
            name = u'/' + outer->objectName() + name;
    }
    return QLatin1StringView(widget->metaObject()->className()) + name;
}

Walker::Walker(int withSeed, bool shared)
    : seed(withSeed), isShared(shared), random(static_cast<unsigned>(withSeed)), oracle(shared) {
    QApplication::setKeyboardInputInterval(-1); // each letter typed in a list starts a new search
}

/// Answers a message at random.
forms::Answer Walker::answer(const forms::Message& message) {
    oracle.noteMessage();
    note(u"message \"%1\""_s.arg(message.text.simplified().left(60)));
    if (cnnMain && cnnMain->InTransaction() && fault.isEmpty())
        fault = u"a message while a transaction is open: "_s + message.text;
    switch (message.style & 0xF) {
    case style::okCancel:
        return oneIn(2) ? forms::Answer::Ok : forms::Answer::Cancel;
    case style::yesNo:
        return oneIn(2) ? forms::Answer::Yes : forms::Answer::No;
    case style::retryCancel:
        return oneIn(2) ? forms::Answer::Retry : forms::Answer::Cancel;
    default:
        return forms::Answer::Ok;
    }
}

QString Walker::chooseFile(const forms::CommonDialog& dialog) {
    const QDir home(homeDirectory());
    const QStringList files = home.entryList({u"*.xls"_s}, QDir::Files, QDir::Name);
    QString chosen;
    if (oneIn(3))
        chosen =
            home.filePath(anyOf(QStringList{u"new.xls"_s, u"Ann's.xls"_s, u"plain"_s, u"template.xls"_s}));
    else if (!oneIn(3) && !files.isEmpty())
        chosen = home.filePath(anyOf(files));
    if (dialog.Flags == forms::AllowMultiselect && !files.isEmpty())
        chosen = home.filePath(files.first()) + u'\n' + home.filePath(files.last());
    note(u"file dialog: "_s + chosen.section(u'/', -1));
    return chosen;
}

/// Drops the dragged node on a visible grid, if any.
void Walker::dropNode() const {
    for (forms::MSHFlexGrid* grid : eventTarget()->findChildren<forms::MSHFlexGrid*>()) {
        if (!grid->isVisible())
            continue;
        QMimeData carried;
        carried.setData(QLatin1StringView(forms::TreeView::nodeMimeType), "node");
        QDropEvent drop({5, 5}, Qt::CopyAction, &carried, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(grid->viewport(), &drop);
        return;
    }
}

void Walker::note(const QString& event) {
    constexpr std::size_t mostRecent = 30;
    recent.push_back(QString::number(done) + u": " + event);
    if (recent.size() > mostRecent)
        recent.pop_front();
}

QString Walker::run(int events) {
    left = events;
    QTimer::singleShot(0, &loop, [this] { step(); });
    loop.exec();
    if (fault.isEmpty())
        return {};
    QStringList last(recent.begin(), recent.end());
    return u"seed %1, step %2: %3\n  "_s.arg(QString::number(seed), QString::number(done), fault) +
           last.join(u"\n  "_s);
}

/// Sends one event. The next is scheduled first, so that the walk continues in dialogs and menus.
void Walker::step() {
    if (locked) {
        blocker.unlock();
        locked = false;
        oracle.noteLock();
    }
    if (fault.isEmpty())
        fault = oracle.fault(depth == 0 && !QApplication::activePopupWidget());
    if (!fault.isEmpty() && depth > 0)
        note(u"still in "_s + nameOf(eventTarget()));
    if (left-- <= 0 || !fault.isEmpty()) {
        while (QWidget* popup = QApplication::activePopupWidget())
            popup->close();
        if (auto* dialog = qobject_cast<forms::Form*>(QApplication::activeModalWidget()))
            dialog->Unload();
        if (depth == 0)
            loop.quit();
        else
            QTimer::singleShot(0, &loop, [this] { step(); });
        return;
    }
    ++done;
    MDIMain::instance().stsBar->Panels(1).setText({});
    QTimer::singleShot(0, &loop, [this] { step(); });
    ++depth;
    perform();
    --depth;
}

void Walker::perform() {
    MDIMain& window = MDIMain::instance();
    if (!window.isVisible())
        window.show(); // the program has been ended
    QWidget* on = eventTarget();
    if (on->windowType() != Qt::Popup && !on->isActiveWindow()) { // done by a window manager otherwise
        on->activateWindow();
        return;
    }
    reconnect();
    if (!isShared)
        lockSometimes();
    const int kind = below(100);
    if (isShared && oneIn(8))
        typeAndSave();
    else if (kind < 6)
        openSomething();
    else if (kind < 52)
        point();
    else if (kind < 97)
        press();
    else
        paste();
}

void Walker::lockSometimes() {
    OtherProgram::endWaiting();
    if (!oneIn(40))
        return;
    const QString table = cnnMain->IsFile() || oneIn(2) ? QString() : anyOf(Oracle::tables());
    note(u"locked: "_s + (table.isEmpty() ? u"the store"_s : table));
    table.isEmpty() ? blocker.lock() : blocker.lockRows(table);
    locked = true;
}

void Walker::openSomething() {
    if (eventTarget() != &MDIMain::instance())
        return;
    // Going back to a copy replaces the store at once, which the oracle cannot follow.
    static const QStringList leftOut{u"mnuDelete"_s, u"mnucomplete"_s, u"mnunotcomplete"_s, u"mnuBackups"_s};
    QList<QAction*> actions;
    for (QAction* action : MDIMain::instance().findChildren<QAction*>()) {
        if (action->objectName().startsWith(u"mnu") && action->isVisible() && action->isEnabled() &&
            !action->menu() && !leftOut.contains(action->objectName()))
            actions << action;
    }
    static const QStringList writing =
        u"Objective Objective Objective EditSurvey EditSurvey NewSurvey NewSurvey ImprovementPlan "
        "ImprovementPlan Prameter CusAndResp ReadMultipleFiles Search EmailSurveys ReadMultipleFiles "
        "Readings Readings Segments Segments CompareGroups Targets Responses Responses Person CleanUp"_s
            .split(u' ');
    QAction* action = anyOf(actions);
    if (!oneIn(3))
        action = MDIMain::instance().findChild<QAction*>(u"mnu"_s + anyOf(writing));
    note(u"menu "_s + action->objectName());
    oracle.begin(nullptr);
    action->trigger();
}
} // namespace walk
