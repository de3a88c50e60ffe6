// Reads shapes with their members, text, pictures and links to masters from the contents of a page or master.
#pragma once

#include "formats/package/xml_reading.h"
#include "formats/vsdx/read_state.h"

namespace quorvel::formats {

/// Reads a page's or master's part into the page and its carried part. Empty when it went well; else what is wrong with
/// the part. `bytes` are used up.
std::string readContents(ReadState& state, host::PageId page, CarriedPage& carried, std::string& bytes);

/// Reads the shapes of a Shapes element: those of the page when `parent` is null, else a group's members.
/// `instanceMaster` is the file ID of the master of the instance around them; -1: none.
void readShapes(ReadState& state, ShapeSource& source, host::SheetId parent, pugi::xml_node shapes, int instanceMaster);
void readConnects(ReadState& state, host::PageId page, CarriedPage& carried, pugi::xml_node connects);

/// Ties the shapes read so far to their masters. What names no shape of a master stays an attribute that is carried.
void linkToMasters(ReadState& state);

}  // namespace quorvel::formats
