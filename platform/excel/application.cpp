// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/application.h"

#include "platform/excel/openworkbook.h"
#include "platform/excel/zippackage.h"

#include <QFileInfo>

namespace excel {

namespace {

Application::FileShower& fileShower() {
    static Application::FileShower shower;
    return shower;
}

std::vector<std::shared_ptr<OpenWorkbook>> openWorkbooks(const ApplicationState& state) {
    std::vector<std::shared_ptr<OpenWorkbook>> result;
    for (const auto& candidate : state.workbooks)
        if (const auto open = candidate.lock(); open && open->isOpen())
            result.push_back(open);
    return result;
}

} // namespace

void Application::setFileShower(FileShower shower) {
    fileShower() = std::move(shower);
}

Application::Application() : state(std::make_shared<ApplicationState>()) {}

excel::Workbooks Application::Workbooks() const {
    return excel::Workbooks(state);
}

void Application::Quit() {
    for (const auto& open : openWorkbooks(*state))
        open->close();
    state->workbooks.clear();
}

bool Application::Visible() const {
    return state->visible;
}

void Application::setVisible(bool visible) {
    state->visible = visible;
    if (!visible || !fileShower())
        return;
    for (const auto& open : openWorkbooks(*state))
        fileShower()(open->path());
}

Workbook Workbooks::Open(const QString& path) const {
    return Open(path, readContent(path));
}

Workbook Workbooks::Open(const QString& path, const FileContent& content) const {
    const auto open = std::make_shared<OpenWorkbook>();
    open->application = state;
    if (ZipPackage::isZip(content.bytes))
        open->values = readPackage(path, content.bytes);
    else
        open->file = std::make_unique<biff::BookFile>(path, content);
    open->name = QFileInfo(path).fileName();
    std::erase_if(state->workbooks, [](const auto& released) { return released.expired(); });
    state->workbooks.push_back(open);
    return Workbook(open);
}

int Workbooks::Count() const {
    return int(openWorkbooks(*state).size());
}

} // namespace excel
