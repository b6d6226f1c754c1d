// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/frmSplash.h"

#include "core/MDIMain.h"
#include "core/gblGlobal.h"
#include "core/pictures.h"
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
    connect(Timer1, &QTimer::timeout, this, &frmSplash::toLeadOn);
}

frmSplash::~frmSplash() = default;

void frmSplash::onLoad() {
    setWindowFlag(Qt::FramelessWindowHint);
    setLeft((ScreenWidth() - Width()) / 2);
    setTop((ScreenHeight() - Height()) / 2);
    ui->lblCompanyName->setText(strCompanyName);
    Timer1->start();
}

bool frmSplash::onKeyDown(int key) {
    // A shift key alone is no key press.
    if (key != Qt::Key_Shift && key != Qt::Key_Control && key != Qt::Key_Alt && key != Qt::Key_Meta)
        Unload();
    return true;
}

bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    const bool inFrame = watched == ui->Frame1 || (watched->isWidgetType() &&
                                                   ui->Frame1->isAncestorOf(static_cast<QWidget*>(watched)));
    if (inFrame && event->type() == QEvent::MouseButtonRelease) {
        toLeadOn();
        return true;
    }
    return DefaultForm::eventFilter(watched, event);
}

void frmSplash::toLeadOn() {
    Timer1->stop();
    Unload();
    MDIMain::instance().show();
}
