#include "document/last_save_field.h"

#include "base/text.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

constexpr const char *value = "Fields.Value[1]", *formatCell = "Fields.Format[1]", *lastSave = "DOCLASTSAVE()";

bool isOfMap(const Shape& shape) { return IsTask(shape) || IsTaskLink(shape) || IsProcessConnector(shape); }

/// The formula as the file keeps it, without a leading "=".
std::string formulaOf(const Shape& shape, std::string_view cell) {
  if (shape.CellExists(cell, 0) != true) return {};
  std::string formula = shape.Cells(cell).Formula().or_({});
  return formula.starts_with('=') ? formula.substr(1) : formula;
}

}  // namespace

void addDocLastSave(const Selection& selection, int format) {
  for (const Shape& shape : everyItem(selection)) {
    if (askAgain([&] { return isOfMap(shape); })) continue;
    if (!shape.Characters().AddCustomField("", 0)) continue;
    askAgain([&] { return shape.Cells(value).FormulaForce(std::string(lastSave)); });
    setFormatText(shape, format);
  }
}

void setFormatText(const Shape& shape, int format) {
  if (format < 1 || format > static_cast<int>(lastSaveFormats.size())) return;
  shape.Cells(formatCell).FormulaForce(std::string(lastSaveFormats[static_cast<std::size_t>(format) - 1].field));
}

int getTheIndOfFormat(std::string_view formula) {
  for (std::size_t i = 0; i < lastSaveFormats.size(); ++i) {
    if (equalIgnoringCase(lastSaveFormats[i].field, formula)) return static_cast<int>(i) + 1;
  }
  return 0;
}

int lastSaveFormatOf(const Selection& selection) {
  int format = 0;
  for (const Shape& shape : everyItem(selection)) {
    if (isOfMap(shape) || !equalIgnoringCase(formulaOf(shape, value), lastSave)) continue;
    format = getTheIndOfFormat(formulaOf(shape, formatCell));
  }
  return format;
}

}  // namespace quorvel::addin
