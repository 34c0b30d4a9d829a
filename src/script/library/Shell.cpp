#include "script/library/Arguments.h"
#include "script/library/Objects.h"

namespace tessary::script {
namespace {

// Each %NAME% becomes the variable's value; one that is not set, or empty, stays as it is written.
std::string Expand(Services& services, std::string_view text) {
  std::string expanded;
  while (!text.empty()) {
    const std::size_t start = text.find('%');
    const std::size_t end = start == text.npos ? text.npos : text.find('%', start + 1);
    expanded += text.substr(0, start);
    if (end == text.npos) {
      if (start != text.npos) expanded += text.substr(start);
      break;
    }
    const std::string name(text.substr(start + 1, end - start - 1));
    const std::string value =
        services.environment && !name.empty() ? services.environment(name) : std::string();
    // The second "%" of a name that is no variable may be the first one of the next.
    expanded += value.empty() ? "%" + name : value;
    text.remove_prefix(value.empty() ? end : end + 1);
  }
  return expanded;
}

class Shell final : public NativeObject {
 public:
  [[nodiscard]] std::string ClassName() const override { return "IWshShell3"; }

  static Value ExpandEnvironmentStrings(Object&, Context& context, Arguments arguments) {
    return Text8(Expand(context.services(), TextArgument(context, arguments[0])));
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override {
    static constexpr Member kMembers[] = {{}, {"ExpandEnvironmentStrings", 1, 1, ExpandEnvironmentStrings}};
    return kMembers;
  }
};

}  // namespace

Ref<Object> MakeShell(Context&) { return Make<Shell>(); }

}  // namespace tessary::script
