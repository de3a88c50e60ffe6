// Drawings made for tests: a folder that goes away with the test, and files in it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "formats/package/zip_package.h"
#include "formats/package_parts.h"

namespace quorvel::formats::testing {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvel-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string file(const std::string& name) const { return (path_ / name).string(); }
  std::size_t count() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  std::filesystem::path path_;
};

inline void writeFile(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
}

inline std::string readFile(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

inline std::string sampleFile(const std::string& name) {
  return std::string(QUORVEL_SOURCE_FOLDER) + "/tests/data/drawings/" + name;
}

inline std::string partOf(const std::string& fileName, const std::string& part) {
  ZipPackage package;
  std::string bytes;
  if (!package.open(fileName).empty() || !package.read(part, bytes)) return {};
  return bytes;
}

}  // namespace quorvel::formats::testing
