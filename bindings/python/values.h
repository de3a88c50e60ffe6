// Values between a script and the host.
#pragma once

#include <pybind11/pybind11.h>

#include <string_view>
#include <vector>

#include "model/backend.h"

namespace quorvel::python {

namespace py = pybind11;

/// A text of the host. What a hostile file brought and is no UTF-8 is shown by replacement characters.
py::str textToPython(std::string_view text);
/// None for nothing and for an object that is not there.
py::object valueToPython(const Variant& value);

/// What a script hands over, as the host takes it. Texts stay borrowed from the script's values.
class HostArguments {
 public:
  /// Throws a TypeError for a value that no host call takes.
  explicit HostArguments(const py::tuple& values);
  operator Arguments() const { return values_; }

 private:
  std::vector<Argument> values_;
};
Argument argumentOf(py::handle value);

}  // namespace quorvel::python
