#include "host/formula/formula.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "host/formula/formula_node.h"
#include "host/formula/functions.h"

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
  if (formulas_.size() >= nextSweep_) forgetUnused();
  formulas_.insert_or_assign(std::move(key), formula);
  return formula;
}

void FormulaPool::forgetUnused() {
  std::erase_if(formulas_, [](const auto& entry) { return entry.second.expired(); });
  // Sweeping when half of the entries may be dead keeps the cost of it in proportion to parsing.
  nextSweep_ = std::max<std::size_t>(1024, formulas_.size() * 2);
}

std::span<const FunctionRow> allFunctions() {
  static const std::vector<FunctionRow> functions = [] {
    std::vector<FunctionRow> all;
    for (const auto topic :
         {arithmeticFunctions(), logicFunctions(), textFunctions(), dateTimeFunctions(), geometryFunctions(),
          colourFunctions(), referenceFunctions(), hostFunctions(), pathFunctions(), relationFunctions()})
      all.insert(all.end(), topic.begin(), topic.end());
    return all;
  }();
  return functions;
}

int findFunction(std::string_view name) {
  static const std::unordered_map<std::string, int> byName = [] {
    std::unordered_map<std::string, int> names;
    for (const FunctionRow& row : allFunctions())
      names.emplace(foldCase(row.name), static_cast<int>(&row - allFunctions().data()));
    return names;
  }();
  auto found = byName.find(foldCase(name));
  if (found == byName.end() && name.starts_with('_')) found = byName.find(foldCase(name.substr(1)));
  return found == byName.end() ? -1 : found->second;
}

}  // namespace quorvel::host
