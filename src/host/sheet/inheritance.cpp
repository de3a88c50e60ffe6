#include "host/sheet/inheritance.h"

#include <algorithm>
#include <unordered_map>

#include "host/cells/cell_holders.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"

namespace quorvel::host {
namespace {

SheetId styleOf(const Store& store, SheetId id, SheetId Sheet::*member) {
  // A file may chain styles or prototypes in a circle; real ones are a few levels deep.
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return {};
    if (sheet->*member) return sheet->*member;
    id = sheet->prototype;
  }
  return {};
}

SheetId Sheet::*memberFor(StyleSource source) {
  return source == StyleSource::Line   ? &Sheet::lineStyle
         : source == StyleSource::Fill ? &Sheet::fillStyle
                                       : &Sheet::textStyle;
}

/// Sections that style sheets hold have one row there, the first.
bool standsInStyles(SectionNumber section) {
  return section == SectionNumber::Object || section == SectionNumber::Character ||
         section == SectionNumber::Paragraph || section == SectionNumber::Tab ||
         section == SectionNumber::FillGradient || section == SectionNumber::LineGradient;
}

void take(FoundCell& found, const Cell* cell, SheetId sheet) {
  if (!found.value) found.value = cell;
  if (!found.formula && !cell->inheritsFormula) {
    found.formula = cell;
    found.formulaSheet = sheet;
  }
}

}  // namespace

SheetId lineStyleOf(const Store& store, SheetId sheet) { return styleOf(store, sheet, &Sheet::lineStyle); }
SheetId fillStyleOf(const Store& store, SheetId sheet) { return styleOf(store, sheet, &Sheet::fillStyle); }
SheetId textStyleOf(const Store& store, SheetId sheet) { return styleOf(store, sheet, &Sheet::textStyle); }

FoundCell findCell(const Store& store, SheetId id, const CellKey& key) {
  FoundCell found;
  SheetId at = id;
  for (int depth = 0; at && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(at);
    if (!sheet) break;
    if (const Section* section = sheet->find(key.section)) {
      if (section->deleted) return found;
      if (const Row* row = section->find(key.row)) {
        if (row->deleted) return found;
        if (const Cell* cell = row->find(key.column)) {
          take(found, cell, at);
          if (found.formula) return found;
        }
      }
    }
    at = sheet->prototype;
  }
  if (!standsInStyles(key.section)) return found;
  const CellDefinition* definition = definitionOf(key);
  if (!definition || definition->style == StyleSource::None) return found;
  SheetId Sheet::*member = memberFor(definition->style);
  CellKey inStyle = key;
  if (key.section != SectionNumber::Object) inStyle.row = RowKey::index(0);
  at = styleOf(store, id, member);
  for (int depth = 0; at && depth < 64; ++depth) {
    const Sheet* style = store.sheet(at);
    if (!style) break;
    if (const Cell* cell = style->findLocal(inStyle)) {
      take(found, cell, at);
      if (found.formula) return found;
    }
    if (style->*member == at) break;
    at = style->*member;
  }
  return found;
}

Value cellValue(const Store& store, SheetId sheet, const CellKey& key) {
  if (const FoundCell found = findCell(store, sheet, key)) return found.value->value;
  const CellDefinition* definition = definitionOf(key);
  if (!definition) return {};
  switch (definition->units) {
    case CellUnits::Text:
      return Value::text("");
    case CellUnits::Boolean:
      return Value::boolean(definition->defaultNumber != 0);
    case CellUnits::Length:
      return Value::number(definition->defaultNumber, Unit::Inches);
    case CellUnits::Angle:
      return Value::number(definition->defaultNumber, Unit::Degrees);
    default:
      return Value::number(definition->defaultNumber);
  }
}

double cellNumber(const Store& store, SheetId sheet, const CellKey& key) {
  return cellValue(store, sheet, key).asNumber().or_(0);
}

FormulaPtr formulaOf(const Store& store, SheetId sheet, const CellKey& key) {
  const FoundCell found = findCell(store, sheet, key);
  return found.formula ? found.formula->formula : nullptr;
}

bool isGuarded(const Store& store, SheetId sheet, const CellKey& key) {
  const FormulaPtr formula = formulaOf(store, sheet, key);
  return formula && formula->isGuarded();
}

std::string cellText(const Store& store, SheetId sheet, const CellKey& key) {
  return cellValue(store, sheet, key).asText();
}

namespace {

bool isHeld(const Store& store, SheetId id, const CellKey& key) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return false;
    if (sheet->findLocal(key)) return true;
    id = sheet->prototype;
  }
  return false;
}

std::uint8_t kindsOf(const Store& store, const Sheet& sheet) {
  static const CellKey beginX = objectCell("BeginX");
  switch (sheet.kind) {
    case SheetKind::Document:
      return holder::document;
    case SheetKind::Page:
      return holder::page;
    case SheetKind::Style:
      return holder::style;
    case SheetKind::Group:
      return holder::shape | holder::group | (isHeld(store, sheet.id, beginX) ? holder::line : 0);
    case SheetKind::Foreign:
      return holder::shape | holder::picture | (isHeld(store, sheet.id, beginX) ? holder::line : 0);
    default:
      return holder::shape | (isHeld(store, sheet.id, beginX) ? holder::line : 0);
  }
}

/// A row that only keeps values of inherited formulas is the master's.
bool isOwnRow(const Store& store, const Sheet& sheet, SectionNumber section, RowKey key) {
  const Row* row = sheet.find(section, key);
  if (!row || row->deleted) return false;
  const bool keepsValuesOnly = !row->cells.empty() && std::ranges::all_of(row->cells, [](const auto& entry) {
    return entry.second.inheritsFormula;
  });
  return !keepsValuesOnly || !sheet.prototype || !rowExists(store, sheet.prototype, section, key, false);
}

}  // namespace

bool cellExists(const Store& store, SheetId id, const CellKey& key, bool localOnly) {
  const Sheet* sheet = store.sheet(id);
  if (!sheet) return false;
  if (key.section == SectionNumber::Object) {
    const Cell* own = sheet->findLocal(key);
    if (localOnly) return own && !own->inheritsFormula;
    return own || (holdersOf(key) & kindsOf(store, *sheet)) != 0 || isHeld(store, id, key);
  }
  if (localOnly) {
    const bool comesWithSection = isGeometry(key.section) && key.row == RowKey::index(0);
    if (!isOwnRow(store, *sheet, key.section, key.row) &&
        !(comesWithSection && rowExists(store, id, key.section, key.row, true)))
      return false;
    return definitionOf(key) != nullptr || sheet->findLocal(key) != nullptr;
  }
  if (!rowExists(store, id, key.section, key.row, false)) {
    // A text has a first row of formatting though no sheet holds one.
    const bool hasText = sheet->isShape() || sheet->kind == SheetKind::Style;
    const bool isFormat = key.section == SectionNumber::Character || key.section == SectionNumber::Paragraph;
    if (!hasText || !isFormat || key.row != RowKey::index(0)) return false;
  }
  return definitionOf(key) != nullptr || findCell(store, id, key);
}

bool cellMayBeRead(const Store& store, SheetId id, const CellKey& key) {
  if (key.section == SectionNumber::Object && definitionOf(key)) return store.sheet(id) != nullptr;
  return cellExists(store, id, key, false);
}

namespace {

bool holdsNamedRow(const Store& store, SheetId id, SectionNumber number) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return false;
    if (const Section* section = sheet->find(number)) {
      if (section->deleted) return false;
      if (std::ranges::any_of(section->rows, [](const Row& row) { return row.key.isNamed(); })) return true;
    }
    id = sheet->prototype;
  }
  return false;
}

}  // namespace

CellKey keyOnSheet(const Store& store, SheetId sheet, const CellKey& key) {
  if (!hasNamedRows(key.section) || key.row.isNamed() || !holdsNamedRow(store, sheet, key.section)) return key;
  const std::vector<RowView> rows = rowsOf(store, sheet, key.section);
  if (key.row.index() >= rows.size()) return key;
  return {key.section, rows[key.row.index()].key, key.column};
}

CellKey keyByLocalName(const Store& store, SheetId sheet, const CellKey& key) {
  if (!key.row.isNamed()) return keyOnSheet(store, sheet, key);
  if (rowExists(store, sheet, key.section, key.row, false)) return key;
  for (const RowView& row : rowsOf(store, sheet, key.section)) {
    if (row.localName && folded(row.localName) == key.row.name()) return {key.section, row.key, key.column};
  }
  return key;
}

namespace {

/// Finds rows of a list that grows; long lists get an index, so that walking over them takes time in proportion to
/// their length.
class RowPlaces {
 public:
  using Place = std::vector<RowView>::iterator;
  explicit RowPlaces(std::vector<RowView>& rows) : rows_(rows) {}

  Place find(RowKey key) {
    if (rows_.size() < indexedFrom)
      return std::find_if(rows_.begin(), rows_.end(), [&](const RowView& view) { return view.key == key; });
    for (; indexed_ < rows_.size(); ++indexed_) places_[rows_[indexed_].key.packed()] = indexed_;
    const auto found = places_.find(key.packed());
    return found == places_.end() ? rows_.end() : rows_.begin() + static_cast<std::ptrdiff_t>(found->second);
  }
  /// Rows have moved from this place on.
  void removeFrom(Place place) {
    const auto stays = static_cast<std::size_t>(place - rows_.begin());
    if (stays >= indexed_) return;
    indexed_ = 0;
    places_.clear();
  }

 private:
  static constexpr std::size_t indexedFrom = 48;
  std::vector<RowView>& rows_;
  std::unordered_map<std::uint32_t, std::size_t> places_;
  std::size_t indexed_ = 0;
};

}  // namespace

std::vector<RowView> rowsOf(const Store& store, SheetId id, SectionNumber number) {
  std::vector<SheetId> chain;
  for (SheetId at = id; at && chain.size() < 64;) {
    const Sheet* sheet = store.sheet(at);
    if (!sheet) break;
    chain.push_back(at);
    const Section* section = sheet->find(number);
    if (section && section->deleted) break;
    at = sheet->prototype;
  }
  std::vector<RowView> rows;
  RowPlaces places(rows);
  for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
    const Section* section = store.sheet(*at)->find(number);
    if (!section || section->deleted) continue;
    const bool local = *at == id;
    for (const Row& row : section->rows) {
      const auto known = places.find(row.key);
      if (row.deleted) {
        if (known != rows.end()) places.removeFrom(rows.erase(known));
      } else if (known != rows.end()) {
        known->local = local;
        if (row.name) known->name = row.name;
        if (row.localName) known->localName = row.localName;
        if (row.type) known->type = row.type;
      } else {
        auto place = rows.end();
        const bool isLast = rows.empty() || (!rows.back().key.isNamed() && rows.back().key.index() < row.key.index());
        if (!row.key.isNamed() && !isLast) {
          place = std::find_if(rows.begin(), rows.end(), [&](const RowView& view) {
            return !view.key.isNamed() && view.key.index() > row.key.index();
          });
        }
        places.removeFrom(rows.insert(place, {row.key, row.name, row.localName, row.type, local}));
      }
    }
  }
  return rows;
}

Maybe<RowView> rowWithKey(const Store& store, SheetId id, SectionNumber number, RowKey key) {
  RowView view;
  bool exists = false;
  SheetId at = id;
  for (int depth = 0; at && depth < 64; ++depth) {
    const Sheet* const sheet = store.sheet(at);
    if (!sheet) break;
    if (const Section* const section = sheet->find(number)) {
      if (section->deleted) break;
      if (const Row* const row = section->find(key)) {
        if (row->deleted) break;
        // The nearest sheet decides what it says; the rest comes from its prototypes.
        if (!view.name) view.name = row->name;
        if (!view.localName) view.localName = row->localName;
        if (!view.type) view.type = row->type;
        view.local = view.local || at == id;
        exists = true;
      }
    }
    at = sheet->prototype;
  }
  view.key = key;
  return exists ? Maybe<RowView>(view) : Maybe<RowView>();
}

bool rowExists(const Store& store, SheetId id, SectionNumber number, RowKey key, bool localOnly) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return false;
    if (const Section* section = sheet->find(number)) {
      if (section->deleted) return false;
      if (const Row* row = section->find(key)) return !row->deleted;
      // The component row comes with its section.
      if (isGeometry(number) && key == RowKey::index(0)) return true;
    }
    if (localOnly) return false;
    id = sheet->prototype;
  }
  return false;
}

std::vector<SectionNumber> sectionsOf(const Store& store, SheetId id) {
  std::vector<SectionNumber> present, gone;
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) break;
    for (const Section& section : sheet->sections) {
      const auto contains = [&](const auto& list) {
        return std::find(list.begin(), list.end(), section.number) != list.end();
      };
      if (contains(present) || contains(gone)) continue;
      (section.deleted ? gone : present).push_back(section.number);
    }
    id = sheet->prototype;
  }
  std::sort(present.begin(), present.end());
  return present;
}

const TextBody* textOf(const Store& store, SheetId id) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return nullptr;
    if (sheet->text) return sheet->text.get();
    id = sheet->prototype;
  }
  return nullptr;
}

const ForeignData* foreignOf(const Store& store, SheetId id) {
  for (int depth = 0; id && depth < 64; ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return nullptr;
    if (sheet->foreign) return sheet->foreign.get();
    id = sheet->prototype;
  }
  return nullptr;
}

SheetId counterpartOf(const Store& store, SheetId context, SheetId prototype) {
  const auto inherits = [&](SheetId candidate) {
    for (int depth = 0; candidate && depth < 64; ++depth) {
      if (candidate == prototype) return true;
      const Sheet* sheet = store.sheet(candidate);
      candidate = sheet ? sheet->prototype : SheetId{};
    }
    return false;
  };
  if (inherits(context)) return context;
  std::vector<SheetId> waiting{store.instanceRoot(context)};
  while (!waiting.empty()) {
    const SheetId at = waiting.back();
    waiting.pop_back();
    if (inherits(at)) return at;
    if (const Sheet* sheet = store.sheet(at))
      waiting.insert(waiting.end(), sheet->children.begin(), sheet->children.end());
  }
  return {};
}

SheetId resolveShapeId(const Store& store, SheetId definition, SheetId context, int shapeId) {
  const Sheet* sheet = store.sheet(definition);
  const Page* page = sheet ? store.page(sheet->page) : nullptr;
  if (!page) return {};
  if (shapeId == 0) return page->sheet;  // "Sheet.0" is how some programs name the page's sheet
  const auto found = page->byShapeId.find(shapeId);
  if (found == page->byShapeId.end()) return {};
  return definition == context ? found->second : counterpartOf(store, context, found->second);
}

SheetId shapeOnPage(const Store& store, const Page& page, std::string_view name, int number) {
  std::vector<SheetId> shapes;
  for (const SheetId top : page.shapes) {
    const std::vector<SheetId> below = store.subtree(top);
    shapes.insert(shapes.end(), below.begin(), below.end());
  }
  if (const SheetId found = store.shapeNamed(shapes, name, NameKind::Universal)) return found;
  const auto numbered = number > 0 ? page.byShapeId.find(number) : page.byShapeId.end();
  if (numbered == page.byShapeId.end()) return {};
  const std::string_view base = name.substr(0, name.rfind('.'));
  return store.shapeNamed({numbered->second}, base, NameKind::Universal);
}

SheetId resolveShapeName(const Store& store, SheetId definition, SheetId context, const Reference& reference) {
  const Sheet* home = store.sheet(definition);
  const Page* page = home ? store.page(home->page) : nullptr;
  if (!page) return {};
  const SheetId found = shapeOnPage(store, *page, reference.name, reference.shapeId);
  return !found || definition == context ? found : counterpartOf(store, context, found);
}

std::string formulaFor(const Store& store, SheetId context, const FoundCell& cell) {
  if (!cell.formula) return {};
  if (!cell.formula->formula || cell.formulaSheet == context) return formulaText(*cell.formula);
  return cell.formula->formula->textWithIds([&](const Reference& reference) {
    const bool named = reference.scope == ReferenceScope::NamedShape;
    const Sheet* target = store.sheet(named ? resolveShapeName(store, cell.formulaSheet, context, reference)
                                            : resolveShapeId(store, cell.formulaSheet, context, reference.shapeId));
    return target && target->isShape() ? target->shapeId : -1;
  });
}

}  // namespace quorvel::host
