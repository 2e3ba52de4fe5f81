#include "emulator/messaging/message_properties.h"

#include "emulator/messaging/entry_id.h"

namespace emulator {
namespace {

/// 9999-12-31 at its end: later times have no place in a snapshot.
constexpr Ticks kPastCalendar = 2650467744000000000;

struct MessageView {
  Mailbox& mailbox;
  const MailMessage& message;
};

MailValue timeValue(const std::optional<Ticks>& time) {
  return time ? MailValue(*time) : noValue();
}

LONG flagsOf(const MessageView& view) {
  LONG flags = view.message.isRead ? MSGFLAG_READ : 0;
  if (view.message.folder == MailFolder::Drafts) flags |= MSGFLAG_UNSENT;
  if (!view.mailbox.attachments(view.message.row).empty()) flags |= MSGFLAG_HASATTACH;
  return flags;
}

using MessageProperty = ReadableProperty<MessageView>;

constexpr std::array kMessageProperties{
    MessageProperty{PR_ENTRYID,
                    [](const MessageView& view) -> MailValue {
                      return toBytes(entryIdOf(view.message.folder, view.message.id));
                    }},
    MessageProperty{
        PR_PARENT_ENTRYID,
        [](const MessageView& view) -> MailValue { return toBytes(entryIdOf(view.message.folder)); }},
    MessageProperty{PR_MESSAGE_SIZE,
                    [](const MessageView& view) -> MailValue {
                      return static_cast<LONG>(view.mailbox.sizeOf(view.message));
                    }},
    MessageProperty{PR_MESSAGE_FLAGS, [](const MessageView& view) -> MailValue { return flagsOf(view); }},
    MessageProperty{PR_MESSAGE_DELIVERY_TIME,
                    [](const MessageView& view) { return timeValue(view.message.delivered); }},
    MessageProperty{PR_SUBJECT_W, [](const MessageView& view) -> MailValue { return view.message.subject; }},
    MessageProperty{PR_SENDER_EMAIL_ADDRESS_W,
                    [](const MessageView& view) -> MailValue { return view.message.sender; }},
    MessageProperty{PR_START_DATE, [](const MessageView& view) { return timeValue(view.message.start); }},
    MessageProperty{PR_END_DATE, [](const MessageView& view) { return timeValue(view.message.end); }},
    MessageProperty{PR_BODY_W,
                    [](const MessageView& view) { return view.message.body ? streamOnly() : noValue(); }},
};

bool setTime(std::optional<Ticks>& time, const SPropValue& value) {
  const Ticks ticks = ticksOf(value.Value.ft);
  if (ticks < 0 || ticks >= kPastCalendar) return false;
  time = ticks;
  return true;
}

/// Each returns whether the value was taken; null instead of a value deletes.
struct SettableProperty {
  PropertyTag tag;
  bool (*set)(MailMessage& message, const SPropValue* value);
  std::string_view column;
};

template <auto Member>
constexpr SettableProperty settableText(PropertyTag tag, std::string_view column) {
  return {tag,
          [](MailMessage& message, const SPropValue* value) {
            message.*Member = value == nullptr ? std::u16string() : std::u16string(value->Value.lpszW);
            return true;
          },
          column};
}

template <auto Member>
constexpr SettableProperty settableTime(PropertyTag tag, std::string_view column) {
  return {tag,
          [](MailMessage& message, const SPropValue* value) {
            if (value != nullptr) return setTime(message.*Member, *value);
            (message.*Member).reset();
            return true;
          },
          column};
}

/// Of the flags only whether it was read can be set; the others tell where the message lies and what it has.
bool setFlags(MailMessage& message, const SPropValue* value) {
  message.isRead = value != nullptr && (value->Value.l & MSGFLAG_READ) != 0;
  return true;
}

bool setWhere(MailMessage& message, const SPropValue* value) {
  message.where.reset();
  if (value != nullptr) message.where = value->Value.lpszW;
  return true;
}

constexpr std::array kSettableProperties{
    SettableProperty{PR_MESSAGE_FLAGS, setFlags, "is_read"},
    settableText<&MailMessage::subject>(PR_SUBJECT_W, "subject COLLATE NOCASE"),
    settableText<&MailMessage::sender>(PR_SENDER_EMAIL_ADDRESS_W, "sender COLLATE NOCASE"),
    settableTime<&MailMessage::delivered>(PR_MESSAGE_DELIVERY_TIME, "delivered"),
    settableTime<&MailMessage::start>(PR_START_DATE, "start_date"),
    settableTime<&MailMessage::end>(PR_END_DATE, "end_date"),
};

/// The tag of the place under the number that its name has on this device.
bool asksForWhere(MailContext& context, PropertyTag tag) {
  const bool isText = propertyType(tag) == PT_UNICODE || propertyType(tag) == PT_UNSPECIFIED;
  return isText && context.names.isWhere(propertyNumber(tag));
}

bool change(MailContext& context, MailMessage& message, PropertyTag tag, const SPropValue* value) {
  const auto settable = std::ranges::find(kSettableProperties, tag, &SettableProperty::tag);
  if (settable != kSettableProperties.end()) return settable->set(message, value);
  return asksForWhere(context, tag) && setWhere(message, value);
}

}  // namespace

std::vector<PropertyTag> messageTags(MailContext& context) {
  std::vector<PropertyTag> tags = tagsOf<MessageView>(kMessageProperties);
  const auto where = context.names.numberOf({PS_MAPI, std::u16string(kWhereName)}, false);
  if (where) tags.push_back(propertyTag(*where, PT_UNICODE));
  return tags;
}

MailValue messageValue(MailContext& context, const MailMessage& message, PropertyTag asked) {
  MailValue value = readProperty<MessageView>(kMessageProperties, {context.mailbox, message}, asked);
  const bool isMissing = std::holds_alternative<MissingValue>(value);
  if (!isMissing || !message.where || !asksForWhere(context, asked)) return value;
  return *message.where;
}

bool setMessageProperty(MailContext& context, MailMessage& message, const SPropValue& value) {
  return change(context, message, value.ulPropTag, &value);
}

bool deleteMessageProperty(MailContext& context, MailMessage& message, PropertyTag tag) {
  return change(context, message, tag, nullptr);
}

std::string_view sortColumn(PropertyTag tag) {
  const auto settable = std::ranges::find(kSettableProperties, tag, &SettableProperty::tag);
  return settable == kSettableProperties.end() ? std::string_view() : settable->column;
}

}  // namespace emulator
