// Where an all-day entry ends: the desktop's last day against what the device makes of the end that it is
// sent.
//
// The device stores the midnight after the last day. It sends the last day itself, and on the way in it turns
// what it gets into what it stores like this, for an entry that starts on day S (all ends are midnights):
//
//   single entry     stored = max(sent, S + 1), and one more if that lies beyond S + 1
//   repeating entry  the same with sent + 1 for sent
//
//   days   last day   must be stored   single: sent -> stored        repeating: sent -> stored
//   1      S          S + 1            S     -> S + 1                S     -> S + 1
//   2      S + 1      S + 2            S + 1 -> S + 1, wrong         S     -> S + 1, wrong
//                                      S + 2 -> S + 3, wrong         S + 1 -> S + 3, wrong
//   n >= 3 S + n - 1  S + n            S + n - 1 -> S + n            S + n - 2 -> S + n
//
// So a single entry is sent with its last day, a repeating one of three and more days with the day before
// that, and no end at all makes the device store two days: such an entry travels as one from midnight to
// midnight.
#pragma once

#include "desktop/appointment.h"

namespace desktop {

/// How many days an all-day entry covers; at least 1.
int allDayLength(const Appointment& appointment);

/// Whether the device can hold the entry as an all-day one.
bool canStayAllDay(const Appointment& appointment);

/// The same days as an entry with times, from midnight to midnight. Exceptions have such an end already.
Appointment fromMidnightToMidnight(const Appointment& allDay);

/// The end to send, so that the device stores the entry's own; the entry must be one that the device can
/// hold.
LocalTime endToSend(const Appointment& appointment);

}  // namespace desktop
