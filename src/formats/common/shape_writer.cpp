#include "formats/common/shape_writer.h"

#include <algorithm>

#include "formats/common/carried.h"
#include "formats/common/repeated_text.h"
#include "formats/common/shape_types.h"
#include "host/sheet/inheritance.h"
#include "host/text/text.h"

namespace quorvel::formats {
namespace {

void writeText(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, const CarriedSheet* carry) {
  const host::TextBody* const body = sheet.text                       ? sheet.text.get()
                                     : showsOtherFields(store, sheet) ? host::textOf(store, sheet.id)
                                                                      : nullptr;
  if (!body) return;
  if (sheet.text && carry && !carry->text.empty() && carry->textRead == sheet.text) {
    writer.raw(carry->text);
    return;
  }
  writer.start("Text");
  for (const host::TextPiece& piece : *body) {
    switch (piece.kind) {
      case host::TextPiece::Characters:
        writer.text(piece.text);
        break;
      case host::TextPiece::CharacterRun:
        writer.start("cp").attribute("IX", piece.index).end();
        break;
      case host::TextPiece::ParagraphRun:
        writer.start("pp").attribute("IX", piece.index).end();
        break;
      case host::TextPiece::TabRun:
        writer.start("tp").attribute("IX", piece.index).end();
        break;
      case host::TextPiece::Field:
        // What a field showed in its file is kept until the field changes.
        writer.start("fld").attribute("IX", piece.index);
        writer.text(sheet.text && !piece.text.empty() ? piece.text : host::fieldText(store, sheet.id, piece.index))
            .end();
        break;
    }
  }
  writer.end();
}

/// Shape numbers of the master's members that this instance no longer has. Without a word about them they would come
/// back on opening. Members may have been regrouped within the instance, so that all of it is looked at.
std::vector<int> missingMembers(const host::Store& store, const host::Sheet& root) {
  std::vector<int> missing;
  const host::Sheet* const prototype = store.sheet(root.prototype);
  if (!root.master || !prototype || prototype->children.empty()) return missing;
  std::unordered_set<host::SheetId> present;
  std::unordered_set<int> saidDeleted;
  for (const host::SheetId id : store.subtree(root.id)) {
    const host::Sheet& member = *store.sheet(id);
    present.insert(member.prototype);
    if (const CarriedSheet* const carry = carried<CarriedSheet>(member.extras))
      saidDeleted.insert(carry->deletedMasterShapes.begin(), carry->deletedMasterShapes.end());
  }
  for (const host::SheetId id : store.subtree(root.prototype)) {
    const int number = store.sheet(id)->shapeId;
    if (!present.contains(id) && !saidDeleted.contains(number)) missing.push_back(number);
  }
  return missing;
}

}  // namespace

void writeShape(XmlWriter& writer, const host::Store& store, host::SheetId id, ShapeDialect& dialect) {
  const host::Sheet& shape = *store.sheet(id);
  const CarriedSheet* const carry = carried<CarriedSheet>(shape.extras);
  writer.start("Shape").attribute("ID", shape.shapeId);
  dialect.names(writer, shape);
  // A member that left its instance has no master any more that would have its kind.
  const bool onlyTypeTells = !shape.prototype && shape.kind != host::SheetKind::Shape;
  if (!carry || !carry->lacksType || onlyTypeTells) writer.attribute("Type", typeName(shape.kind));
  if (const host::Master* const master = store.master(shape.master)) {
    writer.attribute("Master", master->fileId);
    dialect.uses(master->id);
  }
  const host::Sheet* const prototype = store.sheet(shape.prototype);
  if (prototype && (!shape.master || store.page(prototype->page)->master != shape.master))
    writer.attribute("MasterShape", prototype->shapeId);
  dialect.attributes(writer, shape);
  dialect.contents(writer, shape);

  writeText(writer, store, shape, carry);
  const std::string* const data[] = {&shape.data1, &shape.data2, &shape.data3};
  for (int i = 0; i < 3; ++i) {
    if (data[i]->empty() && !(carry && (carry->emptyData >> i & 1))) continue;
    writer.start("Data" + std::to_string(i + 1)).text(*data[i]).end();
  }
  if (shape.foreign) dialect.picture(writer, *shape.foreign);
  dialect.tail(writer, shape);

  const std::vector<int> missing = missingMembers(store, shape);
  const std::string_view deleted = carry ? std::string_view(carry->deletedMembers) : std::string_view();
  const auto isWritten = [&](host::SheetId member) { return !dialect.leftOut || !dialect.leftOut->contains(member); };
  if (std::ranges::any_of(shape.children, isWritten) || !missing.empty() || !deleted.empty()) {
    writer.start("Shapes");
    for (const host::SheetId member : shape.children) {
      if (isWritten(member)) writeShape(writer, store, member, dialect);
    }
    writer.raw(deleted);
    for (const int number : missing) {
      // A deleted member has no number of its own; files say so by the largest one.
      writer.start("Shape").attribute("ID", 4294967295L);
      writer.attribute("Del", "1").attribute("MasterShape", number).end();
    }
    writer.end();
  }
  dialect.end(writer);
}

}  // namespace quorvel::formats
