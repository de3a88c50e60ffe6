// Writes sheets and shapes of a single-file drawing: only what a sheet holds itself, with what is carried from its
// file.
#pragma once

#include <map>
#include <span>
#include <string>
#include <unordered_map>

#include "formats/common/carried.h"
#include "formats/common/shape_writer.h"
#include "formats/common/sheet_writer.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"
#include "formats/vdx/font_numbers.h"
#include "formats/vdx/vocabulary.h"
#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

class SheetWriter : public ShapeDialect {
 public:
  SheetWriter(const host::Store& store, FontNumbers& fonts) : store_(store), fonts_(fonts) {}

  void names(XmlWriter& writer, const host::Sheet& sheet) override;
  void attributes(XmlWriter& writer, const host::Sheet& sheet) override;
  void contents(XmlWriter& writer, const host::Sheet& sheet) override;
  void picture(XmlWriter& writer, const host::ForeignData& picture) override;
  void tail(XmlWriter&, const host::Sheet&) override {}
  /// Some programs ignore a shape whose element closes itself.
  void end(XmlWriter& writer) override { writer.endWhole(); }

  bool firstRelease = false;  ///< the drawing is of the first release, which had fewer cells

 private:
  using RowIds = std::unordered_map<std::uint32_t, int>;
  /// Numbers of the section's named rows: an instance's row has the number of the master's.
  RowIds rowIds(const host::Sheet& sheet, host::SectionNumber section);
  const RowIds& inheritedRowIds(host::SheetId sheet, host::SectionNumber section);

  void objectRow(XmlWriter& writer, const host::Row& row);
  void section(XmlWriter& writer, const host::Sheet& sheet, const host::Section& section);
  void geometry(XmlWriter& writer, const host::Sheet& sheet, const host::Section& section);
  /// Geometry that the sheet only inherits, where its coordinates must be written here.
  void inheritedGeometry(XmlWriter& writer, const host::Sheet& sheet);
  /// Here a row without a name goes by "Row_" and its number, which another row of a package may have as its name. The
  /// number that is written instead of the row's own; 0 when its name is its alone.
  int otherNumber(const host::Sheet& sheet, host::SectionNumber section, host::RowKey key) const;
  void row(XmlWriter& writer, const host::Sheet& sheet, const host::Row& row, host::SectionNumber section,
           Vocabulary vocabulary, const RowIds& ids);
  void cells(XmlWriter& writer, const host::Row& row, host::SectionNumber section, Vocabulary vocabulary);
  void tabs(XmlWriter& writer, const host::Row& row);
  void deletedRows(XmlWriter& writer, const host::Sheet& sheet, host::SectionNumber section);
  static AttributeList packageAttributes(const host::Sheet& sheet);
  /// What this format has no words for, in those of packages.
  std::string packageContents(const host::Sheet& sheet) const;

  const host::Store& store_;
  FontNumbers& fonts_;
  std::map<std::pair<host::SheetId, host::SectionNumber>, RowIds> inherited_;
};

/// Attributes that only packages have, without those that this format writes itself.
AttributeList packageOnly(const AttributeList& attributes, std::span<const std::string_view> known);
/// Whether names were given by a person, as packages say it, while they are unchanged.
void addCustomNames(AttributeList& attributes, const CarriedName& names, const std::string& name,
                    const std::string& universalName);
/// Takes them, and the other attributes, from an element that carries what only packages have.
void takeCustomNames(pugi::xml_node node, CarriedName& names, AttributeList& attributes);

/// Both names, as they were read while they are unchanged.
void writeBothNames(XmlWriter& writer, const CarriedName* carry, const std::string& name,
                    const std::string& universalName);

/// Raw XML of a package's part that may be copied into another file: complete, with every prefix declared in it.
/// Cells that only say "inherited" are left out.
std::string selfContained(const std::string& xml);

}  // namespace quorvel::formats::vdx
