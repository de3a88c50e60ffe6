// The toolbar command that edits the organisation's roles.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

void cbrBtnCustomizeRoleName_Click(dsrVisioConnect& connect);

}  // namespace quorvel::addin
