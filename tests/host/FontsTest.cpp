// The fonts of the machine that the tests run on.
#include <cctype>
#include <gtest/gtest.h>
#include <string>

#include "host/posix/PosixMachine.h"

namespace tessary {
namespace {

TEST(Fonts, AFileIsFoundByItsNameOrSubstituted) {
  PosixMachine machine(0, nullptr);
  Host& host = machine.host();
  const std::string substitute = host.shell.FontFile("no such font.ttf");
  ASSERT_TRUE(host.files.Find(substitute)) << substitute << ": a machine for tests has a font";
  const std::string name = substitute.substr(substitute.rfind('/') + 1);
  std::string upper = name;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  for (const std::string& asked : {name, upper}) {
    const std::string found = host.shell.FontFile(asked);
    EXPECT_EQ(found.substr(found.rfind('/') + 1), name);
  }
  for (const char* odd : {"", ".ttf", "..", "a:b-c=,\\.ttf", "*.ttf", "\xFF.ttf"})
    EXPECT_TRUE(host.files.Find(host.shell.FontFile(odd))) << odd;
}

}  // namespace
}  // namespace tessary
