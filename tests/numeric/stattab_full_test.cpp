// The whole studentized range table file is what the generator writes (half a minute; the
// test of the label "slow", run by `make bench`; `make test` checks a few of its rows).

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "numeric/stat_tables.h"
#include "stattab/table_writer.h"

namespace tarvika {
namespace {

TEST(StatTableGeneratorWhole, ShippedStudentizedRangeFileIsWhatTheGeneratorWrites) {
  std::ifstream in(std::string(TARVIKA_SOURCE_DIR) + "/data/stattab/" + std::string(kStudentizedRangeFile),
                   std::ios::binary);
  const std::string shipped{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  EXPECT_TRUE(shipped == stattab::TableFileBytes(kStudentizedRangeFile))
      << kStudentizedRangeFile << " differs: run `make stattab`";
}

}  // namespace
}  // namespace tarvika
