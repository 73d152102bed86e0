// Objects built before main may read the default configuration: the default column lists must be
// there, whatever order the files' static objects are made in.

#include "storage/ColumnTable.h"
#include "storage/ConfigRecord.h"

#include <gtest/gtest.h>

using namespace scorvane;

namespace {
const ConfigRecord kBuiltBeforeMain = ConfigRecord::defaults();
} // namespace

TEST(Initialisation, DefaultsReadBeforeMainAreTheDefaults) {
    EXPECT_EQ(kBuiltBeforeMain.encode(), ConfigRecord::defaults().encode());
    EXPECT_EQ(kBuiltBeforeMain.columnLists[0][0], 1); // passing starts with its games column
}
