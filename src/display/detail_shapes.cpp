#include "display/detail_shapes.h"

#include <algorithm>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "data/install_folder.h"
#include "display/field_hyperlinks.h"
#include "schema/details.h"
#include "sheets/cell_writes.h"
#include "sheets/document_cells.h"
#include "sheets/protection.h"
#include "sheets/rows.h"
#include "sheets/shape_actions.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {

Layer detailLayer(const Page& page, std::string_view name) {
  const Layers layers = page.Layers();
  if (const Layer layer = layers.Item(name)) return layer;
  const Layer layer = layers.Add(name);
  if (name == detailLayers::invisible) layer.CellsC(visio::columnLayerVisible).ResultForce(visio::unitsNone, 0);
  return layer;
}

Layer detailLayerOf(const Shape& task) {
  const bool hidden = task.Cells(schema::switches::taskDetails).Result(visio::unitsNone) == 0;
  return detailLayer(task.ContainingPage(), hidden ? detailLayers::invisible : detailLayers::visible);
}

void markDetail(const Shape& shape, const Layer& layer, std::string_view tag, std::string_view row) {
  layer.Add(shape, 1);
  shape.SetData1(std::string(marks::detail));
  if (!row.empty()) askAgain([&] { return shape.SetData3(std::string(row)); });
  // A shape without its tag could not be found again, and the user cannot delete it.
  if (shape.SetData2(std::string(tag))) return;
  deleteProtected(shape);
}

std::string cellOfTask(const Shape& task, std::string_view cell) {
  return task.NameID().or_({}) + "!" + std::string(cell);
}

std::string smallSheetName(const Shape& task) {
  const Maybe<int> id = task.ID();
  return id ? "sheet." + std::to_string(*id) : std::string();
}

void tieToTask(const Shape& shape, const Shape& task, std::string_view cell) {
  // This one cell is written in small letters: drawings are compared by their text.
  const std::string sheet = cell == "FillPattern" ? smallSheetName(task) : task.NameID().or_({});
  shape.Cells(cell).FormulaForce("guard(" + sheet + "!" + std::string(cell) + ")");
}

void placeDescriptionBox(const Shape& task) {
  const Shapes members = task.Shapes();
  const Maybe<std::string> lower = members.Item(taskMember::lowerBox).NameID();
  if (lower) putFormula(members.Item(taskMember::descriptionBox), "PinY", "GUARD(Height-0.07+" + *lower + " !Height)");
}

void addHyperlinkAction(const Shape& shape) {
  addActionRow(shape);
  setAction(shape, 1, hyperlinkAction(listSeparator(shape.Document())), quoted("Add/Edit Hyperlink"));
}

void drawLineIcon(const dsrVisioConnect& connect, const Shape& task, const Shape& line, const Layer& layer,
                  int position, bool isLinked) {
  const schema::Detail& detail = schema::detailAt(position);
  const Shape icon =
      task.Import(installedFile(connect.platform, "Icons/" + std::string(isLinked ? detail.linkedIcon : detail.icon)));
  icon.Cells("Width").FormulaForce(isLinked ? "0.4" : "0.2");
  icon.Cells("Height").FormulaForce("0.2");
  if (const auto sheet = line.NameID()) {
    icon.Cells("PinY").FormulaForce(*sheet + "!PinY");
    icon.Cells("PinX").FormulaForce(*sheet + "!EndX + " + (isLinked ? "0.05" : "0.15"));
  }
  icon.Cells("LockSelect").FormulaForce("1");
  icon.Cells("LockFormat").FormulaForce("1");
  Protection(icon);
  markDetail(icon, layer, detail.tag,
             std::string(isLinked ? marks::hyperlinkIcon : marks::icon) + std::string(detail.row.name()));
}

void deleteDetails(const Shape& task, std::span<const std::string_view> tags, ListRows& rows) {
  // A line that remains would show another text after the redraw, with its own hyperlinks.
  const Shapes members = askAgain([&] { return task.Shapes(); });
  for (int place = askAgain([&] { return members.Count(); }).or_(0); place > taskMember::lowerBox; --place) {
    const Shape member = askAgain([&] { return members.Item(place); });
    const Maybe<std::string> tag = askAgain([&] { return member.Data2(); });
    if (!tag || std::ranges::find(tags, *tag) == tags.end()) continue;
    saveFieldHyperlinks(member, rows);
    deleteProtected(member);
  }
}

}  // namespace quorvel::addin
