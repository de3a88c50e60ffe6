// The document sheet's cells: reading those that shapes are made from, and the two that every create renews.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// A cell of the document sheet as text; empty when the document lacks it.
std::string documentText(const Document& document, std::string_view cell);

/// The separator between the arguments of a formula on the machine at hand. Every formula that is put together from
/// pieces uses it; formulas that are held whole are written with commas.
std::string listSeparator(const Document& document);
/// Deletes and makes User.lstSpr anew, so that it speaks of this machine and not of the one that the drawing came from.
void renewListSeparator(const Document& document);

/// Stamps the document with the version of its cells that this add-in keeps.
void stampVersion(const Document& document);

}  // namespace quorvel::addin
