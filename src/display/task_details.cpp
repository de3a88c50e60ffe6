#include "display/task_details.h"

#include <vector>

#include "display/detail_shapes.h"
#include "display/lower_fields.h"
#include "display/upper_fields.h"
#include "schema/details.h"

namespace quorvel::addin {

namespace tags = schema::tags;

void RedrawTaskUpperExtraFields(const Shape& task, std::string_view field) {
  deleteTaskUpperField(task, field);
  drawTaskUpperField(task, field);
}

void deleteTaskLowerFields(const Shape& task, std::string_view field, ListRows& rows) {
  const Maybe<int> start = schema::firstPositionOf(field);
  if (!start) return;
  std::vector<std::string_view> tags;
  for (int position = *start; position <= schema::lastLowerDetail; ++position) {
    const std::string_view tag = schema::detailAt(position).tag;
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
  for (const std::string_view field : {tags::responsibleRole, tags::frequency, tags::completionTime}) {
    deleteTaskUpperField(task, field);
  }
  for (const std::string_view field : {tags::responsibleRole, tags::completionTime, tags::frequency}) {
    drawTaskUpperField(task, field);
  }
  redrawTaskLowerFields(connect, task, tags::guidelines, rows);
}

}  // namespace quorvel::addin
