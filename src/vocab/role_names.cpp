#include "vocab/role_names.h"

#include <algorithm>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

std::string withDoubledMarks(std::string_view text) { return replaceAll(text, "\"", "\"\""); }

}  // namespace

void updateRoleFormats(const Document& document) {
  const Maybe<std::string> roles =
      document.DocumentSheet().Cells(schema::documentCells::roleNames).ResultStr(visio::unitsNone);
  // When the list can't be read, the lists of the Tasks must not become empty.
  if (!roles) return;
  const std::string list = quotedAsIs(*roles);
  forEachShapeBeforeBackgrounds(document, [&](const Shape& shape) {
    if (!IsTask(shape)) return;
    for (const schema::NamedRow& role : schema::taskCells::roles) shape.Cells(role.column("Format")).FormulaForce(list);
  });
}

std::string roleListText(const std::vector<std::string>& roles) {
  std::string text;
  for (const std::string& role : roles) text += ";" + withDoubledMarks(role);
  return text;
}

std::string insertRoleName(const std::vector<std::string>& names, const std::string& newName) {
  if (names.empty()) return ";" + newName;
  std::vector<std::string> roles(names.begin(), names.end() - 1);
  const auto place =
      std::ranges::find_if(roles, [&](const std::string& role) { return compareIgnoringCase(role, newName) >= 0; });
  roles.insert(place, newName);
  return roleListText(roles);
}

}  // namespace quorvel::addin
