#include "script/Code.h"

namespace tessary::script {

std::string Source::Line(int line) const {
  std::size_t start = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  for (int i = 1; i < line && start < text.size(); ++i) {
    start = text.find_first_of("\r\n", start);
    if (start == std::string::npos) return {};
    start += text.compare(start, 2, "\r\n") == 0 ? 2 : 1;
  }
  if (start > text.size()) return {};
  return text.substr(start, text.find_first_of("\r\n", start) - start);
}

const ClassType::Member* ClassType::Find(NameId member) const {
  const auto found = index.find(member);
  return found == index.end() ? nullptr : &members[static_cast<std::size_t>(found->second)];
}

}  // namespace tessary::script
