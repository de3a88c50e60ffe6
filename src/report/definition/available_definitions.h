// Which report definitions there are for a drawing: those in its sheet, else the installed ones.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/sheet/store.h"
#include "report/definition/definition.h"

namespace quorvel::report {

struct AvailableDefinition {
  int number = 0;  ///< of its row, or of its file among the installed ones, from 1; 0 for a file that was named
  Definition definition;
  std::string problem;  ///< empty, or the sentence that says why it can't be used
};

struct AvailableDefinitions {
  std::vector<AvailableDefinition> definitions;  ///< by number
  bool areInstalled = false;                     ///< the drawing has none
};

/// Rows User.visPropRpt1, User.visPropRpt2, … of the document's sheet; without any, the files of the folder "Reports"
/// in `installFolder`, in the order of their names.
AvailableDefinitions definitionsFor(const host::Store& store, host::DocumentId document,
                                    const std::string& installFolder);

/// The definition in a file.
AvailableDefinition definitionInFile(const std::string& fileName);

/// By its title in any letter case, else by its number; else the file of that name. A definition with a problem when
/// there is none, which says what there is.
AvailableDefinition definitionNamed(const AvailableDefinitions& available, const std::string& name);

}  // namespace quorvel::report
