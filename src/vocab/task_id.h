// The form of a Task ID, and the letters that a page's name suggests for it.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// Letters and number with at least two digits: "A" and 7 give "A07". The letters may be empty.
std::string taskIdText(std::string_view letters, long number);

/// The text before the first blank of the page's name when it is one to four characters long, else "Z".
std::string taskLettersFromPageName(std::string_view pageName);
/// The same for a page.
std::string getTaskLetterPartFromPageName(const Page& page);

/// The page's counter holds the next number, which must fit into 32 bits too.
inline constexpr long largestTaskNumber = 2147483646;

/// The number that a number box holds, by its leading digits; 0 for an empty box. Nothing when it is above
/// `largestTaskNumber`.
Maybe<long> numberInBox(std::string_view text);

/// The page's cells for its IDs: the number of the next Task and the letters. Nothing when the cell can't be read, or
/// when the number is too large for a Task.
Maybe<long> nextTaskIdOf(const Page& page);
Maybe<std::string> taskIdLettersOf(const Page& page);

}  // namespace quorvel::addin
