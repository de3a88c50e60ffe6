// The roles of a copied Task.
#include <string>

#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "schema/cells.h"
#include "shapes/copied_shapes.h"
#include "sheets/document_cells.h"
#include "vocab/parse.h"
#include "vocab/role_names.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;

std::string lastEntry(const std::string& list) { return list.substr(list.rfind(';') + 1); }

bool isListed(const std::string& list, const std::string& role) { return containsIgnoringCase(list, ";" + role + ";"); }

bool wantsRole(dsrVisioConnect& connect, const Page& page, const schema::NamedRow& row, const std::string& role) {
  const std::string text = row == taskCells::responsibleRole
                               ? "Would you like to add role \"" + role + "\" to the roles list? "
                               : "Would you like to add this role \"" + role + "\" to the roles list?";
  showPage(connect, page);
  return connect.platform.showMessage({text, "Quorvel", MessageButtons::YesNoCancel, MessageIcon::Question}) ==
         MessageAnswer::Yes;
}

}  // namespace

void mergeRoles(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  task.Cells("EventDrop").FormulaForce(quoted(""));
  const Document document = page.Document();
  const Cell listCell = document.DocumentSheet().Cells(schema::documentCells::roleNames);
  std::string last;
  for (std::size_t i = 0; i < taskCells::roles.size(); ++i) {
    const schema::NamedRow& row = taskCells::roles[i];
    const Maybe<std::string> list = listCell.ResultStr(visio::unitsNone);
    const Maybe<std::string> role = task.Cells(row).ResultStr(visio::unitsNone);
    if (!list || !role) continue;
    // The rows after these compare with what was last when the second was compared, even when the list has grown.
    constexpr std::size_t readLast = 2;
    if (i < readLast) last = lastEntry(*list);
    if (role->empty() || equalIgnoringCase(*role, last) || isListed(*list, *role)) continue;
    if (wantsRole(connect, page, row, *role)) {
      listCell.FormulaForce(quotedAsIs(insertRoleName(parse(*list, ";"), *role)));
      updateRoleFormats(document);
    } else {
      task.Cells(row).FormulaForce(quoted(""));
    }
  }
  const Maybe<std::string> formula = listCell.Formula();
  if (!formula) return;
  for (const schema::NamedRow& row : taskCells::roles) task.Cells(row.column("Format")).FormulaForce(*formula);
}

}  // namespace quorvel::addin
