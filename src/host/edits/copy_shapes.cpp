#include "host/edits/copy_shapes.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/connectors/connector_ends.h"
#include "host/edits/layers.h"
#include "host/recalc/relations.h"
#include "host/sheet/inheritance.h"
#include "host/sheet/own_content.h"
#include "host/sheet/references.h"
#include "host/sheet/transform.h"

namespace quorvel::host {
namespace {

const CellKey& pinX() {
  static const CellKey key = objectCell("PinX");
  return key;
}
const CellKey& pinY() {
  static const CellKey key = objectCell("PinY");
  return key;
}

/// The style of that name in the target drawing; copied when it has none.
SheetId localStyle(Engine& engine, DocumentId document, SheetId styleId) {
  Store& store = engine.edit().making();
  const Sheet* style = store.sheet(styleId);
  if (!style || style->document == document) return styleId;
  const std::string name = style->name;
  if (const SheetId known = store.styleNamed(document, name)) return known;
  int number = 0;
  for (const SheetId other : store.document(document)->styles)
    number = std::max(number, store.sheet(other)->shapeId + 1);
  const SheetId made = store.addStyle(document, number, name);
  store.sheet(made)->sections = store.sheet(styleId)->sections;
  store.sheet(made)->universalName = store.sheet(styleId)->universalName;
  const auto parent = [&](SheetId Sheet::*member) {
    const SheetId source = store.sheet(styleId)->*member;
    if (source && source != styleId) store.sheet(made)->*member = localStyle(engine, document, source);
  };
  parent(&Sheet::lineStyle);
  parent(&Sheet::fillStyle);
  parent(&Sheet::textStyle);
  engine.edit().styleAdded(made);
  return made;
}

/// Content of `from` but its place in a page: cells, text, data, styles.
void copyContent(Engine& engine, SheetId from, SheetId to) {
  Store& store = engine.edit().making();
  const Sheet& source = *store.sheet(from);
  Sheet& target = *store.sheet(to);
  target.data1 = source.data1;
  target.data2 = source.data2;
  target.data3 = source.data3;
  target.text = source.text;
  target.foreign = source.foreign;
  target.sections = source.sections;
  target.holdsComputed = source.holdsComputed;
  target.extras = source.extras;
  const DocumentId document = target.document;
  for (SheetId Sheet::*member : {&Sheet::lineStyle, &Sheet::fillStyle, &Sheet::textStyle}) {
    const SheetId style = localStyle(engine, document, store.sheet(from)->*member);
    store.sheet(to)->*member = style;
  }
}

/// What the original inherits becomes the copy's own.
void copyInheritedContent(Engine& engine, SheetId from, SheetId to) {
  Store& store = engine.edit().making();
  OwnContent content = ownContentOf(store, from);
  Sheet& target = *store.sheet(to);
  target.sections = std::move(content.sections);
  target.text = std::move(content.text);
  target.foreign = std::move(content.foreign);
  const DocumentId document = target.document;
  const auto style = [&](SheetId Sheet::*member, SheetId source) {
    const SheetId local = localStyle(engine, document, source);
    store.sheet(to)->*member = local;
  };
  style(&Sheet::lineStyle, content.lineStyle);
  style(&Sheet::fillStyle, content.fillStyle);
  style(&Sheet::textStyle, content.textStyle);
}

/// The numbers of shapes on another page are those of unrelated shapes here: a cell whose formula names a shape that is
/// not copied keeps its value alone.
void leaveOutOtherShapes(Store& store, const SheetMap& copies) {
  for (const auto& [from, to] : copies) {
    const auto isOther = [&, original = from](const Reference& reference) {
      if (reference.scope != ReferenceScope::Shape && reference.scope != ReferenceScope::NamedShape) return false;
      const SheetId target = resolveReference(store, original, original, reference);
      return target && store.sheet(target)->isShape() && !copies.contains(target);
    };
    Sheet& copy = *store.sheet(to);
    bool freed[2] = {false, false};
    for (Section& section : copy.sections) {
      for (Row& row : section.rows) {
        for (auto& [column, cell] : row.cells) {
          if (!cell.formula || !std::ranges::any_of(cell.formula->references(), isOther)) continue;
          const bool isGuarded = cell.formula->isGuarded();
          cell.formula = nullptr;
          if (isGuarded) cell.formula = store.formulas().get("GUARD(" + formulaText(cell) + ")");
          const CellKey key{section.number, row.key, column};
          for (const bool begin : {false, true}) {
            if (key != triggerCell(begin)) continue;
            freed[begin] = cell.noFormula = true;
          }
        }
      }
    }
    // An end that walked around such a shape stays where it is.
    for (const bool begin : {false, true}) {
      for (const bool vertical : {false, true}) {
        Cell* end = freed[begin] ? copy.findLocal(endCell(begin, vertical)) : nullptr;
        if (end && end->formula && isWalkingFormula(end->formula->text())) end->formula = nullptr;
      }
    }
  }
}

/// References by number to shapes of the copied set are changed to the copies.
void renumberReferences(Store& store, const SheetMap& copies) {
  for (const auto& [from, to] : copies) {
    const Page* page = store.page(store.sheet(from)->page);
    for (Section& section : store.sheet(to)->sections) {
      for (Row& row : section.rows) {
        for (auto& [column, cell] : row.cells) {
          if (!cell.formula) continue;
          bool touched = false;
          const std::string text = cell.formula->textWithIds([&, original = from](const Reference& reference) {
            // A copy has no name, so what is named becomes a number.
            const bool named = reference.scope == ReferenceScope::NamedShape;
            const auto source = page->byShapeId.find(reference.shapeId);
            const auto copy = copies.find(named ? resolveShapeName(store, original, original, reference)
                                          : source == page->byShapeId.end() ? SheetId{}
                                                                            : source->second);
            if (copy == copies.end()) return -1;
            const int renumbered = store.sheet(copy->second)->shapeId;
            touched |= named || renumbered != reference.shapeId;
            return renumbered;
          });
          if (touched) cell.formula = store.formulas().get(text);
        }
      }
    }
  }
}

SheetId copyTree(Engine& engine, SheetId from, PageId page, SheetId parent, SheetMap& copies) {
  Store& store = engine.edit().making();
  const SheetId to = store.addShape(page, parent, store.sheet(from)->kind);
  copies[from] = to;
  copyContent(engine, from, to);
  for (const SheetId child : std::vector<SheetId>(store.sheet(from)->children))
    copyTree(engine, child, page, to, copies);
  return to;
}

MasterId copyMaster(Engine& engine, DocumentId document, MasterId source) {
  Store& store = engine.edit().making();
  std::string name = store.master(source)->name;
  if (store.masterNamed(document, name)) {
    for (int n = 2;; ++n) {
      const std::string candidate = name + "." + std::to_string(n);
      if (store.masterNamed(document, candidate)) continue;
      name = candidate;
      break;
    }
  }
  const MasterId made = store.addMaster(document, name);
  Master& target = *store.master(made);
  const Master& from = *store.master(source);
  if (name == from.name && !store.masterNamed(document, from.universalName)) target.universalName = from.universalName;
  target.uniqueId = from.uniqueId;
  target.baseId = from.baseId;
  target.prompt = from.prompt;
  target.extras = from.extras;
  const Page& contents = *store.page(from.contents);
  const PageId targetPage = target.contents;
  store.page(targetPage)->connects = contents.connects;
  copyContent(engine, contents.sheet, store.page(targetPage)->sheet);
  SheetMap copies;
  for (const SheetId shape : contents.shapes) {
    for (const SheetId sheet : store.subtree(shape)) {
      // A master's shapes keep their numbers, by which instances find them.
      const Sheet& original = *store.sheet(sheet);
      const auto parent = copies.find(original.parent);
      const SheetId to = store.addShape(targetPage, parent == copies.end() ? SheetId{} : parent->second, original.kind,
                                        original.shapeId);
      copies[sheet] = to;
      copyContent(engine, sheet, to);
      store.sheet(to)->name = store.sheet(sheet)->name;
      store.sheet(to)->universalName = store.sheet(sheet)->universalName;
    }
  }
  for (const auto& [original, copy] : copies) {
    const Sheet& from2 = *store.sheet(original);
    if (!from2.prototype) continue;
    if (from2.master) store.sheet(copy)->master = localMaster(engine, document, from2.master);
    const Sheet* inner = store.sheet(from2.prototype);
    const Page* innerPage = store.page(store.master(store.sheet(store.instanceRoot(copy))->master)->contents);
    const auto found = innerPage->byShapeId.find(inner->shapeId);
    if (found != innerPage->byShapeId.end()) store.sheet(copy)->prototype = found->second;
  }
  engine.edit().masterAdded(made);
  return made;
}

SheetId instantiateTree(Store& store, SheetId prototype, PageId page, SheetId parent) {
  const SheetId made = store.addShape(page, parent, store.sheet(prototype)->kind);
  store.sheet(made)->prototype = prototype;
  for (const SheetId child : std::vector<SheetId>(store.sheet(prototype)->children))
    instantiateTree(store, child, page, made);
  return made;
}

void setNumber(Engine& engine, SheetId sheet, const CellKey& key, double inches) {
  Cell cell;
  cell.value = Value::number(inches, Unit::Inches);
  engine.edit().setCell({sheet, key}, std::move(cell));
}

/// A member of a group that is copied to a page by itself lies there where it lay in the group.
void placeOnPage(Engine& engine, SheetId from, SheetId copy, std::vector<CellAddress>& changed) {
  const Store& store = engine.store();
  const Matrix matrix = toPageMatrix(store, store.sheet(from)->parent);
  const auto place = [&](const CellKey& x, const CellKey& y) {
    const Point at = matrix({cellNumber(store, copy, x), cellNumber(store, copy, y)});
    setNumber(engine, copy, x, at.x);
    setNumber(engine, copy, y, at.y);
    changed.insert(changed.end(), {{copy, x}, {copy, y}});
  };
  if (findCell(store, copy, endCell(true, false)).value) {
    for (const bool begin : {false, true}) {
      const FormulaPtr formula = formulaOf(store, copy, endCell(begin, false));
      // An end that is glued stays where its formula puts it.
      if (!formula || formula->constant()) place(endCell(begin, false), endCell(begin, true));
    }
    return;
  }
  place(pinX(), pinY());
  static const CellKey angle = objectCell("Angle"), flipX = objectCell("FlipX");
  const bool isMirrored = matrix.determinant() < 0;
  const double turn = isMirrored ? std::atan2(-matrix.b, -matrix.a) : std::atan2(matrix.b, matrix.a);
  const double own = cellNumber(store, copy, angle);
  Cell turned;
  turned.value = Value::number(turn + (isMirrored ? -own : own), Unit::Degrees);
  engine.edit().setCell({copy, angle}, std::move(turned));
  changed.push_back({copy, angle});
  if (!isMirrored) return;
  Cell flipped;
  flipped.value = Value::boolean(cellNumber(store, copy, flipX) == 0);
  engine.edit().setCell({copy, flipX}, std::move(flipped));
  changed.push_back({copy, flipX});
}

/// Moves a shape: its ends for a 1-D shape whose ends hold no formula, else its pin.
void shift(Engine& engine, SheetId shape, double dx, double dy, std::vector<CellAddress>& changed) {
  static const CellKey beginX = objectCell("BeginX"), beginY = objectCell("BeginY"), endX = objectCell("EndX"),
                       endY = objectCell("EndY");
  const bool oneD = findCell(engine.store(), shape, beginX).value != nullptr;
  const auto move = [&](const CellKey& key, double by) {
    const FoundCell found = findCell(engine.store(), shape, key);
    // An end that is glued stays where its formula puts it.
    if (found.formula && found.formula->formula && !found.formula->formula->constant()) return;
    setNumber(engine, shape, key, cellNumber(engine.store(), shape, key) + by);
    changed.push_back({shape, key});
  };
  if (oneD) {
    move(beginX, dx);
    move(beginY, dy);
    move(endX, dx);
    move(endY, dy);
  } else {
    move(pinX(), dx);
    move(pinY(), dy);
  }
}

/// True for a master's name and for the one that its copy got beside another of that name: "Task.2".
bool isNameOrNumbered(std::string_view name, std::string_view original) {
  if (name.size() < original.size() || !equalIgnoringCase(name.substr(0, original.size()), original)) return false;
  const std::string_view rest = name.substr(original.size());
  return rest.empty() ||
         (rest.size() > 1 && rest[0] == '.' && rest.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

}  // namespace

MasterId localMaster(Engine& engine, DocumentId document, MasterId masterId) {
  const Store& store = engine.store();
  const Master* wanted = store.master(masterId);
  if (wanted->document == document) return masterId;
  for (const MasterId candidate : store.document(document)->masters) {
    const Master& other = *store.master(candidate);
    const bool sameId = (!wanted->uniqueId.empty() && wanted->uniqueId == other.uniqueId) ||
                        (!wanted->baseId.empty() && wanted->baseId == other.baseId);
    // Masters that some programs write have no IDs; they are found by their name alone.
    const bool hasNoId = wanted->uniqueId.empty() && wanted->baseId.empty();
    if ((sameId && isNameOrNumbered(other.universalName, wanted->universalName)) ||
        (hasNoId && equalIgnoringCase(other.universalName, wanted->universalName)))
      return candidate;
  }
  return copyMaster(engine, document, masterId);
}

SheetId instantiate(Engine& engine, MasterId masterId, PageId page, double x, double y) {
  Store& store = engine.edit().making();
  const Master& master = *store.master(masterId);
  const Page& contents = *store.page(master.contents);
  if (contents.shapes.empty()) return {};
  SheetId root;
  if (contents.shapes.size() == 1) {
    root = instantiateTree(store, contents.shapes.front(), page, {});
  } else {
    // A master of several shapes comes as a group of the size of the master's page.
    root = store.addShape(page, {}, SheetKind::Group);
    static const CellKey pageWidth = objectCell("PageWidth"), pageHeight = objectCell("PageHeight");
    const double width = cellNumber(store, contents.sheet, pageWidth);
    const double height = cellNumber(store, contents.sheet, pageHeight);
    const auto set = [&](const char* name, double inches) {
      store.sheet(root)->local(objectCell(name)).value = Value::number(inches, Unit::Inches);
    };
    set("Width", width);
    set("Height", height);
    set("LocPinX", width / 2);
    set("LocPinY", height / 2);
    for (const SheetId shape : contents.shapes) {
      const SheetId member = instantiateTree(store, shape, page, root);
      store.sheet(member)->master = masterId;
    }
  }
  Sheet& sheet = *store.sheet(root);
  if (sheet.prototype) sheet.master = masterId;
  sheet.name = sheet.universalName = master.name + "." + std::to_string(sheet.shapeId);
  engine.edit().shapeAdded(root);

  std::vector<CellAddress> changed, seeds;
  shift(engine, root, x - cellNumber(store, root, pinX()), y - cellNumber(store, root, pinY()), changed);
  if (const auto* afresh = engine.graph().placeDependent(masterId)) {
    for (const CellAddress& cell : *afresh) {
      if (const SheetId here = counterpartOf(store, root, cell.sheet)) seeds.push_back({here, cell.key});
    }
  }
  engine.recalculate(seeds, changed);
  takeLayersOfMaster(engine, root, masterId);
  return root;
}

std::vector<SheetId> copyShapes(Engine& engine, const std::vector<SheetId>& shapes, PageId page, SheetId parent,
                                double dx, double dy, SheetMap* copied) {
  Store& store = engine.edit().making();
  const DocumentId document = store.page(page)->document;
  SheetMap copies;
  std::vector<SheetId> roots;
  for (const SheetId shape : shapes) roots.push_back(copyTree(engine, shape, page, parent, copies));
  // Masters first: an instance's members find their counterparts through the copied root.
  for (const auto& [from, to] : copies) {
    const Sheet& source = *store.sheet(from);
    if (source.master) store.sheet(to)->master = localMaster(engine, document, source.master);
  }
  for (const auto& [from, to] : copies) {
    const SheetId prototype = store.sheet(from)->prototype;
    if (!prototype) continue;
    const SheetId root = store.instanceRoot(from);
    const auto copiedRoot = copies.find(root);
    const MasterId original = store.sheet(root)->master;
    // A member that is copied without its instance inherits nothing.
    if (copiedRoot == copies.end() || !original) {
      copyInheritedContent(engine, from, to);
      continue;
    }
    const MasterId local = store.sheet(copiedRoot->second)->master;
    if (local == original) {
      store.sheet(to)->prototype = prototype;
      continue;
    }
    const auto& byId = store.page(store.master(local)->contents)->byShapeId;
    const auto found = byId.find(store.sheet(prototype)->shapeId);
    if (found != byId.end()) {
      store.sheet(to)->prototype = found->second;
    } else {
      copyInheritedContent(engine, from, to);
    }
  }
  const bool isElsewhere = !shapes.empty() && store.sheet(shapes.front())->page != page;
  if (isElsewhere) leaveOutOtherShapes(store, copies);
  renumberReferences(store, copies);
  // Glued ends of copied links stay connected to copies of what they are glued to.
  if (const Page* source = shapes.empty() ? nullptr : store.page(store.sheet(shapes.front())->page)) {
    std::vector<Connect> connects;
    const auto copyOf = [&](int id) {
      const auto sheet = source->byShapeId.find(id);
      const auto copy = sheet == source->byShapeId.end() ? copies.end() : copies.find(sheet->second);
      return copy == copies.end() ? 0 : store.sheet(copy->second)->shapeId;
    };
    for (Connect connect : source->connects) {
      connect.fromShape = copyOf(connect.fromShape);
      connect.toShape = copyOf(connect.toShape);
      if (connect.fromShape && connect.toShape) connects.push_back(std::move(connect));
    }
    for (Connect& connect : connects) engine.edit().addConnect(page, std::move(connect));
  }
  for (const SheetId root : roots) {
    Sheet& sheet = *store.sheet(root);
    sheet.name = sheet.universalName =
        (sheet.master ? store.master(sheet.master)->name : std::string("Sheet")) + "." + std::to_string(sheet.shapeId);
    engine.edit().shapeAdded(root);
    takeLayersOfPage(engine, root, store.sheet(shapes.front())->page);
  }
  std::vector<CellAddress> changed;
  for (std::size_t i = 0; i < roots.size(); ++i) {
    if (isElsewhere && store.sheet(shapes[i])->parent) placeOnPage(engine, shapes[i], roots[i], changed);
    if (dx != 0 || dy != 0) shift(engine, roots[i], dx, dy, changed);
  }
  // Copies are related to other shapes than the originals.
  for (const auto& [from, to] : copies) {
    if (hasRelations(store, from)) changed.push_back({to, relationsKey});
  }
  engine.recalculate({}, changed);
  if (copied) *copied = std::move(copies);
  return roots;
}

}  // namespace quorvel::host
