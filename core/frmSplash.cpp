// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmSplash.h"

#include "core/MDIMain.h"
#include "core/base/gblGlobal.h"
#include "core/base/pictures.h"
#include "ui_frmSplash.h"

#include <QIcon>
#include <QMouseEvent>

using namespace Qt::StringLiterals;

frmSplash::frmSplash()
    : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmSplash>()), Timer1(new QTimer(this)) {
    ui->setupUi(this);
    ui->Picture1->setPixmap(picture(u"splash"_s).pixmap(420, 130));
    ui->imgLogo->setPixmap(picture(u"logo"_s).pixmap(56, 56));
    Timer1->setObjectName(u"Timer1"_s);
    Timer1->setInterval(interval);
    connect(Timer1, &QTimer::timeout, this, &frmSplash::leaveSplash);
}

frmSplash::~frmSplash() = default;

void frmSplash::onLoad() {
    setWindowFlag(Qt::FramelessWindowHint);
    setLeft((ScreenWidth() - Width()) / 2);
    setTop((ScreenHeight() - Height()) / 2);
    ui->lblCompanyName->setText(strCompanyName);
    ui->lblCompanyName->setVisible(!strCompanyName.isEmpty());
    Timer1->start();
}

void frmSplash::showWhile(const QString& word, const std::function<void()>& work) {
    Timer1->stop(); // a message of the work lets it fire
    ui->lblWork->setText(word);
    ui->lblWork->show();
    Show();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // paints the word
    work();
    ui->lblWork->hide();
    Timer1->start();
}

bool frmSplash::onKeyDown(int key) {
    // Only keys that produce a character: no modifier, lock, arrow or function keys.
    constexpr int firstWithoutCharacter = Qt::Key_Escape;
    const bool isPress = key < firstWithoutCharacter || key == Qt::Key_Escape || key == Qt::Key_Return ||
                         key == Qt::Key_Enter || key == Qt::Key_Backspace;
    if (isPress)
        Unload();
    return true;
}

bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    // Events arrive while setupUi has not created the frame yet.
    const auto* widget = watched->isWidgetType() ? static_cast<QWidget*>(watched) : nullptr;
    const bool inFrame = ui->Frame1 && widget && (widget == ui->Frame1 || ui->Frame1->isAncestorOf(widget));
    if (inFrame && event->type() == QEvent::MouseButtonRelease) {
        leaveSplash();
        return true;
    }
    return DefaultForm::eventFilter(watched, event);
}

void frmSplash::leaveSplash() {
    Timer1->stop();
    Unload();
    MDIMain::instance().show();
}
