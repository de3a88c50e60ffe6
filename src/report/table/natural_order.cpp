#include "report/table/natural_order.h"

#include <algorithm>

#include "base/text.h"

namespace quorvel::report {
namespace {

bool isDigitAt(std::string_view text, std::size_t at) { return at < text.size() && text[at] >= '0' && text[at] <= '9'; }

/// The digits from `at` on without leading zeros; `at` moves past them. A number may have any length.
std::string_view numberAt(std::string_view text, std::size_t& at) {
  const std::size_t start = at;
  while (isDigitAt(text, at)) ++at;
  std::string_view digits = text.substr(start, at - start);
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits;
}

int sign(bool isLess, bool isMore) { return isLess ? -1 : isMore ? 1 : 0; }

}  // namespace

int compareNaturally(std::string_view a, std::string_view b) {
  std::size_t atA = 0, atB = 0;
  while (atA < a.size() && atB < b.size()) {
    int order = 0;
    if (isDigitAt(a, atA) && isDigitAt(b, atB)) {
      const std::string_view x = numberAt(a, atA), y = numberAt(b, atB);
      order = x.size() != y.size() ? sign(x.size() < y.size(), true) : x.compare(y);
    } else {
      const char32_t x = foldCase(decodeNext(a, atA)), y = foldCase(decodeNext(b, atB));
      order = sign(x<y, x> y);
    }
    if (order != 0) return order;
  }
  const int rest = sign(atA == a.size() && atB < b.size(), atA < a.size());
  return rest != 0 ? rest : compareIgnoringCase(a, b);
}

}  // namespace quorvel::report
