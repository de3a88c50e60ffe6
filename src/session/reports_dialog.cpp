#include "session/reports_dialog.h"

#include "model/form.h"
#include "report/definition/available_definitions.h"
#include "report/output/report_file.h"
#include "report/table/make_table.h"

namespace quorvel {
namespace {

constexpr const char* fileFilter =
    "Web page (*.html)|*.html|Workbook (*.xlsx)|*.xlsx|Comma-separated values (*.csv)|*.csv";
constexpr const char* choose = "Choose a report.";

class FrmReports : public Form {
 public:
  FrmReports(const report::AvailableDefinitions& available, const std::string& page)
      : Form("frmReports", "Reports"),
        available_(available),
        lblSource(add(ControlKind::Label, "lblSource")),
        lstReports(add(ControlKind::ListBox, "lstReports")),
        lblDescription(add(ControlKind::Label, "lblDescription", choose)),
        chkPageOnly(add(ControlKind::CheckBox, "chkPageOnly", "Only the page that is shown")),
        btnOK(add(ControlKind::Button, "btnOK", "OK")),
        btnCancel(add(ControlKind::Button, "btnCancel", "Cancel")) {
    lblSource.setCaption(!available.areInstalled         ? "Reports of this drawing"
                         : available.definitions.empty() ? "This drawing has no reports, and none are installed"
                                                         : "This drawing has no reports; the installed ones are:");
    for (const report::AvailableDefinition& each : available.definitions)
      lstReports.addRow(each.problem.empty() ? each.definition.title : "Report " + std::to_string(each.number));
    lstReports.gridRow = 1;
    lblDescription.gridRow = 2;
    chkPageOnly.gridRow = 3;
    btnOK.gridRow = btnCancel.gridRow = 4;
    lblSource.columnSpan = lstReports.columnSpan = lblDescription.columnSpan = chkPageOnly.columnSpan = 3;
    lstReports.widthInCharacters = 60;
    lstReports.heightInLines = 10;
    lblDescription.heightInLines = 3;
    btnOK.gridColumn = 1;
    btnCancel.gridColumn = 2;
    btnOK.isDefaultButton = btnCancel.isCancelButton = true;
    chkPageOnly.setEnabled(!page.empty());
    lstReports.onSelect = [this] { describe(); };
    lstReports.onDoubleClick = [this] { accept(); };
    btnOK.onClick = [this] { accept(); };
    btnCancel.onClick = [this] { close(); };
    if (!lstReports.rows().empty()) lstReports.selectRow(0);
  }

  /// Null when the user cancelled.
  const report::AvailableDefinition* chosen() const { return accepted_ ? selected() : nullptr; }
  bool isPageOnly() const { return chkPageOnly.isOn(); }

 private:
  const report::AvailableDefinition* selected() const {
    const int row = lstReports.selectedRow();
    return row < 0 ? nullptr : &available_.definitions[static_cast<std::size_t>(row)];
  }

  void describe() {
    const report::AvailableDefinition* definition = selected();
    lblDescription.setCaption(!definition                   ? choose
                              : definition->problem.empty() ? definition->definition.description
                                                            : definition->problem);
  }

  /// A definition with a problem can't be chosen; what the problem is, is shown.
  void accept() {
    const report::AvailableDefinition* definition = selected();
    if (!definition || !definition->problem.empty()) return;
    accepted_ = true;
    hide();
  }

  const report::AvailableDefinitions& available_;
  bool accepted_ = false;
  Control& lblSource;
  Control& lstReports;
  Control& lblDescription;
  Control& chkPageOnly;
  Control& btnOK;
  Control& btnCancel;
};

}  // namespace

void PlatformReportsDialog::showReports(host::DocumentId document) {
  const host::WindowState* const window = engine_.windowOf(document);
  const host::Page* const shown = window ? engine_.store().page(window->page) : nullptr;
  const std::string page = shown ? shown->name : std::string();
  const report::AvailableDefinitions available =
      report::definitionsFor(engine_.store(), document, platform_.addinFolder());
  FrmReports form(available, page);
  platform_.showModal(form);
  const report::AvailableDefinition* const chosen = form.chosen();
  if (!chosen || !engine_.exists(document)) return;
  const std::string file = chosenFile(engine_.store().document(document)->path);
  if (file.empty() || !engine_.exists(document)) return;
  const report::MadeTable made =
      report::makeTable(engine_.store(), document, chosen->definition, {form.isPageOnly() ? page : std::string()});
  if (!made.problem.empty()) return complain(made.problem);
  if (const std::string problem = report::writeReport(made.table, file); !problem.empty()) return complain(problem);
  platform_.shellOpen(file);
}

std::string PlatformReportsDialog::chosenFile(const std::string& startFolder) {
  const std::string file = platform_.chooseFile({"Save the report as", fileFilter, startFolder}).or_({});
  if (file.empty()) return {};
  if (!report::isReportFile(file)) {
    complain(report::notAReportFile(file));
    return {};
  }
  if (!platform_.fileExists(file)) return file;
  MessageBox box;
  box.text = file + " exists already. Do you want to replace it?";
  box.buttons = MessageButtons::YesNo;
  box.icon = MessageIcon::Question;
  return platform_.showMessage(box) == MessageAnswer::Yes ? file : std::string();
}

void PlatformReportsDialog::complain(const std::string& sentence) {
  MessageBox box;
  box.text = sentence;
  box.icon = MessageIcon::Stop;
  platform_.showMessage(box);
}

}  // namespace quorvel
