// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/workbook.h"

#include "platform/excel/application.h"
#include "platform/excel/openworkbook.h"
#include "platform/failure/failure.h"

using namespace Qt::StringLiterals;

namespace excel {

OpenWorkbook& checkedOpen(const std::shared_ptr<OpenWorkbook>& open) {
    if (!open)
        throw Failure(u"No workbook is open."_s);
    if (!open->isOpen())
        throw Failure(u"The workbook \"%1\" is closed."_s.arg(open->name));
    return *open;
}

biff::BookFile& OpenWorkbook::changeable() const {
    if (!file)
        throw Failure(u"The file \"%1\" can be read only."_s.arg(name));
    return *file;
}

OpenWorkbook& Workbook::open() const {
    return checkedOpen(shared);
}

Worksheet Workbook::Worksheets(const QString& name) const {
    const ValueBook* values = open().values.get();
    const int sheet = values ? values->findSheet(name) : open().file->book().findSheet(name);
    if (sheet < 0)
        throw Failure(u"The file \"%1\" has no sheet \"%2\"."_s.arg(shared->name, name));
    try {
        if (!values)
            shared->file->book().sheet(sheet);
        else if (!values->sheets[size_t(sheet)].isWorksheet)
            throw biff::Refusal(u"has no cells in its sheet \"%1\""_s.arg(name));
    } catch (const biff::Refusal& refusal) {
        throw Failure(u"The file \"%1\" %2."_s.arg(shared->name, refusal.reason()));
    }
    return Worksheet(biff::SheetHandle(shared, sheet));
}

QStringList Workbook::SheetNames() const {
    QStringList names;
    if (const ValueBook* values = open().values.get()) {
        for (const ValueSheet& sheet : values->sheets)
            if (sheet.isWorksheet)
                names << sheet.name;
        return names;
    }
    const biff::Book& book = shared->file->book();
    for (int sheet = 0; sheet < book.sheetCount(); ++sheet)
        if (book.isWorksheet(sheet))
            names << book.sheetName(sheet);
    return names;
}

QString Workbook::FullName() const {
    return open().path();
}

excel::Application Workbook::Application() const {
    return excel::Application(open().application);
}

void Workbook::Save() const {
    SaveAs(FullName());
}

void Workbook::SaveAs(const QString& path) const {
    OpenWorkbook& workbook = open();
    workbook.changeable().save(path);
    workbook.name = workbook.file->name();
    workbook.changed = false;
}

void Workbook::Close(bool saveChanges) const {
    if (!isOpen())
        return;
    if (saveChanges && shared->changed)
        Save();
    shared->close();
}

bool Workbook::isOpen() const {
    return shared && shared->isOpen();
}

} // namespace excel
