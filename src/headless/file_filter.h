// Filters of file dialogs, widened to the kinds of drawings that are written today.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

/// The filter with the newer forms after each binary form: "*.vsd" becomes "*.vsd;*.vsdx;*.vsdm;*.vdx". A form that the
/// same list of patterns already has is not added to it.
std::string withNewerForms(std::string_view filter);

}  // namespace quorvel
