#include "vocab/task_id.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"

namespace quorvel::addin {

std::string taskIdText(std::string_view letters, long number) { return std::string(letters) + format00(number); }

std::string taskLettersFromPageName(std::string_view pageName) {
  const long blank = inStr(pageName, " ");
  return blank >= 2 && blank <= 5 ? left(pageName, blank - 1) : "Z";
}

std::string getTaskLetterPartFromPageName(const Page& page) {
  return taskLettersFromPageName(askAgain([&] { return page.Name(); }).or_({}));
}

Maybe<long> numberInBox(std::string_view text) {
  long number = 0;
  for (const char digit : trimmed(text)) {
    if (digit < '0' || digit > '9') break;
    number = number * 10 + (digit - '0');
    if (number > largestTaskNumber) return {};
  }
  return number;
}

Maybe<long> nextTaskIdOf(const Page& page) {
  const auto read = [&] {
    return page.PageSheet().Cells(schema::pageCells::nextTaskId).ResultInt(visio::unitsNone, 1);
  };
  const Maybe<int> number = askAgain(read);
  return number && *number <= largestTaskNumber ? Maybe<long>(*number) : Maybe<long>();
}

Maybe<std::string> taskIdLettersOf(const Page& page) {
  return askAgain([&] { return page.PageSheet().Cells(schema::pageCells::taskIdLetters).ResultStr(visio::unitsNone); });
}

}  // namespace quorvel::addin
