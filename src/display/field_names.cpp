#include "display/field_names.h"

namespace quorvel::addin {

void fillFieldNames(dsrVisioConnect& connect) {
  connect.fieldNames = {"",
                        "controls1",
                        "controls2",
                        "controls3",
                        "controls4",
                        "controls5",
                        "Resources1",
                        "Resources2",
                        "Resources3",
                        "Resources4",
                        "Resources5",
                        "SupportingRole_1",
                        "SupportingRole_2",
                        "SupportingRole_3",
                        "SupportingRole_4",
                        "Frequency_Partial",
                        "Process_Time_Str",
                        "Responsible_Role"};
}

}  // namespace quorvel::addin
