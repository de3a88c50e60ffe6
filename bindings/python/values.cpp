#include "values.h"

namespace quorvel::python {

py::str textToPython(std::string_view text) {
  PyObject* made = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace");
  if (!made) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(made);
}

py::object valueToPython(const Variant& value) {
  if (const auto* truth = std::get_if<bool>(&value)) return py::bool_(*truth);
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return py::int_(*whole);
  if (const auto* number = std::get_if<double>(&value)) return py::float_(*number);
  if (const auto* text = std::get_if<std::string>(&value)) return textToPython(*text);
  if (const auto* object = std::get_if<ObjectRef>(&value); object && *object) return py::cast(*object);
  return py::none();
}

Argument argumentOf(py::handle value) {
  PyObject* object = value.ptr();
  if (value.is_none()) return std::monostate();
  if (PyBool_Check(object)) return object == Py_True;
  if (PyUnicode_Check(object)) {
    Py_ssize_t size = 0;
    const char* text = PyUnicode_AsUTF8AndSize(object, &size);
    if (!text) throw py::error_already_set();
    return std::string_view(text, static_cast<std::size_t>(size));
  }
  if (PyFloat_Check(object)) return PyFloat_AS_DOUBLE(object);
  if (PyIndex_Check(object)) {
    const py::object whole = py::reinterpret_steal<py::object>(PyNumber_Index(object));
    const long long number = whole ? PyLong_AsLongLong(whole.ptr()) : -1;
    if (PyErr_Occurred()) throw py::error_already_set();
    return std::int64_t{number};
  }
  if (py::isinstance<ObjectRef>(value)) return value.cast<ObjectRef>();
  const double number = PyFloat_AsDouble(object);
  if (!PyErr_Occurred()) return number;
  PyErr_Clear();
  throw py::type_error("the host takes texts, numbers, truth values and its own objects, not " +
                       std::string(Py_TYPE(object)->tp_name));
}

HostArguments::HostArguments(const py::tuple& values) {
  values_.reserve(values.size());
  for (const py::handle value : values) values_.push_back(argumentOf(value));
}

}  // namespace quorvel::python
