// How a change of the document's frequencies reaches the Tasks. Background pages are visited too, unlike for roles;
// Tasks inside groups are not.
#pragma once

#include <string>
#include <vector>

#include "model/host_model.h"

namespace quorvel::addin {

/// How many frequencies are the system's, and how many more a user may add.
inline constexpr int systemFrequencies = 13, userFrequencies = 13;

/// Gives every Task of the drawing the list of descriptions to choose from; `list` is the text of User.FreqSuggestions.
void update_freq(const Document& document, const std::string& list);

/// A frequency as its description and its abbreviation.
struct Frequency {
  std::string description;
  std::string abbreviation;
};

/// Gives every Task the abbreviation of its frequency, joined to its time. Of equal descriptions the last one decides.
void showFrequencies(const Document& document, const std::vector<Frequency>& frequencies);

/// A Task on any page whose frequency's abbreviation, as the Task holds it, begins with the text in its first two
/// characters; one character followed by the joint does not match.
bool isAbbreviationInUse(const Document& document, const std::string& abbreviation);
/// The same for a description, which must not be empty.
bool isDescriptionInUse(const Document& document, const std::string& description);

}  // namespace quorvel::addin
