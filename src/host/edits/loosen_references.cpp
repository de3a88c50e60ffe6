#include "host/edits/loosen_references.h"

#include <algorithm>
#include <cctype>
#include <unordered_set>

#include "host/connector_edits/end_glue.h"
#include "host/connectors/connector_ends.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

std::size_t skipBlanks(const std::string& text, std::size_t at) {
  while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) ++at;
  return at;
}

/// The formula with each "Sheet.n!Cell" of the numbers replaced; unchanged where it is written otherwise.
std::string withLostReferences(const Formula& formula, const std::vector<int>& numbers) {
  std::string text = formula.text();
  const auto& references = formula.references();
  for (auto reference = references.rbegin(); reference != references.rend(); ++reference) {
    const bool lost = reference->scope == ReferenceScope::Shape && reference->idLength > 0 &&
                      std::find(numbers.begin(), numbers.end(), reference->shapeId) != numbers.end();
    if (!lost) continue;
    std::size_t from = reference->idPosition;
    while (from > 0 && (std::isalnum(static_cast<unsigned char>(text[from - 1])) || text[from - 1] == '.')) --from;
    std::size_t to = skipBlanks(text, reference->idPosition + reference->idLength);
    if (to >= text.size() || text[to] != '!') continue;
    to = skipBlanks(text, to + 1) + reference->cellText.size();
    if (to <= text.size()) text.replace(from, to - from, "REF()");
  }
  return text;
}

}  // namespace

std::vector<CellAddress> loosenReferencesTo(Engine& engine, const std::vector<SheetId>& leaving) {
  std::vector<CellAddress> readers, changed;
  std::vector<int> numbers;
  for (const SheetId sheet : leaving) {
    engine.graph().appendReadersOf(sheet, readers);
    numbers.push_back(engine.store().sheet(sheet)->shapeId);
  }
  const PageId page = engine.store().sheet(leaving.front())->page;
  std::unordered_set<CellAddress> seen;
  for (const CellAddress& reader : readers) {
    const Sheet* sheet = engine.store().sheet(reader.sheet);
    if (!sheet || sheet->page != page || !seen.insert(reader).second) continue;
    if (std::find(leaving.begin(), leaving.end(), reader.sheet) != leaving.end()) continue;
    const Cell* cell = sheet->findLocal(reader.key);
    if (!cell || !cell->formula) continue;
    bool begin = false;
    const bool isTrigger = reader.key == triggerCell(true) || reader.key == triggerCell(false);
    if (isTrigger) {
      freeWalkingEnd(engine, reader.sheet, reader.key == triggerCell(true));
      continue;
    }
    Cell loose;
    loose.value = cell->value;
    if (!isEndCell(reader.key, begin)) {
      loose.formula = engine.store().formulas().get(withLostReferences(*cell->formula, numbers));
      if (!loose.formula || loose.formula == cell->formula) continue;
      changed.push_back(reader);
    }
    engine.edit().setCell(reader, std::move(loose));
  }
  return changed;
}

}  // namespace quorvel::host
