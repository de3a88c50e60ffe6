#include "host/cells/cell_holders.h"

#include "host/cells/cell_table.h"

namespace quorvel::host {
namespace {

/// By the published row number. Style sheets list nearly everything, because every shape ends at one.
std::uint8_t holdersOfRow(std::uint32_t row) {
  using namespace holder;
  switch (row) {
    case 1:   // shape transform
    case 12:  // text transform
      return shape;
    case 4:  // 1-D endpoints
      return line;
    case 2:   // line format
    case 3:   // fill format
    case 5:   // events
    case 6:   // layer membership
    case 11:  // text block format
    case 15:  // protection
    case 16:  // help and copyright
    case 17:  // miscellaneous
    case 23:  // shape layout
    case 26:  // gradients
    case 27:  // quick style
    case 28:  // additional effects
    case 29:  // bevel
    case 30:  // 3-D rotation
    case 32:  // behaviour when the shape is replaced
      return shape | style;
    case 8:  // style properties
      return style;
    case 9:  // foreign image info
      return picture;
    case 21:  // image properties
      return picture | style;
    case 10:  // page properties
    case 18:  // ruler and grid
    case 24:  // page layout
    case 25:  // print properties
      return page | style;
    case 20:  // document properties
      return document;
    case 22:  // group properties
      return group | style;
    case 31:  // theme
      return shape | page | style;
    default:  // alignment: shapes have it while they are glued to a guide
      return 0;
  }
}

}  // namespace

std::uint8_t holdersOf(const CellKey& key) {
  if (key.section != SectionNumber::Object || !definitionOf(key)) return 0;
  static const CellKey ofLines[] = {objectCell("WalkPreference"), objectCell("BegTrigger"), objectCell("EndTrigger")};
  for (const CellKey& each : ofLines) {
    if (key == each) return holder::line | holder::style;
  }
  return holdersOfRow(key.row.index());
}

}  // namespace quorvel::host
