// Reads shapes with their members, text and links to masters.
#pragma once

#include "formats/common/read_state.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {

/// Reads the shapes of a Shapes element: those of the page when `parent` is null, else a group's members.
/// `instanceMaster` is the file ID of the master of the instance around them; -1: none.
void readShapes(ReadState& state, ShapeSource& source, host::SheetId parent, pugi::xml_node shapes, int instanceMaster);
void readConnects(ReadState& state, host::PageId page, CarriedPage& carried, pugi::xml_node connects);

/// The type and the compression of an image; what else the element says is carried.
void readForeignAttributes(pugi::xml_node node, host::ForeignData& image, CarriedForeign& carried);

/// Ties the shapes read so far to their masters. What names no shape of a master stays an attribute that is carried.
void linkToMasters(ReadState& state);

}  // namespace quorvel::formats
