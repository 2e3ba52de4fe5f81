// A device whose messages a test reaches as programs do: through the messaging library, loaded by its name.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "emulator/calls/entries.h"
#include "emulator/pim/com_reference.h"
#include "emulator/seam/current_device.h"
#include "emulator/snapshot/snapshot.h"
#include "platform/errors.h"
#include "platform/system.h"
#include "tests/emulator/device_test.h"

namespace emulator::test {

/// What an out-parameter holds before a call.
inline constexpr ULONG kPoison = 0xDEADBEEF;
template <typename T>
T* poison() {
  return reinterpret_cast<T*>(std::uintptr_t{0xDEADBEEF});
}

/// Tags as the platform takes them.
class Tags {
 public:
  Tags(std::initializer_list<PropertyTag> tags) : words_{static_cast<ULONG>(tags.size())} {
    words_.insert(words_.end(), tags);
  }
  operator SPropTagArray*() { return reinterpret_cast<SPropTagArray*>(words_.data()); }

 private:
  std::vector<ULONG> words_;
};

/// What a call handed out as property values, freed with the library's own call.
class Values {
 public:
  Values() = default;
  Values(const Values&) = delete;
  Values& operator=(const Values&) = delete;
  ~Values() { EXPECT_EQ(entries::MAPIFreeBuffer(values_), 0u); }

  ULONG* count() { return &count_; }
  SPropValue** out() { return &values_; }
  const SPropValue* get() const { return values_; }
  ULONG size() const { return count_; }
  const SPropValue& operator[](std::size_t place) const { return values_[place]; }

 private:
  ULONG count_ = kPoison;
  SPropValue* values_ = nullptr;
};

/// What a table handed out.
class Rows {
 public:
  explicit Rows(SRowSet* rows) : rows_(rows) {}
  Rows(Rows&& other) noexcept : rows_(std::exchange(other.rows_, nullptr)) {}
  Rows& operator=(Rows&&) = delete;
  ~Rows() { entries::FreeProws(rows_); }

  std::size_t size() const { return rows_ == nullptr ? 0 : rows_->cRows; }
  const SRow& operator[](std::size_t row) const { return static_cast<const SRow*>(rows_->aRow)[row]; }
  const SPropValue& at(std::size_t row, std::size_t column) const { return (*this)[row].lpProps[column]; }

 private:
  SRowSet* rows_;
};

using EntryBytes = std::vector<BYTE>;

/// An entry identifier that a value holds; empty when it holds none.
EntryBytes entryOf(const SPropValue& value);
/// A little-endian word of an entry identifier.
std::uint32_t wordOf(const EntryBytes& entry, std::size_t offset);

class MessagingTest : public DeviceTest {
 protected:
  explicit MessagingTest(const std::string& snapshot = "{}");
  ~MessagingTest() override;

  void load(const std::string& snapshot) { loadSnapshot(device(), snapshot); }

  ComReference<IMAPISession> logon();
  ComReference<IMsgStore> store();
  /// A folder that the store names by a tag.
  ComReference<IMAPIFolder> folder(PropertyTag tag, ULONG flags = MAPI_MODIFY);
  ComReference<IMAPITable> contents(PropertyTag folderTag);
  /// The entry identifiers of a folder, in the table's order.
  std::vector<EntryBytes> entries(PropertyTag folderTag);
  std::vector<Oid> ids(PropertyTag folderTag);
  /// A message by its place in a folder.
  ComReference<IMessage> message(PropertyTag folderTag, std::size_t place = 0, ULONG flags = 0);

  static EntryBytes entryProperty(IMAPIProp& object, PropertyTag tag);
  static Rows rows(IMAPITable& table, LONG count);
  static ULONG rowCount(IMAPITable& table);
  template <typename Interface>
  static ComReference<Interface> open(IMsgStore& store, EntryBytes entry, ULONG flags, ULONG expectedType) {
    ComReference<Interface> result;
    ULONG type = kPoison;
    IUnknown* object = poison<IUnknown>();
    EXPECT_EQ(store.OpenEntry(static_cast<ULONG>(entry.size()), entry.data(), nullptr, flags, &type, &object),
              S_OK);
    EXPECT_EQ(type, expectedType);
    *result.out() = static_cast<Interface*>(object);
    return result;
  }

  static ComReference<IStream> stream(IMAPIProp& object, PropertyTag tag, ULONG flags);
  static std::string readAll(IStream& stream);
  static void write(IStream& stream, std::string_view bytes);

  HMODULE library_ = nullptr;

 private:
  std::optional<CurrentDevice> current_;
};

}  // namespace emulator::test
