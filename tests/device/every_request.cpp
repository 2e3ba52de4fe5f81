#include "tests/device/every_request.h"

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"

namespace test {

const char* const kOneOfEach = R"({
  "contacts": [{"Oid": 17, "FirstName": "Ann", "LastName": "Lee", "Birthday": "1970-05-01T00:00:00.000"}],
  "appointments": [{"Oid": 18, "Subject": "Standup", "Start": "2005-03-14T09:00:00.000",
                    "End": "2005-03-14T09:15:00.000", "ReminderSet": true, "ReminderMinutesBeforeStart": 15,
                    "Recurrence": {"RecurrenceType": 1, "PatternStartDate": "2005-03-14T00:00:00.000",
                                   "Interval": 1, "DayOfWeekMask": 2, "Occurrences": 10},
                    "Exceptions": [{"OriginalDate": "2005-03-21T00:00:00.000", "Deleted": true}]}],
  "tasks": [{"Oid": 19, "Subject": "File", "StartDate": "2005-03-14T00:00:00.000",
             "DueDate": "2005-03-15T00:00:00.000"}],
  "mail": {"Inbox": [{"Id": 20, "Sender": "ann@example.org", "To": ["bo@example.org"], "Subject": "Hi",
                      "Delivered": "2005-03-14T13:35:10.000Z", "Body": "Good morning",
                      "Attachments": [{"Name": "a.txt", "Data": "aGk="}]}]},
  "files": [{"path": "\\My Documents\\Plan.pwi", "oid": 21, "note": "text of a note file"}]
})";

namespace {

constexpr unsigned kFirstOid = 17;
constexpr unsigned kLongText = 5000;

Bytes longText() {
  return textField(9, std::u16string(kLongText, u'x'));
}

}  // namespace

std::vector<Bytes> everyRequest() {
  std::vector<Bytes> requests;
  for (unsigned type = kContact; type <= kInkNote; ++type) {
    const unsigned oid = kFirstOid + type - kContact;
    requests.push_back(request(6, type));              // count
    requests.push_back(request(13, type));             // list
    requests.push_back(request(7, type).u32(oid));     // read
    requests.push_back(request(12, type).text(u"c"));  // commit, which makes the contract
    requests.push_back(request(11, type).text(u"c"));  // changes
  }
  requests.push_back(request(2, kContact).u32(1).append(record(1)).append(textField(1, u"Bo")));
  requests.push_back(request(2, kAppointment).u32(2).append(simpleAppointment(u"Review")));
  requests.push_back(request(3, kAppointment).u32(18).append(record(1)).append(longText()));
  requests.push_back(request(2, kTask).u32(3).append(record(1)).append(textField(1, u"Call")));
  requests.push_back(
      request(2, kMail).u32(4).append(Bytes().u32(1).u32(0).u32(0xFE).append(textField(5, u"Re: Hi"))));
  requests.push_back(request(2, kInkNote)
                         .u32(5)
                         .append(record(2))
                         .append(textField(1, u"Shop"))
                         .append(textField(2, u"milk")));
  const Bytes path = Bytes().text(u"\\Temp\\a.bin");
  requests.push_back(request(18, kContact).append(path).u32(0).u32(4).raw("data"));  // append to a file
  requests.push_back(request(19, kContact).append(path).u32(0).u32(0).u32(4));       // read of it
  requests.push_back(request(20, kContact));                                         // identity
  return requests;
}

}  // namespace test
