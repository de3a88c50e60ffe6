#include "dialogs/frm_about.h"

#include <string>
#include <string_view>

#include "base/text.h"
#include "data/install_folder.h"
#include "data/web_site.h"
#include "schema/cells.h"

namespace quorvel::addin {
namespace {

constexpr int blue = 16711680, red = 255;

/// The formula of the row that a template or stencil has for its version; nothing without it.
Maybe<std::string> versionIn(const Document& document, const schema::NamedRow& row) {
  const Shape sheet = document.DocumentSheet();
  return sheet.CellExists(row, 0) == true ? sheet.Cells(row).Formula() : Maybe<std::string>();
}

}  // namespace

frmAbout::frmAbout(dsrVisioConnect& connect)
    : Form("frmAbout", "About Quorvel"),
      Picture1(add(ControlKind::Picture, "Picture1")),
      lblQuorvelTemplateVersion(add(ControlKind::Label, "lblQuorvelTemplateVersion")),
      lblQuorvelStencilVersion(add(ControlKind::Label, "lblQuorvelStencilVersion")),
      lblInstallPath(add(ControlKind::Label, "lblInstallPath")),
      lblVisioVersion(add(ControlKind::Label, "lblVisioVersion", "Visio")),
      Label1(add(ControlKind::Label, "Label1", std::string(website::home))),
      Command1(add(ControlKind::Button, "Command1", "OK")) {
  Picture1.pictureFile = installedFile(connect.platform, installed::logo);
  Picture1.columnSpan = 2;
  int row = 1;
  for (const auto& [title, value] : {std::pair{"Template version:", &lblQuorvelTemplateVersion},
                                     {"Stencil version:", &lblQuorvelStencilVersion},
                                     {"Installed in:", &lblInstallPath},
                                     {"Drawing program:", &lblVisioVersion}}) {
    Control& label = add(ControlKind::Label, "lbl" + std::to_string(row), title);
    label.gridRow = value->gridRow = row++;
    value->gridColumn = 1;
  }
  Label1.gridRow = row++;
  Label1.columnSpan = 2;
  Command1.gridRow = row;
  Command1.isDefaultButton = Command1.isCancelButton = true;

  Label1.setForeColour(blue);
  Label1.onMouseDown = [this] { Label1.setForeColour(red); };
  Label1.onMouseUp = [this] { Label1.setForeColour(blue); };
  Label1.onMouseMove = [this] {
    if (Label1.foreColour() != blue) Label1.setForeColour(blue);
  };
  Label1.onClick = Picture1.onClick = [this, &platform = connect.platform] { platform.shellOpen(Label1.caption()); };
  Command1.onClick = [this] { close(); };
  fill(connect);
}

void frmAbout::fill(dsrVisioConnect& connect) {
  namespace documentCells = schema::documentCells;
  if (const auto version = versionIn(connect.gvsoApp.ActiveDocument(), documentCells::templateVersion))
    lblQuorvelTemplateVersion.setCaption(*version);
  for (const Document& document : connect.gvsoApp.Documents().all()) {
    if (!containsIgnoringCase(document.Name().or_({}), ".vss")) continue;
    if (const auto version = versionIn(document, documentCells::stencilVersion))
      lblQuorvelStencilVersion.setCaption(*version);
  }
  lblInstallPath.setCaption(connect.platform.addinFolder());
  const std::string version = connect.gvsoApp.Version().or_({});
  for (const auto& [start, name] :
       {std::pair{"10", "Visio 2002 (10.0)"}, {"11", "Visio 2003 (11.0)"}, {"12", "Visio 2007 (12.0)"}}) {
    if (version.starts_with(start)) lblVisioVersion.setCaption(name);
  }
}

}  // namespace quorvel::addin
