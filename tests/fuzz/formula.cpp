// Fuzzes formulas: the input is the text of one. It is parsed, evaluated on a small page, written to a cell that others
// read, and printed back.
#include "fuzz/check.h"
#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/edits/write_cell.h"
#include "host/recalc/sheet_context.h"

namespace quorvel::fuzz {
namespace {

class SmallPage {
 public:
  SmallPage() {
    const Document document = running_.app().Documents().Add("");
    const Page page = document.Pages().Item(1);
    for (int i = 0; i < 2; ++i) {
      const Shape shape = page.DrawRectangle(i, i, i + 1, i + 3);
      for (const char* row : {"a", "b", "c"}) shape.AddNamedRow(visio::sectionUser, row, 0);
      shape.SetText("Check the order");
      shape.Cells("User.b").FormulaForce("User.a");
      shape.Cells("User.c").FormulaForce("Sheet.1!User.a+Sheet.2!User.b");
      shapes_.push_back(host::SheetId{shape.ref().id});
    }
    document_ = host::DocumentId{document.ref().id};
  }

  void take(std::string_view text) {
    host::Engine& engine = running_.engine();
    const host::FormulaPtr formula = host::parseFormula(text);
    const host::CellAddress cell{shapes_.front(), *host::parseCellName("User.a")};
    if (formula) {
      checkReading(*formula);
      host::SheetContext context(engine.store(), host::tableTextMetrics(), cell.sheet, cell);
      if (const Maybe<host::Value> value = host::evaluate(*formula, context)) checkValue(*value);
    }
    const bool written = bool(host::writeFormula(engine, cell, text, true));
    check(written || !formula, "a formula can be written to a cell");
    host::writeFormula(engine, cell, "0", true);
    check(engine.store().sheet(cell.sheet)->findLocal(cell.key)->value == host::Value(), "the cell is restored");
    engine.undo().discard(document_);
  }

 private:
  static void checkReading(const host::Formula& formula) {
    const auto ids = [](int by) {
      return [by](const host::Reference& shape) {
        return shape.scope == host::ReferenceScope::Shape ? by ? (shape.shapeId + by) % 1000 : shape.shapeId : -1;
      };
    };
    const std::string printed = formula.textWithIds(ids(0));
    const host::FormulaPtr again = host::parseFormula(printed);
    check(again != nullptr, "what is printed is read again");
    check(again->references().size() == formula.references().size(), "with the same references");
    for (std::size_t i = 0; i < formula.references().size(); ++i) {
      const host::Reference &a = formula.references()[i], &b = again->references()[i];
      check(a.scope == b.scope && a.shapeId == b.shapeId && a.cell == b.cell && a.name == b.name, "to the same cells");
    }
    check(again->constant() == formula.constant() || !formula.constant(), "with the same constant");
    check(again->isGuarded() == formula.isGuarded() && again->isKnown() == formula.isKnown(), "of the same nature");
    const host::FormulaPtr moved = host::parseFormula(formula.textWithIds(ids(7)));
    check(moved != nullptr, "a copy's formula is read");
    for (std::size_t i = 0; i < formula.references().size(); ++i) {
      const host::Reference &a = formula.references()[i], &b = moved->references()[i];
      const bool isNumbered = a.scope == host::ReferenceScope::Shape && a.idLength != 0;
      check(a.scope == b.scope && (!isNumbered || b.shapeId == (a.shapeId + 7) % 1000), "and names the copies");
    }
  }

  /// A value shown as a formula parses again.
  static void checkValue(const host::Value& value) {
    host::Cell cell;
    cell.value = value;
    const std::string shown = host::formulaText(cell);
    const host::FormulaPtr formula = host::parseFormula(shown);
    check(formula && formula->constant() && formula->constant()->kind() == value.kind(),
          "a value reads back: " + shown);
    value.asText(65);
    value.asQuantity();
  }

  host::InMemoryHost running_;
  std::vector<host::SheetId> shapes_;
  host::DocumentId document_;
};

}  // namespace
}  // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  static quorvel::fuzz::SmallPage page;
  page.take({reinterpret_cast<const char*>(data), size});
  return 0;
}
