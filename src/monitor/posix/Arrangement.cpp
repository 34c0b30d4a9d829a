#include "monitor/posix/Arrangement.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <unistd.h>

#include "host/posix/PosixFailure.h"
#include "host/posix/UserFolders.h"
#include "system/Conversions.h"

namespace tessary {

namespace {

constexpr std::size_t kCopies = 3;  // its place among the arguments
constexpr int kPatience = 10000;    // milliseconds that a filter has to end after its last byte

/// An option that arranges pages, and the value with which it does not.
struct Option {
  std::string_view name, idle;
};

constexpr Option kArranging[] = {
    {"page-ranges", ""},     {"number-up", "1"},        {"page-set", "all"},      {"outputorder", "normal"},
    {"mirror", "false"},     {"booklet", "off"},        {"fit-to-page", "false"}, {"fitplot", "false"},
    {"page-border", "none"}, {"print-scaling", "auto"},
};

/// The options of a job, as the print server writes them: blanks between them, and quotes or a backslash around
/// those inside.
std::vector<std::string> SplitOptions(std::string_view text) {
  std::vector<std::string> options(1);
  char quote = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\\' && i + 1 < text.size())
      options.back() += text[++i];
    else if (quote != 0 && c == quote)
      quote = 0;
    else if (quote == 0 && (c == '"' || c == '\''))
      quote = c;
    else if (quote == 0 && c == ' ')
      options.emplace_back();
    else
      options.back() += c;
  }
  return options;
}

bool Arranges(const std::string& option) {
  const std::size_t equals = option.find('=');
  const std::string name = ToLower(option.substr(0, equals));
  const std::string value = equals == std::string::npos ? "true" : ToLower(option.substr(equals + 1));
  if (name == "print-scaling" && value == "none") return false;
  return std::any_of(std::begin(kArranging), std::end(kArranging),
                     [&](const Option& each) { return name == each.name && value != each.idle; });
}

}  // namespace

std::string ArrangingFilter(std::string_view options, std::string_view contentType) {
  if (contentType.starts_with("image/") || contentType == "application/vnd.cups-raw" ||
      contentType == "application/octet-stream")
    return {};
  const std::vector<std::string> all = SplitOptions(options);
  if (std::none_of(all.begin(), all.end(), Arranges)) return {};
  return contentType == "application/postscript" ? "pstops" : "pdftopdf";
}

Failure ArrangedDocument::Start(const std::string& filter, const std::vector<std::string>& arguments) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return FailureOf(errno);
  output_ = UniqueFd(ends[0]);
  const UniqueFd input(ends[1]);
  ChildSetup setup;
  setup.arguments = {EnvironmentValue("CUPS_SERVERBIN") + "/filter/" + filter};
  setup.arguments.insert(setup.arguments.end(), arguments.begin(), arguments.end());
  setup.arguments[1 + kCopies] = "1";  // the copies are made behind the filter
  setup.hidden = false;
  setup.output = input.Get();
  Result<ChildProcess> child = ChildProcess::Start(setup);
  if (child.ok()) child_ = std::move(child.value);
  return child.failure;
}

Result<std::size_t> ArrangedDocument::Read(char* buffer, std::size_t size) {
  const ssize_t count = Restarted([&] { return read(output_.Get(), buffer, size); });
  if (count < 0) return FailureOf(errno);
  if (count > 0) return static_cast<std::size_t>(count);
  if (!child_.Wait(kPatience) || child_.ExitCode() != 0)
    return Failure{failures::kDeviceIo, "its pages cannot be arranged as the job asks"};
  return std::size_t{0};
}

}  // namespace tessary
