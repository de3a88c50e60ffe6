// The frequency of a copied Task: its description and its abbreviation are compared with the lists of the document.
#include <string>
#include <vector>

#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "schema/cells.h"
#include "shapes/copied_shapes.h"
#include "shapes/paste_batch.h"
#include "sheets/document_cells.h"
#include "vocab/frequencies.h"
#include "vocab/parse.h"
#include "vocab/task_times.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;
namespace documentCells = schema::documentCells;

/// The abbreviation without the separator and the time after it.
std::string abbreviationIn(const std::string& partial) {
  const std::string two = left(partial, 2);
  return two.find(':') == std::string::npos ? two : left(partial, 1);
}

/// Of a list as `parse` gives it.
std::string listText(const std::vector<std::string>& entries) {
  std::string text;
  for (std::size_t i = 0; i + 1 < entries.size(); ++i) text += ";" + entries[i];
  return text;
}

void append(std::vector<std::string>& entries, const std::string& entry) {
  if (entries.empty()) entries.emplace_back();
  entries.back() = entry;
  entries.emplace_back();
}

class FrequencyMerge {
 public:
  FrequencyMerge(dsrVisioConnect& connect, const Shape& task, const Page& page)
      : connect_(connect),
        task_(task),
        page_(page),
        document_(page.Document()),
        descriptions_(parse(documentText(document_, documentCells::frequencies), ";")),
        abbreviations_(parse(documentText(document_, documentCells::frequencyAbbreviations), ";")) {}

  /// As `mergeFrequency`.
  bool run() {
    giveList();
    if (!read() || partial_.empty() || description_.empty()) return true;
    bool found = false;
    for (std::size_t i = 0; i + 1 < abbreviations_.size(); ++i) {
      if (partial_.empty() || description_.empty() || !task_.ID()) break;
      const Maybe<std::string> description = slot(descriptions_, static_cast<long>(i));
      if (!description) break;
      if (equalIgnoringCase(abbreviation_, abbreviations_[i])) {
        found = true;
        if (!mergeDescription(*description)) return refuse();
      } else if (description_ == *description) {
        found = true;
        if (!mergeAbbreviation(i)) return refuse();
      }
      if (!read()) return true;
    }
    return found || partial_.empty() || addNew();
  }

 private:
  bool read() {
    const auto partial = task_.Cells(taskCells::frequencyAbbreviation).ResultStr(visio::unitsNone);
    const auto description = task_.Cells(taskCells::frequency).ResultStr(visio::unitsNone);
    if (!partial || !description) return false;
    partial_ = *partial;
    description_ = *description;
    abbreviation_ = abbreviationIn(partial_);
    return true;
  }

  /// The copy's own list; the other Tasks have it already.
  void giveList() {
    const std::string list = documentText(document_, documentCells::frequencies);
    task_.Cells(taskCells::frequency.column("Format")).FormulaForce(quoted(list));
  }

  bool refuse() {
    deleteRefusedShape(connect_, task_);
    return false;
  }

  bool asks(const char* question) {
    showPage(connect_, page_);
    return connect_.platform.showMessage({question, "Quorvel", MessageButtons::YesNoCancel, MessageIcon::Question}) ==
           MessageAnswer::Yes;
  }

  /// The abbreviation is known. False when the copy is refused.
  bool mergeDescription(const std::string& description) {
    if (!connect_.flagFeqAbbr_1) {
      if (description_ == description) return true;
      connect_.flagFeqAbbr_1 = true;
      connect_.flagContinueFreqCopy = asks(
          "Frequency being copied is found with a different description. Do you want to continue the copy operation ?  "
          "");
    }
    // The answer holds for the rest of the paste, also for a copy that differs in nothing.
    if (!connect_.flagContinueFreqCopy) return false;
    task_.Cells(taskCells::frequency).FormulaForce(quoted(description));
    return true;
  }

  /// The description is known. False when the copy is refused.
  bool mergeAbbreviation(std::size_t place) {
    const bool isFirst = !connect_.flagFeqAbbr_2;
    if (isFirst) {
      connect_.flagFeqAbbr_2 = true;
      connect_.flagContinueFreqCopy = asks(
          "Frequency being copied is found with a different abbreviation. Do you want to continue the copy "
          "operation ?");
    }
    if (!connect_.flagContinueFreqCopy) return false;
    const Cell partial = task_.Cells(taskCells::frequencyAbbreviation);
    partial.FormulaForce(quoted(abbreviations_[place] + (isFirst ? frequencySeparator(task_) : std::string())));
    if (const Maybe<std::string> written = partial.ResultStr(visio::unitsNone)) {
      abbreviations_[place] = abbreviationIn(*written);
      document_.DocumentSheet()
          .Cells(documentCells::frequencyAbbreviations)
          .FormulaForce(quoted(listText(abbreviations_)));
    }
    return true;
  }

  /// Neither is known. False when the list is full and the copy is left as it is.
  bool addNew() {
    const bool isFirst = !connect_.flagFeqAbbrNew;
    if (isFirst) {
      connect_.flagFeqAbbrNew = true;
      connect_.flagAddNewFreq = asks("A new frequency has been encountered. Do you want to add it?");
    }
    const Cell partial = task_.Cells(taskCells::frequencyAbbreviation);
    if (!connect_.flagAddNewFreq) {
      partial.FormulaForce(quoted(""));
      task_.Cells(taskCells::frequency).FormulaForce(quoted(""));
      return true;
    }
    constexpr std::size_t mostFrequencies = systemFrequencies + userFrequencies;
    if (descriptions_.size() > mostFrequencies) {
      if (isFirst) {
        connect_.platform.showMessage(
            {.text = "The frequency will be deleted from the task because no more new frequencies could be defined."});
      }
      partial.FormulaForce(quoted(isFirst ? " " : ""));
      return false;
    }
    append(abbreviations_, abbreviation_);
    append(descriptions_, description_);
    const Shape sheet = document_.DocumentSheet();
    sheet.Cells(documentCells::frequencies).FormulaForce(quoted(listText(descriptions_)));
    sheet.Cells(documentCells::frequencyAbbreviations).FormulaForce(quoted(listText(abbreviations_)));
    update_freq(document_, listText(descriptions_));
    return true;
  }

  dsrVisioConnect& connect_;
  const Shape task_;
  const Page page_;
  const Document document_;
  std::vector<std::string> descriptions_, abbreviations_;
  std::string partial_, description_, abbreviation_;
};

}  // namespace

bool mergeFrequency(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  return FrequencyMerge(connect, task, page).run();
}

}  // namespace quorvel::addin
