// Compares two drawings of one format: compare_drawings BEFORE AFTER [LINES]
// prints where their normal forms differ, at most LINES lines (40 without it). Exit codes: 0 equal, 1 different, 2 when
// a file cannot be read or the two are of different formats.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "formats/normal_form.h"

namespace {

using Lines = std::vector<std::string_view>;

/// Prints lines until it has printed as many as were asked for.
class Report {
 public:
  explicit Report(int limit) : limit_(limit) {}
  void print(std::string_view sign, std::string_view line) {
    if (printed_++ < limit_)
      std::printf("%.*s%.*s\n", static_cast<int>(sign.size()), sign.data(), static_cast<int>(line.size()), line.data());
  }
  bool isFull() const { return printed_ >= limit_; }

 private:
  const int limit_;
  int printed_ = 0;
};

/// Reads both texts; where they differ it searches a limited number of lines for the next one that both have.
void compare(const Lines& before, const Lines& after, Report& report) {
  constexpr std::size_t reach = 400;
  std::size_t i = 0, j = 0;
  std::string_view part, named;
  while ((i < before.size() || j < after.size()) && !report.isFull()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      if (before[i].starts_with("part ")) part = before[i];
      ++i, ++j;
      continue;
    }
    if (named != part) report.print("", part);
    named = part;
    std::size_t skipBefore = before.size() - i, skipAfter = after.size() - j;
    for (std::size_t sum = 1; sum < reach; ++sum) {
      bool found = false;
      for (std::size_t skip = 0; skip <= sum && !found; ++skip) {
        const std::size_t a = i + skip, b = j + sum - skip;
        found = a < before.size() && b < after.size() && before[a] == after[b];
        if (found) skipBefore = skip, skipAfter = sum - skip;
      }
      if (found) break;
    }
    for (; skipBefore > 0; --skipBefore) report.print("- ", before[i++]);
    for (; skipAfter > 0; --skipAfter) report.print("+ ", after[j++]);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3 || argc > 4) {
    std::fputs("usage: compare_drawings BEFORE AFTER [LINES]\n", stderr);
    return 2;
  }
  std::string forms[2];
  for (int i = 0; i < 2; ++i) {
    const quorvel::Maybe<std::string> form = quorvel::formats::normalForm(argv[1 + i]);
    if (!form) {
      std::fprintf(stderr, "%s cannot be read as a drawing.\n", argv[1 + i]);
      return 2;
    }
    forms[i] = *form;
  }
  const auto isSingleFile = [](const std::string& form) { return form.find("\npart ") == std::string::npos; };
  if (isSingleFile(forms[0]) != isSingleFile(forms[1])) {
    std::fputs("The drawings are of different formats; convert one of them first.\n", stderr);
    return 2;
  }
  if (forms[0] == forms[1]) return 0;
  Report report(argc > 3 ? std::max(1, std::atoi(argv[3])) : 40);
  compare(quorvel::splitAt(forms[0], '\n'), quorvel::splitAt(forms[1], '\n'), report);
  return 1;
}
