// The dialog that edits the time units and frequencies of a drawing.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "connect/dsr_visio_connect.h"
#include "model/form.h"
#include "vocab/frequencies.h"

namespace quorvel::addin {

/// Its boxes are checked as the user leaves them; nothing is written before Apply. Controls that form rows have
/// their index in the name: "Text1(0)".
class frmTaskOption : public Form {
 public:
  /// The drawing that is edited, even when another one becomes active.
  frmTaskOption(dsrVisioConnect& frmParent, const Document& document);

  /// Fills the boxes from the document, before the dialog is shown.
  void fill();

  /// False once Apply was pressed, whether or not everything could be applied; a Cancel after that makes it true again.
  bool cancelled() const { return cancelled_; }

 protected:
  /// What is filled in counts as unchanged.
  void loading() override;

 private:
  static constexpr int units = 5;
  using Row = std::vector<Control*>;

  void layOutTimes();
  void layOutFrequencies();
  void addRules();
  /// Shows a message and is true when another box of the row holds the same, ignoring case and blanks at the ends.
  bool isDuplicate(const Row& row, int place, const char* message);
  void say(const std::string& text);
  bool confirmsChange(const char* question);
  /// Removes characters that a list cannot hold.
  void textChanged(Control& box);
  void enterBox(Control& box, bool& skip);
  void leaveUnit(int i);
  void leaveAbbreviation(int i);
  void leaveDescription(int i);

  // frm_task_option_apply.cpp
  enum class Ending { StayOpen, Close };
  void apply(Ending ending);
  bool applyTimeUnits(Ending ending);
  bool applyFrequencies(Ending ending);
  /// The abbreviations as the document holds them; nothing, and a message, when one is missing.
  Maybe<std::string> abbreviationText();
  std::string descriptionText(Ending ending) const;
  void cancel();

  dsrVisioConnect& frmParent;
  const Document document_;
  bool cancelled_ = true;
  bool changed_ = false;
  bool skipText2_ = false;  ///< the next box of the row that is entered keeps what it remembers
  bool skipText3_ = false;
  /// The user's descriptions as they will be stored. The old ones are not kept: a Task that uses a
  /// description which is changed in place keeps the old text.
  std::array<std::string, userFrequencies> descriptions_;

  Control& tabOptions;
  Row Label4, Text1, Option1;  ///< of each unit: its name, its abbreviation, and whether it is the default
  Row Label3, Text2, Text3;    ///< the system's descriptions; abbreviations of the system's and the user's; the user's
  Control& btnApply;
  Control& btnApplyAndClose;
  Control& btnCancel;
};

}  // namespace quorvel::addin
