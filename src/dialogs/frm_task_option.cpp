#include "dialogs/frm_task_option.h"

#include <utility>

#include "base/text.h"
#include "sheets/document_cells.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

constexpr const char* unitNames[] = {"Seconds", "Minutes", "Hours", "Days", "Weeks"};
constexpr int timeTab = 0, frequencyTab = 1;
constexpr char listSeparatorKey = ';';
constexpr const char* systemFrame = "fraSystemDefined";
constexpr const char* userFrame = "fraUserDefined";

constexpr const char* aboutAbbreviations =
    "The list above contains the standard time units for Tasks and Task Links. You may change the abbreviation used "
    "for any time unit by entering a different one- or two-character abbreviation.";
constexpr const char* aboutDefault =
    "Use the radio buttons in the column labeled Default to specify the default time units for this Quorvel. Note that "
    "changing the default will not change the time units associated with any shapes already in the Quorvel - the "
    "change will only apply to Task and Task Link shapes added after changing the default.";
constexpr const char* aboutFrequencies =
    "The list above contains the standard frequencies for Tasks. You may change the abbreviation used for any "
    "frequency by editing the two-character abbreviation. In addition, you may add up to thirteen new frequencies by "
    "entering one- or two-character abbreviations and descriptions.";

std::string inRow(const char* name, int place) { return std::string(name) + "(" + std::to_string(place) + ")"; }

Control& at(const std::vector<Control*>& row, int place) { return *row[static_cast<std::size_t>(place)]; }

void fillRow(const std::vector<Control*>& row, const std::vector<std::string>& texts, std::size_t from) {
  for (std::size_t i = 0; i < row.size() && i + from < texts.size(); ++i) {
    if (row[i]->kind() == ControlKind::Label) {
      row[i]->setCaption(texts[i + from]);
    } else {
      row[i]->setText(texts[i + from]);
    }
  }
}

}  // namespace

frmTaskOption::frmTaskOption(dsrVisioConnect& parent, const Document& document)
    : Form("frmTaskOption", "Quorvel Options"),
      frmParent(parent),
      document_(document),
      tabOptions(add(ControlKind::TabStrip, "tabOptions")),
      btnApply(add(ControlKind::Button, "btnApply", "Apply")),
      btnApplyAndClose(add(ControlKind::Button, "btnApplyAndClose", "Apply and Close")),
      btnCancel(add(ControlKind::Button, "btnCancel", "Cancel")) {
  tabOptions.tabs = {"Time", "Frequencies"};
  tabOptions.columnSpan = 3;
  layOutTimes();
  layOutFrequencies();
  int column = 0;
  for (Control* button : {&btnApply, &btnApplyAndClose, &btnCancel}) {
    button->gridRow = 9;
    button->gridColumn = column++;
  }
  btnApplyAndClose.isDefaultButton = true;
  btnCancel.isCancelButton = true;
  addRules();
}

void frmTaskOption::layOutTimes() {
  int row = 1, column = 0;
  for (const auto& [name, caption] :
       {std::pair{"lblTimeUnit", "Time Unit"}, {"lblDisplay", "Display"}, {"lblDefault", "Default"}}) {
    Control& heading = add(ControlKind::Label, name, caption);
    heading.tab = timeTab;
    heading.gridRow = row;
    heading.gridColumn = column++;
  }
  for (int i = 0; i < units; ++i) {
    ++row;
    column = 0;
    Label4.push_back(&add(ControlKind::Label, inRow("Label4", i), unitNames[i]));
    Text1.push_back(&add(ControlKind::TextBox, inRow("Text1", i)));
    Option1.push_back(&add(ControlKind::OptionButton, inRow("Option1", i)));
    for (Control* control : {Label4.back(), Text1.back(), Option1.back()}) {
      control->tab = timeTab;
      control->gridRow = row;
      control->gridColumn = column++;
    }
  }
  for (const auto& [name, caption] :
       {std::pair{"lblAbbreviations", aboutAbbreviations}, {"lblDefaults", aboutDefault}}) {
    Control& explanation = add(ControlKind::Label, name, caption);
    explanation.tab = timeTab;
    explanation.gridRow = ++row;
    explanation.columnSpan = 3;
    explanation.widthInCharacters = 70;
  }
}

void frmTaskOption::layOutFrequencies() {
  int column = 0;
  for (const auto& [name, caption] :
       {std::pair{systemFrame, "System-defined Frequencies"}, {userFrame, "User-defined Frequencies"}}) {
    Control& around = add(ControlKind::Frame, name, caption);
    around.tab = frequencyTab;
    around.gridRow = 1;
    around.gridColumn = column++;
  }
  const auto place = [](Control& control, const char* frame, int row, int inColumn) {
    control.frame = frame;
    control.gridRow = row;
    control.gridColumn = inColumn;
  };
  for (int i = 0; i < systemFrequencies; ++i) {
    Label3.push_back(&add(ControlKind::Label, inRow("Label3", i)));
    Text2.push_back(&add(ControlKind::TextBox, inRow("Text2", i)));
    place(*Label3.back(), systemFrame, i, 0);
    place(*Text2.back(), systemFrame, i, 1);
  }
  for (int i = 0; i < userFrequencies; ++i) {
    Text3.push_back(&add(ControlKind::TextBox, inRow("Text3", i)));
    Text2.push_back(&add(ControlKind::TextBox, inRow("Text2", systemFrequencies + i)));
    Text3.back()->widthInCharacters = 30;
    place(*Text3.back(), userFrame, i, 0);
    place(*Text2.back(), userFrame, i, 1);
  }
  Control& explanation = add(ControlKind::Label, "lblFrequencies", aboutFrequencies);
  explanation.tab = frequencyTab;
  explanation.gridRow = 2;
  explanation.columnSpan = 2;
  explanation.widthInCharacters = 70;
}

void frmTaskOption::addRules() {
  for (const Row* row : {&Text1, &Text2, &Text3}) {
    for (Control* box : *row) {
      box->onChange = [this, box] { textChanged(*box); };
      box->onKeyPress = [this](int key) {
        if (key != listSeparatorKey) return key;
        frmParent.platform.beep();
        return 0;
      };
    }
  }
  for (const Row* row : {&Text1, &Text2}) {
    for (Control* box : *row) box->maxLength = box->widthInCharacters = 2;
  }
  for (Control* option : Option1) option->onClick = [this] { changed_ = true; };

  for (int i = 0; i < units; ++i) at(Text1, i).onLostFocus = [this, i] { leaveUnit(i); };
  for (int i = 0; i < systemFrequencies + userFrequencies; ++i) {
    at(Text2, i).onGotFocus = [this, i] { enterBox(at(Text2, i), skipText2_); };
    at(Text2, i).onLostFocus = [this, i] { leaveAbbreviation(i); };
  }
  for (int i = 0; i < userFrequencies; ++i) {
    at(Text3, i).onGotFocus = [this, i] { enterBox(at(Text3, i), skipText3_); };
    at(Text3, i).onLostFocus = [this, i] { leaveDescription(i); };
  }
  btnApply.onClick = [this] { apply(Ending::StayOpen); };
  btnApplyAndClose.onClick = [this] { apply(Ending::Close); };
  btnCancel.onClick = [this] { cancel(); };
}

void frmTaskOption::fill() {
  const std::string unit = documentText(document_, "User.Time_Unit.Prompt");
  for (int i = 0; i < units; ++i) {
    if (at(Label4, i).caption() == unit) at(Option1, i).setState(CheckState::On);
  }
  fillRow(Text1, parse(documentText(document_, "User.Time_Unit_Disply"), ";"), 0);
  fillRow(Text2, parse(documentText(document_, "User.FreqSuggestions.Prompt"), ";"), 0);
  const std::vector<std::string> descriptions = parse(documentText(document_, "User.FreqSuggestions"), ";");
  fillRow(Label3, descriptions, 0);
  fillRow(Text3, descriptions, systemFrequencies);
}

void frmTaskOption::loading() {
  cancelled_ = true;
  descriptions_.fill({});
  const std::vector<std::string> descriptions = parse(documentText(document_, "User.FreqSuggestions"), ";");
  for (std::size_t i = 0; i < descriptions_.size() && i + systemFrequencies < descriptions.size(); ++i)
    descriptions_[i] = descriptions[i + systemFrequencies];
  changed_ = false;
}

void frmTaskOption::say(const std::string& text) { frmParent.platform.showMessage({text}); }

bool frmTaskOption::confirmsChange(const char* question) {
  return frmParent.platform.showMessage({question, "Quorvel", MessageButtons::YesNoCancel, MessageIcon::None}) ==
         MessageAnswer::Yes;
}

bool frmTaskOption::isDuplicate(const Row& row, int place, const char* message) {
  const std::string_view text = trimmed(at(row, place).text());
  for (const Control* other : row) {
    if (other == &at(row, place) || !equalIgnoringCase(trimmed(other->text()), text)) continue;
    say(message);
    return true;
  }
  return false;
}

void frmTaskOption::textChanged(Control& box) {
  changed_ = true;
  // It is the separator of the lists that the boxes are stored in.
  if (box.text().find(listSeparatorKey) != std::string::npos) box.setText(replaceAll(box.text(), ";", ""));
}

void frmTaskOption::enterBox(Control& box, bool& skip) {
  if (!std::exchange(skip, false)) box.setTag(box.text());
}

void frmTaskOption::leaveUnit(int i) {
  Control& box = at(Text1, i);
  if (box.text().empty() || !isDuplicate(Text1, i, "Duplicate time unit abbreviations are not permitted.")) return;
  box.setText("");
  box.focus();
}

void frmTaskOption::leaveAbbreviation(int i) {
  Control& box = at(Text2, i);
  if (!box.text().empty() && isDuplicate(Text2, i, "Duplicate frequency abbreviations are not permitted.")) {
    box.setText("");
    box.focus();
    return;
  }
  if (box.tag().empty() || box.tag() == box.text() || !isAbbreviationInUse(document_, box.tag())) return;
  if (confirmsChange("This frequency is in use . Are you sure you want to change it in all tasks? ")) return;
  skipText2_ = true;
  box.setText(box.tag());
}

void frmTaskOption::leaveDescription(int i) {
  constexpr const char* duplicate = "Duplicate frequency descriptions are not permitted.";
  Control& box = at(Text3, i);
  // Only a warning: the text is kept, and is stored when the user applies it.
  if (!box.text().empty() && isDuplicate(Text3, i, duplicate)) box.focus();
  for (const Control* system : Label3) {
    if (!equalIgnoringCase(trimmed(system->caption()), trimmed(box.text()))) continue;
    say(duplicate);
    box.focus();
    break;
  }
  if (isDescriptionInUse(document_, box.tag()) &&
      !confirmsChange("This frequency is in use. Are you sure you want to change it in all tasks??")) {
    skipText3_ = true;
    box.setText(box.tag());
  }
  descriptions_[static_cast<std::size_t>(i)] = box.text();
}

}  // namespace quorvel::addin
