// Random edits of one drawing, as by a user and a careless script: much of it is refused, and every kind of edit may
// follow any other.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "model/host_model.h"

namespace quorvel {

class RandomEdits {
 public:
  RandomEdits(Application app, Document document, std::vector<Master> masters, unsigned seed)
      : app_(app), document_(document), masters_(std::move(masters)), random_(seed) {}

  void step() {
    const Page page = pick(document_.Pages().all());
    const Shape shape = pickShape(page);
    // Pages stay small enough that shapes still overlap.
    const bool isFull = page.Shapes().Count().or_(0) > 25;
    switch (below(33)) {
      case 0:
      case 1:
        if (!isFull) page.Drop(pick(masters_), below(10), below(10));
        return;
      case 2:
        if (!isFull) page.DrawRectangle(0, 0, below(5), below(5));
        return;
      case 3:
        if (!isFull) page.DrawLine(0, 0, below(5), below(5));
        return;
      case 4:  // a shape that is drawn into becomes a group
        if (shape.Shapes().Count().or_(0) < 4) shape.DrawRectangle(0, 0, 1, below(3));
        return;
      case 5:
        shape.Delete();
        return;
      case 6:
        if (!isFull) shape.Duplicate();
        return;
      case 7:
        shape.AddNamedRow(pick(std::vector{visio::sectionUser, visio::sectionProp}), rowName(), 0);
        return;
      case 8:
        shape.AddRow(pick(std::vector{visio::sectionAction, visio::sectionHyperlink, scratch, connections}),
                     below(2) ? visio::rowLast : below(3), 0);
        return;
      case 9:
        shape.DeleteRow(pick(std::vector{visio::sectionUser, visio::sectionProp, visio::sectionAction, scratch,
                                         connections, geometry}),
                        below(3));
        return;
      case 10:
        if (below(4) == 0)
          shape.DeleteSection(pick(std::vector{visio::sectionUser, visio::sectionProp, geometry, character}));
        return;
      case 11:
        shape.SetName(rowName());
        shape.SetData1(rowName());
        return;
      case 12:
        shape.SetText(below(4) ? rowName() + "\n" + rowName() : "");
        return;
      case 13:
        shape.Characters().AddCustomField("User." + rowName(), 0);
        return;
      case 14:
        below(2) ? shape.BringForward() : shape.BringToFront();
        return;
      case 15:
        if (const Layer layer = page.Layers().Add("layer " + rowName())) {
          below(3) ? layer.Add(shape, 1) : layer.Remove(shape, 1);
          layer.CellsC(visio::columnLayerVisible).SetResult(0, below(2));
        }
        return;
      case 16:
        if (below(4) == 0 && document_.Pages().Count().or_(0) < 5) document_.Pages().Add();
        if (below(12) == 0) page.Delete();
        return;
      case 17:
        page.SetName("name " + rowName());
        if (below(4) == 0) page.SetBackground(below(2) == 1);
        if (below(4) == 0) page.SetBackPage(pick(document_.Pages().all()));
        return;
      case 18:
      case 19:
        glue(shape, pickShape(page));
        return;
      case 20:
        app_.ActiveWindow().Select(shape, visio::select);
        app_.ActiveWindow().Selection().Copy();
        if (!isFull) page.Paste();
        return;
      case 21:
        if (const Hyperlink link = shape.AddHyperlink()) link.SetAddress(rowName());
        return;
      case 22:
        below(2) ? shape.FlipHorizontal() : shape.ReverseEnds();
        return;
      case 23:
        for (int i = below(6); i > 0; --i) app_.Undo();
        for (int i = below(4); i > 0; --i) app_.Redo();
        return;
      case 24:
        takeBackAScope(page);
        return;
      case 25:
        writeResult(shape);
        return;
      case 26:
      case 27:
        group(page);
        return;
      case 28:
        below(2) ? shape.Ungroup() : shape.Shapes().Count() > 0 && pick(shape.Shapes().all()).Ungroup();
        return;
      default:
        writeFormula(below(5) ? shape : below(3) ? page.PageSheet() : document_.DocumentSheet());
    }
  }

 private:
  static constexpr int scratch = 6, connections = 7, geometry = 10, character = 3;

  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  template <class T>
  T pick(const std::vector<T>& items) {
    return items.empty() ? T() : items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
  }
  std::string rowName() { return std::string(1, static_cast<char>('a' + below(6))); }

  Shape pickShape(const Page& page) {
    Shape shape = pick(page.Shapes().all());
    while (shape && below(2) && shape.Shapes().Count() > 0) shape = pick(shape.Shapes().all());
    return shape;
  }

  /// Some shapes of one page, most often of one level; sometimes all that is done to them is one step.
  void group(const Page& page) {
    const int scope = below(4) ? 0 : app_.BeginUndoScope("regroup").or_(0);
    app_.ActiveWindow().SetPage(page);
    app_.ActiveWindow().DeselectAll();
    const Shape first = pickShape(page);
    const Shape home = first.Parent();
    const std::vector<Shape> beside = home ? home.Shapes().all() : page.Shapes().all();
    app_.ActiveWindow().Select(first, visio::select);
    for (int i = below(4); i > 0; --i)
      app_.ActiveWindow().Select(below(8) ? pick(beside) : pickShape(page), visio::select);
    const Shape made = app_.ActiveWindow().Selection().Group();
    switch (below(6)) {
      case 0:
        made.Cells("PinX").SetResult(visio::unitsInches, below(10));
        made.Cells(below(2) ? "Angle" : "FlipX").SetResult(0, below(3));
        break;
      case 1:
        made.Cells(below(2) ? "Width" : "Height").SetResult(visio::unitsInches, below(10));
        break;
      case 2:
        scope ? made.Delete() : made.Ungroup();
        break;
      default:
        break;
    }
    if (scope) app_.EndUndoScope(scope, below(3) > 0);
  }

  void glue(const Shape& shape, const Shape& target) {
    const std::string end = below(2) ? "BeginX" : "EndX";
    const std::string cell = below(2) ? "PinX" : "Connections.X" + std::to_string(1 + below(2));
    shape.Cells(end).GlueTo(target.Cells(cell));
  }

  void takeBackAScope(const Page& page) {
    const int scope = app_.BeginUndoScope("try").or_(0);
    page.Drop(pick(masters_), 1, 1);
    writeFormula(pickShape(page));
    pickShape(page).Delete();
    app_.EndUndoScope(scope, below(2) == 1);
  }

  std::string cellName() {
    const std::string cells[] = {"PinX",        "Width",       "Height",
                                 "LocPinX",     "LineWeight",  "User." + rowName(),
                                 "FillForegnd", "Angle",       "User." + rowName() + ".Prompt",
                                 "EndX",        "Char.Size",   "Prop." + rowName(),
                                 "Comment",     "LayerMember", "Prop." + rowName() + ".Type",
                                 "Scratch.A1",  "Actions.Menu"};
    return cells[below(std::size(cells))];
  }

  void writeFormula(const Shape& shape) {
    const Page page = pick(document_.Pages().all());
    const std::string other = pickShape(page).NameID().or_("ThePage");
    const std::string formulas[] = {std::to_string(below(9)) + " in",
                                    "\"text & <more>\"",
                                    "User." + rowName() + "+1",
                                    "GUARD(Width*0.5)",
                                    other + "!User." + rowName() + "*2",
                                    other + "!PinX+" + other + "!Width",
                                    "IF(User.a>3,User.b,User.c)",
                                    "ThePage!User." + rowName(),
                                    "TheDoc!User." + rowName() + "&\"!\"",
                                    "Pages[" + page.Name().or_("") + "]!" + other + "!User." + rowName(),
                                    "No Formula",
                                    "5 em.",
                                    "DATE(2020,2,29)",
                                    "RGB(1,2,3)",
                                    "PNT(1,2)",
                                    "TEXTWIDTH(TheText)",
                                    "LOC(PNT(" + other + "!PinX," + other + "!PinY))",
                                    "PAGENAME()",
                                    std::to_string(below(4)),
                                    "((",
                                    "UNKNOWN(Width)",
                                    "1/0"};
    const Cell cell = shape.Cells(cellName());
    const std::string& formula = formulas[below(std::size(formulas))];
    below(2) ? cell.SetFormula(formula) : cell.FormulaForce(formula);
  }

  void writeResult(const Shape& shape) {
    constexpr int units[] = {0, 32, 65, 70, 81, 46};
    shape.Cells(cellName()).SetResult(units[below(std::size(units))], below(100) / 8.0);
  }

  Application app_;
  Document document_;
  std::vector<Master> masters_;
  std::mt19937 random_;
};

}  // namespace quorvel
