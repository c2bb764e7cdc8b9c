// The whole of "lambda.txt" against what the generator tool writes (some seconds).

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "lambda/lambda_system.h"

namespace tarvika {
namespace {

TEST(LambdaTableFull, ShippedFileIsWhatTheToolWrites) {
  std::ifstream in(std::filesystem::path(TARVIKA_SOURCE_DIR) / "data" / "stattab" / "lambda.txt", std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_TRUE(text.str() == lambda::LambdaTableText()) << "lambda.txt differs: run `make stattab`";
}

}  // namespace
}  // namespace tarvika
