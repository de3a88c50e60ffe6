#include "host/cells/cell_name.h"

#include "base/text.h"
#include "host/cells/cell_table.h"

namespace quorvel::host {
namespace {

constexpr std::uint32_t rowNumberLimit = 10'000'000;
constexpr int geometryLimit =
    static_cast<int>(SectionNumber::LastGeometry) - static_cast<int>(SectionNumber::Geometry) + 1;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

/// A number from 1 up, or nothing.
Maybe<std::uint32_t> rowNumber(std::string_view digits) {
  std::uint32_t number = 0;
  if (digits.empty()) return {};
  for (const char c : digits) {
    if (!isDigit(c) || number > rowNumberLimit) return {};
    number = number * 10 + static_cast<std::uint32_t>(c - '0');
  }
  if (number == 0) return {};
  return number;
}

/// Sections whose row name alone means the row's first cell, in results too.
bool hasRowsOwnCell(SectionNumber section) {
  return section == SectionNumber::User || section == SectionNumber::Property || section == SectionNumber::Control ||
         section == SectionNumber::Connection;
}

bool isComponentCell(std::string_view column) {
  return startsWithIgnoringCase(column, "No") || equalIgnoringCase(column, "Path");
}

struct OldActionLetter {
  char letter;
  std::string_view column;
};
/// Old drawings write the cells of action rows with one letter and the row's number.
constexpr OldActionLetter oldActionLetters[] = {
    {'m', "Menu"}, {'p', "Prompt"}, {'a', "Action"}, {'c', "Checked"}, {'d', "Disabled"}};

Maybe<Column> columnOrOldLetter(SectionNumber section, std::string_view name) {
  if (section == SectionNumber::Action && name.size() == 1) {
    for (const OldActionLetter& old : oldActionLetters) {
      if ((name[0] | 0x20) == old.letter) return columnOf(section, old.column);
    }
  }
  return columnOf(section, name);
}

Maybe<CellKey> numberedCell(SectionNumber section, std::string_view column, std::uint32_t number) {
  const Maybe<Column> place = columnOrOldLetter(section, column);
  if (!place) return {};
  if (isGeometry(section)) {
    if (isComponentCell(column)) return {};
    return CellKey{section, RowKey::index(number), *place};
  }
  return CellKey{section, RowKey::index(number - 1), *place};
}

/// "Menu[1]", "X2", "Size", "NoFill".
Maybe<CellKey> indexedCell(SectionNumber section, std::string_view text) {
  if (text.ends_with(']')) {
    const auto open = text.find('[');
    if (open == std::string_view::npos) return {};
    const Maybe<std::uint32_t> number = rowNumber(trimmed(text.substr(open + 1, text.size() - open - 2)));
    if (!number) return {};
    return numberedCell(section, trimmed(text.substr(0, open)), *number);
  }
  if (const Maybe<Column> column = columnOf(section, text)) {
    if (isGeometry(section) && !isComponentCell(text)) return {};
    return CellKey{section, RowKey::index(0), *column};
  }
  std::size_t digits = text.size();
  while (digits > 0 && isDigit(text[digits - 1])) --digits;
  if (digits == 0) return {};
  const Maybe<std::uint32_t> number = rowNumber(text.substr(digits));
  if (!number) return {};
  return numberedCell(section, text.substr(0, digits), *number);
}

Maybe<CellKey> namedCell(SectionNumber section, std::string_view rowName, Column column) {
  if (!isRowName(rowName)) return {};
  return CellKey{section, RowKey::named(intern(rowName)), column};
}

Maybe<CellKey> cellOfNamedSection(SectionNumber section, std::string_view text) {
  const auto dot = text.rfind('.');
  if (dot != std::string_view::npos) {
    if (const Maybe<Column> column = columnOf(section, trimmed(text.substr(dot + 1))))
      return namedCell(section, trimmed(text.substr(0, dot)), *column);
    return namedCell(section, text, 0);
  }
  // Anything may name a User or Prop row; elsewhere a column's name comes first, as in "Actions.Menu".
  const bool freeNames = section == SectionNumber::User || section == SectionNumber::Property;
  if (!freeNames || text.ends_with(']')) {
    if (const Maybe<CellKey> indexed = indexedCell(section, text)) return indexed;
  }
  return namedCell(section, text, 0);
}

Maybe<int> geometryNumber(std::string_view prefix) {
  constexpr std::string_view word = "Geometry";
  if (prefix.size() <= word.size() || !equalIgnoringCase(prefix.substr(0, word.size()), word)) return {};
  const Maybe<std::uint32_t> number = rowNumber(prefix.substr(word.size()));
  if (!number || *number > static_cast<std::uint32_t>(geometryLimit)) return {};
  return static_cast<int>(*number);
}

std::string_view formulaNameOf(SectionNumber section) {
  switch (section) {
    case SectionNumber::Character:
      return "Char";
    case SectionNumber::Paragraph:
      return "Para";
    case SectionNumber::Connection:
      return "Connections";
    case SectionNumber::TextField:
      return "Fields";
    case SectionNumber::Control:
      return "Controls";
    case SectionNumber::Layer:
      return "Layers";
    case SectionNumber::Property:
      return "Prop";
    case SectionNumber::ActionTag:
      return "SmartTags";
    default:
      return fileNameOf(section);
  }
}

}  // namespace

bool hasNamedRows(SectionNumber section) {
  switch (section) {
    case SectionNumber::User:
    case SectionNumber::Property:
    case SectionNumber::Action:
    case SectionNumber::Control:
    case SectionNumber::Connection:
    case SectionNumber::Hyperlink:
    case SectionNumber::ActionTag:
      return true;
    default:
      return false;
  }
}

Maybe<CellKey> parseCellName(std::string_view name) {
  name = trimmed(name);
  const auto dot = name.find('.');
  if (dot == std::string_view::npos) {
    const CellKey cell = objectCell(name);
    if (!cell) return {};
    return cell;
  }
  const std::string_view prefix = trimmed(name.substr(0, dot)), rest = trimmed(name.substr(dot + 1));
  if (rest.empty()) return {};
  if (const Maybe<int> number = geometryNumber(prefix))
    return indexedCell(static_cast<SectionNumber>(static_cast<int>(SectionNumber::Geometry) + *number - 1), rest);
  const SectionNumber section = sectionOfFileName(prefix);
  if (section == SectionNumber::None || section == SectionNumber::Object) return {};
  return hasNamedRows(section) ? cellOfNamedSection(section, rest) : indexedCell(section, rest);
}

std::string cellName(const CellKey& key, std::string_view rowName) {
  const std::string column(columnName(key));
  if (key.section == SectionNumber::Object) return column;
  if (isGeometry(key.section)) {
    const int number = static_cast<int>(key.section) - static_cast<int>(SectionNumber::Geometry) + 1;
    const std::uint32_t vertex = key.row.index();
    return "Geometry" + std::to_string(number) + "." + column + (vertex == 0 ? "" : std::to_string(vertex));
  }
  std::string result = std::string(formulaNameOf(key.section)) + ".";
  if (rowName.empty() && key.row.isNamed()) rowName = spelling(key.row.name());
  if (!rowName.empty()) {
    result += rowName;
    return key.column == 0 && hasRowsOwnCell(key.section) ? result : result + "." + column;
  }
  const std::string number = std::to_string(key.row.index() + 1);
  if (key.section == SectionNumber::User || key.section == SectionNumber::Property) {
    result += "Row_" + number;
    return key.column == 0 ? result : result + "." + column;
  }
  return column.size() == 1 ? result + column + number : result + column + "[" + number + "]";
}

bool isRowName(std::string_view name) {
  if (name.empty() || !isNameStart(name[0])) return false;
  for (const char c : name) {
    if (!isNameStart(c) && !isDigit(c) && c != '.') return false;
  }
  return name.back() != '.';
}

}  // namespace quorvel::host
