// Universal cell names, read and written: "Prop.Task_ID.Label", "Geometry1.X2", "Actions.Menu[1]", "PinX".
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"
#include "host/cells/cell_key.h"

namespace quorvel::host {

/// Reads a cell name in any letter case, in every form that drawings use:
///   PinX · User.Name · User.Name.Prompt · Prop.Name.Value · Actions.Menu[1] · Actions.Name.Action · Actions.D1 (the
///   Disabled cell of row 1, as old drawings write it) · Geometry1.X2 · Geometry1.NoFill · Connections.X1 ·
///   Connections.Name.Y · Controls.Name (its X) · Controls.Name.YDyn · Scratch.A1 · Char.Size · Char.Size[2] ·
///   Para.HorzAlign[1] · Fields.Value[1] · Fields.Value (row 1) · Hyperlink.Name.Address · Layers.Visible[1] · Tabs.…
/// Row numbers in names count from 1 and become 0-based indices, but for Geometry vertices, which keep theirs. Nothing
/// for a text that is no cell name. The cell need not exist.
Maybe<CellKey> parseCellName(std::string_view name);

/// The short universal name. `rowName` is the row's name in the case of its creation (empty: the folded one is used);
/// the row's own cell leaves out ".Value" or ".X".
std::string cellName(const CellKey& key, std::string_view rowName = {});

/// May rows of the section have names?
bool hasNamedRows(SectionNumber section);

/// True for a text that may name a row: a letter or "_" first, then letters, digits, "_" and ".".
bool isRowName(std::string_view name);

}  // namespace quorvel::host
