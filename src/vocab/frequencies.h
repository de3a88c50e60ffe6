// Writes a change of the document's frequencies to its Tasks. Tasks on background pages are included, unlike for roles;
// Tasks inside groups are not.
#pragma once

#include <string>
#include <vector>

#include "model/host_model.h"

namespace quorvel::addin {

/// The number of predefined frequencies, and how many more a user may add.
inline constexpr int systemFrequencies = 13, userFrequencies = 13;

/// Gives every Task of the drawing the list of descriptions to choose from; `list` is the text of User.FreqSuggestions.
void update_freq(const Document& document, const std::string& list);

/// A frequency as its description and its abbreviation.
struct Frequency {
  std::string description;
  std::string abbreviation;
};

/// Gives every Task the abbreviation of its frequency, joined to its time. Of equal descriptions the last one is used.
void showFrequencies(const Document& document, const std::vector<Frequency>& frequencies);

/// True when the first two characters of a Task's own abbreviation, on any page, are the text. An abbreviation of one
/// character is followed by the separator there, so it does not match.
bool isAbbreviationInUse(const Document& document, const std::string& abbreviation);
/// The same for a description, which must not be empty.
bool isDescriptionInUse(const Document& document, const std::string& description);

}  // namespace quorvel::addin
