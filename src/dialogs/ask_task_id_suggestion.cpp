#include "dialogs/ask_task_id_suggestion.h"

#include "base/basic_text.h"
#include "connect/host_queries.h"
#include "dialogs/frm_copied_task_id_suggestion.h"
#include "dialogs/frm_task_id_suggestion.h"
#include "schema/cells.h"
#include "vocab/task_id.h"

namespace quorvel::addin {

bool askTaskIdSuggestion(dsrVisioConnect& connect, const Page& page) {
  showPage(connect, page);
  // A script may drop another Task while the dialog is open; that one gets a dialog of its own.
  if (!connect.taskIdSuggestion || connect.taskIdSuggestion->isOpen()) {
    connect.taskIdSuggestion = std::make_shared<frmTaskIdSuggestion>(connect);
  }
  const auto dialog = connect.taskIdSuggestion;
  dialog->suggest(getTaskLetterPartFromPageName(page));
  connect.platform.showModal(*dialog);
  if (dialog->refused()) return false;

  const Shape sheet = page.PageSheet();
  sheet.Cells(schema::pageCells::nextTaskId).SetResult(visio::unitsNone, dialog->number().or_(0));
  sheet.Cells(schema::pageCells::taskIdLetters).FormulaForce(quoted(dialog->letters()));
  return true;
}

bool askCopiedTaskIdSuggestion(dsrVisioConnect& connect, const Page& page) {
  showPage(connect, page);
  if (!connect.copiedTaskIdSuggestion || connect.copiedTaskIdSuggestion->isOpen()) {
    connect.copiedTaskIdSuggestion = std::make_shared<frmCopiedTaskIdSuggestion>(connect);
  }
  const auto dialog = connect.copiedTaskIdSuggestion;
  dialog->askFor(page);
  connect.platform.showModal(*dialog);
  return !dialog->refused();
}

}  // namespace quorvel::addin
