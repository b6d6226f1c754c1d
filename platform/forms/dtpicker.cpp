// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/dtpicker.h"

#include "platform/forms/msgbox.h"

#include <QAccessible>
#include <QApplication>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QWheelEvent>

#include <utility>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

const QDate first{1601, 1, 1};
const QDate last{9999, 12, 31};

/// Whether the focus is lost only until a menu or another window returns it.
bool isForAWhile(const QFocusEvent& event) {
    return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::MenuBarFocusReason ||
           (event.reason() == Qt::ActiveWindowFocusReason && !QApplication::activeWindow());
}

/// Latin digits under every locale.
QString shown(const QDate& date) {
    return u"%1/%2/%3"_s.arg(date.day(), 2, 10, QChar(u'0'))
        .arg(date.month(), 2, 10, QChar(u'0'))
        .arg(date.year(), 4, 10, QChar(u'0'));
}

/// The calendar shows the days of other months as disabled: in a dark theme that text can be as dark as the
/// ground.
QPalette withReadableDisabledText(QPalette colours) {
    const QColor text = colours.color(QPalette::Text);
    const QColor ground = colours.color(QPalette::Base);
    colours.setColor(QPalette::Disabled, QPalette::Text,
                     QColor((text.red() + ground.red()) / 2, (text.green() + ground.green()) / 2,
                            (text.blue() + ground.blue()) / 2));
    return colours;
}

} // namespace

QDate dateOfText(const QString& text) {
    QString latin;
    for (const QChar c : text)
        latin += c.isDigit() ? QChar(u'0' + c.digitValue()) : c;
    static const QRegularExpression parted(uR"(^\s*(\d\d?)\s*[/.\-\s]\s*(\d\d?)\s*[/.\-\s]\s*(\d{4})\s*$)"_s);
    static const QRegularExpression run(uR"(^\s*(\d\d)(\d\d)(\d{4})\s*$)"_s);
    for (const QRegularExpression& pattern : {parted, run}) {
        const QRegularExpressionMatch match = pattern.match(latin);
        const QDate date(match.captured(3).toInt(), match.captured(2).toInt(), match.captured(1).toInt());
        if (match.hasMatch() && date >= first && date <= last)
            return date;
    }
    return {};
}

DTPicker::DTPicker(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(7);
    showValue();
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { mark(false); });
}

void DTPicker::setValue(const QDate& date) {
    if (!date.isValid())
        return;
    const bool changed = date != value;
    value = date;
    if (text() != shown(value))
        showValue();
    mark(false);
    if (changed && hasFocus()) { // by a key that steps, or from the calendar
        QAccessibleValueChangeEvent stepped(this, shown(value));
        QAccessible::updateAccessibility(&stepped);
    }
    if (changed)
        Q_EMIT Change();
}

void DTPicker::showValue() {
    setEditText(shown(value));
    if (hasFocus())
        lineEdit()->selectAll();
    else
        lineEdit()->home(false);
}

bool DTPicker::readText() {
    if (text() == shown(value))
        return true;
    const QDate typed = dateOfText(text());
    if (typed.isValid())
        setValue(typed);
    else
        mark(true);
    return typed.isValid();
}

bool DTPicker::requireDates(std::initializer_list<DTPicker*> pickers) {
    for (DTPicker* picker : pickers) {
        if (picker->readText())
            continue;
        msgBox(u"“%1” is no date. Enter it as day/month/year, from 1601 to 9999."_s.arg(picker->text()),
               style::critical, u"Gaugewell v2.1"_s);
        picker->setFocus();
        return false;
    }
    return true;
}

/// A red background on which the text is readable in any theme.
void DTPicker::mark(bool unreadable) {
    marked = unreadable;
    QPalette colours;
    if (unreadable) {
        const QColor ground = palette().color(QPalette::Base);
        colours.setColor(QPalette::Base,
                         QColor((ground.red() * 2 + 255) / 3, ground.green() * 2 / 3, ground.blue() * 2 / 3));
    }
    lineEdit()->setPalette(colours);
    setToolTip(unreadable ? u"This is no date (day/month/year, 1601 to 9999). The date in use is %1."_s.arg(
                                shown(value))
                          : QString());
    setAccessibleDescription(toolTip());
}

void DTPicker::step(int by) {
    constexpr int monthBegins = 3;
    constexpr int yearBegins = 6;
    if (!readText())
        return;
    const int at = lineEdit()->hasSelectedText() ? 0 : lineEdit()->cursorPosition();
    const QDate next = at < monthBegins  ? value.addDays(by)
                       : at < yearBegins ? value.addMonths(by)
                                         : value.addYears(by);
    const auto canBeTyped = [](const QDate& date) { return date >= first && date <= last; };
    if (canBeTyped(next) || !canBeTyped(value))
        setValue(next);
    lineEdit()->setCursorPosition(at);
}

void DTPicker::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int key = event->key();
    if (plain && (key == Qt::Key_Up || key == Qt::Key_Down)) {
        step(key == Qt::Key_Up ? 1 : -1);
        return;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        if (readText())
            lineEdit()->selectAll();
        return;
    }
    QComboBox::keyPressEvent(event);
}

void DTPicker::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    entered = event->reason() == Qt::MouseFocusReason;
    const bool back = event->reason() == Qt::ActiveWindowFocusReason && text() == shown(value);
    if (event->reason() == Qt::OtherFocusReason || back)
        lineEdit()->selectAll();
}

/// The first click selects the text, later ones place the caret.
bool DTPicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease &&
        std::exchange(entered, false) && !lineEdit()->hasSelectedText())
        lineEdit()->selectAll();
    return QComboBox::eventFilter(watched, event);
}

void DTPicker::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (!isForAWhile(*event))
        readText();
}

void DTPicker::changeEvent(QEvent* event) {
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && marked)
        mark(true);
}

void DTPicker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void DTPicker::showPopup() {
    readText();
    auto* calendar = new QCalendarWidget(this);
    calendar->setWindowFlag(Qt::Popup);
    calendar->setAttribute(Qt::WA_DeleteOnClose);
    calendar->setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom)); // Monday first, Latin digits
    calendar->setDateEditEnabled(false);                                    // dates are typed in the box
    calendar->setDateRange(first, last);
    calendar->setSelectedDate(value);
    calendar->setPalette(withReadableDisabledText(palette()));
    const auto take = [this, calendar](const QDate& picked) {
        calendar->close();
        setValue(picked);
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    calendar->adjustSize();
    const QRect within = screen()->availableGeometry();
    QPoint at = mapToGlobal(QPoint(0, height()));
    if (at.y() + calendar->height() > within.bottom())
        at.setY(mapToGlobal(QPoint()).y() - calendar->height());
    at.setX(qBound(within.left(), at.x(), qMax(within.left(), within.right() + 1 - calendar->width())));
    calendar->move(at);
    calendar->show();
    calendar->setFocus();
}

} // namespace forms
