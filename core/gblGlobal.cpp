// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/gblGlobal.h"

#include "core/MDIMain.h"
#include "core/failure.h"
#include "platform/ado/datasources.h"
#include "platform/desktop/ownerfile.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cmath>

using namespace Qt::StringLiterals;

std::unique_ptr<ado::Connection> cnnMain;
QString strCompanyName;
QString strDatabasePath;
bool blnNodeDragged = false;
bool blnSurveyPasted = false;
bool blnExistingSurvey = false;
bool blnSearchOpen = false;
QString strSearchKeywords;
bool blnSearchToFeedback = false;
bool blnSearchToImprovement = false;
int intSearchIndex = 0;

std::function<void()> endSeat = [] { QCoreApplication::exit(0); };

namespace {

constexpr int addSystemSource = 4;

QString ownHome;

bool writeDataSource(const QString& dataSourceName, const QString& databasePath) {
    const QString driver = u"Microsoft Access Driver (*.MDB)"_s + QChar(0);
    const QString attributes = u"DSN="_s + dataSourceName + QChar(0) + u"DBQ="_s + databasePath + QChar(0);
    return ado::SQLConfigDataSource(addSystemSource, driver, attributes) == 1;
}

} // namespace

QString toReadCompanyName() {
    constexpr qint64 longestLine = 1024; // bytes: 255 characters of up to 4
    constexpr qsizetype longestName = 255;
    QFile file(homeDirectory() + u"/company.txt");
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) // a pipe would keep the start waiting
        return {};
    QString line = QString::fromUtf8(file.readLine(longestLine)).trimmed();
    if (line.startsWith(QChar::ByteOrderMark))
        line.remove(0, 1);
    return line.left(longestName);
}

bool toCreateDSN(const QString& dataSourceName, QString& databasePath) {
    const QString beside = homeDirectory() + u"/Tallywell.mdb"_s;
    if (QFile::exists(beside)) {
        databasePath = beside;
        desktop::keepToOwner(beside);
        // When this fails the connection that follows tells it.
        writeDataSource(dataSourceName, databasePath);
        return true;
    }
    if (forms::msgBox(u"Database not found in the current directory,...Locate the database to connect"_s,
                      forms::style::okCancel, u"Brackwell"_s) == forms::Answer::Cancel)
        return false;
    databasePath.clear();
    forms::CommonDialog& dialog = MDIMain::instance().CommonDialog1;
    dialog.CancelError = false;
    dialog.Flags = 4;
    dialog.Filter = u"All Files (Tallywell.mdb)|Tallywell.mdb|Mdb Files(Tallywell.mdb)|Tallywell.mdb"_s;
    dialog.ShowOpen();
    databasePath = dialog.FileName.trimmed();
    if (databasePath.isEmpty()) {
        forms::msgBox(u"Must choose the database"_s);
        return false;
    }
    if (!writeDataSource(dataSourceName, databasePath))
        forms::msgBox(u"DSN Creation Failed"_s);
    return true;
}

QString toConnectionText() {
    return u"DSN=gwl;UID=;PWD=kvtwpa;"_s;
}

void toOpenConnection() {
    cnnMain = std::make_unique<ado::Connection>();
    guarded({.prefix = u"Error :"_s}, [] {
        cnnMain->ConnectionString = toConnectionText();
        cnnMain->Open();
    });
}

void toReconnect() {
    if (!cnnMain || cnnMain->State() == 0)
        toOpenConnection();
}

void toEndProgram() {
    if (cnnMain && cnnMain->State() == 1)
        cnnMain->Close();
    cnnMain.reset();
    endSeat();
}

std::optional<QString> toFilterApostrophe(const QString& text) {
    if (!text.contains(u'\''))
        return std::nullopt;
    return QString(text).replace(u'\'', QChar(0x2019));
}

QString toStoredText(const QString& text) {
    return toFilterApostrophe(text).value_or(text);
}

int findCustomer(const QString& customerName) {
    ado::Recordset customer;
    customer.Open(u"select * from customer where custname ='"_s + customerName + u"'", *cnnMain);
    return customer.Eof() ? 0 : customer["custid"].Value().toInt();
}

std::vector<int> requireCustomers(const QStringList& names) {
    std::vector<int> custids;
    QStringList missing;
    for (const QString& name : names) {
        custids.push_back(findCustomer(name));
        if (custids.back() == 0)
            missing << name;
    }
    if (missing.isEmpty())
        return custids;
    if (missing.first().isEmpty())
        throw Refusal(u"No customer is selected. Nothing has been changed."_s);
    throw Refusal(
        (missing.size() == 1 ? u"The customer %1 is"_s : u"The customers %1 are"_s).arg(missing.join(u", ")) +
        u" no longer in the database. Nothing has been changed.");
}

int toGetCustID(const QString& customerName) {
    int custid = 0;
    guarded({}, [&] {
        toReconnect();
        custid = findCustomer(customerName);
    });
    return custid;
}

void toCenterForm(forms::Form& form) {
    const int height = static_cast<int>(std::nearbyint(form.ScreenHeight() * 0.85));
    form.setTop(height / 2 - form.Height() / 2);
    form.setLeft(form.ScreenWidth() / 2 - form.Width() / 2);
}

QString toSqlDate(const QDate& date) {
    return date.toString(u"MM/dd/yyyy");
}

QDate toDate(const QString& text) {
    return QDate::fromString(text, ado::dateTextFormat.toString());
}

QString homeDirectory() {
    return ownHome.isEmpty() ? QCoreApplication::applicationDirPath() : ownHome;
}

void setHomeDirectory(const QString& path) {
    ownHome = path;
}
