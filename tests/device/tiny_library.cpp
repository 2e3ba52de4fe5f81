#include "tests/device/tiny_library.h"

#include <cstring>

namespace test {

namespace {

constexpr std::uint32_t kCodePlace = 0x1000;
constexpr std::uint32_t kEntryPlace = 0x1800;
constexpr std::uint32_t kDataPlace = 0x2000;
constexpr std::uint32_t kSlots = kDataPlace + 8;
constexpr std::uint32_t kDescriptors = kDataPlace + 0x100;
constexpr std::uint32_t kExports = kDataPlace + 0x200;
constexpr std::uint32_t kTexts = kDataPlace + 0x300;
constexpr std::uint32_t kRelocations = kDataPlace + 0x600;
constexpr std::size_t kCodeInFile = 0x200;
constexpr std::size_t kDataInFile = 0x1200;

class File {
 public:
  void half(std::size_t at, std::uint16_t value) { put(at, &value, sizeof value); }
  void word(std::size_t at, std::uint32_t value) { put(at, &value, sizeof value); }
  void words(std::size_t at, const Code& code) { put(at, code.data(), code.size() * sizeof code[0]); }
  void text(std::size_t at, const std::string& value) { put(at, value.c_str(), value.size() + 1); }
  std::vector<std::uint8_t> take() { return std::move(bytes_); }

 private:
  void put(std::size_t at, const void* data, std::size_t size) {
    if (size != 0) std::memcpy(bytes_.data() + at, data, size);
  }

  std::vector<std::uint8_t> bytes_ = std::vector<std::uint8_t>(kDataInFile + 0x1000);
};

constexpr std::size_t inFile(std::uint32_t dataPlace) {
  return dataPlace - kDataPlace + kDataInFile;
}

void writeSection(File& file, std::size_t header, const std::string& name, std::uint32_t place,
                  std::size_t data, std::uint32_t flags) {
  file.text(header, name);
  file.word(header + 8, 0x1000);
  file.word(header + 12, place);
  file.word(header + 16, 0x1000);
  file.word(header + 20, static_cast<std::uint32_t>(data));
  file.word(header + 36, flags);
}

void writeHeaders(File& file, std::uint16_t machine, std::uint32_t relocationSize) {
  constexpr std::size_t kHeader = 0x40;
  constexpr std::size_t kOptional = kHeader + 24;
  file.text(0, "MZ");
  file.word(0x3C, kHeader);
  file.text(kHeader, "PE");
  file.half(kHeader + 4, machine);
  file.half(kHeader + 6, 2);     // sections
  file.half(kHeader + 20, 224);  // the optional header, with 16 directories
  file.half(kOptional, 0x10B);
  file.word(kOptional + 16, kEntryPlace);
  file.word(kOptional + 28, 0x10000000);  // where it is linked for
  file.word(kOptional + 56, 0x3000);      // size in memory
  file.word(kOptional + 92, 16);
  file.word(kOptional + 96, kExports);
  file.word(kOptional + 104, kDescriptors);
  file.word(kOptional + 136, kRelocations);
  file.word(kOptional + 140, relocationSize);
  writeSection(file, kOptional + 224, ".text", kCodePlace, kCodeInFile, 0x60000020);
  writeSection(file, kOptional + 264, ".data", kDataPlace, kDataInFile, 0xC0000040);
}

void writeExport(File& file, const std::string& name) {
  const std::size_t at = inFile(kExports);
  file.word(at + 20, 1);              // functions
  file.word(at + 24, 1);              // names
  file.word(at + 28, kExports + 40);  // the function's place
  file.word(at + 32, kExports + 44);  // the name's
  file.word(at + 36, kExports + 48);  // its number, 0
  file.word(at + 40, kCodePlace);
  file.word(at + 44, kTexts);
  file.text(inFile(kTexts), name);
}

void writeImports(File& file, const std::vector<std::string>& names) {
  if (names.empty()) return;
  const std::size_t at = inFile(kDescriptors);
  constexpr std::uint32_t kLibrary = kTexts + 0x80;
  file.word(at + 12, kLibrary);
  file.word(at + 16, kSlots);
  file.text(inFile(kLibrary), "coredll.dll");
  std::uint32_t text = kLibrary + 0x10;
  for (std::size_t i = 0; i < names.size(); ++i) {
    file.word(inFile(kSlots) + 4 * i, text);
    file.text(inFile(text) + 2, names[i]);  // behind a hint of two bytes
    text += static_cast<std::uint32_t>(names[i].size()) + 4;
  }
}

std::uint32_t sizeOfRelocations(const TinyLibrary& library) {
  if (library.relocations.empty()) return 0;
  return static_cast<std::uint32_t>(8 + library.relocations.size() * sizeof library.relocations[0]);
}

void writeRelocations(File& file, const TinyLibrary& library) {
  const std::size_t at = inFile(kRelocations);
  file.word(at, library.relocatedPage);
  file.word(at + 4, sizeOfRelocations(library));
  for (std::size_t i = 0; i < library.relocations.size(); ++i)
    file.half(at + 8 + 2 * i, library.relocations[i]);
}

}  // namespace

std::vector<std::uint8_t> TinyLibrary::bytes() const {
  File file;
  writeHeaders(file, machine, sizeOfRelocations(*this));
  file.words(kCodeInFile, session);
  file.words(kCodeInFile + kEntryPlace - kCodePlace, entry);
  writeExport(file, exportName);
  writeImports(file, imports);
  writeRelocations(file, *this);
  return file.take();
}

}  // namespace test
