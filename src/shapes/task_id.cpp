#include "shapes/task_id.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "base/basic_text.h"
#include "base/text.h"

namespace quorvel::addin {

std::string taskIdText(std::string_view letters, long number) { return std::string(letters) + format00(number); }

std::string taskLettersFromPageName(std::string_view pageName) {
  const long blank = inStr(pageName, " ");
  return blank >= 2 && blank <= 5 ? left(pageName, blank - 1) : "Z";
}

std::string getTaskLetterPartFromPageName(const Page& page) { return taskLettersFromPageName(page.Name().or_({})); }

long numberInBox(std::string_view text) {
  constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
  std::int64_t number = 0;
  for (const char digit : trimmed(text)) {
    if (digit < '0' || digit > '9') break;
    number = std::min(number * 10 + (digit - '0'), largest);
  }
  return static_cast<long>(number);
}

long nextTaskIdOf(const Page& page) {
  return page.PageSheet().Cells("User.Next_Task_Id").ResultInt(visio::unitsNone, 1).or_(0);
}

std::string taskIdLettersOf(const Page& page) {
  return page.PageSheet().Cells("User.Task_Id_Letters").ResultStr(visio::unitsNone).or_({});
}

}  // namespace quorvel::addin
