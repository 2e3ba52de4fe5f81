#include "emulator/arm/pe_image.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <span>

#include "emulator/arm/guest_memory.h"

namespace emulator::arm {

namespace {

constexpr std::uint16_t kLetters = 'M' | 'Z' << 8;
constexpr std::uint16_t kMachineArm = 0x01C0;
constexpr std::uint16_t kPe32 = 0x010B;
/// No library for such a device comes near it.
constexpr std::uint32_t kLargestImage = 16u << 20;
/// Names of calls and libraries; a file that is no library may hold none that ends.
constexpr std::size_t kLongestName = 256;
constexpr std::uint32_t kMemoryExecute = 0x20000000;
constexpr std::uint32_t kMemoryWrite = 0x80000000;
constexpr std::size_t kExports = 0;
constexpr std::size_t kImports = 1;
constexpr std::size_t kRelocations = 5;
constexpr std::uint16_t kRelocationNone = 0;
constexpr std::uint16_t kRelocationWord = 3;

/// Bytes of which no number is read past the end.
class Bytes {
 public:
  explicit Bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  template <typename T>
  T at(std::size_t place) const {
    T value;
    std::memcpy(&value, slice(place, sizeof value).data(), sizeof value);
    return value;
  }
  std::uint32_t word(std::size_t place) const { return at<std::uint32_t>(place); }
  std::uint16_t half(std::size_t place) const { return at<std::uint16_t>(place); }
  std::span<const std::uint8_t> slice(std::size_t place, std::size_t size) const {
    if (place > bytes_.size() || size > bytes_.size() - place) throw ImageError("the image is cut short");
    return bytes_.subspan(place, size);
  }
  std::string text(std::size_t place) const {
    std::string result;
    for (char c = at<char>(place); c != '\0'; c = at<char>(++place)) {
      if (result.size() == kLongestName) throw ImageError("a name in it has no end");
      result.push_back(c);
    }
    return result;
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

struct Headers {
  std::size_t optional;
  std::size_t sections;
  std::uint16_t sectionCount;
};

Headers readHeaders(const Bytes& file) {
  if (file.half(0) != kLetters) throw ImageError("it is no portable executable");
  const std::size_t header = file.word(0x3C);
  if (file.word(header) != 0x00004550) throw ImageError("it is no portable executable");
  if (file.half(header + 4) != kMachineArm) throw ImageError("it is not for the ARM processor");
  const std::size_t optional = header + 24;
  if (file.half(optional) != kPe32) throw ImageError("it has no header for 32 bits");
  return {optional, optional + file.half(header + 20), file.half(header + 6)};
}

std::uint32_t directory(const Bytes& file, const Headers& headers, std::size_t number) {
  return number < file.word(headers.optional + 92) ? file.word(headers.optional + 96 + 8 * number) : 0;
}
std::uint32_t directorySize(const Bytes& file, const Headers& headers, std::size_t number) {
  return number < file.word(headers.optional + 92) ? file.word(headers.optional + 100 + 8 * number) : 0;
}

bool overlap(const ImageSection& one, const ImageSection& other) {
  return one.place < other.place + wholePages(other.size) && other.place < one.place + wholePages(one.size);
}

void addSection(PeImage& image, const ImageSection& section) {
  if (section.size == 0 || section.place % kPageSize != 0)
    throw ImageError("a section does not fill pages of its own");
  for (const ImageSection& other : image.sections) {
    if (overlap(section, other)) throw ImageError("a section does not fill pages of its own");
  }
  image.sections.push_back(section);
}

void loadSection(PeImage& image, const Bytes& file, std::size_t header) {
  const std::uint32_t size = file.word(header + 8);
  const std::uint32_t place = file.word(header + 12);
  const std::uint32_t stored = std::min(file.word(header + 16), size);
  const std::uint32_t flags = file.word(header + 36);
  if (place > image.bytes.size() || size > image.bytes.size() - place) {
    throw ImageError("a section lies outside the image");
  }
  const auto data = file.slice(file.word(header + 20), stored);
  std::copy(data.begin(), data.end(), image.bytes.begin() + place);
  addSection(image, {place, size, (flags & kMemoryExecute) != 0, (flags & kMemoryWrite) != 0});
}

void readImports(PeImage& image, std::size_t descriptor) {
  const Bytes loaded(image.bytes);
  for (; loaded.word(descriptor + 12) != 0; descriptor += 20) {
    const std::string library = loaded.text(loaded.word(descriptor + 12));
    for (std::uint32_t slot = loaded.word(descriptor + 16); loaded.word(slot) != 0; slot += 4) {
      if (loaded.word(slot) >> 31 != 0) throw ImageError("it imports by number from " + library);
      image.imports.push_back({library, loaded.text(loaded.word(slot) + 2), slot});
    }
  }
}

void readExports(PeImage& image, std::size_t directory) {
  const Bytes loaded(image.bytes);
  const std::size_t functions = loaded.word(directory + 28);
  const std::size_t names = loaded.word(directory + 32);
  const std::size_t ordinals = loaded.word(directory + 36);
  for (std::uint32_t i = 0; i < loaded.word(directory + 24); ++i) {
    const std::size_t ordinal = loaded.half(ordinals + std::size_t{2} * i);
    image.exports.emplace_back(loaded.text(loaded.word(names + std::size_t{4} * i)),
                               loaded.word(functions + 4 * ordinal));
  }
}

void addRelocation(PeImage& image, std::size_t place) {
  if (place + sizeof(std::uint32_t) > image.bytes.size())
    throw ImageError("a relocation lies outside the image");
  image.relocations.push_back(static_cast<std::uint32_t>(place));
}

void readRelocations(PeImage& image, std::size_t place, std::size_t size) {
  const Bytes loaded(image.bytes);
  for (const std::size_t end = place + size; place < end;) {
    const std::uint32_t page = loaded.word(place);
    const std::uint32_t length = loaded.word(place + 4);
    if (length < 8) throw ImageError("a block of relocations is cut short");
    for (std::size_t entry = place + 8; entry < place + length; entry += 2) {
      const std::uint16_t value = loaded.half(entry);
      const auto kind = static_cast<std::uint16_t>(value >> 12);
      if (kind == kRelocationNone) continue;
      if (kind != kRelocationWord) throw ImageError("it has a relocation of kind " + std::to_string(kind));
      addRelocation(image, std::size_t{page} + (value & 0xFFF));
    }
    place += length;
  }
}

}  // namespace

PeImage readImage(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  const std::vector<char> contents((std::istreambuf_iterator<char>(stream)), {});
  if (!stream.is_open() || stream.bad()) throw ImageError("it can't be read");
  const Bytes file({reinterpret_cast<const std::uint8_t*>(contents.data()), contents.size()});
  const Headers headers = readHeaders(file);

  PeImage image;
  image.base = file.word(headers.optional + 28);
  image.entry = file.word(headers.optional + 16);
  const std::uint32_t size = file.word(headers.optional + 56);
  if (size > kLargestImage) throw ImageError("it claims " + std::to_string(size) + " bytes of memory");
  image.bytes.resize(size);
  for (std::size_t i = 0; i < headers.sectionCount; ++i) loadSection(image, file, headers.sections + 40 * i);

  const auto at = [&](std::size_t number) { return directory(file, headers, number); };
  if (at(kImports) != 0) readImports(image, at(kImports));
  if (at(kExports) != 0) readExports(image, at(kExports));
  if (at(kRelocations) != 0) {
    readRelocations(image, at(kRelocations), directorySize(file, headers, kRelocations));
  }
  return image;
}

}  // namespace emulator::arm
