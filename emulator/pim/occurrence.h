// The single occurrences of a series, with its exceptions taken into account.
#pragma once

#include <optional>

#include "emulator/pim/pim_item.h"
#include "platform/errors.h"

namespace emulator {

/// The exception of an original day, or null.
const SeriesException* findException(const SeriesExceptions& exceptions, Day originalDay);

/// The appointment that a series has on a day of its own: the series' with the times moved there, as if no
/// exception had been made.
ItemRecord plainOccurrence(const PimItem& series, Day day);

/// Whether a day has the occurrence that originally lay there, given what became of it: not on a day that
/// holds none, nor when it was deleted or moved to another day.
bool hasOccurrenceOn(const PimItem& series, const std::optional<SeriesException>& exception, Day day);

/// Whether the device can hold an exception among the others: E_EXCEPTIONSAMEDAY when another changed
/// occurrence lies on its day, E_INVALIDARG when the series has no occurrence on its original day. It may lie
/// past its neighbours: a series that is moved to another time of day leaves its exceptions where they are.
HRESULT checkStanding(const PimItem& series, const SeriesExceptions& exceptions,
                      const SeriesException& exception);

/// Whether an exception may be saved among the others: see checkStanding, and E_OVERLAPPINGEXCEPTION when it
/// went past its neighbours.
HRESULT checkPlacement(const PimItem& series, const SeriesExceptions& exceptions,
                       const SeriesException& exception);

}  // namespace emulator
