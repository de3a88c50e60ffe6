#include "host/commands/group_shapes.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"
#include "host/edits/glue_to_copy.h"
#include "host/edits/layers.h"
#include "host/edits/loosen_references.h"
#include "host/edits/regrouping.h"
#include "host/edits/shape_maker.h"
#include "host/recalc/measured_path.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/own_content.h"
#include "host/sheet/references.h"

namespace quorvel::host {
namespace {

/// Files nest groups, and programs that read them allow only so many levels.
constexpr int deepestGroup = 50;

double number(const Store& store, SheetId sheet, std::string_view cell) {
  return cellNumber(store, sheet, objectCell(cell));
}

std::size_t placeInStack(const Store& store, SheetId shape) {
  const auto& order = store.siblings(*store.sheet(shape));
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), shape) - order.begin());
}

/// Locks that keep a user from taking hold of the shape.
Outcome checkHold(const Store& store, SheetId shape) {
  const Sheet& sheet = *store.sheet(shape);
  if ((store.document(sheet.document)->protection & visio::protectShapes) != 0 &&
      number(store, shape, "LockSelect") != 0)
    return Outcome::refused("the shape is locked against selecting");
  // A shape on several layers is locked when all of them are.
  const std::vector<int> layers = layersOf(store, shape);
  const SheetId page = store.page(sheet.page)->sheet;
  static const Column lock = columnOf(SectionNumber::Layer, "Lock").or_(0);
  const auto locks = [&](int layer) {
    return cellNumber(store, page, {SectionNumber::Layer, RowKey::index(static_cast<std::uint32_t>(layer)), lock}) != 0;
  };
  if (!layers.empty() && std::all_of(layers.begin(), layers.end(), locks))
    return Outcome::refused("the shape is on a locked layer");
  if (sheet.parent && number(store, sheet.parent, "LockGroup") != 0)
    return Outcome::refused("the shape is a member of a locked group");
  return Outcome::done();
}

int depthOf(const Store& store, SheetId shape) {
  int depth = 0;
  for (const Sheet* sheet = store.sheet(shape); sheet && sheet->parent; sheet = store.sheet(sheet->parent)) ++depth;
  return depth;
}

Outcome checkGrouping(const Store& store, const std::vector<SheetId>& shapes) {
  if (shapes.empty()) return Outcome::refused("nothing is selected");
  for (const SheetId shape : shapes) {
    const Sheet* sheet = store.sheet(shape);
    if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes can be grouped");
    if (sheet->kind == SheetKind::Guide) return Outcome::refused("a guide cannot be in a group");
    const Sheet& first = *store.sheet(shapes.front());
    if (sheet->page != first.page || sheet->parent != first.parent)
      return Outcome::refused("the shapes are in different groups");
    if (Outcome held = checkHold(store, shape); !held) return held;
    for (const SheetId each : store.subtree(shape)) {
      if (depthOf(store, each) >= deepestGroup) return Outcome::refused("groups are nested too deeply");
    }
  }
  return Outcome::done();
}

/// The upright box around the shapes, in the coordinates of what holds them.
Box boxAround(const Store& store, const std::vector<SheetId>& shapes) {
  Polyline corners;
  for (const SheetId shape : shapes) {
    const double width = number(store, shape, "Width"), height = number(store, shape, "Height");
    const Matrix matrix = toParentMatrix(store, shape);
    for (const Point& corner : {Point{0, 0}, Point{width, 0}, Point{width, height}, Point{0, height}}) {
      const auto at = matrix(corner);
      corners.push_back({at.x, at.y});
    }
    // The box of a line is that of its ends; between them it may bend.
    if (!findCell(store, shape, endCell(true, false))) continue;
    if (const auto drawn = drawnBox(store, shape)) {
      corners.push_back({(*drawn)[0], (*drawn)[1]});
      corners.push_back({(*drawn)[2], (*drawn)[3]});
    }
  }
  // What is left of turns and sums would fill every member's formulas with digits.
  const auto settled = [](double inches) { return std::round(inches * 1e12) / 1e12; };
  for (Point& corner : corners) corner = {settled(corner.x), settled(corner.y)};
  return boundsOf(corners);
}

SheetId makeGroup(Engine& engine, PageId page, SheetId parent, const Box& box) {
  const SheetId group = newShape(engine, page, parent, SheetKind::Group);
  ShapeMaker make(engine, group);
  make.length("PinX", box.middle().x);
  make.length("PinY", box.middle().y);
  make.length("Width", box.width());
  make.length("Height", box.height());
  make.length("LocPinX", box.width() / 2, "Width*0.5");
  make.length("LocPinY", box.height() / 2, "Height*0.5");
  make.angle("Angle", 0);
  make.textBlock(box.width(), box.height());
  engine.edit().shapeAdded(group);
  return group;
}

void raiseParentsChanged(Engine& engine, const std::vector<SheetId>& members) {
  for (const SheetId member : members) engine.raise(&ApplicationEvents::ShapeParentChanged, member);
}

/// In place of the shapes that are selected.
void selectInstead(Engine& engine, PageId page, const std::vector<SheetId>& of, const std::vector<SheetId>& instead) {
  if (!engine.exists(page)) return;
  const WindowState* window = engine.windowOf(engine.store().page(page)->document);
  if (!window || window->page != page) return;
  const auto isOne = [&](SheetId shape) { return std::find(of.begin(), of.end(), shape) != of.end(); };
  std::vector<SheetId> selection = window->selection();
  const auto first = std::find_if(selection.begin(), selection.end(), isOne);
  if (first == selection.end()) return;
  selection.insert(first, instead.begin(), instead.end());
  std::erase_if(selection, isOne);
  setSelection(engine, window->id, std::move(selection));
}

std::vector<SheetId> inStackOrder(const Store& store, const std::vector<SheetId>& shapes) {
  const std::unordered_set<SheetId> chosen(shapes.begin(), shapes.end());
  std::vector<SheetId> ordered = store.siblings(*store.sheet(shapes.front()));
  std::erase_if(ordered, [&](SheetId shape) { return !chosen.contains(shape); });
  return ordered;
}

/// Members that inherited through the group's master can't do so without the group.
void copyInheritedContent(Engine& engine, SheetId group) {
  const Store& store = engine.store();
  const Sheet* prototype = store.sheet(store.sheet(group)->prototype);
  if (!prototype) return;
  for (const SheetId member : store.subtree(group)) {
    const Sheet* own = store.sheet(store.sheet(member)->prototype);
    if (member == group || !own || own->page != prototype->page) continue;
    OwnContent content = ownContentOf(store, member);
    for (const Section& section : std::vector(store.sheet(member)->sections))
      engine.edit().replaceSection(member, section.number, std::nullopt);
    for (Section& section : content.sections) {
      const SectionNumber number = section.number;
      engine.edit().replaceSection(member, number, std::move(section));
    }
    engine.edit().setFields(member, [&](SheetFields& fields) {
      fields.text = content.text;
      fields.foreign = content.foreign;
      fields.lineStyle = content.lineStyle;
      fields.fillStyle = content.fillStyle;
      fields.textStyle = content.textStyle;
      fields.prototype = {};
      fields.master = {};
    });
  }
}

/// Out of the group into what holds it.
GroupTransform transformOutOf(const Store& store, SheetId group) {
  static const CellKey pinX = objectCell("PinX");
  GroupTransform transform;
  transform.map = toParentMatrix(store, group);
  transform.turn = number(store, group, "Angle");
  transform.flipX = number(store, group, "FlipX") != 0;
  transform.flipY = number(store, group, "FlipY") != 0;
  transform.left = group;
  // Members of a group that was scaled with another one are scaled with that from now on.
  const SheetId parent = store.sheet(group)->parent;
  const FoundCell pin = findCell(store, group, pinX);
  if (!parent || !pin.formula || !pin.formula->formula) return transform;
  for (const Reference& reference : pin.formula->formula->references()) {
    if (resolveReference(store, pin.formulaSheet, group, reference) == parent) transform.scaleWith = parent;
  }
  return transform;
}

Outcome checkUngrouping(const Store& store, const std::vector<SheetId>& groups) {
  if (groups.empty()) return Outcome::refused("only groups can be ungrouped");
  for (const SheetId group : groups) {
    if (store.sheet(group)->children.empty()) return Outcome::refused("the group has no members");
    if (number(store, group, "LockGroup") != 0) return Outcome::refused("the group is locked");
    if (Outcome held = checkHold(store, group); !held) return held;
  }
  return Outcome::done();
}

/// Gives the members that were taken out; none when a handler prevented it.
std::vector<SheetId> ungroup(Engine& engine, SheetId id) {
  const Store& store = engine.store();
  Deletions::Leaving leaving(engine.deletions(), id);
  engine.raise(&ApplicationEvents::BeforeShapeDelete, id);
  const Sheet* group = store.sheet(id);
  if (!group || group->kind != SheetKind::Group) return {};
  const std::vector<SheetId> members = group->children;
  const std::size_t place = placeInStack(store, id);
  const SheetId parent = group->parent;
  const int shapeId = group->shapeId;

  PlacementJournal::Regrouped regrouped(engine.placements());
  copyInheritedContent(engine, id);
  Regrouping regrouping(engine, members, transformOutOf(store, id));
  for (std::size_t i = 0; i < members.size(); ++i) engine.edit().moveToGroup(members[i], parent, place + i);
  regrouping.settle();
  std::vector<CellAddress> loosened = glueToCopy(engine, {id}, leaving.takeCopies());
  engine.edit().removeConnects(
      group->page, [&](const Connect& connect) { return connect.fromShape == shapeId || connect.toShape == shapeId; });
  const std::vector<CellAddress> lost = loosenReferencesTo(engine, {id});
  loosened.insert(loosened.end(), lost.begin(), lost.end());
  engine.graph().appendReadersOfRelationsTo(id, loosened);
  engine.edit().removeShape(id);
  regrouped.end();

  raiseParentsChanged(engine, members);
  regrouping.tell();
  engine.recalculateAndNotify(loosened, {});
  return members;
}

}  // namespace

ShapeOutcome groupShapes(Engine& engine, std::vector<SheetId> shapes) {
  const Store& store = engine.store();
  if (Outcome checked = checkGrouping(store, shapes); !checked) return {checked, {}};
  shapes = inStackOrder(store, shapes);
  const PageId page = store.sheet(shapes.front())->page;
  const SheetId parent = store.sheet(shapes.front())->parent;
  const std::size_t place = placeInStack(store, shapes.back()) + 1 - shapes.size();

  CommandScope scope(engine, store.page(page)->document, "Group");
  const Box box = boxAround(store, shapes);
  PlacementJournal::Regrouped regrouped(engine.placements());
  const SheetId group = makeGroup(engine, page, parent, box);
  GroupTransform transform;
  transform.map = {1, 0, 0, 1, -box.left, -box.bottom};
  transform.scaleWith = group;
  Regrouping regrouping(engine, shapes, transform);
  for (std::size_t i = 0; i < shapes.size(); ++i) engine.edit().moveToGroup(shapes[i], group, i);
  engine.edit().moveInStack(group, place);
  regrouping.settle();
  regrouped.end();

  selectInstead(engine, page, shapes, {group});
  engine.raise(&ApplicationEvents::ShapeAdded, group);
  raiseParentsChanged(engine, shapes);
  regrouping.tell();
  engine.leaveOutDeleted();
  scope.commit();
  return {Outcome::done(), store.sheet(group) ? group : SheetId{}};
}

Outcome convertToGroup(Engine& engine, SheetId shape) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes can become groups");
  if (sheet->kind == SheetKind::Group) return Outcome::refused("the shape is a group already");
  if (sheet->kind != SheetKind::Shape) return Outcome::refused("a picture has no members");
  if (Outcome held = checkHold(engine.store(), shape); !held) return held;
  CommandScope scope(engine, sheet->document, "Convert to Group");
  engine.edit().setFields(shape, [](SheetFields& fields) { fields.kind = SheetKind::Group; });
  scope.commit();
  return Outcome::done();
}

Outcome ungroupShapes(Engine& engine, const std::vector<SheetId>& shapes) {
  const Store& store = engine.store();
  std::vector<SheetId> groups;
  for (const SheetId shape : shapes) {
    const Sheet* sheet = store.sheet(shape);
    const bool isListed = std::find(groups.begin(), groups.end(), shape) != groups.end();
    if (sheet && sheet->kind == SheetKind::Group && !isListed) groups.push_back(shape);
  }
  if (Outcome checked = checkUngrouping(store, groups); !checked) return checked;
  const PageId page = store.sheet(groups.front())->page;
  CommandScope scope(engine, store.page(page)->document, "Ungroup");
  std::vector<SheetId> members;
  {
    const Deletions::Command deleting(engine.deletions());
    for (const SheetId group : groups) {
      if (!store.sheet(group)) continue;
      const std::vector<SheetId> out = ungroup(engine, group);
      members.insert(members.end(), out.begin(), out.end());
    }
  }
  // What listeners deleted or grouped again is not selected.
  std::erase_if(members, [&](SheetId member) { return !store.sheet(member) || store.sheet(member)->page != page; });
  selectInstead(engine, page, groups, members);
  engine.leaveOutDeleted();
  scope.commit();
  return Outcome::done();
}

}  // namespace quorvel::host
