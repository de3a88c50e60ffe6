// The report definitions of the install folder, as texts in a drawing.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Gives the drawing the definitions that it lacks, numbered in the order of their files' names. A file that is no XML
/// keeps its number and is left out; a row that the drawing has is not changed.
void addReportDefinitions(const dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
