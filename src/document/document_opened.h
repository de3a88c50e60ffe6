// A drawing is opened: an older one is brought up to date, and the add-in takes it up.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The version of the cells that a drawing has; 0 when it has none.
double versionOf(const Document& document);
/// Below this version all cells are converted, which takes a moment.
inline constexpr double firstCurrentVersion = 2.0;
/// From this version on nothing is converted.
inline constexpr double currentVersion = 2.16;

/// Converts what is older than the cells that the add-in writes now.
void upgradeDocument(dsrVisioConnect& connect, const Document& document);
/// Initializes a drawing that never was, or tells its formulas that the add-in is there; and writes the version.
void takeUpDocument(dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
