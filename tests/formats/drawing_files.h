// Drawings made for tests: a folder that is removed with the test, and files in it. The packages that a test saved
// there are checked as a strict reader does.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "formats/package/zip_package.h"
#include "formats/package_parts.h"
#include "package_check.h"

namespace quorvel::formats::testing {

/// Files whose bytes a test made itself: they may be wrong on purpose.
inline std::set<std::string>& filesMadeByTests() {
  static std::set<std::string> names;
  return names;
}

inline bool isPackage(const std::filesystem::path& file) {
  const std::string ending = file.extension().string();
  return ending.size() == 5 && ending.starts_with(".vs");
}

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvel-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(path_, ignored)) {
      if (entry.is_regular_file() && isPackage(entry.path()) && !filesMadeByTests().contains(entry.path().string()))
        check(entry.path().string());
    }
    std::filesystem::remove_all(path_, ignored);
  }
  std::string file(const std::string& name) const { return (path_ / name).string(); }
  /// For saved drawings that inherit what is wrong from their source: a piece of the remarks that are expected.
  void expectRemarks(const std::string& piece) { expected_ = piece; }
  std::size_t count() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
  }

 private:
  void check(const std::string& file) const {
    for (const std::string& remark : tools::checkPackage(file, tools::Strictness::Sound)) {
      if (expected_.empty() || remark.find(expected_) == std::string::npos) ADD_FAILURE() << file << ": " << remark;
    }
  }

  std::filesystem::path path_;
  std::string expected_;
};

inline void writeFile(const std::string& name, const std::string& bytes) {
  filesMadeByTests().insert(name);
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
