#include "host/recalc/relations.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

const CellKey& relationships() {
  static const CellKey key = objectCell("Relationships");
  return key;
}

const CellKey& categories() {
  static const CellKey key = parseCellName("User.msvShapeCategories").or_(CellKey{});
  return key;
}

const CellKey& structure() {
  static const CellKey key = parseCellName("User.msvStructureType").or_(CellKey{});
  return key;
}

std::string textOf(const Store& store, SheetId sheet, const CellKey& key) {
  return findCell(store, sheet, key) ? cellText(store, sheet, key) : std::string();
}

/// The number at the place, and the place behind it.
Maybe<int> numberAt(std::string_view text, std::size_t& at) {
  int number = 0;
  const auto read = std::from_chars(text.data() + at, text.data() + text.size(), number);
  if (read.ec != std::errc()) return {};
  at = static_cast<std::size_t>(read.ptr - text.data());
  return number;
}

/// The place behind the next "DEPENDSON(". Containers name many shapes: their text is not copied to be searched.
std::size_t behindCall(const std::string& text, std::size_t from) {
  constexpr std::string_view call = "DEPENDSON";
  for (std::size_t at = text.find('(', from); at != std::string::npos; at = text.find('(', at + 1)) {
    if (at >= call.size() && equalIgnoringCase(std::string_view(text).substr(at - call.size(), call.size()), call))
      return at + 1;
  }
  return std::string::npos;
}

std::size_t placeInStack(const Store& store, SheetId shape) {
  const auto& order = store.siblings(*store.sheet(shape));
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), shape) - order.begin());
}

}  // namespace

bool namesRelated(const CellKey& key) { return key == relationships(); }

bool decidesRelations(const CellKey& key) {
  return namesRelated(key) || (key.section == SectionNumber::User && (key == categories() || key == structure()));
}

bool hasRelations(const Store& store, SheetId shape) {
  const FoundCell found = findCell(store, shape, relationships());
  return found.formula && found.formula->formula;
}

std::vector<SheetId> relatedTo(const Store& store, SheetId sheet, Relation relation) {
  const FoundCell found = findCell(store, sheet, relationships());
  std::vector<SheetId> related;
  if (!found.formula || !found.formula->formula) return related;
  const std::string& text = found.formula->formula->text();
  for (std::size_t at = behindCall(text, 0); at != std::string::npos;) {
    const Maybe<int> kind = numberAt(text, at);
    const std::size_t next = behindCall(text, at);
    if (kind == static_cast<int>(relation)) {
      constexpr std::string_view reference = "sheet.";
      const std::string named =
          foldCase(std::string_view(text).substr(at, next == std::string::npos ? next : next - at));
      for (std::size_t from = named.find(reference); from != std::string::npos; from = named.find(reference, from)) {
        from += reference.size();
        const Maybe<int> number = numberAt(named, from);
        const SheetId shape = number ? resolveShapeId(store, found.formulaSheet, sheet, *number) : SheetId{};
        if (shape) related.push_back(shape);
      }
    }
    at = next;
  }
  return related;
}

bool isRelatedTo(const Store& store, SheetId sheet, SheetId other, std::initializer_list<Relation> relations) {
  return std::any_of(relations.begin(), relations.end(), [&](Relation relation) {
    const std::vector<SheetId> related = relatedTo(store, sheet, relation);
    return std::find(related.begin(), related.end(), other) != related.end();
  });
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

std::string categoriesOf(const Store& store, SheetId sheet) { return textOf(store, sheet, categories()); }

std::string structureOf(const Store& store, SheetId sheet) { return textOf(store, sheet, structure()); }

}  // namespace quorvel::host
