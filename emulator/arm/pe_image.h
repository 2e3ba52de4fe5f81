// Reads a device library: a portable executable for ARM.
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace emulator::arm {

class ImageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct ImageSection {
  std::uint32_t place;  ///< relative to the image's base
  std::uint32_t size;   ///< in memory
  bool executable;
  bool writable;
};

struct ImageImport {
  std::string library;
  std::string name;
  std::uint32_t slot;  ///< the place of the word that receives the address
};

/// Places are relative to the base, and lie in `bytes`.
struct PeImage {
  std::uint32_t base = 0;
  std::uint32_t entry = 0;
  std::vector<std::uint8_t> bytes;  ///< the image as it lies in memory, before it is relocated
  std::vector<ImageSection> sections;
  std::vector<ImageImport> imports;
  std::vector<std::uint32_t> relocations;  ///< the places of the words that hold addresses
  std::vector<std::pair<std::string, std::uint32_t>> exports;
};

/// Throws ImageError, which says what is wrong with the file; nothing in it is trusted.
PeImage readImage(const std::filesystem::path& file);

}  // namespace emulator::arm
