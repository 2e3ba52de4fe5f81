#include "channel/dispatcher.h"

#include <algorithm>
#include <memory>

#include "channel/frame.h"
#include "ink/ink_note.h"
#include "mail/mail.h"
#include "pim/appointment.h"
#include "pim/contact.h"
#include "pim/task.h"
#include "service/api_base.h"

namespace qorv {

namespace {

std::unique_ptr<CQorvApiBase> makeHandler(DataType type) {
  switch (type) {
    case DataType::Contact:
      return std::make_unique<CCEContact>();
    case DataType::Appointment:
      return std::make_unique<CCEAppointments>();
    case DataType::Task:
      return std::make_unique<CCETask>();
    case DataType::Mail:
      return std::make_unique<CCEMail2>();
    case DataType::InkNote:
      return std::make_unique<CCEInkNote>();
  }
  return nullptr;
}

struct Operation {
  Command command;
  bool (CQorvApiBase::*run)();
};

// The end command and CommitChanges, which takes an argument, are not here.
constexpr Operation kOperations[] = {
    {Command::AddItem, &CQorvApiBase::AddItem},
    {Command::ChangeItem, &CQorvApiBase::ChangeItem},
    {Command::DeleteItem, &CQorvApiBase::DeleteItem},
    {Command::DeleteAllItems, &CQorvApiBase::DeleteAllItems},
    {Command::CountItems, &CQorvApiBase::CountItems},
    {Command::ReadItem, &CQorvApiBase::ReadItem},
    {Command::CreateContract, &CQorvApiBase::CreateContract},
    {Command::DeleteContract, &CQorvApiBase::DeleteContract},
    {Command::FindContract, &CQorvApiBase::FindContract},
    {Command::GetChanges, &CQorvApiBase::GetChanges},
    {Command::GetAllItems, &CQorvApiBase::GetAllItems},
    {Command::GetDeviceIdentity, &CQorvApiBase::GetDeviceIdentity},
    {Command::WriteItems, &CQorvApiBase::WriteItems},
    {Command::ReadItems, &CQorvApiBase::ReadItems},
    {Command::DeleteItems, &CQorvApiBase::DeleteItems},
    {Command::AppendFile, &CQorvApiBase::AppendFile},
    {Command::ReadFileChunk, &CQorvApiBase::ReadFileChunk},
    {Command::GetPlatformLevel, &CQorvApiBase::GetPlatformLevel},
};

void runOperation(CQorvApiBase& handler, Command command, DataType type, FullListingFlags& fullListings) {
  if (command == Command::CommitChanges) {
    handler.CommitChanges(fullListings.isSet(type));
  } else {
    const auto* operation = std::ranges::find(kOperations, command, &Operation::command);
    if (operation != std::ranges::end(kOperations)) (handler.*operation->run)();
  }
}

/// A commit empties the change log only when a full listing preceded it.
void updateFullListing(Command command, DataType type, FullListingFlags& fullListings) {
  if (command == Command::GetAllItems) fullListings.set(type);
  if (command == Command::GetChanges || command == Command::CommitChanges) fullListings.clear(type);
}

}  // namespace

bool dispatch(std::span<const BYTE> request, IRAPIStream& stream, COutlook& session,
              FullListingFlags& fullListings) {
  ResponseBuffer& buffer = session.responseBuffer();
  if (request.size() < kRequestHeaderSize || !isDataType(request[1]))
    return writeFrame(stream, {buffer.data(), 0});
  const auto command = static_cast<Command>(request[0]);
  const auto type = static_cast<DataType>(request[1]);
  buffer.clear();
  // The end command and unknown ones get a handler too: what a type does at its construction is part of a
  // request.
  const auto handler = makeHandler(type);
  handler->setContext({request.subspan(1), buffer, *session.application()});
  runOperation(*handler, command, type, fullListings);
  // A request that was cut short changed nothing, and leaves the flags as they are too.
  if (!handler->requestCut()) updateFullListing(command, type, fullListings);
  return writeFrame(stream, {buffer.data(), handler->responseLength()});
}

}  // namespace qorv
