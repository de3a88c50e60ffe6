// A Task's guidelines and resources are each one text joined by ";"; the single entries stand in five rows each.
#pragma once

#include <string_view>

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// Spreads `Prop.Guidelines` over the rows controls1 to controls5, or `Prop.Resources` over Resources1 to Resources5,
/// and draws the lower fields. Further entries are left out of the rows.
void spreadGuidelines(const dsrVisioConnect& connect, const Shape& task);
void spreadResources(const dsrVisioConnect& connect, const Shape& task);

}  // namespace quorvel::addin
