// Writes shapes with their members, text and links to masters, in the dialect of a format.
#pragma once

#include <unordered_set>

#include "formats/package/xml_writing.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// What a format says in its own way about a shape; nesting, text and links to masters are said the same way in both.
class ShapeDialect {
 public:
  virtual ~ShapeDialect() = default;
  virtual void names(XmlWriter& writer, const host::Sheet& shape) = 0;
  /// Attributes other than ID, names, type and masters.
  virtual void attributes(XmlWriter& writer, const host::Sheet& shape) = 0;
  virtual void contents(XmlWriter& writer, const host::Sheet& shape) = 0;
  virtual void picture(XmlWriter& writer, const host::ForeignData& picture) = 0;
  /// Between text, data and image, and the members.
  virtual void tail(XmlWriter& writer, const host::Sheet& shape) = 0;
  virtual void uses(host::MasterId) {}
  /// Ends the shape's element.
  virtual void end(XmlWriter& writer) { writer.end(); }

  const std::unordered_set<host::SheetId>* leftOut = nullptr;  ///< members that are not written; null: none
};
void writeShape(XmlWriter& writer, const host::Store& store, host::SheetId shape, ShapeDialect& dialect);

}  // namespace quorvel::formats
