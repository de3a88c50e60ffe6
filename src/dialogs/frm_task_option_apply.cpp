// Apply and Cancel of the options: the document's cells are rewritten and every shape is updated.
#include "base/basic_text.h"
#include "connect/undo_step.h"
#include "dialogs/confirm_cancel.h"
#include "dialogs/frm_task_option.h"
#include "display/task_details.h"
#include "links/task_link_description.h"
#include "schema/details.h"
#include "sheets/document_cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"
#include "vocab/parse.h"

namespace quorvel::addin {

namespace documentCells = schema::documentCells;

/// Units that were applied are kept when a frequency is refused after that.
void frmTaskOption::apply(Ending ending) {
  cancelled_ = false;
  const UndoStep step(frmParent.gvsoApp, caption());
  if (!applyTimeUnits(ending) || !applyFrequencies(ending)) return;
  if (ending == Ending::StayOpen) {
    changed_ = false;
  } else {
    hide();
  }
}

bool frmTaskOption::applyTimeUnits(Ending ending) {
  std::string abbreviations;
  for (std::size_t i = 0; i < Text1.size(); ++i) {
    if (Text1[i]->text().empty()) {
      const bool staysOpen = ending == Ending::StayOpen;
      say((staysOpen ? "Enter the time unit abbreviation for the " : "Enter the time unit abbreviation for ") +
          Label4[i]->caption());
      return false;
    }
    abbreviations += ";" + Text1[i]->text();
  }
  const Shape sheet = document_.DocumentSheet();
  for (std::size_t i = 0; i < Option1.size(); ++i) {
    if (Option1[i]->isOn()) sheet.Cells(documentCells::defaultTimeUnit).FormulaForce(quoted(Label4[i]->caption()));
  }
  sheet.Cells(documentCells::timeUnitAbbreviations).FormulaForce(quoted(abbreviations));
  forEachShape(document_, [&](const Shape& shape) {
    if (IsTask(shape)) RedrawTaskUpperExtraFields(shape, schema::tags::completionTime);
  });
  forEachShape(document_, [&](const Shape& shape) {
    if (IsTaskLink(shape)) GetAddedTaskLinkDescription2(shape);
  });
  return true;
}

Maybe<std::string> frmTaskOption::abbreviationText() {
  std::string text = ";";
  for (std::size_t i = 0; i < Text2.size(); ++i) {
    const bool isSystem = i < Label3.size();
    const std::string description = isSystem ? Label3[i]->caption() : Text3[i - Label3.size()]->text();
    const std::string& abbreviation = Text2[i]->text();
    // A user's row without description is no row, whether or not it has an abbreviation.
    if (!isSystem && description.empty()) continue;
    if (abbreviation.empty()) {
      say("Enter the frequency abbreviation for " + description);
      return {};
    }
    text += abbreviation + ";";
  }
  return text;
}

std::string frmTaskOption::descriptionText(Ending ending) const {
  const std::vector<std::string> stored = parse(documentText(document_, documentCells::frequencies), ";");
  std::string text;
  for (long i = 0; i < systemFrequencies; ++i)
    text += ";" + slot(stored, i).or_(Label3[static_cast<std::size_t>(i)]->caption());
  for (std::size_t i = 0; i < descriptions_.size(); ++i) {
    // Closing checks the row's own abbreviation, applying the system's one next to it, which is never empty here.
    const Control& abbreviation = *Text2[ending == Ending::Close ? i + Label3.size() : i];
    if (!abbreviation.text().empty() && !descriptions_[i].empty()) text += ";" + descriptions_[i];
  }
  return text;
}

bool frmTaskOption::applyFrequencies(Ending ending) {
  const Maybe<std::string> abbreviations = abbreviationText();
  if (!abbreviations) return false;
  const std::string descriptions = descriptionText(ending);
  const Shape sheet = document_.DocumentSheet();
  sheet.Cells(documentCells::frequencies).FormulaForce(quoted(descriptions));
  sheet.Cells(documentCells::frequencyAbbreviations).FormulaForce(quoted(*abbreviations));
  update_freq(document_, descriptions);

  std::vector<Frequency> frequencies;
  for (std::size_t k = 0; k < Label3.size(); ++k) {
    if (!Label3[k]->caption().empty()) frequencies.push_back({Label3[k]->caption(), Text2[k]->text()});
  }
  for (std::size_t k = 0; k < Text3.size(); ++k) {
    if (!Text3[k]->text().empty()) frequencies.push_back({Text3[k]->text(), Text2[k + Label3.size()]->text()});
  }
  showFrequencies(document_, frequencies);
  return true;
}

void frmTaskOption::cancel() {
  if (changed_ && !confirmsCancel(frmParent.platform)) return;
  cancelled_ = true;
  close();
}

}  // namespace quorvel::addin
