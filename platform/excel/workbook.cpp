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
    if (!open->file)
        throw Failure(u"The workbook \"%1\" is closed."_s.arg(open->name));
    return *open;
}

OpenWorkbook& Workbook::open() const {
    return checkedOpen(shared);
}

Worksheet Workbook::Worksheets(const QString& name) const {
    biff::Book& book = open().file->book();
    const int sheet = book.findSheet(name);
    if (sheet < 0)
        throw Failure(u"The file \"%1\" has no sheet \"%2\"."_s.arg(shared->name, name));
    try {
        book.sheet(sheet);
    } catch (const biff::Refusal& refusal) {
        throw Failure(u"The file \"%1\" %2."_s.arg(shared->name, refusal.reason()));
    }
    return Worksheet(biff::SheetHandle(shared, sheet));
}

QString Workbook::FullName() const {
    return open().file->path();
}

excel::Application Workbook::Application() const {
    return excel::Application(open().application);
}

void Workbook::Save() const {
    SaveAs(FullName());
}

void Workbook::SaveAs(const QString& path) const {
    OpenWorkbook& workbook = open();
    workbook.file->save(path);
    workbook.name = workbook.file->name();
    workbook.changed = false;
}

void Workbook::Close(bool saveChanges) const {
    if (!isOpen())
        return;
    if (saveChanges && shared->changed)
        Save();
    shared->file.reset();
}

bool Workbook::isOpen() const {
    return shared && shared->file;
}

} // namespace excel
