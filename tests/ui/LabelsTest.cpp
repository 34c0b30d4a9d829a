// The table of labels against the texts in the sources and against the language files that are shipped.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <set>

#include "system/Conversions.h"
#include "tests/support/SimulatedMachine.h"
#include "ui/Labels.h"
#include "ui/modLocalize.h"

namespace tessary {
namespace {

const std::filesystem::path kRoot = TESSARY_ROOT_DIR;

std::string ReadWhole(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The default texts of the tagged literals in the sources, by key.
std::multimap<std::string, std::string> TaggedLiterals() {
  static const std::regex tagged(R"re("\[(L\d+|QH_\w+)\]((?:[^"\\]|\\.)*"(?:\s*"(?:[^"\\]|\\.)*")*))re");
  static const std::regex joint(R"("\s*")"), escape(R"re(\\(["\\]))re");
  std::multimap<std::string, std::string> found;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(kRoot / "src")) {
    if (!entry.is_regular_file()) continue;
    const std::string source = ReadWhole(entry.path());
    for (std::sregex_iterator match(source.begin(), source.end(), tagged), end; match != end; ++match) {
      std::string text = std::regex_replace((*match)[2].str(), joint, "");
      text.pop_back();
      text = ReplaceAll(text, R"(\r\n)", "\r\n");
      found.emplace((*match)[1], std::regex_replace(text, escape, "$1"));
    }
  }
  return found;
}

/// True if `literal` is the label's default, or its beginning where the program puts a value behind it.
bool Fits(const Label& label, const std::string& literal) {
  return literal == label.text || literal == label.text.substr(0, label.text.find("%1"));
}

TEST(Labels, AreTheTextsOfTheProgram) {
  const auto literals = TaggedLiterals();
  for (const auto& [key, text] : literals)
    EXPECT_TRUE(std::any_of(Labels().begin(), Labels().end(),
                            [&](const Label& label) { return label.key == key && Fits(label, text); }))
        << "[" << key << "]" << text;

  for (const Label& label : Labels()) {
    if (label.use == LabelUse::Unused) continue;
    EXPECT_TRUE(literals.contains(std::string(label.key))) << label.key;
  }
}

/// How many letters of `text` are marked as its accelerator.
std::ptrdiff_t Accelerators(std::string_view text) { return std::count(text.begin(), text.end(), '&'); }

struct LanguageFile : testing::TestWithParam<const char*> {
  void SetUp() override {
    bytes = ReadWhole(kRoot / "languages" / GetParam() / "labels.txt");
    machine.host().codePage = CodePage::Utf8;
    machine.files.Put(R"(C:\Program Files\Tessary\labels.txt)", bytes);
    LoadLabels(run);
  }
  Dictionary& labels() { return run.labels.texts; }
  std::string bytes;
  SimulatedMachine machine;
  tessary::Run run{machine.host()};
};

TEST_P(LanguageFile, HoldsEveryLabelAndNothingElse) {
  std::set<std::string> expected{std::string(kLanguageKey)}, found;
  for (const Label& label : Labels())
    if (label.use != LabelUse::Unused) expected.insert(std::string(label.key));
  for (const std::string_view topic : QuickHelpTopics()) expected.insert("QH_" + std::string(topic));
  for (const auto& [key, value] : labels()) found.insert(key);
  EXPECT_EQ(found, expected);
  static const std::regex entry("(^|\n)[^=\r\n]+=");
  EXPECT_EQ(std::distance(std::sregex_iterator(bytes.begin(), bytes.end(), entry), {}),
            static_cast<std::ptrdiff_t>(found.size()))
      << "a key stands twice";
}

TEST_P(LanguageFile, TextsAreWhole) {
  for (const Label& label : Labels()) {
    if (label.use == LabelUse::Unused) continue;
    const std::string text = labels().Text(std::string(label.key));
    // An empty label leaves each of the two dialogs its own text.
    const bool isEnglish = GetParam() == std::string("english");
    if (isEnglish && label.key == "L132" && text.empty()) continue;
    EXPECT_FALSE(TrimBlanks(text).empty()) << label.key;
    EXPECT_EQ(text.find("%1") != std::string::npos, label.text.find("%1") != std::string_view::npos)
        << label.key;
    EXPECT_EQ(Accelerators(text), Accelerators(label.text)) << label.key;
    EXPECT_TRUE(!isEnglish || text == label.text) << label.key << " " << text;
  }
  for (const std::string_view topic : QuickHelpTopics()) {
    const std::string text = labels().Text("QH_" + std::string(topic));
    const std::size_t heading = text.find("\r\n");
    ASSERT_NE(heading, std::string::npos) << topic;
    EXPECT_GT(heading, 0u) << topic;
    EXPECT_GT(text.size(), heading + 2) << topic;
  }
}

TEST_P(LanguageFile, ReadsOnEveryMachine) {
  EXPECT_TRUE(IsValidUtf8(bytes));
  EXPECT_EQ(DecodeText(CodePage::Windows1252, EncodeText(CodePage::Windows1252, bytes)), bytes)
      << "the 8-bit code page of Western Windows machines can hold it";
  EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), std::count(bytes.begin(), bytes.end(), '\r'));
  EXPECT_EQ(ReplaceAll(bytes, "\r\n", "").find_first_of("\r\n"), std::string::npos) << "lines end in CR LF";
}

INSTANTIATE_TEST_SUITE_P(Languages, LanguageFile, testing::Values("english", "german", "danish"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
}  // namespace tessary
