#include "dialogs/frm_hyperlink_document.h"

#include <string>

#include "dialogs/ok_and_cancel.h"
#include "hyperlinks/link_record.h"

namespace quorvel::addin {
namespace {

struct Column {
  const char* title;
  std::string ExistingLink::*value;
};

using Link = ExistingLink;

/// The columns of a kind. The path of the record and the name in it, the last ones, are not shown.
struct Columns {
  std::string_view kind;
  std::vector<Column> columns;
  std::size_t shown;
};

const std::vector<Columns>& allColumns() {
  static const std::vector<Columns> all{
      {linkKinds::task,
       {{"Location", &Link::location},
        {"Description", &Link::description},
        {"Page", &Link::page},
        {"Task ID", &Link::task},
        {"Zoom", &Link::zoom},
        {"Rel./Abs.", &Link::relOrAbs},
        {"Open Quorvel in New Window", &Link::newWindow},
        {"AbsPath", &Link::absPath},
        {"Docname", &Link::docName}},
       7},
      {linkKinds::document,
       {{"Location", &Link::location},
        {"Description", &Link::description},
        {"Internal Location", &Link::page},
        {"Rel./Abs.", &Link::relOrAbs},
        {"New Wnd", &Link::newWindow},
        {"AbsPath", &Link::absPath},
        {"Docname", &Link::docName}},
       5},
      {linkKinds::program,
       {{"Location", &Link::location},
        {"Description", &Link::description},
        {"Rel./Abs.", &Link::relOrAbs},
        {"AbsPath", &Link::absPath},
        {"Docname", &Link::docName}},
       3},
      {linkKinds::webPage,
       {{"Address", &Link::location},
        {"Description", &Link::description},
        {"Book Mark", &Link::page},
        {"New Wnd", &Link::newWindow},
        {"AbsPath", &Link::absPath}},
       4},
      {linkKinds::email, {{"Email address", &Link::location}, {"Description", &Link::description}}, 2},
  };
  return all;
}

}  // namespace

frmhyperlinkDocument::frmhyperlinkDocument(const Document& document, std::string_view kind)
    : Form("frmhyperlinkDocument", "Select Existing Hyperlink"),
      links_(existingLinks(document, kind)),
      lstLinks(add(ControlKind::ListView, "lstLinks")),
      BtnOK(add(ControlKind::Button, "BtnOK", "OK")),
      btnCancel(add(ControlKind::Button, "btnCancel", "Cancel")) {
  lstLinks.columnSpan = 2;
  lstLinks.widthInCharacters = 90;
  lstLinks.heightInLines = 14;
  layOutOkAndCancel(BtnOK, btnCancel, 1);
  fillPickerList(kind, lstLinks);

  const auto accept = [this] {
    const int row = lstLinks.selectedRow();
    if (row >= 0) chosen_ = &links_[static_cast<std::size_t>(row)];
    hide();
  };
  BtnOK.onClick = lstLinks.onDoubleClick = accept;
  btnCancel.onClick = [this] { close(); };
}

void frmhyperlinkDocument::fillPickerList(std::string_view kind, Control& list) {
  list.clearRows();
  for (const Columns& of : allColumns()) {
    if (of.kind != kind) continue;
    for (const Column& column : of.columns) list.columnTitles.emplace_back(column.title);
    list.shownColumns = of.shown;
    for (const ExistingLink& link : links_) {
      std::vector<std::string> texts;
      for (const Column& column : of.columns) texts.push_back(link.*column.value);
      list.addRow(std::move(texts));
    }
  }
}

}  // namespace quorvel::addin
