// The Err object.
#pragma once

#include <cstdint>
#include <string>

#include "script/Object.h"

namespace tessary::script {

class ErrObject final : public NativeObject {
 public:
  std::int32_t number = 0;
  std::string description;
  std::string source;
  std::string helpFile;
  std::int32_t helpContext = 0;

  void Clear();
  void Set(const ScriptError& error);
  [[nodiscard]] std::string ClassName() const override { return "Object"; }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override;
};

}  // namespace tessary::script
