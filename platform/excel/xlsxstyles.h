// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/excel/xmlpart.h"

#include <vector>

namespace excel {

/// Which cell formats of a workbook show a number as a date or a time of day.
class DateStyles {
public:
    DateStyles() = default; ///< none
    /// Reads the part with the formats, which stands at its root; throws biff::Refusal.
    explicit DateStyles(XmlPart xml);

    /// By the format's position; false for one beyond the list.
    bool isDate(int style) const;

private:
    std::vector<bool> ofDates;
};

} // namespace excel
