// The toolbar command that edits time units and frequencies.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

void cbrQuorvelOption_Click(dsrVisioConnect& connect);

}  // namespace quorvel::addin
