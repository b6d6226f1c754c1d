// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/crystal/crystalreport.h"

#include "platform/crystal/previewwindow.h"
#include "platform/crystal/report.h"

using namespace Qt::StringLiterals;

namespace crystal {

std::function<void(const std::shared_ptr<const Report>&, const QString&, int)> previewHook =
    PreviewWindow::show;

void CrystalReport::setAction(int action) {
    if (action != RunReport)
        return;
    Layout layout = readLayout(ReportFileName);
    const QString name =
        layout.organisation.isEmpty() ? QString() : formulaText(layout.organisation, layout.line);
    QStringList headTexts;
    for (const HeadFormula& formula : layout.formulas)
        headTexts << formulaText(formula.name, formula.line);
    if (!Password.startsWith(u'\n'))
        throw reportFailure(ReportFileName, 0, u"The password does not begin with a line feed."_s);
    const std::vector<Condition> selection = parseSelection(SelectionFormula, ReportFileName);
    Records records = Connection ? readRecords(layout, selection, *Connection)
                                 : readRecords(layout, selection, DataFiles(0), Password.mid(1));
    for (qsizetype i = 0; i < headTexts.size(); ++i) {
        const HeadFormula& formula = layout.formulas[std::size_t(i)];
        HeadValue line;
        line.field.words = formula.label;
        layout.values.insert(layout.values.begin() + formula.place + i, line);
        records.values.insert(formula.place + i, headTexts[i]);
    }
    previewHook(std::make_shared<const Report>(std::move(layout), std::move(records), name), WindowTitle,
                WindowState);
}

/// The text of the formula of that name.
QString CrystalReport::formulaText(const QString& wanted, qint64 line) const {
    QString given;
    for (const auto& [index, formula] : formulas) {
        if (formula.isEmpty())
            continue;
        const QString name = formula.section(u'=', 0, 0).trimmed();
        const QString text = formula.section(u'=', 1).trimmed();
        if (text.size() < 2 || !text.startsWith(u'\'') || !text.endsWith(u'\''))
            throw reportFailure(
                ReportFileName, 0,
                u"The formula \"%1\" is not a name, = and a text between apostrophes."_s.arg(formula));
        if (name == wanted)
            return text.mid(1, text.size() - 2);
        given += u" '"_s + name + u"'";
    }
    throw reportFailure(ReportFileName, line,
                        u"The layout shows the formula '%1', but the report was given%2."_s.arg(
                            wanted, given.isEmpty() ? u" none"_s : given));
}

} // namespace crystal
