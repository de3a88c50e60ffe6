// The toolbar command that opens the host's reports.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Nothing for a host whose command is not known.
void cbrQuorvelReports_Click(dsrVisioConnect& connect);

}  // namespace quorvel::addin
