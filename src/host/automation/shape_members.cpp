// Members of shapes, their collections, characters and layers' membership.
#include <algorithm>

#include "base/text.h"
#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/commands/glue.h"
#include "host/commands/group_shapes.h"
#include "host/commands/shapes.h"
#include "host/commands/text_fields.h"
#include "host/commands/unique_id.h"
#include "host/edits/layers.h"
#include "host/geometry/row_tags.h"
#include "host/sheet/inheritance.h"
#include "host/text/text.h"

namespace quorvel::host {
namespace {

constexpr const char* lostRange = "too many characters were asked for since; ask the shape again";

/// The range as it lies in a text of that length.
std::pair<int, int> within(const CharacterRange& range, int length) {
  const int end = std::clamp(range.end.or_(length), 0, length);
  return {std::clamp(range.begin, 0, end), end};
}

}  // namespace

Maybe<Variant> InMemoryHost::getShapes(const ObjectRef& object, Member member, Arguments arguments) {
  const Store& store = engine_.store();
  const Page* page = object.part == 1 ? store.page(PageId{object.id}) : nullptr;
  const std::vector<SheetId>& shapes = page ? page->shapes : store.sheet(SheetId{object.id})->children;
  const auto found = [](SheetId id) { return Variant(refTo(ObjectKind::Shape, id.value)); };
  switch (member) {
    case Member::Shapes_Count:
      return Variant(static_cast<std::int64_t>(shapes.size()));
    case Member::Shapes_Item: {
      const int index = integerAt(arguments, 0).or_(0);
      if (index < 1 || index > static_cast<int>(shapes.size())) return refuse("the index lies outside 1 to Count");
      return found(shapes[static_cast<std::size_t>(index) - 1]);
    }
    case Member::Shapes_ItemByName:
    case Member::Shapes_ItemU: {
      const NameKind kind = member == Member::Shapes_ItemU ? NameKind::Universal : NameKind::Local;
      const SheetId id = store.shapeNamed(shapes, textAt(arguments, 0).or_(""), kind);
      return id ? Maybe<Variant>(found(id)) : refuse("no shape of this name");
    }
    case Member::Shapes_ItemFromID: {
      const Page* home = page ? page : store.page(store.sheet(SheetId{object.id})->page);
      const auto shape =
          home ? home->byShapeId.find(integerAt(arguments, 0).or_(0)) : decltype(home->byShapeId.end()){};
      if (!home || shape == home->byShapeId.end()) return refuse("no shape of this ID");
      return found(shape->second);
    }
    default:
      return refuse("not a property");
  }
}

Maybe<Variant> InMemoryHost::getCharacters(const ObjectRef& object, Member member) {
  const CharacterRange* range = engine_.characterRanges().find(object.part);
  if (!range) return refuse(lostRange);
  const std::string text = shownText(engine_.store(), SheetId{object.id});
  const auto [begin, end] = within(*range, static_cast<int>(quorvel::lengthOf(text)));
  if (member == Member::Characters_Begin) return Variant(std::int64_t{begin});
  if (member == Member::Characters_End) return Variant(std::int64_t{end});
  std::size_t at = 0, from = 0;
  for (int place = 0; place < end; ++place) {
    if (place == begin) from = at;
    decodeNext(text, at);
  }
  return Variant(begin < end ? text.substr(from, at - from) : std::string());
}

bool InMemoryHost::putCharacters(const ObjectRef& object, Member member, const Argument& value) {
  CharacterRange* range = engine_.characterRanges().find(object.part);
  const Maybe<int> place = integerOf(value);
  const int length = static_cast<int>(quorvel::lengthOf(shownText(engine_.store(), SheetId{object.id})));
  if (!range || !place || *place < 0 || *place > length) {
    refuse(range ? "the place is no number from 0 to the length of the text" : lostRange);
    return false;
  }
  auto [begin, end] = within(*range, length);
  (member == Member::Characters_Begin ? begin : end) = *place;
  // The place that was put counts.
  if (begin > end) (member == Member::Characters_Begin ? end : begin) = *place;
  const bool isOpen = end == length && !range->end;
  range->begin = begin;
  range->end = isOpen ? Maybe<int>() : Maybe<int>(end);
  return true;
}

Maybe<Variant> InMemoryHost::cellNamed(SheetId sheet, std::string_view name, Member member) {
  const Maybe<CellKey> parsed = parseCellName(name);
  if (!parsed) return refuseName("\"" + std::string(name) + "\" is no cell name");
  const CellKey key = member == Member::Shape_CellsU ? keyOnSheet(engine_.store(), sheet, *parsed)
                                                     : keyByLocalName(engine_.store(), sheet, *parsed);
  if (!cellExists(engine_.store(), sheet, key, false) && !isFirstField(engine_, {sheet, key}))
    return refuseName("the cell \"" + std::string(name) + "\" does not exist");
  return Variant(engine_.refTo(CellAddress{sheet, key}));
}

Maybe<Variant> InMemoryHost::getShape(SheetId id, Member member, Arguments arguments) {
  const Store& store = engine_.store();
  const Sheet& sheet = *store.sheet(id);
  switch (member) {
    case Member::Shape_ID:
      return Variant(std::int64_t{sheet.isShape() ? sheet.shapeId : 0});
    case Member::Shape_NameID:
      return Variant("Sheet." + std::to_string(sheet.isShape() ? sheet.shapeId : 0));
    case Member::Shape_Name:
      return Variant(store.shapeName(sheet));
    case Member::Shape_NameU:
      return Variant(store.shapeName(sheet, NameKind::Universal));
    case Member::Shape_Text:
      return Variant(shownText(store, id));
    case Member::Shape_Data1:
      return Variant(sheet.data1);
    case Member::Shape_Data2:
      return Variant(sheet.data2);
    case Member::Shape_Data3:
      return Variant(sheet.data3);
    case Member::Shape_Master: {
      const MasterId master = store.masterOf(id);
      return Variant(store.master(master) ? refTo(ObjectKind::Master, master.value) : ObjectRef{});
    }
    case Member::Shape_Parent:
      if (sheet.parent) return Variant(refTo(ObjectKind::Shape, sheet.parent.value));
      return Variant(sheet.isShape() && store.page(sheet.page) ? refTo(ObjectKind::Page, sheet.page.value)
                                                               : ObjectRef{});
    case Member::Shape_ContainingPage:
      if (!store.page(sheet.page) || store.page(sheet.page)->master) return refuse("the sheet is on no page");
      return Variant(refTo(ObjectKind::Page, sheet.page.value));
    case Member::Shape_ContainingShape:
      if (sheet.parent) return Variant(refTo(ObjectKind::Shape, sheet.parent.value));
      if (!sheet.isShape()) return refuse("the sheet is in no shape");
      return Variant(refTo(ObjectKind::Shape, store.page(sheet.page)->sheet.value));
    case Member::Shape_Document:
      return Variant(refTo(ObjectKind::Document, sheet.document.value));
    case Member::Shape_Shapes:
      if (sheet.kind == SheetKind::Page) return Variant(refTo(ObjectKind::Shapes, sheet.page.value, 1));
      return Variant(refTo(ObjectKind::Shapes, id.value));
    case Member::Shape_OneD: {
      static const CellKey beginX = objectCell("BeginX");
      return Variant(sheet.isShape() && findCell(store, id, beginX).value != nullptr);
    }
    case Member::Shape_Cells:
    case Member::Shape_CellsU:
      return cellNamed(id, textAt(arguments, 0).or_(""), member);
    case Member::Shape_CellsSRC: {
      const Maybe<int> section = integerAt(arguments, 0), row = integerAt(arguments, 1),
                       column = integerAt(arguments, 2);
      if (!section || !row || !column || *section < 1 || *section > 249 || *column < 0)
        return refuseName("no such cell");
      const auto number = static_cast<SectionNumber>(*section);
      CellKey key{number, RowKey::index(static_cast<std::uint32_t>(std::max(0, *row))), static_cast<Column>(*column)};
      if (number != SectionNumber::Object) {
        const Maybe<RowView> at = rowAt(store, id, number, *row);
        if (!at) return refuseName("no such row");
        key.row = at->key;
      }
      if (!cellExists(store, id, key, false)) return refuseName("no such cell");
      return Variant(engine_.refTo(CellAddress{id, key}));
    }
    case Member::Shape_CellExists: {
      const Maybe<CellKey> key = parseCellName(textAt(arguments, 0).or_(""));
      return Variant(key &&
                     cellExists(store, id, keyByLocalName(store, id, *key), integerAt(arguments, 1).or_(0) != 0));
    }
    case Member::Shape_RowCount:
      return Variant(static_cast<std::int64_t>(
          rowsOf(store, id, static_cast<SectionNumber>(std::clamp(integerAt(arguments, 0).or_(0), 0, 250))).size()));
    case Member::Shape_RowType: {
      const auto number = static_cast<SectionNumber>(std::clamp(integerAt(arguments, 0).or_(0), 0, 250));
      const Maybe<RowView> row = rowAt(store, id, number, integerAt(arguments, 1).or_(-1));
      if (!row) return refuseName("no such row");
      return Variant(std::int64_t{row->type});
    }
    case Member::Shape_Section: {
      const int number = integerAt(arguments, 0).or_(0);
      if (number < 1 || number > 249 || fileNameOf(static_cast<SectionNumber>(number)).empty())
        return refuseName("no such section");
      return Variant(refTo(ObjectKind::Section, id.value, static_cast<std::uint64_t>(number)));
    }
    case Member::Shape_Hyperlinks:
      return Variant(refTo(ObjectKind::Hyperlinks, id.value));
    case Member::Shape_Connects:
    case Member::Shape_FromConnects:
      if (!sheet.isShape()) return refuse("only shapes are glued");
      return Variant(refTo(ObjectKind::Connects, id.value, member == Member::Shape_Connects ? 1 : 2));
    case Member::Shape_Characters:
      if (!sheet.isShape()) return refuse("only shapes have text");
      return Variant(refTo(ObjectKind::Characters, id.value, engine_.characterRanges().add({})));
    case Member::Shape_LayerCount:
      return Variant(static_cast<std::int64_t>(layersOf(store, id).size()));
    case Member::Shape_Layer: {
      const std::vector<int> layers = layersOf(store, id);
      const int index = integerAt(arguments, 0).or_(0);
      if (index < 1 || index > static_cast<int>(layers.size())) return refuse("the index lies outside 1 to LayerCount");
      return Variant(refTo(ObjectKind::Layer, sheet.page.value,
                           static_cast<std::uint64_t>(layers[static_cast<std::size_t>(index) - 1])));
    }
    default:
      return refuse("not a property");
  }
}

bool InMemoryHost::putShape(SheetId id, Member member, Arguments indices, const Argument& value) {
  if (member == Member::Shape_RowType) {
    return settle(
        setRowType(engine_, id, integerAt(indices, 0).or_(0), integerAt(indices, 1).or_(-1), integerOf(value).or_(-1)));
  }
  const Maybe<std::string_view> text = textOfArgument(value);
  if (!text) {
    refuse("a text is needed");
    return false;
  }
  switch (member) {
    case Member::Shape_Name:
      return settle(renameShape(engine_, id, *text, NameKind::Local));
    case Member::Shape_NameU:
      return settle(renameShape(engine_, id, *text, NameKind::Universal));
    case Member::Shape_Text:
      return settle(setText(engine_, id, *text));
    case Member::Shape_Data1:
      return settle(setData(engine_, id, 1, *text));
    case Member::Shape_Data2:
      return settle(setData(engine_, id, 2, *text));
    case Member::Shape_Data3:
      return settle(setData(engine_, id, 3, *text));
    case Member::Shape_Style:
      return settle(applyStyle(engine_, id, *text));
    default:
      refuse("the property can't be put");
      return false;
  }
}

Maybe<Variant> InMemoryHost::callShape(SheetId id, Member member, Arguments arguments) {
  const auto shape = [&](const ShapeOutcome& made) -> Maybe<Variant> {
    if (!settle(made.outcome)) return {};
    return Variant(made.shape ? refTo(ObjectKind::Shape, made.shape.value) : ObjectRef{});
  };
  const auto row = [&](const RowOutcome& made) -> Maybe<Variant> {
    if (!settle(made.outcome)) return {};
    return Variant(std::int64_t{made.row});
  };
  const int section = integerAt(arguments, 0).or_(0);
  switch (member) {
    case Member::Shape_AddNamedRow:
      return row(addNamedRow(engine_, id, section, textAt(arguments, 1).or_("")));
    case Member::Shape_AddRow:
      return row(addRow(engine_, id, section, integerAt(arguments, 1).or_(-2), integerAt(arguments, 2).or_(0)));
    case Member::Shape_AddSection: {
      if (!isGeometry(static_cast<SectionNumber>(std::clamp(section, 0, 250))))
        return refuse("sections other than Geometry come with their first row");
      return row(addRow(engine_, id, section, 0, numberOf(RowTag::Component)));
    }
    case Member::Shape_DeleteRow:
      return settled(deleteRow(engine_, id, section, integerAt(arguments, 1).or_(-1)));
    case Member::Shape_DeleteSection:
      return settled(deleteSection(engine_, id, section));
    case Member::Shape_AddHyperlink: {
      const RowOutcome made = addRow(engine_, id, static_cast<int>(SectionNumber::Hyperlink), -2, 0);
      if (!settle(made.outcome)) return {};
      return Variant(engine_.refToHyperlink(id, made.key));
    }
    case Member::Shape_DrawLine:
    case Member::Shape_DrawRectangle: {
      double at[4];
      for (std::size_t i = 0; i < 4; ++i) {
        const Maybe<double> number = numberAt(arguments, i);
        if (!number) return refuse("four coordinates are needed");
        at[i] = *number;
      }
      const PageId page = engine_.store().sheet(id)->page;
      return shape(member == Member::Shape_DrawLine ? drawLine(engine_, page, id, at[0], at[1], at[2], at[3])
                                                    : drawRectangle(engine_, page, id, at[0], at[1], at[2], at[3]));
    }
    case Member::Shape_Import:
      return shape(
          importImage(engine_, engine_.store().sheet(id)->page, id, std::string(textAt(arguments, 0).or_(""))));
    case Member::Shape_Duplicate:
      return shape(duplicateShape(engine_, id));
    case Member::Shape_Delete:
      return settled(deleteShape(engine_, id));
    case Member::Shape_Group:
      return settled(convertToGroup(engine_, id));
    case Member::Shape_Ungroup:
      return settled(ungroupShapes(engine_, {id}));
    case Member::Shape_BringForward:
      return settled(bringForward(engine_, id, false));
    case Member::Shape_BringToFront:
      return settled(bringForward(engine_, id, true));
    case Member::Shape_FlipHorizontal:
      return settled(flipHorizontal(engine_, id));
    case Member::Shape_ReverseEnds:
      return settled(reverseEnds(engine_, id));
    case Member::Shape_UniqueID: {
      const int request = integerAt(arguments, 0).or_(0);
      if (request < 0 || request > 2) return refuse("the request is 0 to read, 1 to read or make, 2 to delete");
      UniqueIdOutcome found = uniqueIdOf(engine_, id, static_cast<UniqueIdRequest>(request));
      if (!settle(found.outcome)) return {};
      return Variant(std::move(found.uniqueId));
    }
    case Member::Shape_UpdateAlignmentBox:
      return settled(updateAlignmentBox(engine_, id));
    case Member::Shape_BeginTextEdit:
      return settled(beginTextEdit(engine_, id));
    case Member::Shape_EndTextEdit:
      return settled(endTextEdit(engine_, id, textAt(arguments, 0).or_("")));
    case Member::Characters_AddCustomField: {
      const CharacterRange* range = engine_.characterRanges().find(current_.part);
      if (!range) return refuse(lostRange);
      return settled(addCustomField(engine_, id,
                                    toUniversalSyntax(textAt(arguments, 0).or_(""), engine_.store().locale()),
                                    integerAt(arguments, 1).or_(0), range->begin));
    }
    case Member::Cell_GlueTo: {
      const Maybe<ObjectRef> target = referenceAt(arguments, 0, ObjectKind::Cell);
      if (!target) return refuse("a cell to glue to is needed");
      return settled(glueTo(engine_, {id, CellKey::fromPacked(current_.part)},
                            {SheetId{target->id}, CellKey::fromPacked(engine_.present(*target).part)}));
    }
    default:
      return refuse("not an action");
  }
}

}  // namespace quorvel::host
