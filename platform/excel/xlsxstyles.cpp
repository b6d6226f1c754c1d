// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/excel/xlsxstyles.h"

#include "platform/excel/serialdate.h"

#include <QHash>

namespace excel {

DateStyles::DateStyles(XmlPart xml) {
    QHash<int, bool> own; // number formats of the workbook
    std::vector<int> numberFormats;
    while (xml.nextChild()) {
        const bool codes = xml.name() == u"numFmts";
        if (!codes && xml.name() != u"cellXfs") {
            xml.skip();
            continue;
        }
        while (xml.nextChild()) {
            const int id = xml.number(u"numFmtId").value_or(0);
            if (codes)
                own.insert(id, biff::isDateCode(xml.attribute(u"formatCode")));
            else
                numberFormats.push_back(id);
            xml.skip();
        }
    }
    for (const int id : numberFormats)
        ofDates.push_back(own.value(id, biff::isBuiltInDate(id)));
}

bool DateStyles::isDate(int style) const {
    return style >= 0 && size_t(style) < ofDates.size() && ofDates[size_t(style)];
}

} // namespace excel
