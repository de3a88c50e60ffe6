#include "display/task_details.h"

#include <vector>

#include "display/detail_fields.h"
#include "display/detail_shapes.h"
#include "display/lower_fields.h"
#include "display/upper_fields.h"

namespace quorvel::addin {

void RedrawTaskUpperExtraFields(const Shape& task, std::string_view field) {
  deleteTaskUpperField(task, field);
  drawTaskUpperField(task, field);
}

void deleteTaskLowerFields(const Shape& task, std::string_view field, ListRows& rows) {
  const Maybe<int> start = firstPositionOf(field);
  if (!start) return;
  std::vector<std::string_view> tags;
  for (int position = *start; position <= lastLowerField; ++position) {
    const std::string_view tag = detailField(position).tag;
    if (tags.empty() || tags.back() != tag) tags.push_back(tag);
  }
  deleteDetails(task, tags, rows);
}

void redrawTaskLowerFields(const dsrVisioConnect& connect, const Shape& task, std::string_view field, ListRows before) {
  readLabels(task, before);
  deleteTaskLowerFields(task, field, before);
  drawTaskLowerFields(connect, task, field, before);
}

void redrawAllTaskFields(const dsrVisioConnect& connect, const Shape& task) {
  const ListRows rows = snapshotOfListRows(task);
  for (const char* field : {"Responsible_Role", "Frequency_Of_Occurrence", "Task_Completion_Time"}) {
    deleteTaskUpperField(task, field);
  }
  for (const char* field : {"Responsible_Role", "Task_Completion_Time", "Frequency_Of_Occurrence"}) {
    drawTaskUpperField(task, field);
  }
  redrawTaskLowerFields(connect, task, "controls", rows);
}

}  // namespace quorvel::addin
