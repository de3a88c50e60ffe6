#include "host/formula/functions.h"

#include <unordered_map>
#include <vector>

#include "base/text.h"

namespace quorvel::host {

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
