// A message's properties, read and written by their tags.
#pragma once

#include "emulator/messaging/mail_context.h"

namespace emulator {

/// What can be asked of a message, which are also the columns of a contents table.
std::vector<PropertyTag> messageTags(MailContext& context);
MailValue messageValue(MailContext& context, const MailMessage& message, PropertyTag asked);

/// Gives a message a value. False when it can't be set: it has no such property, or the device computes it, or
/// the time lies beyond the calendar.
bool setMessageProperty(MailContext& context, MailMessage& message, const SPropValue& value);
/// Takes a property away; texts become empty. False as above.
bool deleteMessageProperty(MailContext& context, MailMessage& message, PropertyTag tag);

/// The column of the message table that orders a folder by a property; empty when none does.
std::string_view sortColumn(PropertyTag tag);

}  // namespace emulator
