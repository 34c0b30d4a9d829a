// Documents in one pipe, in reads and pieces of any size.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/support/FramedDocuments.h"

namespace tessary {
namespace {

TEST(Frames, AnyDocumentsComeThrough) {
  const std::string large(frames::kMaxChunk + 1, 'x');
  const std::vector<FramedDocument> documents = {{"application/pdf", 1, "%PDF\n\0\xFF"},
                                                 {"application/postscript", 9999, large},
                                                 {"text/plain", 2, ""},
                                                 {"a/b", 1, "TESSARY 1 a/b 1\n"}};
  const std::string stream = WriteFrames(documents);
  for (const auto& [most, pieces] : {std::pair{1, 4096}, {7, 1}, {65536, 3}, {1 << 30, 1 << 21}}) {
    const FramedDocuments read =
        ReadFrames(stream, static_cast<std::size_t>(most), static_cast<std::size_t>(pieces));
    EXPECT_EQ(read.problem, "");
    EXPECT_EQ(read.whole, documents) << most;
  }
}

TEST(Frames, WhatCannotStandInAHeaderIsReplaced) {
  const std::string stream =
      WriteFrames({{"a b\n%PDF", -3, "x"}, {"", 123456, "y"}, {std::string(300, 'a'), 1, ""}});
  const FramedDocuments read = ReadFrames(stream, 100, 100);
  EXPECT_EQ(read.problem, "");
  const std::string unknown = "application/octet-stream";
  EXPECT_EQ(read.whole,
            (std::vector<FramedDocument>{{unknown, 1, "x"}, {unknown, 9999, "y"}, {unknown, 1, ""}}));
}

TEST(Frames, EveryCutLeavesTheDocumentsBeforeIt) {
  const std::string first = WriteFrames({{"a/b", 1, "one"}}), stream = first + WriteFrames({{"c/d", 2, "two"}});
  for (std::size_t size = 0; size <= stream.size(); ++size) {
    const FramedDocuments read = ReadFrames(stream.substr(0, size), 5, 5);
    const bool isWhole = size == 0 || size == first.size() || size == stream.size();
    EXPECT_EQ(read.problem.empty(), isWhole) << size;
    EXPECT_EQ(read.whole.size(), size < first.size() ? 0u : size < stream.size() ? 1u : 2u) << size;
  }
}

TEST(Frames, DamageIsTold) {
  const std::string good = "TESSARY 1 a/b 1\n";
  for (const auto& [stream, problem] : std::vector<std::pair<std::string, std::string>>{
           {"%PDF-1.4\n", "is not framed as the filter does it"},
           {std::string(5000, 'x'), "is not framed as the filter does it"},
           {"\n", "has a damaged header"},
           {"TESSARY 2 a/b 1\n", "is framed in a version that this program does not know"},
           {"TESSARY 1 a/b\n", "has a damaged header"},
           {"TESSARY 1 a/b 0\n", "has a damaged header"},
           {"TESSARY 1 a/b 10000\n", "has a damaged header"},
           {"TESSARY 1 a/b 1x\n", "has a damaged header"},
           {"TESSARY 1 a\x1b 1\n", "has a damaged header"},
           {"TESSARY 1 " + std::string(300, 'a') + " 1\n", "has a damaged header"},
           {good + std::string("\0\x10\0\x01", 4) + "xxxx", "is damaged on its way"}})
    EXPECT_EQ(ReadFrames(stream, 100, 100).problem, problem) << stream.substr(0, 40);
}

TEST(Frames, ADocumentIsPassedOverAndAFailureStays) {
  const std::string stream = WriteFrames({{"a/b", 1, std::string(3000, 'x')}, {"c/d", 2, "two"}});
  FrameReader reader(SourceOf(stream, 1000));
  char bytes[10];
  EXPECT_EQ(reader.Read(bytes, sizeof bytes).value, 0u) << "before the first document";
  ASSERT_TRUE(reader.Next().value);
  EXPECT_EQ(reader.Read(bytes, sizeof bytes).value, 10u);
  EXPECT_EQ(reader.Next().value.value_or(FrameHeader()).contentType, "c/d");

  FrameReader failing([](char*, std::size_t) { return Failure{failures::kCancelled, "enough"}; });
  EXPECT_EQ(failing.Next().failure.number, failures::kCancelled);
  EXPECT_EQ(failing.Read(bytes, sizeof bytes).failure.text, "enough");
}

// What the fuzzer begins with and has found.
TEST(Frames, Seeds) {
  for (const auto& entry : std::filesystem::directory_iterator(TESSARY_ROOT_DIR "/fuzz/seeds/frames")) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {}), stream = bytes.substr(2);
    const FramedDocuments read = ReadFrames(stream, 3, 5);
    EXPECT_EQ(ReadFrames(WriteFrames(read.whole), 7, 11).whole, read.whole) << entry.path();
    EXPECT_EQ(ReadFrames(stream, 100, 1).problem, read.problem) << entry.path();
  }
}

}  // namespace
}  // namespace tessary
