// The object that scripts which run on their own know as WScript.
#pragma once

#include <string>

#include "script/Object.h"

namespace tessary::script {

/// Echo, Quit, CreateObject and the names of the script. Quit throws script::Quit with the exit code.
class WScriptObject final : public NativeObject {
 public:
  /// `scriptFile` is the path that ScriptFullName gives.
  explicit WScriptObject(std::string scriptFile) : scriptFile_(std::move(scriptFile)) {}
  [[nodiscard]] const std::string& scriptFile() const noexcept { return scriptFile_; }
  [[nodiscard]] std::string ClassName() const override { return "Object"; }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override;

 private:
  std::string scriptFile_;
};

}  // namespace tessary::script
