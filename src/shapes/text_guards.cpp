#include "shapes/text_guards.h"

#include <algorithm>

#include "display/detail_shapes.h"
#include "links/process_connector.h"
#include "schema/cells.h"
#include "sheets/shape_classes.h"
#include "sheets/text_fields.h"

namespace quorvel::addin {
namespace {

constexpr const char* refusal =
    "You cannot use Find/Replace to change this field. Please use normal Quorvel functions instead, e.g. use Customize "
    "Role Names or Define Connector Links.";

enum class GuardedText { None, Connector, Role, SubTaskBox };

GuardedText guardedTextOf(const Shape& shape) {
  if (IsProcessConnector(shape)) return GuardedText::Connector;
  if (shape.Data1() == marks::subTaskBox) return GuardedText::SubTaskBox;
  if (!(shape.Data1() == marks::detail)) return GuardedText::None;
  const Maybe<std::string> row = shape.Data3();
  const bool isRole =
      std::ranges::any_of(schema::taskCells::roles, [&](const auto& role) { return row == role.name(); });
  return isRole ? GuardedText::Role : GuardedText::None;
}

void setTextLock(const Shape& shape, const char* lock) { shape.Cells("LockTextEdit").FormulaForce(lock); }

/// The text becomes the field again that it was. True when something else had been typed.
bool restoreText(const Shape& shape, GuardedText kind) {
  const bool isConnector = kind == GuardedText::Connector;
  const Shape owner = isConnector ? shape : shape.Parent();
  const std::string cell = isConnector                 ? std::string(schema::connectorCells::shownId)
                           : kind == GuardedText::Role ? "Prop." + shape.Data3().or_({})
                                                       : std::string(schema::taskCells::linked);
  if (!(owner.CellExists(cell, 0) == true)) return false;
  const Maybe<std::string> shown = owner.Cells(cell).ResultStr(visio::unitsNone);
  const Maybe<std::string> text = shape.Text();
  if (!shown || !text) return false;
  // Connectors from older drawings show the ID alone.
  const bool isAsShown = text == *shown || (isConnector && text == connectorText(*shown));
  if (isAsShown && hasTextField(shape)) return false;
  if (isConnector) {
    restoreConnectorText(shape);
  } else if (kind == GuardedText::Role) {
    showInText(shape, "=" + cellOfTask(owner, cell));
  } else {
    showInText(shape, smallSheetName(owner) + "!" + cell);
  }
  return !isAsShown;
}

}  // namespace

void gvsoApp_BeforeShapeTextEdit(const Shape& shape) {
  if (guardedTextOf(shape) != GuardedText::None) setTextLock(shape, "0");
}

void gvsoApp_ShapeExitedTextEdit(dsrVisioConnect& connect, const Shape& shape) {
  const GuardedText kind = guardedTextOf(shape);
  if (kind == GuardedText::None) return;
  const bool wasTypedOver = restoreText(shape, kind);
  setTextLock(shape, "1");
  if (wasTypedOver) connect.platform.showMessage({.text = refusal});
}

}  // namespace quorvel::addin
