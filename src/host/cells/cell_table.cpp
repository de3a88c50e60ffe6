#include "host/cells/cell_table.h"

#include <array>
#include <deque>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "host/cells/cell_rows.h"

namespace quorvel::host {
namespace {

struct SectionName {
  SectionNumber section;
  std::string_view fileName;
};

/// The first name of a section is the one that is written.
constexpr SectionName sectionNames[] = {
    {SectionNumber::Object, "Object"},
    {SectionNumber::Character, "Character"},
    {SectionNumber::Character, "Char"},
    {SectionNumber::Paragraph, "Paragraph"},
    {SectionNumber::Paragraph, "Para"},
    {SectionNumber::Tab, "Tabs"},
    {SectionNumber::Scratch, "Scratch"},
    {SectionNumber::Connection, "Connection"},
    {SectionNumber::Connection, "Connections"},
    {SectionNumber::TextField, "Field"},
    {SectionNumber::TextField, "Fields"},
    {SectionNumber::Control, "Control"},
    {SectionNumber::Control, "Controls"},
    {SectionNumber::Geometry, "Geometry"},
    {SectionNumber::Geometry, "Geom"},
    {SectionNumber::Action, "Actions"},
    {SectionNumber::Action, "Act"},
    {SectionNumber::Layer, "Layer"},
    {SectionNumber::Layer, "Layers"},
    {SectionNumber::User, "User"},
    {SectionNumber::Property, "Property"},
    {SectionNumber::Property, "Prop"},
    {SectionNumber::Hyperlink, "Hyperlink"},
    {SectionNumber::Reviewer, "Reviewer"},
    {SectionNumber::Annotation, "Annotation"},
    {SectionNumber::ActionTag, "ActionTag"},
    {SectionNumber::ActionTag, "SmartTags"},
    {SectionNumber::ActionTag, "SmartTagDef"},
    {SectionNumber::FillGradient, "FillGradient"},
    {SectionNumber::LineGradient, "LineGradient"},
};

struct Alias {
  SectionNumber section;
  std::string_view name;
  std::string_view fileName;
};

/// Other names that formulas and older files use for the same place.
constexpr Alias aliases[] = {
    {SectionNumber::Connection, "A", "DirX"},
    {SectionNumber::Connection, "B", "DirY"},
    {SectionNumber::Connection, "C", "Type"},
    {SectionNumber::Property, "Ask", "Verify"},
    {SectionNumber::Control, "Tip", "Prompt"},
    {SectionNumber::Layer, "Locked", "Lock"},
    {SectionNumber::Control, "Glue", "CanGlue"},
    {SectionNumber::Paragraph, "HAlign", "HorzAlign"},
    {SectionNumber::Paragraph, "BulletString", "BulletStr"},
    {SectionNumber::Paragraph, "BulletSize", "BulletFontSize"},
    {SectionNumber::Character, "Spacing", "Letterspace"},
    {SectionNumber::Character, "Scale", "FontScale"},
    {SectionNumber::Character, "Strikethrough", "Strikethru"},
    {SectionNumber::FillGradient, "Color", "GradientStopColor"},
    {SectionNumber::FillGradient, "ColorTrans", "GradientStopColorTrans"},
    {SectionNumber::FillGradient, "Position", "GradientStopPosition"},
    {SectionNumber::LineGradient, "Color", "GradientStopColor"},
    {SectionNumber::LineGradient, "ColorTrans", "GradientStopColorTrans"},
    {SectionNumber::LineGradient, "Position", "GradientStopPosition"},
};

/// Folded name in a buffer: finding a cell allocates nothing. Cell names are ASCII; others find nothing.
class FoldedName {
 public:
  explicit FoldedName(std::string_view name) {
    if (name.size() > letters_.size()) return;
    for (const char c : name) letters_[size_++] = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  }
  std::string_view view() const { return {letters_.data(), size_}; }

 private:
  std::array<char, 40> letters_;
  std::size_t size_ = 0;
};

/// Sections in a row of small numbers: all Geometry sections are one.
constexpr std::size_t sectionCount = 32;
std::size_t sectionIndex(SectionNumber section) {
  if (isGeometry(section)) return static_cast<std::size_t>(SectionNumber::Geometry);
  const auto number = static_cast<std::size_t>(section);
  return number >= 240 ? number - 240 + 11 : number;
}

/// Row number of an unknown object cell: one row for all of them, behind the published ones.
constexpr std::uint32_t unknownObjectRow = 0x7000;

constexpr std::size_t objectRowLimit = 40, objectColumnLimit = 40, rowColumnLimit = 192;

class CellTable {
 public:
  CellTable() {
    for (const CellRow& row : objectCellRows()) addRow(row);
    for (const CellRow& row : sectionCellRows()) addRow(row);
    addTabStops();
    for (const CellDefinition& definition : definitions_) {
      *slotOf(definition.section, definition.row, definition.column) = &definition;
      const std::string& name = keepName(foldCase(definition.name));
      if (definition.section == SectionNumber::Object) {
        objectNames_.emplace(name, &definition);
      } else {
        columnNames_[sectionIndex(definition.section)].emplace(name, definition.column);
      }
    }
    for (const Alias& alias : aliases) {
      auto& names = columnNames_[sectionIndex(alias.section)];
      names.emplace(keepName(foldCase(alias.name)), names.at(foldCase(alias.fileName)));
    }
    for (const SectionName& name : sectionNames) sections_.emplace(keepName(foldCase(name.fileName)), name.section);
  }

  std::span<const CellDefinition> definitions() const { return definitions_; }

  const CellDefinition* find(const CellKey& key) const {
    if (key.section == SectionNumber::Object) {
      const std::uint32_t row = key.row.index();
      if (row >= objectRowLimit || key.column >= objectColumnLimit) return nullptr;
      return objectSlots_[row * objectColumnLimit + key.column];
    }
    if (key.column >= rowColumnLimit) return nullptr;
    const std::size_t section =
        isGeometry(key.section) && key.row.index() == 0 ? componentSection : sectionIndex(key.section);
    return section < sectionCount ? rowSlots_[section * rowColumnLimit + key.column] : nullptr;
  }

  const CellDefinition* findObject(std::string_view name) const {
    const auto found = objectNames_.find(FoldedName(name).view());
    return found == objectNames_.end() ? nullptr : found->second;
  }

  Maybe<Column> findColumn(SectionNumber section, std::string_view name) const {
    const std::size_t index = sectionIndex(section);
    if (index >= sectionCount) return {};
    const auto found = columnNames_[index].find(FoldedName(name).view());
    if (found == columnNames_[index].end()) return {};
    return found->second;
  }

  SectionNumber findSection(std::string_view name) const {
    const auto found = sections_.find(FoldedName(name).view());
    return found == sections_.end() ? SectionNumber::None : found->second;
  }

 private:
  static constexpr std::size_t componentSection = sectionCount - 1;

  void addRow(const CellRow& row) {
    for (const RowCell& cell : row.cells) {
      definitions_.push_back({row.section, row.row, cell.column, cell.name, cell.units, row.style, cell.defaultNumber});
    }
  }

  void addTabStops() {
    for (int stop = 0; stop < tabStopLimit; ++stop) {
      const auto add = [&](std::string_view name, int place, CellUnits units) {
        definitions_.push_back({SectionNumber::Tab, 0, static_cast<Column>(stop * columnsPerTabStop + place),
                                keepName(std::string(name) + std::to_string(stop)), units, StyleSource::Text, 0});
      };
      add("Position", 1, CellUnits::Length);
      add("Alignment", 2, CellUnits::Number);
      add("Leader", 3, CellUnits::Number);
    }
  }

  const CellDefinition** slotOf(SectionNumber section, std::uint32_t row, Column column) {
    if (section == SectionNumber::Object) return &objectSlots_[row * objectColumnLimit + column];
    const bool component = section == SectionNumber::Geometry && row == 0;
    return &rowSlots_[(component ? componentSection : sectionIndex(section)) * rowColumnLimit + column];
  }

  const std::string& keepName(std::string name) { return names_.emplace_back(std::move(name)); }

  std::deque<std::string> names_;
  std::vector<CellDefinition> definitions_;
  std::array<const CellDefinition*, objectRowLimit * objectColumnLimit> objectSlots_{};
  std::array<const CellDefinition*, sectionCount * rowColumnLimit> rowSlots_{};
  std::unordered_map<std::string_view, const CellDefinition*> objectNames_;
  std::array<std::unordered_map<std::string_view, Column>, sectionCount> columnNames_;
  std::unordered_map<std::string_view, SectionNumber> sections_;
};

const CellTable& table() {
  static const CellTable cells;
  return cells;
}

/// Columns of names that only files know. They live as long as the process.
class UnknownColumns {
 public:
  Column columnOf(std::string_view name) {
    const std::string folded = foldCase(name);
    std::unique_lock lock(mutex_);
    const auto found = columns_.find(folded);
    if (found != columns_.end()) return found->second;
    // A file with tens of thousands of invented names is hostile; its last ones may share a place.
    if (names_.size() >= 0xFFFFu - firstUnknownColumn) return 0xFFFF;
    const auto column = static_cast<Column>(firstUnknownColumn + names_.size());
    names_.emplace_back(name);
    columns_.emplace(folded, column);
    return column;
  }

  Maybe<Column> find(std::string_view name) {
    const std::string folded = foldCase(name);
    std::shared_lock lock(mutex_);
    const auto found = columns_.find(folded);
    if (found == columns_.end()) return {};
    return found->second;
  }

  std::string_view nameOf(Column column) {
    std::shared_lock lock(mutex_);
    const std::size_t index = static_cast<std::size_t>(column - firstUnknownColumn);
    return index < names_.size() ? std::string_view(names_[index]) : std::string_view();
  }

 private:
  std::shared_mutex mutex_;
  std::deque<std::string> names_;
  std::unordered_map<std::string, Column> columns_;
};

UnknownColumns& unknownColumns() {
  static UnknownColumns columns;
  return columns;
}

}  // namespace

std::span<const CellDefinition> cellDefinitions() { return table().definitions(); }

const CellDefinition* definitionOf(const CellKey& key) { return table().find(key); }

SectionNumber sectionOfFileName(std::string_view name) { return table().findSection(name); }

std::string_view fileNameOf(SectionNumber section) {
  if (isGeometry(section)) section = SectionNumber::Geometry;
  for (const SectionName& name : sectionNames) {
    if (name.section == section) return name.fileName;
  }
  return {};
}

CellKey objectCell(std::string_view fileName) {
  if (const CellDefinition* known = table().findObject(fileName))
    return {SectionNumber::Object, RowKey::index(known->row), known->column};
  if (const Maybe<Column> column = unknownColumns().find(fileName))
    return {SectionNumber::Object, RowKey::index(unknownObjectRow), *column};
  return {};
}

CellKey objectCellOrNew(std::string_view fileName) {
  if (const CellKey known = objectCell(fileName)) return known;
  return {SectionNumber::Object, RowKey::index(unknownObjectRow), unknownColumns().columnOf(fileName)};
}

Maybe<Column> columnOf(SectionNumber section, std::string_view fileName) {
  return table().findColumn(section, fileName);
}

Column columnOrNew(SectionNumber section, std::string_view fileName) {
  const Maybe<Column> known = table().findColumn(section, fileName);
  return known ? *known : unknownColumns().columnOf(fileName);
}

std::string_view columnName(const CellKey& key) {
  if (key.column >= firstUnknownColumn) return unknownColumns().nameOf(key.column);
  const CellDefinition* known = table().find(key);
  return known ? known->name : std::string_view();
}

}  // namespace quorvel::host
