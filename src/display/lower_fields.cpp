#include "display/lower_fields.h"

#include <algorithm>

#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "display/detail_shapes.h"
#include "display/field_hyperlinks.h"
#include "display/text_layout.h"
#include "schema/details.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

// Texts of one line are lower than this; they must not move the rows up.
constexpr double oneLine = 0.25;
// The drawing uses four fifths of the distance that is added up.
constexpr double arrives = 0.8;

// Inches below the lower edge of the Task.
std::string inches(double value) { return fixedNumber(value, 6); }

/// The vertical line beside the others; a Task has one.
Shape verticalOf(const Shape& task, const Layer& layer) {
  const Shapes members = task.Shapes();
  for (int place = members.Count().or_(0); place > taskMember::lowerBox; --place) {
    const Shape member = members.Item(place);
    if (member.Data2() == marks::vertical) return member;
  }
  const Shape vertical = task.DrawLine(0, 0, 0, 0);
  for (const char* lock : {"LockFormat", "LockSelect", "NoObjHandles"}) vertical.Cells(lock).FormulaForce("1");
  for (const char* x : {"BeginX", "EndX"}) vertical.Cells(x).FormulaForce("guard(0)");
  markDetail(vertical, layer, marks::vertical);
  return vertical;
}

void drawLine(const dsrVisioConnect& connect, const Shape& task, const Layer& layer, int position, int place,
              double y) {
  const schema::Detail& detail = schema::detailAt(position);
  const Shape line = task.DrawLine(0.1, -0.2 * place, 0.2, -0.2 * place);
  line.Cells("BeginX").FormulaForce("guard(0.1)");
  line.Cells("EndX").FormulaForce("guard(0.2)");
  for (const char* cell : {"BeginY", "EndY"}) line.Cells(cell).FormulaForce("guard(" + inches(y) + ")");
  setLowerTextBlock(line, task, true);
  line.Characters().AddCustomField("=" + cellOfTask(task, detail.row), 0);
  for (const char* lock : {"NoObjHandles", "LockFormat", "LockTextEdit"}) line.Cells(lock).FormulaForce("1");
  line.Cells("LinePattern").FormulaForce("Guard(1)");
  line.Cells("LineWeight").FormulaForce("Guard(0.72pt)");
  line.Cells("LineColor").FormulaForce("Guard(0)");
  line.Cells("LineCap").FormulaForce("Guard(0)");
  addHyperlinkAction(line);
  restoreHyperlinks(line, keptHyperlinks(task, position));
  markDetail(line, layer, detail.tag, detail.row.name());
  drawLineIcon(connect, task, line, layer, position, line.Hyperlinks().Count() > 0);
}

/// What a pair of texts adds to the distance, from half the sum of their heights.
double pushedBy(double height) {
  // Above four lines four fifths are too little and texts would overlap, so the whole distance is used; only their
  // margins, 4 pt on each side, may overlap.
  constexpr double margins = 8.0 / 72, step = 0.2;
  return std::max({0.0, height - oneLine, (height - margins - step) / arrives});
}

}  // namespace

void drawTaskLowerFields(const dsrVisioConnect& connect, const Shape& task, std::string_view field,
                         const ListRows& old) {
  const Maybe<int> start = schema::firstPositionOf(field);
  if (!start) return;
  carryLabelsOver(task, old);
  const Layer layer = detailLayerOf(task);
  const Shape vertical = verticalOf(task, layer);
  {
    TextHeights heights(task);
    const auto isShown = [&](int position) {
      return !heights.textAt(position).empty() &&
             task.Cells(schema::detailAt(position).switchCell).Result(visio::unitsNone) == 1;
    };
    int place = 0;
    for (int position = 1; position < *start; ++position) place += isShown(position);
    vertical.Cells("EndY").FormulaForce(inches(-0.2 * place));

    double carried = 0;  // the distance that longer texts take beyond one line
    for (int position = *start; position <= schema::lastLowerDetail; ++position) {
      if (!isShown(position)) continue;
      // A line's text is centred on it: half of the first one's extra height would cover the Task.
      if (place == 0) carried = std::max(0.0, heights.heightAt(position) - oneLine) / 2 / arrives;
      ++place;
      const double level = -0.25 * (place + 1) - 0.1 - carried;
      const double y = level - 0.2 * level;
      vertical.Cells("EndY").FormulaForce(inches(y + 0.1));
      drawLine(connect, task, layer, position, place, y);
      carried += pushedBy(heights.down(position));
    }
  }
  deselectOn(connect, task.ContainingPage());
}

}  // namespace quorvel::addin
