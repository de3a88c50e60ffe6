// A cell as an element: <PinX Unit='IN' F='Width*0.5'>1.5</PinX>.
#pragma once

#include "formats/common/carried.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"
#include "formats/vdx/read_state.h"
#include "formats/vdx/vocabulary.h"

namespace quorvel::formats::vdx {

/// Reads the element into the row. What our writing of the cell would not give back is carried with the row. A later
/// vocabulary may say a cell of the core again, with functions that older programs lack; that is then what holds.
void readCell(FileState& state, pugi::xml_node node, Vocabulary vocabulary, const host::CellKey& key, host::Row& row);

/// `name` is the element's without a prefix; `row` is what the cell's row carries and may be null.
void writeCell(XmlWriter& writer, std::string_view name, const host::CellKey& key, const host::Cell& cell,
               const CarriedRow* row, FontNumbers& fonts);
/// The same in the words of a later vocabulary.
void writeCellAgain(XmlWriter& writer, Vocabulary vocabulary, const host::CellKey& key, const host::Cell& cell);
/// True for a formula with functions of later releases.
bool usesLaterFunctions(const host::Cell& cell);

/// Start of an element of that vocabulary; `declares` says that the prefix is not known here yet.
void startElement(XmlWriter& writer, Vocabulary vocabulary, std::string_view name, bool declares = false);

}  // namespace quorvel::formats::vdx
