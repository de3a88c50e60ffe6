#include "shapes/roles_in_use.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/basic_text.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

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
