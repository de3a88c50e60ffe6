// A document read as a process map, as Python dictionaries and lists.
#pragma once

#include <pybind11/pybind11.h>

#include "report/process_map.h"

namespace quorvel::python {

/// The keys are the names of the members of report::ProcessMap in Python's spelling; shapes are a page's index, counted
/// from 0, and a shape ID.
pybind11::dict mapToPython(const report::ProcessMap& map);

}  // namespace quorvel::python
