#include "display/field_names.h"

#include "schema/details.h"

namespace quorvel::addin {

void fillFieldNames(dsrVisioConnect& connect) {
  for (int position = 1; position <= schema::lastDetail; ++position)
    connect.fieldNames[static_cast<std::size_t>(position)] = schema::detailAt(position).row.name();
}

}  // namespace quorvel::addin
