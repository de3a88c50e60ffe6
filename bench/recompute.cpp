// Evaluates every formula of a drawing and compares with the values that the file holds: how far the engine
// agrees with the program that wrote the file. Prints a line for each file and, with --list, each cell that differs or
// whose value the engine cannot compute.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "formats/formats.h"
#include "host/cells/cell_name.h"
#include "host/connector_edits/route_connectors.h"
#include "host/connectors/connector_ends.h"
#include "host/engine/engine.h"
#include "host/formula/number_text.h"
#include "host/recalc/recalculator.h"
#include "host/recalc/sheet_context.h"
#include "host/recalc/themes.h"
#include "host/sheet/inheritance.h"
#include "render/cells/colours.h"
#include "render/text/text_metrics.h"
#include "session/document_themes.h"

namespace quorvel::host {
namespace {

struct Count {
  std::size_t formulas = 0, agree = 0;
  std::size_t notComputed = 0;  ///< the engine keeps the file's value
  std::size_t blank = 0;        ///< the file marks the cell as themed, or has a font's name for a number
};

bool sameNumber(double ours, double file) { return std::fabs(ours - file) <= 2e-6 * std::max(1.0, std::fabs(file)); }

/// The same text when the numbers in it are compared by value: "NURBS(1, 3,0.5)" and "NURBS(1,3,0.50)".
bool sameButForSpelling(std::string_view a, std::string_view b) {
  const auto skipBlanks = [](std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
  };
  for (;;) {
    a = skipBlanks(a);
    b = skipBlanks(b);
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    const std::size_t lengthA = numberLength(a), lengthB = numberLength(b);
    if (lengthA && lengthB) {
      if (!sameNumber(numberOf(a.substr(0, lengthA)), numberOf(b.substr(0, lengthB)))) return false;
      a.remove_prefix(lengthA);
      b.remove_prefix(lengthB);
      continue;
    }
    if (a.front() != b.front()) return false;
    a.remove_prefix(1);
    b.remove_prefix(1);
  }
}

/// Both programs round widths of letters along the line.
constexpr double roundedText = 1e-4;

bool agrees(const Document& document, const Formula& formula, const Value& ours, const Cell& cell) {
  const Value& file = cell.value;
  // The file keeps the last valid value with the error.
  if (ours.isError() && cell.fileError != ErrorCode::None) return ours.errorCode() == cell.fileError;
  if (ours == file) return true;
  if (ours.kind() == ValueKind::Colour || file.kind() == ValueKind::Colour) {
    const Maybe<std::uint32_t> a = render::colourOf(document, ours), b = render::colourOf(document, file);
    return a && b && *a == *b;
  }
  // An empty text counts as 0 where a number is expected.
  const auto number = [](const Value& value) {
    return value.isText() && value.textView().empty() ? Maybe<double>(0) : value.asNumber();
  };
  const Maybe<double> a = number(ours), b = number(file);
  if (a && b && formula.readsText() && std::fabs(*a - *b) <= roundedText) return true;
  if (a && b) return sameNumber(*a, *b);
  return sameButForSpelling(ours.asText(), file.asText());
}

class Recompute {
 public:
  Recompute(Store& store, const TextMetrics& metrics, bool list)
      : store_(store), graph_(store), recalculator_(store, graph_), list_(list) {
    recalculator_.setTextMetrics(metrics);
  }

  Count document(DocumentId id) {
    const Document& document = *store_.document(id);
    sheet(document.sheet);
    for (const MasterId master : document.masters) page(store_.master(master)->contents);
    for (const PageId each : document.pages) page(each);
    return count_;
  }

 private:
  void page(PageId id) {
    const Page& page = *store_.page(id);
    sheet(page.sheet);
    for (const SheetId top : page.shapes) {
      for (const SheetId each : store_.subtree(top)) sheet(each);
    }
  }

  void sheet(SheetId id) {
    const Sheet& sheet = *store_.sheet(id);
    for (const Section& section : sheet.sections) {
      for (const Row& row : section.rows) {
        for (const auto& [column, cell] : row.cells) check({id, {section.number, row.key, column}}, cell);
      }
    }
  }

  void check(const CellAddress& address, const Cell& cell) {
    const FoundCell found = findCell(store_, address.sheet, address.key);
    if (!found.formula || !found.formula->formula || cell.noFormula || cell.isComputed) return;
    if (isThemed(cell.value)) {
      ++count_.blank;
      return;
    }
    Maybe<Value> ours = recalculator_.evaluateNow(address);
    if (!ours) ours = routedEnd(address, *found.formula->formula);
    if (!ours && isFontNumber(address, found)) {
      ++count_.blank;
      return;
    }
    ++count_.formulas;
    if (!ours) {
      ++count_.notComputed;
    } else if (agrees(*store_.document(store_.sheet(address.sheet)->document), *found.formula->formula, *ours, cell)) {
      ++count_.agree;
      return;
    }
    if (!list_) return;
    std::printf("  %s!%s = %s: file %s%s%s, ours %s\n", store_.shapeName(*store_.sheet(address.sheet)).c_str(),
                cellName(address.key).c_str(), found.formula->formula->text().c_str(), cell.value.asText().c_str(),
                cell.fileError == ErrorCode::None ? "" : " ", std::string(errorText(cell.fileError)).c_str(),
                ours ? ours->asText().c_str() : "left as it is");
  }

  /// Where routing places an end whose formula depends on it.
  Maybe<Value> routedEnd(const CellAddress& address, const Formula& formula) {
    bool begin = false;
    if (!isEndCell(address.key, begin) || !isWalkingFormula(formula.text()) || !isRoutable(store_, address.sheet))
      return {};
    const PageId page = store_.sheet(address.sheet)->page;
    if (store_.page(page)->master) return {};
    const auto [map, isNew] = maps_.try_emplace(page, store_, page);
    const Polyline line = freshLine(store_, map->second, address.sheet);
    if (line.size() < 2) return {};
    const auto& end = begin ? line.front() : line.back();
    return Value::number(address.key == endCell(begin, false) ? end.x : end.y, Unit::Drawing);
  }

  /// The formula has a font's number, the file its name, and the file has no table of both.
  bool isFontNumber(const CellAddress& address, const FoundCell& found) {
    SheetContext context(store_, recalculator_.textMetrics(), found.formulaSheet, address);
    const Maybe<Value> value = evaluate(*found.formula->formula, context);
    return value && isFontWithoutName(store_, address, *value);
  }

  Store& store_;
  DependencyGraph graph_;
  Recalculator recalculator_;
  std::map<PageId, RouteMap> maps_;
  bool list_;
  Count count_;
};

}  // namespace
}  // namespace quorvel::host

int main(int argc, char** argv) {
  using namespace quorvel;
  using namespace quorvel::host;
  bool list = false;
  Count total;
  const render::PangoTextMetrics metrics;
  const DocumentThemes themes;
  const auto print = [](const char* name, const Count& count) {
    std::printf("%-60s %7zu formulas, %7zu agree (%.2f %%), %5zu left as they are; %zu not comparable\n", name,
                count.formulas, count.agree, count.formulas ? 100.0 * count.agree / count.formulas : 100.0,
                count.notComputed, count.blank);
  };
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--list") == 0) {
      list = true;
      continue;
    }
    const DocumentFormat* format = formats::formatFor(argv[i]);
    Store store;
    store.setThemes(&themes);
    const OpenResult opened = format ? format->open(store, argv[i]) : OpenResult{{}, "not a kind of drawing"};
    if (!opened.document) {
      std::printf("%s: %s\n", argv[i], opened.error.c_str());
      continue;
    }
    const Count count = Recompute(store, metrics, list).document(opened.document);
    print(argv[i], count);
    total.formulas += count.formulas;
    total.agree += count.agree;
    total.notComputed += count.notComputed;
    total.blank += count.blank;
  }
  print("all", total);
}
