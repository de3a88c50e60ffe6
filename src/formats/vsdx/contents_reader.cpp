#include "formats/vsdx/contents_reader.h"

#include "formats/common/shape_reader.h"
#include "formats/common/sheet_reader.h"
#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_splitting.h"

namespace quorvel::formats {
namespace {

/// Reads the image that the element points to; false when it points to none.
bool readPicture(ReadState& state, const ShapeSource& source, host::Sheet& sheet, pugi::xml_node node) {
  const char* const id = attributeNamed(childNamed(node, "Rel"), "id");
  const Relationship* const relationship = id ? source.relationships.withId(id) : nullptr;
  if (!relationship || relationship->part.empty() || !state.package.has(relationship->part)) return false;

  std::string key = partKey(relationship->part);
  for (const pugi::xml_attribute attribute : node.attributes())
    key.append("\n").append(attribute.name()).append("=").append(attribute.value());
  std::shared_ptr<const host::ForeignData>& shared = state.pictures[key];
  if (!shared) {
    auto picture = std::make_shared<host::ForeignData>();
    auto carry = std::make_shared<CarriedForeign>();
    if (!state.package.read(relationship->part, picture->bytes)) return false;
    readForeignAttributes(node, *picture, *carry);
    for (const pugi::xml_node child : node) {
      if (child.type() == pugi::node_element && localName(child) != "Rel") carry->contents += rawXml(child);
    }
    picture->extension = extensionOf(relationship->part);
    carry->part = relationship->part;
    carry->relationshipType = relationship->type;
    carry->contentType = state.carriedPackage->contentTypes.typeOf(relationship->part);
    picture->extras = std::move(carry);
    shared = std::move(picture);
  }
  state.taken.insert(partKey(relationship->part));
  sheet.foreign = shared;
  return true;
}

void readOtherChild(ReadState& state, host::Sheet& sheet, pugi::xml_node child, bool behindText) {
  const std::string_view element = localName(child);
  if (behindText && element != "Cell" && element != "Section") {
    carriedOf(sheet).tail += rawXml(child);
  } else {
    readSheetChild(state, sheet, child);
  }
}

constexpr ShapeVocabulary vocabulary{readOtherChild, readPicture};

void copyDeclarations(pugi::xml_node from, pugi::xml_node to) {
  for (const pugi::xml_attribute attribute : from.attributes()) {
    if (std::string_view(attribute.name()).starts_with("xmlns")) to.append_copy(attribute);
  }
}

/// Parses and reads the top shapes of a large part a few at a time. `frame` is the part's root without them.
std::string readPieces(ReadState& state, ShapeSource& source, std::string& bytes, const SplitList& list,
                       pugi::xml_node frame) {
  constexpr std::size_t enough = 128 << 10;
  pugi::xml_document piece;
  for (std::size_t at = 0; at < list.children.size();) {
    const std::size_t from = list.children[at].first;
    std::size_t to = from;
    while (at < list.children.size() && to - from < enough) to = list.children[at++].second;
    if (std::string wrong = parseXml(piece, std::span(bytes.data() + from, to - from)); !wrong.empty()) return wrong;
    // What the root declares holds for the shapes too.
    pugi::xml_node root = piece.append_child(frame.name());
    copyDeclarations(frame, root);
    pugi::xml_node shapes = root.append_child("Shapes");
    copyDeclarations(childNamed(frame, "Shapes"), shapes);
    while (piece.first_child() != root) shapes.append_move(piece.first_child());
    readShapes(state, source, {}, shapes, -1);
  }
  return {};
}

}  // namespace

std::string readContents(ReadState& state, host::PageId pageId, CarriedPage& carried, std::string& bytes) {
  ShapeSource source{pageId, carried.relationships, vocabulary, carried.part};
  // The tree of a part takes several times the memory of its text.
  constexpr std::size_t large = 1 << 20;
  SplitList list;
  const bool inPieces = bytes.size() > large && splitList(bytes, "Shapes", list);
  std::string frame;
  if (inPieces) frame = bytes.substr(0, list.begin) + bytes.substr(list.end);
  pugi::xml_document document;
  if (std::string wrong = parseXml(document, inPieces ? frame : bytes); !wrong.empty()) return wrong;
  const pugi::xml_node root = document.document_element();
  for (const pugi::xml_attribute attribute : root.attributes())
    carried.contentsAttributes.emplace_back(attribute.name(), attribute.value());
  if (inPieces) {
    if (std::string wrong = readPieces(state, source, bytes, list, root); !wrong.empty()) return wrong;
  }
  for (const pugi::xml_node child : root) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view name = localName(child);
    if (name == "Shapes") {
      readShapes(state, source, {}, child, -1);
    } else if (name == "Connects") {
      readConnects(state, pageId, carried, child);
    } else {
      carried.contentsTail += rawXml(child);
    }
  }
  carried.deletedShapes = std::move(source.shapesTail);
  return {};
}

}  // namespace quorvel::formats
