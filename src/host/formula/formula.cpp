#include "host/formula/formula.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "host/formula/formula_node.h"

namespace quorvel::host {

Formula::Formula() = default;
Formula::~Formula() = default;

FormulaPtr FormulaPool::get(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && text[0] == '=') text = trimmed(text.substr(1));
  std::string key(text);
  if (const auto found = formulas_.find(key); found != formulas_.end()) {
    if (FormulaPtr formula = found->second.lock()) return formula;
  }
  FormulaPtr formula = parseFormula(text);
  if (!formula) return nullptr;
  if (formulas_.size() >= nextSweep_) removeUnused();
  formulas_.insert_or_assign(std::move(key), formula);
  return formula;
}

void FormulaPool::removeUnused() {
  std::erase_if(formulas_, [](const auto& entry) { return entry.second.expired(); });
  // Sweeping when half of the entries may be dead keeps the cost of it in proportion to parsing.
  nextSweep_ = std::max<std::size_t>(1024, formulas_.size() * 2);
}

}  // namespace quorvel::host
