#include "document/page_decorations.h"

#include <cmath>

#include "base/basic_text.h"
#include "data/install_folder.h"
#include "data/web_site.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

/// Between the page's edge and the decorations: 12.5 mm, in inches.
constexpr double margin = 0.492125;
constexpr double legendHeight = 1.42, titleWidth = 5.5;
constexpr const char *legendX = "ThePage!PageWidth-1 in", *titleY = "ThePage!PageHeight-0.7 in",
                     *titleText = "Page Title";

void setInches(const Shape& shape, std::string_view cell, double inches) {
  shape.Cells(cell).SetResult(visio::unitsInches, inches);
}

bool isAt(const Shape& shape, std::string_view cell, double inches) {
  constexpr double tolerance = 1e-6;
  const auto now = shape.Cells(cell).Result(visio::unitsInches);
  return now && std::abs(*now - inches) < tolerance;
}

/// `mark` goes to Data1. It is written after the host has raised the event for the new shape, so the row that marks the
/// shape as known must be added here, or its first copy would count as a first drop.
Shape importMarked(const dsrVisioConnect& connect, const Page& page, std::string_view file, std::string_view mark) {
  const Shape shape = page.Import(installedFile(connect.platform, file));
  shape.SetData1(std::string(mark));
  addRow(shape, schema::shapeCells::alreadyAdded);
  return shape;
}

void openOnDoubleClick(const Shape& shape, std::string_view address) {
  shape.Cells("EventDblClick").FormulaForce("HYPERLINK(" + quoted(address) + ")");
}

}  // namespace

void addLogo(const dsrVisioConnect& connect, const Page& page) {
  const Shape logo = importMarked(connect, page, installed::logo, marks::logo);
  setInches(logo, "Width", 1);
  setInches(logo, "Height", 0.35);
  setInches(logo, "PinX", margin + 0.5);
  setInches(logo, "PinY", margin);
  const Hyperlink link = logo.AddHyperlink();
  link.SetAddress(std::string(website::home));
  openOnDoubleClick(logo, website::home);
  for (const char* cell : {"LockWidth", "LockHeight", "LockDelete", "NoObjHandles"}) {
    logo.Cells(cell).FormulaForce("1");
  }
}

void addLegend(const dsrVisioConnect& connect, const Page& page) {
  const Shape legend = importMarked(connect, page, installed::legend, marks::legend);
  setInches(legend, "Width", 1);
  setInches(legend, "Height", legendHeight);
  legend.Cells("PinX").FormulaForce(legendX);
  setInches(legend, "PinY", legendHeight / 2 + margin);
  const Hyperlink link = legend.AddHyperlink();
  link.SetAddress(std::string(website::legendExplained));
  link.SetDescription("Double-click for a detailed explanation of the Task shape.");
  openOnDoubleClick(legend, website::legendExplained);
}

void addTitleBox(const Page& page) {
  const Shape title = page.DrawRectangle(0, 0, titleWidth, 0.375);
  setInches(title, "PinX", titleWidth / 2 + margin);
  title.Cells("PinY").FormulaForce(titleY);
  // The style comes first: applying it resets the cells below.
  title.SetStyle("Text Only");
  title.SetText(titleText);
  title.Cells("Para.HorzAlign[1]").FormulaForce("0");
  title.Cells("Char.Size[1]").SetResult(visio::unitsPoints, 18);
  title.Cells("Char.Style[1]").FormulaForce("1");
  title.Cells("FillPattern").FormulaForce("0");
}

bool isDecorationAsMade(const Shape& shape) {
  const Maybe<std::string> mark = shape.Data1();
  if (mark == marks::logo) return isAt(shape, "PinX", margin + 0.5) && isAt(shape, "PinY", margin);
  if (mark == marks::legend) {
    return shape.Cells("PinX").Formula() == legendX && isAt(shape, "PinY", legendHeight / 2 + margin);
  }
  return shape.Text() == titleText && !shape.Master() && isAt(shape, "PinX", titleWidth / 2 + margin) &&
         shape.Cells("PinY").Formula() == titleY;
}

}  // namespace quorvel::addin
