#include "hyperlinks/link_indicators.h"

#include <string>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "display/detail_shapes.h"
#include "display/task_marks.h"
#include "links/link_target.h"
#include "links/process_connector.h"
#include "schema/cells.h"
#include "schema/details.h"
#include "sheets/cell_writes.h"
#include "sheets/page_walk.h"
#include "sheets/protection.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

Shape memberWithData3(const Shape& group, const std::string& data3) {
  for (const Shape& member : everyMember(group)) {
    if (member.Data3() == data3) return member;
  }
  return {};
}

void clearLine(const dsrVisioConnect& connect, const Shape& line) {
  const Shape task = askAgain([&] { return line.Parent(); });
  const std::string row = askAgain([&] { return line.Data3(); }).or_({});
  const Shape icon = memberWithData3(task, std::string(marks::hyperlinkIcon) + row);
  if (icon) {
    icon.Cells("LockSelect").FormulaForce("0");
    deleteProtected(icon);
  }
  const Maybe<int> position = schema::positionOfRow(row);
  if (!position) return;
  const std::string_view kept = schema::detailAt(*position).keptHyperlinks;
  if (!kept.empty()) putText(task, kept, "");
  // A line that was drawn with links has no plain icon.
  const bool hasIcon =
      !icon || *position > schema::lastLowerDetail || memberWithData3(task, std::string(marks::icon) + row);
  if (!hasIcon) drawLineIcon(connect, task, line, detailLayerOf(task), *position, false);
}

Maybe<std::string> textOf(const Shape& shape, std::string_view cell) {
  return askAgain([&] { return shape.Cells(cell).ResultStr(visio::unitsNone); });
}

/// Of a connector or box that follows its link: an ID that is left would be that of a Task it does not lead to, or
/// count as typed, and stay whatever it is linked to later.
bool showsItsTarget(const Shape& linked, const Shape& shown, std::string_view cell) {
  return textOf(linked, schema::linkedCells::storedTaskId) == textOf(shown, cell).or_({});
}

void clearBox(const Shape& box, bool hasLinks) {
  const Shape task = askAgain([&] { return box.Parent(); });
  const bool clears = showsItsTarget(box, task, schema::taskCells::linked);
  putText(box, schema::linkedCells::storedTaskId, "");
  if (!hasLinks) removeSubTaskMark(task);
  if (clears) putText(task, schema::taskCells::linked, "");
}

void clearConnector(const Shape& connector, bool hasLinks) {
  if (hasLinks) {
    if (!showsItsTarget(connector, connector, schema::connectorCells::shownId)) return;
    putText(connector, schema::linkedCells::storedTaskId, "");
  }
  putText(connector, schema::connectorCells::shownId, schema::connectorCells::noTarget);
  askAgain([&] { return connector.SetName(connectorText(schema::connectorCells::noTarget)); });
}

}  // namespace

void syncLinkIndicators(const dsrVisioConnect& connect, std::span<const Shape> selection) {
  for (const Shape& shape : selection) {
    const Hyperlinks links = askAgain([&] { return shape.Hyperlinks(); });
    const Maybe<int> count = askAgain([&] { return links.Count(); });
    if (!count) continue;
    const bool hasLinks = *count > 0;
    const Hyperlink first = hasLinks ? askAgain([&] { return links.Item(0); }) : Hyperlink();
    const bool namesTask = !linkTarget(askAgain([&] { return first.SubAddress(); }).or_({})).taskId.empty();
    if (namesTask) continue;
    if (shape.Data1() == marks::detail) {
      if (!hasLinks) clearLine(connect, shape);
    } else if (IsTask(shape)) {
      if (shape.Data1() == marks::subTaskBox) {
        clearBox(shape, hasLinks);
      } else if (!hasLinks) {
        removeOwnHyperlinkMark(shape);
      }
    } else if (IsProcessConnector(shape)) {
      clearConnector(shape, hasLinks);
    }
  }
}

}  // namespace quorvel::addin
