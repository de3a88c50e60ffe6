// Members of windows, selections, layers and hyperlinks.
#include <algorithm>
#include <unordered_set>

#include "base/basic_text.h"
#include "host/automation/in_memory_host.h"
#include "host/cells/cell_table.h"
#include "host/commands/documents.h"
#include "host/commands/follow_hyperlink.h"
#include "host/commands/group_shapes.h"
#include "host/commands/shapes.h"
#include "host/edits/layers.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

constexpr int skipSuper = 256;

CellKey hyperlinkCell(const ObjectRef& object, std::string_view column) {
  return {SectionNumber::Hyperlink, RowKey::fromPacked(static_cast<std::uint32_t>(object.part)),
          columnOf(SectionNumber::Hyperlink, column).or_(0)};
}

}  // namespace

std::vector<SheetId> InMemoryHost::listed(const SelectionSnapshot& snapshot) const {
  std::vector<SheetId> shapes;
  std::unordered_set<SheetId> holdingSelected;
  for (const SheetId id : *snapshot.shapes) {
    if (const Sheet* sheet = engine_.store().sheet(id)) holdingSelected.insert(sheet->parent);
  }
  for (const SheetId id : *snapshot.shapes) {
    const Sheet* sheet = engine_.store().sheet(id);
    if (!sheet) {
      shapes.push_back(id);  // a deleted shape keeps its place, as a null handle
      continue;
    }
    if (snapshot.iterationMode == skipSuper) {
      // A group whose member is selected is not selected itself.
      const bool hasSelectedMember = holdingSelected.contains(id);
      if (!hasSelectedMember) shapes.push_back(id);
    } else if (!sheet->parent) {
      shapes.push_back(id);
    }
  }
  return shapes;
}

Maybe<Variant> InMemoryHost::getSelection(const ObjectRef& object, Member member, Arguments arguments) {
  SelectionSnapshot* snapshot = engine_.selections().find(object.id);
  if (!snapshot) return refuse("the selection is deleted");
  if (member == Member::Selection_IterationMode) return Variant(std::int64_t{snapshot->iterationMode});
  if (!snapshot->listed) {
    std::vector<SheetId> all = listed(*snapshot);
    snapshot->listed =
        all == *snapshot->shapes ? snapshot->shapes : std::make_shared<const std::vector<SheetId>>(std::move(all));
  }
  const std::vector<SheetId>& shapes = *snapshot->listed;
  if (member == Member::Selection_Count) return Variant(static_cast<std::int64_t>(shapes.size()));
  const int index = integerAt(arguments, 0).or_(0);
  if (index < 1 || index > static_cast<int>(shapes.size())) return refuse("the index lies outside 1 to Count");
  return Variant(refTo(ObjectKind::Shape, shapes[static_cast<std::size_t>(index) - 1].value));
}

Maybe<Variant> InMemoryHost::callSelection(const ObjectRef& object, Member member) {
  const SelectionSnapshot* snapshot = engine_.selections().find(object.id);
  if (!snapshot) return refuse("the selection is deleted");
  const bool regroups = member == Member::Selection_Group || member == Member::Selection_Ungroup;
  // Members that are selected are grouped among themselves, however the selection is walked.
  std::vector<SheetId> shapes = listed(regroups ? SelectionSnapshot{snapshot->shapes, skipSuper, {}} : *snapshot);
  std::erase_if(shapes, [&](SheetId id) { return !engine_.store().sheet(id); });
  if (member == Member::Selection_Copy) return settled(copyToClipboard(engine_, shapes));
  if (member == Member::Selection_Ungroup) return settled(ungroupShapes(engine_, shapes));
  if (member == Member::Selection_Group) {
    const ShapeOutcome made = groupShapes(engine_, shapes);
    if (!settle(made.outcome)) return {};
    return Variant(made.shape ? refTo(ObjectKind::Shape, made.shape.value) : ObjectRef{});
  }
  if (member != Member::Selection_Delete) return refuse("not an action");
  return settled(deleteShapes(engine_, shapes));
}

bool InMemoryHost::putSelection(const ObjectRef& object, const Argument& value) {
  SelectionSnapshot* snapshot = engine_.selections().find(object.id);
  const Maybe<int> mode = integerOf(value);
  if (!snapshot || !mode) {
    refuse("the selection is deleted or the mode is no number");
    return false;
  }
  snapshot->iterationMode = *mode;
  snapshot->listed.reset();
  return true;
}

bool InMemoryHost::putWindow(WindowId id, Member member, const Argument& value) {
  if (member == Member::Window_Zoom) {
    const Maybe<double> zoom = numberOf(value);
    if (!zoom || !isZoom(*zoom)) {
      refuse("a zoom is 0.05 to 9.99, -1 for the whole page or -2 for its width");
      return false;
    }
    engine_.window(id)->setZoom(*zoom);
    return true;
  }
  if (member == Member::Window_ViewFit) {
    const Maybe<int> fit = integerOf(value);
    if (!fit || *fit < 0 || *fit > 2) {
      refuse("0 fits nothing, 1 the whole page, 2 its width");
      return false;
    }
    engine_.window(id)->fit = static_cast<WindowFit>(*fit);
    return true;
  }
  const auto* page = std::get_if<ObjectRef>(&value);
  const Page* shown = page && page->kind == ObjectKind::Page ? engine_.store().page(PageId{page->id}) : nullptr;
  if (!shown || shown->master || shown->document != engine_.window(id)->document) {
    refuse("the page is no page of the window's document");
    return false;
  }
  showPage(engine_, id, shown->id);
  return true;
}

Maybe<Variant> InMemoryHost::getWindows(Member member, Arguments arguments) {
  if (member == Member::Windows_Count) return Variant(static_cast<std::int64_t>(engine_.windows().size()));
  std::vector<WindowId> windows;
  for (const WindowState& window : engine_.windows()) windows.push_back(window.id);
  // The engine keeps the active one last; a walk must not depend on what it activates.
  std::ranges::sort(windows, {}, &WindowId::value);
  const int index = integerAt(arguments, 0).or_(0);
  if (index < 1 || index > static_cast<int>(windows.size())) return refuse("the index lies outside 1 to Count");
  return Variant(refTo(ObjectKind::Window, windows[static_cast<std::size_t>(index) - 1].value));
}

Maybe<Variant> InMemoryHost::getWindow(WindowId id, Member member) {
  WindowState& window = *engine_.window(id);
  switch (member) {
    case Member::Window_Type:
      return Variant(std::int64_t{window.type});
    case Member::Window_SubType:
      return Variant(std::int64_t{window.subType});
    case Member::Window_Caption: {
      const Page* page = engine_.store().page(window.page);
      return Variant(engine_.store().document(window.document)->name + (page ? ":" + page->name : ""));
    }
    case Member::Window_Document:
      return Variant(refTo(ObjectKind::Document, window.document.value));
    case Member::Window_Page:
      return Variant(window.page ? refTo(ObjectKind::Page, window.page.value) : ObjectRef{});
    case Member::Window_Zoom:
      return Variant(window.zoom());
    case Member::Window_ViewFit:
      return Variant(static_cast<std::int64_t>(window.fit));
    case Member::Window_Selection:
      return Variant(refTo(ObjectKind::Selection, engine_.selections().add({window.selected, 0, {}})));
    default:
      return refuse("not a property");
  }
}

Maybe<Variant> InMemoryHost::callWindow(WindowId id, Member member, Arguments arguments) {
  switch (member) {
    case Member::Window_Select: {
      const Maybe<ObjectRef> object = referenceAt(arguments, 0, ObjectKind::Shape);
      const Sheet* sheet = object ? engine_.store().sheet(SheetId{object->id}) : nullptr;
      const int action = integerAt(arguments, 1).or_(0);
      if (!sheet || !sheet->isShape() || sheet->page != engine_.window(id)->page)
        return refuse("the shape is not on the window's page");
      if (action != visio::select && action != visio::deselect) return refuse("no such way of selecting");
      std::vector<SheetId> shapes = engine_.window(id)->selection();
      const bool there = std::find(shapes.begin(), shapes.end(), sheet->id) != shapes.end();
      if (action == visio::select && !there) shapes.push_back(sheet->id);
      if (action == visio::deselect) std::erase(shapes, sheet->id);
      setSelection(engine_, id, std::move(shapes));
      return Variant(std::monostate());
    }
    case Member::Window_DeselectAll:
      setSelection(engine_, id, {});
      return Variant(std::monostate());
    case Member::Window_Activate:
      if (engine_.activeWindow()->id == id) return Variant(std::monostate());
      engine_.bringToFront(id);
      engine_.raise(&ApplicationEvents::WindowActivated, id);
      return Variant(std::monostate());
    case Member::Window_Close:
      return settled(closeWindow(engine_, id));
    default:
      return refuse("not an action");
  }
}

Maybe<Variant> InMemoryHost::getLayers(const ObjectRef& object, Member member, Arguments arguments) {
  const PageId page{object.id};
  const auto rows = rowsOf(engine_.store(), engine_.store().page(page)->sheet, SectionNumber::Layer);
  switch (member) {
    case Member::Layers_Count:
      return Variant(static_cast<std::int64_t>(rows.size()));
    case Member::Layers_ItemByIndex: {
      const int index = integerAt(arguments, 0).or_(0);
      if (index < 1 || index > static_cast<int>(rows.size())) return refuse("the index lies outside 1 to Count");
      return Variant(refTo(ObjectKind::Layer, object.id, rows[static_cast<std::size_t>(index) - 1].key.index()));
    }
    case Member::Layers_Item: {
      const int layer = layerNamed(engine_.store(), page, textAt(arguments, 0).or_(""));
      if (layer < 0) return refuse("no layer of this name");
      return Variant(refTo(ObjectKind::Layer, object.id, static_cast<std::uint64_t>(layer)));
    }
    default:
      break;
  }
  const auto layer = static_cast<int>(object.part);
  if (std::none_of(rows.begin(), rows.end(), [&](const RowView& row) { return int(row.key.index()) == layer; }))
    return refuse("the layer is deleted");
  if (member == Member::Layer_Name) return Variant(layerName(engine_.store(), page, layer));
  const int column = integerAt(arguments, 0).or_(-1);
  const CellKey key{SectionNumber::Layer, RowKey::index(static_cast<std::uint32_t>(layer)),
                    static_cast<Column>(column)};
  const SheetId sheet = engine_.store().page(page)->sheet;
  if (column < 0 || !cellExists(engine_.store(), sheet, key, false)) return refuseName("no such column");
  return Variant(engine_.refTo(CellAddress{sheet, key}));
}

Maybe<Variant> InMemoryHost::callLayers(const ObjectRef& object, Member member, Arguments arguments) {
  const PageId page{object.id};
  if (member == Member::Layers_Add) {
    int layer = -1;
    if (!settle(addLayer(engine_, page, textAt(arguments, 0).or_(""), layer))) return {};
    return Variant(refTo(ObjectKind::Layer, object.id, static_cast<std::uint64_t>(layer)));
  }
  if (member != Member::Layer_Add && member != Member::Layer_Remove) return refuse("not an action");
  const auto layer = static_cast<int>(object.part);
  if (layer >= 0 && !rowExists(engine_.store(), engine_.store().page(page)->sheet, SectionNumber::Layer,
                               RowKey::index(static_cast<std::uint32_t>(layer)), false))
    return refuse("the layer is deleted");
  const Maybe<ObjectRef> shape = referenceAt(arguments, 0, ObjectKind::Shape);
  const Sheet* sheet = shape ? engine_.store().sheet(SheetId{shape->id}) : nullptr;
  if (!sheet || sheet->page != page) return refuse("the shape is not on the layer's page");
  return settled(setLayerMembership(engine_, sheet->id, layer, member == Member::Layer_Add));
}

Maybe<Variant> InMemoryHost::getHyperlinks(const ObjectRef& object, Member member, Arguments arguments) {
  const SheetId sheet{object.id};
  const auto rows = rowsOf(engine_.store(), sheet, SectionNumber::Hyperlink);
  if (member == Member::Hyperlinks_Count) return Variant(static_cast<std::int64_t>(rows.size()));
  if (member == Member::Hyperlinks_Item) {
    const int index = integerAt(arguments, 0).or_(-1);
    if (index < 0 || index >= static_cast<int>(rows.size())) return refuse("the index lies outside 0 to Count - 1");
    return Variant(engine_.refToHyperlink(sheet, rows[static_cast<std::size_t>(index)].key));
  }
  const RowKey row = RowKey::fromPacked(static_cast<std::uint32_t>(object.part));
  if (!rowExists(engine_.store(), sheet, SectionNumber::Hyperlink, row, false))
    return refuse("the hyperlink is deleted");
  const auto value = [&](std::string_view column) {
    return cellValue(engine_.store(), sheet, hyperlinkCell(object, column));
  };
  switch (member) {
    case Member::Hyperlink_NewWindow:
      return Variant(value("NewWindow").asBoolean());
    case Member::Hyperlink_IsDefaultLink:
      return Variant(value("Default").asBoolean());
    default:
      return Variant(value(infoOf(member).memberName).asText());
  }
}

bool InMemoryHost::putHyperlink(const ObjectRef& object, Member member, const Argument& value) {
  const SheetId sheet{object.id};
  const RowKey row = RowKey::fromPacked(static_cast<std::uint32_t>(object.part));
  if (!rowExists(engine_.store(), sheet, SectionNumber::Hyperlink, row, false)) {
    refuse("the hyperlink is deleted");
    return false;
  }
  const bool isTruth = member == Member::Hyperlink_NewWindow || member == Member::Hyperlink_IsDefaultLink;
  std::string formula;
  if (isTruth) {
    const Maybe<double> truth = numberOf(value);
    if (!truth) {
      refuse("a truth value is needed");
      return false;
    }
    formula = *truth != 0 ? "1" : "0";
  } else {
    const Maybe<std::string_view> text = textOfArgument(value);
    if (!text) {
      refuse("a text is needed");
      return false;
    }
    formula = quoted(*text);
  }
  const std::string_view column = member == Member::Hyperlink_IsDefaultLink ? "Default" : infoOf(member).memberName;
  const CellKey cell = hyperlinkCell(object, column);
  if (member == Member::Hyperlink_IsDefaultLink && formula == "1") return makeDefaultLink({sheet, cell});
  return settle(writeFormula(engine_, {sheet, cell}, formula, true));
}

bool InMemoryHost::makeDefaultLink(const CellAddress& cell) {
  CommandScope scope(engine_, engine_.store().sheet(cell.sheet)->document, "Hyperlink");
  if (!settle(writeFormula(engine_, cell, "1", true))) return false;
  // A shape has one default link. Listeners may delete the shape and its rows meanwhile.
  std::vector<RowView> rows;
  if (engine_.exists(cell.sheet)) rows = rowsOf(engine_.store(), cell.sheet, SectionNumber::Hyperlink);
  for (const RowView& row : rows) {
    const CellAddress other{cell.sheet, {SectionNumber::Hyperlink, row.key, cell.key.column}};
    if (row.key == cell.key.row || !engine_.exists(other)) continue;
    if (cellValue(engine_.store(), other.sheet, other.key).asBoolean()) writeFormula(engine_, other, "0", true);
  }
  scope.commit();
  return true;
}

Maybe<Variant> InMemoryHost::callHyperlinks(const ObjectRef& object, Member member) {
  const SheetId sheet{object.id};
  constexpr int section = static_cast<int>(SectionNumber::Hyperlink);
  if (member == Member::Hyperlinks_Add) {
    const RowOutcome made = addRow(engine_, sheet, section, -2, 0);
    if (!settle(made.outcome)) return {};
    return Variant(engine_.refToHyperlink(sheet, made.key));
  }
  const RowKey row = RowKey::fromPacked(static_cast<std::uint32_t>(object.part));
  if (member == Member::Hyperlink_Follow) {
    if (!rowExists(engine_.store(), sheet, SectionNumber::Hyperlink, row, false))
      return refuse("the hyperlink is deleted");
    const auto value = [&](std::string_view column) {
      return cellValue(engine_.store(), sheet, hyperlinkCell(object, column));
    };
    return settled(followHyperlink(engine_, engine_.store().sheet(sheet)->document,
                                   {.address = value("Address").asText(),
                                    .subAddress = value("SubAddress").asText(),
                                    .extraInfo = value("ExtraInfo").asText(),
                                    .newWindow = value("NewWindow").asBoolean()}));
  }
  if (member != Member::Hyperlink_Delete) return refuse("not an action");
  return settled(deleteRow(engine_, sheet, section, placeOf(engine_.store(), sheet, SectionNumber::Hyperlink, row)));
}

}  // namespace quorvel::host
