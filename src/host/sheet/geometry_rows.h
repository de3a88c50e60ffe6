// Reads the rows of a sheet's Geometry sections from their cells.
#pragma once

#include "host/geometry/geometry_path.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// The vertex rows, without the component row.
std::vector<GeometryRow> geometryRows(const Store& store, SheetId sheet, SectionNumber section);

/// Their path in the sheet's own coordinates.
GeometryPath geometryPath(const Store& store, SheetId sheet, SectionNumber section,
                          double arcStep = std::numbers::pi / 2);

/// The vertices of the rows in the sheet's own coordinates, arcs and curves with their ends alone.
std::vector<Point> verticesOf(const Store& store, SheetId sheet, SectionNumber section);

}  // namespace quorvel::host
