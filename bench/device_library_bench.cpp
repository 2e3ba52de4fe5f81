// What the device library takes, counted on the emulated processor: bytes, instructions and heap. The figures are exact and
// the same in every run on every machine; that two runs agree is checked each time.
// Usage: device_library_bench [LIBRARY]

#include <compare>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "bench/frames.h"
#include "bench/sample_contact.h"
#include "bench/temporary_folder.h"
#include "desktop/contact_record.h"
#include "desktop/wire.h"
#include "emulator/arm/arm_agent.h"
#include "emulator/seam/current_device.h"
#include "emulator/seam/libraries.h"
#include "emulator/session/descriptor.h"
#include "emulator/session/session.h"

namespace bench {
namespace {

constexpr unsigned kContact = 1;
constexpr unsigned kNoCommand = 0;
constexpr unsigned kEndSession = 1;
constexpr unsigned kAddItem = 2;
constexpr unsigned kReadItems = 16;
/// As many of each as differ between the two sessions that are compared.
constexpr std::uint32_t kMany = 100;
constexpr std::uintmax_t kLargestImage = 96u << 10;

using Requests = std::vector<Payload>;

struct Session {
  std::uint64_t instructions = 0;
  std::size_t heapPeak = 0;  ///< of the library's own heap, beyond the buffer of replies
  std::vector<Payload> replies;
};

void requireThat(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(what);
}

/// The clock stands, so that no time of day finds its way into a count.
emulator::Ticks standingClock() {
  return emulator::ticksOf(SYSTEMTIME{2005, 3, 0, 14, 12, 0, 0, 0}).value();
}

/// The library, loaded on a device that has some contacts.
class Loaded {
 public:
  explicit Loaded(const std::filesystem::path& library) {
    emulator::provideLibraries(device_);
    for (std::uint32_t i = 0; i < kMany + 1; ++i) addContact();
    device_.commit();
    agent_ = std::make_unique<emulator::arm::ArmAgent>(space_, library, emulator::Modules::agent());
    attach_ = agent_->instructions();
  }

  std::uint64_t attach() const { return attach_; }
  const std::vector<std::uint32_t>& contacts() const { return contacts_; }

  Session serve(Requests requests) {
    requests.push_back(request(kEndSession, kContact));
    write(requests);
    space_.heap.resetPeak();
    const std::uint64_t before = agent_->instructions();
    {
      const emulator::Descriptor in(open(file("requests").c_str(), O_RDONLY | O_CLOEXEC));
      const emulator::Descriptor out(
          open(file("replies").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
      requireThat(runSession(*agent_, device_, nullptr, {in.get(), out.get(), -1}) == S_OK,
                  "the session did not begin");
    }
    Session session{agent_->instructions() - before, space_.heap.ownUse().peak - desktop::kReplyBufferSize,
                    replies()};
    requireThat(session.replies.size() == requests.size(), "not every request was answered");
    return session;
  }

 private:
  std::string file(const char* name) const { return folder_.path() / name; }
  static std::string made(const std::string& path) {
    emulator::NewDevice description;
    description.hostClock = standingClock;
    emulator::Device::create(path, description);
    return path;
  }

  void addContact() {
    auto& items = device_.objectModel.items();
    auto item = items.make(emulator::ObjectKind::Contact);
    putSample(device_, item.properties, sampleContact(0));
    requireThat(items.add(item) == 0, "a contact was refused");
    contacts_.push_back(item.oid);
  }

  void write(const Requests& requests) const {
    std::ofstream stream(file("requests"), std::ios::binary);
    for (const Payload& bytes : requests) {
      const auto size = static_cast<std::uint32_t>(bytes.size());
      for (int shift = 0; shift < 32; shift += 8) stream.put(static_cast<char>(size >> shift));
      stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
  }

  std::vector<Payload> replies() const {
    std::ifstream stream(file("replies"), std::ios::binary);
    const Payload all((std::istreambuf_iterator<char>(stream)), {});
    std::vector<Payload> found;
    for (std::size_t at = 0; at < all.size();) {
      const auto begin = all.begin() + static_cast<std::ptrdiff_t>(at) + 4;
      found.emplace_back(begin, begin + numberAt(all, at));
      at += 4 + found.back().size();
    }
    return found;
  }

  TemporaryFolder folder_;
  std::ostringstream messages_;
  emulator::arm::GuestSpace space_;
  emulator::Device device_{
      made(file("device")),
      emulator::DeviceOptions{emulator::Clock::Pace::Skipping, standingClock, messages_, &space_.heap}};
  emulator::CurrentDevice current_{device_};
  std::vector<std::uint32_t> contacts_;
  std::unique_ptr<emulator::arm::ArmAgent> agent_;
  std::uint64_t attach_ = 0;
};

Requests emptyRequests(std::uint32_t count) {
  return Requests(count, request(kNoCommand, kContact));
}

Requests reading(const Loaded& library, std::uint32_t count) {
  Payload bytes = request(kReadItems, kContact, {count});
  for (std::uint32_t i = 0; i < count; ++i) {
    const Payload oid = request(0, 0, {library.contacts().at(i)});
    bytes.insert(bytes.end(), oid.begin() + 2, oid.end());
  }
  return {bytes};
}

Requests adding(std::uint32_t count) {
  Payload bytes = request(kAddItem, kContact, {1});
  const auto records = desktop::contactRecords(sampleContact(0), false);
  requireThat(records.size() == 1, "a new contact takes more than one record");
  bytes.insert(bytes.end(), records.front().begin(), records.front().end());
  return Requests(count, bytes);
}

/// A reply with a list is as much longer as there are more contacts in it.
void requireAllRead(const Session& one, const Session& two, const Session& many) {
  const std::size_t record = two.replies[0].size() - one.replies[0].size();
  requireThat(record > 0 && many.replies[0].size() == one.replies[0].size() + kMany * record,
              "not all contacts were read");
}

/// A reply begins with what became of the request: 1 and 0 when it succeeded.
void requireAllAdded(const Session& session) {
  for (std::size_t i = 0; i + 1 < session.replies.size(); ++i) {
    const Payload& reply = session.replies[i];
    requireThat(reply.size() > 2 && reply[0] == 1 && reply[1] == 0, "a contact was not added");
  }
}

struct Figures {
  std::uint64_t attach;
  std::uint64_t session;
  std::uint64_t emptyRequest;
  std::uint64_t contactRead;
  std::uint64_t contactAdded;
  std::size_t heapOfSession;
  std::size_t heapOfReading;
  std::size_t heapOfAdding;

  friend auto operator<=>(const Figures&, const Figures&) = default;
};

std::uint64_t each(const Session& one, const Session& many) {
  return (many.instructions - one.instructions) / kMany;
}

Figures measure(const std::filesystem::path& file) {
  Loaded library(file);
  library.serve({});  // what only a first session does
  const Session session = library.serve({});
  const Session oneEmpty = library.serve(emptyRequests(1));
  const Session manyEmpty = library.serve(emptyRequests(1 + kMany));
  const Session oneRead = library.serve(reading(library, 1));
  const Session manyRead = library.serve(reading(library, 1 + kMany));
  requireAllRead(oneRead, library.serve(reading(library, 2)), manyRead);
  const Session oneAdded = library.serve(adding(1));
  const Session manyAdded = library.serve(adding(1 + kMany));
  requireAllAdded(manyAdded);
  return {library.attach(),          session.instructions, each(oneEmpty, manyEmpty), each(oneRead, manyRead),
          each(oneAdded, manyAdded), session.heapPeak,     manyRead.heapPeak,         manyAdded.heapPeak};
}

void print(const char* what, std::uintmax_t figure, const char* unit) {
  std::printf("%-46s %9ju %s\n", what, figure, unit);
}

void report(std::uintmax_t imageSize, const Figures& figures) {
  print("image", imageSize, "bytes");
  print("  of which it may have", kLargestImage, "bytes");
  print("attach", figures.attach, "ARM instructions");
  print("session of the end command alone", figures.session, "ARM instructions");
  print("empty request", figures.emptyRequest, "ARM instructions");
  print("contact read, of a dozen fields", figures.contactRead, "ARM instructions");
  print("contact added, of a dozen fields", figures.contactAdded, "ARM instructions");
  print("heap beyond the reply buffer: session", figures.heapOfSession, "bytes");
  print("  reading contacts", figures.heapOfReading, "bytes");
  print("  adding contacts", figures.heapOfAdding, "bytes");
}

int run(const std::filesystem::path& library) {
  const Figures figures = measure(library);
  requireThat(figures == measure(library), "two runs differ");
  report(std::filesystem::file_size(library), figures);
  return 0;
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  try {
    return bench::run(argc > 1 ? argv[1] : QORV_DEVICE_LIBRARY);
  } catch (const std::exception& error) {
    std::cerr << "device_library_bench: " << error.what() << '\n';
    return 1;
  }
}
