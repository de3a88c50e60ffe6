#include "formats/common/shape_types.h"

namespace quorvel::formats {
namespace {

using host::SheetKind;

struct TypeName {
  SheetKind kind;
  std::string_view name;
};
constexpr TypeName typeNames[] = {
    {SheetKind::Shape, "Shape"},
    {SheetKind::Group, "Group"},
    {SheetKind::Foreign, "Foreign"},
    {SheetKind::Guide, "Guide"},
};

}  // namespace

std::string_view typeName(SheetKind kind) {
  for (const TypeName& type : typeNames) {
    if (type.kind == kind) return type.name;
  }
  return "Shape";
}

Maybe<SheetKind> shapeKindOf(std::string_view name) {
  for (const TypeName& type : typeNames) {
    if (type.name == name) return type.kind;
  }
  return {};
}

}  // namespace quorvel::formats
