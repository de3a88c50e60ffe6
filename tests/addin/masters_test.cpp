// The class of a shape follows from its master's name, also where the host has numbered the master.
#include "schema/masters.h"

#include <gtest/gtest.h>

namespace quorvel::schema {
namespace {

TEST(Masters, NamesDecideTheClass) {
  const std::pair<const char*, ShapeClass> cases[] = {
      {"Task", ShapeClass::Task},
      {"Task.12", ShapeClass::Task},
      {"Task Link.3", ShapeClass::TaskLink},
      {"Connector", ShapeClass::ProcessConnector},
      {"Process Connector.7", ShapeClass::ProcessConnector},
      {"task", ShapeClass::Other},
      {"Tasks", ShapeClass::Other},
      {"Dynamic connector.4", ShapeClass::Other},
      {"", ShapeClass::Other},
  };
  for (const auto& [name, expected] : cases) EXPECT_EQ(classOfMaster(name), expected) << name;
}

}  // namespace
}  // namespace quorvel::schema
