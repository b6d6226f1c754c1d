// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"
#include "platform/forms/lists.h"

#include <functional>

/// Fills the list with the names of all customers. A failure is thrown.
void listCustomers(forms::ComboBox& list);

/// Fills the list with the dates of the customer's surveys, the earliest first; a date with several surveys
/// stands several times. A failure is thrown.
void listSurveyDates(forms::ListBox& list, const QString& customer);

/// Fills and starts a report on a customer; nothing when there is no customer to choose. A failure is shown.
void generateReport(forms::Form& form, const forms::ComboBox& customers, const std::function<void()>& fill);
