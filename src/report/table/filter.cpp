#include "report/table/filter.h"

#include <algorithm>

#include "base/text.h"
#include "report/table/natural_order.h"

namespace quorvel::report {
namespace {

bool fits(Comparison comparison, int order) {
  switch (comparison) {
    case Comparison::Equal:
      return order == 0;
    case Comparison::NotEqual:
      return order != 0;
    case Comparison::Less:
      return order < 0;
    case Comparison::AtMost:
      return order <= 0;
    case Comparison::More:
      return order > 0;
    case Comparison::AtLeast:
      return order >= 0;
    default:
      return false;
  }
}

bool compares(const Condition& condition, const TableCell& cell) {
  const std::string_view text = trimmed(cell.text);
  switch (condition.comparison) {
    case Comparison::Empty:
      return text.empty();
    case Comparison::NotEmpty:
      return !text.empty();
    case Comparison::Contains:
      return containsIgnoringCase(text, condition.text);
    case Comparison::BeginsWith:
      return startsWithIgnoringCase(text, condition.text);
    default:
      break;
  }
  if (condition.value.format == ValueFormat::Text) {
    const bool isSame = equalIgnoringCase(text, trimmed(condition.text));
    return fits(condition.comparison, isSame ? 0 : compareNaturally(text, trimmed(condition.text)));
  }
  if (!cell.number) return condition.comparison == Comparison::NotEqual;
  return fits(condition.comparison, *cell.number < condition.number ? -1 : *cell.number > condition.number ? 1 : 0);
}

}  // namespace

bool passes(const Condition& condition, const ReadCell& read) {
  const auto holds = [&](const Condition& part) { return passes(part, read); };
  switch (condition.kind) {
    case Condition::Kind::All:
      return std::ranges::all_of(condition.parts, holds);
    case Condition::Kind::Any:
      return std::ranges::any_of(condition.parts, holds);
    case Condition::Kind::Compare:
      break;
  }
  return compares(condition, read(condition.value));
}

}  // namespace quorvel::report
