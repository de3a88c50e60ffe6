// Evaluates every formula of a drawing afresh and compares with the values that the file holds: how far the engine
// computes as the drawing's maker meant. Prints a line for each file and, with --list, each cell that differs.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "formats/formats.h"
#include "host/cells/cell_name.h"
#include "host/engine/engine.h"
#include "host/recalc/recalculator.h"
#include "host/sheet/inheritance.h"
#include "render/text/text_metrics.h"

namespace quorvel::host {
namespace {

struct Count {
  std::size_t formulas = 0, agree = 0,
              lacking = 0;  ///< lacking: a function that we don't have, so the file's value stands
};

bool agrees(const Value& ours, const Value& file) {
  if (ours == file) return true;
  const Maybe<double> a = ours.asNumber(), b = file.asNumber();
  if (a && b) return std::fabs(*a - *b) <= 1e-6 * std::max(1.0, std::fabs(*b));
  if (ours.kind() == ValueKind::Colour || file.kind() == ValueKind::Colour) return ours.asText() == file.asText();
  return ours.asText() == file.asText();
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
    if (!found.formula || !found.formula->formula || cell.noFormula) return;
    const Maybe<Value> ours = recalculator_.evaluateNow(address);
    if (!ours) {
      ++count_.lacking;
      return;
    }
    ++count_.formulas;
    if (agrees(*ours, cell.value)) {
      ++count_.agree;
      return;
    }
    if (!list_) return;
    std::printf("  %s!%s = %s: file %s, ours %s\n", store_.shapeName(*store_.sheet(address.sheet)).c_str(),
                cellName(address.key).c_str(), found.formula->formula->text().c_str(), cell.value.asText().c_str(),
                ours->asText().c_str());
  }

  Store& store_;
  DependencyGraph graph_;
  Recalculator recalculator_;
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
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--list") == 0) {
      list = true;
      continue;
    }
    const DocumentFormat* format = formats::formatFor(argv[i]);
    Store store;
    const OpenResult opened = format ? format->open(store, argv[i]) : OpenResult{{}, "not a kind of drawing"};
    if (!opened.document) {
      std::printf("%s: %s\n", argv[i], opened.error.c_str());
      continue;
    }
    const Count count = Recompute(store, metrics, list).document(opened.document);
    std::printf("%-60s %7zu formulas, %7zu agree (%.2f %%), %5zu with a function that is lacking\n", argv[i],
                count.formulas, count.agree, count.formulas ? 100.0 * count.agree / count.formulas : 100.0,
                count.lacking);
    total.formulas += count.formulas;
    total.agree += count.agree;
    total.lacking += count.lacking;
  }
  std::printf("%-60s %7zu formulas, %7zu agree (%.2f %%), %5zu with a function that is lacking\n", "all",
              total.formulas, total.agree, total.formulas ? 100.0 * total.agree / total.formulas : 100.0,
              total.lacking);
}
