// Texts that are held against a file under tests/golden, byte for byte.
#pragma once

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace tessary {

/// Expects `text` to be the content of the golden file. With TESSARY_WRITE_GOLDEN in the environment the file
/// is written anew instead, so that a change is seen in review.
inline void ExpectGolden(const std::string& name, const std::string& text) {
  const std::string path = std::string(TESSARY_GOLDEN_DIR) + "/" + name;
  if (std::getenv("TESSARY_WRITE_GOLDEN")) {
    std::ofstream(path, std::ios::binary) << text;
    return;
  }
  std::ifstream file(path, std::ios::binary);
  ASSERT_TRUE(file) << path;
  EXPECT_EQ(text, std::string(std::istreambuf_iterator<char>(file), {})) << path;
}

}  // namespace tessary
