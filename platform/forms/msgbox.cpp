// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/msgbox.h"

#include "platform/forms/form.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>

namespace forms {
namespace {

QMessageBox::Icon iconOf(int messageStyle) {
    switch (messageStyle & 0xF0) {
    case style::critical:
        return QMessageBox::Critical;
    case style::information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// A message box is as wide as its text; a longer title would be cut.
void widenForTitle(QMessageBox& box) {
    constexpr int frame = 120; // pixels: icon and buttons of a title bar
    const int title =
        QFontMetrics(QApplication::font("QMdiSubWindowTitleBar")).horizontalAdvance(box.windowTitle());
    if (auto* layout = qobject_cast<QGridLayout*>(box.layout()))
        layout->addItem(new QSpacerItem(title + frame, 0), layout->rowCount(), 0, 1, layout->columnCount());
}

/// Enter presses the first button or, if the style says so, the second one, in whichever order the desktop
/// places them.
void setButtons(QMessageBox& box, int messageStyle, QMessageBox::StandardButton first,
                QMessageBox::StandardButton second) {
    box.setStandardButtons(first | second);
    box.setDefaultButton(messageStyle & style::secondButton ? second : first);
    box.setEscapeButton(second);
}

Answer showMessage(const Message& message) {
    QMessageBox box(Form::owner());
    box.setWindowTitle(message.title.isEmpty() ? applicationTitle : message.title);
    box.setTextFormat(Qt::PlainText);
    box.setText(QString(message.text).replace(QLatin1StringView("\r\n"), QLatin1StringView("\n")));
    box.setIcon(iconOf(message.style));
    if (message.style & style::rightAligned) {
        if (auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label")))
            label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    switch (message.style & 0xF) {
    case style::okCancel:
        setButtons(box, message.style, QMessageBox::Ok, QMessageBox::Cancel);
        break;
    case style::yesNo:
        setButtons(box, message.style, QMessageBox::Yes, QMessageBox::No);
        break;
    case style::retryCancel:
        setButtons(box, message.style, QMessageBox::Retry, QMessageBox::Cancel);
        break;
    default:
        box.setStandardButtons(QMessageBox::Ok);
    }
    widenForTitle(box);
    // The form's hourglass must not stay over the question.
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const int pressed = box.exec();
    QGuiApplication::restoreOverrideCursor();
    switch (pressed) {
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Retry:
        return Answer::Retry;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Ok;
    }
}

} // namespace

QString applicationTitle;
std::function<Answer(const Message&)> messageHook = showMessage;

Answer msgBox(const QString& text, int style, const QString& title) {
    return messageHook({text, style, title});
}

} // namespace forms
