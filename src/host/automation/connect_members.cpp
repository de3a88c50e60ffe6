// Members of glued ends and their collections.
#include "base/text.h"
#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"

namespace quorvel::host {
namespace {

/// A glued end is named by its shape and which of the two ends it is.
std::uint64_t partOf(const Connect& connect) {
  return (static_cast<std::uint64_t>(connect.fromShape) << 1) | startsWithIgnoringCase(connect.fromCell, "End");
}

}  // namespace

Maybe<Variant> InMemoryHost::getConnects(const ObjectRef& object, Member member, Arguments arguments) {
  const Store& store = engine_.store();
  constexpr std::uint64_t ofPage = 0, ofShape = 1;
  if (object.kind == ObjectKind::Connects) {
    const Sheet* sheet = object.part == ofPage ? nullptr : store.sheet(SheetId{object.id});
    const Page* page = store.page(sheet ? sheet->page : PageId{object.id});
    if (!page) return refuse("the shape is on no page");
    std::vector<std::uint64_t> parts;
    for (const Connect& connect : page->connects) {
      const int shape = object.part == ofShape ? connect.fromShape : connect.toShape;
      if (!sheet || shape == sheet->shapeId) parts.push_back(partOf(connect));
    }
    if (member == Member::Connects_Count) return Variant(static_cast<std::int64_t>(parts.size()));
    const int index = integerAt(arguments, 0).or_(0);
    if (index < 1 || index > static_cast<int>(parts.size())) return refuse("the index lies outside 1 to Count");
    return Variant(refTo(ObjectKind::Connect, page->id.value, parts[static_cast<std::size_t>(index) - 1]));
  }
  const Page& page = *store.page(PageId{object.id});
  for (const Connect& connect : page.connects) {
    if (partOf(connect) != object.part) continue;
    const bool isFrom = member == Member::Connect_FromSheet || member == Member::Connect_FromCell;
    const auto shape = page.byShapeId.find(isFrom ? connect.fromShape : connect.toShape);
    if (shape == page.byShapeId.end()) return refuse("the shape is deleted");
    switch (member) {
      case Member::Connect_FromSheet:
      case Member::Connect_ToSheet:
        return Variant(refTo(ObjectKind::Shape, shape->second.value));
      case Member::Connect_FromCell:
      case Member::Connect_ToCell:
        return cellNamed(shape->second, isFrom ? connect.fromCell : connect.toCell, member);
      case Member::Connect_FromPart:
        return Variant(std::int64_t{connect.fromPart});
      default:
        return Variant(std::int64_t{connect.toPart});
    }
  }
  return refuse("the end is no longer glued");
}

}  // namespace quorvel::host
