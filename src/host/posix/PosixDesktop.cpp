#include "host/posix/PosixDesktop.h"

namespace tessary {

namespace {

constexpr std::int32_t kButtonsMask = 15;

std::int32_t HarmlessAnswer(std::int32_t buttons) {
  switch (buttons) {
    case box::kRetryCancel:
    case box::kYesNoCancel:
      return box::kAnswerCancel;
    case box::kYesNo:
      return box::kAnswerNo;
    default:
      return box::kAnswerOk;
  }
}

}  // namespace

BoxAnswer PosixDesktop::ShowBox(const std::string& text, const std::string& caption, std::int32_t flags) {
  terminal_.Say(caption + ": " + text);
  return {HarmlessAnswer(flags & kButtonsMask), false};
}

Result<std::string> PosixDesktop::PickFile(const FilePicker& picker) {
  const std::string words = "There is no display to show it on";
  terminal_.Say(picker.title + ": " + words);
  return Failure{failures::kDeviceIo, words};
}

}  // namespace tessary
