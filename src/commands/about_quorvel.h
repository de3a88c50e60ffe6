// The toolbar command that tells about the product.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

void cbrBtnAboutQuorvel_Click(dsrVisioConnect& connect);

}  // namespace quorvel::addin
