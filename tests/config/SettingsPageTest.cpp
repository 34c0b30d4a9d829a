// The page of all settings, docs/settings.md, is made from the table of keys.
#include <algorithm>
#include <string>
#include <vector>

#include "config/SettingsTable.h"
#include "tests/support/Golden.h"

namespace tessary {

namespace {

struct Topic {
  KeyTopic topic;
  const char* heading;
  const char* words;
};

constexpr Topic kTopics[] = {
    {KeyTopic::Destination, "Destination",
     "Where the document goes: [file names](user-guide.md#file-names-that-make-themselves)."},
    {KeyTopic::Dialogs, "Dialogs",
     "What is asked, and what may be changed: [locking and "
     "hiding](administrators-guide.md#locking-and-hiding)."},
    {KeyTopic::Display, "While a job runs, and after it", "What is seen of it."},
    {KeyTopic::Properties, "Properties", "What readers show as the properties of the document."},
    {KeyTopic::View, "Quality and view", "How much is kept of pictures, and how the document opens."},
    {KeyTopic::Watermark, "Watermark", "A text on every page: [watermarks](user-guide.md#watermarks)."},
    {KeyTopic::Pages, "Pages of other PDFs",
     "[Letterheads](user-guide.md#letterheads) and [joining documents](user-guide.md#joining-documents)."},
    {KeyTopic::Security, "Security",
     "[Passwords and permissions](user-guide.md#passwords-and-permissions). All of it rests on "
     "`ownerpassword`."},
    {KeyTopic::Images, "Images", "Pictures in the place of a PDF: [images](user-guide.md#images)."},
    {KeyTopic::Programs, "Reports and programs",
     "[Programs that follow a job](administrators-guide.md#programs-that-follow-a-job) and [the status "
     "file](administrators-guide.md#the-status-file)."},
    {KeyTopic::Maintenance, "Maintenance", "For those who look after the printer."},
};

constexpr const char* kHead = R"(# Settings

All settings, with what they are when nobody has set them. They stand in the section `[PDF Printer]` of the
[settings files](administrators-guide.md#files), one a line, such as `showpdf=no`, and `tessary-print --set` takes them
for single files. Most have a field in the [Options dialog](user-guide.md#the-options-dialog).

Yes and no are the words `yes` and `no`, in any letters. Paths are full paths; `/` and `\` both part their folders. A
key with a star is not in a new settings file: add its line where you need it. *Macros* are words such as `<date>`,
which are [replaced for each document](user-guide.md#macros).

)";

/// The name that readers of Markdown give to a heading.
std::string Anchor(const std::string& heading) {
  std::string anchor;
  for (const char c : heading)
    if (c != ',') anchor += c == ' ' ? '-' : static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
  return anchor;
}

std::string Link(const std::string& words, const std::string& heading) {
  return "[" + words + "](#" + Anchor(heading) + ")";
}

std::string Row(const SettingKey& row) {
  std::string value(row.defaultValue);
  std::replace(value.begin(), value.end(), '\\', '/');
  return "| `" + std::string(row.key) + "`" + (row.kind == KeyKind::Read ? "\\*" : "") + " | " +
         (value.empty() ? "" : "`" + value + "`") + " | " + std::string(row.meaning) + " |\n";
}

std::string TopicText(const Topic& topic) {
  std::string text = "\n## " + std::string(topic.heading) + "\n\n" + topic.words +
                     "\n\n| Key | Default | Meaning |\n| --- | --- | --- |\n";
  for (const SettingKey& row : SettingKeys())
    if (row.topic == topic.topic) text += Row(row);
  return text;
}

/// All keys in the order of the alphabet, each with a link to its topic.
std::string Index() {
  std::vector<std::string> entries;
  for (const SettingKey& row : SettingKeys())
    for (const Topic& topic : kTopics)
      if (topic.topic == row.topic) entries.push_back(Link("`" + std::string(row.key) + "`", topic.heading));
  std::sort(entries.begin(), entries.end());
  std::string text = "\n## All keys\n\n";
  for (const std::string& entry : entries) text += entry + (entry == entries.back() ? "\n" : ",\n");
  return text;
}

}  // namespace

TEST(SettingsPage, SaysWhatTheTableSays) {
  std::string text = kHead;
  for (const Topic& topic : kTopics) text += "- " + Link(topic.heading, topic.heading) + "\n";
  text += "- [All keys](#all-keys), by name\n";
  for (const Topic& topic : kTopics) text += TopicText(topic);
  ExpectGolden("../../docs/settings.md", text + Index());
}

TEST(SettingsPage, HasARowForEachKeyThatCannotBreakTheTable) {
  for (const SettingKey& row : SettingKeys()) {
    EXPECT_NE(row.meaning, "") << row.key;
    EXPECT_EQ(row.meaning.find_first_of("|\n"), std::string_view::npos) << row.key;
    EXPECT_EQ(std::count_if(std::begin(kTopics), std::end(kTopics),
                            [&row](const Topic& topic) { return topic.topic == row.topic; }),
              1)
        << row.key;
  }
}

}  // namespace tessary
