// A field in a shape's text that shows when the document was last saved.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// A way to write date and time: the formula of the field's format, and the pattern it stands for.
struct LastSaveFormat {
  std::string_view field;
  std::string_view pattern;
};
/// Numbered from 1.
inline constexpr std::array<LastSaveFormat, 17> lastSaveFormats{{{"FIELDPICTURE(200)", "m/d/yyyy"},
                                                                 {"FIELDPICTURE(201)", "dddd, MMMM dd, yyyy"},
                                                                 {"FIELDPICTURE(202)", "MMMM d, yyyy"},
                                                                 {"FIELDPICTURE(203)", "M/d/yy"},
                                                                 {"FIELDPICTURE(204)", "yyyy-MM-dd"},
                                                                 {"FIELDPICTURE(205)", "d-MMM-yy"},
                                                                 {"FIELDPICTURE(206)", "M.d.yyyy"},
                                                                 {"FIELDPICTURE(207)", "MMM. d, yy"},
                                                                 {"FIELDPICTURE(208)", "d MMMM yyyy"},
                                                                 {"FIELDPICTURE(209)", "MMMM yy"},
                                                                 {"FIELDPICTURE(210)", "MMM -yy"},
                                                                 {"FIELDPICTURE(211)", "M/d/yyyy h:mm am/pm"},
                                                                 {"FIELDPICTURE(212)", "M/d/yyyy h:mm:ss am/pm"},
                                                                 {"FIELDPICTURE(213)", "h:mm am/pm"},
                                                                 {"FIELDPICTURE(214)", "h:mm:ss am/pm"},
                                                                 {"FIELDPICTURE(215)", "h:mm"},
                                                                 {"FIELDPICTURE(216)", "h:mm:ss"}}};

/// Puts a field of that format before the text of each shape that is no Task, Task Link or Process Connector.
void addDocLastSave(const Selection& selection, int format);
/// Nothing for a number outside 1 to 17.
void setFormatText(const Shape& shape, int format);
/// The number of a format; 0 for another text.
int getTheIndOfFormat(std::string_view formula);
/// The format that the last of the selected shapes has whose first field shows the last save; 0 when there is none.
int lastSaveFormatOf(const Selection& selection);

}  // namespace quorvel::addin
