// Lists what a strict reader would find wrong in drawing packages: check_package [--complete] DRAWING...
#include <cstdio>
#include <string_view>

#include "package_check.h"

int main(int count, char** arguments) {
  using namespace quorvel::tools;
  auto strictness = Strictness::Sound;
  bool isClean = true;
  for (int i = 1; i < count; ++i) {
    if (std::string_view(arguments[i]) == "--complete") {
      strictness = Strictness::Complete;
      continue;
    }
    for (const std::string& remark : checkPackage(arguments[i], strictness)) {
      std::printf("%s: %s\n", arguments[i], remark.c_str());
      isClean = false;
    }
  }
  return isClean ? 0 : 1;
}
