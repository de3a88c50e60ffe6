#include "display/text_layout.h"

#include "display/detail_shapes.h"
#include "schema/details.h"
#include "sheets/document_cells.h"

namespace quorvel::addin {
namespace {

constexpr double notMeasured = -1;

}  // namespace

void setLowerTextBlock(const Shape& line, const Shape& task, bool guarded) {
  const std::string sheet = smallSheetName(task);
  const auto height = [&](const char* width) {
    return "TextHeight(TheText" + listSeparator(line.Document()) + sheet + width + ")";
  };
  line.Cells("TxtWidth").FormulaForce(sheet + "!width*1.5");
  line.Cells("TxtHeight").FormulaForce(guarded ? "guard(" + height("!Width*1.5") + ")" : height("!width*1.5"));
  line.Cells("Para.Spline[1]").FormulaForce("guard(8 pt)");
  line.Cells("TxtPinX").FormulaForce("EndX");
  line.Cells("TxtLocPinX").FormulaForce("EndX-Width - 0.25 in");
  line.Cells("Char.Size[1]").FormulaForce("guard(8 pt)");
  tieToTask(line, task, "Char.Style[1]");
  tieToTask(line, task, "Char.Color[1]");
  line.Cells("Para.HorzAlign[1]").FormulaForce("0");
  line.Cells("TextBkgnd").FormulaForce("0");
}

TextHeights::TextHeights(const Shape& task) : line_(task.DrawLine(0.1, 0, 0.2, 0)) {
  line_.Cells("BeginX").FormulaForce("guard(0.1)");
  line_.Cells("EndX").FormulaForce("guard(0.2)");
  setLowerTextBlock(line_, task, false);
  for (int position = 1; position <= schema::lastLowerDetail; ++position) {
    texts_[static_cast<std::size_t>(position)] =
        task.Cells(schema::detailAt(position).row).ResultStr(visio::unitsNone).or_({});
  }
  heights_.fill(notMeasured);
}

TextHeights::~TextHeights() {
  // It has no mark by which it could be found later, so a refused call is repeated once.
  if (line_ && !line_.Delete()) line_.Delete();
}

const std::string& TextHeights::textAt(int position) const {
  return texts_[position >= 1 && position <= schema::lastLowerDetail ? static_cast<std::size_t>(position) : 0];
}

double TextHeights::heightAt(int position) {
  if (position < 1 || position > schema::lastLowerDetail) return 0;
  double& height = heights_[static_cast<std::size_t>(position)];
  if (height == notMeasured) {
    line_.SetText(textAt(position));
    height = line_.Cells("TxtHeight").Result(visio::unitsInches).or_(0);
  }
  return height;
}

double TextHeights::down(int position) {
  const double own = heightAt(position);
  int next = position + 1;
  while (next <= schema::lastLowerDetail && textAt(next).empty()) ++next;
  return (own + heightAt(next)) * 0.5;
}

double calcTxtdown(const Shape& task, int position) { return TextHeights(task).down(position); }

double calcTxtUp(const Shape& task, int position, int previousPosition) {
  TextHeights heights(task);
  return (heights.heightAt(position) + heights.heightAt(previousPosition)) * 0.5 - 0.02;
}

}  // namespace quorvel::addin
