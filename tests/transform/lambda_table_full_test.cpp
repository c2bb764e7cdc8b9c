// The whole of "lambda.txt" against what the generator tool writes (some seconds).

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "lambda/lambda_system.h"
#include "support/cli_runner.h"

namespace tarvika {
namespace {

TEST(LambdaTableFull, ShippedFileIsWhatTheToolWrites) {
  const std::string text =
      test::ReadFile(std::filesystem::path(TARVIKA_SOURCE_DIR) / "data" / "stattab" / "lambda.txt");
  EXPECT_TRUE(text == lambda::LambdaTableText()) << "lambda.txt differs: run `make stattab`";
}

}  // namespace
}  // namespace tarvika
