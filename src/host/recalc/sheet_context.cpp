#include "host/recalc/sheet_context.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"
#include "host/formula/calendar.h"
#include "host/formula/word_list.h"
#include "host/recalc/dependency_graph.h"
#include "host/recalc/measured_path.h"
#include "host/recalc/relations.h"
#include "host/recalc/themes.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/references.h"
#include "host/sheet/theme_index.h"
#include "host/sheet/transform.h"
#include "host/sheet/units_of_page.h"

namespace quorvel::host {
namespace {

/// Days since 1899-12-30 of an ISO 8601 time; nothing for other text.
Maybe<double> daysOfIso(std::string_view text) {
  int parts[6] = {0, 1, 1, 0, 0, 0};
  const char* at = text.data();
  const char* end = at + text.size();
  for (int i = 0; i < 6; ++i) {
    const auto read = std::from_chars(at, end, parts[i]);
    if (read.ec != std::errc()) {
      if (i < 3) return {};
      break;
    }
    at = read.ptr < end ? read.ptr + 1 : end;
  }
  const int year = parts[0] - (parts[1] <= 2), month = parts[1];
  const int era = (year >= 0 ? year : year - 399) / 400;
  const int yearOfEra = year - era * 400;
  const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + parts[2] - 1;
  const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  const double days = era * 146097.0 + dayOfEra - 719468 + 25569;  // 25569 days from 1899-12-30 to 1970-01-01
  return days + parts[3] / 24.0 + parts[4] / 1440.0 + parts[5] / 86400.0;
}

}  // namespace

SheetId SheetContext::resolve(const Reference* reference) const {
  return reference ? resolveReference(store_, definition_, cell_.sheet, *reference) : cell_.sheet;
}

CellKey SheetContext::keyOn(SheetId target, const Reference& reference) const {
  return keyOnSheet(store_, target, reference.cell);
}

Value SheetContext::valueOf(const Reference& reference) {
  const SheetId target = resolve(&reference);
  if (!target || !reference.cell) return Value::error(ErrorCode::Reference);
  const CellKey key = keyOn(target, reference);
  if (!cellMayBeRead(store_, target, key)) return Value::error(ErrorCode::Reference);
  Value value = cellValue(store_, target, key);
  if (!isThemed(value)) return value;
  const ThemeAnswer answer = themedCell(store_, target, key);
  if (answer.kind == ThemeAnswer::Known) return answer.value;
  readUnknown_ = true;
  return value;
}

double SheetContext::measureText(const TextMetricsRequest& request) {
  static const CellKey left = objectCell("LeftMargin"), right = objectCell("RightMargin"),
                       top = objectCell("TopMargin"), bottom = objectCell("BottomMargin");
  const SheetId measured = resolve(request.shape);
  if (!measured) return 0;
  const auto margin = [&](const CellKey& key) { return cellNumber(store_, measured, key); };
  // A text has its size on paper; formulas count in the drawing, which may be larger or smaller.
  const double scale = drawingPerPaper(store_, measured), sides = margin(left) + margin(right);
  const double wrapAt = request.maxWidth < 0 ? -1 : std::max(0.0, request.maxWidth / scale - sides);
  const TextMetrics::Size size = metrics_.measure(store_, measured, wrapAt);
  if (!request.height) return (size.width + sides) * scale;
  // Drawings hold heights of texts that are this much more than the heights of the lines.
  constexpr double surplus = 0.00005;
  const bool isEmpty = shownText(store_, measured).empty();
  return (size.height + margin(top) + margin(bottom) + (isEmpty ? 0 : surplus)) * scale;
}

std::string SheetContext::shapeText(const Reference& reference) {
  const SheetId target = resolve(&reference);
  return target ? shownText(store_, target) : std::string();
}

Maybe<Value> SheetContext::convertPoint(const Value& point, const Reference* from, const Reference* to) {
  const SheetId source = resolve(from), target = resolve(to);
  if (!source || !target) return {};
  const Point onPage = toPageMatrix(store_, source)({point.internal(), point.y()});
  const Point there = toPageMatrix(store_, target).inverse()(onPage);
  return Value::point(there.x, there.y);
}

Maybe<Value> SheetContext::toParent(const Value& point, const Reference* shape) {
  // The point is in the coordinates of the other shape; the result is in those of whatever holds this one.
  const SheetId source = resolve(shape);
  const Sheet* here = store_.sheet(cell_.sheet);
  if (!source || !here) return {};
  const Point onPage = toPageMatrix(store_, source)({point.internal(), point.y()});
  if (!here->parent) return Value::point(onPage.x, onPage.y);
  const Point there = toPageMatrix(store_, here->parent).inverse()(onPage);
  return Value::point(there.x, there.y);
}

Maybe<Value> SheetContext::walkedTo() {
  bool begin = false;
  const Sheet* here = store_.sheet(cell_.sheet);
  if (!here || !isEndCell(cell_.key, begin)) return {};
  const Maybe<Point> place = walkedPlace(store_, cell_.sheet, begin);
  if (!place) return {};
  const Point there = toPageMatrix(store_, here->parent).inverse()(*place);
  return Value::point(there.x, there.y);
}

Maybe<FormulaPath> SheetContext::path(const Reference& section, bool& exists) {
  exists = false;
  const SheetId target = resolve(&section);
  if (!target || !section.cell) return {};
  return measuredPath(store_, target, section.cell.section, exists);
}

Maybe<std::vector<double>> SheetContext::boundingBox() { return drawnBox(store_, cell_.sheet); }

Maybe<Value> SheetContext::evaluateInside(const Formula& formula, SheetContext& inner) {
  if (depth_ >= deepest) return Value::error(ErrorCode::Circle);
  inner.depth_ = depth_ + 1;
  const Maybe<Value> value = evaluate(formula, inner);
  readUnknown_ |= inner.readUnknown_;
  return value;
}

Maybe<Value> SheetContext::evaluateCell(const Reference& cell, std::vector<std::pair<std::string, Value>> arguments) {
  const SheetId target = resolve(&cell);
  if (!target || !cell.cell) return Value::error(ErrorCode::Reference);
  const CellKey key = keyOn(target, cell);
  const FoundCell found = findCell(store_, target, key);
  if (!found.formula || !found.formula->formula) return valueOf(cell);
  SheetContext inner(store_, metrics_, found.formulaSheet, {target, key});
  inner.arguments_ = std::move(arguments);
  return evaluateInside(*found.formula->formula, inner);
}

Maybe<Value> SheetContext::evaluateText(const Reference& shape, const std::string& text) {
  const SheetId target = resolve(&shape);
  const FormulaPtr formula = target ? parseFormula(text) : nullptr;
  if (!formula) return {};
  SheetContext inner(store_, metrics_, target, {target, shape.cell});
  return evaluateInside(*formula, inner);
}

Unit SheetContext::explicitUnit(Unit unit) { return explicitUnitOf(store_, cell_.sheet, unit); }

ThemeAnswer SheetContext::themeValue(std::string_view property) {
  return property.empty() ? themedCell(store_, cell_.sheet, cell_.key) : themeProperty(store_, cell_.sheet, property);
}

Maybe<std::uint32_t> SheetContext::throughGradientStop(std::uint32_t rgb, int stop) {
  if (themeNumber(store_, cell_.sheet) == 0) return rgb;
  if (!store_.themes()) return {};
  return store_.themes()->throughGradientStop(store_, cell_.sheet, rgb, stop);
}

Maybe<Value> SheetContext::argument(std::string_view name) {
  for (const auto& [given, value] : arguments_) {
    if (equalIgnoringCase(given, name)) return value;
  }
  return {};
}

Value SheetContext::relatedValue(std::string_view relation, int index, std::string_view category,
                                 const Reference& cell) {
  std::vector<SheetId> related = relation == "CONTAINER" ? containersOf(store_, cell_.sheet)
                                 : relation == "LIST"    ? relatedTo(store_, cell_.sheet, Relation::List)
                                                         : relatedTo(store_, cell_.sheet, Relation::CalloutTarget);
  if (!trimmed(category).empty()) {
    std::erase_if(related, [&](SheetId each) { return !hasWord(categoriesOf(store_, each), category); });
  }
  if (index < 1 || index > static_cast<int>(related.size()) || !cell.cell) return Value::error(ErrorCode::Reference);
  const SheetId target = related[static_cast<std::size_t>(index) - 1];
  const CellKey key = keyOn(target, cell);
  if (!cellMayBeRead(store_, target, key)) return Value::error(ErrorCode::Reference);
  return cellValue(store_, target, key);
}

bool SheetContext::hasFormula(const Reference& reference, bool localOnly) {
  const SheetId target = resolve(&reference);
  if (!target || !reference.cell) return false;
  const FoundCell found = findCell(store_, target, keyOn(target, reference));
  if (!found.formula || found.formula->noFormula) return false;
  return !localOnly || found.formulaSheet == target;
}

Maybe<int> SheetContext::fontNumber(std::string_view name) {
  const Sheet* sheet = store_.sheet(cell_.sheet);
  const Document* document = sheet ? store_.document(sheet->document) : nullptr;
  if (!document) return {};
  for (std::size_t i = 0; i < document->fonts.size(); ++i) {
    if (equalIgnoringCase(document->fonts[i].name, name)) return static_cast<int>(i);
  }
  return {};
}

Maybe<Value> SheetContext::shapeProperty(std::string_view name) const {
  const Sheet& sheet = *store_.sheet(cell_.sheet);
  const auto is = [&](std::string_view other) { return equalIgnoringCase(name, other); };
  const auto count = [](std::size_t number) { return Maybe<Value>(Value::number(static_cast<double>(number))); };
  if (is("DATA1")) return Value::text(sheet.data1);
  if (is("DATA2")) return Value::text(sheet.data2);
  if (is("DATA3")) return Value::text(sheet.data3);
  if (is("TYPE")) {
    switch (sheet.kind) {
      case SheetKind::Document:
        return Value::number(79);
      case SheetKind::Page:
        return Value::number(70);
      case SheetKind::Style:
        return Value::number(74);
      case SheetKind::Shape:
        return Value::number(72);
      case SheetKind::Group:
        return Value::number(71);
      case SheetKind::Foreign:
        return Value::number(78);
      case SheetKind::Guide:
        return Value::number(77);
    }
  }
  if (is("BKGPAGENAME") || is("BKGPAGENAMEU")) {
    const Page* page = store_.page(sheet.page);
    const Page* back = page ? store_.page(page->backPage) : nullptr;
    if (!back) return Value::text("<no background>");
    return Value::text(is("BKGPAGENAME") ? back->name : back->universalName);
  }
  if (!sheet.isShape()) return is("IS1D") ? Maybe<Value>(Value::error(ErrorCode::Reference)) : Maybe<Value>();
  if (is("IS1D")) return Value::boolean(bool(findCell(store_, sheet.id, endCell(true, false))));
  if (is("PINX")) return cellValue(store_, sheet.id, objectCell("PinX"));
  if (is("PINY")) return cellValue(store_, sheet.id, objectCell("PinY"));
  if (is("ISTHEMED")) return Value::boolean(cellNumber(store_, sheet.id, objectCell("ColorSchemeIndex")) != 0);
  if (is("CATEGORIES")) return Value::text(categoriesOf(store_, sheet.id));
  if (is("CONTAINERCOUNT")) return count(containersOf(store_, sheet.id).size());
  if (is("CALLOUTCOUNT")) return count(relatedTo(store_, sheet.id, Relation::Callouts).size());
  if (is("LISTMEMBERCOUNT")) return count(relatedTo(store_, sheet.id, Relation::MembersOfList).size());
  if (is("CONTAINERMEMBERCOUNT")) {
    const std::string structure = structureOf(store_, sheet.id);
    if (!equalIgnoringCase(structure, "Container") && !equalIgnoringCase(structure, "List")) return Value::number(-1);
    return count(relatedTo(store_, sheet.id, Relation::MembersOfContainer).size());
  }
  if (is("LISTORDER")) {
    const std::vector<SheetId> lists = relatedTo(store_, sheet.id, Relation::List);
    if (lists.empty()) return Value::number(-1);
    const std::vector<SheetId> members = relatedTo(store_, lists.front(), Relation::MembersOfList);
    const auto place = std::find(members.begin(), members.end(), sheet.id);
    return Value::number(place == members.end() ? -1 : static_cast<double>(place - members.begin()) + 1);
  }
  return {};
}

Maybe<Value> SheetContext::property(std::string_view name) {
  const Sheet* sheet = store_.sheet(cell_.sheet);
  const Document* document = sheet ? store_.document(sheet->document) : nullptr;
  if (!document) return {};
  const Page* page = store_.page(drawn_ ? drawn_ : sheet->page);
  const auto is = [&](std::string_view other) { return equalIgnoringCase(name, other); };
  const auto isForeground = [&](PageId id) { return !store_.page(id)->background; };
  const auto text = [](std::string_view value) { return Maybe<Value>(Value::text(value)); };
  const auto time = [](std::string_view iso) {
    const Maybe<double> days = daysOfIso(iso);
    return days ? Maybe<Value>(Value::date(*days)) : Maybe<Value>();
  };
  const DocumentProperties& properties = document->properties;
  if (is("DOCLASTSAVE")) return time(properties.timeSaved);
  if (is("NOW")) return Value::date(daysNow());
  if (is("DOCCREATION")) return time(properties.timeCreated);
  if (is("DOCLASTEDIT")) return time(properties.timeEdited);
  if (is("DOCLASTPRINT")) return time(properties.timePrinted);
  if (is("CREATOR")) return text(properties.creator);
  if (is("TITLE")) return text(properties.title);
  if (is("SUBJECT")) return text(properties.subject);
  if (is("MANAGER")) return text(properties.manager);
  if (is("COMPANY")) return text(properties.company);
  if (is("CATEGORY")) return text(properties.category);
  if (is("KEYWORDS")) return text(properties.keywords);
  if (is("DESCRIPTION")) return text(properties.description);
  if (is("HYPERLINKBASE")) return text(properties.hyperlinkBase);
  if (is("FILENAME")) return text(document->name);
  if (is("DIRECTORY")) return text(document->path);
  if (is("PAGECOUNT")) {
    const auto foreground = std::count_if(document->pages.begin(), document->pages.end(), isForeground);
    return Value::number(static_cast<double>(foreground));
  }
  if (is("ID")) return Value::number(sheet->shapeId);
  if (is("NAME")) return text(store_.shapeName(*sheet));
  if (is("NAMEU")) return text(store_.shapeName(*sheet, NameKind::Universal));
  if (is("MASTERNAME") || is("MASTERNAMEU")) {
    const Master* master = store_.master(store_.masterOf(cell_.sheet));
    if (!master) return text("<no master>");
    return text(is("MASTERNAME") ? master->name : master->universalName);
  }
  if (const Maybe<Value> own = shapeProperty(name)) return own;
  if (page && is("PAGENAME")) return text(page->name);
  if (page && is("PAGENAMEU")) return text(page->universalName);
  if (page && is("PAGENUMBER")) {
    const auto place = std::find(document->pages.begin(), document->pages.end(), page->id);
    if (place == document->pages.end()) return {};
    // Background pages are not counted and have no number.
    if (page->background) return Value::number(0);
    return Value::number(static_cast<double>(std::count_if(document->pages.begin(), place, isForeground)) + 1);
  }
  return {};
}

Value SheetContext::lastValue() { return cellValue(store_, cell_.sheet, cell_.key); }

}  // namespace quorvel::host
