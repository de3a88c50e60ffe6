// The sample map, saved and read: every cell that was written is read again.
#include "cli/sample_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>

#include "host/cells/cell_name.h"
#include "host/connectors/connector_ends.h"
#include "host/sheet/inheritance.h"

namespace quorvel {
namespace {

SessionOptions optionsForTests() {
  SessionOptions options;
  options.installFolder = QUORVEL_SOURCE_FOLDER "/data";
  return options;
}

/// A cell as text. A number is shown to nine digits, the precision that a file must keep.
std::string shown(const host::Cell& cell) {
  const host::Value& value = cell.value;
  std::string text = host::formulaText(cell) + " = ";
  if (value.isText() || value.isError()) return text + value.asText();
  char digits[40];
  std::snprintf(digits, sizeof digits, "%.9g", std::abs(value.internal()) < 1e-12 ? 0.0 : value.internal());
  return text + digits;
}

void addCells(const host::Store& store, const host::Sheet& sheet, const std::string& where,
              std::map<std::string, std::string>& cells) {
  for (const host::Section& section : sheet.sections) {
    for (const host::Row& row : section.rows) {
      for (const auto& [column, cell] : row.cells) {
        // What is inherited may be written or left to the master; what the sheet shows then is compared instead.
        const host::CellKey key{section.number, row.key, column};
        const std::string name =
            where + " " + std::to_string(int(section.number)) + " " + host::cellName(key, host::spelling(row.name));
        cells[name] = cell.inheritsFormula ? "inherited = " + host::cellText(store, sheet.id, key) : shown(cell);
      }
    }
  }
}

/// Local cells by page, shape and cell.
std::map<std::string, std::string> localCells(const host::Store& store, const host::Document& document) {
  std::map<std::string, std::string> cells;
  addCells(store, *store.sheet(document.sheet), "document", cells);
  for (const host::PageId id : document.pages) {
    const host::Page& page = *store.page(id);
    addCells(store, *store.sheet(page.sheet), page.name, cells);
    for (const host::SheetId shape : page.shapes) {
      for (const host::SheetId each : store.subtree(shape)) {
        const host::Sheet& sheet = *store.sheet(each);
        const std::string where = page.name + "/" + std::to_string(sheet.shapeId);
        addCells(store, sheet, where, cells);
        cells[where + " name"] = store.shapeName(sheet);
        cells[where + " marks"] = sheet.data1 + "|" + sheet.data2 + "|" + sheet.data3;
      }
    }
  }
  return cells;
}

TEST(SampleMap, HasEveryCellThatWasWritten) {
  const std::string file = (std::filesystem::temp_directory_path() / "quorvel sample map.vsdx").string();
  std::map<std::string, std::string> written;
  {
    Session session(optionsForTests());
    std::string error;
    const Document map = cli::makeSampleMap(session, error);
    ASSERT_TRUE(map) << error;
    ASSERT_TRUE(map.SaveAs(file));
    written = localCells(session.engine().store(), *session.engine().store().document(host::DocumentId{map.ref().id}));
  }
  SessionOptions withoutAddin = optionsForTests();
  withoutAddin.connectAddin = false;
  Session session(withoutAddin);
  const Document map = session.app().Documents().Open(file);
  ASSERT_TRUE(map);
  const auto read =
      localCells(session.engine().store(), *session.engine().store().document(host::DocumentId{map.ref().id}));
  EXPECT_GT(written.size(), 2000u);
  int reported = 0;
  for (const auto& [where, cell] : written) {
    const auto found = read.find(where);
    if (found != read.end() && found->second == cell) continue;
    // In the file the add-in is not there, and what it adds to menus neither.
    if (cell.find("AddinIsFound") != std::string::npos || where.find("AddinIsFound") != std::string::npos) continue;
    ADD_FAILURE() << where << "\n  written: " << cell
                  << "\n  read:    " << (found == read.end() ? "nothing" : found->second);
    if (++reported == 20) break;
  }
  std::filesystem::remove(file);
}

TEST(SampleMap, ShowsTheValuesOfItsCells) {
  Session session(optionsForTests());
  std::string error;
  const Document map = cli::makeSampleMap(session, error);
  ASSERT_TRUE(map) << error;
  const Shapes shapes = map.Pages().Item("OH Order handling").Shapes();
  const Shape task = shapes.Item("OH02");
  EXPECT_EQ(task.Shapes().Item(1).Text(), "OH02");
  EXPECT_EQ(task.Shapes().Item(3).Text(), "CR01");
  EXPECT_EQ(task.Shapes().Item(4).Text(), "Check the customer's credit");
  EXPECT_EQ(shapes.Item("Connector.SH01").Text(), "Connector.SH01");
  // The two links out of the credit check: one is straight, one branches off, and each text is on its line.
  int links = 0;
  for (const Shape& shape : shapes.all()) {
    const std::string text = shape.Text().or_({});
    if (!text.starts_with("Refused") && !text.starts_with("Approved")) continue;
    ++links;
    const host::SheetId sheet{shape.ref().id};
    const host::Store& store = session.engine().store();
    const host::Polyline line = host::lineOnPage(store, sheet);
    EXPECT_EQ(line.size(), text.starts_with("Refused") ? 4u : 2u) << text;
    const host::Point middle = host::midpointOf(line);
    const auto pin = host::toPageMatrix(
        store, sheet)({shape.Cells("TxtPinX").ResultIU().or_(NAN), shape.Cells("TxtPinY").ResultIU().or_(NAN)});
    EXPECT_NEAR(std::hypot(pin.x - middle.x, pin.y - middle.y), 0, 1e-6) << text;
  }
  EXPECT_EQ(links, 2);
}

}  // namespace
}  // namespace quorvel
