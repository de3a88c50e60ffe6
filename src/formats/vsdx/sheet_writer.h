// Writes sheets and shapes: only what a sheet holds itself, with what its file brought along.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "formats/package/relationships.h"
#include "formats/package/xml_writing.h"
#include "formats/vsdx/carried.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// Pictures of all shapes, one part for each: equal pictures share a part, and a part keeps its name while it can.
class PictureParts {
 public:
  /// `taken` are the keys of the part names that are in use.
  explicit PictureParts(std::unordered_set<std::string>& taken) : taken_(taken) {}

  struct Part {
    std::string name, contentType;
    const host::ForeignData* picture = nullptr;
  };
  const Part& partOf(const host::ForeignData& picture);
  /// In the order of first use.
  std::vector<const Part*> all() const;

 private:
  std::unordered_set<std::string>& taken_;
  std::map<std::string, Part> parts_;  ///< by contents and old name
  std::vector<const Part*> order_;
  std::unordered_map<const host::ForeignData*, const Part*> known_;
  int next_ = 1;
};

/// The page or master's part that is being written.
struct PartContext {
  const host::Store& store;
  std::string part;
  Relationships& relationships;
  PictureParts& pictures;
  std::unordered_set<host::MasterId> usedMasters = {};
  std::unordered_set<host::SheetId> leftOut = {};   ///< members that are not written
  const CarriedPage* carry = nullptr;               ///< what the page or master carries; may be null
  std::map<std::string, std::size_t> usedIds = {};  ///< relationship ids that were written, with how often
};

/// IsCustom… attributes and both names, as they were read while they are unchanged.
void writeNames(XmlWriter& writer, const CarriedName* carry, const std::string& name, const std::string& universalName);
void writeAttributes(XmlWriter& writer, const AttributeList& attributes);

void writeStyleAttributes(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet);
/// LineStyle, FillStyle, TextStyle, UniqueID and carried attributes.
void writeSheetAttributes(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet);
/// Cells, sections and carried elements.
void writeSheetContents(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet);

/// A section of `sheet`, whole or in part.
void writeSection(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, const host::Section& section);
/// The kind of a Geometry row of the sheet, or else of its master's row. 0 when neither has one.
std::uint8_t rowTypeOf(const host::Store& store, const host::Sheet& sheet, host::SectionNumber section,
                       const host::Row& row);
/// One Cell element. `row` is what its row carries; may be null.
void writeCellElement(XmlWriter& writer, const host::CellKey& key, const host::Cell& cell, const CarriedRow* row);

/// The attributes that tell how large an enhanced metafile is, where the file it came from did not.
void writeMetafileSize(XmlWriter& writer, const host::ForeignData& picture, const CarriedForeign* carry);

void writeShape(XmlWriter& writer, PartContext& context, host::SheetId shape);

/// What a format says in its own way about a shape; nesting, text and links to masters are said the same way in both.
class ShapeDialect {
 public:
  virtual ~ShapeDialect() = default;
  virtual void names(XmlWriter& writer, const host::Sheet& shape) = 0;
  /// Attributes other than ID, names, type and masters.
  virtual void attributes(XmlWriter& writer, const host::Sheet& shape) = 0;
  virtual void contents(XmlWriter& writer, const host::Sheet& shape) = 0;
  virtual void picture(XmlWriter& writer, const host::ForeignData& picture) = 0;
  /// Between text, data and picture, and the members.
  virtual void tail(XmlWriter& writer, const host::Sheet& shape) = 0;
  virtual void uses(host::MasterId) {}
  /// Ends the shape's element.
  virtual void end(XmlWriter& writer) { writer.end(); }

  const std::unordered_set<host::SheetId>* leftOut = nullptr;  ///< members that are not written; null: none
};
void writeShape(XmlWriter& writer, const host::Store& store, host::SheetId shape, ShapeDialect& dialect);

}  // namespace quorvel::formats
