// The exceptions of a series: read from its pattern, applied to its occurrences.
#pragma once

#include <vector>

#include "pim/exception_record.h"
#include "platform/outlook.h"
#include "platform/recurrence.h"

namespace qorv {

std::vector<ExceptionRecord> readExceptions(IPOutlookApp& application, IRecurrencePattern& pattern);

/// Changes or deletes the occurrences that the records name. An occurrence that was moved before is found
/// among the exceptions by its original date; a record that matches nothing is passed over.
void applyExceptions(IPOutlookApp& application, IRecurrencePattern& pattern,
                     const std::vector<ExceptionRecord>& records);

}  // namespace qorv
