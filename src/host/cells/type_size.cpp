#include "host/cells/type_size.h"

#include <algorithm>
#include <vector>

#include "host/cells/cell_table.h"

namespace quorvel::host {
namespace {

constexpr std::string_view objectNames[] = {
    "LineWeight",     "LeftMargin",       "RightMargin",       "TopMargin",        "BottomMargin",     "ShapeShdwBlur",
    "ReflectionDist", "ReflectionBlur",   "GlowSize",          "SoftEdgesSize",    "BevelTopWidth",    "BevelTopHeight",
    "BevelDepthSize", "BevelBottomWidth", "BevelBottomHeight", "BevelContourSize", "SketchLineWeight",
};
constexpr std::string_view characterNames[] = {"Size", "ComplexScriptSize", "Letterspace"};
constexpr std::string_view paragraphNames[] = {"SpLine", "SpBefore", "SpAfter", "BulletFontSize"};

struct Names {
  std::vector<CellKey> object;
  std::vector<Column> character, paragraph;

  Names() {
    for (const std::string_view name : objectNames) object.push_back(objectCell(name));
    const auto add = [](std::vector<Column>& columns, SectionNumber section, std::string_view name) {
      if (const Maybe<Column> column = columnOf(section, name)) columns.push_back(*column);
    };
    for (const std::string_view name : characterNames) add(character, SectionNumber::Character, name);
    for (const std::string_view name : paragraphNames) add(paragraph, SectionNumber::Paragraph, name);
  }
};

}  // namespace

bool takesPoints(const CellKey& key) {
  static const Names names;
  const auto holds = [](const auto& list, const auto& wanted) {
    return std::find(list.begin(), list.end(), wanted) != list.end();
  };
  if (key.section == SectionNumber::Object) return holds(names.object, key);
  if (key.section == SectionNumber::Character) return holds(names.character, key.column);
  return key.section == SectionNumber::Paragraph && holds(names.paragraph, key.column);
}

}  // namespace quorvel::host
