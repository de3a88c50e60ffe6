// Runs the command `quorvel` as a shell does, in a folder of its own.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "package_check.h"

namespace quorvel::cli {

struct Outcome {
  int exitCode = -1;  ///< -1: it crashed
  std::string out, error;
};

inline std::string contentsOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// An empty folder that is removed with the object; programs run in it.
class WorkFolder {
 public:
  WorkFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "quorvel-cli-XXXXXX").string();
    path_ = mkdtemp(name.data());
    std::filesystem::create_directory(path_ / "work");
  }
  ~WorkFolder() {
    // The packages that the command saved are checked as a strict reader does.
    for (const std::string& name : files()) {
      if (written_.contains(name) || !std::filesystem::is_regular_file(file(name)) || !name.ends_with("x") ||
          name.find(".vs") == std::string::npos)
        continue;
      for (const std::string& remark : tools::checkPackage(file(name).string(), tools::Strictness::Sound))
        ADD_FAILURE() << name << ": " << remark;
    }
    std::filesystem::remove_all(path_);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  std::filesystem::path file(const std::string& name) const { return path_ / "work" / name; }

  void write(const std::string& name, const std::string& bytes) const {
    written_.insert(name);
    std::ofstream(file(name), std::ios::binary) << bytes;
  }

  /// `arguments` are words of the shell.
  Outcome run(const std::string& arguments) const {
    const std::string command = "cd '" + (path_ / "work").string() + "' && '" QUORVEL_PROGRAM "' " + arguments + " >'" +
                                (path_ / "out").string() + "' 2>'" + (path_ / "error").string() + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentsOf(path_ / "out"), contentsOf(path_ / "error")};
  }

  std::set<std::string> files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_ / "work"))
      names.insert(entry.path().filename().string());
    return names;
  }

 private:
  std::filesystem::path path_;
  mutable std::set<std::string> written_;
};

}  // namespace quorvel::cli
