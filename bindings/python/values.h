// Values between a script and the host.
#pragma once

#include <pybind11/pybind11.h>

#include <string_view>
#include <vector>

#include "model/backend.h"

namespace quorvel::python {

namespace py = pybind11;

/// A text of the host. Invalid UTF-8 from a hostile file is shown as replacement characters.
py::str textToPython(std::string_view text);
/// None for nothing and for an object that does not exist.
py::object valueToPython(const Variant& value);

/// A script's value for the host. Texts are references into the script's values.
class HostArguments {
 public:
  /// Throws a TypeError for a value that no host call accepts.
  explicit HostArguments(const py::tuple& values);
  operator Arguments() const { return values_; }

 private:
  std::vector<Argument> values_;
};
Argument argumentOf(py::handle value);

}  // namespace quorvel::python
