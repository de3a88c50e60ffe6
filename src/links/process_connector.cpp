#include "links/process_connector.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "links/link_target.h"
#include "schema/cells.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"
#include "sheets/text_fields.h"

namespace quorvel::addin {
namespace {

namespace connectorCells = schema::connectorCells;

Maybe<std::string> textOf(const Shape& connector, std::string_view cell) {
  return connector.Cells(cell).ResultStr(visio::unitsNone);
}

/// Connectors from older drawings lack the row; an unknown cell is not asked for.
Maybe<std::string> storedIdOf(const Shape& connector) {
  if (connector.CellExists(schema::linkedCells::storedTaskId, 0) != true) return std::string();
  return textOf(connector, schema::linkedCells::storedTaskId);
}

/// True when the connector has a hyperlink and shows no ID that was typed.
bool isLinked(const Shape& connector) {
  const Maybe<std::string> shown = textOf(connector, connectorCells::shownId);
  const bool follows = shown == "" || shown == connectorCells::noTarget || storedIdOf(connector) == shown;
  return follows && connector.Hyperlinks().Count() > 0;
}

void store(const Shape& connector, const std::string& id) {
  addStoredTaskId(connector);
  connector.Cells(schema::linkedCells::storedTaskId).FormulaForce(quoted(id));
}

void show(const Shape& connector, const std::string& id) {
  connector.Cells(connectorCells::shownId).FormulaForce(quoted(id));
  store(connector, id);
  changeProcessConnectorTxtFont(connector);
  connector.SetName(connectorText(id));
  restoreConnectorText(connector);
}

/// The text of a formula that is a quoted text; any other text as it is.
std::string unquoted(const std::string& formula) {
  if (formula.size() < 2 || !formula.starts_with('"') || !formula.ends_with('"')) return formula;
  return replaceAll(std::string_view(formula).substr(1, formula.size() - 2), "\"\"", "\"");
}

}  // namespace

std::string connectorText(std::string_view id) { return std::string(connectorCells::textStart) + std::string(id); }

void addStoredTaskId(const Shape& connector) {
  if (connector.CellExists(schema::linkedCells::storedTaskId, 1) != false) return;
  const Maybe<std::string> shown = textOf(connector, connectorCells::shownId);
  addRow(connector, schema::linkedCells::storedTaskId);
  if (shown) connector.Cells(schema::linkedCells::storedTaskId).FormulaForce(quoted(*shown));
}

void changeProcessConnectorText(const Shape& shape, std::string_view caller, const std::string& newId) {
  if (!IsProcessConnector(shape)) return;
  const bool renumbers = caller == connectorCallers::renumberTask;
  if (!renumbers && caller != connectorCallers::cellChange) return;
  if (renumbers) addStoredTaskId(shape);
  const bool hasLink = shape.Hyperlinks().Count() > 0;
  const std::string target = hasLink ? linkTargetOf(shape.Hyperlinks().Item(0)).taskId : std::string();
  const std::string id = renumbers ? unquoted(newId) : target;
  if (isLinked(shape)) {
    if (!target.empty()) show(shape, id);
    // While a link is rewritten it may have no target for a moment; that is no typed ID.
    if (!target.empty() || !renumbers) return;
  }
  if (renumbers || hasLink) store(shape, id);
}

void changeProcessConnectorTxtFont(const Shape& connector) {
  const Maybe<std::string> shown = textOf(connector, connectorCells::shownId);
  if (!shown || shown->empty()) return;
  const std::size_t length = lengthOf(*shown);
  connector.Cells("Char.Size[1]")
      .FormulaForce(length <= 4   ? "guard(12 pt)"
                    : length == 5 ? "guard(10 pt)"
                                  : "guard(8 pt)");
}

void restoreConnectorText(const Shape& connector) {
  const Maybe<std::string> shown = textOf(connector, connectorCells::shownId), text = connector.Text();
  const std::string start(connectorCells::textStart);
  if (!shown || !text || (*text == connectorText(*shown) && hasTextField(connector))) return;
  if (!askAgain([&] { return connector.SetText(start); })) return;
  // A handler of that change may have restored the field already.
  if (hasTextField(connector)) return;
  const Characters characters = connector.Characters();
  const bool isField = askAgain([&] { return characters.SetBegin(static_cast<int>(lengthOf(start))); }) &&
                       askAgain([&] { return characters.AddCustomField(std::string(connectorCells::shownId), 0); });
  // Without the field the text is right until the ID changes.
  if (!isField) connector.SetText(connectorText(*shown));
}

}  // namespace quorvel::addin
