// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/lists.h"

/// Fills the list with the names of all customers. A failure is thrown.
void toListCustomers(forms::ComboBox& list);

/// Fills the list with the dates of the customer's surveys, the earliest first; a date with several surveys
/// stands several times. A failure is thrown.
void toListSurveyDates(forms::ListBox& list, const QString& customer);
