// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "platform/forms/lists.h"

#include <functional>

/// Fills the list with the names of all customers. Throws Failure.
void listCustomers(forms::ComboBox& list);

/// Fills the list with the dates of the customer's surveys, earliest first; a date with several surveys is
/// listed several times. Throws Failure.
void listSurveyDates(forms::ListBox& list, const QString& customer);

/// Runs `fill` to prepare and open a report. Does nothing if `customers` is empty. Errors are shown.
void generateReport(forms::Form& form, const forms::ComboBox& customers, const std::function<void()>& fill);
