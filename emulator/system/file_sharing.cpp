#include "emulator/system/file_sharing.h"

#include <utility>

#include "platform/files.h"

namespace emulator {
namespace {

bool reads(DWORD access) {
  return (access & GENERIC_READ) != 0;
}
bool writes(DWORD access) {
  return (access & GENERIC_WRITE) != 0;
}
bool sharesReading(DWORD share) {
  return (share & FILE_SHARE_READ) != 0;
}
bool sharesWriting(DWORD share) {
  return (share & FILE_SHARE_WRITE) != 0;
}

}  // namespace

FileHold::FileHold(std::shared_ptr<FileUse> use, DWORD access, DWORD share)
    : use_(std::move(use)), access_(access), share_(share) {
  count(1);
}

FileHold::~FileHold() {
  count(-1);
}

bool FileHold::canRead() const {
  return reads(access_);
}

bool FileHold::canWrite() const {
  return writes(access_);
}

void FileHold::count(int step) {
  if (reads(access_)) use_->readers += step;
  if (writes(access_)) use_->writers += step;
  if (!sharesReading(share_)) use_->withoutReadSharing += step;
  if (!sharesWriting(share_)) use_->withoutWriteSharing += step;
}

bool FileSharing::isOpen(Oid file) const {
  const auto found = uses_.find(file);
  return found != uses_.end() && !found->second.expired();
}

bool FileSharing::allows(Oid file, DWORD access, DWORD share) const {
  const auto found = uses_.find(file);
  const auto use = found == uses_.end() ? nullptr : found->second.lock();
  if (!use) return true;
  return (!reads(access) || use->withoutReadSharing == 0) &&
         (!writes(access) || use->withoutWriteSharing == 0) && (sharesReading(share) || use->readers == 0) &&
         (sharesWriting(share) || use->writers == 0);
}

std::unique_ptr<FileHold> FileSharing::hold(Oid file, DWORD access, DWORD share) {
  std::erase_if(uses_, [](const auto& entry) { return entry.second.expired(); });
  std::weak_ptr<FileUse>& known = uses_[file];
  auto use = known.lock();
  if (!use) known = use = std::make_shared<FileUse>();
  return std::make_unique<FileHold>(std::move(use), access, share);
}

}  // namespace emulator
