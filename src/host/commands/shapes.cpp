#include "host/commands/shapes.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/commands/image_file.h"
#include "host/edits/copy_shapes.h"
#include "host/edits/glue_to_copy.h"
#include "host/edits/loosen_references.h"
#include "host/edits/shape_maker.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

ShapeOutcome refusedShape(std::string reason) { return {Outcome::refused(std::move(reason)), {}}; }

/// Registers a finished drawn shape, raises its event, and returns it if it still exists.
ShapeOutcome finish(Engine& engine, SheetId shape, CommandScope& scope) {
  engine.edit().shapeAdded(shape);
  engine.raise(&ApplicationEvents::ShapeAdded, shape);
  scope.commit();
  return {Outcome::done(), engine.store().sheet(shape) ? shape : SheetId{}};
}

Outcome checkHome(const Engine& engine, PageId page, SheetId parent) {
  if (!engine.store().page(page)) return Outcome::refused("the page is deleted");
  if (!parent) return Outcome::done();
  const Sheet* group = engine.store().sheet(parent);
  if (!group || !group->isShape()) return Outcome::refused("the group is deleted");
  if (group->kind == SheetKind::Foreign || group->kind == SheetKind::Guide)
    return Outcome::refused("a picture has no members");
  return Outcome::done();
}

void moveTo(Engine& engine, SheetId shape, std::size_t place) {
  const auto& order = engine.store().siblings(*engine.store().sheet(shape));
  if (place < order.size() && order[place] != shape) engine.edit().moveInStack(shape, place);
}

std::size_t placeInStack(const Engine& engine, SheetId shape) {
  const auto& order = engine.store().siblings(*engine.store().sheet(shape));
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), shape) - order.begin());
}

}  // namespace

namespace {

void replaceSelection(Engine& engine, WindowState& window, std::vector<SheetId> shapes) {
  window.select(std::move(shapes));
  engine.raiseForUpkeep(&ApplicationEvents::SelectionChanged, WindowId{window.id});
}

/// The page's window in front, with the page.
void bringPageToFront(Engine& engine, PageId page) {
  const WindowState* window = engine.windowOf(engine.store().page(page)->document);
  if (!window) return;
  const WindowId id = window->id;
  engine.bringToFront(id);
  showPage(engine, id, page);
}

/// Selects what was made where its page is shown, then raises ShapeAdded of each. While shapes are being deleted the
/// selection is left as it is. False when listeners deleted all that was made and changed nothing else: the making is
/// then taken back, with the masters, styles and layers that were added for it.
bool announce(Engine& engine, PageId page, const std::vector<SheetId>& made) {
  const std::size_t before = engine.undo().openEntries();
  const WindowState* window = engine.windowOf(engine.store().page(page)->document);
  if (window && window->page == page && !engine.deletions().areGoingOn()) setSelection(engine, window->id, made);
  for (const SheetId shape : made) engine.raise(&ApplicationEvents::ShapeAdded, shape);
  engine.leaveOutDeleted();
  const auto exists = [&](SheetId shape) { return engine.exists(shape); };
  return std::ranges::any_of(made, exists) || engine.undo().hasLastingChangeFrom(before);
}

}  // namespace

void setSelection(Engine& engine, WindowId id, std::vector<SheetId> shapes) {
  WindowState* window = engine.window(id);
  if (window && window->selection() != shapes) replaceSelection(engine, *window, std::move(shapes));
}

void showPage(Engine& engine, WindowId id, PageId page) {
  WindowState* window = engine.window(id);
  if (!window || window->page == page) return;
  window->page = page;
  replaceSelection(engine, *window, {});
}

ShapeOutcome dropMaster(Engine& engine, MasterId master, PageId page, double x, double y) {
  if (!engine.exists(master)) return refusedShape("the master is deleted");
  if (!engine.exists(page)) return refusedShape("the page is deleted");
  if (engine.store().page(engine.store().master(master)->contents)->shapes.empty())
    return refusedShape("the master holds no shape");
  const DocumentId document = engine.store().page(page)->document;
  CommandScope scope(engine, document, "Drop");
  bringPageToFront(engine, page);
  scope.commit();
  if (!engine.exists(page, master)) return {};
  if (engine.store().page(engine.store().master(master)->contents)->shapes.empty()) return {};
  CommandScope making(engine, document, "Drop");
  const SheetId shape = instantiate(engine, localMaster(engine, document, master), page, x, y);
  if (announce(engine, page, {shape})) making.commit();
  return {Outcome::done(), engine.exists(shape) ? shape : SheetId{}};
}

ShapeOutcome drawRectangle(Engine& engine, PageId page, SheetId parent, double x1, double y1, double x2, double y2) {
  if (Outcome checked = checkHome(engine, page, parent); !checked) return {checked, {}};
  CommandScope scope(engine, engine.store().page(page)->document, "Rectangle");
  const SheetId shape = newShape(engine, page, parent, SheetKind::Shape);
  ShapeMaker make(engine, shape);
  const double width = std::fabs(x2 - x1), height = std::fabs(y2 - y1);
  make.length("PinX", (x1 + x2) / 2);
  make.length("PinY", (y1 + y2) / 2);
  make.length("Width", width);
  make.length("Height", height);
  make.length("LocPinX", width / 2, "Width*0.5");
  make.length("LocPinY", height / 2, "Height*0.5");
  make.textBlock(width, height);
  make.geometryFlag("NoFill", false);
  make.vertex(1, RowTag::MoveTo, 0, "Width*0", 0, "Height*0");
  make.vertex(2, RowTag::LineTo, width, "Width*1", 0, "Height*0");
  make.vertex(3, RowTag::LineTo, width, "Width*1", height, "Height*1");
  make.vertex(4, RowTag::LineTo, 0, "Width*0", height, "Height*1");
  make.vertex(5, RowTag::LineTo, 0, "Geometry1.X1", 0, "Geometry1.Y1");
  return finish(engine, shape, scope);
}

ShapeOutcome drawLine(Engine& engine, PageId page, SheetId parent, double x1, double y1, double x2, double y2) {
  if (Outcome checked = checkHome(engine, page, parent); !checked) return {checked, {}};
  CommandScope scope(engine, engine.store().page(page)->document, "Line");
  const SheetId shape = newShape(engine, page, parent, SheetKind::Shape);
  ShapeMaker make(engine, shape);
  const double length = std::hypot(x2 - x1, y2 - y1);
  make.length("BeginX", x1);
  make.length("BeginY", y1);
  make.length("EndX", x2);
  make.length("EndY", y2);
  make.length("PinX", (x1 + x2) / 2, "(BeginX+EndX)/2");
  make.length("PinY", (y1 + y2) / 2, "(BeginY+EndY)/2");
  make.length("Width", length, "SQRT((EndX-BeginX)^2+(EndY-BeginY)^2)");
  make.length("Height", 0);
  make.length("LocPinX", length / 2, "Width*0.5");
  make.length("LocPinY", 0, "Height*0.5");
  make.angle("Angle", std::atan2(y2 - y1, x2 - x1), "ATAN2(EndY-BeginY,EndX-BeginX)");
  make.textBlock(length, 0);
  make.geometryFlag("NoFill", true);
  make.vertex(1, RowTag::MoveTo, 0, "Width*0", 0, "Height*0");
  make.vertex(2, RowTag::LineTo, length, "Width*1", 0, "Height*0");
  return finish(engine, shape, scope);
}

ShapeOutcome importImage(Engine& engine, PageId page, SheetId parent, const std::string& fileName) {
  if (Outcome checked = checkHome(engine, page, parent); !checked) return {checked, {}};
  const ImageFile picture = readImageFile(fileName);
  if (!picture.data)
    return refusedShape(
        "the file is missing or is no picture that can be read (PNG, JPEG, GIF, BMP, EMF, WMF with its placing "
        "header)");
  CommandScope scope(engine, engine.store().page(page)->document, "Picture");
  static const CellKey pageWidth = objectCell("PageWidth"), pageHeight = objectCell("PageHeight"),
                       width = objectCell("Width"), height = objectCell("Height");
  const SheetId home = parent ? parent : engine.store().page(page)->sheet;
  const double homeWidth = cellNumber(engine.store(), home, parent ? width : pageWidth);
  const double homeHeight = cellNumber(engine.store(), home, parent ? height : pageHeight);
  const SheetId shape = newShape(engine, page, parent, SheetKind::Foreign);
  engine.edit().making().sheet(shape)->foreign = picture.data;
  ShapeMaker make(engine, shape);
  make.length("PinX", homeWidth / 2);
  make.length("PinY", homeHeight / 2);
  make.length("Width", picture.width);
  make.length("Height", picture.height);
  make.length("LocPinX", picture.width / 2, "Width*0.5");
  make.length("LocPinY", picture.height / 2, "Height*0.5");
  make.length("ImgOffsetX", 0, "ImgWidth*0");
  make.length("ImgOffsetY", 0, "ImgHeight*0");
  make.length("ImgWidth", picture.width, "Width*1");
  make.length("ImgHeight", picture.height, "Height*1");
  make.number("LinePattern", 0);
  make.number("FillPattern", 0);
  return finish(engine, shape, scope);
}

ShapeOutcome duplicateShape(Engine& engine, SheetId shape) {
  const Sheet* source = engine.store().sheet(shape);
  if (!source || !source->isShape()) return refusedShape("only shapes can be duplicated");
  constexpr double offset = 0.25;  // inches; the host sets a duplicate a little aside
  CommandScope scope(engine, source->document, "Duplicate");
  SheetMap copies;
  const SheetId copy = copyShapes(engine, {shape}, source->page, source->parent, offset, -offset, &copies).front();
  engine.deletions().noteCopy(shape, std::move(copies));
  if (announce(engine, source->page, {copy})) scope.commit();
  return {Outcome::done(), engine.exists(copy) ? copy : SheetId{}};
}

namespace {

Outcome checkDeletion(const Engine& engine, SheetId id) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes can be deleted");
  static const CellKey lock = objectCell("LockDelete");
  if (cellNumber(engine.store(), id, lock) != 0) return Outcome::refused("the shape is locked against deletion");
  static const CellKey lockGroup = objectCell("LockGroup");
  for (SheetId group = shape->parent; group; group = engine.store().sheet(group)->parent) {
    if (cellNumber(engine.store(), group, lockGroup) != 0)
      return Outcome::refused("the shape is a member of a locked group");
  }
  return Outcome::done();
}

/// Adds to `relations` what reads those of other shapes to this one.
void deleteOne(Engine& engine, SheetId shape, std::vector<CellAddress>& relations) {
  Deletions::Leaving kept(engine.deletions(), shape);
  if (!engine.raise(&ApplicationEvents::BeforeShapeDelete, shape)) return;
  const std::vector<SheetId> leaving = engine.store().subtree(shape);
  std::vector<CellAddress> seeds = glueToCopy(engine, leaving, kept.takeCopies());
  std::unordered_set<int> numbers;
  for (const SheetId each : leaving) numbers.insert(engine.store().sheet(each)->shapeId);
  engine.edit().removeConnects(engine.store().sheet(shape)->page, [&](const Connect& connect) {
    return numbers.contains(connect.fromShape) || numbers.contains(connect.toShape);
  });
  const std::vector<CellAddress> loosened = loosenReferencesTo(engine, leaving);
  seeds.insert(seeds.end(), loosened.begin(), loosened.end());
  for (const SheetId each : leaving) engine.graph().appendReadersOfRelationsTo(each, relations);
  engine.edit().removeShape(shape);
  engine.recalculateAndNotify(seeds, {});
}

/// As they lie on the page; the members of a group where the group lies.
void sortByStack(const Store& store, std::vector<SheetId>& shapes) {
  std::vector<std::pair<std::vector<std::size_t>, SheetId>> placed;
  for (const SheetId shape : shapes) {
    std::vector<std::size_t> path;
    for (const Sheet* each = store.sheet(shape); each; each = store.sheet(each->parent)) {
      const std::vector<SheetId>& order = store.siblings(*each);
      path.insert(path.begin(),
                  static_cast<std::size_t>(std::find(order.begin(), order.end(), each->id) - order.begin()));
    }
    placed.emplace_back(std::move(path), shape);
  }
  std::stable_sort(placed.begin(), placed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::transform(placed.begin(), placed.end(), shapes.begin(), [](const auto& each) { return each.second; });
}

}  // namespace

Outcome deleteShapes(Engine& engine, const std::vector<SheetId>& shapes) {
  if (shapes.empty()) return Outcome::refused("nothing is selected");
  for (const SheetId shape : shapes) {
    if (Outcome checked = checkDeletion(engine, shape); !checked) return checked;
  }
  CommandScope scope(engine, engine.store().sheet(shapes.front())->document, "Delete");
  std::vector<CellAddress> relations;
  {
    const Deletions::Command deleting(engine.deletions());
    for (const SheetId shape : shapes) {
      if (!engine.exists(shape)) continue;
      // A listener may have locked it.
      if (Outcome checked = checkDeletion(engine, shape); !checked) return checked;
      deleteOne(engine, shape, relations);
    }
  }
  std::erase_if(relations, [&](const CellAddress& reader) { return !engine.exists(reader.sheet); });
  engine.recalculateAndNotify(relations, {});
  engine.leaveOutDeleted();
  scope.commit();
  return Outcome::done();
}

Outcome deleteShape(Engine& engine, SheetId shape) { return deleteShapes(engine, {shape}); }

Outcome renameShape(Engine& engine, SheetId id, std::string_view name, NameKind kind) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes have a name");
  if (name.empty()) return Outcome::refused("a name can't be empty");
  CommandScope scope(engine, shape->document, "Name");
  engine.edit().setFields(id, [&](SheetFields& fields) { rename(fields.name, fields.universalName, name, kind); });
  scope.commit();
  return Outcome::done();
}

Outcome setData(Engine& engine, SheetId id, int which, std::string_view text) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes have data texts");
  CommandScope scope(engine, shape->document, "Data");
  engine.edit().setFields(id, [&](SheetFields& fields) {
    (which == 1 ? fields.data1 : which == 2 ? fields.data2 : fields.data3) = std::string(text);
  });
  scope.commit();
  return Outcome::done();
}

Outcome applyStyle(Engine& engine, SheetId id, std::string_view name) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes take a style");
  const SheetId style = engine.store().styleNamed(shape->document, name);
  if (!style) return Outcome::refused("the document has no such style");
  CommandScope scope(engine, shape->document, "Style");
  engine.edit().setFields(id,
                          [&](SheetFields& fields) { fields.lineStyle = fields.fillStyle = fields.textStyle = style; });
  scope.commit();
  return Outcome::done();
}

Outcome bringForward(Engine& engine, SheetId id, bool toFront) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes have a place in the stack");
  CommandScope scope(engine, shape->document, "Order");
  const std::size_t last = engine.store().siblings(*shape).size() - 1;
  moveTo(engine, id, toFront ? last : std::min(last, placeInStack(engine, id) + 1));
  scope.commit();
  return Outcome::done();
}

Outcome flipHorizontal(Engine& engine, SheetId id) {
  static const CellKey flip = objectCell("FlipX");
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes can be flipped");
  return writeFormula(engine, {id, flip}, cellNumber(engine.store(), id, flip) != 0 ? "FALSE" : "TRUE", false);
}

Outcome reverseEnds(Engine& engine, SheetId id) {
  const Sheet* shape = engine.store().sheet(id);
  static const CellKey keys[] = {objectCell("BeginX"), objectCell("BeginY"), objectCell("EndX"), objectCell("EndY")};
  if (!shape || !shape->isShape() || !findCell(engine.store(), id, keys[0]))
    return Outcome::refused("only 1-D shapes have ends");
  CommandScope scope(engine, shape->document, "Reverse ends");
  std::string formulas[4];
  for (int i = 0; i < 4; ++i) formulas[i] = formulaFor(engine.store(), id, findCell(engine.store(), id, keys[i]));
  for (int i = 0; i < 4 && engine.exists(id); ++i) writeFormula(engine, {id, keys[i]}, formulas[(i + 2) % 4], true);
  scope.commit();
  return Outcome::done();
}

Outcome updateAlignmentBox(Engine& engine, SheetId id) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return Outcome::refused("only shapes have an alignment box");
  // Members have coordinates that the box defines; a box that formulas define needs no update.
  return Outcome::done();
}

Outcome copyToClipboard(Engine& engine, std::vector<SheetId> shapes) {
  if (shapes.empty()) return Outcome::refused("nothing is selected");
  sortByStack(engine.store(), shapes);
  const UndoLog::Attribution upkeep(engine.undo(), true);
  copyShapes(engine, shapes, engine.emptyClipboard(), {}, 0, 0);
  return Outcome::done();
}

Outcome paste(Engine& engine, PageId page) {
  const auto copied = [&] {
    const Page* clipboard = engine.store().page(engine.clipboard().page);
    return clipboard ? clipboard->shapes : std::vector<SheetId>();
  };
  if (copied().empty()) return Outcome::refused("the clipboard is empty");
  if (!engine.exists(page)) return Outcome::refused("the page is deleted");
  const DocumentId document = engine.store().page(page)->document;
  CommandScope scope(engine, document, "Paste");
  bringPageToFront(engine, page);
  scope.commit();
  if (!engine.exists(page)) return Outcome::done();
  CommandScope making(engine, document, "Paste");
  if (announce(engine, page, copyShapes(engine, copied(), page, {}, 0, 0))) making.commit();
  return Outcome::done();
}

}  // namespace quorvel::host
