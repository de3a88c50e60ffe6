// A host with one empty drawing, helpers that make cells, and a listener that records events.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"

namespace quorvel {

class HostTest : public testing::Test {
 protected:
  host::InMemoryHost running;
  Application app = running.app();
  Document document = app.Documents().Add("");
  Page page = document.Pages().Item(1);

  host::Engine& engine() { return running.engine(); }
  static host::SheetId sheetOf(const Shape& shape) { return host::SheetId{shape.ref().id}; }
  Shape rectangle() { return page.DrawRectangle(1, 1, 2, 2); }
  /// The cell User.`name`, made when missing, with the formula.
  static Cell user(const Shape& shape, std::string_view name, const std::string& formula) {
    const std::string cell = "User." + std::string(name);
    if (!(shape.CellExists(cell, 1) == true)) shape.AddNamedRow(visio::sectionUser, name, 0);
    EXPECT_TRUE(shape.Cells(cell).FormulaForce(formula)) << cell << " = " << formula;
    return shape.Cells(cell);
  }
  /// Its name in a formula on another shape.
  static std::string at(const Shape& shape, std::string_view cell) {
    return shape.NameID().or_("") + "!" + std::string(cell);
  }

  /// A master of one group with one member. `fill` gives their cells, as a file would.
  host::MasterId addMaster(const std::string& name,
                           const std::function<void(host::Sheet& group, host::Sheet& member)>& fill) {
    host::Store& store = engine().edit().making();
    const host::DocumentId id{document.ref().id};
    const host::MasterId master = store.addMaster(id, name);
    const host::PageId contents = store.master(master)->contents;
    const host::SheetId group = store.addShape(contents, {}, host::SheetKind::Group);
    const host::SheetId member = store.addShape(contents, group, host::SheetKind::Shape);
    for (const host::SheetId sheet : {group, member}) {
      set(*store.sheet(sheet), "Width", "2 in");
      set(*store.sheet(sheet), "Height", "1 in");
      set(*store.sheet(sheet), "PinX", "1 in");
      set(*store.sheet(sheet), "PinY", "0.5 in");
      set(*store.sheet(sheet), "LocPinX", "Width*0.5", 1);
      set(*store.sheet(sheet), "LocPinY", "Height*0.5", 0.5);
    }
    fill(*store.sheet(group), *store.sheet(member));
    engine().edit().watchFormulas(store.page(contents)->sheet);
    engine().edit().watchFormulas(group);
    engine().edit().watchFormulas(member);
    return master;
  }
  /// A cell as in a file: formula and last value. A constant formula has its own value.
  void set(host::Sheet& sheet, std::string_view cellName, std::string_view formula, double value = 0) {
    const Maybe<host::CellKey> key = host::parseCellName(cellName);
    ASSERT_TRUE(key) << cellName;
    host::Cell& cell = sheet.local(*key);
    cell.formula = engine().store().formulas().get(formula);
    ASSERT_TRUE(cell.formula) << formula;
    const bool isLength = host::definitionOf(*key)->units == host::CellUnits::Length;
    cell.value = cell.formula->constant()
                     ? *cell.formula->constant()
                     : host::Value::number(value, isLength ? host::Unit::Inches : host::Unit::None);
  }

  Shape drop(host::MasterId master, double x = 2, double y = 2) {
    return page.Drop(Master(&running, {ObjectKind::Master, master.value, 0}), x, y);
  }
};

/// Records events as "CellChanged Sheet.1 User.a".
class Recorder : public ApplicationEvents {
 public:
  explicit Recorder(Backend& backend) : backend_(backend) { backend_.advise(*this); }
  ~Recorder() override { backend_.unadvise(*this); }
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  std::vector<std::string> recorded;
  std::vector<std::string> take() { return std::exchange(recorded, {}); }

  // What a test does inside an event, after it was recorded.
  std::function<void(Cell)> onCellChanged;
  std::function<void(Shape)> onShapeAdded, onBeforeShapeDelete, onBeforeShapeTextEdit;
  std::function<void()> onBeforeModal;

  void CellChanged(Cell cell) override {
    note("CellChanged", cell);
    if (onCellChanged) onCellChanged(cell);
  }
  void FormulaChanged(Cell cell) override { note("FormulaChanged", cell); }
  void ShapeAdded(Shape shape) override {
    recorded.push_back("ShapeAdded " + shape.NameID().or_("?"));
    if (onShapeAdded) onShapeAdded(shape);
  }
  void BeforeShapeDelete(Shape shape) override {
    recorded.push_back("BeforeShapeDelete " + shape.NameID().or_("?"));
    if (onBeforeShapeDelete) onBeforeShapeDelete(shape);
    recorded.push_back("(handled)");
  }
  void ShapeParentChanged(Shape shape) override { recorded.push_back("ShapeParentChanged " + shape.NameID().or_("?")); }
  void SelectionChanged(Window) override { recorded.push_back("SelectionChanged"); }
  void TextChanged(Shape shape) override { recorded.push_back("TextChanged " + shape.NameID().or_("?")); }
  void BeforeShapeTextEdit(Shape shape) override {
    recorded.push_back("BeforeShapeTextEdit " + shape.NameID().or_("?"));
    if (onBeforeShapeTextEdit) onBeforeShapeTextEdit(shape);
  }
  void ShapeExitedTextEdit(Shape shape) override {
    recorded.push_back("ShapeExitedTextEdit " + shape.NameID().or_("?"));
  }
  void EnterScope(int scope, std::string_view) override { noteScope("EnterScope ", scope); }
  void ExitScope(int scope, std::string_view) override { noteScope("ExitScope ", scope); }
  void BeforeModal(Application) override {
    recorded.push_back("BeforeModal");
    if (onBeforeModal) onBeforeModal();
  }
  void AfterModal(Application) override { recorded.push_back("AfterModal"); }
  void PageAdded(Page page) override { recorded.push_back("PageAdded " + page.Name().or_("?")); }
  void PageChanged(Page page) override { recorded.push_back("PageChanged " + page.Name().or_("?")); }

 private:
  void note(const char* event, const Cell& cell) {
    recorded.push_back(std::string(event) + " " + cell.Shape().NameID().or_("?") + " " + cell.Name().or_("?"));
  }
  /// Scopes of scripts have higher numbers than those of the program.
  void noteScope(const char* event, int scope) {
    if (scope < 0x10000) recorded.push_back(event + std::to_string(scope));
  }
  Backend& backend_;
};

}  // namespace quorvel
