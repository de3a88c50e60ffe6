// What Data1 to Data3 of the shapes that the add-in makes or marks hold. Later events find the shapes by it.
#pragma once

#include <string_view>

namespace quorvel::schema::marks {

// Data1.
inline constexpr std::string_view detail = "Pline";
inline constexpr std::string_view subTaskBox = "SUBTask_ID";
inline constexpr std::string_view logo = "Logo";
inline constexpr std::string_view legend = "Legend";
inline constexpr std::string_view notes = "pic_indicatesNotes";
inline constexpr std::string_view taskHyperlink = "pic_indicatorTaskDescription";
inline constexpr std::string_view subTaskHyperlink = "PicIndicateHypersubTAsk";

// Data2: the tag of the detail, see details.h, and of the vertical line beside the lower details.
inline constexpr std::string_view vertical = "Vertical";

// Data3: the name of the detail's row; of an icon next to a detail line, one of these before it.
inline constexpr std::string_view icon = "Pic";
inline constexpr std::string_view hyperlinkIcon = "PicLinked";

}  // namespace quorvel::schema::marks
