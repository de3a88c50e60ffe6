#include "host/recalc/relations.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

std::string userText(const Store& store, SheetId sheet, std::string_view cell) {
  const CellKey key = parseCellName(cell).or_(CellKey{});
  return key && findCell(store, sheet, key) ? cellText(store, sheet, key) : std::string();
}

/// The number at the place, and the place behind it.
Maybe<int> numberAt(std::string_view text, std::size_t& at) {
  int number = 0;
  const auto read = std::from_chars(text.data() + at, text.data() + text.size(), number);
  if (read.ec != std::errc()) return {};
  at = static_cast<std::size_t>(read.ptr - text.data());
  return number;
}

std::size_t placeInStack(const Store& store, SheetId shape) {
  const auto& order = store.siblings(*store.sheet(shape));
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), shape) - order.begin());
}

}  // namespace

std::vector<SheetId> relatedTo(const Store& store, SheetId sheet, Relation relation) {
  static const CellKey key = objectCell("Relationships");
  const FoundCell found = findCell(store, sheet, key);
  std::vector<SheetId> related;
  if (!found.formula || !found.formula->formula) return related;
  const std::string text = foldCase(found.formula->formula->text());
  constexpr std::string_view call = "dependson(", reference = "sheet.";
  for (std::size_t at = text.find(call); at != std::string::npos; at = text.find(call, at)) {
    at += call.size();
    const Maybe<int> kind = numberAt(text, at);
    const std::size_t next = std::min(text.find(call, at), text.size());
    if (!(kind == static_cast<int>(relation))) continue;
    for (std::size_t from = text.find(reference, at); from < next; from = text.find(reference, from)) {
      from += reference.size();
      const Maybe<int> number = numberAt(text, from);
      const SheetId shape = number ? resolveShapeId(store, found.formulaSheet, sheet, *number) : SheetId{};
      if (shape) related.push_back(shape);
    }
  }
  return related;
}

std::vector<SheetId> containersOf(const Store& store, SheetId sheet) {
  std::vector<SheetId> containers;
  std::vector<SheetId> open = {sheet};
  while (!open.empty()) {
    const SheetId next = open.back();
    open.pop_back();
    for (const SheetId container : relatedTo(store, next, Relation::Containers)) {
      if (container == sheet || std::find(containers.begin(), containers.end(), container) != containers.end())
        continue;
      containers.push_back(container);
      open.push_back(container);
    }
  }
  std::sort(containers.begin(), containers.end(), [&](SheetId a, SheetId b) {
    return std::pair(placeInStack(store, a), a) > std::pair(placeInStack(store, b), b);
  });
  return containers;
}

std::string categoriesOf(const Store& store, SheetId sheet) {
  return userText(store, sheet, "User.msvShapeCategories");
}

std::string structureOf(const Store& store, SheetId sheet) { return userText(store, sheet, "User.msvStructureType"); }

}  // namespace quorvel::host
