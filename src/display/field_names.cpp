#include "display/field_names.h"

#include "display/detail_fields.h"

namespace quorvel::addin {

void fillFieldNames(dsrVisioConnect& connect) {
  for (std::size_t i = 1; i < detailFields.size(); ++i) connect.fieldNames[i] = detailFields[i].row;
}

}  // namespace quorvel::addin
