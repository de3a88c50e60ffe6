// The toolbar commands that open the help and a mail to the support.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

void cbrBtnQVHelp_Click(dsrVisioConnect& connect);
void cbrBtnAskQVExpert_Click(dsrVisioConnect& connect);

}  // namespace quorvel::addin
