#include "vocab/role_names.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "shapes/page_walk.h"
#include "shapes/shape_classes.h"

namespace quorvel::addin {
namespace {

std::string withDoubledMarks(std::string_view text) { return replaceAll(text, "\"", "\"\""); }

bool confirmsDeletion(dsrVisioConnect& connect, const std::string& role) {
  const MessageBox question{"Role \"" + role + "\" is in use. Are you sure you want to continue deletion?", "Quorvel",
                            MessageButtons::YesNoCancel, MessageIcon::None};
  return connect.platform.showMessage(question) == MessageAnswer::Yes;
}

}  // namespace

void UpdateOldRoleNames(dsrVisioConnect& connect, const Document& document, const std::string& oldName,
                        const std::string& newName) {
  forEachShapeBeforeBackgrounds(document, [&](const Shape& shape) {
    if (!IsTask(shape)) return;
    for (const std::string_view name : schema::taskCells::roles) {
      const Cell role = shape.Cells(name);
      if (!(role.ResultStr(visio::unitsNone) == oldName)) continue;
      const Cell outer = std::exchange(connect.renamedRole, newName.empty() ? Cell() : role);
      role.FormulaForce(quotedAsIs(newName));
      connect.renamedRole = outer;
    }
  });
}

void updateRoleFormats(const Document& document) {
  const Maybe<std::string> roles =
      document.DocumentSheet().Cells(schema::documentCells::roleNames).ResultStr(visio::unitsNone);
  // A list that can't be read must not empty those of the Tasks.
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

std::vector<std::string> deletableRoles(dsrVisioConnect& connect, const Document& document,
                                        std::vector<std::string> names) {
  std::vector<std::string> deletable = names;
  forEachShapeBeforeBackgrounds(document, [&](const Shape& shape) {
    if (!IsTask(shape)) return;
    std::array<Maybe<std::string>, schema::taskCells::roles.size()> used;
    std::ranges::transform(schema::taskCells::roles, used.begin(),
                           [&](std::string_view name) { return shape.Cells(name).ResultStr(visio::unitsNone); });
    for (std::size_t i = 0; i < names.size(); ++i) {
      const bool isUsed = !names[i].empty() &&
                          std::ranges::any_of(used, [&](const Maybe<std::string>& role) { return role == names[i]; });
      if (!isUsed) continue;
      if (!confirmsDeletion(connect, names[i])) deletable[i].clear();
      names[i].clear();
    }
  });
  return deletable;
}

}  // namespace quorvel::addin
