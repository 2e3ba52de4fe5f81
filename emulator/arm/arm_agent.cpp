#include "emulator/arm/arm_agent.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "emulator/session/session_error.h"

namespace emulator::arm {

namespace {

constexpr const char* kExport = "rsCeApiMgr";

[[noreturn]] void refuse(const std::filesystem::path& file, const std::string& reason) {
  throw SessionError(file.string() + ": the agent can't be loaded: " + reason);
}

std::uint32_t carryTrap(Border& border, const Trap& trap, const ArgumentWords& words) try {
  return trap.carry(border, trap, words);
} catch (const GuestFault& fault) {
  throw GuestFault(std::string(trap.name) + ": " + fault.what());
}

/// The first trap is the processor's own.
constexpr GuestAddress addressOfTrap(std::size_t index) {
  return trapAddress(index + 1);
}

void relocate(PeImage& image, GuestAddress base) {
  for (const std::uint32_t place : image.relocations) {
    std::uint32_t word = 0;
    std::memcpy(&word, image.bytes.data() + place, sizeof word);
    word += base - image.base;
    std::memcpy(image.bytes.data() + place, &word, sizeof word);
  }
}

/// Names as the library imports them; a member of an interface is not found by name.
void bindImports(PeImage& image, const std::vector<Trap>& traps) {
  for (const ImageImport& import : image.imports) {
    const auto found = std::ranges::find_if(
        traps, [&](const Trap& trap) { return trap.interface == nullptr && trap.name == import.name; });
    if (found == traps.end()) throw ImageError("the device has no " + import.name + " in " + import.library);
    const GuestAddress address = addressOfTrap(static_cast<std::size_t>(found - traps.begin()));
    if (import.slot > image.bytes.size() - sizeof address)
      throw ImageError("an import lies outside the image");
    std::memcpy(image.bytes.data() + import.slot, &address, sizeof address);
  }
}

Access accessOf(const ImageSection& section) {
  if (section.executable) return Access::ReadExecute;
  return section.writable ? Access::ReadWrite : Access::Read;
}

void mapSections(GuestMemory& memory, const PeImage& image, GuestAddress base) {
  for (const ImageSection& section : image.sections) {
    Region& region = memory.add("image", base + section.place, wholePages(section.size), accessOf(section));
    std::copy_n(image.bytes.begin() + section.place, section.size, region.bytes());
  }
}

void describeInterfaces(GuestObjects& objects, const std::vector<Trap>& traps) {
  std::map<const InterfaceInfo*, std::vector<GuestAddress>> slots;
  for (std::size_t i = 0; i < traps.size(); ++i) {
    if (traps[i].interface != nullptr) slots[traps[i].interface].push_back(addressOfTrap(i));
  }
  for (const InterfaceInfo* interface : allInterfaces())
    objects.addInterface(*interface, slots.at(interface));
}

std::unordered_map<PlatformFunction, GuestAddress> functionAddresses(const std::vector<Trap>& traps) {
  std::unordered_map<PlatformFunction, GuestAddress> addresses;
  for (std::size_t i = 0; i < traps.size(); ++i) {
    if (traps[i].function != nullptr) addresses.emplace(traps[i].function, addressOfTrap(i));
  }
  return addresses;
}

}  // namespace

PeImage ArmAgent::loadImage(GuestSpace& space, const std::filesystem::path& file,
                            const ArmOptions& options) try {
  PeImage image = readImage(file);
  relocate(image, options.base);
  bindImports(image, platformTraps());
  mapSections(space.memory, image, options.base);
  return image;
} catch (const ImageError& error) {
  refuse(file, error.what());
}

ArmAgent::ArmAgent(GuestSpace& space, const std::filesystem::path& file, HMODULE module,
                   const ArmOptions& options)
    : file_(file),
      regions_(space.memory),
      base_(options.base),
      module_(module),
      image_(loadImage(space, file, options)),
      traps_(platformTraps()),
      objects_(space.memory),
      callbacks_(space.memory, space.heap,
                 [this](GuestAddress function, std::span<const std::uint32_t> arguments) {
                   return processor_.call(function, arguments);
                 }),
      border_{space.memory, space.heap, objects_, callbacks_, functionAddresses(traps_)},
      processor_(space.memory, options.processor, [this](std::size_t index) {
        return carryTrap(border_, traps_.at(index - 1),
                         [this](std::size_t word) { return processor_.argument(word); });
      }) {
  describeInterfaces(objects_, traps_);
  try {
    exported(kExport);
    if (notify(DLL_PROCESS_ATTACH) == FALSE) refuse(file, "it refuses to be attached");
  } catch (const GuestFault& fault) {
    refuse(file, fault.what());
  }
}

ArmAgent::~ArmAgent() {
  if (broken_) return;
  try {
    notify(DLL_PROCESS_DETACH);
  } catch (const std::exception&) {
    // The library is gone all the same, and what it left behind with it.
  }
}

GuestAddress ArmAgent::exported(const std::string& name) const {
  const auto found = std::ranges::find(image_.exports, name, &std::pair<std::string, std::uint32_t>::first);
  if (found == image_.exports.end()) refuse(file_, "it has no entry '" + name + "'");
  return base_ + found->second;
}

std::uint32_t ArmAgent::notify(DWORD reason) {
  const auto module = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(module_));
  return processor_.call(base_ + image_.entry, std::array{module, std::uint32_t{reason}, 0u});
}

HRESULT ArmAgent::serve(IRAPIStream* stream) try {
  if (broken_) throw GuestFault("it failed in an earlier session");
  const GuestAddress guestStream = objects_.wrap(stream, interfaceInfo<IRAPIStream>());
  const std::uint32_t result =
      processor_.call(exported(kExport), std::array{0u, 0u, 0u, 0u, std::uint32_t{guestStream}});
  objects_.forget(guestStream);
  return static_cast<HRESULT>(result);
} catch (const GuestFault& fault) {
  broken_ = true;
  throw AgentBroken(file_.string() + ": " + fault.what());
}

bool ArmAgent::isDeviceLibrary(const std::filesystem::path& file) {
  std::array<char, 2> magic{};
  return std::ifstream(file, std::ios::binary).read(magic.data(), magic.size()) && magic[0] == 'M' &&
         magic[1] == 'Z';
}

}  // namespace emulator::arm
