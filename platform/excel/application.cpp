// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/application.h"

#include "platform/excel/open_workbook.h"

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
        if (const auto open = candidate.lock(); open && open->file)
            result.push_back(open);
    return result;
}

} // namespace

void Application::setFileShower(FileShower shower) {
    fileShower() = std::move(shower);
}

Application::Application() : state_(std::make_shared<ApplicationState>()) {}

excel::Workbooks Application::Workbooks() const {
    return excel::Workbooks(state_);
}

void Application::Quit() {
    for (const auto& open : openWorkbooks(*state_))
        open->file.reset();
    state_->workbooks.clear();
}

bool Application::Visible() const {
    return state_->visible;
}

void Application::setVisible(bool visible) {
    state_->visible = visible;
    if (!visible || !fileShower())
        return;
    for (const auto& open : openWorkbooks(*state_))
        fileShower()(open->file->path());
}

Workbook Workbooks::Open(const QString& path) const {
    auto open = std::make_shared<OpenWorkbook>();
    open->application = state_;
    open->file = std::make_unique<biff::BookFile>(path);
    open->name = open->file->name();
    std::erase_if(state_->workbooks, [](const auto& released) { return released.expired(); });
    state_->workbooks.push_back(open);
    return Workbook(open);
}

int Workbooks::Count() const {
    return int(openWorkbooks(*state_).size());
}

} // namespace excel
