// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>
#include <QDate>
#include <QLineEdit>

#include <initializer_list>

namespace forms {

/// The date of a text d/m/yyyy, of the years 1601 to 9999: with /, ., - or blanks between the parts, or eight
/// digits (ddmmyyyy). Digits of every script are accepted. Invalid for any other text.
QDate dateOfText(const QString& text);

/// A date as dd/mm/yyyy, typed or picked from a calendar (F4, Alt+Down, the arrow); Up and Down change the
/// part under the cursor. The text is selected when the box gets the focus, so that typing replaces it.
/// Typing changes the text only. It is read when the user leaves the box, presses Enter or an access key, or
/// opens the calendar, and not when a menu or another program comes in front: a date becomes the value, any
/// other text stays, marked, while the value is unchanged. Change is emitted when the value changes, by the
/// user or by code.
class DTPicker : public QComboBox {
    Q_OBJECT

public:
    explicit DTPicker(QWidget* parent = nullptr);

    QDate Value() const { return value; }
    /// Takes any date, also one that could not be typed, and drops what was being typed. An invalid date
    /// changes nothing.
    void setValue(const QDate& date);
    QString text() const { return lineEdit()->text(); }
    /// Reads the text. False when it is no date.
    bool readText();
    /// For commands that use dates: reads the texts, reports the first that is not a date and puts the focus
    /// there. False when there is one; the command must then stop.
    static bool requireDates(std::initializer_list<DTPicker*> pickers);

    void showPopup() override;

Q_SIGNALS:
    void Change();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// The wheel changes nothing: an accidental change would lose what was typed for the previous date.
    void wheelEvent(QWheelEvent* event) override;

private:
    void step(int by);
    void mark(bool unreadable);
    void showValue();

    QDate value{2000, 1, 1};
    bool marked = false;  ///< as unreadable
    bool entered = false; ///< by a press whose release is pending
};

} // namespace forms
