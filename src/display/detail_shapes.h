// What all shapes that show a Task's details have in common: their layer, their marks, and how they are deleted.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "connect/dsr_visio_connect.h"
#include "display/list_rows.h"
#include "schema/layers.h"

namespace quorvel::addin {

namespace detailLayers = schema::layers;

/// The page's layer of that name; added when it is missing, the invisible one with its display off.
Layer detailLayer(const Page& page, std::string_view name);
/// The layer of the Task's details, on its own page, which need not be the active one.
Layer detailLayerOf(const Shape& task);

/// Puts a drawn shape on the layer and marks it. To be called last: until a shape has its
/// marks, a change of its hyperlinks adds no icon.
void markDetail(const Shape& shape, const Layer& layer, std::string_view tag, std::string_view row = {});

/// "Sheet.12!" and the cell.
std::string cellOfTask(const Shape& task, std::string_view cell);
/// "sheet.12", as some of the formulas spell it; empty when the call fails.
std::string smallSheetName(const Shape& task);
/// Makes the shape's cell follow the Task's cell of the same name, guarded.
void tieToTask(const Shape& shape, const Shape& task, std::string_view cell);
/// Keeps the Task's description box above its lower box, which grows with what it shows.
void placeDescriptionBox(const Shape& task);
/// The menu entry that opens the hyperlink dialog, as the shape's first.
void addHyperlinkAction(const Shape& shape);

/// Draws the icon next to a line; a line with hyperlinks has another, wider icon.
void drawLineIcon(const dsrVisioConnect& connect, const Shape& task, const Shape& line, const Layer& layer,
                  int position, bool isLinked);

/// Deletes the sub-shapes whose Data2 is one of the tags; the hyperlinks of their lines go into `rows`. The first two
/// sub-shapes belong to the master and are skipped.
void deleteDetails(const Shape& task, std::span<const std::string_view> tags, ListRows& rows);

}  // namespace quorvel::addin
